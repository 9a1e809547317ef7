// A device context for tests: '.' and ' ' are 3 pixels wide, every other character
// 10, and text output is recorded instead of drawn.
#pragma once

#include <Zel260/platform/CDC.h>

#include <string>
#include <vector>

class FixedWidthDC : public CDC {
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
    COLORREF SetBkColor(COLORREF) override { return 0; }
    int SetBkMode(int) override { return OPAQUE; }
    void FillSolidRect(const RECT&, COLORREF) override {}
    CPoint MoveTo(int, int) override { return CPoint(); }
    BOOL LineTo(int, int) override { return TRUE; }
    COLORREF SetPixel(int, int, COLORREF c) override { return c; }
    COLORREF GetPixel(int, int) const override { return CLR_INVALID; }
    BOOL PatBlt(int, int, int, int, DWORD) override { return TRUE; }
    void DrawFocusRect(const RECT&) override {}
    int GetClipBox(RECT*) const override { return 0; }
    int IntersectClipRect(const RECT&) override { return 0; }
    int SetDIBitsToDevice(int, int, DWORD, DWORD, int, int, UINT, UINT, const void*, const BITMAPINFO*,
                          UINT) override
    {
        return 0;
    }
    int StretchDIBits(int, int, int, int, int, int, int, int, const void*, const BITMAPINFO*, UINT, DWORD) override
    {
        return 0;
    }
    BOOL BitBlt(int, int, int, int, CDC*, int, int, DWORD) override { return FALSE; }
    int GetDeviceCaps(int) const override { return 96; }
};
