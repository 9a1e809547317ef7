#include <Zel260/hosts/qt/CZelView.h>

#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/qt/CQtDC.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QFocusEvent>

IMPLEMENT_DYNAMIC(CZelView, CWnd)

CZelView::CZelView(QWidget* parent) : QWidget(parent), CZelViewExtensions(this)
{
    Attach(ZelHwndFromWidget(this));
    setFocusPolicy(Qt::StrongFocus);
    // A view is active while the focus is inside it.
    m_focusWatch = QObject::connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        const bool inside = now && (now == this || isAncestorOf(now));
        if (inside != (m_active != 0))
            OnActivateView(inside, inside ? this : nullptr, inside ? nullptr : this);
    });
}

CZelView::~CZelView() { QObject::disconnect(m_focusWatch); }

void CZelView::OnInitialUpdate()
{
    m_initialUpdateDone = TRUE;
    ::PostMessage(m_hWnd, WM_ZEL_POST_INITIALUPDATE, 0, 0);
}

void CZelView::OnPostInitialUpdate() {}
void CZelView::OnPostSetFocus() {}

void CZelView::OnActivateView(BOOL activate, CZelView*, CZelView*)
{
    const BOOL state = activate ? TRUE : FALSE;
    if (state == m_active)
        return;
    m_active = state;
    if (!state)
        ArmDblClkSlow(FALSE);
    ::PostMessage(m_hWnd, WM_ZEL_POST_ACTIVATEVIEW, static_cast<WPARAM>(state), 0);
    if (HWND parent = ::GetParent(m_hWnd))
        ::PostMessage(parent, WM_ZEL_POST_ACTIVATECHILDVIEW, static_cast<WPARAM>(state),
                      reinterpret_cast<LPARAM>(m_hWnd));
}

void CZelView::OnPostActivateView(BOOL) {}

void CZelView::OnDraw(CDC*) {}

BOOL CZelView::OnPreparePrinting(CPrintInfo*) { return TRUE; }
void CZelView::OnBeginPrinting(CDC*, CPrintInfo*) {}

void CZelView::OnPrepareDC(CDC*, CPrintInfo* info)
{
    // Without a page count a view prints one page, unless it says otherwise.
    if (info && info->GetMaxPage() == 0xFFFF && info->m_nCurPage > 1)
        info->m_bContinuePrinting = FALSE;
}

void CZelView::OnPrint(CDC* dc, CPrintInfo*) { OnDraw(dc); }
void CZelView::OnEndPrinting(CDC*, CPrintInfo*) {}
void CZelView::OnViewTimer(UINT_PTR) {}
void CZelView::OnDblClkSlow(WPARAM, LPARAM) {}

LRESULT CZelView::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_TIMER)
        OnViewTimer(static_cast<UINT_PTR>(wParam));
    else if (message == WM_ZEL_DBLCLK_SLOW)
        OnDblClkSlow(wParam, lParam);
    else if (message == WM_ZEL_POST_INITIALUPDATE)
        OnPostInitialUpdate();
    else if (message == WM_ZEL_POST_SETFOCUS)
        OnPostSetFocus();
    else if (message == WM_ZEL_POST_ACTIVATEVIEW)
        OnPostActivateView(static_cast<BOOL>(wParam));
    return 0;
}

void CZelView::paintEvent(QPaintEvent*)
{
    CQtDC dc(this);
    OnPrepareDC(&dc, nullptr);
    OnDraw(&dc);
}

void CZelView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_initialUpdateDone)
        OnInitialUpdate();
}

void CZelView::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    ::PostMessage(m_hWnd, WM_ZEL_POST_SETFOCUS, 0, 0);
}

void CZelView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    ArrangeItems();
}
