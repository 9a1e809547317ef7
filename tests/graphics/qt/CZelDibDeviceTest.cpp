#include "../DibTestSupport.h"

#include <Zel260/graphics/CZelBitmap.h>
#include <Zel260/graphics/CZelDrawDib.h>
#include <Zel260/graphics/CZelImageList.h>
#include <Zel260/graphics/qt/ZelQtPictureLoader.h>
#include <Zel260/platform/qt/CQtDC.h>

#include <TestSupport.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPrinter>

namespace {

// A 3 by 2 picture: top row red, green, blue; bottom row white, black, grey.
const QRgb kTop[3] = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)};
const QRgb kBottom[3] = {qRgb(255, 255, 255), qRgb(0, 0, 0), qRgb(128, 128, 128)};

void makePicture(CZelDib& dib, bool topDown)
{
    dib.Create(3, topDown ? -2 : 2);
    const int topRow = topDown ? 0 : 1;
    for (int x = 0; x < 3; ++x) {
        dib.GetCrBits()[topRow * 3 + x] = kTop[x] & 0xFFFFFF;
        dib.GetCrBits()[(1 - topRow) * 3 + x] = kBottom[x] & 0xFFFFFF;
    }
}

QImage canvas(int w, int h)
{
    QImage img(w, h, QImage::Format_RGB32);
    img.fill(qRgb(1, 2, 3));
    return img;
}

QRgb px(const QImage& img, int x, int y)
{
    return img.pixel(x, y) | 0xFF000000u;
}

} // namespace

TEST(CZelDibDevice, CopyToDCShowsThePictureUprightInBothDirections)
{
    for (bool topDown : {true, false}) {
        CZelDib dib;
        makePicture(dib, topDown);
        QImage img = canvas(6, 4);
        {
            CQtDC dc(&img);
            ASSERT_TRUE(dib.CopyToDC(&dc, 1, 1));
        }
        for (int x = 0; x < 3; ++x) {
            EXPECT_EQ(px(img, 1 + x, 1), kTop[x]) << "topDown " << topDown << " x " << x;
            EXPECT_EQ(px(img, 1 + x, 2), kBottom[x]) << "topDown " << topDown << " x " << x;
        }
        EXPECT_EQ(px(img, 0, 0), qRgb(1, 2, 3));
        EXPECT_EQ(px(img, 4, 1), qRgb(1, 2, 3));
    }
}

TEST(CZelDibDevice, StretchCopiesAndTheSourceRectangleOfEitherDirection)
{
    for (bool topDown : {true, false}) {
        CZelDib dib;
        makePicture(dib, topDown);
        QImage img = canvas(8, 6);
        {
            CQtDC dc(&img);
            dc.SetStretchBltMode(COLORONCOLOR);
            ASSERT_TRUE(dib.CopyToDCStretch(&dc, 0, 0, 6, 4, SRCCOPY));
            // The bottom-right pixel, from source row 1 (top-down), to 7, 5 in 1 by 1.
            ASSERT_TRUE(dib.CopyToDCStretchRect(&dc, CRect(7, 5, 8, 6), CRect(2, 1, 3, 2), SRCCOPY));
            // A source reaching past the image is cut, the target stays as given.
            ASSERT_TRUE(dib.CopyToDCStretchRect(&dc, 6, 0, 1, 1, -1, 0, 2, 1, SRCCOPY));
        }
        EXPECT_EQ(px(img, 0, 0), kTop[0]);
        EXPECT_EQ(px(img, 1, 1), kTop[0]);
        EXPECT_EQ(px(img, 5, 3), kBottom[2]);
        EXPECT_EQ(px(img, 2, 2), kBottom[1]);
        EXPECT_EQ(px(img, 7, 5), kBottom[2]) << "topDown " << topDown;
        EXPECT_EQ(px(img, 6, 0), kTop[0]) << "topDown " << topDown;
    }
}

TEST(CZelDibDevice, DeviceFunctionsRefuseBadArguments)
{
    CZelDib dib, empty;
    makePicture(dib, true);
    QImage img = canvas(4, 4);
    CQtDC dc(&img);
    EXPECT_FALSE(dib.CopyToDC(nullptr, 0, 0));
    EXPECT_FALSE(dib.CopyToDC(&dc, -1, 0));
    EXPECT_FALSE(empty.CopyToDC(&dc, 0, 0));
    EXPECT_FALSE(empty.CopyToDCStretch(&dc, 0, 0, 2, 2, SRCCOPY));
    EXPECT_FALSE(dib.CopyToDCStretchRect(&dc, 0, 0, 0, 2, 0, 0, 1, 1, SRCCOPY));
    EXPECT_FALSE(dib.CopyToDCStretchRect(&dc, 0, 0, 2, 2, 3, 0, 1, 1, SRCCOPY)); // clipped to nothing
    CBitmap wrong;
    ASSERT_TRUE(wrong.CreateCompatibleBitmap(&dc, 2, 2));
    EXPECT_FALSE(dib.CopyToBitmap(&dc, &wrong));
    EXPECT_FALSE(dib.CopyFromBitmap(&dc, &wrong));
    EXPECT_FALSE(dib.CopyToBitmap(&dc, nullptr));
    EXPECT_FALSE(empty.Invert(&dc));
    EXPECT_FALSE(dib.CopyFromDC(nullptr, 0, 0, 3, 2));
    EXPECT_FALSE(dib.CopyFromDC(&dc, 0, 0, 2, 2)); // not the image's size
}

TEST(CZelDibDevice, EdgesBeyondIntAreRefusedNotWrapped)
{
    // Sizes without an absolute value and rectangles whose far edge passes INT_MAX
    // can't be drawn; they must fail before any sum wraps.
    CZelDib dib;
    makePicture(dib, false);
    QImage img = canvas(4, 4);
    {
        CQtDC dc(&img);
        EXPECT_FALSE(dib.CopyToDCStretch(&dc, 0, 0, INT_MIN, 2, SRCCOPY));
        EXPECT_FALSE(dib.CopyToDCStretch(&dc, 0, 0, 2, INT_MIN, SRCCOPY));
        EXPECT_FALSE(dib.CopyToDCStretch(&dc, -5, 0, INT_MIN + 2, 2, SRCCOPY));
        EXPECT_FALSE(dib.CopyToDCStretchRect(&dc, INT_MAX - 1, 0, 10, 10, 0, 0, 3, 2, SRCCOPY));
        EXPECT_FALSE(dib.CopyToDC(&dc, INT_MAX - 1, 0));
        EXPECT_FALSE(dib.CopyToDC(&dc, 0, INT_MAX, 3, 2));
        EXPECT_TRUE(dib.CopyToDC(&dc, INT_MAX - 3, INT_MAX - 2)); // the far edge at INT_MAX
        EXPECT_TRUE(dib.CopyToDCStretch(&dc, INT_MAX - 30, -20, 30, 20, SRCCOPY));
        CZelDrawDib dd; // the session takes any source rectangle
        ASSERT_TRUE(dd.Open());
        auto* header = const_cast<BITMAPINFOHEADER*>(dib.GetBitmapInfoHeader());
        EXPECT_FALSE(dd.Draw(&dc, 0, 0, 2, 2, header, dib.GetCrBits(), INT_MAX - 1, 0, 10, 1, 0));
        EXPECT_FALSE(dd.Draw(&dc, 0, 0, 2, 2, header, dib.GetCrBits(), 0, INT_MIN, 1, 10, 0));

        // Reading at the end of int: what the device doesn't have comes out black.
        CZelDib back;
        ASSERT_TRUE(back.CopyFromDC(&dc, INT_MAX - 1, INT_MAX - 1, 3, 2));
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(back.GetCrBits()[i], 0u) << i;
    }
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(px(img, x, y), qRgb(1, 2, 3)) << x << ", " << y;
}

TEST(CZelDibDevice, CopyFromDCReadsPixelsBackAndBlackOutside)
{
    QImage img = canvas(4, 3);
    img.setPixel(0, 0, qRgb(10, 20, 30));
    img.setPixel(3, 2, qRgb(40, 50, 60));
    CQtDC dc(&img);
    for (bool topDown : {true, false}) {
        CZelDib dib;
        dib.Create(3, topDown ? -2 : 2);
        ASSERT_TRUE(dib.CopyFromDC(&dc, 1, 1, 3, 2));
        const int bottomRow = topDown ? 1 : 0;
        EXPECT_EQ(gfxtest::at(dib, 2, bottomRow), 0x0028323Cu) << topDown; // 40, 50, 60 with alpha 0
        EXPECT_EQ(gfxtest::at(dib, 0, 1 - bottomRow), 0x00010203u);
    }
    CZelDib fresh; // takes w by h; what lies beyond the device comes out black
    ASSERT_TRUE(fresh.CopyFromDC(&dc, -1, -1, 2, 2));
    EXPECT_EQ(fresh.GetWidth(), 2);
    EXPECT_EQ(gfxtest::at(fresh, 0, 1), 0u);             // bottom-up: memory row 1 is the top
    EXPECT_EQ(gfxtest::at(fresh, 1, 0), 0x000A141Eu); // 10, 20, 30
}

TEST(CZelDibDevice, BitmapRoundTripAndInvertKeepThePicture)
{
    QImage img = canvas(3, 2);
    CQtDC dc(&img);
    for (bool topDown : {true, false}) {
        CZelDib dib;
        makePicture(dib, topDown);
        CBitmap bitmap;
        ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&dc, 3, 2));
        ASSERT_TRUE(dib.CopyToBitmap(&dc, &bitmap));
        EXPECT_EQ(ZelBitmapScanLine(bitmap, 0)[0] | 0xFF000000u, kTop[0]); // device bitmaps are top-down
        CZelDib back;
        ASSERT_TRUE(back.CopyFromBitmap(&dc, &bitmap)); // an empty image takes the bitmap's size
        EXPECT_EQ(gfxtest::at(back, 0, 0) | 0xFF000000u, kBottom[0]); // bottom-up
        const DWORD before = dib.GetCrBits()[0];
        ASSERT_TRUE(dib.Invert(&dc));
        EXPECT_EQ(dib.IsTopDown(), topDown ? FALSE : TRUE);
        EXPECT_NE(dib.GetCrBits()[0], before);
        ASSERT_TRUE(dib.CopyToDC(&dc, 0, 0));
        EXPECT_EQ(px(img, 0, 0), kTop[0]);
        EXPECT_EQ(px(img, 2, 1), kBottom[2]);
    }
}

TEST(CZelDrawDib, DrawsThroughTheSessionOrTheStretchedCopy)
{
    CZelDib dib, empty;
    makePicture(dib, false);
    for (bool open : {true, false}) {
        QImage img = canvas(6, 4);
        CQtDC dc(&img);
        CZelDrawDib dd;
        dd.SetStretchMode(COLORONCOLOR); // exact pixels; averaging would blur the test
        if (open) {
            EXPECT_TRUE(dd.Open());
        }
        EXPECT_EQ(dd.DrawDib(&dc, &dib, 0, 0, 6, 4, 0), 1);
        EXPECT_EQ(dd.DrawDibRect(&dc, &dib, 0, 0, 1, 1, 2, 1, 5, 5, 0), 1);
        EXPECT_EQ(px(img, 0, 0), kBottom[2]) << open;
        EXPECT_EQ(px(img, 5, 3), kBottom[2]) << open;
        EXPECT_EQ(px(img, 2, 0), kTop[1]) << open;
        EXPECT_EQ(dd.DrawDibRect(&dc, &dib, 0, 0, 1, 1, 3, 0, 1, 1, 0), 0); // cut away wholly
        EXPECT_EQ(dd.DrawDib(&dc, &empty, 0, 0, 1, 1, 0), 0);
        EXPECT_EQ(dd.DrawDib(nullptr, &dib, 0, 0, 1, 1, 0), 0);
        DRAWDIBTIME t;
        EXPECT_EQ(dd.Time(&t), open ? TRUE : FALSE);
        if (open) {
            EXPECT_EQ(t.timeCount, 2);
        }
    }
}

TEST(CZelImageListDraw, MaskedPixelsKeepTheDevice)
{
    CBitmap strip;
    const std::vector<DWORD> pixels = {0xFF0000, 0xFF00FF, 0x00FF00, 0xFF00FF};
    ASSERT_TRUE(strip.CreateBitmap(4, 1, 1, 32, pixels.data()));
    CZelImageList list;
    ASSERT_TRUE(list.Create(2, 1, ILC_MASK | ILC_COLOR32, 2, 1));
    ASSERT_EQ(list.Add(&strip, RGB(255, 0, 255)), 0);
    QImage img = canvas(3, 2);
    CQtDC dc(&img);
    ASSERT_TRUE(list.Draw(&dc, 1, CPoint(1, 1), ILD_TRANSPARENT));
    EXPECT_EQ(px(img, 1, 1), qRgb(0, 255, 0));
    EXPECT_EQ(px(img, 2, 1), qRgb(1, 2, 3));
    EXPECT_FALSE(list.Draw(&dc, 2, CPoint(0, 0), 0));
    EXPECT_FALSE(list.Draw(nullptr, 0, CPoint(0, 0), 0));
}

TEST(CZelBitmapPictureRoute, QtReadersAreInstalledAndRefuseDamagedFiles)
{
    EXPECT_EQ(ZelGetPictureLoader(), &ZelQtLoadPicture);
    QImage source(3, 2, QImage::Format_RGB32);
    source.fill(qRgb(9, 8, 7));
    source.setPixel(2, 1, qRgb(200, 100, 50));
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(source.save(&buffer, "PNG"));

    HBITMAP b = ZelQtLoadPicture(png.constData(), static_cast<std::size_t>(png.size()));
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(ZelBitmapScanLine(b, 1)[2] & 0xFFFFFF, 0xC86432u);
    DeleteObject(b);
    EXPECT_EQ(ZelQtLoadPicture(png.constData(), static_cast<std::size_t>(png.size() / 2)), nullptr);
    EXPECT_EQ(ZelQtLoadPicture(nullptr, 10), nullptr);

    // With all three routes in place a half file still ends in an empty object.
    zeltest::TempDir dir;
    const std::string half = dir.write("half.png", std::string(png.constData(), png.size() / 2));
    CZelBitmap bitmap;
    EXPECT_FALSE(bitmap.LoadBitmap(half.c_str()));
    EXPECT_EQ(bitmap.GetSafeHandle(), nullptr);
}

TEST(CZelBitmapPictureRoute, EveryCutOfABitmapFileFailsOnAllThreeRoutes)
{
    QImage source(3, 2, QImage::Format_RGB32);
    source.fill(qRgb(9, 8, 7));
    QByteArray bmp;
    QBuffer buffer(&bmp);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(source.save(&buffer, "BMP"));
    HBITMAP direct = ZelQtLoadPicture(bmp.constData(), static_cast<std::size_t>(bmp.size()));
    ASSERT_NE(direct, nullptr); // the whole file reads on the picture route itself
    EXPECT_EQ(ZelBitmapScanLine(direct, 1)[2] & 0xFFFFFF, 0x090807u);
    DeleteObject(direct);
    EXPECT_EQ(ZelQtLoadPicture(bmp.constData(), static_cast<std::size_t>(bmp.size() - 1)), nullptr);
    zeltest::TempDir dir;
    const std::string whole = dir.write("whole.bmp", std::string(bmp.constData(), bmp.size()));
    for (int n = 0; n < bmp.size(); ++n) {
        CZelBitmap b;
        ASSERT_TRUE(b.LoadBitmap(whole.c_str()));
        const std::string cut = dir.write("cut.bmp", std::string(bmp.constData(), n));
        EXPECT_FALSE(b.LoadBitmap(cut.c_str())) << "cut at " << n;
        EXPECT_EQ(b.GetSafeHandle(), nullptr) << "cut at " << n;
    }
}

TEST(CZelBitmapSave, WritesThroughAPrinterContextToo)
{
    // SaveBitmap needs some device; any of the Qt ones will do.
    zeltest::TempDir dir;
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(dir.file("x.pdf")));
    CQtDC dc(&printer);
    CBitmap b;
    ASSERT_TRUE(b.CreateBitmap(2, 2, 1, 32, nullptr));
    const std::string path = dir.file("b.tif");
    EXPECT_TRUE(CZelBitmap::SaveBitmap(&dc, b, ZEL_IMAGE_FORMAT_TIFF, path.c_str()));
    CZelDib dib;
    EXPECT_TRUE(dib.Create(&dc, path.c_str(), TRUE));
    EXPECT_EQ(dib.GetWidth(), 2);
}
