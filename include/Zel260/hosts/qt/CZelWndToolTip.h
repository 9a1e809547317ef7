// The popup that shows a text beside a control for a while: a frameless window of
// our own that never takes the focus or the activation, so that showing it leaves
// the validation cycle of the dialog undisturbed.
//
//   m_toolTip.Show("Field must not be empty", rect.left, rect.bottom,
//                  CZelWndToolTip::eAnchorLeftTop, 3000);
//
// The anchor names the point of the tip that stands at (x, y): its left top corner,
// the middle of its bottom edge, and so on. Coordinates are screen pixels.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

#include <QWidget>

class QLabel;
class QTimer;

class CZelWndToolTip : public QWidget {
public:
    enum eAnchor {
        eAnchorLeftTop, eAnchorCenterTop, eAnchorRightTop,
        eAnchorLeftCenter, eAnchorCenterCenter, eAnchorRightCenter,
        eAnchorLeftBottom, eAnchorCenterBottom, eAnchorRightBottom,
    };

    explicit CZelWndToolTip(QWidget* owner = nullptr);
    ~CZelWndToolTip() override;

    // Shows `text` with its `anchor` point at (x, y) and hides it after `timeMs`
    // milliseconds (0: until Hide). An empty text hides the tip.
    void Show(const char* text, int x, int y, eAnchor anchor, UINT timeMs);
    void Hide();
    BOOL IsShowing() const { return isVisible(); }
    CString GetText() const;
    // The time the tip was last shown for, in milliseconds.
    UINT GetTime() const { return m_timeMs; }
    // The anchor point of the last Show.
    POINT GetAnchorPoint() const { return m_anchorPoint; }

private:
    QLabel* m_label;
    QTimer* m_timer;
    UINT m_timeMs = 0;
    POINT m_anchorPoint{0, 0};
};
