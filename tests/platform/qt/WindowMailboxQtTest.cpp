// Messages from other threads in streams, floods and nested event loops: the GUI
// thread may stay at its queue between messages, which must never lose one, reorder
// them, or keep the rest of the event loop waiting. Then the order between the GUI
// thread's own posts and other threads' sends, senders that give up, and the end
// of the application under a sending worker.
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/Win32Error.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

constexpr UINT kSeq = WM_APP + 10;   // wParam: sequence number
constexpr UINT kText = WM_APP + 11;  // lParam: text to copy at once
constexpr UINT kOpen = WM_APP + 12;  // opens a nested event loop
constexpr UINT kClose = WM_APP + 13; // closes it
constexpr UINT kStop = WM_APP + 14;  // ends the outer loop

// Runs `loop` until it quits, or fails the caller after `limitMs`, so that a lost
// message fails the test instead of hanging it.
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

// A window on the GUI thread that notes what reaches it.
struct Sink {
    QWidget widget;
    QEventLoop loop;
    std::vector<WPARAM> order;
    std::string lastText;
    int cookie = 0;
    std::function<void(UINT)> extra;

    Sink()
    {
        cookie = ZelAddMessageHandler(&widget, [this](UINT m, WPARAM w, LPARAM l, LRESULT& r) {
            if (m == kSeq || m == kText)
                order.push_back(w);
            if (m == kText)
                lastText.assign(reinterpret_cast<const char*>(l));
            if (m == kStop)
                loop.quit();
            if (extra)
                extra(m);
            r = static_cast<LRESULT>(w) + 1;
            return true;
        });
    }
    HWND hwnd() { return ZelHwndFromWidget(&widget); }
    // Runs the event loop until kStop.
    bool runUntilStopped() { return runLoop(loop); }
};

} // namespace

// Gaps shorter and longer than the GUI thread's wait at its queue, so that both
// ways in (found while waiting, and woken from the event loop) are taken many times.
TEST(QtWindowMailbox, StreamFromAWorkerArrivesWholeAndInOrder)
{
    Sink sink;
    const HWND h = sink.hwnd();
    constexpr WPARAM kCount = 3000;
    std::atomic<int> badAnswers{0};
    std::thread worker([&] {
        char text[32];
        for (WPARAM i = 0; i < kCount; ++i) {
            if (i % 3 == 0) {
                PostMessage(h, kSeq, i, 0);
            } else {
                std::snprintf(text, sizeof text, "folder %zu", static_cast<size_t>(i));
                DWORD_PTR r = 0;
                if (!SendMessageTimeout(h, kText, i, reinterpret_cast<LPARAM>(text), 0, 5000, &r) || r != i + 1)
                    ++badAnswers;
                std::snprintf(text, sizeof text, "overwritten");
            }
            if (i % 97 == 0)
                std::this_thread::sleep_for(std::chrono::microseconds(400));
            else if (i % 13 == 0)
                std::this_thread::sleep_for(std::chrono::microseconds(20));
        }
        PostMessage(h, kStop, 0, 0);
    });
    const bool stopped = sink.runUntilStopped();
    worker.join();
    ASSERT_TRUE(stopped) << "a message was lost: " << sink.order.size() << " of " << kCount;
    EXPECT_EQ(badAnswers.load(), 0);
    ASSERT_EQ(sink.order.size(), kCount);
    for (WPARAM i = 0; i < kCount; ++i)
        ASSERT_EQ(sink.order[i], i) << "out of order at " << i;
    EXPECT_EQ(sink.lastText, "folder 2999") << "the text was read while its sender still waited";
}

// A handler that opens a modal loop (a message box, a dialog) must still see what
// other threads send and post meanwhile, or a sender waits for ever.
TEST(QtWindowMailbox, NestedLoopInsideAHandlerStillReceivesOtherThreads)
{
    Sink sink;
    const HWND h = sink.hwnd();
    QEventLoop nested;
    bool closedByMessage = false;
    std::atomic<bool> inNested{false};
    std::atomic<LRESULT> secondAnswer{0};
    sink.extra = [&](UINT m) {
        if (m == kOpen) {
            QTimer::singleShot(5000, &nested, &QEventLoop::quit);
            inNested = true;
            nested.exec();
        } else if (m == kClose) {
            closedByMessage = true;
            nested.quit();
        }
    };
    std::thread opener([&] { SendMessage(h, kOpen, 0, 0); });
    std::thread closer([&] {
        while (!inNested)
            std::this_thread::yield();
        DWORD_PTR r = 0;
        SendMessageTimeout(h, kSeq, 41, 0, 0, 5000, &r);
        secondAnswer = static_cast<LRESULT>(r);
        PostMessage(h, kClose, 0, 0);
    });
    std::thread stopper([&] {
        opener.join();
        closer.join();
        PostMessage(h, kStop, 0, 0);
    });
    const bool stopped = sink.runUntilStopped();
    stopper.join();
    ASSERT_TRUE(stopped);
    EXPECT_TRUE(closedByMessage) << "the nested loop ran out its fail-safe instead";
    EXPECT_EQ(secondAnswer.load(), 42) << "a send during the nested loop was answered";
}

// A worker that posts without pause must not keep timers, painting and input
// waiting: the GUI thread leaves the queue now and then.
TEST(QtWindowMailbox, AFloodOfPostsLeavesTheEventLoopTurning)
{
    Sink sink;
    const HWND h = sink.hwnd();
    int ticks = 0;
    QTimer timer;
    timer.setInterval(2);
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    std::atomic<WPARAM> posted{0};
    std::atomic<int> ticksDuringFlood{-1};
    std::thread worker([&] {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(150);
        WPARAM i = 0;
        while (std::chrono::steady_clock::now() < end)
            PostMessage(h, kSeq, i++, 0);
        posted = i;
        PostMessage(h, kStop, 0, 0);
    });
    sink.extra = [&](UINT m) {
        if (m == kStop)
            ticksDuringFlood = ticks;
    };
    timer.start();
    const bool stopped = sink.runUntilStopped();
    worker.join();
    ASSERT_TRUE(stopped);
    EXPECT_EQ(sink.order.size(), posted.load()) << "every post arrived";
    EXPECT_GE(ticksDuringFlood.load(), 5) << "the timer starved while the posts came in";
}

// Causal order and give-ups between the GUI thread's own posts and what other
// threads send.
namespace {

constexpr UINT kFromWorker = WM_APP + 40; // wParam: the worker's number
constexpr UINT kFollowUp = WM_APP + 41;   // posted by the window's thread to itself
constexpr UINT kDone = WM_APP + 42;

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

// Senders that give up while the GUI thread is busy, racing the moment it gets to
// them: a message is handled exactly when its sender was answered, never after the
// sender has gone (its text lives on the sender's stack), and the answers of those
// that got through are their own.
TEST(QtWindowMailboxReview, SendersThatGiveUpAreNeverHandledAndTheOthersGetTheirOwnAnswer)
{
    QWidget widget;
    const HWND h = ZelHwndFromWidget(&widget);
    constexpr int kThreads = 4;
    constexpr int kEach = 150;
    constexpr int kTotal = kThreads * kEach;
    std::vector<std::atomic<int>> handled(kTotal);
    std::vector<std::atomic<int>> outcome(kTotal); // 0 unknown, 1 answered, 2 gave up, 3 other
    std::atomic<int> wrongText{0};
    std::atomic<int> running{kThreads};
    const int cookie = ZelAddMessageHandler(&widget, [&](UINT m, WPARAM w, LPARAM l, LRESULT& r) {
        if (m != kFromWorker)
            return false;
        const int id = static_cast<int>(w);
        const auto* text = reinterpret_cast<const std::atomic<int>*>(l);
        if (text->load() != id)
            ++wrongText;
        ++handled[id];
        // Now and then a slow handler, so that the other senders run out of time
        // while the GUI thread is at their queue, not only while it is away.
        if (id % 5 == 0) {
            const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(1500);
            while (std::chrono::steady_clock::now() < until) {
            }
        }
        r = static_cast<LRESULT>(id) * 3 + 1;
        return true;
    });
    std::vector<std::thread> senders;
    for (int t = 0; t < kThreads; ++t)
        senders.emplace_back([&, t] {
            for (int i = 0; i < kEach; ++i) {
                const int id = t * kEach + i;
                std::atomic<int> text{id};
                DWORD_PTR r = 0;
                const LRESULT ok = SendMessageTimeout(h, kFromWorker, static_cast<WPARAM>(id),
                                                      reinterpret_cast<LPARAM>(&text), SMTO_NORMAL, i % 3, &r);
                const DWORD error = GetLastError();
                if (ok && r == static_cast<DWORD_PTR>(id) * 3 + 1)
                    outcome[id] = 1;
                else if (!ok && error == ERROR_TIMEOUT)
                    outcome[id] = 2;
                else
                    outcome[id] = 3;
                text = -1; // what a reused stack would hold
            }
            --running;
        });
    // The GUI thread alternates between busy stretches and short turns at its queue.
    int round = 0;
    while (running.load() > 0) {
        const auto busyUntil = std::chrono::steady_clock::now() + std::chrono::microseconds(200 + 700 * (round++ % 4));
        while (std::chrono::steady_clock::now() < busyUntil) {
        }
        QCoreApplication::processEvents();
    }
    for (auto& s : senders)
        s.join();
    QCoreApplication::processEvents();
    ZelRemoveMessageHandler(&widget, cookie);
    EXPECT_EQ(wrongText.load(), 0) << "a handler read a sender's memory after the sender had gone on";
    int answered = 0;
    int gaveUp = 0;
    for (int id = 0; id < kTotal; ++id) {
        ASSERT_NE(outcome[id].load(), 3) << "message " << id << " failed for another reason";
        if (outcome[id] == 1) {
            ++answered;
            EXPECT_EQ(handled[id].load(), 1) << "answered message " << id;
        } else {
            ++gaveUp;
            EXPECT_EQ(handled[id].load(), 0) << "message " << id << " was handled after its sender gave up";
        }
    }
    EXPECT_GT(answered, 0);
    EXPECT_GT(gaveUp, 0);
}

// The application goes away while a worker keeps sending: the sender waiting at
// that moment is released, and later ones fail at once instead of waiting for an
// event loop that is gone. Runs in a child process of its own, since it ends the
// application; a hang there turns into the alarm signal.
TEST(QtWindowMailboxReviewDeathTest, EndingTheApplicationReleasesAWorkerThatKeepsSending)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            alarm(10);
            auto* widget = new QWidget; // outlives the application on purpose
            const HWND h = ZelHwndFromWidget(widget);
            std::atomic<int> answered{0};
            std::atomic<DWORD> lastError{0};
            std::thread worker([&] {
                for (;;) {
                    DWORD_PTR r = 0;
                    if (!SendMessageTimeout(h, kFromWorker, 0, 0, SMTO_NORMAL, INFINITE, &r)) {
                        lastError = GetLastError();
                        break;
                    }
                    ++answered;
                }
            });
            while (answered.load() < 20)
                QCoreApplication::processEvents();
            std::this_thread::sleep_for(std::chrono::milliseconds(5)); // the worker now waits
            static_cast<QApplication*>(QCoreApplication::instance())->~QApplication();
            worker.join();
            _exit(lastError.load() == ERROR_INVALID_WINDOW_HANDLE ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}
