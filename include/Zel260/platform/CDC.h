// A device context: what the library asks of a screen, an image or a printer.
// Abstract in the core; the widget library implements it over QPainter (on a
// QImage, a widget or a QPrinter). Coordinates are device pixels unless a mapping
// mode says otherwise; colours are COLORREF (0x00BBGGRR).
#pragma once

#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/Win32Types.h>

#include <memory>

struct HBITMAP__;

// GetDeviceCaps indices (Win32 numbers).
constexpr int HORZSIZE = 4;
constexpr int VERTSIZE = 6;
constexpr int HORZRES = 8;
constexpr int VERTRES = 10;
constexpr int BITSPIXEL = 12;
constexpr int LOGPIXELSX = 88;
constexpr int LOGPIXELSY = 90;
constexpr int PHYSICALWIDTH = 110;
constexpr int PHYSICALHEIGHT = 111;
constexpr int PHYSICALOFFSETX = 112;
constexpr int PHYSICALOFFSETY = 113;

// Raster operations used by the library (Win32 numbers).
constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr DWORD SRCPAINT = 0x00EE0086;
constexpr DWORD SRCAND = 0x008800C6;
constexpr DWORD SRCINVERT = 0x00660046;
constexpr DWORD DSTINVERT = 0x00550009;
constexpr DWORD PATCOPY = 0x00F00021;
constexpr DWORD BLACKNESS = 0x00000042;
constexpr DWORD WHITENESS = 0x00FF0062;

constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight; // positive: bottom-up rows; negative: top-down
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};
struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};
constexpr DWORD BI_RGB = 0;
constexpr UINT DIB_RGB_COLORS = 0;

// Stretch modes (Win32 numbers).
constexpr int BLACKONWHITE = 1;
constexpr int WHITEONBLACK = 2;
constexpr int COLORONCOLOR = 3;
constexpr int HALFTONE = 4;

class CDC {
public:
    virtual ~CDC() = default;

    // Text. Extents are in device pixels of the selected font.
    virtual CSize GetTextExtent(const char* text, int length) const = 0;
    CSize GetTextExtent(const char* text) const;
    virtual BOOL TextOut(int x, int y, const char* text, int length) = 0;
    virtual COLORREF SetTextColor(COLORREF colour) = 0; // returns the previous colour
    virtual COLORREF GetTextColor() const = 0;
    virtual COLORREF SetBkColor(COLORREF colour) = 0;
    virtual int SetBkMode(int mode) = 0;

    // Drawing.
    virtual void FillSolidRect(const RECT& rect, COLORREF colour) = 0;
    virtual CPoint MoveTo(int x, int y) = 0;
    virtual BOOL LineTo(int x, int y) = 0;
    virtual COLORREF SetPixel(int x, int y, COLORREF colour) = 0;
    virtual COLORREF GetPixel(int x, int y) const = 0; // CLR_INVALID outside the device
    virtual BOOL PatBlt(int x, int y, int width, int height, DWORD rop) = 0;
    virtual void DrawFocusRect(const RECT& rect) = 0;

    // Clipping.
    virtual int GetClipBox(RECT* rect) const = 0;
    virtual int IntersectClipRect(const RECT& rect) = 0;
    // Makes `rect` (device units) the clip outright, whatever the clip was; null
    // removes the clip. Returns the kind of the new clip: NULLREGION 1, SIMPLEREGION
    // 2, or ERROR 0 when the device can't set one (the default).
    virtual int SelectClipRgn(const RECT* rect) { (void)rect; return 0; }

    // Device-independent bitmaps onto the device, as Win32's SetDIBitsToDevice and
    // StretchDIBits (only 32-bit BI_RGB is required). Return the scan lines copied,
    // 0 on failure; rectangles whose far edge (one past the last pixel) lies beyond
    // int, and sizes of INT_MIN, fail.
    virtual int SetDIBitsToDevice(int xDest, int yDest, DWORD width, DWORD height, int xSrc, int ySrc,
                                  UINT startScan, UINT scanLines, const void* bits, const BITMAPINFO* info,
                                  UINT colourUse) = 0;
    virtual int StretchDIBits(int xDest, int yDest, int destWidth, int destHeight, int xSrc, int ySrc,
                              int srcWidth, int srcHeight, const void* bits, const BITMAPINFO* info,
                              UINT colourUse, DWORD rop) = 0;
    // Copies a rectangle from `source` (which may be this device); what the source
    // doesn't have comes out black. FALSE for a target whose far edge lies beyond
    // int.
    virtual BOOL BitBlt(int x, int y, int width, int height, CDC* source, int xSrc, int ySrc, DWORD rop) = 0;

    virtual int GetDeviceCaps(int index) const = 0;
    virtual BOOL IsPrinting() const { return FALSE; }

    // Memory devices. A device of the same kind as this one, drawing into the bitmap
    // selected into it (none at first, when it draws nowhere). Null where the
    // implementation has none.
    virtual std::unique_ptr<CDC> CreateCompatibleDC() { return nullptr; }
    // Selects `bitmap` (a handle of <Zel260/platform/CBitmap.h>, or null for none)
    // into a memory device and returns the one selected before. A device that isn't a
    // memory device ignores the call and returns null. The bitmap must outlive its
    // selection.
    virtual HBITMAP__* SelectObject(HBITMAP__* bitmap) { return nullptr; }

    // How StretchDIBits shrinks: COLORONCOLOR drops pixels, HALFTONE averages.
    // Return the previous value.
    virtual int SetStretchBltMode(int mode) { int old = m_stretchMode; m_stretchMode = mode; return old; }
    virtual int GetStretchBltMode() const { return m_stretchMode; }
    virtual CPoint SetBrushOrg(int x, int y) { CPoint old = m_brushOrg; m_brushOrg = CPoint(x, y); return old; }
    virtual CPoint GetBrushOrg() const { return m_brushOrg; }

private:
    int m_stretchMode = BLACKONWHITE;
    CPoint m_brushOrg;
};

// Win32's device context handle: here the device object itself.
using HDC = CDC*;

constexpr COLORREF CLR_INVALID = 0xFFFFFFFFu;

inline CSize CDC::GetTextExtent(const char* text) const
{
    int n = 0;
    if (text)
        while (text[n])
            ++n;
    return GetTextExtent(text, n);
}
