#include <Zel260/graphics/CZelCDCHelper.h>
#include <Zel260/platform/SysColors.h>

#include <algorithm>
#include <cmath>

namespace {

struct Paper {
    short code;
    double width;  // inches
    double height;
};

constexpr double mm(double v) { return v / 25.4; }

// The common paper codes of printer drivers.
constexpr Paper kPapers[] = {
    {1, 8.5, 11},            // Letter
    {2, 8.5, 11},            // Letter small
    {3, 11, 17},             // Tabloid
    {4, 17, 11},             // Ledger
    {5, 8.5, 14},            // Legal
    {6, 5.5, 8.5},           // Statement
    {7, 7.25, 10.5},         // Executive
    {8, mm(297), mm(420)},   // A3
    {9, mm(210), mm(297)},   // A4
    {10, mm(210), mm(297)},  // A4 small
    {11, mm(148), mm(210)},  // A5
    {12, mm(250), mm(354)},  // B4 (JIS)
    {13, mm(182), mm(257)},  // B5 (JIS)
    {14, 8.5, 13},           // Folio
    {15, mm(215), mm(275)},  // Quarto
    {16, 10, 14},            // 10x14
    {17, 11, 17},            // 11x17
    {18, 8.5, 11},           // Note
    {19, 3.875, 8.875},      // Envelope #9
    {20, 4.125, 9.5},        // Envelope #10
    {27, mm(110), mm(220)},  // Envelope DL
    {28, mm(162), mm(229)},  // Envelope C5
    {66, mm(420), mm(594)},  // A2
    {70, mm(105), mm(148)},  // A6
};

// A length in pixels rounded up to an even number, so that half of it is whole.
long long evenCeil(double v)
{
    long long n = static_cast<long long>(std::ceil(v));
    if (n % 2 != 0)
        ++n;
    return n;
}

} // namespace

CRect CZelCDCHelper::SelectClipRect(CDC* dc, CRect rect)
{
    if (!dc)
        return CRect();
    RECT box{};
    const int kind = dc->GetClipBox(&box);
    CRect before = kind <= 1 ? CRect() : CRect(box);
    if (dc->SelectClipRgn(&rect) == 0)
        dc->IntersectClipRect(rect);
    return before;
}

namespace {

// PatBlt with the halftone brush and PATINVERT: the pattern is a chequer of white
// and black fixed to the device's origin, so the pixels where x + y is even are
// inverted and the others stay. The device has no brushes, so those pixels are
// inverted one by one along the one-pixel line.
void halftoneInvertLine(CDC* dc, int x, int y, int width, int height)
{
    if (height == 1) {
        for (int i = ((x + y) & 1) ? 1 : 0; i < width; i += 2)
            dc->PatBlt(x + i, y, 1, 1, DSTINVERT);
    } else {
        for (int j = ((x + y) & 1) ? 1 : 0; j < height; j += 2)
            dc->PatBlt(x, y + j, 1, 1, DSTINVERT);
    }
}

} // namespace

void CZelCDCHelper::DrawRubberBand(CDC* dc, CRect rect)
{
    if (!dc)
        return;
    rect.NormalizeRect();
    if (rect.IsRectEmpty())
        return;
    const int w = rect.Width();
    const int h = rect.Height();
    // Inversion is its own inverse: the same band drawn again erases itself.
    halftoneInvertLine(dc, rect.left, rect.top, w, 1);
    halftoneInvertLine(dc, rect.right - 1, rect.top, 1, h);
    halftoneInvertLine(dc, rect.left, rect.bottom - 1, w, 1);
    halftoneInvertLine(dc, rect.left, rect.top, 1, h);
}

void CZelCDCHelper::MakeDlgDisabled(CDC* dc, CRect rect)
{
    if (!dc)
        return;
    rect.NormalizeRect();
    const COLORREF face = GetSysColor(15);
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left + ((y - rect.top) & 1); x < rect.right; x += 2)
            dc->SetPixel(x, y, face);
}

BOOL CZelCDCHelper::GetPaperSizeInInches(const DEVMODE* mode, double& width, double& height)
{
    width = height = 0;
    if (!mode)
        return FALSE;
    for (const Paper& p : kPapers) {
        if (p.code == mode->dmPaperSize) {
            width = p.width;
            height = p.height;
            return TRUE;
        }
    }
    if (mode->dmPaperWidth > 0 && mode->dmPaperLength > 0) {
        width = mode->dmPaperWidth / 254.0;
        height = mode->dmPaperLength / 254.0;
        return TRUE;
    }
    return FALSE;
}

BOOL CZelCDCHelper::GetPaperSizeInInches(const CPrintInfo* info, double& width, double& height)
{
    if (!info) {
        width = height = 0;
        return FALSE;
    }
    return GetPaperSizeInInches(info->GetDevMode(), width, height);
}

CRect CZelCDCHelper::CalculatePrintArea(CDC* dc, double paperWidth, double paperHeight, CRect margins, int metric)
{
    if (!dc)
        return CRect();
    const long long divisor = metric ? 2540 : 1000;
    const long long px = dc->GetDeviceCaps(LOGPIXELSX);
    const long long py = dc->GetDeviceCaps(LOGPIXELSY);
    const long long width = dc->GetDeviceCaps(HORZRES);
    const long long height = dc->GetDeviceCaps(VERTRES);
    const long long ml = margins.left * px / divisor;
    const long long mt = margins.top * py / divisor;
    const long long mr = margins.right * px / divisor;
    const long long mb = margins.bottom * py / divisor;
    const long long bx = evenCeil(paperWidth * static_cast<double>(px) - static_cast<double>(width)) / 2;
    const long long by = evenCeil(paperHeight * static_cast<double>(py) - static_cast<double>(height)) / 2;
    const long long left = std::max(ml, bx) - bx;
    const long long top = std::max(mt, by) - by;
    const long long right = bx - std::max(mr, bx) + width;
    const long long bottom = by - std::max(mb, by) + height;
    auto clamp = [](long long v) { return static_cast<int>(std::clamp<long long>(v, INT32_MIN, INT32_MAX)); };
    return CRect(clamp(left), clamp(top), clamp(right), clamp(bottom));
}
