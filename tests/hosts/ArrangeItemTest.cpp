// Controls following the window's size.
#include <Zel260/hosts/ZelArrangeItem.h>

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* name;
    UINT flags;
    int growX, growY;
    RECT expected;
};

} // namespace

TEST(ArrangeItem, FlagsMoveOrGrowWithTheEdges)
{
    const Row rows[] = {
        {"move right keeps width", ZEL_ARRANGE_MOVE_X, 30, 10, {40, 20, 90, 45}},
        {"grow in width", ZEL_ARRANGE_GROW_X, 30, 10, {10, 20, 90, 45}},
        {"move wins over grow", ZEL_ARRANGE_MOVE_X | ZEL_ARRANGE_GROW_X, 30, 0, {40, 20, 90, 45}},
        {"move down", ZEL_ARRANGE_MOVE_Y, 30, 10, {10, 30, 60, 55}},
        {"grow in height", ZEL_ARRANGE_GROW_Y, 30, 10, {10, 20, 60, 55}},
        {"smaller than original counts as original", ZEL_ARRANGE_MOVE_X | ZEL_ARRANGE_GROW_Y, -40, -5, {10, 20, 60, 45}},
    };
    for (const Row& r : rows) {
        ARRANGE_ITEM a = ZelArrangeItemFromFlags(r.flags, 7);
        a.left = 10;
        a.top = 20;
        a.width = 50;
        a.height = 25;
        const RECT got = ZelArrangeItemRect(a, r.growX, r.growY);
        EXPECT_EQ(got.left, r.expected.left) << r.name;
        EXPECT_EQ(got.top, r.expected.top) << r.name;
        EXPECT_EQ(got.right, r.expected.right) << r.name;
        EXPECT_EQ(got.bottom, r.expected.bottom) << r.name;
    }
}

TEST(ArrangeItem, PercentagesTruncate)
{
    ARRANGE_ITEM a;
    a.x = 50;
    a.cx = 33;
    a.width = 10;
    const RECT r = ZelArrangeItemRect(a, 7, 0);
    EXPECT_EQ(r.left, 3);
    EXPECT_EQ(r.right - r.left, 12);
}
