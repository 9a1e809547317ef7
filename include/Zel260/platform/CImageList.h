// An image list: images of one size kept in a row, each with an optional mask,
// drawn onto a device by index.
#pragma once

#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/CDC.h>
#include <Zel260/platform/CObject.h>
#include <Zel260/platform/Win32Types.h>

#include <vector>

// Creation flags (Win32 numbers): ILC_MASK keeps a mask for each image.
constexpr UINT ILC_MASK = 0x0001;
constexpr UINT ILC_COLOR = 0x0000;
constexpr UINT ILC_COLOR24 = 0x0018;
constexpr UINT ILC_COLOR32 = 0x0020;
// Drawing styles: masked pixels are left out in every style of a masked list.
constexpr UINT ILD_NORMAL = 0x0000;
constexpr UINT ILD_TRANSPARENT = 0x0001;

class CImageList : public CObject {
    DECLARE_DYNAMIC(CImageList)

public:
    CImageList() = default;
    ~CImageList() override = default;
    CImageList(const CImageList&) = delete;
    CImageList& operator=(const CImageList&) = delete;

    // Images of cx by cy pixels (both >= 1, cx * cy at most ZEL_MAX_BITMAP_PIXELS,
    // the most a bitmap holds). `initial` and `grow` only reserve room. FALSE for a bad size or
    // when the list exists.
    BOOL Create(int cx, int cy, UINT flags, int initial, int grow);
    BOOL DeleteImageList();
    BOOL IsCreated() const { return m_cx > 0; }
    int GetImageCount() const { return static_cast<int>(m_images.size()); }
    BOOL GetIconSize(int* cx, int* cy) const;
    UINT GetFlags() const { return m_flags; }

    // Adds the bitmap cut into images of the list's width (a strip of several adds
    // them all; a bitmap narrower than one image adds nothing). Pixels outside the
    // bitmap are black. With a mask bitmap, white (non-black) mask pixels are
    // transparent; with a colour, pixels of that colour are; either only when the
    // list has ILC_MASK. Returns the index of the first image added, -1 on failure.
    int Add(CBitmap* bitmap, CBitmap* mask);
    int Add(CBitmap* bitmap, COLORREF maskColour);
    BOOL Remove(int image);

    // Draws image `image` with its top left at `point`; transparent pixels keep the
    // device's. FALSE for a null device, a bad index, or a point at which the
    // image's far edge (one past its last pixel) would lie beyond INT_MAX.
    BOOL Draw(CDC* dc, int image, POINT point, UINT style);
    // A new icon of the image (alpha 255, 0 where transparent); null for a bad
    // index. Free it with DeleteObject.
    HICON ExtractIcon(int image);
    // The pixels of an image (cx * cy, top-down, alpha 255 opaque, 0 transparent),
    // null for a bad index.
    const DWORD* GetImagePixels(int image) const;

private:
    int AddPixels(const std::vector<DWORD>& pixels, int width, int height, const std::vector<bool>* transparent);

    int m_cx = 0;
    int m_cy = 0;
    UINT m_flags = 0;
    std::vector<std::vector<DWORD>> m_images;
};
