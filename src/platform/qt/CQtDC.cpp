#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/qt/CQtDC.h>

#include <QFontMetrics>
#include <QPainter>
#include <QPrinter>
#include <QWidget>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

QColor toQColor(COLORREF c)
{
    return QColor(GetRValue(c), GetGValue(c), GetBValue(c));
}

COLORREF toColorRef(QRgb c)
{
    return RGB(static_cast<BYTE>(qRed(c)), static_cast<BYTE>(qGreen(c)), static_cast<BYTE>(qBlue(c)));
}

// Raster operations that combine source and destination. GDI ignores alpha, so
// sources are opaque images and the plain copy replaces the destination.
bool setRop(QPainter* p, DWORD rop)
{
    switch (rop) {
    case SRCCOPY: p->setCompositionMode(QPainter::CompositionMode_Source); return true;
    case SRCPAINT: p->setCompositionMode(QPainter::RasterOp_SourceOrDestination); return true;
    case SRCAND: p->setCompositionMode(QPainter::RasterOp_SourceAndDestination); return true;
    case SRCINVERT: p->setCompositionMode(QPainter::RasterOp_SourceXorDestination); return true;
    default: return false;
    }
}

// A top-down 32-bit view of a DIB's picture; copies only for bottom-up rows.
QImage dibImage(const void* bits, const BITMAPINFO* info)
{
    if (!bits || !info)
        return QImage();
    const BITMAPINFOHEADER& h = info->bmiHeader;
    if (h.biBitCount != 32 || h.biCompression != BI_RGB || h.biWidth < 1 || h.biHeight == 0 || h.biHeight == INT32_MIN)
        return QImage();
    // A row's byte count must be an int for the view.
    if (h.biWidth > INT_MAX / 4)
        return QImage();
    const int w = h.biWidth, ht = h.biHeight < 0 ? -h.biHeight : h.biHeight;
    QImage view(static_cast<const uchar*>(bits), w, ht, w * 4, QImage::Format_RGB32);
    return h.biHeight < 0 ? view : view.mirrored(false, true);
}

// Device and picture positions are int, and a rectangle's far edge (one past its
// last pixel, as RECT keeps it) must be one too: a run of `extent` (>= 1) pixels
// from `origin` that ends beyond has no place. Qt's rectangles also step one
// before their origin, so INT_MIN is no origin either.
bool fitsInt(long long origin, long long extent)
{
    return extent >= 1 && extent <= INT_MAX && origin > INT_MIN && origin + extent <= INT_MAX;
}

// The part of the rectangle l, t, w, h (64-bit) that lies on the painter's device,
// when the painter maps device pixels one to one; the whole rectangle otherwise.
// Qt's own arithmetic isn't safe for positions far outside the device, and only
// that part can show anyway. Empty when nothing of it is on the device.
QRect onDevice(const QPainter* p, long long l, long long t, long long w, long long h)
{
    if (!p->transform().isIdentity())
        return QRect(static_cast<int>(l), static_cast<int>(t), static_cast<int>(w), static_cast<int>(h));
    const long long r = std::min<long long>(l + w, p->device()->width());
    const long long b = std::min<long long>(t + h, p->device()->height());
    l = std::max(l, 0LL);
    t = std::max(t, 0LL);
    if (l >= r || t >= b)
        return QRect();
    return QRect(static_cast<int>(l), static_cast<int>(t), static_cast<int>(r - l), static_cast<int>(b - t));
}

// The source rectangle of a DIB call in top-down picture rows: a bottom-up DIB
// counts ySrc from its bottom row. False when it has no int position.
bool dibSourceRect(const BITMAPINFO* info, int xSrc, int ySrc, int w, int h, QRect& out)
{
    const long long ht = info->bmiHeader.biHeight < 0 ? -static_cast<long long>(info->bmiHeader.biHeight)
                                                      : info->bmiHeader.biHeight;
    const long long top = info->bmiHeader.biHeight < 0 ? ySrc : ht - ySrc - h;
    if (!fitsInt(xSrc, w) || !fitsInt(top, h))
        return false;
    out = QRect(xSrc, static_cast<int>(top), w, h);
    return true;
}

class PainterState {
public:
    explicit PainterState(QPainter* p) : m_p(p) { m_p->save(); }
    ~PainterState() { m_p->restore(); }

private:
    QPainter* m_p;
};

} // namespace

CQtDC::CQtDC(QImage* image) : m_image(image)
{
    if (image && !image->isNull())
        begin(image);
}

CQtDC::CQtDC(QWidget* widget) : m_widget(widget)
{
    if (widget)
        begin(widget);
}

CQtDC::CQtDC(QPrinter* printer) : m_printer(printer)
{
    if (printer)
        begin(printer);
}

CQtDC::CQtDC(QPainter* painter) : m_painter(painter)
{
    if (painter && painter->device()) {
        QPaintDevice* d = painter->device();
        if (d->devType() == QInternal::Image)
            m_image = static_cast<QImage*>(d);
        else if (d->devType() == QInternal::Widget)
            m_widget = static_cast<QWidget*>(d);
        else if (d->devType() == QInternal::Printer)
            m_printer = static_cast<QPrinter*>(d);
        m_font = painter->font();
    }
}

CQtDC::CQtDC(Memory) : m_memory(true) {}

CQtDC::~CQtDC()
{
    if (m_memory)
        SelectObject(nullptr);
    end();
}

void CQtDC::begin(QPaintDevice* device)
{
    m_painter = new QPainter;
    m_ownsPainter = true;
    if (!m_painter->begin(device)) {
        delete m_painter;
        m_painter = nullptr;
        m_ownsPainter = false;
        return;
    }
    m_font = m_painter->font();
}

void CQtDC::end()
{
    if (m_ownsPainter && m_painter) {
        m_painter->end();
        delete m_painter;
    }
    m_painter = nullptr;
    m_ownsPainter = false;
}

QPainter* CQtDC::painter() const
{
    return m_painter;
}

void CQtDC::SetFont(const QFont& font)
{
    m_font = font;
}

QFont CQtDC::GetFont() const
{
    return m_font;
}

BOOL CQtDC::NewPage()
{
    return m_printer && m_painter && m_printer->newPage();
}

QImage* CQtDC::readableImage() const
{
    if (m_memory)
        return m_selected ? const_cast<QImage*>(&m_selectedImage) : nullptr;
    return m_image;
}

// --- Text -----------------------------------------------------------------------

CSize CQtDC::GetTextExtent(const char* text, int length) const
{
    if (!text || length <= 0)
        return CSize(0, QFontMetrics(m_font, m_painter ? m_painter->device() : nullptr).height());
    QFontMetrics fm(m_font, m_painter ? m_painter->device() : nullptr);
    const QString s = QString::fromUtf8(text, length);
    return CSize(fm.horizontalAdvance(s), fm.height());
}

BOOL CQtDC::TextOut(int x, int y, const char* text, int length)
{
    if (!m_painter || !text || length < 0)
        return FALSE;
    const QString s = QString::fromUtf8(text, length);
    PainterState keep(m_painter);
    m_painter->setFont(m_font);
    QFontMetrics fm(m_font, m_painter->device());
    if (m_bkMode == OPAQUE)
        m_painter->fillRect(QRect(x, y, fm.horizontalAdvance(s), fm.height()), toQColor(m_bkColour));
    m_painter->setPen(toQColor(m_textColour));
    m_painter->drawText(QPoint(x, y + fm.ascent()), s);
    return TRUE;
}

COLORREF CQtDC::SetTextColor(COLORREF colour)
{
    const COLORREF old = m_textColour;
    m_textColour = colour & 0xFFFFFF;
    return old;
}

COLORREF CQtDC::GetTextColor() const
{
    return m_textColour;
}

COLORREF CQtDC::SetBkColor(COLORREF colour)
{
    const COLORREF old = m_bkColour;
    m_bkColour = colour & 0xFFFFFF;
    return old;
}

int CQtDC::SetBkMode(int mode)
{
    const int old = m_bkMode;
    if (mode == TRANSPARENT || mode == OPAQUE)
        m_bkMode = mode;
    return old;
}

// --- Drawing --------------------------------------------------------------------

void CQtDC::FillSolidRect(const RECT& r, COLORREF colour)
{
    if (!m_painter)
        return;
    PainterState keep(m_painter);
    m_painter->setCompositionMode(QPainter::CompositionMode_Source);
    m_painter->fillRect(QRect(QPoint(r.left, r.top), QPoint(r.right - 1, r.bottom - 1)), toQColor(colour));
}

CPoint CQtDC::MoveTo(int x, int y)
{
    const CPoint old = m_pos;
    m_pos = CPoint(x, y);
    return old;
}

BOOL CQtDC::LineTo(int x, int y)
{
    if (!m_painter)
        return FALSE;
    const QPoint from(m_pos.x, m_pos.y), to(x, y);
    m_pos = CPoint(x, y);
    if (from == to)
        return TRUE;
    // GDI draws up to but not including the end point: stop one pixel short along
    // the major axis.
    const int dx = to.x() - from.x(), dy = to.y() - from.y();
    QPoint last = to;
    if (std::abs(dx) >= std::abs(dy))
        last.rx() -= dx > 0 ? 1 : -1;
    else
        last.ry() -= dy > 0 ? 1 : -1;
    PainterState keep(m_painter);
    m_painter->setPen(QPen(Qt::black, 0));
    m_painter->setRenderHint(QPainter::Antialiasing, false);
    m_painter->drawLine(from, last);
    return TRUE;
}

COLORREF CQtDC::SetPixel(int x, int y, COLORREF colour)
{
    QImage* img = readableImage();
    if (img && m_painter && m_painter->transform().isIdentity()) {
        if (!img->valid(x, y))
            return CLR_INVALID;
        img->setPixel(x, y, qRgb(GetRValue(colour), GetGValue(colour), GetBValue(colour)));
        return colour & 0xFFFFFF;
    }
    if (!m_painter)
        return CLR_INVALID;
    PainterState keep(m_painter);
    m_painter->setCompositionMode(QPainter::CompositionMode_Source);
    m_painter->fillRect(QRect(x, y, 1, 1), toQColor(colour));
    return colour & 0xFFFFFF;
}

COLORREF CQtDC::GetPixel(int x, int y) const
{
    if (QImage* img = readableImage())
        return img->valid(x, y) ? toColorRef(img->pixel(x, y)) : CLR_INVALID;
    const QImage grabbed = grabPixels(x, y, 1, 1);
    return grabbed.isNull() ? CLR_INVALID : toColorRef(grabbed.pixel(0, 0));
}

BOOL CQtDC::PatBlt(int x, int y, int width, int height, DWORD rop)
{
    if (!m_painter)
        return FALSE;
    const QRect r = QRect(x, y, width, height).normalized();
    PainterState keep(m_painter);
    switch (rop) {
    case BLACKNESS:
    case PATCOPY: // the default brush is black
        m_painter->setCompositionMode(QPainter::CompositionMode_Source);
        m_painter->fillRect(r, Qt::black);
        return TRUE;
    case WHITENESS:
        m_painter->setCompositionMode(QPainter::CompositionMode_Source);
        m_painter->fillRect(r, Qt::white);
        return TRUE;
    case DSTINVERT:
        m_painter->setCompositionMode(QPainter::RasterOp_NotDestination);
        m_painter->fillRect(r, Qt::white);
        return TRUE;
    default: return FALSE;
    }
}

void CQtDC::DrawFocusRect(const RECT& r)
{
    if (!m_painter)
        return;
    PainterState keep(m_painter);
    // Drawn by XOR so that a second call removes it, as focus rectangles are.
    m_painter->setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    QPen pen(Qt::white, 0, Qt::DotLine);
    m_painter->setPen(pen);
    m_painter->setBrush(Qt::NoBrush);
    m_painter->drawRect(QRect(QPoint(r.left, r.top), QPoint(r.right - 1, r.bottom - 1)));
}

// --- Clipping -------------------------------------------------------------------

int CQtDC::GetClipBox(RECT* rect) const
{
    if (!rect || !m_painter)
        return 0; // ERROR
    QRect box = m_painter->hasClipping() ? m_painter->clipBoundingRect().toAlignedRect()
                                         : QRect(0, 0, m_painter->device()->width(), m_painter->device()->height());
    *rect = RECT{box.left(), box.top(), box.right() + 1, box.bottom() + 1};
    if (box.isEmpty())
        return 1; // NULLREGION
    return m_painter->hasClipping() && m_painter->clipRegion().rectCount() > 1 ? 3 : 2;
}

int CQtDC::IntersectClipRect(const RECT& r)
{
    if (!m_painter)
        return 0;
    const QRect q(QPoint(r.left, r.top), QPoint(r.right - 1, r.bottom - 1));
    if (m_painter->hasClipping())
        m_painter->setClipRect(q, Qt::IntersectClip);
    else
        m_painter->setClipRect(q);
    RECT box;
    return GetClipBox(&box);
}

int CQtDC::SelectClipRgn(const RECT* r)
{
    if (!m_painter)
        return 0;
    if (!r) {
        m_painter->setClipping(false);
        return 2; // the whole device
    }
    const QRect q(QPoint(r->left, r->top), QPoint(r->right - 1, r->bottom - 1));
    m_painter->setClipRect(q.isValid() ? q : QRect(), Qt::ReplaceClip);
    return q.isValid() ? 2 : 1;
}

// --- Bitmaps --------------------------------------------------------------------

int CQtDC::SetDIBitsToDevice(int xDest, int yDest, DWORD width, DWORD height, int xSrc, int ySrc, UINT startScan,
                             UINT scanLines, const void* bits, const BITMAPINFO* info, UINT colourUse)
{
    if (!m_painter || colourUse != DIB_RGB_COLORS || width == 0 || height == 0 || width > INT32_MAX ||
        height > INT32_MAX)
        return 0;
    QRect wanted;
    if (!fitsInt(xDest, width) || !fitsInt(yDest, height) ||
        !dibSourceRect(info, xSrc, ySrc, static_cast<int>(width), static_cast<int>(height), wanted))
        return 0;
    const QImage picture = dibImage(bits, info);
    if (picture.isNull())
        return 0;
    const QRect src = wanted & picture.rect();
    if (src.isEmpty())
        return 0;
    const long long x = static_cast<long long>(xDest) + src.left() - wanted.left();
    const long long y = static_cast<long long>(yDest) + src.top() - wanted.top();
    const QRect shown = onDevice(m_painter, x, y, src.width(), src.height());
    if (!shown.isEmpty()) {
        PainterState keep(m_painter);
        m_painter->setCompositionMode(QPainter::CompositionMode_Source);
        m_painter->drawImage(shown.topLeft(), picture,
                             QRect(static_cast<int>(src.left() + shown.left() - x),
                                   static_cast<int>(src.top() + shown.top() - y), shown.width(), shown.height()));
    }
    return static_cast<int>(std::min<UINT>(scanLines, static_cast<UINT>(picture.height()) - std::min<UINT>(startScan, picture.height())));
}

int CQtDC::StretchDIBits(int xDest, int yDest, int destWidth, int destHeight, int xSrc, int ySrc, int srcWidth,
                         int srcHeight, const void* bits, const BITMAPINFO* info, UINT colourUse, DWORD rop)
{
    if (!m_painter || colourUse != DIB_RGB_COLORS || destWidth == 0 || destHeight == 0 || srcWidth <= 0 ||
        srcHeight <= 0)
        return 0;
    // Negative target sizes mirror, as in GDI; INT_MIN has no mirror image, and a
    // target whose far edge passes int can't be placed.
    const long long left = std::min<long long>(xDest, static_cast<long long>(xDest) + destWidth);
    const long long top = std::min<long long>(yDest, static_cast<long long>(yDest) + destHeight);
    const long long targetWidth = std::llabs(destWidth), targetHeight = std::llabs(destHeight);
    QRect src;
    if (!fitsInt(left, targetWidth) || !fitsInt(top, targetHeight) ||
        !dibSourceRect(info, xSrc, ySrc, srcWidth, srcHeight, src))
        return 0;
    const QImage picture = dibImage(bits, info);
    if (picture.isNull())
        return 0;
    if ((src & picture.rect()).isEmpty())
        return 0;
    // Parts of the source rectangle outside the picture come out black, as they
    // read nothing.
    QImage part(src.size(), QImage::Format_RGB32);
    if (part.isNull())
        return 0;
    part.fill(Qt::black);
    {
        QPainter p(&part);
        p.setCompositionMode(QPainter::CompositionMode_Source);
        p.drawImage(QPoint(0, 0), picture, src);
    }
    QImage oriented = part.mirrored(destWidth < 0, destHeight < 0);
    const QRect shown = onDevice(m_painter, left, top, targetWidth, targetHeight);
    PainterState keep(m_painter);
    if (!setRop(m_painter, rop))
        return 0;
    if (shown.isEmpty())
        return srcHeight;
    // The part of the picture that falls on the shown part of the target.
    const double fx = static_cast<double>(oriented.width()) / static_cast<double>(targetWidth);
    const double fy = static_cast<double>(oriented.height()) / static_cast<double>(targetHeight);
    const QRectF from((shown.left() - left) * fx, (shown.top() - top) * fy, shown.width() * fx, shown.height() * fy);
    m_painter->setRenderHint(QPainter::SmoothPixmapTransform, GetStretchBltMode() == HALFTONE);
    m_painter->drawImage(QRectF(shown), oriented, from);
    return srcHeight;
}

QImage CQtDC::grabPixels(int x, int y, int width, int height) const
{
    QImage* img = readableImage();
    if (width <= 0 || height <= 0 || (!img && !m_widget))
        return QImage();
    QImage out(width, height, QImage::Format_RGB32);
    if (out.isNull())
        return QImage();
    out.fill(Qt::black);
    // Only the part the device has is read, and it lands where it lies in the
    // rectangle asked for. Edges are found in 64 bits: that rectangle may reach past
    // int.
    const QSize have = img ? img->size() : m_widget->size();
    const long long l = std::max(x, 0), t = std::max(y, 0);
    const long long r = std::min<long long>(static_cast<long long>(x) + width, have.width());
    const long long b = std::min<long long>(static_cast<long long>(y) + height, have.height());
    if (l >= r || t >= b)
        return out;
    const QRect part(static_cast<int>(l), static_cast<int>(t), static_cast<int>(r - l), static_cast<int>(b - t));
    QPainter p(&out);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    const QPoint at(static_cast<int>(l - x), static_cast<int>(t - y));
    if (img)
        p.drawImage(at, img->convertToFormat(QImage::Format_RGB32), part);
    else
        p.drawImage(at, m_widget->grab(part).toImage().convertToFormat(QImage::Format_RGB32));
    return out;
}

BOOL CQtDC::BitBlt(int x, int y, int width, int height, CDC* source, int xSrc, int ySrc, DWORD rop)
{
    if (!m_painter)
        return FALSE;
    if (!source)
        return PatBlt(x, y, width, height, rop);
    auto* qt = dynamic_cast<CQtDC*>(source);
    if (!qt || !fitsInt(x, width) || !fitsInt(y, height))
        return FALSE;
    const QImage pixels = qt->grabPixels(xSrc, ySrc, width, height);
    if (pixels.isNull())
        return FALSE;
    PainterState keep(m_painter);
    if (!setRop(m_painter, rop))
        return FALSE;
    m_painter->drawImage(QPoint(x, y), pixels);
    return TRUE;
}

int CQtDC::GetDeviceCaps(int index) const
{
    const QPaintDevice* d = m_painter ? m_painter->device() : nullptr;
    if (!d)
        return 0;
    switch (index) {
    case HORZSIZE: return d->widthMM();
    case VERTSIZE: return d->heightMM();
    case HORZRES: return d->width();
    case VERTRES: return d->height();
    case BITSPIXEL: return m_printer ? 24 : 32;
    case LOGPIXELSX: return d->logicalDpiX();
    case LOGPIXELSY: return d->logicalDpiY();
    default: break;
    }
    if (!m_printer)
        return 0;
    const QRect paper = m_printer->paperRect(QPrinter::DevicePixel).toAlignedRect();
    const QRect page = m_printer->pageRect(QPrinter::DevicePixel).toAlignedRect();
    switch (index) {
    case PHYSICALWIDTH: return paper.width();
    case PHYSICALHEIGHT: return paper.height();
    case PHYSICALOFFSETX: return page.left() - paper.left();
    case PHYSICALOFFSETY: return page.top() - paper.top();
    default: return 0;
    }
}

BOOL CQtDC::IsPrinting() const
{
    return m_printer != nullptr;
}

std::unique_ptr<CDC> CQtDC::CreateCompatibleDC()
{
    return std::unique_ptr<CDC>(new CQtDC(Memory{}));
}

HBITMAP__* CQtDC::SelectObject(HBITMAP__* bitmap)
{
    if (!m_memory)
        return nullptr;
    HBITMAP__* old = m_selected;
    if (m_selected) {
        end();
        // GDI leaves alpha 0 in what it paints; keep the bitmap in that form.
        for (int y = 0; y < m_selectedImage.height(); ++y) {
            auto* row = reinterpret_cast<QRgb*>(m_selectedImage.scanLine(y));
            for (int x = 0; x < m_selectedImage.width(); ++x)
                row[x] &= 0x00FFFFFFu;
        }
        if (m_selectedIsCopy)
            for (int y = 0; y < m_selectedImage.height(); ++y)
                if (DWORD* row = ZelBitmapScanLine(m_selected, y))
                    std::memcpy(row, m_selectedImage.constScanLine(y), static_cast<std::size_t>(m_selectedImage.width()) * 4);
        m_selectedImage = QImage();
        m_selected = nullptr;
    }
    BITMAP bm;
    if (bitmap && GetObject(bitmap, sizeof bm, &bm)) {
        DWORD* first = ZelBitmapScanLine(bitmap, 0);
        DWORD* second = bm.bmHeight > 1 ? ZelBitmapScanLine(bitmap, 1) : first + bm.bmWidth;
        m_selectedIsCopy = second != first + bm.bmWidth;
        if (!m_selectedIsCopy) { // rows top-down without gap: paint in place
            m_selectedImage = QImage(reinterpret_cast<uchar*>(first), bm.bmWidth, bm.bmHeight, bm.bmWidth * 4,
                                     QImage::Format_RGB32);
        } else {
            m_selectedImage = QImage(bm.bmWidth, bm.bmHeight, QImage::Format_RGB32);
            for (int y = 0; y < bm.bmHeight; ++y)
                std::memcpy(m_selectedImage.scanLine(y), ZelBitmapScanLine(bitmap, y), static_cast<std::size_t>(bm.bmWidth) * 4);
        }
        m_selected = bitmap;
        begin(&m_selectedImage);
    }
    return old;
}
