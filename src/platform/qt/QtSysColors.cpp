// System colours from the application's palette, installed with the application.
#include <Zel260/platform/SysColors.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPalette>

namespace {

COLORREF fromPalette(int index)
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return 0xFFFFFFFFu;
    QPalette::ColorRole role;
    switch (index) {
    case COLOR_WINDOW: role = QPalette::Base; break;
    case COLOR_WINDOWTEXT: role = QPalette::Text; break;
    case COLOR_HIGHLIGHT: role = QPalette::Highlight; break;
    case COLOR_HIGHLIGHTTEXT: role = QPalette::HighlightedText; break;
    case COLOR_BTNFACE: role = QPalette::Button; break;
    case COLOR_BTNSHADOW: role = QPalette::Mid; break;
    case COLOR_BTNTEXT: role = QPalette::ButtonText; break;
    case COLOR_BTNHIGHLIGHT: role = QPalette::Light; break;
    case COLOR_3DDKSHADOW: role = QPalette::Shadow; break;
    case COLOR_3DLIGHT: role = QPalette::Midlight; break;
    case COLOR_INFOTEXT: role = QPalette::ToolTipText; break;
    case COLOR_INFOBK: role = QPalette::ToolTipBase; break;
    default: return 0xFFFFFFFFu;
    }
    QColor c = QGuiApplication::palette().color(QPalette::Active, role);
    return RGB(static_cast<BYTE>(c.red()), static_cast<BYTE>(c.green()), static_cast<BYTE>(c.blue()));
}

void uninstall() { ZelSetSysColorProvider(nullptr); }

void install()
{
    ZelSetSysColorProvider(fromPalette);
    qAddPostRoutine(uninstall);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(install)
