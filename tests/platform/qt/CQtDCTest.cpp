#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/qt/CQtDC.h>

#include <TestSupport.h>

#include <climits>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QWidget>

namespace {
QRgb px(const QImage& img, int x, int y)
{
    return img.pixel(x, y) | 0xFF000000u;
}
} // namespace

TEST(CQtDC, ImageDeviceDrawsWithWin32Conventions)
{
    QImage img(20, 10, QImage::Format_RGB32);
    img.fill(Qt::white);
    {
        CQtDC dc(&img);
        dc.FillSolidRect(CRect(1, 1, 3, 3), RGB(255, 0, 0));
        EXPECT_EQ(dc.GetPixel(2, 2), RGB(255, 0, 0));
        EXPECT_EQ(dc.GetPixel(3, 3), RGB(255, 255, 255)); // right and bottom are outside
        EXPECT_EQ(dc.GetPixel(20, 0), CLR_INVALID);
        EXPECT_EQ(dc.SetPixel(5, 5, RGB(1, 2, 3)), RGB(1, 2, 3));
        EXPECT_EQ(dc.GetPixel(5, 5), RGB(1, 2, 3));
        dc.MoveTo(0, 9);
        EXPECT_TRUE(dc.LineTo(4, 9));
        EXPECT_EQ(dc.GetPixel(3, 9), 0u);
        EXPECT_EQ(dc.GetPixel(4, 9), RGB(255, 255, 255)); // the end point stays out
        EXPECT_EQ(dc.SetTextColor(RGB(9, 9, 9)), 0u);
        EXPECT_EQ(dc.GetTextColor(), RGB(9, 9, 9));
        const CSize ext = dc.GetTextExtent("Wide");
        EXPECT_GT(ext.cx, dc.GetTextExtent("i").cx);
        EXPECT_GT(ext.cy, 0);
        EXPECT_TRUE(dc.PatBlt(10, 0, 2, 2, DSTINVERT));
        EXPECT_EQ(dc.GetPixel(10, 0), 0u);
        EXPECT_EQ(dc.GetDeviceCaps(HORZRES), 20);
        EXPECT_EQ(dc.GetDeviceCaps(VERTRES), 10);
        EXPECT_FALSE(dc.IsPrinting());
        RECT box;
        dc.IntersectClipRect(CRect(2, 2, 8, 6));
        EXPECT_EQ(dc.GetClipBox(&box), 2);
        EXPECT_EQ(CRect(box), CRect(2, 2, 8, 6));
        dc.FillSolidRect(CRect(0, 0, 20, 10), RGB(0, 0, 255));
    }
    EXPECT_EQ(px(img, 2, 2), qRgb(0, 0, 255)); // inside the clip
    EXPECT_EQ(px(img, 9, 9), qRgb(255, 255, 255)); // outside it
}

TEST(CQtDC, OpaqueTextFillsItsCellAndTransparentDoesNot)
{
    QImage img(60, 20, QImage::Format_RGB32);
    img.fill(Qt::white);
    CQtDC dc(&img);
    dc.SetBkColor(RGB(0, 255, 0));
    ASSERT_TRUE(dc.TextOut(0, 0, "ab", 2));
    EXPECT_EQ(dc.GetPixel(0, 0), RGB(0, 255, 0)); // the top of the cell
    dc.SetBkMode(TRANSPARENT);
    ASSERT_TRUE(dc.TextOut(30, 0, "ab", 2));
    EXPECT_EQ(dc.GetPixel(30, 0), RGB(255, 255, 255));
}

TEST(CQtDC, MemoryDeviceDrawsIntoTheSelectedBitmap)
{
    QImage img(4, 4, QImage::Format_RGB32);
    img.fill(qRgb(10, 20, 30));
    CQtDC screen(&img);
    auto memory = screen.CreateCompatibleDC();
    ASSERT_NE(memory, nullptr);
    EXPECT_FALSE(memory->PatBlt(0, 0, 1, 1, WHITENESS)); // nothing selected yet
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&screen, 3, 2));
    EXPECT_EQ(memory->SelectObject(bitmap), nullptr);
    ASSERT_TRUE(memory->BitBlt(0, 0, 3, 2, &screen, 1, 1, SRCCOPY));
    EXPECT_TRUE(memory->PatBlt(2, 1, 1, 1, WHITENESS));
    EXPECT_EQ(memory->SelectObject(nullptr), bitmap.GetSafeHandle());
    EXPECT_EQ(ZelBitmapScanLine(bitmap, 0)[0], 0x000A141Eu); // alpha 0, as GDI leaves it
    EXPECT_EQ(ZelBitmapScanLine(bitmap, 1)[2], 0x00FFFFFFu);

    // A bottom-up section is drawn upright and written back in its own row order.
    BITMAPINFO info{};
    info.bmiHeader = {40, 2, 2, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HBITMAP section = CreateDIBSection(&screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    ASSERT_NE(section, nullptr);
    memory->SelectObject(section);
    memory->SetPixel(0, 0, RGB(255, 0, 0));
    memory->SelectObject(nullptr);
    EXPECT_EQ(static_cast<DWORD*>(bits)[2], 0x00FF0000u); // memory row 1 is the top
    DeleteObject(section);
}

TEST(CQtDC, BitBltRasterOperationsAndSelfCopy)
{
    QImage a(2, 1, QImage::Format_RGB32), b(2, 1, QImage::Format_RGB32);
    a.setPixel(0, 0, qRgb(0xF0, 0x0F, 0x00));
    a.setPixel(1, 0, qRgb(1, 2, 3));
    b.fill(qRgb(0x0F, 0x0F, 0xFF));
    {
        CQtDC src(&a), dst(&b);
        ASSERT_TRUE(dst.BitBlt(0, 0, 1, 1, &src, 0, 0, SRCPAINT));
        ASSERT_TRUE(dst.BitBlt(1, 0, 1, 1, &dst, 0, 0, SRCINVERT));
        EXPECT_FALSE(dst.BitBlt(0, 0, 1, 1, &src, 0, 0, 0x00BB0226));
    }
    EXPECT_EQ(px(b, 0, 0), qRgb(0xFF, 0x0F, 0xFF));
    EXPECT_EQ(px(b, 1, 0), qRgb(0xFF ^ 0x0F, 0x0F ^ 0x0F, 0xFF ^ 0xFF));
}

TEST(CQtDC, CopiesFromAWidgetLandWhereTheyLieAndBlackBeyondIt)
{
    // A source rectangle that starts before the widget: what the widget has keeps
    // its place in the rectangle, the rest is black, as from an image.
    QWidget widget;
    widget.resize(4, 4);
    QPalette pal = widget.palette();
    pal.setColor(QPalette::Window, QColor(10, 20, 30));
    widget.setPalette(pal);
    widget.setAutoFillBackground(true);
    CQtDC source(&widget);
    QImage img(3, 3, QImage::Format_RGB32);
    img.fill(Qt::white);
    {
        CQtDC dc(&img);
        ASSERT_TRUE(dc.BitBlt(0, 0, 3, 3, &source, -1, -1, SRCCOPY));
        EXPECT_FALSE(dc.BitBlt(INT_MAX - 1, 0, 3, 3, &source, 0, 0, SRCCOPY)); // far edge past int
    }
    EXPECT_EQ(px(img, 0, 0), qRgb(0, 0, 0));
    EXPECT_EQ(px(img, 2, 0), qRgb(0, 0, 0));
    EXPECT_EQ(px(img, 1, 1), qRgb(10, 20, 30));
    EXPECT_EQ(px(img, 2, 2), qRgb(10, 20, 30));
}

TEST(CQtDC, DibHeadersWiderThanARowCanAddressAreRefused)
{
    // 2^29 pixels a row have 2^31 bytes, one past int: nothing of such a picture
    // can be viewed, not even the one pixel asked for.
    QImage img(2, 2, QImage::Format_RGB32);
    img.fill(Qt::white);
    CQtDC dc(&img);
    const DWORD pixel = 0x00FF0000;
    BITMAPINFO info{};
    info.bmiHeader = BITMAPINFOHEADER{40, 0x20000000, -1, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    EXPECT_EQ(dc.SetDIBitsToDevice(0, 0, 1, 1, 0, 0, 0, 1, &pixel, &info, DIB_RGB_COLORS), 0);
    EXPECT_EQ(dc.StretchDIBits(0, 0, 1, 1, 0, 0, 1, 1, &pixel, &info, DIB_RGB_COLORS, SRCCOPY), 0);
    EXPECT_EQ(dc.GetPixel(0, 0), RGB(255, 255, 255));
}

TEST(CQtDC, PrinterDeviceWritesAPdfPage)
{
    zeltest::TempDir dir;
    const QString path = QString::fromStdString(dir.file("page.pdf"));
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        CQtDC dc(&printer);
        EXPECT_TRUE(dc.IsPrinting());
        EXPECT_GT(dc.GetDeviceCaps(LOGPIXELSX), 96);
        EXPECT_GE(dc.GetDeviceCaps(PHYSICALWIDTH), dc.GetDeviceCaps(HORZRES));
        EXPECT_EQ(dc.GetPixel(0, 0), CLR_INVALID); // a printer can't be read
        EXPECT_TRUE(dc.TextOut(100, 100, "page", 4));
        EXPECT_TRUE(dc.NewPage());
    }
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.readAll().startsWith("%PDF"));
}

TEST(CQtDC, BorrowedPainterStaysOpen)
{
    QImage img(4, 4, QImage::Format_RGB32);
    img.fill(Qt::black);
    QPainter painter(&img);
    {
        CQtDC dc(&painter);
        dc.FillSolidRect(CRect(0, 0, 1, 1), RGB(255, 255, 255));
    }
    EXPECT_TRUE(painter.isActive());
    painter.end();
    EXPECT_EQ(px(img, 0, 0), qRgb(255, 255, 255));
}

TEST(CQtDC, SelectClipRgnReplacesTheClipAndNullRemovesIt)
{
    QImage img(20, 10, QImage::Format_RGB32);
    img.fill(Qt::white);
    {
        CQtDC dc(&img);
        RECT box;
        dc.IntersectClipRect(CRect(0, 0, 5, 5));
        // A rectangle outside the old clip still becomes the clip: replaced, not narrowed.
        EXPECT_EQ(dc.SelectClipRgn(CRect(10, 2, 15, 8)), 2);
        EXPECT_EQ(dc.GetClipBox(&box), 2);
        EXPECT_EQ(CRect(box), CRect(10, 2, 15, 8));
        dc.FillSolidRect(CRect(0, 0, 20, 10), RGB(255, 0, 0));

        EXPECT_EQ(dc.SelectClipRgn(CRect(3, 3, 3, 3)), 1) << "empty rectangle: null region";
        EXPECT_EQ(dc.GetClipBox(&box), 1);
        dc.FillSolidRect(CRect(0, 0, 20, 10), RGB(0, 255, 0));

        EXPECT_EQ(dc.SelectClipRgn(nullptr), 2);
        EXPECT_EQ(dc.GetClipBox(&box), 2);
        EXPECT_EQ(CRect(box), CRect(0, 0, 20, 10));
        dc.FillSolidRect(CRect(19, 9, 20, 10), RGB(0, 0, 255));
    }
    EXPECT_EQ(px(img, 12, 5), qRgb(255, 0, 0));
    EXPECT_EQ(px(img, 2, 2), qRgb(255, 255, 255)) << "the old clip no longer lets drawing through";
    EXPECT_EQ(px(img, 9, 5), qRgb(255, 255, 255));
    EXPECT_EQ(px(img, 19, 9), qRgb(0, 0, 255)) << "no clip after null";
}
