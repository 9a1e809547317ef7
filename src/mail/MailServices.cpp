#include "mail/MailServices.h"

#include <Zel260/frame/ZelModule.h>
#include <Zel260/shell/ZelFile.h>
#include <Zel260/shell/ZelPath.h>
#include <Zel260/time/CZelTime.h>

#include <new>

namespace zelmail {

CString DateNowUtc()
{
    // The names of days and months are English whatever locale the host has set;
    // a header with localised names would not be a valid date.
    static const char* const days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    // The clock read as UTC: the fields of this time are those of Greenwich.
    const CZelTime t(CZelTime::CurrentTimeUTC(1));
    const int weekday = t.GetDayOfWeek() - 1;
    const int month = t.GetMonth() - 1;
    CString s;
    s.Format("%s, %02d %s %02d %02d:%02d:%02d GMT", days[weekday >= 0 && weekday < 7 ? weekday : 0], t.GetDay(),
             months[month >= 0 && month < 12 ? month : 0], t.GetYear() % 100, t.GetHour(), t.GetMinute(),
             t.GetSecond());
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
