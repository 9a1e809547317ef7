// Local clock fields of the three time representations, read alike.
#pragma once

#include <Zel260/platform/COleDateTime.h>
#include <Zel260/platform/CTime.h>
#include <Zel260/time/CZelTime.h>

#include <cmath>
#include <ctime>

namespace zeltime {

struct Fields {
    long year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    double frac = 0.0;
    bool ok = false;
};

inline Fields FromTm(const struct tm& tm)
{
    Fields f;
    f.year = tm.tm_year + 1900L;
    f.month = tm.tm_mon + 1;
    f.day = tm.tm_mday;
    f.hour = tm.tm_hour;
    f.minute = tm.tm_min;
    f.second = tm.tm_sec;
    f.ok = true;
    return f;
}

inline Fields FieldsOf(const CTime& t)
{
    struct tm tm;
    return t.GetLocalTm(&tm) ? FromTm(tm) : Fields{};
}

inline Fields FieldsOf(const CZelTime& t)
{
    Fields f = FieldsOf(static_cast<const CTime&>(t));
    f.frac = t.GetFracSecond();
    return f;
}

inline Fields FieldsOf(const COleDateTime& t)
{
    struct tm tm;
    return t.GetAsTm(tm) ? FromTm(tm) : Fields{};
}

// A double truncated into a long, clamped where it wouldn't fit.
inline long ClampToLong(double v)
{
    if (std::isnan(v))
        return 0;
    if (v >= 9.2e18)
        return 9200000000000000000L;
    if (v <= -9.2e18)
        return -9200000000000000000L;
    return static_cast<long>(v);
}

// trunc, floor and modf without a call into libm: the time arithmetic runs them
// millions of times, and below 2^52 a round trip through an integer is exact.
inline double FastTrunc(double v)
{
    if (!(std::fabs(v) < 4503599627370496.0))
        return std::trunc(v);
    return std::copysign(static_cast<double>(static_cast<long long>(v)), v);
}

inline double FastFloor(double v)
{
    const double t = FastTrunc(v);
    return t > v ? t - 1.0 : t;
}

// modf: the fractional part with the sign of v, the whole part in *whole.
inline double FastModf(double v, double* whole)
{
    if (!(std::fabs(v) < 4503599627370496.0))
        return std::modf(v, whole);
    *whole = FastTrunc(v);
    return std::copysign(v - *whole, v);
}

// Whole days, hours, minutes, seconds (all truncating) and the fraction of the
// second of a count of days.
inline void SplitDays(double days, long& day, long& hour, long& minute, long& second, double& fracSecond)
{
    double whole;
    const double f = FastModf(days, &whole);
    day = ClampToLong(whole);
    double s;
    fracSecond = FastModf(f * 86400.0, &s);
    // |s| < 86400: 32-bit division is exact here and much cheaper than 64-bit. A
    // count of days that is no number gives no clock.
    const int t = std::isnan(s) ? 0 : static_cast<int>(s);
    const int h = t / 3600;
    const int rest = t - h * 3600;
    hour = h;
    minute = rest / 60;
    second = rest % 60;
}

// The calendar date of an MJD, step by step in double as the formula stands.
inline void Mjd2YmdDouble(double mjd, long& year, long& month, long& day, long& hour, long& minute, long& second,
                          double& fracSecond)
{
    double whole;
    const double frac = FastModf(mjd, &whole);
    const double j = mjd + 1.0 - frac + 2400000.0;
    const double a = FastTrunc((j - 1867216.25) / 36524.25);
    const double b = j - 1720995.0 + 1.0 + a - FastTrunc(a / 4);
    const double c = FastTrunc((b - 122.1) / 365.25);
    const double d = b - FastFloor(365.25 * c);
    const double e = FastTrunc(d / 30.6001);
    const double dayValue = d - FastTrunc(30.6001 * e) + frac;
    year = ClampToLong(c);
    month = ClampToLong(e) - 1;
    if (month > 12)
        month = ClampToLong(e) - 13;
    if (month < 3)
        year += 1;
    SplitDays(dayValue, day, hour, minute, second, fracSecond);
}

// The same with the quotients of whole numbers taken in integers, which is what
// the double steps compute exactly while the day number stays far below 2^40:
// (j - 1867216.25) / 36524.25 is (4j - 7468865) / 146097, (b - 122.1) / 365.25
// is (20b - 2442) / 7305 and d / 30.6001 is 10000d / 306001, none of them close
// enough to a whole number for rounding to cross it. Anything else goes the
// double way.
inline void Mjd2YmdSplit(double mjd, long& year, long& month, long& day, long& hour, long& minute, long& second,
                         double& fracSecond)
{
    double whole;
    const double frac = FastModf(mjd, &whole);
    const double j = mjd + 1.0 - frac + 2400000.0;
    if (!(std::fabs(mjd) < 1e8) || j != FastTrunc(j)) {
        Mjd2YmdDouble(mjd, year, month, day, hour, minute, second, fracSecond);
        return;
    }
    const long long jj = static_cast<long long>(j);
    const long long a = (4 * jj - 7468865) / 146097;
    const long long b = jj - 1720995 + 1 + a - a / 4;
    const long long c = (20 * b - 2442) / 7305;
    const long long q = 1461 * c;
    const long long d = b - (q >= 0 ? q / 4 : -((-q + 3) / 4));
    const long long e = 10000 * d / 306001;
    const double dayOfMonth = static_cast<double>(d) - FastTrunc(30.6001 * static_cast<double>(e));
    year = static_cast<long>(c);
    month = static_cast<long>(e) - 1;
    if (month > 12)
        month = static_cast<long>(e) - 13;
    if (month < 3)
        year += 1;
    if (frac == 0.0 && dayOfMonth > 0.0) {
        // A whole day: the split of the clock would give zeros all through.
        day = static_cast<long>(dayOfMonth);
        hour = minute = second = 0;
        fracSecond = 0.0;
        return;
    }
    SplitDays(dayOfMonth + frac, day, hour, minute, second, fracSecond);
}

} // namespace zeltime
