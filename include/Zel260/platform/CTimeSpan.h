// A length of time in whole seconds (signed 64 bits), as the platform's CTimeSpan.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

class CTimeSpan {
public:
    CTimeSpan() noexcept : m_span(0) {}
    CTimeSpan(__time64_t seconds) noexcept : m_span(seconds) {}
    // ((days * 24 + hours) * 60 + minutes) * 60 + seconds; no field is range-checked.
    CTimeSpan(LONG days, int hours, int minutes, int seconds) noexcept;

    __time64_t GetTimeSpan() const noexcept { return m_span; }
    LONGLONG GetDays() const noexcept { return m_span / 86400; }
    LONGLONG GetTotalHours() const noexcept { return m_span / 3600; }
    // Hours within the day, 0..23 for a positive span.
    LONG GetHours() const noexcept { return static_cast<LONG>(GetTotalHours() - GetDays() * 24); }
    LONGLONG GetTotalMinutes() const noexcept { return m_span / 60; }
    // Minutes within the hour, 0..59 for a positive span.
    LONG GetMinutes() const noexcept { return static_cast<LONG>(GetTotalMinutes() - GetTotalHours() * 60); }
    LONGLONG GetTotalSeconds() const noexcept { return m_span; }
    // Seconds within the minute, 0..59 for a positive span.
    LONG GetSeconds() const noexcept { return static_cast<LONG>(GetTotalSeconds() - GetTotalMinutes() * 60); }

    // Tokens: %D days, %H hours in the day, %M minutes, %S seconds (two digits each
    // but the days), %#D %#H %#M %#S without leading zero, %% a percent sign. Other
    // characters are copied. Any other token, or a lone "%" at the end, throws
    // CAtlException(E_INVALIDARG).
    CString Format(const char* format) const;

    // Sums and differences wrap around in 64 bits instead of overflowing.
    CTimeSpan operator+(CTimeSpan other) const noexcept { return CTimeSpan(WrapAdd(m_span, other.m_span)); }
    CTimeSpan operator-(CTimeSpan other) const noexcept { return CTimeSpan(WrapSub(m_span, other.m_span)); }
    CTimeSpan& operator+=(CTimeSpan other) noexcept { m_span = WrapAdd(m_span, other.m_span); return *this; }
    CTimeSpan& operator-=(CTimeSpan other) noexcept { m_span = WrapSub(m_span, other.m_span); return *this; }

    static constexpr __time64_t WrapAdd(__time64_t a, __time64_t b) noexcept
    {
        return static_cast<__time64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
    }
    static constexpr __time64_t WrapSub(__time64_t a, __time64_t b) noexcept
    {
        return static_cast<__time64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
    }
    bool operator==(CTimeSpan other) const noexcept { return m_span == other.m_span; }
    bool operator!=(CTimeSpan other) const noexcept { return m_span != other.m_span; }
    bool operator<(CTimeSpan other) const noexcept { return m_span < other.m_span; }
    bool operator>(CTimeSpan other) const noexcept { return m_span > other.m_span; }
    bool operator<=(CTimeSpan other) const noexcept { return m_span <= other.m_span; }
    bool operator>=(CTimeSpan other) const noexcept { return m_span >= other.m_span; }

private:
    __time64_t m_span;
};
