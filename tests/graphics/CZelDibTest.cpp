#include "DibTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>

using gfxtest::at;
using gfxtest::make;

TEST(CZelDibLife, CreateChecksSizeAndKeepsTheHeaderAsWritten)
{
    CZelDib dib;
    EXPECT_FALSE(dib.Create(5, 0));
    EXPECT_FALSE(dib.Create(0, 3));
    ASSERT_TRUE(dib.Create(5, -3));
    EXPECT_TRUE(dib.IsTopDown());
    EXPECT_EQ(dib.GetHeight(), 3);
    const BITMAPINFOHEADER* h = dib.GetBitmapInfoHeader();
    EXPECT_EQ(h->biSize, 40u);
    EXPECT_EQ(h->biHeight, -3);
    EXPECT_EQ(h->biBitCount, 32);
    EXPECT_EQ(static_cast<std::int32_t>(h->biSizeImage), -60); // negative on purpose for top-down
    EXPECT_EQ(at(dib, 4, 2), 0u);

    // Resize compares the height as given with the absolute height: a positive
    // height keeps the top-down image, the very size it was made with renews it.
    dib.GetCrBits()[0] = 7;
    EXPECT_TRUE(dib.Resize(5, 3));
    EXPECT_TRUE(dib.IsTopDown());
    EXPECT_EQ(at(dib, 0, 0), 7u);
    EXPECT_TRUE(dib.Resize(5, -3));
    EXPECT_EQ(at(dib, 0, 0), 0u);

    dib.Destroy();
    EXPECT_EQ(dib.GetCrBits(), nullptr);
    EXPECT_EQ(dib.GetWidth(), 0);
    EXPECT_EQ(dib.GetBitmapInfoHeader()->biSize, 0u);
}

TEST(CZelDibLife, HeightWithoutAnAbsoluteValueEmptiesTheImage)
{
    // INT_MIN passes the argument check (it isn't 0), so the old image is destroyed
    // before the section fails, as for any size that can't be had.
    CZelDib dib;
    ASSERT_TRUE(dib.Create(2, 2));
    EXPECT_FALSE(dib.Create(2, INT32_MIN));
    EXPECT_EQ(dib.GetCrBits(), nullptr);
    EXPECT_EQ(dib.GetWidth(), 0);
    ASSERT_TRUE(dib.Create(2, 2));
    EXPECT_FALSE(dib.Create(INT32_MAX, INT32_MAX));
    EXPECT_EQ(dib.GetCrBits(), nullptr);
    EXPECT_EQ(dib.GetBitmapInfoHeader()->biSize, 0u);
}

TEST(CZelDibLife, CopyConstructorIsDeepAndAssignmentShares)
{
    CZelDib a;
    make(a, 2, 1, {1, 2});
    a.Create(2, -1);
    a.GetCrBits()[1] = 9;
    CZelDib copy(a);
    EXPECT_NE(copy.GetCrBits(), a.GetCrBits());
    EXPECT_TRUE(copy.IsTopDown());
    EXPECT_EQ(at(copy, 1, 0), 9u);

    CZelDib shared;
    shared = a;
    EXPECT_EQ(shared.GetCrBits(), a.GetCrBits());
    EXPECT_EQ(shared.GetBitmap(), a.GetBitmap());
    // The first destroy frees the section; the second finds the handle gone and
    // must fail quietly rather than free it again.
    shared.Destroy();
    EXPECT_FALSE(DeleteObject(a.GetBitmap()));
    CZelDib b;
    b = copy;
    copy.Destroy();
}

TEST(CZelDibPixels, ColourReferencesSwapRedAndBlue)
{
    CZelDib dib;
    dib.Create(2, 2);
    dib.Fill(0xAB0000FF);
    EXPECT_EQ(at(dib, 1, 1), 0x00FF0000u); // red in byte 2, alpha 0
    dib.Fill(RGB(1, 2, 3), 0x40);
    EXPECT_EQ(at(dib, 0, 0), 0x40010203u);
    ASSERT_TRUE(dib.FillRect(0, 0, 1, 1, 0xAB0000FF));
    EXPECT_EQ(at(dib, 0, 0), 0xABFF0000u); // top byte as it stands
    ASSERT_TRUE(dib.FillRect(CRect(1, 0, 2, 1), RGB(0, 0, 255), 0x11));
    EXPECT_EQ(at(dib, 1, 0), 0x110000FFu);
}

struct BlendRow {
    const char* name;
    std::function<BOOL(CZelDib&, const CZelDib*)> op;
    DWORD d, s, expected;
};

TEST(CZelDibPixels, BlendModesByteArithmetic)
{
    const BlendRow rows[] = {
        {"multiply white on white is 254", [](CZelDib& d, const CZelDib* s) { return d.Multiply(s); }, 0x80FFFFFF,
         0x00FFFFFF, 0x80FEFEFE},
        {"multiply", [](CZelDib& d, const CZelDib* s) { return d.Multiply(s); }, 0x00804020, 0x00808080, 0x00402010},
        {"screen: zero on zero gives 1", [](CZelDib& d, const CZelDib* s) { return d.Screen(s); }, 0x00100000, 0x00200000, 0x002F0101},
        {"screen white", [](CZelDib& d, const CZelDib* s) { return d.Screen(s); }, 0x00FF00FF, 0x00FF0000, 0x00FF01FF},
        {"add saturates", [](CZelDib& d, const CZelDib* s) { return d.Add(s); }, 0x12C80A00, 0x00640A01, 0x12FF1401},
        {"difference", [](CZelDib& d, const CZelDib* s) { return d.Difference(s); }, 0x000AC800, 0x00C80A00,
         0x00BEBE00},
        {"darken", [](CZelDib& d, const CZelDib* s) { return d.Darken(s); }, 0x33108030, 0x00801020, 0x33101020},
        {"lighten", [](CZelDib& d, const CZelDib* s) { return d.Lighten(s); }, 0x33108030, 0x00801020, 0x33808030},
        {"blend 0 leaves d", [](CZelDib& d, const CZelDib* s) { return d.Blend(s, 0); }, 0x01102030, 0x00FFFFFF,
         0x01102030},
        {"blend 255 falls short of s", [](CZelDib& d, const CZelDib* s) { return d.Blend(s, 255); }, 0x00000000,
         0x00FFFFFF, 0x00FEFEFE},
        {"blend 255 downward reaches 0", [](CZelDib& d, const CZelDib* s) { return d.Blend(s, 255); }, 0x00FFFFFF,
         0x00000000, 0x00000000},
        {"blend 128", [](CZelDib& d, const CZelDib* s) { return d.Blend(s, 128); }, 0x77000000, 0x00FF0000,
         0x777F0000},
        {"blend50 clears alpha", [](CZelDib& d, const CZelDib* s) { return d.Blend50(s); }, 0xFF102030, 0xFF204060,
         0x00183048},
        {"alpha copy takes source alpha", [](CZelDib& d, const CZelDib* s) { return d.CopyFromDibAlpha(s); },
         0x55000000, 0x80FF0000, 0x557F0000},
        {"transparent copies non-key", [](CZelDib& d, const CZelDib* s) { return d.CopyFromDibTransparent(s, RGB(255, 0, 0)); },
         0x11111111, 0x00123456, 0x00123456},
        {"transparent keeps d at key", [](CZelDib& d, const CZelDib* s) { return d.CopyFromDibTransparent(s, RGB(255, 0, 0)); },
         0x11111111, 0x00FF0000, 0x11111111},
        {"key with alpha is copied", [](CZelDib& d, const CZelDib* s) { return d.CopyFromDibTransparent(s, RGB(255, 0, 0)); },
         0x11111111, 0x01FF0000, 0x01FF0000},
    };
    for (const BlendRow& r : rows) {
        CZelDib d, s;
        make(d, 1, 1, {r.d});
        make(s, 1, 1, {r.s});
        ASSERT_TRUE(r.op(d, &s)) << r.name;
        EXPECT_EQ(at(d, 0, 0), r.expected) << r.name << std::hex << " got " << at(d, 0, 0);
    }
}

TEST(CZelDibPixels, ColourFormsMatchImageForms)
{
    // Each blend mode with a colour must give what the same colour as an image gives.
    using Both = std::pair<std::function<BOOL(CZelDib&, const CZelDib*)>, std::function<BOOL(CZelDib&, DWORD)>>;
    const Both ops[] = {
        {[](CZelDib& d, const CZelDib* s) { return d.Darken(s); }, [](CZelDib& d, DWORD c) { return d.Darken(c); }},
        {[](CZelDib& d, const CZelDib* s) { return d.Lighten(s); }, [](CZelDib& d, DWORD c) { return d.Lighten(c); }},
        {[](CZelDib& d, const CZelDib* s) { return d.Screen(s); }, [](CZelDib& d, DWORD c) { return d.Screen(c); }},
        {[](CZelDib& d, const CZelDib* s) { return d.Add(s); }, [](CZelDib& d, DWORD c) { return d.Add(c); }},
        {[](CZelDib& d, const CZelDib* s) { return d.Difference(s); },
         [](CZelDib& d, DWORD c) { return d.Difference(c); }},
        {[](CZelDib& d, const CZelDib* s) { return d.Multiply(s); }, [](CZelDib& d, DWORD c) { return d.Multiply(c); }},
    };
    const std::vector<DWORD> px = {0x7F00FF80, 0x00123456, 0xFFFEDCBA, 0x01010101};
    for (std::size_t i = 0; i < std::size(ops); ++i) {
        CZelDib a, b, s;
        make(a, 2, 2, px);
        make(b, 2, 2, px);
        make(s, 2, 2, std::vector<DWORD>(4, 0x004080C0));
        ASSERT_TRUE(ops[i].first(a, &s));
        ASSERT_TRUE(ops[i].second(b, RGB(0x40, 0x80, 0xC0)));
        for (int k = 0; k < 4; ++k)
            EXPECT_EQ(a.GetCrBits()[k], b.GetCrBits()[k]) << "op " << i << " pixel " << k;
    }
}

TEST(CZelDibPixels, WholeImageFormsCheckSizesAndCreateOnDemand)
{
    CZelDib src, dst;
    make(src, 3, 2, {9, 9, 9, 9, 9, 9});
    // An empty destination takes the source's size, then works on zeroed pixels.
    ASSERT_TRUE(dst.Darken(&src));
    EXPECT_EQ(dst.GetWidth(), 3);
    EXPECT_EQ(dst.GetHeight(), 2);
    EXPECT_EQ(at(dst, 2, 1), 0u);

    CZelDib small, empty;
    small.Create(2, 2);
    EXPECT_FALSE(small.Darken(&src));
    EXPECT_FALSE(small.Blend(nullptr, 3));
    EXPECT_FALSE(small.Multiply(&empty));
    EXPECT_FALSE(empty.CopyFromDibAlpha(&src)); // the alpha copy never creates
    EXPECT_FALSE(empty.Add(RGB(1, 2, 3)));
    EXPECT_FALSE(empty.FillRect(0, 0, 1, 1, 0));
    empty.Fill(0); // nothing to do, must not crash
    empty.GreyScale();
    EXPECT_TRUE(empty.CopyFromDib(&src));
    EXPECT_EQ(at(empty, 1, 1), 9u);
}

// Which pixels a rectangle operation touches: the intersection with the image.
static std::vector<bool> touched(int w, int h, int x, int y, int rw, int rh)
{
    std::vector<bool> t(w * h);
    for (int py = 0; py < h; ++py)
        for (int px = 0; px < w; ++px)
            t[py * w + px] = px >= x && px < x + rw && py >= y && py < y + rh;
    return t;
}

TEST(CZelDibClip, RectangleFormsClipAtEveryEdge)
{
    struct Row {
        const char* name;
        int x, y, w, h;
        bool ok;
    } rows[] = {
        {"inside", 1, 1, 2, 2, true},       {"left", -2, 1, 3, 2, true},   {"top", 1, -3, 2, 4, true},
        {"right", 3, 0, 5, 2, true},        {"bottom", 0, 2, 2, 9, true},  {"all round", -5, -5, 20, 20, true},
        {"left of it", -3, 0, 3, 3, false}, {"below", 0, 4, 2, 2, false},  {"zero width", 1, 1, 0, 2, false},
        {"negative", 2, 2, -1, 1, false},   {"far right", 4, 0, 1, 1, false},
        {"huge", 2147483000, 0, 2000, 1, false},
    };
    for (const Row& r : rows) {
        CZelDib dib;
        dib.Create(4, 4);
        EXPECT_EQ(dib.FillRect(r.x, r.y, r.w, r.h, RGB(1, 0, 0)), r.ok ? TRUE : FALSE) << r.name;
        const std::vector<bool> t = touched(4, 4, r.x, r.y, r.w, r.h);
        for (int i = 0; i < 16; ++i)
            EXPECT_EQ(dib.GetCrBits()[i], t[i] && r.ok ? 0x00010000u : 0u) << r.name << " pixel " << i;
    }
}

TEST(CZelDibClip, RectanglesAtTheEndsOfIntClipWithoutWrapping)
{
    // Origins and sizes whose sums pass int: the rectangle forms must touch exactly
    // the intersection with the image (worked out here in 64 bits) or fail.
    const int M = INT32_MAX, m = INT32_MIN;
    const struct {
        int x, y, w, h;
    } rows[] = {{m, 0, M, 2},     {m, m, M, M},      {-1, -1, M, M},    {2, 1, M, M},   {M, 0, M, 1},
                {M - 1, 0, 5, 1}, {0, M, 1, M},      {-3, 0, m, 1},     {m + 1, 0, M, 3}, {1, m, 2, M},
                {-M, -M, M, M},   {3, 2, 1, 1},      {0, 0, M, 1}};
    for (const auto& r : rows) {
        const long long l = std::max<long long>(r.x, 0), t = std::max<long long>(r.y, 0);
        const long long rr = std::min<long long>(static_cast<long long>(r.x) + r.w, 4);
        const long long b = std::min<long long>(static_cast<long long>(r.y) + r.h, 3);
        const bool any = r.w > 0 && r.h > 0 && l < rr && t < b;
        const std::string name = std::to_string(r.x) + "," + std::to_string(r.y) + " " + std::to_string(r.w) + "x" +
                                 std::to_string(r.h);
        CZelDib dib, src;
        dib.Create(4, 3);
        make(src, 4, 3, std::vector<DWORD>(12, 0x00FFFFFF));
        EXPECT_EQ(dib.FillRect(r.x, r.y, r.w, r.h, RGB(1, 0, 0)), any ? TRUE : FALSE) << name;
        EXPECT_EQ(dib.LightenRect(RGB(0, 0, 2), r.x, r.y, r.w, r.h), any ? TRUE : FALSE) << name;
        for (int py = 0; py < 3; ++py)
            for (int px = 0; px < 4; ++px) {
                const bool in = any && px >= l && px < rr && py >= t && py < b;
                EXPECT_EQ(at(dib, px, py), in ? 0x00010002u : 0u) << name << " at " << px << "," << py;
            }
        // The same rectangle as a source to 0, 0, and the whole source to it.
        CZelDib dst;
        dst.Create(4, 3);
        EXPECT_EQ(dst.CopyFromDibRect(&src, r.x, r.y, r.w, r.h, 0, 0), any ? TRUE : FALSE) << name;
        dst.CopyFromDib(&src, r.x, r.y);
        dst.BlendRect(&src, 0, 0, 4, 3, r.x, r.y, 9);
    }
}

TEST(CZelDibClip, SourceAndDestinationClippingMoveOriginsTheirOwnWay)
{
    CZelDib src;
    make(src, 4, 1, {1, 2, 3, 4});
    auto row = [](const CZelDib& d) {
        std::vector<DWORD> v(d.GetCrBits(), d.GetCrBits() + d.GetWidth());
        return v;
    };
    {
        CZelDib dst; // whole source at -2: cut at the right of the picture
        dst.Create(4, 1);
        ASSERT_TRUE(dst.CopyFromDib(&src, -2, 0));
        EXPECT_EQ(row(dst), (std::vector<DWORD>{1, 2, 0, 0}));
    }
    {
        CZelDib dst; // the Rect form cuts the left
        dst.Create(4, 1);
        ASSERT_TRUE(dst.CopyFromDibRect(&src, 2, 0, 4, 1, 0, 0));
        EXPECT_EQ(row(dst), (std::vector<DWORD>{3, 4, 0, 0}));
    }
    {
        CZelDib dst; // a negative destination moves the source origin with it
        dst.Create(4, 1);
        ASSERT_TRUE(dst.CopyFromDibRect(&src, 0, 0, 4, 1, -1, 0));
        EXPECT_EQ(row(dst), (std::vector<DWORD>{2, 3, 4, 0}));
    }
    {
        CZelDib dst; // a negative source origin doesn't move the destination
        dst.Create(4, 1);
        ASSERT_TRUE(dst.CopyFromDibRect(&src, CRect(-1, 0, 3, 1), CPoint(1, 0)));
        EXPECT_EQ(row(dst), (std::vector<DWORD>{0, 1, 2, 3}));
    }
    {
        CZelDib dst;
        dst.Create(4, 1);
        EXPECT_FALSE(dst.CopyFromDibRect(&src, 0, 0, 4, 1, 4, 0));
        EXPECT_FALSE(dst.CopyFromDibRect(&src, 0, 0, 4, 1, 0, -1));
        EXPECT_FALSE(dst.CopyFromDibRect(nullptr, 0, 0, 4, 1, 0, 0));
    }
    {
        CZelDib dst; // empty: takes x + w by y + h and is written in bounds
        ASSERT_TRUE(dst.CopyFromDib(&src, CPoint(1, 0)));
        EXPECT_EQ(row(dst), (std::vector<DWORD>{0, 1, 2, 3, 4}));
        CZelDib cut;
        ASSERT_TRUE(cut.CopyFromDibTransparent(&src, -1, 0, RGB(9, 9, 9)));
        EXPECT_EQ(row(cut), (std::vector<DWORD>{1, 2, 3}));
    }
}

TEST(CZelDibClip, SingleAxisClamps)
{
    CZelDib dib;
    dib.Create(10, 5);
    int x1 = -3, y = 2, x2 = 11;
    EXPECT_TRUE(dib.ClipX1YX2(x1, y, x2));
    EXPECT_EQ(x1, 0);
    EXPECT_EQ(x2, 9);
    x1 = 0, x2 = 10; // equal to the width stays
    EXPECT_TRUE(dib.ClipX1YX2(x1, y, x2));
    EXPECT_EQ(x2, 10);
    x1 = 4, x2 = 4;
    EXPECT_FALSE(dib.ClipX1YX2(x1, y, x2));
    int x = 3, y1 = -1, y2 = 6;
    EXPECT_TRUE(dib.ClipXY1Y2(x, y1, y2));
    EXPECT_EQ(y1, 0);
    EXPECT_EQ(y2, 4);
    x = 10;
    EXPECT_FALSE(dib.ClipXY1Y2(x, y1, y2));
    int c = -4;
    dib.ClipX(c);
    EXPECT_EQ(c, 0);
    c = 40;
    dib.ClipY(c);
    EXPECT_EQ(c, 4);
}

TEST(CZelDibFills, GradientsStippleGreyAndExchange)
{
    CZelDib dib;
    dib.Create(4, 4);
    dib.FillAlphaGradient(0, 200, FALSE);
    EXPECT_EQ(at(dib, 0, 0) >> 24, 200u); // memory row 0 gets b
    EXPECT_EQ(at(dib, 3, 1) >> 24, 150u);
    EXPECT_EQ(at(dib, 0, 3) >> 24, 50u);
    dib.FillAlphaGradient(0, 200, TRUE);
    EXPECT_EQ(at(dib, 0, 2) >> 24, 0u);
    EXPECT_EQ(at(dib, 3, 2) >> 24, 150u);
    EXPECT_EQ(at(dib, 3, 2) & 0xFFFFFF, 0u); // only byte 3

    dib.Fill(0);
    ASSERT_TRUE(dib.FillStippledRect(1, 0, 3, 2, RGB(1, 0, 0)));
    // Counted from the rectangle's corner: (1,0) is even there, (2,0) odd.
    EXPECT_EQ(at(dib, 1, 0), 0u);
    EXPECT_EQ(at(dib, 2, 0), 0x00010000u);
    EXPECT_EQ(at(dib, 1, 1), 0x00010000u);
    EXPECT_EQ(at(dib, 0, 1), 0u);

    make(dib, 2, 1, {0x80000000u | (100u << 16) | (150u << 8) | 200u, 0x00FF00FF});
    dib.GreyScaleTransparent(RGB(255, 0, 255));
    EXPECT_EQ(at(dib, 0, 0), 0x808C8C8Cu); // 30 + 88.5 + 22 = 140.5, truncated
    EXPECT_EQ(at(dib, 1, 0), 0x00FF00FFu);
    dib.GreyScale();
    EXPECT_EQ(at(dib, 1, 0), 0x00686868u); // 0.3*255 + 0.11*255 = 104.55

    make(dib, 2, 1, {0x7FFF0000, 0x7FFE0000});
    ASSERT_TRUE(dib.ExchangeColor(RGB(255, 0, 0), RGB(0, 255, 0)));
    EXPECT_EQ(at(dib, 0, 0), 0x7F00FF00u);
    EXPECT_EQ(at(dib, 1, 0), 0x7FFE0000u);
    ASSERT_TRUE(dib.ExchangeColor(RGB(0, 255, 0), RGB(1, 2, 3), 0x05));
    EXPECT_EQ(at(dib, 0, 0), 0x05010203u);

    make(dib, 1, 1, {0x99204060});
    dib.FillBlend50(RGB(0x20, 0x40, 0x60));
    EXPECT_EQ(at(dib, 0, 0), 0x00204060u);
    dib.FillBlend(RGB(0xFF, 0, 0), 255);
    EXPECT_EQ(at(dib, 0, 0), 0x00FE0000u);
    dib.FillAlpha(0x12);
    EXPECT_EQ(at(dib, 0, 0) >> 24, 0x12u);
}

TEST(CZelDibStretch, ExactZeroIsOutside)
{
    CZelDib src, dst;
    make(src, 3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    dst.Create(3, 3);
    ASSERT_TRUE(dst.CopyFromDibStretch(&src, 0.0f, 1.0f, 0, 0, 0, 0, TRUE, RGB(0xEE, 0, 0)));
    const std::vector<DWORD> want = {0xEE0000, 0xEE0000, 0xEE0000, 0xEE0000, 5, 6, 0xEE0000, 8, 9};
    EXPECT_EQ(std::vector<DWORD>(dst.GetCrBits(), dst.GetCrBits() + 9), want);

    dst.Fill(RGB(1, 1, 1));
    ASSERT_TRUE(dst.CopyFromDibStretch(&src, 0.0f, 1.0f, 0, 0, 0, 0, FALSE, 0));
    EXPECT_EQ(at(dst, 0, 0), 0x010101u); // without fill the outside stays

    CZelDib empty;
    EXPECT_FALSE(empty.CopyFromDibStretch(&src, 0, 1, 0, 0, 0, 0, 0, 0)); // never creates
    EXPECT_FALSE(dst.CopyFromDibStretch(nullptr, 0, 1, 0, 0, 0, 0, 0, 0));
    EXPECT_TRUE(dst.CopyFromDibStretch(&src, 0, 0.0f, 0, 0, 0, 0, TRUE, 0)); // zoom 0: all outside
    EXPECT_EQ(at(dst, 1, 1), 0u);
}

TEST(CZelDibStretch, KeyIgnoresAlphaAndAlphaMixes)
{
    CZelDib src, dst;
    make(src, 4, 4, std::vector<DWORD>(16, 0x01FF0000));
    src.GetCrBits()[5] = 0x00123456;
    dst.Create(4, 4);
    dst.Fill(RGB(7, 7, 7));
    ASSERT_TRUE(dst.CopyFromDibStretchTransparent(&src, 0, 1, 0.5f, 0.5f, 0.5f, 0.5f, RGB(255, 0, 0), FALSE, 0));
    EXPECT_EQ(at(dst, 1, 1), 0x00123456u);
    EXPECT_EQ(at(dst, 2, 2), 0x070707u); // the keyed red, though its alpha is 1

    make(src, 2, 2, std::vector<DWORD>(4, 0x80FF0000));
    dst.Create(2, 2);
    ASSERT_TRUE(dst.CopyFromDibStretchAlpha(&src, 0, 1, 0.5f, 0.5f, 0.5f, 0.5f, FALSE, 0));
    EXPECT_EQ(at(dst, 1, 1), 0x007F0000u);
}

TEST(CZelDibStretch, ShortFormTurnsAndAdjusts)
{
    CZelDib src, dst;
    // Column x of the source holds x + 1; after a quarter turn the columns become rows.
    make(src, 4, 2, {1, 2, 3, 4, 1, 2, 3, 4});
    CZelPoint<double> corners[4];
    ASSERT_TRUE(dst.CopyFromDibStretch(&src, static_cast<float>(M_PI / 2), 1.0f, TRUE, TRUE, 0, corners));
    EXPECT_EQ(dst.GetWidth(), 2);
    EXPECT_EQ(dst.GetHeight(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_GE(corners[i].x, 0.0);
        EXPECT_LE(corners[i].x, 2.0);
        EXPECT_LE(corners[i].y, 4.0);
    }
    EXPECT_NEAR(corners[0].x, 2.0, 1e-6); // (-2, -1) turned lands on the top right
    EXPECT_NEAR(corners[0].y, 0.0, 1e-6);
    // Destination rows carry the source columns, last first; row 0 falls exactly on
    // the source's right edge, and row 3 on the far side of its left edge.
    EXPECT_EQ(at(dst, 1, 0), 0u);
    EXPECT_EQ(at(dst, 1, 1), 4u);
    EXPECT_EQ(at(dst, 1, 2), 3u);

    CZelDib zoomed;
    ASSERT_TRUE(zoomed.CopyFromDibStretch(&src, 0, 2.5f, TRUE, FALSE, 0, nullptr));
    EXPECT_EQ(zoomed.GetWidth(), 10);
    EXPECT_EQ(zoomed.GetHeight(), 5);
    CZelDib none;
    EXPECT_FALSE(none.CopyFromDibStretch(&src, 0, 0.0f, TRUE, FALSE, 0, nullptr));
    EXPECT_FALSE(none.CopyFromDibStretchAlpha(nullptr, 0, 1, TRUE, FALSE, 0, nullptr));
}

TEST(CZelDibDirection, PixelOperationsWorkInMemoryRows)
{
    CZelDib down, up;
    down.Create(2, -2);
    down.GetCrBits()[0] = 1;
    ASSERT_TRUE(up.Create(2, 2));
    ASSERT_TRUE(up.CopyFromDib(&down)); // memory rows copied as they are
    EXPECT_EQ(at(up, 0, 0), 1u);
    EXPECT_FALSE(up.IsTopDown());
    CZelDib fresh;
    ASSERT_TRUE(fresh.Create(&down));
    EXPECT_TRUE(fresh.IsTopDown());
}

TEST(CZelDibClip, AnyRectangleStaysInsideBothImages)
{
    // Under the sanitizer build this walks rectangle forms over origins and sizes
    // around and beyond both images; for the copy, each pixel that lands must be the
    // one the clipping rules pick.
    CZelDib src;
    src.Create(5, 4);
    for (int i = 0; i < 20; ++i)
        src.GetCrBits()[i] = 0x100u + static_cast<DWORD>(i);
    std::uint32_t seed = 7;
    auto next = [&](int lo, int hi) {
        seed = seed * 1103515245u + 12345u;
        return lo + static_cast<int>((seed >> 8) % static_cast<std::uint32_t>(hi - lo + 1));
    };
    for (int n = 0; n < 3000; ++n) {
        CZelDib dst;
        dst.Create(4, 3);
        const int sx = next(-7, 7), sy = next(-6, 6), w = next(-2, 12), h = next(-2, 10), dx = next(-7, 7),
                  dy = next(-6, 6);
        switch (n % 6) {
        case 0: dst.CopyFromDibRect(&src, sx, sy, w, h, dx, dy); break;
        case 1: dst.MultiplyRect(&src, CRect(sx, sy, sx + w, sy + h), CPoint(dx, dy)); break;
        case 2: dst.CopyFromDibAlphaRect(&src, sx, sy, w, h, dx, dy); break;
        case 3: dst.CopyFromDibTransparent(&src, dx, dy, RGB(1, 1, 1)); break;
        case 4: dst.BlendRect(&src, sx, sy, w, h, dx, dy, 200); break;
        default: dst.FillAlphaGradientRect(dx, dy, w, h, 0, 255, n & 1); break;
        }
        if (n % 6 == 0)
            for (int y = 0; y < 3; ++y)
                for (int x = 0; x < 4; ++x) {
                    const DWORD v = gfxtest::at(dst, x, y);
                    if (v == 0)
                        continue;
                    // A negative source origin is cut off without moving the
                    // destination; a negative destination moves the source with it.
                    const int want = (y - dy + std::max(sy, 0)) * 5 + (x - dx + std::max(sx, 0));
                    ASSERT_EQ(v, 0x100u + static_cast<DWORD>(want))
                        << "sx " << sx << " sy " << sy << " w " << w << " h " << h << " dx " << dx << " dy " << dy;
                }
    }
}
