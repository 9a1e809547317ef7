// The host application object, reduced to what the library asks of it: its name
// and its own settings file.
//
// MFC's CWinApp keeps the application's settings in the registry or in an
// initialisation file; here it is always an initialisation file, read and written
// with the private-profile operations (<Zel260/platform/PrivateProfile.h>).
// m_pszProfileName names the file: by default the application's name with ".INI"
// in the user's configuration folder (a bare file name lands there, see
// GetWindowsDirectory). A host may point m_pszAppName or m_pszProfileName at text
// of its own that lives as long as the object.
//
// As in MFC, the constructor makes the object the process's application
// (AfxGetApp) and the destructor ends that; the library expects one at a time.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

class CWinApp {
public:
    // `appName` null or empty takes the program's own name (from /proc/self/exe),
    // or "Application" when that is unknown.
    explicit CWinApp(const char* appName = nullptr);
    virtual ~CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    const char* m_pszAppName;
    const char* m_pszProfileName;

    // The text of `entry` in `section`, or `defaultValue` (null counts as "") when
    // the file, section or entry is missing. The text has no length limit.
    virtual CString GetProfileString(const char* section, const char* entry, const char* defaultValue = nullptr);
    // Writes the text; a null `value` deletes the entry, a null `entry` the section.
    // Non-zero on success; on failure the last error tells why.
    virtual BOOL WriteProfileString(const char* section, const char* entry, const char* value);
    // The number of `entry` parsed by the platform's rule (see GetPrivateProfileInt),
    // or `defaultValue`.
    virtual UINT GetProfileInt(const char* section, const char* entry, int defaultValue);
    // Writes `value` in decimal. Non-zero on success.
    virtual BOOL WriteProfileInt(const char* section, const char* entry, int value);

private:
    CString m_appName;
    CString m_profileName;
};

// The application object of the process, or null when there is none.
CWinApp* AfxGetApp();
// Its name, or null when there is no application object.
const char* AfxGetAppName();
