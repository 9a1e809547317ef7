#include <Zel260/graphics/CZelBitmap.h>
#include <Zel260/graphics/CZelImageList.h>

int CZelImageList::Add(HINSTANCE module, unsigned int id, unsigned int maskId)
{
    CZelBitmap bitmap, mask;
    if (!bitmap.LoadBitmap(module, id) || !mask.LoadBitmap(module, maskId))
        return -1;
    return CImageList::Add(&bitmap, &mask);
}

int CZelImageList::Add(HINSTANCE module, unsigned int id, unsigned long maskColour)
{
    CZelBitmap bitmap;
    if (!bitmap.LoadBitmap(module, id))
        return -1;
    return CImageList::Add(&bitmap, static_cast<COLORREF>(maskColour));
}

int CZelImageList::Add(HINSTANCE module, unsigned int id, unsigned long from, unsigned long to,
                       unsigned long maskColour)
{
    CZelBitmap bitmap;
    if (!bitmap.LoadBitmap(module, id))
        return -1;
    bitmap.ChangeColor(from, to, nullptr);
    return CImageList::Add(&bitmap, static_cast<COLORREF>(maskColour));
}

int CZelImageList::Add(HINSTANCE module, int count, const unsigned int* ids, unsigned int maskId)
{
    CZelBitmap mask;
    if (count < 1 || !ids || !mask.LoadBitmap(module, maskId))
        return -1;
    int first = -1;
    for (int i = 0; i < count; ++i) {
        CZelBitmap bitmap;
        const int index = bitmap.LoadBitmap(module, ids[i]) ? CImageList::Add(&bitmap, &mask) : -1;
        if (index < 0)
            return -1;
        if (i == 0)
            first = index;
    }
    return first;
}

BOOL CZelImageList::Draw(CDC* dc, int image, POINT point, unsigned int style)
{
    return CImageList::Draw(dc, image, point, style);
}
