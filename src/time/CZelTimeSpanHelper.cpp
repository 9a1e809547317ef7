#include <Zel260/time/CZelTimeSpanHelper.h>

#include "FractionRounding.h"
#include "TimeFields.h"

#include <cmath>

void CZelTimeSpanHelper::Mjd2Hms(const double& days, long& day, long& hour, long& minute, long& second,
                                 double& fracSecond)
{
    zeltime::SplitDays(days, day, hour, minute, second, fracSecond);
}

#include <Zel260/platform/CAtlException.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <type_traits>

namespace {

// Fills "%u" from the two 32-bit halves of one 64-bit argument, as a printf of the
// text with that argument would, and turns "%%" into "%". A third "%u" has no
// argument left and reads 0.
CString fillHourToken(const CString& text, std::uint64_t bits)
{
    const std::uint32_t halves[2] = {static_cast<std::uint32_t>(bits), static_cast<std::uint32_t>(bits >> 32)};
    int next = 0;
    CString out;
    const char* p = text.GetString();
    while (*p) {
        if (p[0] == '%' && p[1] == 'u') {
            char buf[16];
            std::snprintf(buf, sizeof buf, "%u", next < 2 ? halves[next] : 0u);
            ++next;
            out += buf;
            p += 2;
        } else if (p[0] == '%' && p[1] == '%') {
            out += '%';
            p += 2;
        } else {
            out += *p++;
        }
    }
    return out;
}

// Steps 1 to 5 of every span format: the template with its hour token made into
// "%%u", expanded by `expand`. Returns whether there was an hour token and whether
// the expanded text names days.
template <class Expand>
CString expandWithHourToken(const char* format, Expand expand, bool& hourToken, bool& days)
{
    CString templ(format);
    const char* token = templ.Find("%h") >= 0 ? "%h" : (templ.Find("%H") >= 0 ? "%H" : nullptr);
    hourToken = token != nullptr;
    if (token)
        templ.Replace(token, "%%u");
    CString text = expand(templ);
    days = hourToken && text.Find("%D") >= 0;
    return text;
}

template <class Value>
CString fillAll(CString text, Value bits)
{
    while (text.Find("%u") >= 0)
        text = fillHourToken(text, bits);
    return text;
}

} // namespace

IMPLEMENT_DYNAMIC(CZelTimeSpanHelper, CObject)

double CZelTimeSpanHelper::GetMjd(const CZelTimeSpan& span)
{
    return static_cast<double>(span.GetTimeSpan()) / 86400.0 + span.m_fracSecond / 86400.0;
}
double CZelTimeSpanHelper::GetMjd(const CTimeSpan& span) { return static_cast<double>(span.GetTimeSpan()) / 86400.0; }
double CZelTimeSpanHelper::GetMjd(const COleDateTimeSpan& span) { return span.m_span; }

void CZelTimeSpanHelper::SetMjd(double days, CZelTimeSpan& span)
{
    if (days >= MinCTimeSpanAsMjd() && days <= MaxCTimeSpanAsMjd())
        span = CZelTimeSpan(days);
}

void CZelTimeSpanHelper::SetMjd(double days, CTimeSpan& span)
{
    if (!(days >= MinCTimeSpanAsMjd() && days <= MaxCTimeSpanAsMjd()))
        return;
    // A 32-bit count made into 64 bits: beyond 2147483647 seconds it wraps.
    const auto whole = static_cast<std::int64_t>(std::trunc(days * 86400.0));
    span = CTimeSpan(static_cast<std::int64_t>(static_cast<std::int32_t>(static_cast<std::uint32_t>(whole))));
}

void CZelTimeSpanHelper::SetMjd(double days, COleDateTimeSpan& span) { span = COleDateTimeSpan(days); }

// ---- Limits ----------------------------------------------------------------------

const CTimeSpan& CZelTimeSpanHelper::MinCTimeSpan()
{
    static const CTimeSpan s(0);
    return s;
}
const CTimeSpan& CZelTimeSpanHelper::MaxCTimeSpan()
{
    static const CTimeSpan s(2147483647);
    return s;
}
double CZelTimeSpanHelper::MinCTimeSpanAsMjd() { return 0.0; }
double CZelTimeSpanHelper::MaxCTimeSpanAsMjd() { return 2147483647.0; }
const COleDateTimeSpan& CZelTimeSpanHelper::MinOleDateTimeSpan()
{
    static const COleDateTimeSpan s(0.0);
    return s;
}
const COleDateTimeSpan& CZelTimeSpanHelper::MaxOleDateTimeSpan()
{
    static const COleDateTimeSpan s(std::numeric_limits<double>::max());
    return s;
}
const COleDateTimeSpan& CZelTimeSpanHelper::MinCTimeSpanAsOleDateTimeSpan()
{
    static const COleDateTimeSpan s(0.0);
    return s;
}
const COleDateTimeSpan& CZelTimeSpanHelper::MaxCTimeSpanAsOleDateTimeSpan()
{
    static const COleDateTimeSpan s(2147483647.0);
    return s;
}
const COleDateTimeSpan& CZelTimeSpanHelper::MinDateTimeSpanCtrlAsOleDateTimeSpan()
{
    static const COleDateTimeSpan s(0, 0, 0, 0);
    return s;
}
const COleDateTimeSpan& CZelTimeSpanHelper::MaxDateTimeSpanCtrlAsOleDateTimeSpan()
{
    static const COleDateTimeSpan s(0, 23, 59, 59);
    return s;
}
double CZelTimeSpanHelper::MinDateTimeSpanCtrlAsMjd() { return 0.0; }
double CZelTimeSpanHelper::MaxDateTimeSpanCtrlAsMjd() { return 86399.0; }

void CZelTimeSpanHelper::GetPhysicalRange(CTimeSpan& min, CTimeSpan& max)
{
    min = MinCTimeSpan();
    max = MaxCTimeSpan();
}

void CZelTimeSpanHelper::GetPhysicalRange(CZelTimeSpan& min, CZelTimeSpan& max)
{
    min = CZelTimeSpan(MinCTimeSpan());
    max = CZelTimeSpan(MaxCTimeSpan());
}

void CZelTimeSpanHelper::GetPhysicalRange(eRangeType type, COleDateTimeSpan& min, COleDateTimeSpan& max)
{
    switch (type) {
    case eRangeOleDateTimeSpan:
        min = MinOleDateTimeSpan();
        max = MaxOleDateTimeSpan();
        break;
    case eRangeDateTimeSpanCtrl:
        min = MinDateTimeSpanCtrlAsOleDateTimeSpan();
        max = MaxDateTimeSpanCtrlAsOleDateTimeSpan();
        break;
    default:
        min = MinCTimeSpanAsOleDateTimeSpan();
        max = MaxCTimeSpanAsOleDateTimeSpan();
        break;
    }
}

void CZelTimeSpanHelper::GetPhysicalRange(eRangeType type, double& min, double& max)
{
    if (type == eRangeCTimeSpan) {
        min = static_cast<double>(MinCTimeSpan().GetTimeSpan());
        max = static_cast<double>(MaxCTimeSpan().GetTimeSpan());
        return;
    }
    COleDateTimeSpan lo, hi;
    GetPhysicalRange(type, lo, hi);
    min = lo.GetTotalSeconds();
    max = hi.GetTotalSeconds();
}

void CZelTimeSpanHelper::GetPhysicalRangeMjd(eRangeType type, double& min, double& max)
{
    if (type == eRangeCTimeSpan) {
        min = static_cast<double>(MinCTimeSpan().GetTimeSpan()) / 86400.0;
        max = static_cast<double>(MaxCTimeSpan().GetTimeSpan()) / 86400.0;
        return;
    }
    COleDateTimeSpan lo, hi;
    GetPhysicalRange(type, lo, hi);
    min = lo.m_span;
    max = hi.m_span;
}

// ---- Rounding --------------------------------------------------------------------

namespace {

// Minute and hour rounding shared by CTimeSpan and CZelTimeSpan; true when it acted.
bool roundWholeSpan(CTimeSpan& span, int flag, __time64_t lo, __time64_t hi)
{
    const __time64_t s = span.GetTimeSpan();
    if (flag == CZelTimeSpanHelper::eRoundMinute) {
        const __time64_t sec = s % 60;
        if (!(s <= hi - 60 && s >= lo + sec))
            return false;
        if (sec >= 30)
            span += CTimeSpan(60);
        span -= CTimeSpan(sec);
        return true;
    }
    if (flag == CZelTimeSpanHelper::eRoundHour) {
        const __time64_t part = span.GetMinutes() * 60 + s % 60;
        if (!(s <= hi - 3600 && s >= lo + part))
            return false;
        if (span.GetMinutes() >= 30)
            span += CTimeSpan(3600);
        span -= CTimeSpan(part);
        return true;
    }
    return false;
}

} // namespace

double CZelTimeSpanHelper::Round(CZelTimeSpan& span, eRoundFlag flag)
{
    const __time64_t lo = MinCTimeSpan().GetTimeSpan();
    const __time64_t hi = MaxCTimeSpan().GetTimeSpan();
    const __time64_t s = span.GetTimeSpan();
    CTimeSpan& base = span;
    switch (flag) {
    case eRoundMinute:
    case eRoundHour:
        if (roundWholeSpan(base, flag, lo, hi))
            span.m_fracSecond = 0.0;
        break;
    default:
        zeltime::RoundFraction(base, span.m_fracSecond, flag, s, lo, hi);
        break;
    }
    return GetMjd(span);
}

double CZelTimeSpanHelper::Round(CTimeSpan& span, eRoundFlag flag)
{
    roundWholeSpan(span, flag, MinCTimeSpan().GetTimeSpan(), MaxCTimeSpan().GetTimeSpan());
    return GetMjd(span);
}

double CZelTimeSpanHelper::Round(COleDateTimeSpan& span, eRoundFlag flag)
{
    if (flag == eRoundMinute) {
        const double sec = std::fmod(span.GetTotalSeconds(), 60.0);
        if (sec >= 30)
            span += COleDateTimeSpan(0, 0, 1, 0);
        span -= COleDateTimeSpan(sec / 86400.0);
    } else if (flag == eRoundHour) {
        const double minutes = std::fmod(span.GetTotalMinutes(), 60.0);
        const double sec = std::fmod(span.GetTotalSeconds(), 60.0);
        if (minutes >= 30)
            span += COleDateTimeSpan(0, 1, 0, 0);
        span -= COleDateTimeSpan(minutes / 1440.0 + sec / 86400.0);
    }
    return GetMjd(span);
}

// ---- Text ------------------------------------------------------------------------

namespace {

// Format of the two whole-second spans; a CZelTimeSpan's fraction never shows.
template <class Span>
CString formatWholeSeconds(Span copy, const char* format, CZelTimeSpanHelper::eRoundFlag flag)
{
    CZelTimeSpanHelper::Round(copy, flag);
    bool hourToken, days;
    const CString text = expandWithHourToken(
        format ? format : "", [&copy](const CString& t) { return copy.CTimeSpan::Format(t); }, hourToken, days);
    if (!hourToken)
        return text;
    const std::int64_t hours = days ? copy.GetHours() : copy.GetTimeSpan() / 3600;
    return fillAll(text, static_cast<std::uint64_t>(hours));
}

} // namespace

CString CZelTimeSpanHelper::Format(const CZelTimeSpan& span, const char* format, eRoundFlag flag)
{
    return formatWholeSeconds(span, format, flag);
}

CString CZelTimeSpanHelper::Format(const CTimeSpan& span, const char* format, eRoundFlag flag)
{
    return formatWholeSeconds(span, format, flag);
}

CString CZelTimeSpanHelper::Format(const COleDateTimeSpan& span, const char* format, eRoundFlag flag)
{
    COleDateTimeSpan copy(span);
    Round(copy, flag);
    bool hourToken, days;
    const CString text = expandWithHourToken(
        format ? format : "", [&copy](const CString& t) { return copy.Format(t); }, hourToken, days);
    if (!hourToken)
        return text;
    // The hours travel as a double and "%u" reads its low 32 bits: whole hours
    // below 2097152 print as 0. Kept so for compatibility with stored reports.
    const double hours = days ? std::fmod(copy.GetTotalHours(), 24.0) : copy.GetTotalHours();
    std::uint64_t bits;
    std::memcpy(&bits, &hours, sizeof bits);
    return fillAll(text, bits);
}

// ---- Adding ----------------------------------------------------------------------

int CZelTimeSpanHelper::AddTimeSpan(CTimeSpan& a, const CTimeSpan& b)
{
    if (MaxCTimeSpan() - b < a)
        return FALSE;
    a += b;
    return TRUE;
}

int CZelTimeSpanHelper::SubtractTimeSpan(CTimeSpan& a, const CTimeSpan& b)
{
    if (MinCTimeSpan() + b > a)
        return FALSE;
    a -= b;
    return TRUE;
}

int CZelTimeSpanHelper::AddTimeSpan(CZelTimeSpan& a, const CZelTimeSpan& b)
{
    return AddTimeSpan(static_cast<CTimeSpan&>(a), CTimeSpan(b.GetTimeSpan()));
}

int CZelTimeSpanHelper::SubtractTimeSpan(CZelTimeSpan& a, const CZelTimeSpan& b)
{
    return SubtractTimeSpan(static_cast<CTimeSpan&>(a), CTimeSpan(b.GetTimeSpan()));
}

int CZelTimeSpanHelper::AddTimeSpan(COleDateTimeSpan& a, const COleDateTimeSpan& b, eRangeType range)
{
    if (range != eRangeOleDateTimeSpan) {
        COleDateTimeSpan lo, hi;
        GetPhysicalRange(range, lo, hi);
        if (hi - b < a)
            return FALSE;
    }
    a += b;
    return TRUE;
}

int CZelTimeSpanHelper::SubtractTimeSpan(COleDateTimeSpan& a, const COleDateTimeSpan& b, eRangeType range)
{
    if (range != eRangeOleDateTimeSpan) {
        COleDateTimeSpan lo, hi;
        GetPhysicalRange(range, lo, hi);
        if (lo + b > a)
            return FALSE;
    }
    a -= b;
    return TRUE;
}

namespace {

template <class Span>
int addSpanUnits(Span& span, int n, std::int64_t unitSeconds)
{
    if (n == 0)
        return TRUE;
    const std::int64_t magnitude = n > 0 ? static_cast<std::int64_t>(n) : -static_cast<std::int64_t>(n);
    const CTimeSpan step(magnitude * unitSeconds);
    if constexpr (std::is_same_v<Span, CZelTimeSpan>)
        return n > 0 ? CZelTimeSpanHelper::AddTimeSpan(span, CZelTimeSpan(step))
                     : CZelTimeSpanHelper::SubtractTimeSpan(span, CZelTimeSpan(step));
    else
        return n > 0 ? CZelTimeSpanHelper::AddTimeSpan(span, step) : CZelTimeSpanHelper::SubtractTimeSpan(span, step);
}

// The step is n / unitsPerDay, the very value the platform's field constructor
// builds from n units: multiplying by a reciprocal would be off by an ulp for a
// third of all counts, and the control's 23:59:59 could then never be reached.
int addOleSpanUnits(COleDateTimeSpan& span, int n, double unitsPerDay, CZelTimeSpanHelper::eRangeType range)
{
    if (n == 0)
        return TRUE;
    const double magnitude = n > 0 ? static_cast<double>(n) : -static_cast<double>(n);
    const COleDateTimeSpan step(magnitude / unitsPerDay);
    return n > 0 ? CZelTimeSpanHelper::AddTimeSpan(span, step, range)
                 : CZelTimeSpanHelper::SubtractTimeSpan(span, step, range);
}

} // namespace

int CZelTimeSpanHelper::AddSeconds(CZelTimeSpan& span, int n) { return addSpanUnits(span, n, 1); }
int CZelTimeSpanHelper::AddSeconds(CTimeSpan& span, int n) { return addSpanUnits(span, n, 1); }
int CZelTimeSpanHelper::AddSeconds(COleDateTimeSpan& span, int n, eRangeType range) { return addOleSpanUnits(span, n, 86400.0, range); }
int CZelTimeSpanHelper::AddMinutes(CZelTimeSpan& span, int n) { return addSpanUnits(span, n, 60); }
int CZelTimeSpanHelper::AddMinutes(CTimeSpan& span, int n) { return addSpanUnits(span, n, 60); }
int CZelTimeSpanHelper::AddMinutes(COleDateTimeSpan& span, int n, eRangeType range) { return addOleSpanUnits(span, n, 1440.0, range); }
int CZelTimeSpanHelper::AddHours(CZelTimeSpan& span, int n) { return addSpanUnits(span, n, 3600); }
int CZelTimeSpanHelper::AddHours(CTimeSpan& span, int n) { return addSpanUnits(span, n, 3600); }
int CZelTimeSpanHelper::AddHours(COleDateTimeSpan& span, int n, eRangeType range) { return addOleSpanUnits(span, n, 24.0, range); }
int CZelTimeSpanHelper::AddDays(CZelTimeSpan& span, int n) { return addSpanUnits(span, n, 86400); }
int CZelTimeSpanHelper::AddDays(CTimeSpan& span, int n) { return addSpanUnits(span, n, 86400); }
int CZelTimeSpanHelper::AddDays(COleDateTimeSpan& span, int n, eRangeType range) { return addOleSpanUnits(span, n, 1.0, range); }
