// A length of time as a double count of days with a status, as the platform's
// COleDateTimeSpan. Totals round half a second away from zero and truncate.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

class COleDateTimeSpan {
public:
    enum DateTimeSpanStatus { valid = 0, invalid = 1, null = 2 };

    COleDateTimeSpan() noexcept : m_span(0.0), m_status(valid) {}
    COleDateTimeSpan(double days) noexcept : m_span(days), m_status(valid) {}
    COleDateTimeSpan(LONG days, int hours, int minutes, int seconds) noexcept;

    DateTimeSpanStatus GetStatus() const noexcept { return m_status; }
    void SetStatus(DateTimeSpanStatus status) noexcept { m_status = status; }
    void SetDateTimeSpan(LONG days, int hours, int minutes, int seconds) noexcept;

    // The value in days.
    operator double() const noexcept { return m_span; }
    double GetTotalDays() const noexcept { return m_span; }
    // Each total adds half a second with the span's sign, scales and truncates.
    double GetTotalHours() const noexcept;
    double GetTotalMinutes() const noexcept;
    double GetTotalSeconds() const noexcept;
    LONG GetDays() const noexcept;      // whole days, truncated toward zero
    LONG GetHours() const noexcept;     // total hours modulo 24
    LONG GetMinutes() const noexcept;   // total minutes modulo 60
    LONG GetSeconds() const noexcept;   // total seconds modulo 60

    // The tokens of CTimeSpan::Format (%D %H %M %S, their "%#" forms, %%); any other
    // token throws CAtlException(E_INVALIDARG). Empty unless the status is valid.
    CString Format(const char* format) const;

    COleDateTimeSpan operator+(const COleDateTimeSpan& other) const noexcept;
    COleDateTimeSpan operator-(const COleDateTimeSpan& other) const noexcept;
    COleDateTimeSpan& operator+=(const COleDateTimeSpan& other) noexcept { return *this = *this + other; }
    COleDateTimeSpan& operator-=(const COleDateTimeSpan& other) noexcept { return *this = *this - other; }
    bool operator==(const COleDateTimeSpan& o) const noexcept { return m_status == o.m_status && m_span == o.m_span; }
    bool operator!=(const COleDateTimeSpan& o) const noexcept { return !(*this == o); }
    bool operator<(const COleDateTimeSpan& o) const noexcept { return m_span < o.m_span; }
    bool operator>(const COleDateTimeSpan& o) const noexcept { return m_span > o.m_span; }
    bool operator<=(const COleDateTimeSpan& o) const noexcept { return m_span <= o.m_span; }
    bool operator>=(const COleDateTimeSpan& o) const noexcept { return m_span >= o.m_span; }

    double m_span;
    DateTimeSpanStatus m_status;
};
