// CZelDib: a 32-bit true-colour image in plain memory, with copy, colour-key, alpha,
// blend-mode, grey-scale, fill and rotate-and-scale operations written as loops over
// the buffer.
//
// Pixels: one DWORD each, byte 0 blue, byte 1 green, byte 2 red, byte 3 alpha; the
// stride is the width, so pixel (x, y) of memory row y is GetCrBits()[y * width + x].
// Memory row 0 is the top of the picture when the image is top-down (biHeight < 0)
// and the bottom otherwise. Pixel operations work in memory rows and ignore the
// direction; only the device functions look at it.
//
// Colour arguments are COLORREF (0x00BBGGRR); every operation exchanges bytes 0 and 2
// of its copy before comparing or writing, so "colour" below means that value.
//
// Failures are FALSE (or nothing, for void operations): a null or empty source, an
// empty destination, sizes that don't match, rectangles clipped to nothing.
//
// Copying: the copy constructor makes a deep copy; operator= shares the pixel
// buffer (both objects then hold one bitmap handle, and the second to be destroyed
// frees a handle that's gone). Use operator= only when one of the two is detached
// before destruction.
#pragma once

#include <Zel260/graphics/CZelPoint.h>
#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/CDC.h>
#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/Win32Types.h>

class CZelDib {
public:
    CZelDib();
    CZelDib(const CZelDib& other);
    CZelDib& operator=(const CZelDib& other);
    virtual ~CZelDib();

    // --- Life -----------------------------------------------------------------
    // Makes a black image of width by |height| pixels (height < 0: top-down). FALSE
    // for width < 1 or height == 0, or when the memory can't be had; the old image is
    // gone in every case but the argument failure.
    BOOL Create(int width, int height);
    BOOL Create(const SIZE& size);
    // A deep copy of `src` (size, direction and pixels). FALSE for a null or empty
    // source.
    BOOL Create(const CZelDib* src);
    // The pixels of a device bitmap, top-down if topDown is non-zero. FALSE for a
    // null device or bitmap.
    BOOL Create(CDC* dc, CBitmap* bitmap, int topDown);
    // The bitmap resource `id` of `module` (as CZelBitmap::LoadBitmap loads it).
    // FALSE for a null device or module, or a resource that doesn't load.
    BOOL Create(CDC* dc, HINSTANCE module, UINT id, int topDown);
    // A picture file, by the routes of CZelBitmap::LoadBitmap. FALSE for an empty
    // name or a file that no route reads.
    BOOL Create(CDC* dc, const char* fileName, int topDown);
    // Frees the pixels; the image is then empty (size 0 by 0, header zeroed).
    void Destroy();
    // Does nothing if width and height (compared as given, sign included) equal the
    // present size and returns TRUE; otherwise Create(width, height): the content is
    // lost.
    BOOL Resize(int width, int height);
    // The source's width and height, negated if it's top-down; equal sizes keep the
    // image. FALSE for a null source.
    BOOL Resize(const CZelDib* src);

    // --- Queries --------------------------------------------------------------
    int GetWidth() const { return m_width; }
    // The absolute height.
    int GetHeight() const { return m_height; }
    HBITMAP GetBitmap() const { return m_bitmap; }
    // The pixels, null for an empty image.
    DWORD* GetCrBits() const { return m_bits; }
    const BITMAPINFO* GetBitmapInfo() const { return &m_info; }
    const BITMAPINFOHEADER* GetBitmapInfoHeader() const { return &m_info.bmiHeader; }
    BOOL IsTopDown() const { return m_info.bmiHeader.biHeight < 0; }
    BOOL IsEqualWidth(int width) const { return m_width == width; }
    BOOL IsEqualWidth(const CZelDib* dib) const { return dib && m_width == dib->m_width; }
    BOOL IsEqualHeight(int height) const { return m_height == height; }
    BOOL IsEqualHeight(const CZelDib* dib) const { return dib && m_height == dib->m_height; }
    BOOL IsEqualSize(int width, int height) const { return IsEqualWidth(width) && IsEqualHeight(height); }
    BOOL IsEqualSize(const CZelDib* dib) const { return IsEqualWidth(dib) && IsEqualHeight(dib); }
    BOOL IsValidX(int x) const { return x >= 0 && x < m_width; }
    BOOL IsValidY(int y) const { return y >= 0 && y < m_height; }

    // --- Clipping ---------------------------------------------------------------
    // Clamp to 0 .. size - 1.
    void ClipX(int& x) const;
    void ClipY(int& y) const;
    // Cuts the rectangle to the image: if x + w reaches the width, w = width - x;
    // then a negative x is added to w and becomes 0; likewise y and h. TRUE when
    // something is left (w >= 1 and h >= 1).
    BOOL ClipXYWH(int& x, int& y, int& w, int& h) const;
    // A horizontal run x1 .. x2 on row y: an x2 beyond the width becomes width - 1
    // (x2 equal to the width stays), a negative x1 becomes 0. FALSE when x1 == x2
    // or y is outside.
    BOOL ClipX1YX2(int& x1, int& y, int& x2) const;
    // The same for a vertical run on column x.
    BOOL ClipXY1Y2(int& x, int& y1, int& y2) const;

    // --- Device -----------------------------------------------------------------
    // The whole image at x, y (both >= 0) in its own size, or cut to w by h from
    // the DIB's origin 0, 0 (the bottom-left corner of a bottom-up image, so there
    // the bottom rows show). FALSE for a null device, a negative origin or an empty
    // image.
    BOOL CopyToDC(CDC* dc, int x, int y) const;
    BOOL CopyToDC(CDC* dc, int x, int y, int w, int h) const;
    BOOL CopyToDC(CDC* dc, const CRect& rect) const;
    // The whole image stretched to x, y, w, h (device pixels; a negative w or h
    // mirrors) with raster operation `rop`. FALSE for a null device, an empty image
    // or when the device draws nothing (a size of INT_MIN, an edge beyond int).
    BOOL CopyToDCStretch(CDC* dc, int x, int y, int w, int h, DWORD rop) const;
    BOOL CopyToDCStretch(CDC* dc, const CRect& rect, DWORD rop) const;
    // Source rectangle sx, sy, sw, sh (top-down image coordinates, clipped to the
    // image) stretched to dx, dy, dw, dh. dw and dh must be positive. The target
    // isn't adjusted for what clipping took off the source. FALSE for a null
    // device, an empty image, dw or dh below 1, or a source clipped to nothing.
    BOOL CopyToDCStretchRect(CDC* dc, int dx, int dy, int dw, int dh, int sx, int sy, int sw, int sh, DWORD rop) const;
    BOOL CopyToDCStretchRect(CDC* dc, const CRect& dst, const CRect& src, DWORD rop) const;
    // Writes the image into a bitmap of exactly its size. FALSE for a null device
    // or bitmap, an empty image, or a bitmap of another size.
    BOOL CopyToBitmap(CDC* dc, CBitmap* bitmap) const;
    // Reads a bitmap of exactly the image's size; an empty image takes the bitmap's
    // size (bottom-up). FALSE for a null device or bitmap, or a bitmap of another
    // size than a non-empty image.
    BOOL CopyFromBitmap(CDC* dc, CBitmap* bitmap);
    // Reads w by h device pixels at x, y; an empty image takes the size w, h.
    // Pixels the device doesn't have come out black. FALSE for a null device, a
    // non-empty image of another size than w by h, or w or h below 1.
    BOOL CopyFromDC(CDC* dc, int x, int y, int w, int h);
    // Reverses the memory row order while the picture stays: top-down becomes
    // bottom-up and back. FALSE for a null device or an empty image.
    BOOL Invert(CDC* dc);

    // --- Blend modes ------------------------------------------------------------
    // On each of the blue, green and red bytes, d the destination and s the source
    // (or colour) byte; the destination's alpha stays:
    //   Darken min(d, s), Lighten max(d, s), Screen low byte of
    //   ~(((255 - d) * (255 - s)) >> 8), Add min(d + s, 255), Difference |s - d|,
    //   Multiply (d * s) >> 8 (so 255 by 255 gives 254).
    // Forms:
    //   Op(src)                         whole image; sizes must be equal, an empty
    //                                   image takes the source's size first;
    //   OpRect(src, x, y, w, h)         source rectangle to destination 0, 0;
    //   OpRect(src, sx, sy, w, h, dx, dy) source rectangle to dx, dy, clipped
    //                                   against both images (a negative sx cuts the
    //                                   source's left, the rest lands at dx);
    //   OpRect(src, rect[, point])      the same from a rectangle and a point;
    //   Op(colour), OpRect(colour, ...) with one colour, clipped to the image.
    BOOL Darken(const CZelDib* src);
    BOOL DarkenRect(const CZelDib* src, int x, int y, int w, int h);
    BOOL DarkenRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL DarkenRect(const CZelDib* src, const CRect& rect);
    BOOL DarkenRect(const CZelDib* src, const CRect& rect, const CPoint& dst);
    BOOL Darken(DWORD colour);
    BOOL DarkenRect(DWORD colour, int x, int y, int w, int h);
    BOOL DarkenRect(DWORD colour, const CRect& rect);

    BOOL Lighten(const CZelDib* src);
    BOOL LightenRect(const CZelDib* src, int x, int y, int w, int h);
    BOOL LightenRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL LightenRect(const CZelDib* src, const CRect& rect);
    BOOL LightenRect(const CZelDib* src, const CRect& rect, const CPoint& dst);
    BOOL Lighten(DWORD colour);
    BOOL LightenRect(DWORD colour, int x, int y, int w, int h);
    BOOL LightenRect(DWORD colour, const CRect& rect);

    BOOL Screen(const CZelDib* src);
    BOOL ScreenRect(const CZelDib* src, int x, int y, int w, int h);
    BOOL ScreenRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL ScreenRect(const CZelDib* src, const CRect& rect);
    BOOL ScreenRect(const CZelDib* src, const CRect& rect, const CPoint& dst);
    BOOL Screen(DWORD colour);
    BOOL ScreenRect(DWORD colour, int x, int y, int w, int h);
    BOOL ScreenRect(DWORD colour, const CRect& rect);

    BOOL Add(const CZelDib* src);
    BOOL AddRect(const CZelDib* src, int x, int y, int w, int h);
    BOOL AddRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL AddRect(const CZelDib* src, const CRect& rect);
    BOOL AddRect(const CZelDib* src, const CRect& rect, const CPoint& dst);
    BOOL Add(DWORD colour);
    BOOL AddRect(DWORD colour, int x, int y, int w, int h);
    BOOL AddRect(DWORD colour, const CRect& rect);

    BOOL Difference(const CZelDib* src);
    BOOL DifferenceRect(const CZelDib* src, int x, int y, int w, int h);
    BOOL DifferenceRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL DifferenceRect(const CZelDib* src, const CRect& rect);
    BOOL DifferenceRect(const CZelDib* src, const CRect& rect, const CPoint& dst);
    BOOL Difference(DWORD colour);
    BOOL DifferenceRect(DWORD colour, int x, int y, int w, int h);
    BOOL DifferenceRect(DWORD colour, const CRect& rect);

    BOOL Multiply(const CZelDib* src);
    BOOL MultiplyRect(const CZelDib* src, int x, int y, int w, int h);
    BOOL MultiplyRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL MultiplyRect(const CZelDib* src, const CRect& rect);
    BOOL MultiplyRect(const CZelDib* src, const CRect& rect, const CPoint& dst);
    BOOL Multiply(DWORD colour);
    BOOL MultiplyRect(DWORD colour, int x, int y, int w, int h);
    BOOL MultiplyRect(DWORD colour, const CRect& rect);

    // Blend: ((s - d) * a + (d << 8)) >> 8 in unsigned 32 bits, low byte kept, so 0
    // leaves d and 255 comes one short of s. Blend50: the whole pixel becomes
    // ((d >> 1) & 0x7F7F7F) + ((s >> 1) & 0x7F7F7F), alpha 0. Source forms only.
    BOOL Blend(const CZelDib* src, BYTE a);
    BOOL BlendRect(const CZelDib* src, int x, int y, int w, int h, BYTE a);
    BOOL BlendRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy, BYTE a);
    BOOL BlendRect(const CZelDib* src, const CRect& rect, BYTE a);
    BOOL BlendRect(const CZelDib* src, const CRect& rect, const CPoint& dst, BYTE a);
    BOOL Blend50(const CZelDib* src);
    BOOL Blend50Rect(const CZelDib* src, int x, int y, int w, int h);
    BOOL Blend50Rect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL Blend50Rect(const CZelDib* src, const CRect& rect);
    BOOL Blend50Rect(const CZelDib* src, const CRect& rect, const CPoint& dst);

    // --- Copies and keys --------------------------------------------------------
    // Word-by-word copy of a source of equal size (an empty image takes its size);
    // the source's direction isn't looked at.
    BOOL CopyFromDib(const CZelDib* src);
    // The whole source to x, y, clipped; the source is read from its first pixel
    // whatever the clipping did, so at a negative x the picture is cut at its right
    // side, not shifted (CopyFromDibRect is the form that cuts the left). An empty
    // image takes the size x + source width, y + source height.
    BOOL CopyFromDib(const CZelDib* src, int x, int y);
    BOOL CopyFromDib(const CZelDib* src, const CPoint& dst);
    BOOL CopyFromDibRect(const CZelDib* src, int x, int y, int w, int h);
    BOOL CopyFromDibRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL CopyFromDibRect(const CZelDib* src, const CRect& rect);
    BOOL CopyFromDibRect(const CZelDib* src, const CRect& rect, const CPoint& dst);
    // As the copies, but a source pixel whose all 32 bits equal the key colour (top
    // byte cleared) isn't copied: a pixel with non-zero alpha is never transparent.
    BOOL CopyFromDibTransparent(const CZelDib* src, DWORD key);
    BOOL CopyFromDibTransparent(const CZelDib* src, int x, int y, DWORD key);
    BOOL CopyFromDibTransparent(const CZelDib* src, const CPoint& dst, DWORD key);
    BOOL CopyFromDibTransparentRect(const CZelDib* src, int x, int y, int w, int h, DWORD key);
    BOOL CopyFromDibTransparentRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy, DWORD key);
    BOOL CopyFromDibTransparentRect(const CZelDib* src, const CRect& rect, DWORD key);
    BOOL CopyFromDibTransparentRect(const CZelDib* src, const CRect& rect, const CPoint& dst, DWORD key);
    // Each colour byte by Blend with the factor from the source pixel's alpha; the
    // destination alpha stays. The whole-image form needs equal sizes (an empty
    // image fails).
    BOOL CopyFromDibAlpha(const CZelDib* src);
    BOOL CopyFromDibAlpha(const CZelDib* src, int x, int y);
    BOOL CopyFromDibAlpha(const CZelDib* src, const CPoint& dst);
    BOOL CopyFromDibAlphaRect(const CZelDib* src, int x, int y, int w, int h);
    BOOL CopyFromDibAlphaRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy);
    BOOL CopyFromDibAlphaRect(const CZelDib* src, const CRect& rect);
    BOOL CopyFromDibAlphaRect(const CZelDib* src, const CRect& rect, const CPoint& dst);

    // --- Fills ------------------------------------------------------------------
    // Whole-image forms do nothing on an empty image; Rect forms are clipped and give
    // FALSE when nothing is left.
    // Fill: the colour with alpha 0, or with `alpha`. FillRect without alpha writes
    // the converted colour as it stands, top byte included.
    void Fill(DWORD colour);
    void Fill(DWORD colour, BYTE alpha);
    BOOL FillRect(int x, int y, int w, int h, DWORD colour);
    BOOL FillRect(const CRect& rect, DWORD colour);
    BOOL FillRect(int x, int y, int w, int h, DWORD colour, BYTE alpha);
    BOOL FillRect(const CRect& rect, DWORD colour, BYTE alpha);
    // Only byte 3.
    void FillAlpha(BYTE alpha);
    BOOL FillAlphaRect(int x, int y, int w, int h, BYTE alpha);
    BOOL FillAlphaRect(const CRect& rect, BYTE alpha);
    // Only byte 3, from a float running value. Horizontal: each row runs from a in
    // steps of (b - a) / w. Vertical: memory row 0 gets b, and each following row
    // steps by (a - b) / h.
    void FillAlphaGradient(BYTE a, BYTE b, int horizontal);
    BOOL FillAlphaGradientRect(int x, int y, int w, int h, BYTE a, BYTE b, int horizontal);
    BOOL FillAlphaGradientRect(const CRect& rect, BYTE a, BYTE b, int horizontal);
    // Blend(a) and Blend50 with the colour as source.
    void FillBlend(DWORD colour, BYTE a);
    BOOL FillBlendRect(int x, int y, int w, int h, DWORD colour, BYTE a);
    BOOL FillBlendRect(const CRect& rect, DWORD colour, BYTE a);
    void FillBlend50(DWORD colour);
    BOOL FillBlend50Rect(int x, int y, int w, int h, DWORD colour);
    BOOL FillBlend50Rect(const CRect& rect, DWORD colour);
    // The colour (top byte as converted) where column + row is odd; in the Rect form
    // counted from the clipped rectangle's corner.
    void FillStippled(DWORD colour);
    BOOL FillStippledRect(int x, int y, int w, int h, DWORD colour);
    BOOL FillStippledRect(const CRect& rect, DWORD colour);
    // The three colour bytes become trunc(0.3 red + 0.59 green + 0.11 blue); alpha
    // stays. The Transparent form skips pixels whose low 24 bits equal the colour.
    void GreyScale();
    BOOL GreyScaleRect(int x, int y, int w, int h);
    BOOL GreyScaleRect(const CRect& rect);
    void GreyScaleTransparent(DWORD colour);
    // Pixels whose low 24 bits equal `oldColour` get the low 24 bits of
    // `newColour` and keep their alpha; with `alpha` they become newColour with it.
    BOOL ExchangeColor(DWORD oldColour, DWORD newColour);
    BOOL ExchangeColorRect(int x, int y, int w, int h, DWORD oldColour, DWORD newColour);
    BOOL ExchangeColorRect(const CRect& rect, DWORD oldColour, DWORD newColour);
    BOOL ExchangeColor(DWORD oldColour, DWORD newColour, BYTE alpha);
    BOOL ExchangeColorRect(int x, int y, int w, int h, DWORD oldColour, DWORD newColour, BYTE alpha);
    BOOL ExchangeColorRect(const CRect& rect, DWORD oldColour, DWORD newColour, BYTE alpha);

    // --- Rotate and scale -------------------------------------------------------
    // Each destination pixel is mapped back into the source, turned by `angle`
    // (radians) and scaled by 1 / zoom about the destination point (dstX, dstY),
    // which lands on the source point (srcX, srcY); the source is sampled without
    // interpolation. A pixel is inside only for 0 < x < source width and
    // 0 < y < source height, strictly, so exact zeros count as outside; outside
    // pixels get fillColour where `fill` is non-zero and stay otherwise. Works on the
    // destination's own size, never creating it: FALSE for a null or empty source or
    // an empty destination.
    BOOL CopyFromDibStretch(const CZelDib* src, float angle, float zoom, float dstX, float dstY, float srcX,
                            float srcY, int fill, DWORD fillColour);
    // Keyed: source pixels whose low 24 bits equal the key (whatever their alpha)
    // leave the destination pixel as it was.
    BOOL CopyFromDibStretchTransparent(const CZelDib* src, float angle, float zoom, float dstX, float dstY,
                                       float srcX, float srcY, DWORD key, int fill, DWORD fillColour);
    // Mixed by the source pixel's alpha as CopyFromDibAlpha.
    BOOL CopyFromDibStretchAlpha(const CZelDib* src, float angle, float zoom, float dstX, float dstY, float srcX,
                                 float srcY, int fill, DWORD fillColour);
    // Short forms: the centres of the two images meet. With `adjust` non-zero the
    // image is first resized to hold the whole turned source (a failure of that is
    // the result), and `corners`, if not null, receives the four turned source
    // corners (-w/2,-h/2), (w/2,-h/2), (-w/2,h/2), (w/2,h/2) in image coordinates,
    // limited to the image.
    BOOL CopyFromDibStretch(const CZelDib* src, float angle, float zoom, int adjust, int fill, DWORD fillColour,
                            CZelPoint<double>* const corners);
    BOOL CopyFromDibStretchTransparent(const CZelDib* src, float angle, float zoom, DWORD key, int adjust, int fill,
                                       DWORD fillColour, CZelPoint<double>* const corners);
    BOOL CopyFromDibStretchAlpha(const CZelDib* src, float angle, float zoom, int adjust, int fill,
                                 DWORD fillColour, CZelPoint<double>* const corners);

private:
    BOOL ChkDstSizeRect(int& x, int& y, int& w, int& h, int exact) const;
    BOOL ChkDstSizeRect(int& x, int& y, int& w, int& h, int exact);
    BOOL ChkDstSize(int w, int h, int exact) const;
    BOOL ChkDstSize(int w, int h, int exact);
    BOOL ChkDstSize(const CZelDib* src) const;
    BOOL ChkDstSize(const CZelDib* src);
    BOOL ChkSrcSizeRect(const CZelDib* src, int& x, int& y, int& w, int& h) const;
    BOOL ChkSrcSize(const CZelDib* src) const;
    BOOL PrepDst(int& x, int& y, int& w, int& h, DWORD*& dst, int& dstSkip) const;
    BOOL PrepDstSrc(const CZelDib* src, int sx, int sy, int& w, int& h, int dx, int dy, DWORD*& dst, int& dstSkip,
                    const DWORD*& srcBits, int& srcSkip) const;
    BOOL AdjustSize(const CZelDib* src, float angle, float zoom, CZelPoint<double>* const corners);
    template <class Op> BOOL WholeOp(const CZelDib* src, Op op);
    template <class Op> BOOL RectOp(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy, Op op);
    template <class Op> BOOL ColourOp(DWORD colour, Op op);
    template <class Op> BOOL ColourRectOp(DWORD colour, int x, int y, int w, int h, Op op);
    template <class Sample> BOOL Stretch(const CZelDib* src, float angle, float zoom, float dstX, float dstY,
                                         float srcX, float srcY, int fill, DWORD fillColour, Sample sample);

    BITMAPINFO m_info;
    int m_width = 0;
    int m_height = 0;
    HBITMAP m_bitmap = nullptr;
    DWORD* m_bits = nullptr;
};
