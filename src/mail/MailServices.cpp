#include "mail/MailServices.h"

#include <Zel260/frame/ZelModule.h>
#include <Zel260/shell/ZelFile.h>
#include <Zel260/shell/ZelPath.h>

#include <ctime>
#include <new>

namespace zelmail {

CString DateNowUtc()
{
    // Names of days and months must be English whatever the process locale is,
    // so they are not left to strftime.
    static const char* const days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::time_t now = std::time(nullptr);
    std::tm t{};
    gmtime_r(&now, &t);
    CString s;
    s.Format("%s, %02d %s %02d %02d:%02d:%02d GMT", days[t.tm_wday % 7], t.tm_mday, months[t.tm_mon % 12],
             t.tm_year % 100, t.tm_hour, t.tm_min, t.tm_sec);
    return s;
}

bool FileContent::Load(const CString& path)
{
    m_data.reset();
    m_size = 0;
    // A shared lock: two mails may attach the same file at once.
    HANDLE file = ZelFileOpen(path, GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    const LONG size = ZelFileSize(file);
    bool ok = size >= 0;
    if (ok) {
        // One byte more, so that an empty file still has a buffer to point at.
        m_data.reset(new (std::nothrow) unsigned char[static_cast<std::size_t>(size) + 1]);
        ok = m_data && (size == 0 || ZelFileRead(file, m_data.get(), static_cast<DWORD>(size)));
    }
    ZelFileClose(file);
    if (!ok) {
        m_data.reset();
        return false;
    }
    m_size = static_cast<std::size_t>(size);
    return true;
}

void SplitFileName(const CString& path, CString& baseName, CString& extension)
{
    CString drive, directory;
    ZelSplitPath(path, drive, directory, baseName, extension);
}

CString LoadLibraryString(unsigned int id) { return ZelLoadLibraryString(id); }

WaitCursor::WaitCursor() = default;
WaitCursor::~WaitCursor() = default;

} // namespace zelmail
