#include <Zel260/graphics/CZelDrawDib.h>

#include <chrono>

struct HDRAWDIB__ {
    LONG draws = 0;
    std::chrono::steady_clock::duration drawTime{};
};

CZelDrawDib::CZelDrawDib() = default;

CZelDrawDib::~CZelDrawDib()
{
    Close();
}

BOOL CZelDrawDib::Open()
{
    if (!m_session)
        m_session = new HDRAWDIB__;
    return TRUE;
}

BOOL CZelDrawDib::Close()
{
    if (!m_session)
        return FALSE;
    delete m_session;
    m_session = nullptr;
    return TRUE;
}

BOOL CZelDrawDib::Begin(CDC* dc, int dxDst, int dyDst, BITMAPINFOHEADER* info, int, int, UINT)
{
    return m_session && dc && info && dxDst >= 0 && dyDst >= 0;
}

BOOL CZelDrawDib::Begin(CDC* dc, const CRect& dst, BITMAPINFOHEADER* info, const CRect& src, UINT flags)
{
    return Begin(dc, dst.Width(), dst.Height(), info, src.Width(), src.Height(), flags);
}

BOOL CZelDrawDib::End()
{
    return m_session != nullptr;
}

BOOL CZelDrawDib::Draw(CDC* dc, int xDst, int yDst, int dxDst, int dyDst, BITMAPINFOHEADER* info, void* bits,
                       int xSrc, int ySrc, int dxSrc, int dySrc, UINT flags)
{
    if (!m_session || !dc || !info || !bits || dc->IsPrinting())
        return FALSE;
    const auto start = std::chrono::steady_clock::now();
    const long long height = info->biHeight < 0 ? -static_cast<long long>(info->biHeight) : info->biHeight;
    // The session takes top-down source coordinates; a bottom-up DIB counts from
    // its bottom row. A row that can't be named in int can't be drawn.
    const long long sy = info->biHeight < 0 ? ySrc : height - ySrc - dySrc;
    if (sy < INT32_MIN || sy > INT32_MAX)
        return FALSE;
    BITMAPINFO whole{};
    whole.bmiHeader = *info;
    const int oldMode = dc->SetStretchBltMode((flags & DDF_HALFTONE) ? HALFTONE : COLORONCOLOR);
    const int lines =
        dc->StretchDIBits(xDst, yDst, dxDst, dyDst, xSrc, static_cast<int>(sy), dxSrc, dySrc, bits, &whole,
                          DIB_RGB_COLORS, SRCCOPY);
    dc->SetStretchBltMode(oldMode);
    ++m_session->draws;
    m_session->drawTime += std::chrono::steady_clock::now() - start;
    return lines != 0;
}

BOOL CZelDrawDib::Draw(CDC* dc, const CRect& dst, BITMAPINFOHEADER* info, void* bits, const CRect& src, UINT flags)
{
    return Draw(dc, dst.left, dst.top, dst.Width(), dst.Height(), info, bits, src.left, src.top, src.Width(),
                src.Height(), flags);
}

void* CZelDrawDib::GetBuffer(BITMAPINFOHEADER*, DWORD, UINT)
{
    return nullptr;
}

BOOL CZelDrawDib::ProfileDisplay(BITMAPINFOHEADER*)
{
    return FALSE;
}

HPALETTE CZelDrawDib::GetPalette()
{
    return nullptr;
}

BOOL CZelDrawDib::SetPalette(HPALETTE)
{
    return FALSE;
}

BOOL CZelDrawDib::ChangePalette(int, int, PALETTEENTRY*)
{
    return FALSE;
}

UINT CZelDrawDib::RealizePalette(CDC*, BOOL)
{
    return 0;
}

BOOL CZelDrawDib::Start(LONG)
{
    return m_session != nullptr;
}

BOOL CZelDrawDib::Stop()
{
    return m_session != nullptr;
}

BOOL CZelDrawDib::Time(DRAWDIBTIME* time)
{
    if (!m_session || !time)
        return FALSE;
    *time = DRAWDIBTIME{};
    time->timeCount = m_session->draws;
    time->timeDraw = static_cast<LONG>(
        std::chrono::duration_cast<std::chrono::milliseconds>(m_session->drawTime).count());
    return TRUE;
}

int CZelDrawDib::Fallback(CDC* dc, const CZelDib* dib, int x, int y, int cx, int cy, const RECT* src)
{
    const int oldMode = dc->SetStretchBltMode(m_stretchMode);
    CPoint oldOrigin;
    if (m_stretchMode == HALFTONE)
        oldOrigin = dc->SetBrushOrg(0, 0);
    // Position and size go on as they are: a target rectangle made of them could
    // have its far edge beyond int.
    const BOOL ok = src ? dib->CopyToDCStretchRect(dc, x, y, cx, cy, src->left, src->top, src->right - src->left,
                                                   src->bottom - src->top, SRCCOPY)
                        : dib->CopyToDCStretch(dc, x, y, cx, cy, SRCCOPY);
    if (m_stretchMode == HALFTONE && oldOrigin != CPoint(0, 0))
        dc->SetBrushOrg(oldOrigin.x, oldOrigin.y);
    dc->SetStretchBltMode(oldMode);
    return ok ? 1 : 0;
}

int CZelDrawDib::DrawDib(CDC* dc, const CZelDib* dib, int x, int y, int cx, int cy, UINT flags)
{
    if (!dc || !dib || !dib->GetCrBits())
        return 0;
    if (m_lastDraw && !dc->IsPrinting()) {
        m_lastDraw = Draw(dc, x, y, cx, cy, const_cast<BITMAPINFOHEADER*>(dib->GetBitmapInfoHeader()),
                          dib->GetCrBits(), 0, 0, dib->GetWidth(), dib->GetHeight(), flags);
        if (m_lastDraw)
            return 1;
    }
    return Fallback(dc, dib, x, y, cx, cy, nullptr);
}

int CZelDrawDib::DrawDibRect(CDC* dc, const CZelDib* dib, int x, int y, int cx, int cy, int sx, int sy, int sw,
                             int sh, UINT flags)
{
    if (!dc || !dib || !dib->GetCrBits() || !dib->ClipXYWH(sx, sy, sw, sh))
        return 0;
    if (m_lastDraw && !dc->IsPrinting()) {
        m_lastDraw = Draw(dc, x, y, cx, cy, const_cast<BITMAPINFOHEADER*>(dib->GetBitmapInfoHeader()),
                          dib->GetCrBits(), sx, sy, sw, sh, flags);
        if (m_lastDraw)
            return 1;
    }
    // Clipped to the image, so these edges fit.
    const RECT src{sx, sy, sx + sw, sy + sh};
    return Fallback(dc, dib, x, y, cx, cy, &src);
}
