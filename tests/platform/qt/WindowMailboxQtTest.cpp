// Messages from other threads in streams, floods and nested event loops: the GUI
// thread may stay at its queue between messages, which must never lose one, reorder
// them, or keep the rest of the event loop waiting.
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QEventLoop>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr UINT kSeq = WM_APP + 10;   // wParam: sequence number
constexpr UINT kText = WM_APP + 11;  // lParam: text to copy at once
constexpr UINT kOpen = WM_APP + 12;  // opens a nested event loop
constexpr UINT kClose = WM_APP + 13; // closes it
constexpr UINT kStop = WM_APP + 14;  // ends the outer loop

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
    // Runs the event loop until kStop, with a fail-safe so that a lost message
    // fails the test instead of hanging it.
    bool runUntilStopped(int limitMs = 10000)
    {
        bool timedOut = false;
        QTimer::singleShot(limitMs, &loop, [&] {
            timedOut = true;
            loop.quit();
        });
        loop.exec();
        return !timedOut;
    }
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
