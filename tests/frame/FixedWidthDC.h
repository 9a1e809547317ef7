// A device context for tests: '.' and ' ' are 3 pixels wide, every other character
// 10, and text output is recorded instead of drawn.
#pragma once

#include <InertDC.h>

#include <string>
#include <vector>

class FixedWidthDC : public zeltest::InertDC {
public:
    static int charWidth(char c) { return c == '.' || c == ' ' ? 3 : 10; }

    struct Output {
        int x;
        int y;
        std::string text;
        COLORREF colour;
    };
    std::vector<Output> out;
    COLORREF colour = RGB(1, 2, 3);

    using CDC::GetTextExtent;
    CSize GetTextExtent(const char* text, int length) const override
    {
        int w = 0;
        for (int i = 0; text && i < length; ++i)
            w += charWidth(text[i]);
        return CSize(w, 16);
    }
    BOOL TextOut(int x, int y, const char* text, int length) override
    {
        out.push_back({x, y, std::string(text, length), colour});
        return TRUE;
    }
    COLORREF SetTextColor(COLORREF c) override
    {
        COLORREF old = colour;
        colour = c;
        return old;
    }
    COLORREF GetTextColor() const override { return colour; }
    int SetBkMode(int) override { return OPAQUE; }
    BOOL LineTo(int, int) override { return TRUE; }
    COLORREF SetPixel(int, int, COLORREF c) override { return c; }
    BOOL PatBlt(int, int, int, int, DWORD) override { return TRUE; }
    int GetDeviceCaps(int) const override { return 96; }
};
