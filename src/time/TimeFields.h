// Local clock fields of the three time representations, read alike.
#pragma once

#include <Zel260/platform/COleDateTime.h>
#include <Zel260/platform/CTime.h>
#include <Zel260/time/CZelTime.h>

#include <cmath>
#include <cstdint>
#include <ctime>

// Private to each binary: calls stay direct instead of going through the exported
// symbol table of the shared library.
#pragma GCC visibility push(hidden)

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
    int y, mo, d, h, mi, s;
    Fields f;
    if (!t.GetAsFields(y, mo, d, h, mi, s))
        return f;
    f.year = y;
    f.month = mo;
    f.day = d;
    f.hour = h;
    f.minute = mi;
    f.second = s;
    f.ok = true;
    return f;
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

// trunc(30.6001 * k) as the double product gives it, for the k that the month shift
// of the calendar formulas produces (the month plus one, 0..15).
constexpr int MonthStartCount = 16;
constexpr int MonthStartOf(int k) { return static_cast<int>(30.6001 * k); }
constexpr int MonthStart[MonthStartCount] = {
    MonthStartOf(0),  MonthStartOf(1),  MonthStartOf(2),  MonthStartOf(3),  MonthStartOf(4),  MonthStartOf(5),
    MonthStartOf(6),  MonthStartOf(7),  MonthStartOf(8),  MonthStartOf(9),  MonthStartOf(10), MonthStartOf(11),
    MonthStartOf(12), MonthStartOf(13), MonthStartOf(14), MonthStartOf(15),
};

// The clock terms of a day fraction, each divided exactly as the formula writes it
// (by 24 first), looked up instead of divided: a division costs more than the rest
// of the date arithmetic together. Both the compiler's folding and the processor
// round these quotients correctly, so the table holds the very same bits.
template <int N, class F>
struct ClockTable {
    double v[N];
    constexpr explicit ClockTable(F f) : v{}
    {
        for (int i = 0; i < N; ++i)
            v[i] = f(i);
    }
};

constexpr auto HourTermOf = [](int h) { return h / 24.0; };
constexpr auto MinuteTermOf = [](int m) { return m / 24.0 / 60.0; };
constexpr auto SecondTermOf = [](int s) { return s / 24.0 / 3600.0; };
inline constexpr ClockTable<24, decltype(HourTermOf)> HourTerms{HourTermOf};
inline constexpr ClockTable<60, decltype(MinuteTermOf)> MinuteTerms{MinuteTermOf};
// 60 for the leap second that a broken-down time may carry.
inline constexpr ClockTable<61, decltype(SecondTermOf)> SecondTerms{SecondTermOf};

inline double HourTerm(long h) { return h >= 0 && h < 24 ? HourTerms.v[h] : h / 24.0; }
inline double MinuteTerm(long m) { return m >= 0 && m < 60 ? MinuteTerms.v[m] : m / 24.0 / 60.0; }
inline double SecondTerm(long s) { return s >= 0 && s <= 60 ? SecondTerms.v[s] : s / 24.0 / 3600.0; }

// The MJD of clock fields, step by step in double as the formula stands:
// day + hour / 24 + minute / 24 / 60 + second / 24 / 3600 (+ fraction / 24 / 3600),
// then the calendar part with the month shift.
inline double MjdOfFieldsDouble(const Fields& f, bool withFraction)
{
    double dayValue = f.day + f.hour / 24.0 + f.minute / 24.0 / 60.0 + f.second / 24.0 / 3600.0;
    if (withFraction)
        dayValue += f.frac / 24.0 / 3600.0;
    long year = f.year;
    long month = f.month;
    if (month < 3) {
        year -= 1;
        month += 12;
    }
    const long a = year / 100;
    return FastFloor(365.25 * year) + FastTrunc(30.6001 * (month + 1)) + static_cast<double>(2 - a + a / 4) - 679006 +
           dayValue;
}

// The same, with the calendar part in integers: every partial sum of the formula is a
// whole number far below 2^53 and so exact, and floor(365.25 * y) is 1461 * y / 4
// rounded down. Only the day fraction needs floating point, and its terms come from
// the tables.
inline double MjdOfFields(const Fields& f, bool withFraction)
{
    if (f.month < 1 || f.month > 12 || f.year < -1000000 || f.year > 1000000)
        return MjdOfFieldsDouble(f, withFraction);
    double dayValue = f.day + HourTerm(f.hour) + MinuteTerm(f.minute) + SecondTerm(f.second);
    // A fraction of zero adds +0.0 or -0.0, neither of which changes a sum of at
    // least one day.
    if (withFraction && f.frac != 0.0)
        dayValue += f.frac / 24.0 / 3600.0;
    int year = static_cast<int>(f.year);
    int month = static_cast<int>(f.month);
    if (month < 3) {
        year -= 1;
        month += 12;
    }
    const int a = year / 100;
    const int days = ((1461 * year) >> 2) + MonthStart[month + 1] + (2 - a + a / 4) - 679006;
    return static_cast<double>(days) + dayValue;
}

// The date part of Mjd2YmdSplit for a day number j in 1867217..100000000: the
// quotients (j - 1867216.25) / 36524.25 = (4j - 7468865) / 146097,
// (b - 122.1) / 365.25 = (20b - 2442) / 7305 and d / 30.6001 = 10000d / 306001 are
// all positive there and fit 32 unsigned bits, the cheapest division there is.
inline void DateOfDayNumber32(std::uint32_t jj, long& year, long& month, double& dayOfMonth)
{
    const std::uint32_t a = (4 * jj - 7468865) / 146097;
    const std::uint32_t b = jj - 1720995 + 1 + a - a / 4;
    const std::uint32_t c = (20 * b - 2442) / 7305;
    const std::uint32_t d = b - (1461 * c) / 4;
    const std::uint32_t e = 10000 * d / 306001;
    dayOfMonth = e < MonthStartCount ? static_cast<double>(static_cast<int>(d) - MonthStart[e])
                                     : static_cast<double>(d) - FastTrunc(30.6001 * static_cast<double>(e));
    year = static_cast<long>(c);
    month = static_cast<long>(e) - 1;
    if (month > 12)
        month = static_cast<long>(e) - 13;
    if (month < 3)
        year += 1;
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
    if (!(std::fabs(mjd) < 1e8)) {
        Mjd2YmdDouble(mjd, year, month, day, hour, minute, second, fracSecond);
        return;
    }
    // Below 1e8 the whole part fits an integer and the difference is exact; its sign
    // only matters where it is zero, and there no step below reads it.
    const long long whole = static_cast<long long>(mjd);
    const double frac = mjd - static_cast<double>(whole);
    // The day number is the whole part moved by 2400001 wherever the sum of the
    // formula comes out exact; the check stands off the path of the result, and
    // anything it rejects goes the double way.
    const long long jj = whole + 2400001;
    const double j = mjd + 1.0 - frac + 2400000.0;
    if (static_cast<double>(jj) != j) {
        Mjd2YmdDouble(mjd, year, month, day, hour, minute, second, fracSecond);
        return;
    }
    double dayOfMonth;
    if (jj >= 1867217 && jj <= 100000000) {
        DateOfDayNumber32(static_cast<std::uint32_t>(jj), year, month, dayOfMonth);
    } else {
        const long long a = (4 * jj - 7468865) / 146097;
        const long long b = jj - 1720995 + 1 + a - a / 4;
        const long long c = (20 * b - 2442) / 7305;
        const long long q = 1461 * c;
        const long long d = b - (q >= 0 ? q / 4 : -((-q + 3) / 4));
        const long long e = 10000 * d / 306001;
        dayOfMonth = static_cast<double>(d) - FastTrunc(30.6001 * static_cast<double>(e));
        year = static_cast<long>(c);
        month = static_cast<long>(e) - 1;
        if (month > 12)
            month = static_cast<long>(e) - 13;
        if (month < 3)
            year += 1;
    }
    if (dayOfMonth <= 0.0) {
        SplitDays(dayOfMonth + frac, day, hour, minute, second, fracSecond);
        return;
    }
    if (frac == 0.0) {
        // A whole day: the split of the clock would give zeros all through.
        day = static_cast<long>(dayOfMonth);
        hour = minute = second = 0;
        fracSecond = 0.0;
        return;
    }
    // SplitDays for a positive count of days. dayOfMonth <= days <= dayOfMonth + 1
    // <= 2 * dayOfMonth, so days - dayOfMonth is exact: the whole day is dayOfMonth,
    // or the next one where the fraction rounded up to it.
    const double days = dayOfMonth + frac;
    if (!(frac > 0.0)) {
        SplitDays(days, day, hour, minute, second, fracSecond);
        return;
    }
    double dayPart = days - dayOfMonth;
    long wholeDays = static_cast<long>(dayOfMonth);
    if (dayPart == 1.0) {
        wholeDays += 1;
        dayPart = 0.0;
    }
    const double seconds = dayPart * 86400.0;
    const int wholeSeconds = static_cast<int>(seconds);
    const auto t = static_cast<unsigned>(wholeSeconds);
    day = wholeDays;
    hour = t / 3600;
    minute = t % 3600 / 60;
    second = t % 60;
    fracSecond = seconds - static_cast<double>(wholeSeconds);
}

} // namespace zeltime

#pragma GCC visibility pop
