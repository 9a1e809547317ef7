// What dialogs and views of the library share: the tool tip beside a control with
// its nine placements, and controls that follow the window's size (ARRANGE_ITEM).
// CZelDialogExtensions and CZelViewExtensions derive from it.
#pragma once

#include <Zel260/hosts/ZelArrangeItem.h>
#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/CWnd.h>

#include <QPointer>

#include <vector>

#include <Zel260/hosts/qt/CZelWndToolTip.h>

class CZelHostServices {
public:
    // Dialogs and views share one set of services even when a class has both
    // extensions (a form view): the mix-ins derive virtually and set the host.
    CZelHostServices() = default;
    explicit CZelHostServices(CWnd* host);
    void SetServicesHost(CWnd* host) { m_servicesHost = host; }
    virtual ~CZelHostServices();
    CZelHostServices(const CZelHostServices&) = delete;
    CZelHostServices& operator=(const CZelHostServices&) = delete;

    // Shows `text` with the named point of the tip at (x, y), screen pixels, for
    // `timeMs` milliseconds (0: until hidden). The first word is the horizontal
    // place of the point on the tip, the second the vertical.
    void ShowToolTipLeftTop(const char* text, int x, int y, UINT timeMs);
    void ShowToolTipCenterTop(const char* text, int x, int y, UINT timeMs);
    void ShowToolTipRightTop(const char* text, int x, int y, UINT timeMs);
    void ShowToolTipLeftCenter(const char* text, int x, int y, UINT timeMs);
    void ShowToolTipCenterCenter(const char* text, int x, int y, UINT timeMs);
    void ShowToolTipRightCenter(const char* text, int x, int y, UINT timeMs);
    void ShowToolTipLeftBottom(const char* text, int x, int y, UINT timeMs);
    void ShowToolTipCenterBottom(const char* text, int x, int y, UINT timeMs);
    void ShowToolTipRightBottom(const char* text, int x, int y, UINT timeMs);
    void HideTooltip();
    // The tip (made on first use; owned).
    CZelWndToolTip* GetToolTip();

    // Control `id` moves by x% and grows by cx% of the window's width growth, and so
    // on for the height; its present place and the window's present size count as
    // the original. FALSE when the host has no such control.
    BOOL AddItemToArrange(int x, int cx, int y, int cy, UINT id);
    BOOL AddItemToArrange(UINT flags, UINT id);
    void RemoveItemToArrange(UINT id);
    // Places every control by its item for the window's present size.
    void ArrangeItems();
    const std::vector<ARRANGE_ITEM>& GetArrangeItems() const { return m_arrange; }

protected:
    CWnd* m_servicesHost = nullptr;

private:
    // Owned by the host window once it has one; deleted here otherwise.
    QPointer<CZelWndToolTip> m_toolTip;
    std::vector<ARRANGE_ITEM> m_arrange;
    CSize m_originalSize;
};
