#include <Zel260/time/CZelTime.h>

#include <Zel260/platform/CAtlException.h>
#include <Zel260/platform/COleDateTime.h>
#include <Zel260/time/CZelTimeHelper.h>
#include <Zel260/services/CZelProfileEntries.h>
#include <Zel260/time/CZelTimeSpanHelper.h>

#include "TimeFields.h"
#include "TimeProfile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

const char* TimeSection() { return CZelProfileEntries::TimeSection(); }
const char* TimeEntryFormatNumber() { return CZelProfileEntries::TimeEntryFormatNumber(); }
const char* TimeEntryFormatString() { return CZelProfileEntries::TimeEntryFormatString(); }

// The 32 templates in the order of the format choice, and the slot behind them that
// a stored index of 32 reaches: empty, so the format counts as not loaded.
const char* const TimeFormats[33] = {
    "%m/%d/%Y %H:%M:%S",     "%d/%m/%Y %H:%M:%S",     "%m/%d/%Y %#I:%M:%S %p", "%d/%m/%Y %#I:%M:%S %p",
    "%m/%d/%y %H:%M:%S",     "%d/%m/%y %H:%M:%S",     "%m/%d/%y %#I:%M:%S %p", "%d/%m/%y %#I:%M:%S %p",
    "%m-%d-%Y %H:%M:%S",     "%d-%m-%Y %H:%M:%S",     "%m-%d-%Y %#I:%M:%S %p", "%d-%m-%Y %#I:%M:%S %p",
    "%m-%d-%y %H:%M:%S",     "%d-%m-%y %H:%M:%S",     "%m-%d-%y %#I:%M:%S %p", "%d-%m-%y %#I:%M:%S %p",
    "%m.%d.%Y %H:%M:%S",     "%d.%m.%Y %H:%M:%S",     "%m.%d.%Y %#I:%M:%S %p", "%d.%m.%Y %#I:%M:%S %p",
    "%m.%d.%y %H:%M:%S",     "%d.%m.%y %H:%M:%S",     "%m.%d.%y %#I:%M:%S %p", "%d.%m.%y %#I:%M:%S %p",
    "%#d. %b %Y %H:%M:%S",   "%#d-%b-%Y %H:%M:%S",    "%#d. %b %Y %#I:%M:%S %p", "%#d-%b-%Y %#I:%M:%S %p",
    "%#d. %b %y %H:%M:%S",   "%#d-%b-%y %H:%M:%S",    "%#d. %b %y %#I:%M:%S %p", "%#d-%b-%y %#I:%M:%S %p",
    "",
};

struct CurrentFormat {
    unsigned int index = 0;
    CString text;
};

CurrentFormat& currentFormat()
{
    static auto* f = new CurrentFormat();
    return *f;
}

struct SystemZone {
    bool filled = false;
    double zone = 0.0;
    double daylight = 0.0;
};

SystemZone& systemZone()
{
    static SystemZone z;
    return z;
}

double staticSystemTimeZone()
{
    SystemZone& z = systemZone();
    if (!z.filled) {
        z.zone = CZelTime::LocalTimeZone(z.daylight);
        z.filled = true;
    }
    return z.zone;
}

void ensureFormatLoaded()
{
    if (currentFormat().text.IsEmpty())
        CZelTime::LoadCurrentTimeFormat();
}

CZelTimeHelper::eRoundFlag flagOf(int round) { return static_cast<CZelTimeHelper::eRoundFlag>(round); }

bool tolerantEqual(double a, double b)
{
    const double e = 2.220446049250313e-16;
    return std::fabs(a - b) <= e * std::max(std::fabs(a), std::fabs(b)) + e;
}

} // namespace

IMPLEMENT_DYNAMIC(CZelTime, CObject)

// ---- Construction ----------------------------------------------------------------

CZelTime::CZelTime() : CTime(CTime::GetCurrentTime()), m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
}

CZelTime::CZelTime(const CZelTime& other)
    : CObject(other), CTime(other), m_fracSecond(other.m_fracSecond), m_timezone(other.m_timezone)
{
    ensureFormatLoaded();
}

CZelTime::CZelTime(const CTime& time) : CTime(time), m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
}

CZelTime::CZelTime(std::int64_t seconds) : CTime(seconds), m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
}

CZelTime::CZelTime(int year, int month, int day, int hour, int minute, int second, int dst)
    : CTime(year, month, day, hour, minute, second, dst), m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
}

CZelTime::CZelTime(unsigned short dosDate, unsigned short dosTime, int dst)
    : CTime(static_cast<WORD>(dosDate), static_cast<WORD>(dosTime), dst), m_fracSecond(0.0),
      m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
}

CZelTime::CZelTime(const SYSTEMTIME& time, int dst)
    : CTime(time, dst), m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
}

CZelTime::CZelTime(const FILETIME& time, int dst)
    : CTime(time, dst), m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
}

CZelTime::CZelTime(CString text, CString format) : m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
    ScanTime(text, format);
}

CZelTime::CZelTime(int gpsWeek, double gpsSeconds) : m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
    SetGpsTime(gpsWeek, gpsSeconds);
}

CZelTime::CZelTime(double mjd) : m_fracSecond(0.0), m_timezone(SystemTimezone(0))
{
    ensureFormatLoaded();
    Mjd(mjd);
}

CZelTime& CZelTime::operator=(const CZelTime& other)
{
    if (this != &other) {
        static_cast<CTime&>(*this) = other;
        m_fracSecond = other.m_fracSecond;
        m_timezone = other.m_timezone;
    }
    return *this;
}

CZelTime& CZelTime::operator=(const CTime& time)
{
    static_cast<CTime&>(*this) = time;
    m_fracSecond = 0.0;
    return *this;
}

CZelTime& CZelTime::operator=(const double& mjd)
{
    Mjd(mjd);
    return *this;
}

// ---- MJD, GPS, stamps ------------------------------------------------------------

double CZelTime::Mjd() const { return CZelTimeHelper::GetMjd(*this); }

void CZelTime::Mjd(double mjd) { CZelTimeHelper::SetMjd(mjd, *this); }

double CZelTime::MjdUTC() const
{
    struct tm tm;
    if (!GetLocalTm(&tm))
        return 0.0;
    return Mjd() + m_timezone / 24.0;
}

void CZelTime::MjdUTC(double value) { Mjd(value - m_timezone / 24.0); }

double CZelTime::GetMilliSeconds() const { return GetSecond() * 1000.0 + 1000.0 * m_fracSecond; }

double CZelTime::SetGpsTime(int week, double seconds)
{
    const double value = week * 7.0 + seconds / 86400.0 + 44244.0;
    Mjd(value);
    return value;
}

int CZelTime::GetGpsTime(int& week, double& seconds) const
{
    const double t = Mjd() - 44244.0;
    week = static_cast<int>(zeltime::ClampToLong(std::clamp(std::trunc(t / 7.0), -2147483648.0, 2147483647.0)));
    seconds = (t - 7.0 * week) * 86400.0;
    return week >= 0 && seconds >= 0.0 && seconds < 604800.0;
}

double CZelTime::GpsTime(int week, double seconds) { return week * 7.0 + 44244.0 + seconds / 86400.0; }

namespace {

// The MJD of the calendar formula: the day number as a 32-bit unsigned count (a date
// before the MJD epoch wraps to a large positive number) and the day fraction.
inline double mjdOfDate(int year, int month, int day, int hour, int minute, double second, std::uint32_t& dayNumber,
                        double& dayFraction)
{
    // Whole hours, minutes and seconds take their terms from the tables, bit for bit
    // the quotients of the formula.
    const bool tabled = static_cast<unsigned>(hour) < 24u && static_cast<unsigned>(minute) < 60u && second >= 0.0 &&
                        second < 60.0 && second == static_cast<double>(static_cast<int>(second));
    dayFraction = tabled ? zeltime::HourTerms.v[hour] + zeltime::MinuteTerms.v[minute] +
                               zeltime::SecondTerms.v[static_cast<int>(second)]
                         : hour / 24.0 + (minute / 24.0) / 60.0 + (second / 24.0) / 3600.0;
    if (month >= 1 && month <= 12 && year >= 1 && year < 1000000) {
        // trunc(y * 365.25) is 1461 * y / 4, y is not negative after the month
        // shift, and a sum that ends in 32 unsigned bits may as well be taken in
        // them: unsigned divisions without sign corrections.
        unsigned y = static_cast<unsigned>(year);
        unsigned m = static_cast<unsigned>(month);
        if (m < 3) {
            y -= 1;
            m += 12;
        }
        const unsigned a = y / 100;
        dayNumber = 1461 * y / 4 + static_cast<unsigned>(zeltime::MonthStart[m + 1]) + a / 4 - a +
                    static_cast<std::uint32_t>(day) - 679004u;
    } else {
        long long y = year;
        long long m = month;
        if (m < 3) {
            y -= 1;
            m += 12;
        }
        const long long a = y / 100;
        const long long days = static_cast<long long>(std::trunc(static_cast<double>(y) * 365.25)) +
                               static_cast<long long>(std::trunc(30.6001 * static_cast<double>(m + 1))) + a / 4 - a +
                               day - 679004;
        dayNumber = static_cast<std::uint32_t>(days);
    }
    return static_cast<double>(dayNumber) + dayFraction;
}

} // namespace

double CZelTime::Mjd(int year, int month, int day, int hour, int minute, double second)
{
    std::uint32_t dayNumber;
    double dayFraction;
    return mjdOfDate(year, month, day, hour, minute, second, dayNumber, dayFraction);
}

double CZelTime::Mjd(int year, int month, int day, int hour, int minute, double second, unsigned long& dayNumber,
                     double& dayFraction)
{
    std::uint32_t number;
    const double value = mjdOfDate(year, month, day, hour, minute, second, number, dayFraction);
    dayNumber = number;
    return value;
}

namespace {

struct StampFields {
    int year, month, day, hour, minute;
    double seconds;
};

StampFields splitStamp(double stamp)
{
    // Far beyond any calendar, but room left for the century to be added.
    auto toInt = [](double v) { return std::isnan(v) ? 0 : static_cast<int>(std::clamp(v, -1e9, 1e9)); };
    StampFields f;
    f.year = toInt(std::floor(stamp / 10000));
    f.month = toInt(std::floor(std::fmod(stamp, 10000) / 100));
    f.day = toInt(std::floor(std::fmod(stamp, 100)));
    f.hour = toInt(std::floor(std::fmod(100 * stamp, 100)));
    f.minute = toInt(std::floor(std::fmod(10000 * stamp, 100)));
    f.seconds = std::fmod(1000000 * stamp, 100);
    return f;
}

} // namespace

double CZelTime::CduFilestamp(double stamp)
{
    StampFields f = splitStamp(stamp);
    if (f.year < 100)
        f.year += f.year < 50 ? 2000 : 1900;
    return Mjd(f.year, f.month, f.day, f.hour, f.minute, f.seconds);
}

double CZelTime::SetCduFilestamp(double stamp)
{
    StampFields f = splitStamp(stamp);
    f.year += f.year < 71 ? 2000 : 1900;
    const double value = Mjd(f.year, f.month, f.day, f.hour, f.minute, f.seconds);
    Mjd(value);
    return value;
}

double CZelTime::CurrentTime() { return CZelTimeHelper::GetMjd(CTime::GetCurrentTime()); }

double CZelTime::CurrentTimeUTC(int dst) { return CurrentTime() - SystemTimezoneMjd(dst); }

double CZelTime::LocalTimeZone(double& daylight)
{
    tzset();
    const time_t now = ::time(nullptr);
    struct tm tm {};
    daylight = localtime_r(&now, &tm) && tm.tm_isdst > 0 ? 1.0 : 0.0;
    const long west = ::timezone; // seconds west of Greenwich, standard time
    const long hours = west / 3600;
    const long rest = west % 3600;
    const long minutes = rest / 60;
    const double magnitude = std::labs(hours) + std::labs(minutes) / 60.0;
    // An offset of less than an hour east has hours == 0 and so takes the west sign.
    return hours >= 0 ? -magnitude : magnitude;
}

double CZelTime::SystemTimezone(int dst)
{
    const double daylight = dst ? systemZone().daylight : 0.0;
    return staticSystemTimeZone() + daylight;
}

double CZelTime::SystemTimezoneMjd(int dst) { return SystemTimezone(dst) / 24.0; }
double CZelTime::SystemDaylight() { return systemZone().daylight; }
double CZelTime::SystemDaylightMjd() { return SystemDaylight() / 24.0; }

// ---- Comparison ------------------------------------------------------------------

bool CZelTime::operator==(const CZelTime& other) const { return tolerantEqual(MjdUTC(), other.MjdUTC()); }
bool CZelTime::operator!=(const CZelTime& other) const { return !(*this == other); }

bool CZelTime::operator<(const CZelTime& other) const
{
    const double a = MjdUTC(), b = other.MjdUTC();
    return !tolerantEqual(a, b) && a < b;
}

bool CZelTime::operator>(const CZelTime& other) const
{
    const double a = MjdUTC(), b = other.MjdUTC();
    return !tolerantEqual(a, b) && a > b;
}

bool CZelTime::operator<=(const CZelTime& other) const
{
    const double a = MjdUTC(), b = other.MjdUTC();
    return a < b || tolerantEqual(a, b);
}

bool CZelTime::operator>=(const CZelTime& other) const
{
    const double a = MjdUTC(), b = other.MjdUTC();
    return a > b || tolerantEqual(a, b);
}

int ZelCompare(const CZelTime& a, const CZelTime& b) { return a == b ? 0 : (a < b ? -1 : 1); }
int ZelCompareDatePart(const CZelTime& a, const CZelTime& b)
{
    return CZelTimeHelper::DatePartEqual(a, b) ? 0 : (CZelTimeHelper::DatePartLess(a, b) ? -1 : 1);
}
int ZelCompareTimePart(const CZelTime& a, const CZelTime& b)
{
    return CZelTimeHelper::TimePartEqual(a, b) ? 0 : (CZelTimeHelper::TimePartLess(a, b) ? -1 : 1);
}
int ZelCompare(const CTime& a, const CTime& b) { return a == b ? 0 : (a < b ? -1 : 1); }
int ZelCompareDatePart(const CTime& a, const CTime& b)
{
    return CZelTimeHelper::DatePartEqual(a, b) ? 0 : (CZelTimeHelper::DatePartLess(a, b) ? -1 : 1);
}
int ZelCompareTimePart(const CTime& a, const CTime& b)
{
    return CZelTimeHelper::TimePartEqual(a, b) ? 0 : (CZelTimeHelper::TimePartLess(a, b) ? -1 : 1);
}
int ZelCompare(const COleDateTime& a, const COleDateTime& b) { return a == b ? 0 : (a < b ? -1 : 1); }
int ZelCompareDatePart(const COleDateTime& a, const COleDateTime& b)
{
    return CZelTimeHelper::DatePartEqual(a, b) ? 0 : (CZelTimeHelper::DatePartLess(a, b) ? -1 : 1);
}
int ZelCompareTimePart(const COleDateTime& a, const COleDateTime& b)
{
    return CZelTimeHelper::TimePartEqual(a, b) ? 0 : (CZelTimeHelper::TimePartLess(a, b) ? -1 : 1);
}

// ---- Text ------------------------------------------------------------------------

CString CZelTime::Format(int round) const { return CZelTimeHelper::Format(*this, flagOf(round)); }

CString CZelTime::Format(const char* format, int round) const
{
    return CZelTimeHelper::Format(*this, format, flagOf(round));
}

CString CZelTime::Format(eTimeFormat index, int round) const
{
    if (index < eTimeFormatCount)
        return Format(TimeFormats[index], round);
    return Format(round);
}

CString CZelTime::Format(HINSTANCE module, unsigned int stringId, int round) const
{
    CZelTime copy(*this);
    CZelTimeHelper::Round(copy, flagOf(round));
    CString templ;
    if (!zeltime::LoadStringFrom(module, stringId, templ))
        AtlThrow(E_FAIL);
    return copy.Format(templ, round);
}

CString CZelTime::FormatDate(int round) const { return CZelTimeHelper::FormatDate(*this, flagOf(round)); }
CString CZelTime::FormatTime(int round) const { return CZelTimeHelper::FormatTime(*this, flagOf(round)); }

CString CZelTime::FormatFracSec(int round) const
{
    CZelTime copy(*this);
    CZelTimeHelper::Round(copy, flagOf(round));
    const int decimals = round == 4 ? 1 : (round == 5 ? 2 : 3);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.*f", decimals, copy.m_fracSecond);
    return CString(buf + 1);
}

CString CZelTime::FormatUTC(int round) const { return FormatUTC(m_timezone, round); }
CString CZelTime::FormatUTC(double zone, int round) const { return CZelTime(Mjd() + zone / 24.0).Format(round); }
CString CZelTime::FormatUTC(const char* format, int round) const
{
    return CZelTime(Mjd() + m_timezone / 24.0).Format(format, round);
}
CString CZelTime::FormatUTC(eTimeFormat index, int round) const
{
    if (index < eTimeFormatCount)
        return FormatUTC(TimeFormats[index], round);
    return FormatUTC(round);
}
CString CZelTime::FormatDateUTC(int round) const { return FormatDateUTC(m_timezone, round); }
CString CZelTime::FormatDateUTC(double zone, int round) const
{
    return CZelTime(Mjd() + zone / 24.0).FormatDate(round);
}
CString CZelTime::FormatTimeUTC(int round) const { return FormatTimeUTC(m_timezone, round); }
CString CZelTime::FormatTimeUTC(double zone, int round) const
{
    return CZelTime(Mjd() + zone / 24.0).FormatTime(round);
}

double CZelTime::Round(int round) { return CZelTimeHelper::Round(*this, flagOf(round)); }

double CZelTime::ScanTime(CString& text, CString& format)
{
    text.TrimLeft();
    format.TrimLeft();
    long year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    double frac = 0.0;
    char marker[64] = "  ";
    bool shortYear = format.Find('%') < 0; // no field at all: a short year of 0
    bool secondsWithDecimals = false, daysWithDecimals = false;
    double secondsRead = 0.0, daysRead = 0.0;

    int pos;
    while ((pos = format.Find('%')) >= 0) {
        const char c = format.GetAt(pos + 1);
        format.SetAt(pos, ' ');
        const char* in = text.GetString();
        int got = 0;
        switch (c) {
        case 'd':
        case 'j': got = std::sscanf(in, "%ld", &day); break;
        case 'm': got = std::sscanf(in, "%ld", &month); break;
        case 'H':
        case 'I': got = std::sscanf(in, "%ld", &hour); break;
        case 'M': got = std::sscanf(in, "%ld", &minute); break;
        case 'S': got = std::sscanf(in, "%ld", &second); break;
        case 'y':
            got = std::sscanf(in, "%ld", &year);
            shortYear = true;
            break;
        case 'Y':
            got = std::sscanf(in, "%ld", &year);
            shortYear = false;
            break;
        case 'p': got = std::sscanf(in, "%63s", marker); break;
        case 's':
            got = std::sscanf(in, "%lf", &secondsRead);
            secondsWithDecimals = true;
            break;
        case 'D':
            got = std::sscanf(in, "%lf", &daysRead);
            daysWithDecimals = true;
            break;
        default: break;
        }
        if (got == EOF)
            break;
        // Step over the field (digits, '.', and the letters of AM/PM), then over
        // whatever separates it from the next one.
        auto inField = [](char ch) { return (ch >= '0' && ch <= '9') || ch == '.' || ch == 'A' || ch == 'P' || ch == 'M'; };
        const char* p = in;
        while (*p && inField(*p))
            ++p;
        while (*p && !inField(*p))
            ++p;
        text = CString(p);
    }

    year = std::clamp<long>(year, -1000000000L, 1000000000L);
    if (shortYear)
        year += year < 71 ? 2000 : 1900;
    if (std::strcmp(marker, "PM") == 0 && hour < 12)
        hour += 12;
    if (daysWithDecimals)
        CZelTimeSpanHelper::Mjd2Hms(daysRead, day, hour, minute, second, frac);
    if (secondsWithDecimals) {
        double whole;
        frac = std::modf(secondsRead, &whole);
        second = zeltime::ClampToLong(whole);
    }
    auto field = [](long v) { return static_cast<int>(std::clamp<long>(v, -2147483647L - 1, 2147483647L)); };
    static_cast<CTime&>(*this) =
        CTime(field(year), field(month), field(day), field(hour), field(minute), field(second), -1);
    m_fracSecond = frac;
    return Mjd();
}

int CZelTime::DateOrder() const
{
    const CString format = CurrentTimeFormat();
    const int i = format.Find("%m");
    const int j = format.Find("%d");
    if (j < 0)
        return 1;
    if (i < 0)
        return 0;
    return i <= j ? 1 : 0;
}

// ---- The current format ----------------------------------------------------------

const char* CZelTime::TimeFormatTemplate(unsigned int index) { return index < 32 ? TimeFormats[index] : TimeFormats[32]; }

void CZelTime::LoadCurrentTimeFormat()
{
    unsigned int index = zeltime::ReadProfileInt(TimeSection(), TimeEntryFormatNumber(), -1);
    if (index == static_cast<unsigned int>(-1))
        index = 0;
    if (index > 32)
        index = 0;
    currentFormat().index = index;
    currentFormat().text = TimeFormats[index];
}

void CZelTime::StoreCurrentTimeFormat(unsigned int index)
{
    if (index > 32)
        index = 0;
    currentFormat().index = index;
    currentFormat().text = TimeFormats[index];
    zeltime::WriteProfileInt(TimeSection(), TimeEntryFormatNumber(), static_cast<int>(index));
    zeltime::WriteProfileString(TimeSection(), TimeEntryFormatString(), TimeFormats[index]);
}

const CString& CZelTime::CurrentTimeFormatText()
{
    ensureFormatLoaded();
    return currentFormat().text;
}

CString CZelTime::CurrentTimeFormat()
{
    ensureFormatLoaded();
    return currentFormat().text;
}

unsigned int CZelTime::CurrentTimeFormatIndex()
{
    ensureFormatLoaded();
    return currentFormat().index;
}

char CZelTime::DateSeparator()
{
    const CString format = CurrentTimeFormat();
    int pos = format.Find("%Y");
    if (pos < 0)
        pos = format.Find("%y");
    if (pos < 0)
        return ' ';
    return pos > 0 ? format.GetAt(pos - 1) : format.GetAt(2);
}

void CZelTime::DefaultSettings(eTimeFormat index)
{
    if (index >= eTimeFormatCount)
        return;
    unsigned int used = zeltime::ReadProfileInt(TimeSection(), TimeEntryFormatNumber(), -1);
    if (used >= 32) {
        zeltime::WriteProfileInt(TimeSection(), TimeEntryFormatNumber(), static_cast<int>(index));
        zeltime::WriteProfileString(TimeSection(), TimeEntryFormatString(), TimeFormats[index]);
        used = index;
    }
    currentFormat().index = used;
    currentFormat().text = TimeFormats[used];
}
