// Causal order and give-ups between the GUI thread's own posts and what other
// threads send through the window mailbox.
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/Win32Error.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace {

constexpr UINT kFromWorker = WM_APP + 40; // wParam: the worker's number
constexpr UINT kFollowUp = WM_APP + 41;   // posted by the window's thread to itself
constexpr UINT kDone = WM_APP + 42;

// Runs `loop` until it quits, or fails the caller after `limitMs`.
bool runLoop(QEventLoop& loop, int limitMs = 10000)
{
    bool timedOut = false;
    QTimer::singleShot(limitMs, &loop, [&] {
        timedOut = true;
        loop.quit();
    });
    loop.exec();
    return !timedOut;
}

} // namespace

// A handler that posts a follow-up to its own window (the library does so after
// creation, focus and activation) has queued it before its sender is answered, so
// whatever that sender sends next comes after the follow-up, as in one window
// queue. A GUI thread that keeps draining other threads' messages while its own
// post waits in the event queue turns that round.
TEST(QtWindowMailboxReview, OwnFollowUpPostComesBeforeTheSendersNextMessage)
{
    QWidget widget;
    const HWND h = ZelHwndFromWidget(&widget);
    QEventLoop loop;
    std::vector<std::pair<UINT, WPARAM>> seen;
    const int cookie = ZelAddMessageHandler(&widget, [&](UINT m, WPARAM w, LPARAM, LRESULT& r) {
        if (m == kFromWorker || m == kFollowUp)
            seen.emplace_back(m, w);
        if (m == kFromWorker)
            PostMessage(h, kFollowUp, w, 0);
        if (m == kDone)
            loop.quit();
        r = 1;
        return true;
    });
    constexpr WPARAM kCount = 300;
    std::thread worker([&] {
        for (WPARAM i = 0; i < kCount; ++i)
            SendMessage(h, kFromWorker, i, 0);
        PostMessage(h, kDone, 0, 0);
    });
    const bool finished = runLoop(loop);
    worker.join();
    QCoreApplication::processEvents();
    ZelRemoveMessageHandler(&widget, cookie);
    ASSERT_TRUE(finished);
    ASSERT_EQ(seen.size(), 2 * kCount);
    for (WPARAM i = 0; i < kCount; ++i) {
        ASSERT_EQ(seen[2 * i], std::make_pair(kFromWorker, i)) << "at " << i;
        ASSERT_EQ(seen[2 * i + 1], std::make_pair(kFollowUp, i)) << "the follow-up of " << i << " came late";
    }
}
