// Small window services of the controls on Qt.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/CWnd.h>
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/Win32Types.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QWidget>

namespace zelcontrols {

// Whether the window has the visible style itself: explicitly hidden windows
// don't, whatever their parents are; a window not yet shown with its parent does,
// as its parent will show it. One made under a parent that is already on screen
// stays hidden until it is shown itself.
inline bool HasVisibleStyle(const QWidget* w)
{
    if (!w)
        return false;
    if (!w->isHidden())
        return true;
    if (w->testAttribute(Qt::WA_WState_ExplicitShowHide))
        return false;
    const QWidget* parent = w->parentWidget();
    return !(parent && parent->isVisible());
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

// A plain widget that only groups controls (a frame, a group box, a layout's
// widget, without an id or a library object): on Qt such groups are the controls'
// parents, where the dialog itself would be, so containers look through them.
inline bool IsLookedThrough(QWidget* w)
{
    if (!w || w->isWindow())
        return false;
    const HWND h = ZelHwndFromWidget(w);
    if (::GetDlgCtrlID(h) != 0 || CWnd::FromHandlePermanent(h))
        return false;
    const char* cls = w->metaObject()->className();
    return qstrcmp(cls, "QWidget") == 0 || qstrcmp(cls, "QFrame") == 0 || qstrcmp(cls, "QGroupBox") == 0;
}

// The window that holds a control as a dialog holds its items.
inline HWND ContainerOf(HWND control)
{
    QWidget* w = ZelWidgetFromHwnd(control);
    QWidget* p = w ? w->parentWidget() : nullptr;
    while (p && IsLookedThrough(p))
        p = p->parentWidget();
    return p ? ZelHwndFromWidget(p) : ::GetParent(control);
}

inline HWND FocusHwnd() { return ZelHwndFromWidget(QApplication::focusWidget()); }

inline void SetFocus(HWND h)
{
    if (QWidget* w = ZelWidgetFromHwnd(h))
        w->setFocus(Qt::OtherFocusReason);
}

} // namespace zelcontrols
