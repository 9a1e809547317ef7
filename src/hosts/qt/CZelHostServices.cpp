#include <Zel260/hosts/qt/CZelHostServices.h>
#include <Zel260/hosts/qt/CZelWndToolTip.h>

#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QWidget>

#include <algorithm>

namespace {

QWidget* widgetOf(CWnd* w) { return w ? ZelWidgetFromHwnd(w->GetSafeHwnd()) : nullptr; }

} // namespace

CZelHostServices::CZelHostServices(CWnd* host) : m_servicesHost(host) {}

CZelHostServices::~CZelHostServices() { delete m_toolTip; }

CZelWndToolTip* CZelHostServices::GetToolTip()
{
    if (!m_toolTip)
        m_toolTip = new CZelWndToolTip(widgetOf(m_servicesHost));
    return m_toolTip;
}

#define ZEL_TOOLTIP_PLACEMENT(Name, anchor)                                                                        \
    void CZelHostServices::ShowToolTip##Name(const char* text, int x, int y, UINT timeMs)                          \
    {                                                                                                              \
        GetToolTip()->Show(text, x, y, CZelWndToolTip::anchor, timeMs);                                            \
    }

ZEL_TOOLTIP_PLACEMENT(LeftTop, eAnchorLeftTop)
ZEL_TOOLTIP_PLACEMENT(CenterTop, eAnchorCenterTop)
ZEL_TOOLTIP_PLACEMENT(RightTop, eAnchorRightTop)
ZEL_TOOLTIP_PLACEMENT(LeftCenter, eAnchorLeftCenter)
ZEL_TOOLTIP_PLACEMENT(CenterCenter, eAnchorCenterCenter)
ZEL_TOOLTIP_PLACEMENT(RightCenter, eAnchorRightCenter)
ZEL_TOOLTIP_PLACEMENT(LeftBottom, eAnchorLeftBottom)
ZEL_TOOLTIP_PLACEMENT(CenterBottom, eAnchorCenterBottom)
ZEL_TOOLTIP_PLACEMENT(RightBottom, eAnchorRightBottom)

#undef ZEL_TOOLTIP_PLACEMENT

void CZelHostServices::HideTooltip()
{
    if (m_toolTip)
        m_toolTip->Hide();
}

BOOL CZelHostServices::AddItemToArrange(int x, int cx, int y, int cy, UINT id)
{
    QWidget* host = widgetOf(m_servicesHost);
    QWidget* control = host ? ZelWidgetFromHwnd(::GetDlgItem(ZelHwndFromWidget(host), static_cast<int>(id))) : nullptr;
    if (!control)
        return FALSE;
    RemoveItemToArrange(id);
    if (m_arrange.empty())
        m_originalSize = CSize(host->width(), host->height());
    ARRANGE_ITEM a;
    a.x = x;
    a.cx = cx;
    a.y = y;
    a.cy = cy;
    a.id = id;
    a.left = control->x();
    a.top = control->y();
    a.width = control->width();
    a.height = control->height();
    m_arrange.push_back(a);
    return TRUE;
}

BOOL CZelHostServices::AddItemToArrange(UINT flags, UINT id)
{
    const ARRANGE_ITEM a = ZelArrangeItemFromFlags(flags, id);
    return AddItemToArrange(a.x, a.cx, a.y, a.cy, id);
}

void CZelHostServices::RemoveItemToArrange(UINT id)
{
    std::erase_if(m_arrange, [id](const ARRANGE_ITEM& a) { return a.id == id; });
}

void CZelHostServices::ArrangeItems()
{
    QWidget* host = widgetOf(m_servicesHost);
    if (!host)
        return;
    const int growX = host->width() - m_originalSize.cx;
    const int growY = host->height() - m_originalSize.cy;
    for (const ARRANGE_ITEM& a : m_arrange) {
        QWidget* control = ZelWidgetFromHwnd(::GetDlgItem(ZelHwndFromWidget(host), static_cast<int>(a.id)));
        if (!control)
            continue;
        const RECT r = ZelArrangeItemRect(a, growX, growY);
        control->setGeometry(r.left, r.top, r.right - r.left, r.bottom - r.top);
    }
}
