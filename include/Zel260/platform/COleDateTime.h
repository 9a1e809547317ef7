// A calendar time as the platform's COleDateTime: a double count of days since
// 1899-12-30 00:00:00, with no time zone, and a status. Before that day the whole
// part counts days back and the fraction is the time of that day, whatever its sign
// (-1.25 is 1899-12-29 06:00). The valid range is 0100-01-01 00:00:00 to
// 9999-12-31 23:59:59.
#pragma once

#include <Zel260/platform/COleDateTimeSpan.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

#include <ctime>

class COleDateTime {
public:
    enum DateTimeStatus { valid = 0, invalid = 1, null = 2 };

    // The value 0.0 (1899-12-30 00:00:00), valid.
    COleDateTime() noexcept : m_dt(0.0), m_status(valid) {}
    // Any value; one outside the range makes the status invalid.
    COleDateTime(double days) noexcept;
    // Local time of a count of seconds since 1970.
    COleDateTime(__time64_t time) noexcept;
    COleDateTime(const SYSTEMTIME& time) noexcept;
    // Year 100..9999, month 1..12, day 1..last of the month, hour 0..23, minute and
    // second 0..59; otherwise the status becomes invalid (no exception).
    COleDateTime(int year, int month, int day, int hour, int minute, int second) noexcept;

    static COleDateTime GetCurrentTime() noexcept;

    // 0 on success, 1 (and status invalid) for a bad field.
    int SetDateTime(int year, int month, int day, int hour, int minute, int second) noexcept;
    int SetDate(int year, int month, int day) noexcept { return SetDateTime(year, month, day, 0, 0, 0); }
    DateTimeStatus GetStatus() const noexcept { return m_status; }
    void SetStatus(DateTimeStatus status) noexcept { m_status = status; }
    operator double() const noexcept { return m_dt; }

    // Fields, rounded to the nearest second; -1 unless valid.
    int GetYear() const noexcept;
    int GetMonth() const noexcept;
    int GetDay() const noexcept;
    int GetHour() const noexcept;
    int GetMinute() const noexcept;
    int GetSecond() const noexcept;
    int GetDayOfWeek() const noexcept;  // 1 Sunday .. 7 Saturday
    int GetDayOfYear() const noexcept;  // 1..366
    // The broken-down fields (tm_year from 1900, tm_wday, tm_yday filled, no
    // daylight flag); false unless valid.
    bool GetAsTm(struct tm& out) const noexcept;
    // The same six fields without the day of week and of year, for callers that
    // only compute with them; false (and nothing written) unless valid.
    bool GetAsFields(int& year, int& month, int& day, int& hour, int& minute, int& second) const noexcept;
    bool GetAsSystemTime(SYSTEMTIME& out) const noexcept;

    // strftime of the fields with the "%#" flag honoured; empty unless valid or when
    // the text passes 255 bytes.
    CString Format(const char* format) const;

    // Arithmetic works on the linear time line; a result out of range is invalid.
    COleDateTime operator+(const COleDateTimeSpan& span) const noexcept;
    COleDateTime operator-(const COleDateTimeSpan& span) const noexcept;
    COleDateTime& operator+=(const COleDateTimeSpan& span) noexcept { return *this = *this + span; }
    COleDateTime& operator-=(const COleDateTimeSpan& span) noexcept { return *this = *this - span; }
    COleDateTimeSpan operator-(const COleDateTime& other) const noexcept;
    bool operator==(const COleDateTime& o) const noexcept { return m_status == o.m_status && m_dt == o.m_dt; }
    bool operator!=(const COleDateTime& o) const noexcept { return !(*this == o); }
    bool operator<(const COleDateTime& o) const noexcept;
    bool operator>(const COleDateTime& o) const noexcept { return o < *this; }
    bool operator<=(const COleDateTime& o) const noexcept { return !(o < *this); }
    bool operator>=(const COleDateTime& o) const noexcept { return !(*this < o); }

    static constexpr double MinDateValue = -657434.0;          // 0100-01-01
    static constexpr double MaxDateValue = 2958465.99999999;   // 9999-12-31 23:59:59

    double m_dt;
    DateTimeStatus m_status;
};
