// Virtual-key codes as the library's key handlers see them in WM_KEYDOWN's wParam
// (Windows numbers; letters and digits are their upper-case ASCII codes).
#pragma once

#include <Zel260/platform/Win32Types.h>

constexpr UINT VK_BACK = 0x08;
constexpr UINT VK_TAB = 0x09;
constexpr UINT VK_RETURN = 0x0D;
constexpr UINT VK_SHIFT = 0x10;
constexpr UINT VK_CONTROL = 0x11;
constexpr UINT VK_MENU = 0x12;
constexpr UINT VK_ESCAPE = 0x1B;
constexpr UINT VK_SPACE = 0x20;
constexpr UINT VK_PRIOR = 0x21;
constexpr UINT VK_NEXT = 0x22;
constexpr UINT VK_END = 0x23;
constexpr UINT VK_HOME = 0x24;
constexpr UINT VK_LEFT = 0x25;
constexpr UINT VK_UP = 0x26;
constexpr UINT VK_RIGHT = 0x27;
constexpr UINT VK_DOWN = 0x28;
constexpr UINT VK_INSERT = 0x2D;
constexpr UINT VK_DELETE = 0x2E;
constexpr UINT VK_F1 = 0x70;
constexpr UINT VK_APPS = 0x5D;

// Notification codes of WM_COMMAND's high word.
constexpr WORD BN_CLICKED = 0;
constexpr WORD EN_SETFOCUS = 0x100;
constexpr WORD EN_KILLFOCUS = 0x200;
constexpr WORD EN_CHANGE = 0x300;
