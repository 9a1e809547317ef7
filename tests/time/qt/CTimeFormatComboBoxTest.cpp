#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/CWnd.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/services/CZelProfileEntries.h>
#include <Zel260/services/ZelProfilePath.h>
#include <Zel260/time/qt/CTimeFormatComboBox.h>

#include <TestSupport.h>
#include <gtest/gtest.h>

#include <QWidget>

#include <vector>

namespace {

struct Seen {
    HWND window;
    WPARAM oldIndex;
    LPARAM newIndex;
};

class TimeFormatCombo : public ::testing::Test {
protected:
    void SetUp() override
    {
        ZelSetProfilePath(m_dir.file("Zel260.INI").c_str());
        CZelTime::StoreCurrentTimeFormat(17);
    }
    void TearDown() override { ZelSetProfilePath(""); }

    // Records the format messages that reach `w`.
    void listen(QWidget* w)
    {
        const HWND h = ZelHwndFromWidget(w);
        ZelAddMessageHandler(w, [this, h](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
            if (message != WM_ZEL_FORMAT_CHANGED_TIME)
                return false;
            m_seen.push_back({h, wParam, lParam});
            result = 0;
            return true;
        });
    }

    zeltest::TempDir m_dir;
    std::vector<Seen> m_seen;
};

} // namespace

TEST_F(TimeFormatCombo, FilledWithTodayInEveryTemplate)
{
    CZelTime::CTimeFormatComboBox combo;
    EXPECT_EQ(combo.Style() & 0x131u, 0u);
    EXPECT_EQ(combo.Style() & 0x3u, CZelTime::CTimeFormatComboBox::CBS_DROPDOWN);
    UINT style = 0x133;
    EXPECT_TRUE(combo.PreCreateWindow(style));
    EXPECT_EQ(style, 0x2u);

    const CZelTime now;
    now.InitializeTimeFormatComboBox(combo);
    ASSERT_EQ(combo.count(), 32);
    EXPECT_EQ(combo.currentIndex(), 17);
    EXPECT_EQ(now.GetCurrentSelection(combo), 17u);
    // The date part of each row is today's in that row's form.
    EXPECT_TRUE(combo.itemText(8).startsWith(QString::fromUtf8(now.Format("%m-%d-%Y", 0).GetString())));
    EXPECT_TRUE(combo.itemText(29).startsWith(QString::fromUtf8(now.Format("%#d-%b-%y", 0).GetString())));
    combo.setCurrentIndex(-1);
    EXPECT_EQ(now.GetCurrentSelection(combo), 0u);
}

TEST_F(TimeFormatCombo, SavingAChangeTellsEveryDescendant)
{
    QWidget top;
    auto* child = new QWidget(&top);
    auto* grandChild = new QWidget(child);
    listen(child);
    listen(grandChild);
    CWnd notify;
    ASSERT_TRUE(notify.Attach(ZelHwndFromWidget(&top)));

    auto* combo = new CZelTime::CTimeFormatComboBox(&top);
    const CZelTime now;
    now.InitializeTimeFormatComboBox(*combo);
    combo->setCurrentIndex(3);
    now.SaveCurrentSelection(*combo, &notify);
    EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), 3u);
    EXPECT_EQ(CZelProfileEntries::ReadZelProfileInt("CZelTime", "Time Format (###)", -1), 3u);
    EXPECT_EQ(CZelProfileEntries::ReadZelProfileString("CZelTime", "Time Format (str)", ""), "%d/%m/%Y %#I:%M:%S %p");
    ASSERT_EQ(m_seen.size(), 2u);
    for (const auto& s : m_seen) {
        EXPECT_EQ(s.oldIndex, 17u);
        EXPECT_EQ(s.newIndex, 3);
    }
    EXPECT_EQ(m_seen[1].window, ZelHwndFromWidget(grandChild));

    // The same index again: written, but nobody is told.
    m_seen.clear();
    CZelProfileEntries::WriteZelProfileInt("CZelTime", "Time Format (###)", 9);
    now.SaveCurrentSelection(*combo, &notify);
    EXPECT_TRUE(m_seen.empty());
    EXPECT_EQ(CZelProfileEntries::ReadZelProfileInt("CZelTime", "Time Format (###)", -1), 3u);
    // A change without a window to tell is still made current.
    combo->setCurrentIndex(5);
    now.SaveCurrentSelection(*combo, nullptr);
    EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), 5u);
    EXPECT_TRUE(m_seen.empty());
    notify.Detach();
}
