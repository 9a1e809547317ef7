// The library's view: a QWidget with the view services (CZelViewExtensions),
// painting through OnDraw on a device context, and follow-up work that runs from
// posted messages after the handler that caused it has returned:
//
//   OnInitialUpdate     -> WM_ZEL_POST_INITIALUPDATE -> OnPostInitialUpdate
//   focus into the view -> WM_ZEL_POST_SETFOCUS      -> OnPostSetFocus
//   OnActivateView with a changed state -> WM_ZEL_POST_ACTIVATEVIEW -> OnPostActivateView
//                          (and WM_ZEL_POST_ACTIVATECHILDVIEW to the parent window)
//
// OnInitialUpdate runs when the view is first shown, unless called before; the
// view is active while the focus is in it or in one of its children.
#pragma once

#include <Zel260/hosts/qt/CZelViewExtensions.h>
#include <Zel260/platform/CDC.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>

#include <QMetaObject>
#include <QWidget>

class CZelView : public QWidget, public CWnd, public ZelMessageTarget, public CZelViewExtensions {
    DECLARE_DYNAMIC(CZelView)

public:
    explicit CZelView(QWidget* parent = nullptr);
    ~CZelView() override;

    CObject* GetDocument() const { return GetViewDocument(); }

    virtual void OnInitialUpdate();
    virtual void OnPostInitialUpdate();
    virtual void OnPostSetFocus();
    // `activate` nonzero when the view becomes the active one. Posts only when the
    // state differs from the last call.
    virtual void OnActivateView(BOOL activate, CZelView* activateView, CZelView* deactiveView);
    virtual void OnPostActivateView(BOOL activate);
    // Paints the view; the default does nothing.
    virtual void OnDraw(CDC* dc);

    BOOL IsInitialUpdateDone() const { return m_initialUpdateDone; }
    BOOL IsViewActive() const { return m_active; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    BOOL m_initialUpdateDone = FALSE;
    BOOL m_active = FALSE;

private:
    QMetaObject::Connection m_focusWatch;
};
