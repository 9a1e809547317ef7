#include <Zel260/graphics/qt/CZelQuickDraw.h>

#include <Zel260/graphics/CZelCDCHelper.h>
#include <Zel260/hosts/qt/CZelView.h>
#include <Zel260/platform/SysColors.h>
#include <Zel260/platform/qt/CQtDC.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QImage>
#include <QPainter>
#include <QWidget>

IMPLEMENT_DYNCREATE(CZelQuickDraw, CObject)

namespace {

constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
constexpr COLORREF kWhite = 0xFFFFFF;

} // namespace

struct CZelQuickDraw::Buffer {
    QImage image;
    std::unique_ptr<CQtDC> dc;
};

CZelQuickDraw::CZelQuickDraw() = default;

CZelQuickDraw::~CZelQuickDraw()
{
    *m_alive = false;
    Uninstall();
}

int CZelQuickDraw::Install(CWnd* wnd)
{
    if (m_wnd || !wnd || !HookWindow(wnd))
        return 0;
    if (!m_customColour)
        LoadSystemColors();
    m_wnd = wnd;
    m_view = dynamic_cast<CZelView*>(wnd);
    if (QWidget* w = ZelWidgetFromHwnd(wnd->GetSafeHwnd()))
        SetSize(SIZE{w->width(), w->height()});
    return 1;
}

void CZelQuickDraw::Uninstall()
{
    UnhookWindow();
    m_wnd = nullptr;
    m_view = nullptr;
    Clean();
}

void CZelQuickDraw::StopWindowUpdate() { m_stopped = TRUE; }

void CZelQuickDraw::ContinueWindowUpdate(int erase)
{
    if (!m_stopped)
        return;
    m_stopped = FALSE;
    // Whatever the buffer holds was made before the bulk change: paint anew.
    m_fresh = false;
    if (erase)
        EraseBkgnd(m_wnd);
    if (QWidget* w = m_wnd ? ZelWidgetFromHwnd(m_wnd->GetSafeHwnd()) : nullptr)
        w->update();
}

CDC* CZelQuickDraw::GetCompDC(CWnd* wnd)
{
    if (m_width == 0 || m_height == 0)
        return nullptr;
    if (!m_buffer && !Initialize(wnd))
        return nullptr;
    return m_buffer->dc.get();
}

void CZelQuickDraw::SetCustomBkColor(const unsigned long& colour)
{
    if (colour == 0xFFFFFFFFul) {
        m_customColour = FALSE;
        LoadSystemColors();
        return;
    }
    m_customColour = TRUE;
    m_bkColour = static_cast<COLORREF>(colour & 0xFFFFFF);
}

void CZelQuickDraw::LoadSystemColors()
{
    if (!m_customColour)
        m_bkColour = GetSysColor(COLOR_WINDOW);
}

void CZelQuickDraw::SetExcludeFromTop(unsigned int pixels) { m_excludeFromTop = pixels; }

unsigned int CZelQuickDraw::GetExcludeFromTop() const { return m_excludeFromTop; }

void CZelQuickDraw::SetSize(const SIZE& size)
{
    if (size.cx == m_width && size.cy == m_height)
        return;
    if (size.cx < 0 || size.cy < 0)
        return;
    m_width = size.cx;
    m_height = size.cy;
    m_rect = CRect(0, 0, m_width, m_height);
    Clean();
}

int CZelQuickDraw::EraseBkgnd(CWnd* wnd)
{
    if (m_width == 0 || m_height == 0)
        return 0;
    CDC* dc = GetCompDC(wnd);
    if (!dc)
        return 0;
    CRect r = m_rect;
    r.top = std::min(r.bottom, r.top + static_cast<int>(std::min<unsigned int>(m_excludeFromTop, 0x7FFFFFFF)));
    if (m_bkColour == kWhite)
        dc->PatBlt(r.left, r.top, r.Width(), r.Height(), WHITENESS);
    else
        dc->FillSolidRect(r, m_bkColour);
    m_complete = false;
    return 1;
}

void CZelQuickDraw::Draw(CDC& target)
{
    if (m_buffer)
        target.BitBlt(0, 0, m_width, m_height, m_buffer->dc.get(), 0, 0, SRCCOPY);
}

void CZelQuickDraw::Clean()
{
    m_buffer.reset();
    m_complete = false;
}

int CZelQuickDraw::Initialize(CWnd*)
{
    Clean();
    if (m_width == 0 || m_height == 0)
        return 0;
    auto b = std::make_unique<Buffer>();
    b->image = QImage(m_width, m_height, QImage::Format_RGB32);
    if (b->image.isNull())
        return 0;
    b->image.fill(Qt::black);
    b->dc = std::make_unique<CQtDC>(&b->image);
    m_buffer = std::move(b);
    return 1;
}

void CZelQuickDraw::renderWindow()
{
    QWidget* w = ZelWidgetFromHwnd(GetHookedWindow());
    CDC* mem = GetCompDC(m_wnd);
    if (!w || !mem || m_stopped)
        return;
    EraseBkgnd(m_wnd);
    // The window paints itself into the buffer; its paint event comes back through
    // this hook and is let through while rendering.
    m_rendering = true;
    w->render(m_buffer->dc->painter(), QPoint(), QRegion(), QWidget::DrawChildren);
    m_rendering = false;
    m_fresh = true;
    m_complete = true;
    w->update();
}

void CZelQuickDraw::paint()
{
    QWidget* w = ZelWidgetFromHwnd(GetHookedWindow());
    CDC* mem = GetCompDC(m_wnd);
    if (!w || !mem)
        return;
    if (m_view) {
        // Only the part the paint asked for is redrawn; the rest of the buffer still
        // holds the last picture. The buffer outlives the paint, so the clip of an
        // earlier paint must not narrow this one.
        m_buffer->dc->painter()->setClipping(false);
        const CRect clip(GetPaintRect());
        if (!clip.IsRectEmpty())
            CZelCDCHelper::SelectClipRect(mem, clip);
        EraseBkgnd(m_wnd);
        // The view sets up the buffer as it would the screen (a scrolled view moves
        // its origin here), so the picture lands where the screen expects it.
        m_view->OnPrepareDC(mem, nullptr);
        m_view->OnDraw(mem);
        m_buffer->dc->painter()->setClipping(false);
    } else if (!m_fresh) {
        std::shared_ptr<bool> alive = m_alive;
        QMetaObject::invokeMethod(
            w, [this, alive] {
                if (*alive)
                    renderWindow();
            },
            Qt::QueuedConnection);
        // A window can't paint into the buffer while it paints on the screen, so the
        // new picture comes with a later paint. Until then the last whole picture
        // stays, so the screen never shows a background without its drawing.
        if (m_complete) {
            CQtDC screen(w);
            Draw(screen);
        }
        return;
    }
    // Only now, with the whole picture standing, does anything reach the screen.
    CQtDC screen(w);
    Draw(screen);
    m_fresh = false;
    ++m_paints;
}

LRESULT CZelQuickDraw::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_SIZE) {
        const int w = LOWORD(lParam);
        const int h = HIWORD(lParam);
        if (wParam != 1 && w != 0 && h != 0) {
            SetSize(SIZE{w, h});
            EraseBkgnd(m_wnd);
        }
        return Default();
    }
    if (message == WM_PAINT) {
        if (m_rendering || m_width == 0 || m_height == 0)
            return Default();
        if (m_stopped) {
            ++m_skipped;
            return 0; // validated: nothing drawn
        }
        paint();
        return 0;
    }
    if (message == WM_SYSCOLORCHANGE) {
        LoadSystemColors();
        return Default();
    }
    return Default();
}

void CZelQuickDraw::OnDestroyWindow()
{
    m_wnd = nullptr;
    m_view = nullptr;
    Clean();
}
