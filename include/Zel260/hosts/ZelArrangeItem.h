// How a control follows the size of its window: ARRANGE_ITEM records and the rule
// that places them.
#pragma once

#include <Zel260/platform/Win32Types.h>

// Percentages of the window's growth that a control moves and grows by (0 to 100),
// its id and its rectangle at the original window size (left, top, width, height).
struct ARRANGE_ITEM {
    int x = 0;  // move right by x% of the width growth
    int cx = 0; // grow in width by cx%
    int y = 0;  // move down by y% of the height growth
    int cy = 0; // grow in height by cy%
    UINT id = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// Flags of the shorthand: 1 move with the right edge, 2 grow in width (ignored with
// 1), 4 move with the bottom edge, 8 grow in height (ignored with 4).
constexpr UINT ZEL_ARRANGE_MOVE_X = 1;
constexpr UINT ZEL_ARRANGE_GROW_X = 2;
constexpr UINT ZEL_ARRANGE_MOVE_Y = 4;
constexpr UINT ZEL_ARRANGE_GROW_Y = 8;

// An item with the percentages of `flags` for control `id` (rectangle left 0).
ARRANGE_ITEM ZelArrangeItemFromFlags(UINT flags, UINT id);

// The control's rectangle when the window has grown by (growX, growY) pixels over
// its original size; negative growth (a window below its original size) counts
// as 0. Each shift is percent x growth / 100, truncated.
RECT ZelArrangeItemRect(const ARRANGE_ITEM& item, int growX, int growY);
