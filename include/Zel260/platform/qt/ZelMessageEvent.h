// A window message as a Qt event. Every message sent or posted to a widget's HWND is
// delivered to the widget (on its own thread) as a ZelMessageEvent through
// QCoreApplication::sendEvent, so event filters (window hooks) and event()
// overrides see it. The event arrives ignored; whoever handles it calls
// setResult(), which accepts it and ends the delivery.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <QEvent>

class ZelMessageEvent : public QEvent {
public:
    ZelMessageEvent(UINT message, WPARAM wParam, LPARAM lParam);

    // The event type, registered with Qt once per process.
    static QEvent::Type eventType();

    UINT message() const { return m_message; }
    WPARAM wParam() const { return m_wParam; }
    LPARAM lParam() const { return m_lParam; }
    LRESULT result() const { return m_result; }
    // Stores the answer and accepts the event.
    void setResult(LRESULT result)
    {
        m_result = result;
        accept();
    }

private:
    UINT m_message;
    WPARAM m_wParam;
    LPARAM m_lParam;
    LRESULT m_result = 0;
};
