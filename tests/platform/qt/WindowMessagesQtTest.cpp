#include <Zel260/platform/CWnd.h>
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/Win32Error.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/platform/qt/ZelMessageEvent.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QThread>
#include <QWidget>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace {

constexpr UINT kPing = WM_APP + 1;

// A widget class with a window procedure: it records what it handled and where.
class Recorder : public QWidget, public ZelMessageTarget {
public:
    using QWidget::QWidget;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        seen.push_back({message, wParam});
        onGuiThread = onGuiThread && QThread::currentThread() == qApp->thread();
        return static_cast<LRESULT>(wParam) * 2 + lParam;
    }
    struct Hit {
        UINT message;
        WPARAM wParam;
    };
    std::vector<Hit> seen;
    bool onGuiThread = true;
};

// Keeps the GUI thread's event loop turning until `done` or two seconds pass.
template <class Pred>
bool pumpUntil(Pred done)
{
    QDeadlineTimer deadline(2000);
    while (!done() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return done();
}

} // namespace

TEST(QtWindowMessages, BackendIsInstalledWithTheApplication)
{
    EXPECT_NE(ZelGetWindowBackend(), nullptr);
    QWidget w;
    HWND h = ZelHwndFromWidget(&w);
    EXPECT_EQ(ZelHwndFromWidget(&w), h) << "one handle per widget";
    EXPECT_EQ(ZelWidgetFromHwnd(h), &w);
    EXPECT_EQ(ZelHwndFromWidget(nullptr), nullptr);
}

TEST(QtWindowMessages, WorkerPostsAndSendsToARealWidget)
{
    Recorder w;
    HWND h = ZelHwndFromWidget(&w);
    std::atomic<LRESULT> sendResult{-1};
    std::atomic<bool> workerDone{false};
    std::thread worker([&] {
        for (WPARAM i = 0; i < 5; ++i)
            PostMessage(h, kPing, i, 0);
        // The send queues behind the posts, so it also proves they arrived first.
        sendResult = SendMessage(h, kPing + 1, 20, 1);
        workerDone = true;
    });
    ASSERT_TRUE(pumpUntil([&] { return workerDone.load(); }));
    worker.join();
    EXPECT_EQ(sendResult.load(), 41);
    ASSERT_EQ(w.seen.size(), 6u);
    for (WPARAM i = 0; i < 5; ++i) {
        EXPECT_EQ(w.seen[i].message, kPing);
        EXPECT_EQ(w.seen[i].wParam, i) << "posts keep their order";
    }
    EXPECT_EQ(w.seen[5].message, kPing + 1);
    EXPECT_TRUE(w.onGuiThread);
}

TEST(QtWindowMessages, SendFromTheWindowThreadIsDirect)
{
    Recorder w;
    EXPECT_EQ(SendMessage(ZelHwndFromWidget(&w), kPing, 3, 1), 7);
    EXPECT_EQ(w.seen.size(), 1u) << "handled before SendMessage returns, without an event loop";
    DWORD_PTR r = 0;
    EXPECT_NE(SendMessageTimeout(ZelHwndFromWidget(&w), kPing, 1, 0, SMTO_NORMAL, 0, &r), 0);
    EXPECT_EQ(r, 2u);
}

TEST(QtWindowMessages, HooksThenEventFiltersThenWindowProc)
{
    Recorder w;
    struct Filter : QObject {
        bool eventFilter(QObject*, QEvent* e) override
        {
            if (e->type() != ZelMessageEvent::eventType())
                return false;
            auto* m = static_cast<ZelMessageEvent*>(e);
            if (m->message() == kPing + 2)
                m->setResult(200);
            return m->isAccepted();
        }
    } filter;
    w.installEventFilter(&filter);
    int cookie = ZelAddMessageHandler(&w, [](UINT m, WPARAM, LPARAM, LRESULT& r) {
        if (m != kPing + 1)
            return false;
        r = 100;
        return true;
    });
    ASSERT_GT(cookie, 0);
    HWND h = ZelHwndFromWidget(&w);
    EXPECT_EQ(SendMessage(h, kPing + 1, 0, 0), 100);
    EXPECT_EQ(SendMessage(h, kPing + 2, 0, 0), 200);
    EXPECT_EQ(SendMessage(h, kPing, 5, 0), 10);
    EXPECT_EQ(w.seen.size(), 1u) << "WindowProc only sees what the hooks declined";
    ZelRemoveMessageHandler(&w, cookie);
    EXPECT_EQ(SendMessage(h, kPing + 1, 1, 0), 2);

    QWidget plain;
    EXPECT_EQ(SendMessage(ZelHwndFromWidget(&plain), kPing, 1, 1), 0) << "unhandled answers 0";
}

TEST(QtWindowMessages, TimeoutAgainstABusyWindowDropsTheMessage)
{
    Recorder w;
    HWND h = ZelHwndFromWidget(&w);
    std::atomic<LRESULT> ok{-1};
    std::atomic<DWORD> error{0};
    std::thread worker([&] {
        DWORD_PTR r = 77;
        ok = SendMessageTimeout(h, kPing, 1, 0, SMTO_ABORTIFHUNG, 50, &r);
        error = GetLastError();
    });
    // The GUI thread stays busy (no event processing) until the worker gives up.
    worker.join();
    EXPECT_EQ(ok.load(), 0);
    EXPECT_EQ(error.load(), ERROR_TIMEOUT);
    QCoreApplication::processEvents();
    EXPECT_TRUE(w.seen.empty()) << "a timed-out message is never handled later";
}

TEST(QtWindowMessages, DestroyingTheWindowReleasesAWaitingSender)
{
    auto* w = new Recorder;
    HWND h = ZelHwndFromWidget(w);
    std::atomic<LRESULT> ok{-1};
    std::atomic<DWORD> error{0};
    std::atomic<bool> started{false};
    std::thread worker([&] {
        started = true;
        DWORD_PTR r = 0;
        ok = SendMessageTimeout(h, kPing, 1, 0, SMTO_NORMAL, INFINITE, &r);
        error = GetLastError();
    });
    while (!started)
        std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    delete w; // without ever letting the message through
    worker.join();
    EXPECT_EQ(ok.load(), 0);
    EXPECT_EQ(error.load(), ERROR_INVALID_WINDOW_HANDLE);
    QCoreApplication::processEvents(); // the stale queued event must be harmless
}

TEST(QtWindowMessages, IsWindowIsALivenessTest)
{
    auto* w = new QWidget;
    HWND h = ZelHwndFromWidget(w);
    EXPECT_TRUE(IsWindow(h));
    PostMessage(h, kPing, 0, 0); // still queued when the widget dies
    delete w;
    EXPECT_FALSE(IsWindow(h));
    EXPECT_EQ(ZelWidgetFromHwnd(h), nullptr);
    // A new widget may reuse the memory, never the handle.
    QWidget again;
    EXPECT_NE(ZelHwndFromWidget(&again), h);
    EXPECT_FALSE(IsWindow(h));
    SetLastError(0);
    EXPECT_FALSE(PostMessage(h, kPing, 0, 0));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_EQ(SendMessage(h, kPing, 0, 0), 0);
    EXPECT_EQ(ZelWindowTextWidth(h, "x"), -1);
    QCoreApplication::processEvents();
    EXPECT_FALSE(IsWindow(nullptr));
}

TEST(QtWindowMessages, DescendantsInChildOrderWithoutOwnedWindows)
{
    QWidget top;
    std::vector<int> order;
    auto tag = [&](QWidget* w, int id) {
        ZelSetDlgCtrlID(ZelHwndFromWidget(w), id);
        ZelAddMessageHandler(w, [&order, id](UINT m, WPARAM, LPARAM, LRESULT&) {
            if (m == kPing)
                order.push_back(id);
            return false;
        });
    };
    auto* a = new QWidget(&top);
    auto* a1 = new QWidget(a);
    auto* b = new QWidget(&top);
    auto* owned = new QDialog(&top);
    tag(a, 1);
    tag(a1, 11);
    tag(b, 2);
    tag(owned, 3);
    HWND h = ZelHwndFromWidget(&top);

    SendMessageToDescendants(h, kPing, 0, 0, TRUE);
    EXPECT_EQ(order, (std::vector<int>{1, 11, 2}));
    order.clear();
    SendMessageToDescendants(h, kPing, 0, 0, FALSE);
    EXPECT_EQ(order, (std::vector<int>{1, 2}));

    // From a worker the walk happens on the window's thread.
    order.clear();
    std::atomic<bool> done{false};
    std::thread worker([&] {
        SendMessageToDescendants(h, kPing, 0, 0, TRUE);
        done = true;
    });
    ASSERT_TRUE(pumpUntil([&] { return done.load(); }));
    worker.join();
    EXPECT_EQ(order, (std::vector<int>{1, 11, 2}));

    EXPECT_EQ(GetDlgItem(h, 2), ZelHwndFromWidget(b));
    EXPECT_EQ(GetDlgItem(h, 11), nullptr) << "only direct children";
    EXPECT_EQ(GetParent(ZelHwndFromWidget(a1)), ZelHwndFromWidget(a));
    EXPECT_EQ(GetDlgCtrlID(ZelHwndFromWidget(a)), 1);
}

TEST(QtWindowMessages, TextWidthUsesTheWindowFont)
{
    QWidget w;
    HWND h = ZelHwndFromWidget(&w);
    int narrow = ZelWindowTextWidth(h, "ii");
    int wide = ZelWindowTextWidth(h, "iiiiiiii");
    EXPECT_GT(wide, narrow);
    EXPECT_EQ(ZelWindowTextWidth(h, nullptr), 0);
    QFont big = w.font();
    big.setPointSize(big.pointSize() * 3);
    w.setFont(big);
    EXPECT_GT(ZelWindowTextWidth(h, "iiiiiiii"), wide);
}

namespace {

// The shape of a library window class: a widget, a CWnd and a window procedure
// that serves both.
class CCounterWnd : public QWidget, public CWnd, public ZelMessageTarget {
public:
    CCounterWnd() { Attach(ZelHwndFromWidget(this)); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == kPing)
            return ++count;
        return CWnd::WindowProc(message, wParam, lParam);
    }
    int count = 0;
};

} // namespace

TEST(QtWindowMessages, CWndWidgetsReceiveThroughTheirWindowProc)
{
    QWidget parent;
    auto* child = new CCounterWnd;
    child->setParent(&parent);
    EXPECT_EQ(child->SendMessage(kPing), 1);
    EXPECT_EQ(CWnd::FromHandle(ZelHwndFromWidget(child)), child);
    CWnd::FromHandle(ZelHwndFromWidget(&parent))->SendMessageToDescendants(kPing, 0, 0, TRUE, TRUE);
    EXPECT_EQ(child->count, 2);
    EXPECT_EQ(child->SendMessage(WM_USER), 0);
    CWnd::DeleteTempMap();
}
