#include <Zel260/platform/CTime.h>
#include <Zel260/platform/CAtlException.h>

#include <cstring>
#include <langinfo.h>
#include <string>

namespace {

__time64_t makeTime(int year, int month, int day, int hour, int minute, int second, int dst)
{
    if (year < 1900 || month < 1 || month > 12 || day < 1 || day > 31 || hour < 0 || hour > 23 ||
        minute < 0 || minute > 59 || second < 0 || second > 59)
        AtlThrow(E_FAIL);
    struct tm tm {};
    tm.tm_year = year - 1900;
    tm.tm_mon = month - 1;
    tm.tm_mday = day;
    tm.tm_hour = hour;
    tm.tm_min = minute;
    tm.tm_sec = second;
    tm.tm_isdst = dst;
    const time_t t = mktime(&tm);
    if (t == static_cast<time_t>(-1) || t < CTime::MinCalendarTime || t > CTime::MaxCalendarTime)
        AtlThrow(E_INVALIDARG);
    return t;
}

} // namespace

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int dst)
    : m_time(makeTime(year, month, day, hour, minute, second, dst))
{
}

CTime::CTime(WORD dosDate, WORD dosTime, int dst)
    : m_time(makeTime((dosDate >> 9) + 1980, (dosDate >> 5) & 0xF, dosDate & 0x1F, dosTime >> 11,
                      (dosTime >> 5) & 0x3F, (dosTime & 0x1F) * 2, dst))
{
}

CTime::CTime(const SYSTEMTIME& st, int dst) : m_time(0)
{
    if (st.wYear < 1900)
        return;
    m_time = makeTime(st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond, dst);
}

CTime::CTime(const FILETIME& ft, int dst) : m_time(0)
{
    const std::uint64_t ticks = (static_cast<std::uint64_t>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime;
    // 100-ns ticks since 1601 to seconds since 1970.
    const time_t t = static_cast<time_t>(ticks / 10000000u) - 11644473600LL;
    struct tm tm {};
    if (!localtime_r(&t, &tm))
        AtlThrow(E_INVALIDARG);
    m_time = makeTime(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec, dst);
}

CTime CTime::GetCurrentTime() noexcept { return CTime(static_cast<__time64_t>(time(nullptr))); }

struct tm* CTime::GetLocalTm(struct tm* out) const noexcept
{
    if (!out || m_time < MinCalendarTime || m_time > MaxCalendarTime)
        return nullptr;
    const time_t t = m_time;
    return localtime_r(&t, out);
}

struct tm* CTime::GetGmtTm(struct tm* out) const noexcept
{
    if (!out || m_time < MinCalendarTime || m_time > MaxCalendarTime)
        return nullptr;
    const time_t t = m_time;
    return gmtime_r(&t, out);
}

int CTime::GetYear() const noexcept
{
    struct tm tm;
    return GetLocalTm(&tm) ? tm.tm_year + 1900 : 0;
}
int CTime::GetMonth() const noexcept
{
    struct tm tm;
    return GetLocalTm(&tm) ? tm.tm_mon + 1 : 0;
}
int CTime::GetDay() const noexcept
{
    struct tm tm;
    return GetLocalTm(&tm) ? tm.tm_mday : 0;
}
int CTime::GetHour() const noexcept
{
    struct tm tm;
    return GetLocalTm(&tm) ? tm.tm_hour : 0;
}
int CTime::GetMinute() const noexcept
{
    struct tm tm;
    return GetLocalTm(&tm) ? tm.tm_min : 0;
}
int CTime::GetSecond() const noexcept
{
    struct tm tm;
    return GetLocalTm(&tm) ? tm.tm_sec : 0;
}
int CTime::GetDayOfWeek() const noexcept
{
    struct tm tm;
    return GetLocalTm(&tm) ? tm.tm_wday + 1 : 0;
}

namespace {

// The numeric conversions of strftime written directly: the library formats its times
// by templates made of these alone more than by anything else, and strftime spends
// most of its time on the generality of the rest. Returns false, having written
// nothing that counts, for anything it doesn't cover exactly as strftime does (other
// conversions, flags and widths, fields out of their usual ranges, text that doesn't
// fit); the caller then runs strftime.
bool formatNumeric(char* buffer, size_t size, const char* format, const struct tm& tm, size_t& length)
{
    size_t n = 0;
    auto put = [&](char c) {
        if (n + 1 >= size)
            return false;
        buffer[n++] = c;
        return true;
    };
    for (const char* p = format; *p; ++p) {
        if (*p != '%') {
            if (!put(*p))
                return false;
            continue;
        }
        ++p;
        const bool noPad = *p == '#';
        if (noPad)
            ++p;
        int v;
        switch (*p) {
        case '%':
            if (noPad || !put('%'))
                return false;
            continue;
        case 'd': v = tm.tm_mday; break;
        case 'm': v = tm.tm_mon + 1; break;
        case 'y': v = tm.tm_year % 100; break;
        case 'H': v = tm.tm_hour; break;
        case 'I': v = tm.tm_hour % 12 == 0 ? 12 : tm.tm_hour % 12; break;
        case 'M': v = tm.tm_min; break;
        case 'S': v = tm.tm_sec; break;
        case 'Y': {
            const int year = tm.tm_year + 1900;
            if (noPad || year < 1000 || year > 9999)
                return false;
            if (!put(static_cast<char>('0' + year / 1000)) || !put(static_cast<char>('0' + year / 100 % 10)) ||
                !put(static_cast<char>('0' + year / 10 % 10)) || !put(static_cast<char>('0' + year % 10)))
                return false;
            continue;
        }
        // The locale's own texts, which strftime takes from the same place; a "#"
        // means nothing to them.
        case 'p':
        case 'b': {
            if (*p == 'b' && (tm.tm_mon < 0 || tm.tm_mon > 11))
                return false;
            const char* text = *p == 'p' ? nl_langinfo(tm.tm_hour > 11 ? PM_STR : AM_STR)
                                         : nl_langinfo(static_cast<nl_item>(ABMON_1 + tm.tm_mon));
            for (; *text; ++text)
                if (!put(*text))
                    return false;
            continue;
        }
        default: return false;
        }
        if (v < 0 || v > 99 || tm.tm_year < 0 || tm.tm_hour < 0 || tm.tm_hour > 23)
            return false;
        if ((v >= 10 || !noPad) && !put(static_cast<char>('0' + v / 10)))
            return false;
        if (!put(static_cast<char>('0' + v % 10)))
            return false;
    }
    buffer[n] = '\0';
    length = n;
    return true;
}

} // namespace

size_t CTime::FormatTm(char* buffer, size_t size, const char* format, const struct tm& tm)
{
    if (!buffer || size == 0 || !format)
        return 0;
    buffer[0] = '\0';
    size_t length;
    if (formatNumeric(buffer, size, format, tm, length))
        return length;
    buffer[0] = '\0';
    if (!std::strchr(format, '#'))
        return strftime(buffer, size, format, &tm);
    // glibc reads "%#" as "swap case"; Windows reads it as "no leading zero" for
    // numbers and ignores it elsewhere.
    char local[256];
    std::string heap;
    const size_t len = std::strlen(format);
    char* f = local;
    if (len >= sizeof local) {
        heap.resize(len + 1);
        f = heap.data();
    }
    size_t j = 0;
    for (size_t i = 0; i < len; ++i) {
        f[j++] = format[i];
        if (format[i] != '%' || i + 1 >= len)
            continue;
        if (format[i + 1] == '%') {
            f[j++] = format[++i];
            continue;
        }
        if (format[i + 1] != '#')
            continue;
        ++i;
        const char c = i + 1 < len ? format[i + 1] : '\0';
        if (std::strchr("dHIjmMSUwWyY", c) && c)
            f[j++] = '-';
    }
    f[j] = '\0';
    buffer[0] = '\0';
    return strftime(buffer, size, f, &tm);
}

CString CTime::Format(const char* format) const
{
    struct tm tm;
    char buf[128];
    if (!format || !GetLocalTm(&tm) || !FormatTm(buf, sizeof buf, format, tm))
        return CString();
    return CString(buf);
}

CString CTime::FormatGmt(const char* format) const
{
    struct tm tm;
    char buf[128];
    if (!format || !GetGmtTm(&tm) || !FormatTm(buf, sizeof buf, format, tm))
        return CString();
    return CString(buf);
}
