#include <Zel260/platform/CImageList.h>

#include <cstdint>
#include <cstring>

IMPLEMENT_DYNAMIC(CImageList, CObject)

namespace {

bool readBitmap(CBitmap* bitmap, std::vector<DWORD>& pixels, int& w, int& h)
{
    BITMAP bm;
    if (!bitmap || !bitmap->GetBitmap(&bm))
        return false;
    w = bm.bmWidth;
    h = bm.bmHeight;
    pixels.resize(static_cast<std::size_t>(w) * h);
    for (int y = 0; y < h; ++y)
        std::memcpy(pixels.data() + static_cast<std::size_t>(y) * w, ZelBitmapScanLine(bitmap->GetSafeHandle(), y),
                    static_cast<std::size_t>(w) * 4);
    return true;
}

} // namespace

BOOL CImageList::Create(int cx, int cy, UINT flags, int initial, int grow)
{
    // Each image is kept at the list's size; a list larger than any bitmap would
    // only fail (or exhaust memory) at its first Add.
    if (cx < 1 || cy < 1 || static_cast<long long>(cx) * cy > ZEL_MAX_BITMAP_PIXELS || m_cx > 0)
        return FALSE;
    m_cx = cx;
    m_cy = cy;
    m_flags = flags;
    if (initial > 0 && initial < 4096)
        m_images.reserve(static_cast<std::size_t>(initial));
    return TRUE;
}

BOOL CImageList::DeleteImageList()
{
    if (m_cx == 0)
        return FALSE;
    m_images.clear();
    m_cx = m_cy = 0;
    m_flags = 0;
    return TRUE;
}

BOOL CImageList::GetIconSize(int* cx, int* cy) const
{
    if (!cx || !cy || m_cx == 0)
        return FALSE;
    *cx = m_cx;
    *cy = m_cy;
    return TRUE;
}

int CImageList::AddPixels(const std::vector<DWORD>& pixels, int w, int h, const std::vector<bool>* transparent)
{
    if (m_cx == 0 || w < m_cx)
        return -1;
    const int first = GetImageCount();
    const bool masked = (m_flags & ILC_MASK) && transparent;
    for (int i = 0; i + m_cx <= w; i += m_cx) {
        std::vector<DWORD> image(static_cast<std::size_t>(m_cx) * m_cy, 0xFF000000u);
        for (int y = 0; y < m_cy && y < h; ++y)
            for (int x = 0; x < m_cx; ++x) {
                const std::size_t s = static_cast<std::size_t>(y) * w + i + x;
                const bool clear = masked && (*transparent)[s];
                image[static_cast<std::size_t>(y) * m_cx + x] = clear ? 0u : ((pixels[s] & 0xFFFFFFu) | 0xFF000000u);
            }
        m_images.push_back(std::move(image));
    }
    return first;
}

int CImageList::Add(CBitmap* bitmap, CBitmap* mask)
{
    std::vector<DWORD> px, mk;
    int w, h, mw = 0, mh = 0;
    if (!readBitmap(bitmap, px, w, h))
        return -1;
    if (!mask || !mask->GetSafeHandle())
        return AddPixels(px, w, h, nullptr);
    if (!readBitmap(mask, mk, mw, mh))
        return -1;
    std::vector<bool> clear(px.size(), false);
    for (int y = 0; y < h && y < mh; ++y)
        for (int x = 0; x < w && x < mw; ++x)
            clear[static_cast<std::size_t>(y) * w + x] = (mk[static_cast<std::size_t>(y) * mw + x] & 0xFFFFFFu) != 0;
    return AddPixels(px, w, h, &clear);
}

int CImageList::Add(CBitmap* bitmap, COLORREF maskColour)
{
    std::vector<DWORD> px;
    int w, h;
    if (!readBitmap(bitmap, px, w, h))
        return -1;
    const DWORD key = ((maskColour & 0xFF) << 16) | (maskColour & 0xFF00) | ((maskColour >> 16) & 0xFF);
    std::vector<bool> clear(px.size());
    for (std::size_t i = 0; i < px.size(); ++i)
        clear[i] = (px[i] & 0xFFFFFFu) == key;
    return AddPixels(px, w, h, &clear);
}

BOOL CImageList::Remove(int image)
{
    if (image < 0 || image >= GetImageCount())
        return FALSE;
    m_images.erase(m_images.begin() + image);
    return TRUE;
}

const DWORD* CImageList::GetImagePixels(int image) const
{
    if (image < 0 || image >= GetImageCount())
        return nullptr;
    return m_images[static_cast<std::size_t>(image)].data();
}

BOOL CImageList::Draw(CDC* dc, int image, POINT point, UINT)
{
    const DWORD* px = GetImagePixels(image);
    if (!dc || !px)
        return FALSE;
    // Device positions are int, the far edge of a rectangle included: an image
    // that would end beyond has no place.
    if (static_cast<long long>(point.x) + m_cx > INT32_MAX || static_cast<long long>(point.y) + m_cy > INT32_MAX)
        return FALSE;
    // Opaque runs of each row go to the device as one-row bitmaps, so the device's
    // pixels show through the transparent ones.
    BITMAPINFO info{};
    info.bmiHeader.biSize = 40;
    info.bmiHeader.biHeight = -1;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    for (int y = 0; y < m_cy; ++y) {
        const DWORD* row = px + static_cast<std::size_t>(y) * m_cx;
        for (int x = 0; x < m_cx;) {
            if (!(row[x] >> 24)) {
                ++x;
                continue;
            }
            int end = x;
            while (end < m_cx && (row[end] >> 24))
                ++end;
            info.bmiHeader.biWidth = end - x;
            dc->SetDIBitsToDevice(point.x + x, point.y + y, end - x, 1, 0, 0, 0, 1, row + x, &info, DIB_RGB_COLORS);
            x = end;
        }
    }
    return TRUE;
}

HICON CImageList::ExtractIcon(int image)
{
    const DWORD* px = GetImagePixels(image);
    return px ? CreateBitmap(m_cx, m_cy, 1, 32, px) : nullptr;
}
