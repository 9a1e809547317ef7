// The inline editor over a list cell: TAB saves a valid value, an invalid one stays,
// Escape cancels; the owner hears both by message.
#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/controls/qt/CZelInlineControlContainer.h>
#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include <vector>

namespace {

class Owner : public QWidget, public CWnd, public ZelMessageTarget {
public:
    Owner() { Attach(ZelHwndFromWidget(this)); }
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM) override
    {
        if (msg == WM_ZEL_INPUT_CONTROL_SAVE_VALUE_INLINE)
            saves.push_back(static_cast<int>(wp));
        if (msg == WM_ZEL_INPUT_CONTROL_CANCEL_INLINE)
            ++cancels;
        return 0;
    }
    std::vector<int> saves;
    int cancels = 0;
};

struct Inline : ::testing::Test {
    void SetUp() override
    {
        owner.resize(300, 200);
        owner.show();
        QApplication::setActiveWindow(&owner);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&owner));
        container = new CZelInlineControlContainer(&owner);
        container->InitializeContainer(&owner, 7);
        edit = new CZelEdit;
        edit->SetMinChars(3);
        ASSERT_TRUE(edit->CreateInline(0, CRect(0, 0, 10, 10), container, 500, nullptr));
        EXPECT_TRUE(edit->IsInline());
        container->InitializeControl(RECT{10, 20, 110, 40}, edit, nullptr, 0, 0);
        QApplication::setActiveWindow(container);
        ASSERT_TRUE(QTest::qWaitForWindowActive(container));
        edit->setFocus();
    }
    void TearDown() override { delete container; }
    Owner owner;
    CZelInlineControlContainer* container = nullptr;
    CZelEdit* edit = nullptr;
};

} // namespace

TEST_F(Inline, TabSavesAValidValueOnly)
{
    EXPECT_EQ(container->GetOwnerData(), 7);
    EXPECT_EQ(edit->geometry().size(), QSize(100, 20)) << "the control covers the cell";
    EXPECT_TRUE(container->GetEmptyFields());
    QTest::keyClicks(edit, "ab");
    QTest::keyClick(edit, Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_TRUE(owner.saves.empty());
    EXPECT_EQ(owner.cancels, 0);
    EXPECT_FALSE(container->IsClosed());
    EXPECT_TRUE(edit->hasFocus());
    QTest::keyClicks(edit, "c");
    QTest::keyClick(edit, Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(owner.saves, std::vector<int>{1}) << "forward";
    EXPECT_TRUE(container->IsClosed());
}

TEST_F(Inline, EscapeCancels)
{
    QTest::keyClicks(edit, "abc");
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_EQ(owner.cancels, 1);
    EXPECT_TRUE(container->IsClosed());
    EXPECT_TRUE(owner.saves.empty());
}
