// The integer route of the MJD split against the step-by-step double formula.
#include "time/TimeFields.h"

#include <gtest/gtest.h>

#include <cstdint>

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
    std::uint64_t x = 88172645463325252ull;
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
