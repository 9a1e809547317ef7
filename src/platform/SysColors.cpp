#include <Zel260/platform/SysColors.h>

#include <atomic>

namespace {

std::atomic<ZelSysColorProvider> g_provider{nullptr};

COLORREF classic(int index)
{
    switch (index) {
    case COLOR_WINDOW: return RGB(255, 255, 255);
    case COLOR_WINDOWTEXT: return RGB(0, 0, 0);
    case COLOR_HIGHLIGHT: return RGB(0, 120, 215);
    case COLOR_HIGHLIGHTTEXT: return RGB(255, 255, 255);
    case COLOR_BTNFACE: return RGB(240, 240, 240);
    case COLOR_BTNSHADOW: return RGB(160, 160, 160);
    case COLOR_GRAYTEXT: return RGB(109, 109, 109);
    case COLOR_BTNTEXT: return RGB(0, 0, 0);
    case COLOR_BTNHIGHLIGHT: return RGB(255, 255, 255);
    case COLOR_3DDKSHADOW: return RGB(105, 105, 105);
    case COLOR_3DLIGHT: return RGB(227, 227, 227);
    case COLOR_INFOTEXT: return RGB(0, 0, 0);
    case COLOR_INFOBK: return RGB(255, 255, 225);
    default: return 0;
    }
}

} // namespace

COLORREF GetSysColor(int index)
{
    if (ZelSysColorProvider p = g_provider.load()) {
        COLORREF c = p(index);
        if (c != 0xFFFFFFFFu)
            return c;
    }
    return classic(index);
}

void ZelSetSysColorProvider(ZelSysColorProvider provider) { g_provider.store(provider); }
