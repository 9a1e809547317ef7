// A point in time as the platform's CTime: signed 64-bit seconds since 1970-01-01
// 00:00:00 UTC. Field reads are local-time reads of that count (localtime_r, so the
// process's TZ decides). Construction from fields goes through mktime with a
// daylight flag: 1 daylight saving time, 0 standard time, -1 let the zone decide.
//
// The platform's calendar covers 1970-01-01 00:00:00 UTC to 3000-12-31 23:59:59 UTC;
// counts outside that can't be broken down (GetLocalTm gives null) and fields that
// land outside it are refused.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/CTimeSpan.h>
#include <Zel260/platform/Win32Types.h>

#include <ctime>

class CTime {
public:
    // The zero time (1970-01-01 00:00:00 UTC).
    CTime() noexcept : m_time(0) {}
    CTime(__time64_t time) noexcept : m_time(time) {}
    // Year >= 1900, month 1..12, day 1..31, hour 0..23, minute and second 0..59,
    // else CAtlException(E_FAIL). A day past the month's end rolls over as mktime
    // does. A result outside the platform's calendar: CAtlException(E_INVALIDARG).
    CTime(int year, int month, int day, int hour, int minute, int second, int dst = -1);
    // MS-DOS date and time words (year since 1980, seconds in steps of 2); the
    // fields are checked as above.
    CTime(WORD dosDate, WORD dosTime, int dst = -1);
    // A year below 1900 gives the zero time without failing; else as the field form
    // (milliseconds and day of week ignored).
    CTime(const SYSTEMTIME& time, int dst = -1);
    // A UTC file time, turned into local fields and then built as the field form.
    CTime(const FILETIME& time, int dst = -1);

    static CTime GetCurrentTime() noexcept;

    __time64_t GetTime() const noexcept { return m_time; }
    // Local breakdown into *out; null when the count lies outside the calendar.
    struct tm* GetLocalTm(struct tm* out) const noexcept;
    // UTC breakdown into *out; null when the count lies outside the calendar.
    struct tm* GetGmtTm(struct tm* out) const noexcept;

    // Local fields; each is 0 (GetYear 0, ...) when the count can't be broken down.
    int GetYear() const noexcept;
    int GetMonth() const noexcept;      // 1..12
    int GetDay() const noexcept;        // 1..31
    int GetHour() const noexcept;       // 0..23
    int GetMinute() const noexcept;     // 0..59
    int GetSecond() const noexcept;     // 0..59
    int GetDayOfWeek() const noexcept;  // 1 Sunday .. 7 Saturday

    // strftime of the local time; the Windows flag "%#" (no leading zero) is
    // honoured. Empty when the count can't be broken down or the text passes 127
    // bytes.
    CString Format(const char* format) const;
    CString FormatGmt(const char* format) const;

    // Arithmetic wraps around in 64 bits instead of overflowing.
    CTimeSpan operator-(CTime other) const noexcept { return CTimeSpan(CTimeSpan::WrapSub(m_time, other.m_time)); }
    CTime operator+(CTimeSpan span) const noexcept { return CTime(CTimeSpan::WrapAdd(m_time, span.GetTimeSpan())); }
    CTime operator-(CTimeSpan span) const noexcept { return CTime(CTimeSpan::WrapSub(m_time, span.GetTimeSpan())); }
    CTime& operator+=(CTimeSpan span) noexcept { m_time = CTimeSpan::WrapAdd(m_time, span.GetTimeSpan()); return *this; }
    CTime& operator-=(CTimeSpan span) noexcept { m_time = CTimeSpan::WrapSub(m_time, span.GetTimeSpan()); return *this; }
    bool operator==(CTime other) const noexcept { return m_time == other.m_time; }
    bool operator!=(CTime other) const noexcept { return m_time != other.m_time; }
    bool operator<(CTime other) const noexcept { return m_time < other.m_time; }
    bool operator>(CTime other) const noexcept { return m_time > other.m_time; }
    bool operator<=(CTime other) const noexcept { return m_time <= other.m_time; }
    bool operator>=(CTime other) const noexcept { return m_time >= other.m_time; }

    // First and last count the calendar can break down.
    static constexpr __time64_t MinCalendarTime = 0;
    static constexpr __time64_t MaxCalendarTime = 32535215999; // 3000-12-31 23:59:59 UTC

    // strftime into buffer[size] with the "%#" flag mapped to glibc's "%-" (numbers)
    // or dropped (names). Returns the length, 0 on overflow or empty output.
    static size_t FormatTm(char* buffer, size_t size, const char* format, const struct tm& tm);

private:
    __time64_t m_time;
};
