// Handles for QWidgets and the Qt implementation of the window-message layer of
// <Zel260/platform/WindowMessages.h>.
//
// A widget gets its HWND from ZelHwndFromWidget; the handle stays valid (IsWindow
// TRUE) until the widget is destroyed and is never given to another widget. A
// message for the handle reaches the widget on its own thread, in this order, until
// one of them handles it:
//   1. the handlers added with ZelAddMessageHandler, newest first;
//   2. the widget's event filters and event(), as a ZelMessageEvent;
//   3. ZelMessageTarget::WindowProc when the widget's class derives from it.
// An unhandled message answers 0.
//
// The backend installs itself when a QApplication (or QCoreApplication) is
// constructed in a process that has zel260widgets loaded, and removes itself when the
// application is destroyed. ZelInstallQtWindowBackend does the same by hand, for a
// host that creates its application before loading the library.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <functional>

class QWidget;

// The handle of `widget`, registered on first use; null for null. Call it on the
// widget's thread (the GUI thread) or while the widget is sure to live.
HWND ZelHwndFromWidget(QWidget* widget);
// The widget behind a live handle; null for a dead or unknown handle. The pointer
// is only safe to use on the widget's thread.
QWidget* ZelWidgetFromHwnd(HWND hWnd);

// A message hook for a widget of any class: returns true when it handled the
// message and has stored the answer in `result`; false passes the message on.
using ZelMessageHandler = std::function<bool(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)>;
// Adds a hook in front of the widget's others; returns a cookie (> 0) for removal,
// 0 for a null widget or handler.
int ZelAddMessageHandler(QWidget* widget, ZelMessageHandler handler);
// Removes a hook; unknown cookies are ignored.
void ZelRemoveMessageHandler(QWidget* widget, int cookie);

// Installs the Qt backend. Needs an existing QCoreApplication and its thread;
// returns false otherwise. Installing twice is harmless.
bool ZelInstallQtWindowBackend();
