#include "WindowMailbox.h"

#include <chrono>
#include <thread>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

// How long a sender watches for its answer before it sleeps, and how long the GUI
// thread stays at the queue after it answered a send. Both are far below what a
// person notices, and long enough to bridge the gap between the messages of a
// busy worker (a file search reports a folder every few microseconds).
constexpr auto kSenderWatch = std::chrono::microseconds(50);
constexpr auto kLinger = std::chrono::microseconds(150);
// The longest one drain keeps the GUI thread from painting and input.
constexpr auto kSlice = std::chrono::milliseconds(5);

// Watching only pays where the other thread runs on another processor at the same
// time; on a single one it would take the time the other thread needs.
bool watchingPays()
{
    static const bool pays = std::thread::hardware_concurrency() > 1;
    return pays;
}

inline void relax()
{
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    asm volatile("yield");
#endif
}

// Spins until `ready` holds or `limit` has passed; true if it holds.
template <typename Ready>
bool watch(std::chrono::microseconds limit, Ready ready)
{
    if (!watchingPays())
        return ready();
    const Clock::time_point until = Clock::now() + limit;
    for (unsigned i = 1;; ++i) {
        if (ready())
            return true;
        relax();
        // Now and then the processor is offered to others: where the other side
        // waits for this very processor (a busy machine), it gets to run at once
        // instead of after the watch.
        if ((i & 15) == 0) {
            std::this_thread::yield();
            if (Clock::now() >= until)
                return ready();
        }
    }
}

} // namespace

bool WindowJob::Start()
{
    Phase expected = Pending;
    return m_phase.compare_exchange_strong(expected, Running, std::memory_order_acq_rel);
}

void WindowJob::Finish(Phase to, LRESULT result)
{
    if (to == Failed) {
        Phase expected = Pending;
        if (!m_phase.compare_exchange_strong(expected, Failed, std::memory_order_seq_cst))
            return;
    } else {
        m_result = result;
        m_phase.store(to, std::memory_order_seq_cst);
    }
    // A waiter that went to sleep said so before it looked at the phase a last time,
    // so one of the two sees the other; the lock makes sure it is asleep by now.
    if (m_sleeping.load(std::memory_order_seq_cst)) {
        { std::lock_guard lock(m_mutex); }
        m_cv.notify_all();
    }
}

WindowJob::Phase WindowJob::Wait(UINT timeoutMs, LRESULT* result)
{
    const Clock::time_point start = Clock::now();
    auto settled = [this] {
        Phase p = m_phase.load(std::memory_order_seq_cst);
        return p == Done || p == Failed;
    };
    if (!watch(kSenderWatch, settled)) {
        std::unique_lock lock(m_mutex);
        m_sleeping.store(true, std::memory_order_seq_cst);
        if (timeoutMs == INFINITE) {
            m_cv.wait(lock, settled);
        } else if (!m_cv.wait_until(lock, start + std::chrono::milliseconds(timeoutMs), settled)) {
            Phase expected = Pending;
            if (m_phase.compare_exchange_strong(expected, Cancelled, std::memory_order_acq_rel))
                return Cancelled;
            // Already running: the work may use what the sender lent it, so wait.
            m_cv.wait(lock, settled);
        }
    }
    // Done and Failed are final, and the result was written before the phase.
    const Phase p = m_phase.load(std::memory_order_acquire);
    if (p == Done && result)
        *result = m_result;
    return p;
}

WindowMailbox::WindowMailbox(std::function<void()> wake) : m_wake(std::move(wake)) {}

bool WindowMailbox::Put(WindowDelivery delivery)
{
    bool wake = false;
    {
        std::lock_guard lock(m_mutex);
        if (m_closed)
            return false;
        m_queue.push_back(std::move(delivery));
        m_queued.fetch_add(1, std::memory_order_release);
        if (!m_polling && !m_wakeQueued) {
            m_wakeQueued = true;
            wake = true;
        }
    }
    if (wake)
        m_wake();
    return true;
}

void WindowMailbox::Drain(const std::function<void(WindowDelivery&)>& deliver)
{
    const Clock::time_point sliceEnd = Clock::now() + kSlice;
    // Only a sender waits for the GUI thread; posts may as well gather in the queue
    // until the next wake-up, so after a post the drain doesn't stay.
    bool senderWaited = false;
    std::unique_lock lock(m_mutex);
    m_wakeQueued = false;
    for (;;) {
        if (m_queue.empty()) {
            if (m_closed || !senderWaited || Clock::now() >= sliceEnd)
                break;
            m_polling = true;
            lock.unlock();
            bool more = watch(kLinger, [this] { return m_queued.load(std::memory_order_acquire) != 0; });
            lock.lock();
            if (!more && m_queue.empty())
                break;
            continue;
        }
        if (Clock::now() >= sliceEnd) {
            // The rest waits behind whatever the event queue holds by now.
            if (!m_wakeQueued) {
                m_wakeQueued = true;
                lock.unlock();
                m_wake();
                lock.lock();
            }
            break;
        }
        WindowDelivery delivery = std::move(m_queue.front());
        m_queue.pop_front();
        m_queued.fetch_sub(1, std::memory_order_release);
        senderWaited = delivery.job != nullptr;
        // While the work runs (it may open a modal loop), a new delivery asks for a
        // drain event of its own.
        m_polling = false;
        lock.unlock();
        deliver(delivery);
        delivery = WindowDelivery();
        lock.lock();
    }
    m_polling = false;
}

void WindowMailbox::Close()
{
    std::deque<WindowDelivery> orphans;
    {
        std::lock_guard lock(m_mutex);
        m_closed = true;
        orphans.swap(m_queue);
        m_queued.store(0, std::memory_order_release);
    }
    for (WindowDelivery& d : orphans)
        if (d.job)
            d.job->Finish(WindowJob::Failed);
}
