#include <Zel260/hosts/ZelArrangeItem.h>

#include <algorithm>

ARRANGE_ITEM ZelArrangeItemFromFlags(UINT flags, UINT id)
{
    ARRANGE_ITEM a;
    a.id = id;
    if (flags & ZEL_ARRANGE_MOVE_X)
        a.x = 100;
    else if (flags & ZEL_ARRANGE_GROW_X)
        a.cx = 100;
    if (flags & ZEL_ARRANGE_MOVE_Y)
        a.y = 100;
    else if (flags & ZEL_ARRANGE_GROW_Y)
        a.cy = 100;
    return a;
}

RECT ZelArrangeItemRect(const ARRANGE_ITEM& item, int growX, int growY)
{
    const long long gx = std::max(growX, 0);
    const long long gy = std::max(growY, 0);
    const int left = item.left + static_cast<int>(gx * item.x / 100);
    const int top = item.top + static_cast<int>(gy * item.y / 100);
    const int width = item.width + static_cast<int>(gx * item.cx / 100);
    const int height = item.height + static_cast<int>(gy * item.cy / 100);
    return RECT{left, top, left + width, top + height};
}
