// CZelToolbarBmp: a toolbar resource (ZEL_RT_TOOLBAR) with its bitmap of the same
// id, and the image list made from them.
//
// The toolbar resource is an array of 16-bit words in the machine's order:
// version, image width, image height, item count, then one command id for each
// item, 0 for a separator.
#pragma once

#include <Zel260/graphics/CZelBitmap.h>
#include <Zel260/graphics/CZelImageList.h>

#include <vector>

class CZelToolbarBmp : public CObject {
    DECLARE_DYNAMIC(CZelToolbarBmp)

public:
    CZelToolbarBmp() = default;
    ~CZelToolbarBmp() override = default;

    // Reads toolbar `id` and loads the bitmap of the same id. Everything held before
    // is dropped first. Returns non-zero when both loaded; a resource that is
    // missing or shorter than its item count gives 0.
    BOOL LoadBitmap(HINSTANCE module, unsigned int id);
    // Only the command ids of toolbar `id` into `ids` (cleared first). FALSE when
    // the resource is missing or short.
    static BOOL LoadVectorOfIDs(HINSTANCE module, unsigned int id, std::vector<unsigned int>& ids);
    // An image list of the image size with `flags`, the bitmap added with
    // `maskColour` (COLORREF) as its mask. FALSE without a loaded resource, or when
    // the list exists already.
    BOOL CreateImageList(unsigned int flags, unsigned long maskColour);
    // The icon of button image `image`, or of the button with command `id`; null
    // without an image list or for an unknown image. Free it with DeleteObject.
    HICON ExtractIcon(int image);
    HICON ExtractIcon(unsigned int id);
    // The image index of command `id` (separators have none), -1 if absent.
    int ImageIndex(unsigned int id) const;

    CSize ImageSize() const { return m_imageSize; }
    // The image size plus 7 in both directions.
    CSize ButtonSize() const { return m_buttonSize; }
    const std::vector<unsigned int>& IdVector() const { return m_ids; }
    // Items including separators.
    int IdCount() const { return m_idCount; }
    // Items without separators.
    int ButtonCount() const { return m_buttonCount; }
    CZelBitmap& Bitmap() { return m_bitmap; }
    CZelImageList& ImageList() { return m_imageList; }

private:
    void Clean();

    BOOL m_resourceLoaded = FALSE;
    BOOL m_imageListCreated = FALSE;
    std::vector<unsigned int> m_ids;
    int m_idCount = 0;
    int m_buttonCount = 0;
    CSize m_imageSize;
    CSize m_buttonSize;
    CZelBitmap m_bitmap;
    CZelImageList m_imageList;
};
