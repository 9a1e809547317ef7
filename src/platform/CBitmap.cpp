#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/ResourceModule.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <unordered_set>
#include <vector>

struct HBITMAP__ {
    int width = 0;
    int height = 0;
    int bitsPixel = 32;
    bool dibSection = false;
    bool bottomUp = false; // only DIB sections may be bottom-up
    std::unique_ptr<DWORD[]> pixels;

    DWORD* row(int y) { return pixels.get() + static_cast<std::size_t>(bottomUp ? height - 1 - y : y) * width; }
};

namespace {

// Handles are checked against the set of live ones, as the system does with its
// object table, so that a stale handle (two CZelDib objects sharing one section
// after operator=) makes a call fail instead of touching freed memory.
struct LiveSet {
    std::mutex lock;
    std::unordered_set<const HBITMAP__*> handles;
};
LiveSet& live()
{
    static LiveSet* s = new LiveSet; // outlives static destructors that free bitmaps
    return *s;
}
bool isLive(const HBITMAP__* b)
{
    if (!b)
        return false;
    LiveSet& l = live();
    std::lock_guard<std::mutex> g(l.lock);
    return l.handles.count(b) != 0;
}

HBITMAP makeBitmap(int width, int height, int bitsPixel, bool dib, bool bottomUp)
{
    if (width < 1 || height < 1 || static_cast<long long>(width) * height > ZEL_MAX_BITMAP_PIXELS)
        return nullptr;
    auto* b = new (std::nothrow) HBITMAP__;
    if (!b)
        return nullptr;
    b->pixels.reset(new (std::nothrow) DWORD[static_cast<std::size_t>(width) * height]());
    if (!b->pixels) {
        delete b;
        return nullptr;
    }
    b->width = width;
    b->height = height;
    b->bitsPixel = bitsPixel;
    b->dibSection = dib;
    b->bottomUp = bottomUp;
    LiveSet& l = live();
    std::lock_guard<std::mutex> g(l.lock);
    l.handles.insert(b);
    return b;
}

// The scan line range of a DIB call, or false when the header doesn't describe the
// bitmap as a 32-bit BI_RGB image of its size.
bool dibRange(HBITMAP b, const BITMAPINFO* info, UINT start, UINT& lines)
{
    if (!isLive(b) || !info)
        return false;
    const BITMAPINFOHEADER& h = info->bmiHeader;
    if (h.biBitCount != 32 || h.biCompression != BI_RGB || h.biWidth != b->width)
        return false;
    long long absH = h.biHeight < 0 ? -static_cast<long long>(h.biHeight) : h.biHeight;
    if (absH != b->height || start >= static_cast<UINT>(b->height))
        return false;
    lines = std::min<UINT>(lines, static_cast<UINT>(b->height) - start);
    return lines > 0;
}

// Top-down row index of DIB scan line `scan` under a header's direction.
int scanToRow(const BITMAPINFOHEADER& h, int height, UINT scan)
{
    return h.biHeight < 0 ? static_cast<int>(scan) : height - 1 - static_cast<int>(scan);
}

template <class T> bool readAt(const unsigned char* p, std::size_t size, std::size_t off, T& v)
{
    if (off > size || size - off < sizeof(T))
        return false;
    std::memcpy(&v, p + off, sizeof(T));
    return true;
}

int lowBit(DWORD m)
{
    int n = 0;
    while (m && !(m & 1)) {
        m >>= 1;
        ++n;
    }
    return n;
}

BYTE maskedChannel(DWORD v, DWORD mask)
{
    if (!mask)
        return 0;
    DWORD x = (v & mask) >> lowBit(mask);
    DWORD max = mask >> lowBit(mask);
    return static_cast<BYTE>((x * 255 + max / 2) / max);
}

// Decodes a packed DIB (info header, colour table, pixels) of `size` bytes; the
// pixels start at `pixelOffset` from `dib` when that is non-zero.
HBITMAP decodeDib(const unsigned char* dib, std::size_t size, std::size_t pixelOffset)
{
    BITMAPINFOHEADER h{};
    if (!readAt(dib, size, 0, h.biSize) || h.biSize < 40 || !readAt(dib, size, 0, h))
        return nullptr;
    if (h.biPlanes != 1 || h.biWidth < 1 || h.biHeight == 0 || h.biHeight == INT32_MIN)
        return nullptr;
    const int w = h.biWidth;
    const bool topDown = h.biHeight < 0;
    const int ht = topDown ? -h.biHeight : h.biHeight;
    const int bpp = h.biBitCount;
    if (bpp != 1 && bpp != 4 && bpp != 8 && bpp != 16 && bpp != 24 && bpp != 32)
        return nullptr;
    DWORD masks[3] = {0, 0, 0};
    const bool bitfields = h.biCompression == 3;
    if (h.biCompression != BI_RGB && !(bitfields && (bpp == 16 || bpp == 32)))
        return nullptr;
    std::size_t off = h.biSize;
    if (bitfields) {
        if (h.biSize >= 52) { // the masks are part of a V4/V5 header
            for (int i = 0; i < 3; ++i)
                if (!readAt(dib, size, 40 + 4 * i, masks[i]))
                    return nullptr;
        } else {
            for (int i = 0; i < 3; ++i)
                if (!readAt(dib, size, off + 4 * i, masks[i]))
                    return nullptr;
            off += 12;
        }
    } else if (bpp == 16) {
        masks[0] = 0x7C00;
        masks[1] = 0x03E0;
        masks[2] = 0x001F;
    }
    // Only depths up to 8 bits look colours up; above that the table (biClrUsed
    // entries, any number a header claims) is merely stepped over, never read in.
    std::vector<DWORD> palette;
    if (bpp <= 8) {
        const std::size_t colours = h.biClrUsed ? h.biClrUsed : (1u << bpp);
        if (colours > 256)
            return nullptr;
        palette.resize(colours);
        for (std::size_t i = 0; i < colours; ++i)
            if (!readAt(dib, size, off + 4 * i, palette[i]))
                return nullptr;
        off += 4 * colours;
    } else {
        off += 4 * static_cast<std::size_t>(h.biClrUsed);
    }
    if (pixelOffset)
        off = pixelOffset;
    const std::size_t stride = ((static_cast<std::size_t>(w) * bpp + 31) / 32) * 4;
    if (off > size || (size - off) / stride < static_cast<std::size_t>(ht))
        return nullptr; // truncated
    HBITMAP b = makeBitmap(w, ht, 32, false, false);
    if (!b)
        return nullptr;
    for (int y = 0; y < ht; ++y) {
        const unsigned char* src = dib + off + stride * static_cast<std::size_t>(y);
        DWORD* dst = b->row(topDown ? y : ht - 1 - y);
        for (int x = 0; x < w; ++x) {
            DWORD px = 0;
            switch (bpp) {
            case 1:
            case 4:
            case 8: {
                const int perByte = 8 / bpp;
                const int shift = 8 - bpp * (x % perByte + 1);
                const unsigned idx = (src[x / perByte] >> shift) & ((1u << bpp) - 1);
                px = idx < palette.size() ? palette[idx] & 0xFFFFFF : 0;
                break;
            }
            case 16: {
                const DWORD v = src[2 * x] | (src[2 * x + 1] << 8);
                px = (static_cast<DWORD>(maskedChannel(v, masks[0])) << 16) |
                     (static_cast<DWORD>(maskedChannel(v, masks[1])) << 8) | maskedChannel(v, masks[2]);
                break;
            }
            case 24: px = src[3 * x] | (src[3 * x + 1] << 8) | (src[3 * x + 2] << 16); break;
            case 32: {
                DWORD v;
                std::memcpy(&v, src + 4 * x, 4);
                if (bitfields)
                    v = (static_cast<DWORD>(maskedChannel(v, masks[0])) << 16) |
                        (static_cast<DWORD>(maskedChannel(v, masks[1])) << 8) | maskedChannel(v, masks[2]);
                px = v;
                break;
            }
            }
            dst[x] = px;
        }
    }
    b->bitsPixel = bpp == 32 ? 32 : (bpp == 16 ? 16 : (bpp == 1 ? 1 : 24));
    return b;
}

} // namespace

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits)
{
    if (planes != 1 || (bitCount != 1 && bitCount != 16 && bitCount != 24 && bitCount != 32))
        return nullptr;
    HBITMAP b = makeBitmap(width, height, static_cast<int>(bitCount), false, false);
    if (b && bits)
        std::memcpy(b->pixels.get(), bits, static_cast<std::size_t>(width) * height * 4);
    return b;
}

HBITMAP CreateCompatibleBitmap(CDC* dc, int width, int height)
{
    return dc ? makeBitmap(width, height, 32, false, false) : nullptr;
}

HBITMAP CreateDIBSection(CDC*, const BITMAPINFO* info, UINT usage, void** bits, HANDLE, DWORD)
{
    if (bits)
        *bits = nullptr;
    if (!info || usage != DIB_RGB_COLORS)
        return nullptr;
    const BITMAPINFOHEADER& h = info->bmiHeader;
    if (h.biSize < 40 || h.biBitCount != 32 || h.biCompression != BI_RGB || h.biPlanes != 1 || h.biHeight == 0 ||
        h.biHeight == INT32_MIN)
        return nullptr;
    HBITMAP b = makeBitmap(h.biWidth, h.biHeight < 0 ? -h.biHeight : h.biHeight, 32, true, h.biHeight > 0);
    if (b && bits)
        *bits = b->pixels.get();
    return b;
}

BOOL DeleteObject(HBITMAP bitmap)
{
    {
        LiveSet& l = live();
        std::lock_guard<std::mutex> g(l.lock);
        if (!bitmap || !l.handles.erase(bitmap))
            return FALSE;
    }
    delete bitmap;
    return TRUE;
}

int GetObject(HBITMAP b, int size, void* record)
{
    if (!isLive(b) || !record || size < static_cast<int>(sizeof(BITMAP)))
        return 0;
    BITMAP bm{};
    bm.bmWidth = b->width;
    bm.bmHeight = b->height;
    // The bit count of a row passes int for widths from 2^26 at 32 bits.
    bm.bmWidthBytes = static_cast<LONG>(((static_cast<long long>(b->width) * b->bitsPixel + 15) / 16) * 2);
    bm.bmPlanes = 1;
    bm.bmBitsPixel = static_cast<WORD>(b->bitsPixel);
    bm.bmBits = b->dibSection ? b->pixels.get() : nullptr;
    std::memcpy(record, &bm, sizeof bm);
    return sizeof bm;
}

int GetDIBits(CDC*, HBITMAP b, UINT start, UINT lines, void* bits, BITMAPINFO* info, UINT usage)
{
    if (!isLive(b) || !info || usage != DIB_RGB_COLORS)
        return 0;
    if (!bits) { // header query
        BITMAPINFOHEADER& h = info->bmiHeader;
        if (h.biSize < 40)
            return 0;
        h.biWidth = b->width;
        h.biHeight = b->height;
        h.biPlanes = 1;
        h.biBitCount = 32;
        h.biCompression = BI_RGB;
        h.biSizeImage = static_cast<DWORD>(b->width) * b->height * 4;
        return 1;
    }
    if (!dibRange(b, info, start, lines))
        return 0;
    auto* out = static_cast<DWORD*>(bits);
    for (UINT i = 0; i < lines; ++i)
        std::memcpy(out + static_cast<std::size_t>(i) * b->width,
                    b->row(scanToRow(info->bmiHeader, b->height, start + i)), static_cast<std::size_t>(b->width) * 4);
    return static_cast<int>(lines);
}

int SetDIBits(CDC*, HBITMAP b, UINT start, UINT lines, const void* bits, const BITMAPINFO* info, UINT usage)
{
    if (!b || !bits || usage != DIB_RGB_COLORS || !dibRange(b, info, start, lines))
        return 0;
    auto* in = static_cast<const DWORD*>(bits);
    for (UINT i = 0; i < lines; ++i)
        std::memcpy(b->row(scanToRow(info->bmiHeader, b->height, start + i)), in + static_cast<std::size_t>(i) * b->width,
                    static_cast<std::size_t>(b->width) * 4);
    return static_cast<int>(lines);
}

HBITMAP ZelCreateBitmapFromBmpData(const void* data, std::size_t size)
{
    auto* p = static_cast<const unsigned char*>(data);
    if (!p || size < 2)
        return nullptr;
    if (p[0] == 'B' && p[1] == 'M') {
        DWORD pixelOffset = 0;
        if (!readAt(p, size, 10, pixelOffset) || pixelOffset < 14 || pixelOffset >= size)
            return nullptr;
        return decodeDib(p + 14, size - 14, pixelOffset - 14);
    }
    return decodeDib(p, size, 0);
}

HANDLE LoadImage(HINSTANCE, const char* name, UINT type, int cx, int cy, UINT flags)
{
    if (!name || !*name || type != IMAGE_BITMAP || !(flags & LR_LOADFROMFILE) || cx != 0 || cy != 0)
        return nullptr;
    std::FILE* f = std::fopen(name, "rb");
    if (!f)
        return nullptr;
    std::vector<unsigned char> data;
    unsigned char buf[65536];
    std::size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0)
        data.insert(data.end(), buf, buf + n);
    std::fclose(f);
    // Only real bitmap files: a bare header in a file isn't one.
    if (data.size() < 2 || data[0] != 'B' || data[1] != 'M')
        return nullptr;
    return ZelCreateBitmapFromBmpData(data.data(), data.size());
}

HBITMAP LoadBitmap(HINSTANCE module, UINT id)
{
    const std::vector<unsigned char>* d = ZelFindResourceData(module, ZEL_RT_BITMAP, id);
    return d ? ZelCreateBitmapFromBmpData(d->data(), d->size()) : nullptr;
}

DWORD* ZelBitmapScanLine(HBITMAP b, int row)
{
    if (!isLive(b) || row < 0 || row >= b->height)
        return nullptr;
    return b->row(row);
}

IMPLEMENT_DYNAMIC(CBitmap, CObject)

CBitmap::~CBitmap()
{
    DeleteObject();
}

BOOL CBitmap::Attach(HBITMAP bitmap)
{
    if (m_bitmap || !bitmap)
        return FALSE;
    m_bitmap = bitmap;
    return TRUE;
}

HBITMAP CBitmap::Detach()
{
    HBITMAP b = m_bitmap;
    m_bitmap = nullptr;
    return b;
}

BOOL CBitmap::DeleteObject()
{
    if (!m_bitmap)
        return FALSE;
    ::DeleteObject(m_bitmap);
    m_bitmap = nullptr;
    return TRUE;
}

BOOL CBitmap::CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits)
{
    if (m_bitmap)
        return FALSE;
    return Attach(::CreateBitmap(width, height, planes, bitCount, bits));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height)
{
    if (m_bitmap)
        return FALSE;
    return Attach(::CreateCompatibleBitmap(dc, width, height));
}

BOOL CBitmap::LoadBitmap(UINT id)
{
    if (m_bitmap)
        return FALSE;
    return Attach(::LoadBitmap(AfxGetResourceHandle(), id));
}
