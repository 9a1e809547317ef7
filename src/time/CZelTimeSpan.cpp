#include <Zel260/time/CZelTimeSpan.h>

#include <Zel260/platform/CAtlException.h>
#include <Zel260/time/CZelTimeSpanHelper.h>

#include "TimeProfile.h"

#include <cmath>

namespace {

CZelTimeSpanHelper::eRoundFlag flagOf(int round) { return static_cast<CZelTimeSpanHelper::eRoundFlag>(round); }

// The whole seconds of a split count of days, as the platform's field constructor
// computes them (days as a 32-bit count).
CTimeSpan spanOfDays(double days, double& frac)
{
    long day, hour, minute, second;
    CZelTimeSpanHelper::Mjd2Hms(days, day, hour, minute, second, frac);
    return CTimeSpan(static_cast<LONG>(static_cast<std::uint32_t>(day)), static_cast<int>(hour),
                     static_cast<int>(minute), static_cast<int>(second));
}

} // namespace

IMPLEMENT_DYNAMIC(CZelTimeSpan, CObject)

CZelTimeSpan::CZelTimeSpan() : CTimeSpan(), m_fracSecond(0.0) {}
CZelTimeSpan::CZelTimeSpan(const CZelTimeSpan& other) : CObject(other), CTimeSpan(other), m_fracSecond(other.m_fracSecond) {}
CZelTimeSpan::CZelTimeSpan(const CTimeSpan& span) : CTimeSpan(span), m_fracSecond(0.0) {}
CZelTimeSpan::CZelTimeSpan(std::int64_t seconds) : CTimeSpan(seconds), m_fracSecond(0.0) {}
CZelTimeSpan::CZelTimeSpan(long days, int hours, int minutes, int seconds)
    : CTimeSpan(static_cast<LONG>(static_cast<std::uint32_t>(days)), hours, minutes, seconds), m_fracSecond(0.0)
{
}

CZelTimeSpan::CZelTimeSpan(double days) : m_fracSecond(0.0)
{
    static_cast<CTimeSpan&>(*this) = spanOfDays(days, m_fracSecond);
}

CZelTimeSpan::CZelTimeSpan(int gpsWeeks, const double& gpsSeconds) : m_fracSecond(0.0)
{
    SetGpsTimeSpan(gpsWeeks, gpsSeconds);
}

CZelTimeSpan& CZelTimeSpan::operator=(const CZelTimeSpan& other)
{
    static_cast<CTimeSpan&>(*this) = other;
    m_fracSecond = other.m_fracSecond;
    return *this;
}

double CZelTimeSpan::Mjd() const { return CZelTimeSpanHelper::GetMjd(*this); }
void CZelTimeSpan::Mjd(double days) { CZelTimeSpanHelper::SetMjd(days, *this); }

CString CZelTimeSpan::Format(const char* format, int round) const
{
    return CZelTimeSpanHelper::Format(*this, format, flagOf(round));
}

CString CZelTimeSpan::Format(HINSTANCE module, unsigned int stringId, int round) const
{
    CString templ;
    if (!zeltime::LoadStringFrom(module, stringId, templ))
        AtlThrow(E_FAIL);
    return CZelTimeSpanHelper::Format(*this, templ, flagOf(round));
}

double CZelTimeSpan::Round(int round) { return CZelTimeSpanHelper::Round(*this, flagOf(round)); }

void CZelTimeSpan::SetGpsTimeSpan(int weeks, const double& seconds)
{
    *this = CZelTimeSpan(weeks * 7.0 + seconds / 86400.0);
}

int CZelTimeSpan::GetGpsTimeSpan(int& weeks, double& seconds) const
{
    const double d = Mjd();
    const double w = std::trunc(d / 7.0);
    weeks = std::isnan(w) ? 0 : static_cast<int>(std::fmax(-2147483648.0, std::fmin(w, 2147483647.0)));
    seconds = (d - 7.0 * weeks) * 86400.0;
    return TRUE;
}
