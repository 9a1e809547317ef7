// Messages posted to the windows of the GUI thread, and those sent to them from
// other threads.
//
// A thread that sends to a window waits for the answer, so each message costs a
// wake-up on both sides when it travels through the GUI thread's event queue:
// tens of microseconds on a virtual machine, far more than the work of a progress
// message. The mailbox keeps the GUI thread at its queue for a moment after it
// answered a send, and lets a sender watch its answer for a moment before it
// sleeps, so a stream of sends (a file search reports every folder) passes without
// either thread sleeping, while a lone message still wakes the GUI thread the
// usual way. Posts need no answer: they gather until the GUI thread comes by.
#pragma once

#include <Zel260/platform/WindowMessages.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

class QWidget;

// One unit of work that another thread hands to a window's thread and may wait
// for. The work runs only if it leaves Pending for Running; a waiter may cancel it
// only while it is still Pending, so nothing the work points at is used after the
// waiter has given up.
class WindowJob {
public:
    enum Phase { Pending, Running, Done, Cancelled, Failed };

    // The window's thread, before running the work: false when the waiter has
    // given up or the job has failed, and then the work must not run.
    bool Start();
    // Running to Done with the answer, or Pending to Failed (a failure after the
    // work started is ignored); releases the waiter.
    void Finish(Phase to, LRESULT result = 0);
    // The waiter: until the job is Done or Failed, or, with a finite `timeoutMs`,
    // until the limit passes while the job is still Pending, which cancels it.
    // Returns Done (answer in *result), Failed or Cancelled.
    Phase Wait(UINT timeoutMs, LRESULT* result);

private:
    std::atomic<Phase> m_phase{Pending};
    LRESULT m_result = 0;
    // Only a waiter that stopped watching sleeps, and only then is the lock needed.
    std::atomic<bool> m_sleeping{false};
    std::mutex m_mutex;
    std::condition_variable m_cv;
};

using WindowWork = std::function<LRESULT(QWidget*)>;

// Something on its way to a window (by its handle key): a message, or other work
// to run on the window's thread when `work` is set; for a send, the job that its
// sender waits on. A message travels as its three words, without an allocation.
struct WindowDelivery {
    std::uintptr_t target = 0;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    WindowWork work;
    std::shared_ptr<WindowJob> job;
};

class WindowMailbox {
public:
    // `wake` puts one drain event into the GUI thread's event queue; the mailbox
    // calls it at most once until that event has been handled.
    explicit WindowMailbox(std::function<void()> wake);

    // Any thread: queues a delivery. False once the mailbox is closed.
    bool Put(WindowDelivery delivery);
    // The GUI thread, for a drain event: delivers what is queued, in order, and
    // what arrives while it is at it, for a bounded time. A nested event loop
    // inside `deliver` drains too, so nothing waits for a modal dialog to close.
    void Drain(const std::function<void(WindowDelivery&)>& deliver);
    // Refuses further deliveries and releases the waiters of the queued ones.
    void Close();

private:
    std::mutex m_mutex;
    std::deque<WindowDelivery> m_queue;
    std::atomic<size_t> m_queued{0}; // the queue's length, read without the lock
    bool m_wakeQueued = false;       // a drain event waits in the event queue
    bool m_polling = false;          // a drain looks at the queue again by itself
    bool m_closed = false;
    std::function<void()> m_wake;
};
