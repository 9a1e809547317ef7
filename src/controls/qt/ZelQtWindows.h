// Small window services of the controls on Qt.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QWidget>

namespace zelcontrols {

// Whether the window has the visible style itself: explicitly hidden windows
// don't, whatever their parents are; a window not yet shown with its parent does.
inline bool HasVisibleStyle(const QWidget* w)
{
    return w && !(w->isHidden() && w->testAttribute(Qt::WA_WState_ExplicitShowHide));
}

inline bool HasVisibleStyle(HWND h) { return HasVisibleStyle(ZelWidgetFromHwnd(h)); }

// The Windows class name of the kind of control a widget is, for the rules that
// name window classes.
inline CString WindowClassName(const QWidget* w)
{
    if (!w)
        return CString();
    if (qobject_cast<const QLineEdit*>(w))
        return "Edit";
    if (qobject_cast<const QComboBox*>(w))
        return "ComboBox";
    if (qobject_cast<const QAbstractButton*>(w))
        return "Button";
    return CString(w->metaObject()->className());
}

inline HWND FocusHwnd() { return ZelHwndFromWidget(QApplication::focusWidget()); }

inline void SetFocus(HWND h)
{
    if (QWidget* w = ZelWidgetFromHwnd(h))
        w->setFocus(Qt::OtherFocusReason);
}

} // namespace zelcontrols
