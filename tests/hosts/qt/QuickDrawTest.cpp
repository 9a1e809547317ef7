// The double buffer and the device helpers on real Qt devices.
#include <Zel260/graphics/CZelCDCHelper.h>
#include <Zel260/graphics/qt/CZelQuickDraw.h>
#include <Zel260/hosts/qt/CZelView.h>
#include <Zel260/platform/qt/CQtDC.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QPainter>
#include <QPrinter>
#include <QTest>
#include <gtest/gtest.h>

#include <string>

#include "TestSupport.h"

namespace {

class Red : public QWidget {
public:
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
        QPainter(this).fillRect(QRect(10, 10, 10, 10), Qt::red);
    }
    int paints = 0;
};

class DrawView : public CZelView {
public:
    void OnDraw(CDC* dc) override
    {
        ++draws;
        dc->FillSolidRect(RECT{0, 0, 4, 4}, RGB(0, 0, 255));
    }
    int draws = 0;
};

COLORREF pixel(CDC* dc, int x, int y) { return dc->GetPixel(x, y); }

// Paints one square in a colour the test changes.
class Square : public QWidget {
public:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(QRect(10, 10, 10, 10), colour); }
    QColor colour = Qt::red;
};

} // namespace

TEST(QuickDraw, PaintsIntoTheBufferBeforeTheScreen)
{
    Red w;
    w.resize(60, 40);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    CZelQuickDraw quick;
    ASSERT_EQ(quick.Install(CWnd::FromHandle(ZelHwndFromWidget(&w))), 1);
    EXPECT_EQ(quick.Install(CWnd::FromHandle(ZelHwndFromWidget(&w))), 0) << "one window per buffer";
    quick.SetCustomBkColor(RGB(0, 200, 0));
    quick.SetExcludeFromTop(3);
    w.repaint();
    QTest::qWait(30);
    EXPECT_EQ(quick.GetPaintCount(), 1);
    CDC* mem = quick.GetCompDC(nullptr);
    ASSERT_NE(mem, nullptr);
    EXPECT_EQ(pixel(mem, 15, 15), RGB(255, 0, 0)) << "the window's own painting";
    EXPECT_EQ(pixel(mem, 30, 30), RGB(0, 200, 0)) << "the background";
    EXPECT_NE(pixel(mem, 30, 1), RGB(0, 200, 0)) << "the excluded rows stay unfilled";

    // The same size keeps the buffer; a new size makes a new one at the next paint.
    quick.SetSize(SIZE{60, 40});
    EXPECT_EQ(quick.GetCompDC(nullptr), mem);
    quick.SetSize(SIZE{-1, 5});
    EXPECT_EQ(quick.GetSize().cx, 60) << "negative sizes are refused";
}

TEST(QuickDraw, AStopDrawsNothingUntilContinued)
{
    Red w;
    w.resize(40, 40);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    CZelQuickDraw quick;
    quick.Install(CWnd::FromHandle(ZelHwndFromWidget(&w)));
    const int before = w.paints;
    quick.StopWindowUpdate();
    w.repaint();
    EXPECT_EQ(w.paints, before);
    EXPECT_EQ(quick.GetSkippedPaintCount(), 1);
    EXPECT_EQ(quick.GetPaintCount(), 0);
    quick.ContinueWindowUpdate(TRUE);
    QTest::qWait(30);
    EXPECT_GT(quick.GetPaintCount(), 0);
    EXPECT_GT(w.paints, before);
}

TEST(QuickDraw, ContinueShowsTheStateAfterTheBulkChangeNotBefore)
{
    // A picture asked for just before a stop must not be the one shown after it.
    Square w;
    w.resize(40, 40);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    CZelQuickDraw quick;
    quick.Install(CWnd::FromHandle(ZelHwndFromWidget(&w)));
    w.repaint();
    quick.StopWindowUpdate();
    QTest::qWait(30);
    w.colour = Qt::blue; // the bulk change
    quick.ContinueWindowUpdate(TRUE);
    QTest::qWait(50);
    EXPECT_EQ(pixel(quick.GetCompDC(nullptr), 15, 15), RGB(0, 0, 255));
}

TEST(QuickDraw, WhiteTakesThePatBltRouteWithTheSameResult)
{
    QWidget w;
    w.resize(20, 20);
    CZelQuickDraw quick;
    quick.Install(CWnd::FromHandle(ZelHwndFromWidget(&w)));
    quick.SetCustomBkColor(0xFFFFFF);
    ASSERT_EQ(quick.EraseBkgnd(nullptr), 1);
    EXPECT_EQ(pixel(quick.GetCompDC(nullptr), 5, 5), RGB(255, 255, 255));
    quick.SetCustomBkColor(0xFEFEFE);
    quick.EraseBkgnd(nullptr);
    EXPECT_EQ(pixel(quick.GetCompDC(nullptr), 5, 5), RGB(254, 254, 254));
}

TEST(QuickDraw, ViewsDrawThroughOnDraw)
{
    DrawView v;
    v.resize(30, 30);
    v.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&v));
    CZelQuickDraw quick;
    quick.Install(&v);
    v.repaint();
    EXPECT_GE(v.draws, 1);
    EXPECT_EQ(pixel(quick.GetCompDC(nullptr), 1, 1), RGB(0, 0, 255));
}

TEST(CDCHelper, RubberBandTwiceRestoresThePicture)
{
    QImage image(40, 30, QImage::Format_RGB32);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
            image.setPixel(x, y, qRgb(x * 6, y * 8, (x * y) % 256));
    const QImage original = image.copy();
    {
        CQtDC dc(&image);
        CZelCDCHelper::DrawRubberBand(&dc, CRect(30, 25, 5, 4)); // inverted on purpose
    }
    EXPECT_NE(image, original);
    EXPECT_EQ(image.pixel(20, 15), original.pixel(20, 15)) << "only the outline changes";
    // The band is inverted through the halftone pattern: every other pixel, in a
    // chequer fixed to the device's origin.
    EXPECT_EQ(image.pixel(16, 4), original.pixel(16, 4) ^ 0x00FFFFFF);
    EXPECT_EQ(image.pixel(15, 4), original.pixel(15, 4));
    EXPECT_EQ(image.pixel(29, 11), original.pixel(29, 11) ^ 0x00FFFFFF) << "right edge";
    EXPECT_EQ(image.pixel(29, 12), original.pixel(29, 12));
    {
        CQtDC dc(&image);
        CZelCDCHelper::DrawRubberBand(&dc, CRect(5, 4, 30, 25));
        CZelCDCHelper::DrawRubberBand(&dc, CRect(5, 5, 5, 20)); // empty: nothing
    }
    EXPECT_EQ(image, original);
}

TEST(CDCHelper, ClipRectangleAndPrintArea)
{
    QImage image(50, 50, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        CQtDC dc(&image);
        const CRect before = CZelCDCHelper::SelectClipRect(&dc, CRect(10, 10, 20, 20));
        EXPECT_EQ(before, CRect(0, 0, 50, 50));
        dc.FillSolidRect(RECT{0, 0, 50, 50}, RGB(0, 0, 0));
    }
    EXPECT_EQ(image.pixelColor(15, 15), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(25, 25), QColor(Qt::white)) << "outside the clip";

    zeltest::TempDir dir;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(dir.file("page.pdf")));
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
    CQtDC dc(&printer);
    const double w = 210 / 25.4, h = 297 / 25.4;
    const int width = dc.GetDeviceCaps(HORZRES);
    const int height = dc.GetDeviceCaps(VERTRES);
    // Margins inside the unprintable border: the whole printable area.
    const CRect all = CZelCDCHelper::CalculatePrintArea(&dc, w, h, CRect(100, 100, 100, 100), 1);
    EXPECT_EQ(all, CRect(0, 0, width, height));
    // 3 cm margins reach 2 cm beyond the 1 cm border.
    const CRect inner = CZelCDCHelper::CalculatePrintArea(&dc, w, h, CRect(3000, 3000, 3000, 3000), 1);
    const int dpi = dc.GetDeviceCaps(LOGPIXELSX);
    // Within a tenth of a millimetre or so: the device rounds its printable area.
    EXPECT_NEAR(inner.left, 20 / 25.4 * dpi, dpi / 100.0);
    EXPECT_NEAR(width - inner.right, 20 / 25.4 * dpi, dpi / 100.0);
    EXPECT_NEAR(inner.top, 20 / 25.4 * dpi, dpi / 100.0);
}

namespace {

class ColourView : public CZelView {
public:
    void OnDraw(CDC* dc) override { dc->FillSolidRect(RECT{0, 0, 1000, 1000}, colour); }
    COLORREF colour = RGB(0, 0, 255);
};

} // namespace

TEST(QuickDraw, ViewPaintIsClippedToThePaintedRectangle)
{
    ColourView v;
    v.resize(60, 40);
    v.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&v));
    CZelQuickDraw quick;
    ASSERT_EQ(quick.Install(&v), 1);
    v.repaint();
    CDC* mem = quick.GetCompDC(nullptr);
    ASSERT_NE(mem, nullptr);
    EXPECT_EQ(pixel(mem, 50, 30), RGB(0, 0, 255));

    v.colour = RGB(255, 0, 0);
    v.repaint(QRect(0, 0, 10, 10));
    EXPECT_EQ(pixel(mem, 5, 5), RGB(255, 0, 0)) << "inside the paint's clip box";
    EXPECT_EQ(pixel(mem, 50, 30), RGB(0, 0, 255)) << "outside it the buffer keeps its picture";

    v.colour = RGB(0, 255, 0);
    v.repaint();
    EXPECT_EQ(pixel(mem, 50, 30), RGB(0, 255, 0)) << "an earlier clip doesn't narrow a later paint";
}

namespace {

// Scroll views move their origin in OnPrepareDC; the buffer must get the same setup
// as the screen would, or a scrolled view draws at the wrong place.
class PreparedView : public CZelView {
public:
    void OnPrepareDC(CDC* dc, CPrintInfo* info) override
    {
        preparedDc = dc;
        preparedInfo = info;
        order += 'P';
    }
    void OnDraw(CDC* dc) override
    {
        drawnDc = dc;
        order += 'D';
    }
    CDC* preparedDc = nullptr;
    CDC* drawnDc = nullptr;
    CPrintInfo* preparedInfo = reinterpret_cast<CPrintInfo*>(1);
    std::string order;
};

} // namespace

TEST(QuickDraw, AViewIsPreparedOnTheBufferBeforeItDraws)
{
    PreparedView v;
    v.resize(30, 30);
    v.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&v));
    CZelQuickDraw quick;
    quick.Install(&v);
    v.order.clear();
    v.repaint();
    ASSERT_FALSE(v.order.empty());
    EXPECT_EQ(v.order.substr(0, 2), "PD");
    EXPECT_EQ(v.preparedDc, quick.GetCompDC(nullptr));
    EXPECT_EQ(v.preparedDc, v.drawnDc);
    EXPECT_EQ(v.preparedInfo, nullptr) << "no printing";
}

TEST(QuickDraw, TheLastWholePictureStaysUntilTheNewOneStands)
{
    // A plain window can't paint into the buffer during its own paint; the paint in
    // between must show the last whole picture, not a bare background.
    Square w;
    w.resize(40, 40);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    CZelQuickDraw quick;
    quick.Install(CWnd::FromHandle(ZelHwndFromWidget(&w)));
    quick.SetCustomBkColor(RGB(0, 200, 0));
    w.repaint();
    QTest::qWait(50);
    ASSERT_EQ(pixel(quick.GetCompDC(nullptr), 15, 15), RGB(255, 0, 0));

    w.colour = Qt::blue;
    const QImage between = w.grab().toImage();
    EXPECT_EQ(between.pixelColor(15, 15), QColor(Qt::red)) << "the last whole picture";
    EXPECT_EQ(between.pixelColor(30, 30), QColor(0, 200, 0)) << "with its background";
    QTest::qWait(50);
    EXPECT_EQ(w.grab().toImage().pixelColor(15, 15), QColor(Qt::blue)) << "then the new one";
}
