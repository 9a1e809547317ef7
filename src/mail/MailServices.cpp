#include "mail/MailServices.h"

#include <Zel260/frame/ZelModule.h>
#include <Zel260/shell/ZelPath.h>
#include <Zel260/time/CZelTime.h>

#include <cmath>
#include <ctime>

namespace zelmail {

CString DateNowUtc()
{
    // The names of days and months are English whatever locale the host has set;
    // a header with localised names would not be a valid date.
    static const char* const days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    // The first reading of the zone may come after its daylight flag was used;
    // reading it here first keeps the first mail of a process right in summer.
    (void)CZelTime::SystemTimezone(1);
    // MJD of the clock in UTC, in whole seconds: rounded, since the day fraction
    // isn't exact in binary.
    const double mjd = CZelTime::CurrentTimeUTC(1);
    const std::time_t seconds = static_cast<std::time_t>(std::llround((mjd - 40587.0) * 86400.0));
    std::tm t{};
    gmtime_r(&seconds, &t);
    CString s;
    s.Format("%s, %02d %s %02d %02d:%02d:%02d GMT", days[t.tm_wday % 7], t.tm_mday, months[t.tm_mon % 12],
             t.tm_year % 100, t.tm_hour, t.tm_min, t.tm_sec);
    return s;
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
