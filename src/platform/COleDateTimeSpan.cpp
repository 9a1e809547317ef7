#include <Zel260/platform/COleDateTimeSpan.h>
#include <Zel260/platform/CAtlException.h>

#include "platform/SpanFormat.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr double HalfSecond = 0.5 / 86400.0;

// Truncation that stays defined for any double: the platform clamps what won't fit.
LONG clampToLong(double v)
{
    if (std::isnan(v))
        return 0;
    if (v >= 2147483647.0)
        return 2147483647;
    if (v <= -2147483648.0)
        return -2147483647 - 1;
    return static_cast<LONG>(v);
}

} // namespace

COleDateTimeSpan::COleDateTimeSpan(LONG days, int hours, int minutes, int seconds) noexcept
{
    SetDateTimeSpan(days, hours, minutes, seconds);
}

void COleDateTimeSpan::SetDateTimeSpan(LONG days, int hours, int minutes, int seconds) noexcept
{
    m_span = days + hours / 24.0 + minutes / 1440.0 + seconds / 86400.0;
    m_status = valid;
}

double COleDateTimeSpan::GetTotalHours() const noexcept
{
    return std::trunc((m_span + (m_span < 0 ? -HalfSecond : HalfSecond)) * 24.0);
}
double COleDateTimeSpan::GetTotalMinutes() const noexcept
{
    return std::trunc((m_span + (m_span < 0 ? -HalfSecond : HalfSecond)) * 1440.0);
}
double COleDateTimeSpan::GetTotalSeconds() const noexcept
{
    return std::trunc((m_span + (m_span < 0 ? -HalfSecond : HalfSecond)) * 86400.0);
}
LONG COleDateTimeSpan::GetDays() const noexcept { return clampToLong(m_span); }
LONG COleDateTimeSpan::GetHours() const noexcept { return clampToLong(std::fmod(GetTotalHours(), 24.0)); }
LONG COleDateTimeSpan::GetMinutes() const noexcept { return clampToLong(std::fmod(GetTotalMinutes(), 60.0)); }
LONG COleDateTimeSpan::GetSeconds() const noexcept { return clampToLong(std::fmod(GetTotalSeconds(), 60.0)); }

CString COleDateTimeSpan::Format(const char* format) const
{
    if (m_status != valid)
        return CString();
    return zelplatform::FormatSpanFields(format, GetDays(), GetHours(), GetMinutes(), GetSeconds());
}

COleDateTimeSpan COleDateTimeSpan::operator+(const COleDateTimeSpan& other) const noexcept
{
    COleDateTimeSpan r(m_span + other.m_span);
    if (m_status != valid || other.m_status != valid)
        r.m_status = (m_status == invalid || other.m_status == invalid) ? invalid : null;
    return r;
}

COleDateTimeSpan COleDateTimeSpan::operator-(const COleDateTimeSpan& other) const noexcept
{
    COleDateTimeSpan r(m_span - other.m_span);
    if (m_status != valid || other.m_status != valid)
        r.m_status = (m_status == invalid || other.m_status == invalid) ? invalid : null;
    return r;
}
