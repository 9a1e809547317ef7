// CZelImageList: an image list that adds bitmap resources with their masks or a
// mask colour, colour-replaced on the way in.
#pragma once

#include <Zel260/platform/CImageList.h>

class CZelImageList : public CImageList {
public:
    using CImageList::Add;

    // Bitmap resource `id` with the mask bitmap `maskId`, both of `module`.
    // Returns the index of the first image added, -1 when a bitmap doesn't load or
    // the list doesn't take it.
    int Add(HINSTANCE module, unsigned int id, unsigned int maskId);
    // Bitmap resource `id`, pixels of `maskColour` (COLORREF) transparent. The
    // colour travels as unsigned long: pass RGB(...) through a cast or with a "ul"
    // literal, or the mask-id form is chosen.
    int Add(HINSTANCE module, unsigned int id, unsigned long maskColour);
    // The same after pixels of colour `from` have become `to`.
    int Add(HINSTANCE module, unsigned int id, unsigned long from, unsigned long to, unsigned long maskColour);
    // `count` bitmap resources, each with the one mask `maskId`, loaded once. The
    // first index is the result; a count below 1, a mask that doesn't load, or the
    // first bitmap that fails gives -1 (the images added before it stay).
    int Add(HINSTANCE module, int count, const unsigned int* ids, unsigned int maskId);

    // Draws image `image` with its top left at `point` (device pixels; ILD_ style);
    // masked pixels keep the device's. FALSE for a null device, a bad index, or a
    // point at which the image would end beyond INT_MAX.
    BOOL Draw(CDC* dc, int image, POINT point, unsigned int style);
};
