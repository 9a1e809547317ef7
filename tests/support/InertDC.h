// A device context that draws nothing and answers every question with zero or
// failure. Test devices derive from it and override only what their tests read, so
// that a new drawing call on CDC is stubbed here once.
#pragma once

#include <Zel260/platform/CDC.h>

namespace zeltest {

class InertDC : public CDC {
public:
    CSize GetTextExtent(const char*, int) const override { return CSize(); }
    BOOL TextOut(int, int, const char*, int) override { return FALSE; }
    COLORREF SetTextColor(COLORREF) override { return 0; }
    COLORREF GetTextColor() const override { return 0; }
    COLORREF SetBkColor(COLORREF) override { return 0; }
    int SetBkMode(int) override { return 0; }
    void FillSolidRect(const RECT&, COLORREF) override {}
    CPoint MoveTo(int, int) override { return CPoint(); }
    BOOL LineTo(int, int) override { return FALSE; }
    COLORREF SetPixel(int, int, COLORREF) override { return CLR_INVALID; }
    COLORREF GetPixel(int, int) const override { return CLR_INVALID; }
    BOOL PatBlt(int, int, int, int, DWORD) override { return FALSE; }
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
    int GetDeviceCaps(int) const override { return 0; }
};

} // namespace zeltest
