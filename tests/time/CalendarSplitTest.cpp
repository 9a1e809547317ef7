// The fast routes of the calendar arithmetic against the step-by-step double formulas,
// bit for bit.
#include "time/TimeFields.h"

#include <Zel260/time/CZelTime.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

bool sameSplit(double mjd)
{
    long y1, m1, d1, h1, i1, s1, y2, m2, d2, h2, i2, s2;
    double f1, f2;
    zeltime::Mjd2YmdSplit(mjd, y1, m1, d1, h1, i1, s1, f1);
    zeltime::Mjd2YmdDouble(mjd, y2, m2, d2, h2, i2, s2, f2);
    return y1 == y2 && m1 == m2 && d1 == d2 && h1 == h2 && i1 == i2 && s1 == s2 && f1 == f2;
}

} // namespace

TEST(CalendarSplit, IntegerRouteEqualsTheFormulaEverywhere)
{
    // Every day from before year 100 to past 9999 at midnight, every seventh at odd
    // times of day, and a spread of large and negative values.
    int mismatches = 0;
    for (long day = -800000; day <= 3100000 && mismatches < 5; ++day) {
        for (double f : {0.0, 0.25, 0.999988425925926, -0.5}) {
            if (f != 0.0 && day % 7 != 0)
                continue;
            if (!sameSplit(static_cast<double>(day) + f)) {
                ++mismatches;
                ADD_FAILURE() << "MJD " << day << " + " << f;
            }
        }
    }
    // Every day of the CTime range and around it at a spread of clock times.
    std::uint64_t x = 88172645463325252ull;
    for (long day = 40000; day <= 63000 && mismatches < 10; ++day)
        for (int k = 0; k < 8; ++k) {
            x ^= x << 13;
            x ^= x >> 7;
            x ^= x << 17;
            const double v = static_cast<double>(day) + static_cast<double>(x % 1000000007ull) / 1000000007.0;
            if (!sameSplit(v)) {
                ++mismatches;
                ADD_FAILURE() << "MJD " << v;
            }
        }
    // Fractions that round up to the next day once added to the day of the month
    // (only small MJDs carry that many bits), and ones far below a second.
    for (long day = -40; day <= 63000 && mismatches < 10; day += day < 40 ? 1 : 1000)
        for (double f : {std::nextafter(1.0, 0.0), 1.0 - 1e-15, 1.0 - 1e-12, 1e-300, 5e-324}) {
            const double v = static_cast<double>(day) + f;
            if (!sameSplit(v) || !sameSplit(-v)) {
                ++mismatches;
                ADD_FAILURE() << "MJD " << day << " + " << f;
            }
        }
    for (int i = 0; i < 200000 && mismatches < 10; ++i) {
        x ^= x << 13;
        x ^= x >> 7;
        x ^= x << 17;
        const double v = (static_cast<double>(x % 2000000000000ull) / 1000.0) - 1e9 / 2;
        if (!sameSplit(v)) {
            ++mismatches;
            ADD_FAILURE() << "MJD " << v;
        }
    }
}

namespace {

// The documented date-to-MJD formula of the static form, step by step in double.
double plainStaticMjd(int year, int month, int day, int hour, int minute, double second)
{
    const double dayFraction = hour / 24.0 + (minute / 24.0) / 60.0 + (second / 24.0) / 3600.0;
    long long y = year;
    long long m = month;
    if (m < 3) {
        y -= 1;
        m += 12;
    }
    const long long a = y / 100;
    const long long days = static_cast<long long>(std::trunc(static_cast<double>(y) * 365.25)) +
                           static_cast<long long>(std::trunc(30.6001 * static_cast<double>(m + 1))) + a / 4 - a + day -
                           679004;
    return static_cast<double>(static_cast<std::uint32_t>(days)) + dayFraction;
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

} // namespace

TEST(CalendarSplit, ClockTablesHoldTheQuotientsBitForBit)
{
    // Read through volatile so that the reference is computed at run time.
    volatile int one = 1;
    for (int n = 0; n < 61; ++n) {
        const int i = n * one;
        if (i < 24) {
            EXPECT_TRUE(sameBits(zeltime::HourTerms.v[i], i / 24.0)) << i;
        }
        if (i < 60) {
            EXPECT_TRUE(sameBits(zeltime::MinuteTerms.v[i], i / 24.0 / 60.0)) << i;
        }
        EXPECT_TRUE(sameBits(zeltime::SecondTerms.v[i], i / 24.0 / 3600.0)) << i;
    }
    for (int n = 0; n < zeltime::MonthStartCount; ++n) {
        const int k = n * one;
        EXPECT_EQ(zeltime::MonthStart[k], static_cast<int>(std::trunc(30.6001 * k))) << k;
    }
}

TEST(CalendarSplit, StaticMjdEqualsTheFormulaBitForBit)
{
    int mismatches = 0;
    auto check = [&](int y, int mo, int d, int h, int mi, double s) {
        const double got = CZelTime::Mjd(y, mo, d, h, mi, s);
        unsigned long number = 0;
        double fraction = 0;
        const double got8 = CZelTime::Mjd(y, mo, d, h, mi, s, number, fraction);
        const double want = plainStaticMjd(y, mo, d, h, mi, s);
        if ((!sameBits(got, want) || !sameBits(got8, want) || number + fraction != want) && ++mismatches < 10)
            ADD_FAILURE() << y << "-" << mo << "-" << d << " " << h << ":" << mi << ":" << s << " gives " << got
                          << ", formula " << want;
    };
    // Every day of years around the epochs and the range ends, at the clock's corners.
    for (int y : {-4713, -1, 0, 1, 99, 100, 1582, 1858, 1899, 1900, 1970, 2000, 2030, 2100, 9999, 10000})
        for (int mo = 1; mo <= 12; ++mo)
            for (int d = 1; d <= 31; ++d) {
                check(y, mo, d, 0, 0, 0.0);
                check(y, mo, d, 23, 59, 59.0);
                check(y, mo, d, 13, 45, 10.25);
            }
    // Fields that no calendar holds still follow the formula.
    for (int mo : {-13, -1, 0, 13, 14, 15, 100, 2147483647, -2147483647 - 1})
        for (int y : {-1000001, -999999, 1969, 999999, 1000000, 2147483647, -2147483647 - 1})
            for (int d : {-2147483647 - 1, -5, 0, 17, 2147483647}) {
                check(y, mo, d, 0, 0, 0.0);
                check(y, mo, d, -1, 60, 60.0);
                check(y, mo, d, 24, -1, -0.0);
                check(y, mo, d, 12, 30, 59.999999);
            }
    EXPECT_EQ(mismatches, 0);
}

TEST(CalendarSplit, FieldsMjdEqualsTheFormulaBitForBit)
{
    int mismatches = 0;
    auto check = [&](const zeltime::Fields& f, bool withFraction) {
        const double got = zeltime::MjdOfFields(f, withFraction);
        const double want = zeltime::MjdOfFieldsDouble(f, withFraction);
        if (!sameBits(got, want) && ++mismatches < 10)
            ADD_FAILURE() << f.year << "-" << f.month << "-" << f.day << " " << f.hour << ":" << f.minute << ":"
                          << f.second << " + " << f.frac;
    };
    zeltime::Fields f;
    f.ok = true;
    for (long y = 1890; y <= 3010; ++y)
        for (long mo = 1; mo <= 12; ++mo) {
            f.year = y;
            f.month = mo;
            f.day = 1 + (y * 7 + mo) % 31;
            f.hour = (y + mo) % 24;
            f.minute = (y * 3 + mo) % 60;
            f.second = (y * 11 + mo) % 61;
            for (double frac : {0.0, -0.0, 0.5, 0.999999, 1e-9}) {
                f.frac = frac;
                check(f, true);
                check(f, false);
            }
        }
    // Out of the tables' reach: the double route must be taken, and agree.
    for (long v : {-1000001L, -1L, 0L, 25L, 61L, 1000001L}) {
        f = zeltime::Fields{};
        f.year = v;
        f.month = v % 13;
        f.day = v;
        f.hour = v;
        f.minute = v;
        f.second = v;
        f.frac = 0.25;
        check(f, true);
    }
    EXPECT_EQ(mismatches, 0);
}
