#include <Zel260/platform/CWinApp.h>
#include <Zel260/platform/PrivateProfile.h>

#include "platform/ProgramName.h"

#include <string>
#include <vector>

#include <unistd.h>

namespace {

CWinApp*& currentApp()
{
    static CWinApp* app = nullptr;
    return app;
}

} // namespace

CWinApp::CWinApp(const char* appName)
    : m_appName(appName && appName[0] ? CString(appName) : zelplatform::ProgramName()),
      m_profileName(m_appName + ".INI")
{
    m_pszAppName = m_appName.GetString();
    m_pszProfileName = m_profileName.GetString();
    currentApp() = this;
}

CWinApp::~CWinApp()
{
    if (currentApp() == this)
        currentApp() = nullptr;
}

CString CWinApp::GetProfileString(const char* section, const char* entry, const char* defaultValue)
{
    // Grow until the value fits: a cut value returns size - 1 (size - 2 for lists).
    std::vector<char> buf(4096);
    for (;;) {
        DWORD n = GetPrivateProfileString(section, entry, defaultValue, buf.data(), static_cast<DWORD>(buf.size()),
                                          m_pszProfileName);
        if (n + 2 < buf.size() || buf.size() >= (1u << 30))
            return CString(buf.data(), static_cast<int>(n));
        buf.resize(buf.size() * 4);
    }
}

BOOL CWinApp::WriteProfileString(const char* section, const char* entry, const char* value)
{
    return WritePrivateProfileString(section, entry, value, m_pszProfileName);
}

UINT CWinApp::GetProfileInt(const char* section, const char* entry, int defaultValue)
{
    return GetPrivateProfileInt(section, entry, defaultValue, m_pszProfileName);
}

BOOL CWinApp::WriteProfileInt(const char* section, const char* entry, int value)
{
    return WritePrivateProfileString(section, entry, std::to_string(value).c_str(), m_pszProfileName);
}

CWinApp* AfxGetApp() { return currentApp(); }

const char* AfxGetAppName() { return currentApp() ? currentApp()->m_pszAppName : nullptr; }
