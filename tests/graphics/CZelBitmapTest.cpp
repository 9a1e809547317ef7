#include "DibTestSupport.h"

#include <Zel260/graphics/CZelBitmap.h>
#include <Zel260/graphics/CZelDrawDib.h>
#include <Zel260/graphics/CZelImageList.h>
#include <Zel260/graphics/CZelToolbarBmp.h>
#include <Zel260/platform/ResourceModule.h>

#include <TestSupport.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <climits>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

void put16(std::string& s, unsigned v)
{
    s += static_cast<char>(v & 0xFF);
    s += static_cast<char>((v >> 8) & 0xFF);
}
void put32(std::string& s, unsigned v)
{
    put16(s, v & 0xFFFF);
    put16(s, v >> 16);
}

// A Windows bitmap file: 24 bits, bottom-up, of top-down 0x00RRGGBB pixels.
std::string bmp24(int w, int h, const std::vector<DWORD>& px)
{
    const int stride = (w * 3 + 3) & ~3;
    std::string s = "BM";
    put32(s, 54 + stride * h);
    put32(s, 0);
    put32(s, 54);
    put32(s, 40);
    put32(s, w);
    put32(s, h);
    put16(s, 1);
    put16(s, 24);
    for (int i = 0; i < 6; ++i)
        put32(s, 0);
    for (int y = h - 1; y >= 0; --y) {
        for (int x = 0; x < w; ++x) {
            const DWORD p = px[y * w + x];
            s += static_cast<char>(p & 0xFF);
            s += static_cast<char>((p >> 8) & 0xFF);
            s += static_cast<char>((p >> 16) & 0xFF);
        }
        s.append(stride - w * 3, '\0');
    }
    return s;
}

// 2 by 2, 8 bits, run-length coded: top row colour 1, bottom row colour 0. The
// platform's loader leaves compressed files to FreeImage.
std::string bmpRle8()
{
    const std::string pixels("\x02\x00\x00\x00\x02\x01\x00\x01", 8); // run, end of line, run, end

    std::string s = "BM";
    put32(s, 54 + 8 + static_cast<unsigned>(pixels.size()));
    put32(s, 0);
    put32(s, 62);
    put32(s, 40);
    put32(s, 2);
    put32(s, 2);
    put16(s, 1);
    put16(s, 8);
    put32(s, 1); // BI_RLE8
    put32(s, static_cast<unsigned>(pixels.size()));
    put32(s, 0);
    put32(s, 0);
    put32(s, 2);
    put32(s, 0);
    put32(s, 0x000000FF); // blue
    put32(s, 0x0000FF00); // green
    return s + pixels;
}

std::vector<DWORD> pixelsOf(HBITMAP b)
{
    BITMAP bm;
    std::vector<DWORD> v;
    if (!GetObject(b, sizeof bm, &bm))
        return v;
    for (int y = 0; y < bm.bmHeight; ++y) {
        const DWORD* row = ZelBitmapScanLine(b, y);
        for (int x = 0; x < bm.bmWidth; ++x)
            v.push_back(row[x] & 0xFFFFFF);
    }
    return v;
}

const std::vector<DWORD> kPattern = {0x102030, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF,
                                     0x000000, 0x808080, 0x123456, 0xABCDEF, 0x010203,
                                     0xFEDCBA, 0x00FFFF, 0xFF00FF, 0x777777, 0x0F0F0F};

} // namespace

TEST(CZelBitmapFiles, RoundTripsThroughBmpPngAndTiff)
{
    zeltest::TempDir dir;
    gfxtest::PixelDC dc(1, 1);
    CBitmap source;
    ASSERT_TRUE(source.CreateBitmap(5, 3, 1, 32, kPattern.data()));
    const struct {
        const char* name;
        enmImageFormat format;
        int bpp;
    } rows[] = {{"p.bmp", ZEL_IMAGE_FORMAT_BMP, 32},
                {"p.png", ZEL_IMAGE_FORMAT_PNG, 24}, // an opaque picture goes without its alpha channel
                {"p.tif", ZEL_IMAGE_FORMAT_TIFF, 32}};
    for (const auto& r : rows) {
        const std::string path = dir.file(r.name);
        ASSERT_TRUE(CZelBitmap::SaveBitmap(&dc, source, r.format, path.c_str())) << r.name;
        CZelBitmap loaded;
        ASSERT_TRUE(loaded.LoadBitmap(path.c_str())) << r.name;
        EXPECT_EQ(pixelsOf(loaded), kPattern) << r.name;
        EXPECT_EQ(loaded.GetWidth(), 5);
        EXPECT_EQ(loaded.GetXOffset(), 2); // 2.5 rounds to even
        EXPECT_EQ(loaded.GetYOffset(), 2); // 1.5 rounds to even
        int w, h, bpp;
        ASSERT_TRUE(CZelBitmap::GetImageSize(path.c_str(), &w, &h, &bpp)) << r.name;
        EXPECT_EQ(w, 5);
        EXPECT_EQ(h, 3);
        EXPECT_EQ(bpp, r.bpp) << r.name;
    }
}

TEST(CZelBitmapFiles, SixteenBitImagesAreSavedAtThirtyTwo)
{
    zeltest::TempDir dir;
    gfxtest::PixelDC dc(1, 1);
    CBitmap b16, b24;
    ASSERT_TRUE(b16.CreateBitmap(4, 2, 1, 16, nullptr));
    ASSERT_TRUE(b24.CreateBitmap(4, 2, 1, 24, nullptr));
    const std::string p16 = dir.file("16.bmp"), p24 = dir.file("24.bmp");
    ASSERT_TRUE(CZelBitmap::SaveBitmap(&dc, b16, ZEL_IMAGE_FORMAT_BMP, p16.c_str()));
    ASSERT_TRUE(CZelBitmap::SaveBitmap(&dc, b24, ZEL_IMAGE_FORMAT_BMP, p24.c_str()));
    int w, h, bpp;
    ASSERT_TRUE(CZelBitmap::GetImageSize(p16.c_str(), &w, &h, &bpp));
    EXPECT_EQ(bpp, 32);
    ASSERT_TRUE(CZelBitmap::GetImageSize(p24.c_str(), &w, &h, &bpp));
    EXPECT_EQ(bpp, 24);

    EXPECT_FALSE(CZelBitmap::SaveBitmap(nullptr, b16, ZEL_IMAGE_FORMAT_BMP, p16.c_str()));
    EXPECT_FALSE(CZelBitmap::SaveBitmap(&dc, nullptr, ZEL_IMAGE_FORMAT_BMP, p16.c_str()));
    EXPECT_FALSE(CZelBitmap::SaveBitmap(&dc, b16, ZEL_IMAGE_FORMAT_BMP, ""));
    EXPECT_FALSE(CZelBitmap::SaveBitmap(&dc, b16, ZEL_IMAGE_FORMAT_BMP, dir.file("no/such/dir.bmp").c_str()));
}

TEST(CZelBitmapFiles, BadFilesGiveZeroAndLeaveTheObjectAsDocumented)
{
    zeltest::TempDir dir;
    const std::string good = dir.write("good.bmp", bmp24(5, 3, kPattern));
    CZelBitmap b;
    ASSERT_TRUE(b.LoadBitmap(good.c_str()));

    // Not found: the old bitmap stays.
    EXPECT_FALSE(b.LoadBitmap(dir.file("missing.png").c_str()));
    EXPECT_FALSE(b.LoadBitmap(""));
    EXPECT_FALSE(b.LoadBitmap(nullptr));
    EXPECT_NE(b.GetSafeHandle(), nullptr);
    EXPECT_EQ(b.GetWidth(), 5);

    // Present but unreadable: the object ends empty.
    zeltest::TempDir pngDir;
    gfxtest::PixelDC dc(1, 1);
    const std::string png = dir.file("whole.png");
    ASSERT_TRUE(CZelBitmap::SaveBitmap(&dc, b, ZEL_IMAGE_FORMAT_PNG, png.c_str()));
    const std::string bytes = zeltest::readFile(png);
    const std::string bmp = bmp24(5, 3, kPattern);
    const struct {
        const char* name;
        std::string content;
    } bad[] = {
        {"zero.bmp", ""},
        {"text.png", "this is no picture"},
        {"half.png", bytes.substr(0, bytes.size() / 2)},
        {"half.bmp", bmp.substr(0, bmp.size() / 2)},
        {"header.bmp", bmp.substr(0, 20)},
    };
    for (const auto& r : bad) {
        ASSERT_TRUE(b.LoadBitmap(good.c_str()));
        const std::string path = dir.write(r.name, r.content);
        EXPECT_FALSE(b.LoadBitmap(path.c_str())) << r.name;
        EXPECT_EQ(b.GetSafeHandle(), nullptr) << r.name;
        EXPECT_EQ(b.GetWidth(), 0) << r.name;
        int w = 7, h = 7, bpp = 7;
        CZelBitmap::GetImageSize(path.c_str(), &w, &h, &bpp);
        if (std::string(r.name) != "half.png" && std::string(r.name) != "half.bmp") { // their headers are whole
            EXPECT_EQ(w + h + bpp, 0) << r.name;
        }
    }
    int w = 7, h = 7, bpp = 7;
    EXPECT_FALSE(CZelBitmap::GetImageSize(dir.file("missing.png").c_str(), &w, &h, &bpp));
    EXPECT_EQ(w + h + bpp, 0);
    EXPECT_FALSE(CZelBitmap::GetImageSize(nullptr, nullptr, nullptr, nullptr));
}

TEST(CZelBitmapFiles, EveryCutOfASmallBitmapFailsAndEmptiesTheObject)
{
    // Cut at every byte of the file header, the info header and the pixels, as a
    // file and as a resource with and without its file header.
    zeltest::TempDir dir;
    const std::string good = dir.write("good.bmp", bmp24(5, 3, kPattern));
    const std::string whole = bmp24(3, 2, {1, 2, 3, 4, 5, 6});
    HINSTANCE module = ZelCreateResourceModule("cut-test");
    for (std::size_t n = 0; n < whole.size(); ++n) {
        CZelBitmap b;
        ASSERT_TRUE(b.LoadBitmap(good.c_str()));
        const std::string path = dir.write("cut" + std::to_string(n) + ".bmp", whole.substr(0, n));
        EXPECT_FALSE(b.LoadBitmap(path.c_str())) << "file cut at " << n;
        EXPECT_EQ(b.GetSafeHandle(), nullptr) << "file cut at " << n;
        EXPECT_EQ(b.GetWidth(), 0) << "file cut at " << n;

        ZelSetResourceData(module, ZEL_RT_BITMAP, 1, whole.data(), n);
        EXPECT_FALSE(b.LoadBitmap(module, 1)) << "resource cut at " << n;
        if (n >= 14) {
            ZelSetResourceData(module, ZEL_RT_BITMAP, 2, whole.data() + 14, n - 14);
            EXPECT_FALSE(b.LoadBitmap(module, 2)) << "packed resource cut at " << n;
        }
    }
    ZelDestroyResourceModule(module);
}

TEST(CZelBitmapFiles, ColourCountOfATrueColourHeaderReservesNothing)
{
    // A true-colour bitmap has no colour table to speak of; a huge biClrUsed (at
    // byte 46) must neither be allocated nor stop a file whose pixel offset is given.
    zeltest::TempDir dir;
    std::string file = bmp24(5, 3, kPattern);
    for (int i = 0; i < 4; ++i)
        file[46 + i] = '\xFF';
    CZelBitmap b;
    ASSERT_TRUE(b.LoadBitmap(dir.write("huge.bmp", file).c_str()));
    EXPECT_EQ(pixelsOf(b), kPattern);
    // Without the file header the pixels would start behind that table, past the end.
    const std::string packed = file.substr(14);
    EXPECT_EQ(ZelCreateBitmapFromBmpData(packed.data(), packed.size()), nullptr);
}

namespace {

long statusKiB(const char* key)
{
    std::ifstream f("/proc/self/status");
    std::string line;
    while (std::getline(f, line))
        if (line.rfind(key, 0) == 0)
            return std::stol(line.substr(std::strlen(key)));
    return -1;
}

// Starts a new peak of resident memory; false where the system can't.
bool resetResidentPeak()
{
    std::ofstream f("/proc/self/clear_refs");
    f << "5";
    f.close();
    return f.good() && statusKiB("VmHWM:") >= 0;
}

} // namespace

TEST(CZelBitmapFiles, AHeaderClaimingMoreThanABitmapHoldsDecodesNothing)
{
    // 62 bytes that claim 32768 by 32768 pixels at one bit. No bitmap holds 2^30
    // pixels, so nothing of it may be decoded: a decoder would first make and clear
    // the 128 MiB it describes.
    std::string s = "BM";
    put32(s, 62);
    put32(s, 0);
    put32(s, 62);
    put32(s, 40);
    put32(s, 32768);
    put32(s, 32768);
    put16(s, 1);
    put16(s, 1);
    for (int i = 0; i < 6; ++i)
        put32(s, 0);
    put32(s, 0);
    put32(s, 0xFFFFFF);
    zeltest::TempDir dir;
    const std::string path = dir.write("claims.bmp", s);
    if (!resetResidentPeak()) {
        GTEST_SKIP() << "no resident peak to read";
    }
    const long before = statusKiB("VmRSS:");
    CZelBitmap b;
    EXPECT_FALSE(b.LoadBitmap(path.c_str()));
    EXPECT_LT(statusKiB("VmHWM:") - before, 32 * 1024);
    int w = 0, h = 0, bpp = 0;
    EXPECT_TRUE(CZelBitmap::GetImageSize(path.c_str(), &w, &h, &bpp)); // the header itself is fine
    EXPECT_EQ(w, 32768);
}

TEST(CZelBitmapFiles, BackslashesSeparateFoldersAsInEveryPathFunction)
{
    zeltest::TempDir dir;
    ASSERT_EQ(::mkdir(dir.file("sub").c_str(), 0700), 0);
    dir.write("sub/p.bmp", bmp24(5, 3, kPattern));
    const std::string name = dir.path() + "\\sub\\p.bmp";
    CZelBitmap b;
    ASSERT_TRUE(b.LoadBitmap(name.c_str()));
    EXPECT_EQ(pixelsOf(b), kPattern);
    int w = 0, h = 0, bpp = 0;
    EXPECT_TRUE(CZelBitmap::GetImageSize(name.c_str(), &w, &h, &bpp));
    EXPECT_EQ(w, 5);
    gfxtest::PixelDC dc(1, 1);
    const std::string png = dir.path() + "\\sub\\q.png";
    ASSERT_TRUE(CZelBitmap::SaveBitmap(&dc, b, ZEL_IMAGE_FORMAT_PNG, png.c_str()));
    EXPECT_FALSE(zeltest::readFile(dir.file("sub/q.png")).empty());
}

TEST(CZelBitmapPlatform, RowBytesOfAVeryWideBitmapStayExact)
{
    // 2^26 pixels at 32 bits: the bit count of a row is 2^31, past int.
    CBitmap wide;
    ASSERT_TRUE(wide.CreateBitmap(0x4000000, 1, 1, 32, nullptr));
    BITMAP bm;
    ASSERT_TRUE(wide.GetBitmap(&bm));
    EXPECT_EQ(bm.bmWidthBytes, 0x10000000);
}

TEST(CZelBitmapFiles, PlatformLoaderAndFreeImageShareTheWork)
{
    zeltest::TempDir dir;
    CZelBitmap b;
    // Bottom-up rows come out top row first.
    ASSERT_TRUE(b.LoadBitmap(dir.write("p.bmp", bmp24(5, 3, kPattern)).c_str()));
    EXPECT_EQ(pixelsOf(b), kPattern);
    // Run-length coded: not the platform loader's, FreeImage reads it.
    ASSERT_TRUE(b.LoadBitmap(dir.write("rle.bmp", bmpRle8()).c_str()));
    EXPECT_EQ(pixelsOf(b), (std::vector<DWORD>{0x00FF00, 0x00FF00, 0x0000FF, 0x0000FF}));
}

TEST(CZelBitmapResources, BitmapsLoadByIdFromAModule)
{
    HINSTANCE module = ZelCreateResourceModule("graphics-test");
    const std::string file = bmp24(5, 3, kPattern);
    ASSERT_TRUE(ZelSetResourceData(module, ZEL_RT_BITMAP, 3501, file.data(), file.size()));
    // The form without the file header, as resource compilers store bitmaps.
    const std::string packed = file.substr(14);
    ASSERT_TRUE(ZelSetResourceData(module, ZEL_RT_BITMAP, 3502, packed.data(), packed.size()));

    CZelBitmap b;
    EXPECT_TRUE(b.IsKindOf(RUNTIME_CLASS(CBitmap)));
    ASSERT_TRUE(b.LoadBitmap(module, 3501));
    EXPECT_EQ(pixelsOf(b), kPattern);
    ASSERT_TRUE(b.LoadBitmap(module, 3502));
    EXPECT_EQ(pixelsOf(b), kPattern);
    EXPECT_FALSE(b.LoadBitmap(module, 3599));
    EXPECT_EQ(b.GetSafeHandle(), nullptr); // deleted before the load
    EXPECT_FALSE(b.LoadBitmap(nullptr, 3501));
    EXPECT_EQ(AfxGetResourceHandle(), ZelLibraryInstance());

    gfxtest::PixelDC dc(1, 1);
    CZelDib down, up;
    ASSERT_TRUE(down.Create(&dc, module, 3501, TRUE));
    ASSERT_TRUE(up.Create(&dc, module, 3501, FALSE));
    EXPECT_EQ(down.GetCrBits()[0] & 0xFFFFFF, kPattern[0]);  // top-down: memory row 0 is the top
    EXPECT_EQ(up.GetCrBits()[0] & 0xFFFFFF, kPattern[10]);   // bottom-up: it's the bottom
    EXPECT_FALSE(up.Create(nullptr, module, 3501, FALSE));
    EXPECT_FALSE(up.Create(&dc, nullptr, 3501, FALSE));
    EXPECT_FALSE(up.Create(&dc, static_cast<const char*>(""), FALSE));
    ZelDestroyResourceModule(module);
}

TEST(CZelBitmapColours, ChangeColorSparesMonochromeBitmaps)
{
    CZelBitmap b;
    ASSERT_TRUE(b.CreateBitmap(5, 3, 1, 32, kPattern.data()));
    b.ChangeColor(RGB(255, 0, 0), RGB(1, 2, 3), nullptr); // 0xFF0000 in the pattern is blue in COLORREF
    b.ChangeColor(RGB(0, 0, 255), RGB(1, 2, 3), nullptr);
    EXPECT_EQ(pixelsOf(b)[1], 0x010203u);
    EXPECT_EQ(pixelsOf(b)[3], 0x010203u);

    const std::vector<DWORD> white(4, 0xFFFFFF);
    CBitmap mono;
    ASSERT_TRUE(mono.CreateBitmap(2, 2, 1, 1, white.data()));
    CZelBitmap::ChangeBitmapColor(mono, RGB(255, 255, 255), 0, nullptr);
    EXPECT_EQ(pixelsOf(mono), white);

    gfxtest::PixelDC dc(2, 1);
    dc.SetPixel(1, 0, RGB(9, 9, 9));
    BITMAP bm{0, 2, 1, 8, 1, 32, nullptr};
    CZelBitmap::ChangeBitmapColorDC(&dc, &bm, RGB(9, 9, 9), RGB(7, 7, 7));
    EXPECT_EQ(dc.GetPixel(1, 0), RGB(7, 7, 7));
    EXPECT_EQ(dc.GetPixel(0, 0), 0u);
    bm.bmBitsPixel = 1;
    CZelBitmap::ChangeBitmapColorDC(&dc, &bm, RGB(7, 7, 7), RGB(1, 1, 1));
    EXPECT_EQ(dc.GetPixel(1, 0), RGB(7, 7, 7));
}

namespace {

void setToolbar(HINSTANCE module, UINT id, std::vector<WORD> words)
{
    ZelSetResourceData(module, ZEL_RT_TOOLBAR, id, words.data(), words.size() * 2);
}

} // namespace

TEST(CZelToolbarBmp, SeparatorsAreIdsButNotButtons)
{
    HINSTANCE module = ZelCreateResourceModule("toolbar-test");
    setToolbar(module, 3600, {1, 2, 1, 4, 100, 0, 101, 102});
    setToolbar(module, 3601, {1, 2, 1, 5, 100, 0}); // says 5 items, holds 2
    // Three images of 2 by 1: red, magenta (the mask), green.
    const std::string strip = bmp24(6, 1, {0xFF0000, 0xFF0000, 0xFF00FF, 0xFF00FF, 0x00FF00, 0x00FF00});
    ZelSetResourceData(module, ZEL_RT_BITMAP, 3600, strip.data(), strip.size());

    CZelToolbarBmp tb;
    ASSERT_TRUE(tb.LoadBitmap(module, 3600));
    EXPECT_EQ(tb.IdCount(), 4);
    EXPECT_EQ(tb.ButtonCount(), 3);
    EXPECT_EQ(tb.IdVector(), (std::vector<unsigned int>{100, 0, 101, 102}));
    EXPECT_EQ(tb.ImageSize(), CSize(2, 1));
    EXPECT_EQ(tb.ButtonSize(), CSize(9, 8));
    EXPECT_EQ(tb.ImageIndex(101u), 1);
    EXPECT_EQ(tb.ImageIndex(0u), -1);
    EXPECT_EQ(tb.ExtractIcon(100u), nullptr); // no image list yet
    ASSERT_TRUE(tb.CreateImageList(ILC_MASK | ILC_COLOR32, 0xFF00FFul));
    EXPECT_EQ(tb.ImageList().GetImageCount(), 3);
    HICON icon = tb.ExtractIcon(101u);
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(ZelBitmapScanLine(icon, 0)[0], 0u); // magenta became transparent
    DeleteObject(icon);
    HICON green = tb.ExtractIcon(102u);
    EXPECT_EQ(ZelBitmapScanLine(green, 0)[1], 0xFF00FF00u);
    DeleteObject(green);

    std::vector<unsigned int> ids{9};
    EXPECT_FALSE(CZelToolbarBmp::LoadVectorOfIDs(module, 3601, ids));
    EXPECT_TRUE(ids.empty());
    EXPECT_FALSE(tb.LoadBitmap(module, 3601));
    EXPECT_EQ(tb.IdCount(), 0);
    EXPECT_FALSE(tb.CreateImageList(0, 0ul));
    EXPECT_TRUE(CZelToolbarBmp::LoadVectorOfIDs(module, 3600, ids));
    EXPECT_EQ(ids.size(), 4u);
    ZelDestroyResourceModule(module);
}

TEST(CZelImageList, ImageSizesNoBitmapCouldHoldAreRefused)
{
    // Every added image is allocated at the list's size, so a list of 2 by INT_MAX
    // would ask for 16 GiB at the first two-pixel bitmap.
    CZelImageList list;
    EXPECT_FALSE(list.Create(2, INT_MAX, ILC_COLOR32, 1, 1));
    EXPECT_FALSE(list.Create(65536, 65536, ILC_COLOR32, 1, 1));
    EXPECT_FALSE(list.IsCreated());
    ASSERT_TRUE(list.Create(2, 1, ILC_COLOR32, 1, 1));
    CBitmap b;
    ASSERT_TRUE(b.CreateBitmap(2, 1, 1, 32, nullptr));
    EXPECT_EQ(list.Add(&b, static_cast<CBitmap*>(nullptr)), 0);
}

TEST(CZelImageList, AddFormsReportTheFirstIndexOrMinusOne)
{
    HINSTANCE module = ZelCreateResourceModule("imagelist-test");
    auto put = [&](UINT id, const std::string& file) {
        ZelSetResourceData(module, ZEL_RT_BITMAP, id, file.data(), file.size());
    };
    put(1, bmp24(2, 1, {0xFF0000, 0x00FF00}));
    put(2, bmp24(2, 1, {0x0000FF, 0x00FF00}));
    put(9, bmp24(2, 1, {0xFFFFFF, 0x000000})); // mask: left pixel transparent

    CZelImageList list;
    ASSERT_TRUE(list.Create(2, 1, ILC_MASK | ILC_COLOR32, 4, 1));
    EXPECT_EQ(list.Add(module, 1u, 9u), 0);
    EXPECT_EQ(list.GetImagePixels(0)[0], 0u);
    EXPECT_EQ(list.GetImagePixels(0)[1], 0xFF00FF00u);
    EXPECT_EQ(list.Add(module, 2u, static_cast<unsigned long>(RGB(0, 255, 0))), 1);
    EXPECT_EQ(list.GetImagePixels(1)[0], 0xFF0000FFu);
    EXPECT_EQ(list.GetImagePixels(1)[1], 0u);
    // Colour replaced first (red to green), then green is the mask: all transparent.
    EXPECT_EQ(list.Add(module, 1u, static_cast<unsigned long>(RGB(255, 0, 0)), static_cast<unsigned long>(RGB(0, 255, 0)),
                       static_cast<unsigned long>(RGB(0, 255, 0))),
              2);
    EXPECT_EQ(list.GetImagePixels(2)[0], 0u);
    const unsigned int ids[] = {1, 2};
    EXPECT_EQ(list.Add(module, 2, ids, 9u), 3);
    EXPECT_EQ(list.GetImageCount(), 5);

    EXPECT_EQ(list.Add(module, 7u, 9u), -1);
    EXPECT_EQ(list.Add(module, 1u, 7u), -1);
    EXPECT_EQ(list.Add(module, 0, ids, 9u), -1);
    EXPECT_EQ(list.Add(module, 2, ids, 7u), -1);
    const unsigned int broken[] = {1, 7, 2};
    EXPECT_EQ(list.Add(module, 3, broken, 9u), -1);
    EXPECT_EQ(list.GetImageCount(), 6); // the first one went in before the failure
    ZelDestroyResourceModule(module);
}

// Positions whose far edge passes INT_MAX, and records far larger than their device:
// nothing may wrap (the sanitizer build traps it) or run for ever.
TEST(CZelBitmapHostile, ColourChangeStopsAtTheDeviceEdgeWhateverTheRecordClaims)
{
    gfxtest::PixelDC dc(3, 2);
    dc.SetPixel(2, 1, RGB(9, 9, 9));
    BITMAP huge{0, INT_MAX, INT_MAX, 0, 1, 32, nullptr};
    CZelBitmap::ChangeBitmapColorDC(&dc, &huge, RGB(9, 9, 9), RGB(7, 7, 7));
    EXPECT_EQ(dc.GetPixel(2, 1), RGB(7, 7, 7));
}

TEST(CZelBitmapHostile, ImageListDrawRefusesPositionsPastInt)
{
    gfxtest::PixelDC dc(3, 2);
    CZelImageList list;
    ASSERT_TRUE(list.Create(2, 1, ILC_COLOR32, 1, 1));
    CBitmap b;
    ASSERT_TRUE(b.CreateBitmap(2, 1, 1, 32, nullptr));
    ASSERT_EQ(list.Add(&b, static_cast<CBitmap*>(nullptr)), 0);
    EXPECT_FALSE(list.Draw(&dc, 0, CPoint(INT_MAX, 0), ILD_NORMAL));
    EXPECT_FALSE(list.Draw(&dc, 0, CPoint(INT_MAX - 1, 0), ILD_NORMAL));
    EXPECT_TRUE(list.Draw(&dc, 0, CPoint(INT_MAX - 2, INT_MAX - 1), ILD_NORMAL)); // far edges at INT_MAX
}

TEST(CZelBitmapHostile, DrawDibRectFallbackDoesNotWrapItsTarget)
{
    gfxtest::PixelDC dc(3, 2);
    CZelDib dib;
    ASSERT_TRUE(dib.Create(3, 2));
    CZelDrawDib dd; // no session: the stretched copy, on a device that draws nothing
    EXPECT_EQ(dd.DrawDibRect(&dc, &dib, INT_MAX - 1, INT_MAX - 1, 10, 10, 0, 0, 3, 2, 0), 0);
}
