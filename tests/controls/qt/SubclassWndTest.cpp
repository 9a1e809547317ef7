// Window hooks: what they see, what they swallow, and their order on one window.
#include <Zel260/controls/ZelVirtualKeys.h>
#include <Zel260/controls/qt/CZelSubclassWnd.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>

#include <QLineEdit>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr UINT kPing = WM_APP + 1;

class Recorder : public CZelSubclassWnd {
public:
    Recorder(std::string name, std::vector<std::string>& log) : m_name(std::move(name)), m_log(log) {}
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override
    {
        if (msg == kPing) {
            m_log.push_back(m_name);
            LRESULT below = Default();
            return below + 1;
        }
        if (msg == WM_KEYDOWN) {
            keys.push_back(static_cast<UINT>(wp));
            if (swallowKey == wp)
                return 0;
        }
        return Default();
    }
    void OnDestroyWindow() override { destroyed = true; }
    std::vector<UINT> keys;
    WPARAM swallowKey = 0;
    bool destroyed = false;

private:
    std::string m_name;
    std::vector<std::string>& m_log;
};

class Target : public QWidget, public ZelMessageTarget {
public:
    LRESULT WindowProc(UINT msg, WPARAM, LPARAM) override { return msg == kPing ? 100 : 0; }
};

} // namespace

TEST(SubclassWnd, NewestHookFirstAndDefaultReachesTheWindow)
{
    Target w;
    HWND h = ZelHwndFromWidget(&w);
    std::vector<std::string> log;
    Recorder older("older", log), newer("newer", log);
    ASSERT_TRUE(older.HookWindow(h));
    ASSERT_TRUE(newer.HookWindow(h));
    EXPECT_FALSE(newer.HookWindow(h)) << "one window per hook";
    EXPECT_EQ(CZelSubclassWnd::FromHandle(h), &newer);

    EXPECT_EQ(SendMessage(h, kPing), 102) << "each hook adds one to the window's answer";
    EXPECT_EQ(log, (std::vector<std::string>{"newer", "older"}));

    newer.UnhookWindow();
    EXPECT_EQ(CZelSubclassWnd::FromHandle(h), &older);
    EXPECT_EQ(SendMessage(h, kPing), 101);
}

TEST(SubclassWnd, SwallowedKeyNeverReachesTheControl)
{
    QLineEdit edit;
    edit.show();
    std::vector<std::string> log;
    Recorder hook("h", log);
    ASSERT_TRUE(hook.HookWindow(ZelHwndFromWidget(&edit)));
    hook.swallowKey = 'B';
    QTest::keyClicks(&edit, "abc");
    EXPECT_EQ(edit.text(), "ac");
    EXPECT_EQ(hook.keys, (std::vector<UINT>{'A', 'B', 'C'}));
}

TEST(SubclassWnd, WindowDestructionEndsTheHook)
{
    std::vector<std::string> log;
    Recorder hook("h", log);
    HWND h = nullptr;
    {
        QWidget w;
        h = ZelHwndFromWidget(&w);
        ASSERT_TRUE(hook.HookWindow(h));
    }
    EXPECT_TRUE(hook.destroyed);
    EXPECT_FALSE(hook.IsHooked());
    EXPECT_EQ(CZelSubclassWnd::FromHandle(h), nullptr);
    EXPECT_FALSE(hook.HookWindow(h)) << "a dead handle can't be hooked";
}
