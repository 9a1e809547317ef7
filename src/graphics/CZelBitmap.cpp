#include <Zel260/graphics/CZelBitmap.h>
#include <Zel260/frame/ZelModule.h>
#include <Zel260/pim32/Pim32File.h>
#include <Zel260/platform/ResourceModule.h>

#include "FreeImageSupport.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace {

std::atomic<ZelPictureLoader>& pictureLoader()
{
    static std::atomic<ZelPictureLoader> loader{nullptr};
    return loader;
}

bool fileExists(const char* name)
{
    return name && *name && Pim32FileFind(name);
}

// Hosts hand over names with either separator, as the file functions take them;
// the routes below open files by the system's own.
std::string systemName(const char* name)
{
    std::string s(name ? name : "");
    std::replace(s.begin(), s.end(), '\\', '/');
    return s;
}

bool readWholeFile(const char* name, std::vector<unsigned char>& out)
{
    std::FILE* f = std::fopen(name, "rb");
    if (!f)
        return false;
    unsigned char buf[65536];
    std::size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0)
        out.insert(out.end(), buf, buf + n);
    const bool ok = !std::ferror(f);
    std::fclose(f);
    return ok;
}

HBITMAP loadThroughFreeImage(const char* name)
{
    std::vector<std::uint32_t> pixels;
    int w = 0, h = 0;
    if (!zelfi::load(name, pixels, w, h, ZEL_MAX_BITMAP_PIXELS))
        return nullptr;
    return CreateBitmap(w, h, 1, 32, pixels.data());
}

HBITMAP loadThroughPicture(const char* name)
{
    ZelPictureLoader loader = pictureLoader().load();
    std::vector<unsigned char> data;
    if (!loader || !readWholeFile(name, data) || data.empty())
        return nullptr;
    return loader(data.data(), data.size());
}

} // namespace

IMPLEMENT_DYNAMIC(CZelBitmap, CBitmap)

ZelPictureLoader ZelSetPictureLoader(ZelPictureLoader loader)
{
    return pictureLoader().exchange(loader);
}

ZelPictureLoader ZelGetPictureLoader()
{
    return pictureLoader().load();
}

void CZelBitmap::SetSize()
{
    BITMAP bm{};
    ::GetObject(m_bitmap, sizeof bm, &bm);
    m_width = bm.bmWidth;
    m_height = bm.bmHeight;
    m_xOffset = static_cast<int>(std::nearbyint(m_width * 0.5));
    m_yOffset = static_cast<int>(std::nearbyint(m_height * 0.5));
}

int CZelBitmap::LoadBitmap(HINSTANCE module, unsigned int id)
{
    DeleteObject();
    m_xOffset = m_yOffset = m_width = m_height = 0;
    if (!module)
        return 0;
    // Resources load from the current resource module; switch to the one asked for
    // and back, as a host's language module may be current.
    ZelSetResourceHandle(module);
    const BOOL ok = CBitmap::LoadBitmap(id);
    ZelRestoreResourceHandle();
    if (!ok)
        return 0;
    SetSize();
    return 1;
}

int CZelBitmap::LoadBitmap(const char* fileName)
{
    if (!fileExists(fileName))
        return 0;
    DeleteObject();
    m_xOffset = m_yOffset = m_width = m_height = 0;
    const std::string name = systemName(fileName);
    HBITMAP b = static_cast<HBITMAP>(::LoadImage(nullptr, name.c_str(), IMAGE_BITMAP, 0, 0,
                                                 LR_LOADFROMFILE | LR_CREATEDIBSECTION | LR_DEFAULTSIZE));
    if (!b)
        b = loadThroughFreeImage(name.c_str());
    if (!b)
        b = loadThroughPicture(name.c_str());
    if (!b || !Attach(b))
        return 0;
    SetSize();
    return 1;
}

void CZelBitmap::ChangeColor(unsigned long from, unsigned long to, HPALETTE palette)
{
    ChangeBitmapColor(m_bitmap, from, to, palette);
}

void CZelBitmap::ChangeBitmapColor(HBITMAP bitmap, unsigned long from, unsigned long to, HPALETTE)
{
    BITMAP bm;
    if (!::GetObject(bitmap, sizeof bm, &bm) || (bm.bmPlanes == 1 && bm.bmBitsPixel == 1))
        return;
    // COLORREF to pixel order; the alpha byte of changed pixels stays.
    auto toPixel = [](unsigned long c) {
        return static_cast<DWORD>(((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF));
    };
    const DWORD f = toPixel(from), t = toPixel(to);
    for (int y = 0; y < bm.bmHeight; ++y) {
        DWORD* row = ZelBitmapScanLine(bitmap, y);
        for (int x = 0; x < bm.bmWidth; ++x)
            if ((row[x] & 0xFFFFFFu) == f)
                row[x] = (row[x] & 0xFF000000u) | t;
    }
}

void CZelBitmap::ChangeBitmapColorDC(HDC dc, const BITMAP* bitmap, unsigned long from, unsigned long to)
{
    if (!dc || !bitmap || (bitmap->bmPlanes == 1 && bitmap->bmBitsPixel == 1))
        return;
    const COLORREF f = static_cast<COLORREF>(from & 0xFFFFFF), t = static_cast<COLORREF>(to & 0xFFFFFF);
    // The record may claim more than the device has; a row ends at the device's
    // edge, and a row that starts outside it ends the work.
    for (int y = 0; y < bitmap->bmHeight; ++y) {
        if (dc->GetPixel(0, y) == CLR_INVALID)
            break;
        for (int x = 0; x < bitmap->bmWidth; ++x) {
            const COLORREF c = dc->GetPixel(x, y);
            if (c == CLR_INVALID)
                break;
            if (c == f)
                dc->SetPixel(x, y, t);
        }
    }
}

int CZelBitmap::SaveBitmap(HDC dc, HBITMAP bitmap, enmImageFormat format, const char* fileName)
{
    BITMAP bm;
    if (!dc || !bitmap || !fileName || !*fileName || !::GetObject(bitmap, sizeof bm, &bm))
        return 0;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(bm.bmWidth) * bm.bmHeight);
    for (int y = 0; y < bm.bmHeight; ++y)
        std::copy_n(ZelBitmapScanLine(bitmap, y), bm.bmWidth, pixels.data() + static_cast<std::size_t>(y) * bm.bmWidth);
    return zelfi::save(format, pixels.data(), bm.bmWidth, bm.bmHeight, bm.bmBitsPixel, systemName(fileName).c_str());
}

int CZelBitmap::GetImageSize(const char* fileName, int* width, int* height, int* bitsPerPixel)
{
    if (width)
        *width = 0;
    if (height)
        *height = 0;
    if (bitsPerPixel)
        *bitsPerPixel = 0;
    int w = 0, h = 0, bpp = 0;
    if (!fileExists(fileName) || !zelfi::tell(systemName(fileName).c_str(), w, h, bpp))
        return 0;
    if (width)
        *width = w;
    if (height)
        *height = h;
    if (bitsPerPixel)
        *bitsPerPixel = bpp;
    return 1;
}
