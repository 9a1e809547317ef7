// Device bitmaps and the GDI bitmap calls the library uses, as plain memory.
//
// A bitmap handle (HBITMAP) owns width * height 32-bit pixels, byte 0 blue, byte 1
// green, byte 2 red, byte 3 alpha (the layout of a 32-bit BI_RGB DIB). A device
// bitmap keeps its rows top-down; a DIB section keeps the row order its header asked
// for, so that a caller holding the section's pointer sees the layout it expects.
// Every bitmap stores 32-bit pixels; the nominal depth (1, 16, 24 or 32 bits a
// pixel) is what GetObject reports and what a file writer chooses its depth by.
#pragma once

#include <Zel260/platform/CDC.h>
#include <Zel260/platform/CObject.h>
#include <Zel260/platform/Win32Types.h>

struct HBITMAP__;
using HBITMAP = HBITMAP__*;
struct HPALETTE__;
using HPALETTE = HPALETTE__*;
// Icons are bitmaps whose alpha byte is 0 where the icon is transparent.
using HICON = HBITMAP;

struct BITMAP {
    LONG bmType;       // always 0
    LONG bmWidth;      // pixels
    LONG bmHeight;     // pixels, always positive
    LONG bmWidthBytes; // bytes a row at the nominal depth, rounded up to 2 bytes
    WORD bmPlanes;     // always 1
    WORD bmBitsPixel;  // nominal depth: 1, 16, 24 or 32
    void* bmBits;      // the pixels of a DIB section, null for a device bitmap
};

constexpr UINT IMAGE_BITMAP = 0;
constexpr UINT LR_DEFAULTCOLOR = 0x0000;
constexpr UINT LR_LOADFROMFILE = 0x0010;
constexpr UINT LR_DEFAULTSIZE = 0x0040;
constexpr UINT LR_CREATEDIBSECTION = 0x2000;

// The most pixels one bitmap holds (width * height), so that byte sizes stay
// inside the 32-bit fields of the headers that describe them.
constexpr long long ZEL_MAX_BITMAP_PIXELS = 0x1FFFFFFF;

// A bitmap of width by height pixels (both >= 1, at most ZEL_MAX_BITMAP_PIXELS in
// all) with the nominal depth bitCount (1,
// 16, 24 or 32; planes must be 1). `bits`, if given, holds width * height 32-bit
// pixels top-down; otherwise the bitmap is black. Null on bad arguments.
HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits);
// A 32-bit device bitmap of width by height, black. Null without a device or for a
// size below 1.
HBITMAP CreateCompatibleBitmap(CDC* dc, int width, int height);
// A DIB section for a 32-bit BI_RGB header (biHeight negative: top-down). `*bits`
// receives the pixels, which live as long as the handle. The device may be null.
// Null (and *bits null) for any other header.
HBITMAP CreateDIBSection(CDC* dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD offset);
// Frees a bitmap. FALSE for null.
BOOL DeleteObject(HBITMAP bitmap);
// Fills a BITMAP record; returns the bytes written (sizeof(BITMAP)), 0 for a null
// handle or a too small buffer.
int GetObject(HBITMAP bitmap, int size, void* record);
// Copies scan lines of `bitmap` into `bits` in the format of `info` (32-bit BI_RGB,
// rows in the order of the sign of biHeight, which must have the bitmap's height
// and width). Scan line 0 is the bottom row for a bottom-up header. With `bits`
// null only the header is filled. Returns the lines copied, 0 on failure.
int GetDIBits(CDC* dc, HBITMAP bitmap, UINT startScan, UINT scanLines, void* bits, BITMAPINFO* info, UINT usage);
// The reverse of GetDIBits: writes scan lines from `bits` into `bitmap`.
int SetDIBits(CDC* dc, HBITMAP bitmap, UINT startScan, UINT scanLines, const void* bits, const BITMAPINFO* info,
              UINT usage);
// Reads a Windows bitmap file (uncompressed 1, 4, 8, 16, 24 or 32 bits a pixel, or
// BI_BITFIELDS at 16 and 32) from `name` when flags has LR_LOADFROMFILE and `type` is
// IMAGE_BITMAP; cx, cy must be 0. The module is ignored for files. Null for any
// other file (compressed bitmaps included), for a missing or truncated one.
HANDLE LoadImage(HINSTANCE module, const char* name, UINT type, int cx, int cy, UINT flags);
// The bitmap resource `id` (ZEL_RT_BITMAP: a bitmap file, or the same without its
// 14-byte file header) of `module`. Null when absent or unreadable.
HBITMAP LoadBitmap(HINSTANCE module, UINT id);
// Decodes a bitmap file held in memory, as LoadImage does for a file. Null when it
// isn't one.
HBITMAP ZelCreateBitmapFromBmpData(const void* data, std::size_t size);

// Row `row` (0 the top row) of a bitmap's pixels, null for a null handle or a row
// outside; for the image layers that draw into a bitmap selected into a device.
DWORD* ZelBitmapScanLine(HBITMAP bitmap, int row);

// MFC's wrapper of a bitmap handle; owns the handle it holds.
class CBitmap : public CObject {
    DECLARE_DYNAMIC(CBitmap)

public:
    CBitmap() = default;
    ~CBitmap() override;
    CBitmap(const CBitmap&) = delete;
    CBitmap& operator=(const CBitmap&) = delete;

    // Takes ownership of `bitmap`; FALSE when this one already holds a bitmap or
    // `bitmap` is null.
    BOOL Attach(HBITMAP bitmap);
    // Gives up ownership and returns the handle (null when empty).
    HBITMAP Detach();
    // Frees the held bitmap; FALSE when there was none.
    BOOL DeleteObject();
    HBITMAP GetSafeHandle() const { return m_bitmap; }
    operator HBITMAP() const { return m_bitmap; }

    BOOL CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits);
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    // The resource bitmap `id` of the current resource module.
    BOOL LoadBitmap(UINT id);
    int GetObject(int size, void* record) const { return ::GetObject(m_bitmap, size, record); }
    int GetBitmap(BITMAP* record) const { return ::GetObject(m_bitmap, sizeof(BITMAP), record); }

protected:
    HBITMAP m_bitmap = nullptr;
};
