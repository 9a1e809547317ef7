// Win32's system colours (GetSysColor). The core answers with the classic Windows
// defaults; the widget library installs a provider that answers from the
// application's QPalette.
#pragma once

#include <Zel260/platform/Win32Types.h>

constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_BTNFACE = 15;
constexpr int COLOR_BTNSHADOW = 16;
constexpr int COLOR_GRAYTEXT = 17;
constexpr int COLOR_BTNTEXT = 18;
constexpr int COLOR_BTNHIGHLIGHT = 20;
constexpr int COLOR_3DDKSHADOW = 21;
constexpr int COLOR_3DLIGHT = 22;
constexpr int COLOR_INFOTEXT = 23;
constexpr int COLOR_INFOBK = 24;

// The colour of a display element; 0 (black) for unknown indices, as Win32.
COLORREF GetSysColor(int index);

// Replaces the answers of GetSysColor (null restores the defaults). The provider
// returns CLR_INVALID (0xFFFFFFFF) for indices it leaves to the defaults.
using ZelSysColorProvider = COLORREF (*)(int index);
void ZelSetSysColorProvider(ZelSysColorProvider provider);
