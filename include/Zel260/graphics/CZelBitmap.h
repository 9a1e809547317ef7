// CZelBitmap: a device bitmap loaded from a picture file or a bitmap resource.
//
// Files load by three routes, tried in turn: the platform's bitmap loader (Windows
// bitmap files), FreeImage (every format it reads), and the picture route, a
// loader that the widget library installs (Qt's image readers; see
// ZelSetPictureLoader). Pictures are written through FreeImage. File names may
// divide their folders by "/" or "\\", as the library's file functions take them.
#pragma once

#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/CDC.h>
#include <Zel260/platform/Win32Types.h>

#include <cstddef>

// FreeImage's format numbers; SaveBitmap hands them to FreeImage as they stand, so
// any other number FreeImage knows works too.
enum enmImageFormat : int {
    ZEL_IMAGE_FORMAT_UNKNOWN = -1,
    ZEL_IMAGE_FORMAT_BMP = 0,
    ZEL_IMAGE_FORMAT_ICO = 1,
    ZEL_IMAGE_FORMAT_JPEG = 2,
    ZEL_IMAGE_FORMAT_PNG = 13,
    ZEL_IMAGE_FORMAT_TIFF = 18,
    ZEL_IMAGE_FORMAT_GIF = 25,
};

// The picture route: decodes a whole file held in memory into a new bitmap, or
// returns null. The widget library installs one over Qt's image readers when it is
// loaded (ZelInstallQtPictureLoader in <Zel260/graphics/qt/ZelQtPictureLoader.h>);
// without one the route is skipped.
using ZelPictureLoader = HBITMAP (*)(const void* data, std::size_t size);
// Installs `loader` (null removes it) and returns the one installed before.
ZelPictureLoader ZelSetPictureLoader(ZelPictureLoader loader);
ZelPictureLoader ZelGetPictureLoader();

class CZelBitmap : public CBitmap {
    DECLARE_DYNAMIC(CZelBitmap)

public:
    CZelBitmap() = default;

    // The bitmap resource `id` of `module`. Any bitmap held before is deleted first,
    // so a failure leaves the object empty. Returns non-zero on success, 0 for a
    // null module or a missing or unreadable resource.
    int LoadBitmap(HINSTANCE module, unsigned int id);
    // A picture file. A null or empty name or a file that isn't there gives 0 and
    // leaves the object as it was; otherwise the held bitmap is deleted and the
    // routes run in turn, so a file that no route reads leaves the object empty.
    int LoadBitmap(const char* fileName);

    // Half the size, rounded to the nearest integer (halves to even): 5 gives 2.
    int GetXOffset() const { return m_xOffset; }
    int GetYOffset() const { return m_yOffset; }
    int GetWidth() const { return m_width; }
    int GetHeight() const { return m_height; }

    // Pixels of colour `from` (COLORREF, alpha ignored) become `to`. Nothing happens
    // to an empty object or a monochrome bitmap. The palette is ignored: every
    // bitmap here has true colour.
    void ChangeColor(unsigned long from, unsigned long to, HPALETTE palette);
    static void ChangeBitmapColor(HBITMAP bitmap, unsigned long from, unsigned long to, HPALETTE palette);
    // The same on the device pixels 0, 0 .. bmWidth, bmHeight of `dc` (a memory
    // device with the bitmap selected, or any device), as far as the device reaches.
    // Nothing for a null argument or a bitmap of one plane and one bit.
    static void ChangeBitmapColorDC(HDC dc, const BITMAP* bitmap, unsigned long from, unsigned long to);
    // Writes `bitmap` to `fileName` in FreeImage format `format`. A 16-bit bitmap
    // is written at 32 bits. A 32-bit bitmap whose alpha bytes are all 0 (a device
    // bitmap carries no alpha) is written opaque. Returns non-zero on success, 0 for
    // a null argument, an empty name, or when FreeImage can't write that format at
    // that depth.
    static int SaveBitmap(HDC dc, HBITMAP bitmap, enmImageFormat format, const char* fileName);
    // Width, height and bits a pixel of a picture file, read from its header. The
    // outputs (each may be null) are 0 on failure. Returns non-zero on success, 0 for
    // an empty name, a missing file or one FreeImage doesn't read.
    static int GetImageSize(const char* fileName, int* width, int* height, int* bitsPerPixel);

private:
    void SetSize();

    int m_xOffset = 0;
    int m_yOffset = 0;
    int m_width = 0;
    int m_height = 0;
};
