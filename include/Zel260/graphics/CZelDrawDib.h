// CZelDrawDib: puts a CZelDib on a device, through a DrawDib session where one is
// open and by a stretched copy otherwise.
//
// The session is the library's own stand-in of the video drawing service: it draws
// 32-bit images by StretchDIBits with averaging, and fails on printers, where the
// stretched copy takes over. Every session call gives 0 (or null) without an open
// session.
#pragma once

#include <Zel260/graphics/CZelDib.h>
#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/CDC.h>

struct HDRAWDIB__;
using HDRAWDIB = HDRAWDIB__*;

// Flags of Draw and Begin (Win32 numbers).
constexpr UINT DDF_HALFTONE = 0x1000;

struct PALETTEENTRY {
    BYTE peRed;
    BYTE peGreen;
    BYTE peBlue;
    BYTE peFlags;
};

// Times of a session, in milliseconds.
struct DRAWDIBTIME {
    LONG timeCount;
    LONG timeDraw;
    LONG timeDecompress;
    LONG timeDither;
    LONG timeStretch;
    LONG timeBlt;
    LONG timeSetDIBits;
};

class CZelDrawDib {
public:
    CZelDrawDib();
    virtual ~CZelDrawDib();
    CZelDrawDib(const CZelDrawDib&) = delete;
    CZelDrawDib& operator=(const CZelDrawDib&) = delete;

    // Opens the session (TRUE when open afterwards); Close ends it.
    BOOL Open();
    BOOL Close();
    BOOL IsOpen() const { return m_session != nullptr; }
    // Prepares drawing at dxDst by dyDst pixels: TRUE with a session, a device, a
    // header and sizes >= 0. End is TRUE with a session.
    BOOL Begin(CDC* dc, int dxDst, int dyDst, BITMAPINFOHEADER* info, int dxSrc, int dySrc, UINT flags);
    BOOL Begin(CDC* dc, const CRect& dst, BITMAPINFOHEADER* info, const CRect& src, UINT flags);
    BOOL End();
    // Source xSrc, ySrc, dxSrc, dySrc of the 32-bit DIB (top-down coordinates)
    // stretched to xDst, yDst, dxDst, dyDst (device pixels). FALSE without a
    // session, for a null argument, on a printer, or when the device draws nothing.
    BOOL Draw(CDC* dc, int xDst, int yDst, int dxDst, int dyDst, BITMAPINFOHEADER* info, void* bits, int xSrc,
              int ySrc, int dxSrc, int dySrc, UINT flags);
    BOOL Draw(CDC* dc, const CRect& dst, BITMAPINFOHEADER* info, void* bits, const CRect& src, UINT flags);
    // No off-screen buffer and no palette here: null, 0 or FALSE with or without a
    // session.
    void* GetBuffer(BITMAPINFOHEADER* info, DWORD size, UINT flags);
    BOOL ProfileDisplay(BITMAPINFOHEADER* info);
    HPALETTE GetPalette();
    BOOL SetPalette(HPALETTE palette);
    BOOL ChangePalette(int start, int count, PALETTEENTRY* entries);
    UINT RealizePalette(CDC* dc, BOOL background);
    // TRUE with a session; the rate (frames a second) is ignored.
    BOOL Start(LONG rate);
    BOOL Stop();
    // The session's draw count and total draw time (milliseconds). FALSE without a
    // session or for a null record.
    BOOL Time(DRAWDIBTIME* time);

    // The image at x, y in cx by cy: through the session when the last draw worked
    // and the device isn't a printer, else by CopyToDCStretch in the object's
    // stretch mode. 0 for a null device or an image without pixels.
    int DrawDib(CDC* dc, const CZelDib* dib, int x, int y, int cx, int cy, UINT flags);
    // The same for the source rectangle sx, sy, sw, sh (top-down image
    // coordinates), cut to the image; 0 when nothing of it is left.
    int DrawDibRect(CDC* dc, const CZelDib* dib, int x, int y, int cx, int cy, int sx, int sy, int sw, int sh,
                    UINT flags);

    // The stretch mode of the fallback route (HALFTONE at first).
    void SetStretchMode(int mode) { m_stretchMode = mode; }
    int GetStretchMode() const { return m_stretchMode; }

private:
    int Fallback(CDC* dc, const CZelDib* dib, int x, int y, int cx, int cy, const RECT* src);

    HDRAWDIB m_session = nullptr;
    BOOL m_lastDraw = TRUE;
    int m_stretchMode = HALFTONE;
};
