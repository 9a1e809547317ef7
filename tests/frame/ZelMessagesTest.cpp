#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/WindowMessages.h>

#include <gtest/gtest.h>

#include <cstring>
#include <set>

TEST(ZelMessages, EveryNameHasItsOwnNumberInTheRegisteredRange)
{
    std::size_t count = 0;
    const ZelRegisteredMessage* all = ZelGetRegisteredMessages(count);
    ASSERT_EQ(count, 101u);
    std::set<UINT> numbers;
    std::set<std::string> names;
    for (std::size_t i = 0; i < count; ++i) {
        UINT n = *all[i].value;
        EXPECT_GE(n, 0xC000u) << all[i].name;
        EXPECT_LE(n, 0xFFFFu) << all[i].name;
        numbers.insert(n);
        names.insert(all[i].name);
        EXPECT_EQ(std::strncmp(all[i].name, "WM_ZEL_", 7), 0);
        // The variable carries the number of its own name.
        EXPECT_EQ(RegisterWindowMessage(all[i].name), n) << all[i].name;
        EXPECT_STREQ(ZelRegisteredMessageName(n), all[i].name);
    }
    EXPECT_EQ(numbers.size(), 101u);
    EXPECT_EQ(names.size(), 101u);
    EXPECT_EQ(ZelRegisteredMessageName(WM_COMMAND), nullptr);
}

TEST(ZelMessages, VariablesAreSetBeforeMain)
{
    // Spot checks from each end of the list and from the middle.
    EXPECT_EQ(RegisterWindowMessage("WM_ZEL_PROPERTIES"), WM_ZEL_PROPERTIES);
    EXPECT_EQ(RegisterWindowMessage("WM_ZEL_INPUT_CONTROL_VALIDATE"), WM_ZEL_INPUT_CONTROL_VALIDATE);
    EXPECT_EQ(RegisterWindowMessage("WM_ZEL_TREECTRL_LCLICKED_ON_SELECTED"), WM_ZEL_TREECTRL_LCLICKED_ON_SELECTED);
    EXPECT_NE(WM_ZEL_UNIT_CHANGED_DISTANCE, WM_ZEL_UNIT_CHANGED_ANGLE);
}

TEST(RegisterWindowMessage, SameNameSameNumberIgnoringCase)
{
    UINT a = RegisterWindowMessage("ZelTest.Host.Message");
    ASSERT_GE(a, 0xC000u);
    EXPECT_EQ(RegisterWindowMessage("ZelTest.Host.Message"), a);
    EXPECT_EQ(RegisterWindowMessage("zeltest.HOST.message"), a);
    UINT b = RegisterWindowMessage("ZelTest.Host.Other");
    EXPECT_NE(b, a);
    EXPECT_EQ(RegisterWindowMessage("wm_zel_properties"), WM_ZEL_PROPERTIES);
    EXPECT_EQ(RegisterWindowMessage(nullptr), 0u);
    EXPECT_EQ(RegisterWindowMessage(""), 0u);
}
