// The device context over QPainter. One class serves every kind of device:
//
//   QImage image(200, 100, QImage::Format_RGB32);
//   { CQtDC dc(&image); view.OnDraw(&dc); }            // an image; painted on until
//                                                      // the DC is destroyed
//   void MyWidget::paintEvent(QPaintEvent*)
//   { CQtDC dc(this); m_owner->OnDraw(&dc); }          // a widget, inside paintEvent
//   QPrinter printer; printer.setOutputFileName("x.pdf");
//   { CQtDC dc(&printer); ... dc.NewPage(); ... }      // a printer: IsPrinting TRUE
//   CQtDC dc(&painter);                                // a painter begun elsewhere,
//                                                      // borrowed, not ended
//
// A memory device comes from CreateCompatibleDC() of any of them and draws into the
// bitmap selected into it (SelectObject), as GDI's memory DCs do; pixels it paints
// get alpha 0, as GDI leaves them.
//
// Win32 defaults hold: text colour black, background white and OPAQUE, TextOut's y
// is the top of the text cell, LineTo leaves out its end point. Coordinates are device
// pixels (the painter's transform, if a borrowed painter has one, applies on top).
#pragma once

#include <Zel260/platform/CDC.h>

#include <QFont>
#include <QImage>

#include <memory>

class QPaintDevice;
class QPainter;
class QPrinter;
class QWidget;

class CQtDC : public CDC {
public:
    explicit CQtDC(QImage* image);
    explicit CQtDC(QWidget* widget);
    explicit CQtDC(QPrinter* printer);
    explicit CQtDC(QPainter* painter);
    ~CQtDC() override;
    CQtDC(const CQtDC&) = delete;
    CQtDC& operator=(const CQtDC&) = delete;

    // The painter, null for a memory device without a bitmap.
    QPainter* painter() const;
    // The font of text and extents; starts as the device's default font.
    void SetFont(const QFont& font);
    QFont GetFont() const;
    COLORREF GetBkColor() const { return m_bkColour; }
    int GetBkMode() const { return m_bkMode; }
    // Ends a printed page and starts the next; FALSE on any other device.
    BOOL NewPage();

    CSize GetTextExtent(const char* text, int length) const override;
    using CDC::GetTextExtent;
    BOOL TextOut(int x, int y, const char* text, int length) override;
    COLORREF SetTextColor(COLORREF colour) override;
    COLORREF GetTextColor() const override;
    COLORREF SetBkColor(COLORREF colour) override;
    int SetBkMode(int mode) override;

    void FillSolidRect(const RECT& rect, COLORREF colour) override;
    CPoint MoveTo(int x, int y) override;
    BOOL LineTo(int x, int y) override;
    COLORREF SetPixel(int x, int y, COLORREF colour) override;
    COLORREF GetPixel(int x, int y) const override;
    BOOL PatBlt(int x, int y, int width, int height, DWORD rop) override;
    void DrawFocusRect(const RECT& rect) override;

    int GetClipBox(RECT* rect) const override;
    int IntersectClipRect(const RECT& rect) override;
    int SelectClipRgn(const RECT* rect) override;

    int SetDIBitsToDevice(int xDest, int yDest, DWORD width, DWORD height, int xSrc, int ySrc, UINT startScan,
                          UINT scanLines, const void* bits, const BITMAPINFO* info, UINT colourUse) override;
    int StretchDIBits(int xDest, int yDest, int destWidth, int destHeight, int xSrc, int ySrc, int srcWidth,
                      int srcHeight, const void* bits, const BITMAPINFO* info, UINT colourUse, DWORD rop) override;
    // Sources: another CQtDC over an image, a memory bitmap or a widget (grabbed),
    // or this device itself. SRCCOPY, SRCPAINT, SRCAND, SRCINVERT, and without a
    // source the pattern operations of PatBlt.
    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int xSrc, int ySrc, DWORD rop) override;

    int GetDeviceCaps(int index) const override;
    BOOL IsPrinting() const override;

    std::unique_ptr<CDC> CreateCompatibleDC() override;
    HBITMAP__* SelectObject(HBITMAP__* bitmap) override;

    // The device's pixels in w by h at x, y (top-down, 32-bit), or a null image for
    // a device that can't be read (a printer).
    QImage grabPixels(int x, int y, int width, int height) const;

private:
    struct Memory {};
    explicit CQtDC(Memory);
    void begin(QPaintDevice* device);
    void end();
    QImage* readableImage() const;

    QPainter* m_painter = nullptr;
    bool m_ownsPainter = false;
    QImage* m_image = nullptr;   // the image painted on, if any
    QWidget* m_widget = nullptr;
    QPrinter* m_printer = nullptr;
    bool m_memory = false;
    HBITMAP__* m_selected = nullptr;
    QImage m_selectedImage;      // over the selected bitmap's pixels, or a copy of them
    bool m_selectedIsCopy = false;
    COLORREF m_textColour = 0;
    COLORREF m_bkColour = 0xFFFFFF;
    int m_bkMode = OPAQUE;
    CPoint m_pos;
    QFont m_font;
};
