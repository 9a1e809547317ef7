#include <Zel260/platform/COleDateTime.h>
#include <Zel260/platform/CTime.h>

#include <cmath>

namespace {

constexpr double HalfSecond = 0.5 / 86400.0;
constexpr long long DaysTo1970 = 25569; // 1899-12-30 to 1970-01-01
constexpr int LastDay = 2958465;        // 9999-12-31

// Days since 1970-01-01 of a proleptic Gregorian date.
long long daysFromCivil(long long y, unsigned m, unsigned d)
{
    y -= m <= 2;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long long>(doe) - 719468;
}

bool isLeap(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int daysInMonth(int y, int m)
{
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && isLeap(y) ? 29 : days[m - 1];
}

// The value as a point on an even time line: before 1899-12-30 the time of day
// counts forward from the (negative) day.
double toLinear(double dt)
{
    if (dt >= 0)
        return dt;
    const double day = std::trunc(dt);
    return day + (day - dt);
}

// The range is a stretch of the time line: before 1899-12-30 a time of day makes the
// value more negative, but not earlier.
bool inRange(double dt) { return toLinear(dt) >= COleDateTime::MinDateValue && dt <= COleDateTime::MaxDateValue; }

double fromLinear(double lin)
{
    if (lin >= 0)
        return lin;
    const double day = std::floor(lin);
    const double time = lin - day;
    // A day of -0 with some time is still the day 0 forward.
    return day == 0 ? time : day - time;
}

} // namespace

COleDateTime::COleDateTime(double days) noexcept : m_dt(days), m_status(inRange(days) ? valid : invalid) {}

COleDateTime::COleDateTime(__time64_t time) noexcept : m_dt(0.0), m_status(invalid)
{
    struct tm tm;
    if (CTime(time).GetLocalTm(&tm))
        SetDateTime(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
}

COleDateTime::COleDateTime(const SYSTEMTIME& st) noexcept : m_dt(0.0), m_status(valid)
{
    SetDateTime(st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond);
}

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute, int second) noexcept
    : m_dt(0.0), m_status(valid)
{
    SetDateTime(year, month, day, hour, minute, second);
}

COleDateTime COleDateTime::GetCurrentTime() noexcept { return COleDateTime(static_cast<__time64_t>(::time(nullptr))); }

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) noexcept
{
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month) ||
        hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) {
        m_dt = 0.0;
        m_status = invalid;
        return 1;
    }
    const double date = static_cast<double>(daysFromCivil(year, month, day) + DaysTo1970);
    const double time = (hour * 3600 + minute * 60 + second) / 86400.0;
    m_dt = date >= 0 ? date + time : date - time;
    m_status = valid;
    return 0;
}

bool COleDateTime::GetAsFields(int& year, int& month, int& day, int& hour, int& minute, int& second) const noexcept
{
    if (m_status != valid || !inRange(m_dt))
        return false;
    // Rounded to the second on the time line, so that a clock that rounds up to
    // midnight moves to the next day on either side of 1899-12-30. Within the range
    // every value below fits 32 bits and is exact, so truncation is a plain
    // conversion, and the day count from 0000-03-01 is positive, so the calendar
    // needs only unsigned divisions (no library call, no sign fix-ups).
    const double rounded = toLinear(m_dt) + HalfSecond;
    int dayNumber = static_cast<int>(rounded);
    if (static_cast<double>(dayNumber) > rounded)
        --dayNumber;
    const double wholeDay = static_cast<double>(dayNumber);
    const double time = rounded - wholeDay;
    int secs = static_cast<int>(time * 86400.0);
    if (secs > 86399)
        secs = 86399;
    // The range's last second does not round into a year the range doesn't have.
    if (dayNumber > LastDay) {
        dayNumber = LastDay;
        secs = 86399;
    }
    const auto z = static_cast<unsigned>(dayNumber - static_cast<int>(DaysTo1970) + 719468);
    const unsigned era = z / 146097;
    const unsigned doe = z - era * 146097;
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    year = static_cast<int>(yoe + era * 400 + (month <= 2));
    const auto t = static_cast<unsigned>(secs);
    hour = static_cast<int>(t / 3600);
    minute = static_cast<int>(t / 60 % 60);
    second = static_cast<int>(t % 60);
    return true;
}

bool COleDateTime::GetAsTm(struct tm& out) const noexcept
{
    int y, m, d, hour, minute, second;
    if (!GetAsFields(y, m, d, hour, minute, second))
        return false;
    const long long days = daysFromCivil(y, static_cast<unsigned>(m), static_cast<unsigned>(d));
    out = tm{};
    out.tm_year = y - 1900;
    out.tm_mon = m - 1;
    out.tm_mday = d;
    out.tm_hour = hour;
    out.tm_min = minute;
    out.tm_sec = second;
    const long long dow = (days + 4) % 7; // 1970-01-01 was a Thursday
    out.tm_wday = static_cast<int>(dow < 0 ? dow + 7 : dow);
    out.tm_yday = static_cast<int>(days - daysFromCivil(y, 1, 1));
    out.tm_isdst = 0;
    return true;
}

bool COleDateTime::GetAsSystemTime(SYSTEMTIME& st) const noexcept
{
    struct tm tm;
    if (!GetAsTm(tm))
        return false;
    st.wYear = static_cast<WORD>(tm.tm_year + 1900);
    st.wMonth = static_cast<WORD>(tm.tm_mon + 1);
    st.wDayOfWeek = static_cast<WORD>(tm.tm_wday);
    st.wDay = static_cast<WORD>(tm.tm_mday);
    st.wHour = static_cast<WORD>(tm.tm_hour);
    st.wMinute = static_cast<WORD>(tm.tm_min);
    st.wSecond = static_cast<WORD>(tm.tm_sec);
    st.wMilliseconds = 0;
    return true;
}

int COleDateTime::GetYear() const noexcept
{
    struct tm tm;
    return GetAsTm(tm) ? tm.tm_year + 1900 : -1;
}
int COleDateTime::GetMonth() const noexcept
{
    struct tm tm;
    return GetAsTm(tm) ? tm.tm_mon + 1 : -1;
}
int COleDateTime::GetDay() const noexcept
{
    struct tm tm;
    return GetAsTm(tm) ? tm.tm_mday : -1;
}
int COleDateTime::GetHour() const noexcept
{
    struct tm tm;
    return GetAsTm(tm) ? tm.tm_hour : -1;
}
int COleDateTime::GetMinute() const noexcept
{
    struct tm tm;
    return GetAsTm(tm) ? tm.tm_min : -1;
}
int COleDateTime::GetSecond() const noexcept
{
    struct tm tm;
    return GetAsTm(tm) ? tm.tm_sec : -1;
}
int COleDateTime::GetDayOfWeek() const noexcept
{
    struct tm tm;
    return GetAsTm(tm) ? tm.tm_wday + 1 : -1;
}
int COleDateTime::GetDayOfYear() const noexcept
{
    struct tm tm;
    return GetAsTm(tm) ? tm.tm_yday + 1 : -1;
}

CString COleDateTime::Format(const char* format) const
{
    struct tm tm;
    char buf[256];
    if (!format || !GetAsTm(tm) || !CTime::FormatTm(buf, sizeof buf, format, tm))
        return CString();
    return CString(buf);
}

COleDateTime COleDateTime::operator+(const COleDateTimeSpan& span) const noexcept
{
    COleDateTime r;
    if (m_status != valid || span.m_status != COleDateTimeSpan::valid) {
        r.m_status = m_status == invalid || span.m_status == COleDateTimeSpan::invalid ? invalid : null;
        return r;
    }
    r.m_dt = fromLinear(toLinear(m_dt) + span.m_span);
    r.m_status = inRange(r.m_dt) ? valid : invalid;
    return r;
}

COleDateTime COleDateTime::operator-(const COleDateTimeSpan& span) const noexcept
{
    COleDateTimeSpan neg(-span.m_span);
    neg.m_status = span.m_status;
    return *this + neg;
}

COleDateTimeSpan COleDateTime::operator-(const COleDateTime& other) const noexcept
{
    COleDateTimeSpan r(toLinear(m_dt) - toLinear(other.m_dt));
    if (m_status != valid || other.m_status != valid)
        r.m_status = COleDateTimeSpan::invalid;
    return r;
}

bool COleDateTime::operator<(const COleDateTime& o) const noexcept { return toLinear(m_dt) < toLinear(o.m_dt); }
