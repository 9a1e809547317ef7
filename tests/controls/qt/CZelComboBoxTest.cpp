#include <Zel260/controls/qt/CZelComboBox.h>

#include <gtest/gtest.h>

TEST(CZelComboBox, ItemsCarryDataAndBadIndicesFail)
{
    CZelComboBox box;
    EXPECT_EQ(box.GetCurSel(), -1);
    EXPECT_EQ(box.AddString("Degree [ dec ]"), 0);
    EXPECT_EQ(box.AddString(nullptr), 1);
    EXPECT_EQ(box.SetItemData(0, 11), 0);
    EXPECT_EQ(box.SetItemData(1, 0xFFFFFFFFu), 0);
    EXPECT_EQ(box.SetItemData(2, 5), -1);
    EXPECT_EQ(box.GetItemData(0), 11u);
    EXPECT_EQ(box.GetItemData(1), 0xFFFFFFFFu);
    EXPECT_EQ(box.GetItemData(-1), static_cast<DWORD_PTR>(-1));
    EXPECT_EQ(box.GetLBText(0), "Degree [ dec ]");
    EXPECT_EQ(box.GetLBText(7), "");
    EXPECT_EQ(box.SetCurSel(1), 1);
    EXPECT_EQ(box.GetCurSel(), 1);
    EXPECT_EQ(box.SetCurSel(9), -1);
    EXPECT_EQ(box.GetCurSel(), -1);
    box.ResetContent();
    EXPECT_EQ(box.GetCount(), 0);
}
