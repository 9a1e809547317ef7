#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/shell/CZelFileList.h>

#include "TestSupport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

struct Received {
    char kind; // b begin, t terminate, a abort, d search directory, s search in directory
    WPARAM wParam;
    std::string path;
};

// A real widget that records the search's messages as its window procedure sees them.
class Receiver {
public:
    Receiver() : m_widget(std::make_unique<QWidget>())
    {
        ZelAddMessageHandler(m_widget.get(), [this](UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
            char kind = msg == WM_ZEL_FILESEARCHTHREAD_BEGIN                   ? 'b'
                        : msg == WM_ZEL_FILESEARCHTHREAD_TERMINATE             ? 't'
                        : msg == WM_ZEL_FILESEARCHTHREAD_ABORT                 ? 'a'
                        : msg == WM_ZEL_FILESEARCHTHREAD_SEARCHDIRECTORY       ? 'd'
                        : msg == WM_ZEL_FILESEARCHTHREAD_FILESEARCHINDIRECTORY ? 's'
                                                                               : 0;
            if (!kind)
                return false;
            // The directory text lives only during the send: copy it at once.
            m_seen.push_back({kind, wp, kind == 's' ? std::string(reinterpret_cast<const char*>(lp)) : ""});
            if (m_onMessage)
                m_onMessage(kind);
            result = 0;
            return true;
        });
    }
    HWND hwnd() { return ZelHwndFromWidget(m_widget.get()); }
    void destroy() { m_widget.reset(); }
    const std::vector<Received>& seen() const { return m_seen; }
    std::string kinds() const
    {
        std::string k;
        for (const Received& r : m_seen)
            if (k.empty() || k.back() != r.kind)
                k += r.kind; // runs of one kind collapse to one letter
        return k;
    }
    // Pumps the event loop until `kind` arrived or 20 s passed.
    bool pumpUntil(char kind)
    {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 20000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
            for (const Received& r : m_seen)
                if (r.kind == kind)
                    return true;
        }
        return false;
    }
    std::function<void(char)> m_onMessage;

private:
    std::unique_ptr<QWidget> m_widget;
    std::vector<Received> m_seen;
};

void makeTree(const zeltest::TempDir& dir, int folders, int files)
{
    for (int d = 0; d < folders; ++d)
        for (int f = 0; f < files; ++f)
            dir.write("d" + std::to_string(d) + "/f" + std::to_string(f) + ".txt", "x");
}

} // namespace

TEST(FileSearchWindow, CompleteRunReportsEveryStepInOrder)
{
    zeltest::TempDir dir;
    makeTree(dir, 3, 2);
    Receiver window;
    CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    list.Search(window.hwnd());
    ASSERT_TRUE(window.pumpUntil('t'));
    EXPECT_EQ(list.Size(), 6);
    EXPECT_FALSE(list.Failed());

    const auto& seen = window.seen();
    EXPECT_EQ(window.kinds(), "bdst");
    int dirs = 0, scans = 0;
    for (const Received& r : seen) {
        if (r.kind == 'd') {
            EXPECT_EQ(r.wParam, static_cast<WPARAM>(++dirs));
        }
        if (r.kind == 's') {
            EXPECT_EQ(r.wParam, static_cast<WPARAM>(++scans));
            EXPECT_EQ(r.path.rfind(dir.path() + "/", 0), 0u) << r.path;
        }
    }
    EXPECT_EQ(dirs, 3);
    EXPECT_EQ(scans, 4);
    EXPECT_EQ(seen.back().wParam, 0u); // not aborted
}

TEST(FileSearchWindow, AbortedRunOrder)
{
    zeltest::TempDir dir;
    makeTree(dir, 300, 3);
    Receiver window;
    CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    list.Search(window.hwnd());
    ASSERT_TRUE(window.pumpUntil('d'));
    list.Abort();
    ASSERT_TRUE(window.pumpUntil('a'));
    EXPECT_EQ(list.Size(), 0);

    std::string kinds = window.kinds();
    ASSERT_GE(kinds.size(), 4u);
    EXPECT_EQ(kinds.front(), 'b');
    EXPECT_EQ(kinds.substr(kinds.size() - 2), "ta");
    EXPECT_NE(window.seen()[window.seen().size() - 2].wParam, 0u); // terminate says aborted
}

TEST(FileSearchWindow, ADeletedWindowStopsTheMessagesNotTheSearch)
{
    zeltest::TempDir dir;
    makeTree(dir, 50, 2);
    Receiver window;
    CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    list.Search(window.hwnd());
    ASSERT_TRUE(window.pumpUntil('b'));
    window.destroy();
    EXPECT_EQ(list.Size(), 100);
    EXPECT_FALSE(list.Failed());
}

TEST(FileSearchWindow, ABlockedWindowCantStallTheSearch)
{
    zeltest::TempDir dir;
    makeTree(dir, 2, 1);
    Receiver window;
    CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    list.Search(window.hwnd());
    // The window's thread waits here without handling anything; each progress send
    // gives up after its time limit and the search goes on to its end.
    list.Wait();
    EXPECT_EQ(list.Size(), 2);
    ASSERT_TRUE(window.pumpUntil('t'));
    for (const Received& r : window.seen())
        EXPECT_NE(r.kind, 's'); // timed-out sends are dropped, never handled late
}
