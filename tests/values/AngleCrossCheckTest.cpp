// Degree, minute and second splitting and decimal conversion, checked against an
// implementation written elsewhere (GeographicLib's DMS).
#if defined(ZEL260_HAVE_GEOGRAPHICLIB)

#include <Zel260/pim32/Pim32Angle.h>
#include <Zel260/values/CZelValueAngle.h>

#include <GeographicLib/DMS.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>

namespace {

using GeographicLib::DMS;
constexpr double kDeg = 3.141592653589793 / 180;

TEST(AngleCrossCheck, SplittingMatchesDmsEncode)
{
    std::mt19937_64 rng(42);
    std::uniform_real_distribution<double> any(-359.0, 359.0);
    int checked = 0;
    for (int i = 0; i < 20000; ++i) {
        const double deg = any(rng);
        const int decimals = i % 7;
        const std::string encoded = DMS::Encode(deg, DMS::SECOND, unsigned(decimals), DMS::NONE, ':');
        int d = 0, m = 0;
        double s = 0;
        char sign = '+';
        const char* p = encoded.c_str();
        if (*p == '-')
            sign = *p++;
        ASSERT_EQ(std::sscanf(p, "%d:%d:%lf", &d, &m, &s), 3) << encoded;
        int zs, zd, zm;
        double zsec;
        Pim32Rad2DMS(deg * kDeg, zs, zd, zm, zsec, decimals, 0);
        // A value within a hair of a rounding tie may go either way in either library.
        const double scaled = std::fabs(deg) * 3600 * std::pow(10.0, decimals);
        if (std::fabs(scaled - std::floor(scaled) - 0.5) < 1e-6)
            continue;
        ++checked;
        ASSERT_EQ(zd, d) << encoded;
        ASSERT_EQ(zm, m) << encoded;
        ASSERT_NEAR(zsec, s, 1e-9) << encoded;
        if (d || m || s) {
            ASSERT_EQ(zs, sign == '-' ? -1 : 1) << encoded;
        }
        // The packed form splits to the same fields (a precision gives at least one
        // decimal, so whole seconds have no packed counterpart).
        if (decimals == 0)
            continue;
        int ps, pd, pm;
        double psec;
        Pim32DMS2DMS(Pim32Rad2DMS(deg * kDeg, decimals + 5, 0), ps, pd, pm, psec, decimals, 0);
        ASSERT_EQ(pd, d);
        ASSERT_EQ(pm, m);
        ASSERT_EQ(psec, zsec);
    }
    EXPECT_GT(checked, 19000);
}

TEST(AngleCrossCheck, DecimalConversionMatchesDmsDecode)
{
    std::mt19937_64 rng(43);
    std::uniform_int_distribution<int> degrees(0, 359), minutes(0, 59);
    std::uniform_real_distribution<double> seconds(0.0, 59.999);
    for (int i = 0; i < 20000; ++i) {
        const int d = degrees(rng), m = minutes(rng);
        const double s = std::round(seconds(rng) * 1000) / 1000;
        const int sign = i % 2 ? -1 : 1;
        const double want = sign * DMS::Decode(d, m, s);
        EXPECT_NEAR(Pim32DMS2Deg(sign, d, m, s), want, 1e-11);
        EXPECT_NEAR(Pim32DMS2Rad(Pim32DMS2DMS(sign, d, m, s, -1, 0)) / kDeg, want, 1e-9);

        // Text: ours reads "d m s", GeographicLib "d:m:s".
        char ours[64], theirs[64];
        std::snprintf(ours, sizeof ours, "%s%d %d %.3f", sign < 0 ? "-" : "", d, m, s);
        std::snprintf(theirs, sizeof theirs, "%s%d:%d:%.3f", sign < 0 ? "-" : "", d, m, s);
        DMS::flag ind;
        const double decoded = DMS::Decode(theirs, ind);
        CZelUnitSettingsAngle settings(12, nullptr);
        CZelValueAngle a(&settings);
        a.ConvertToStd(ours, 12, -1, 0);
        // Seconds are scanned as a float, as the library always did: 1e-5 seconds.
        if (d == 0 && sign < 0)
            continue;  // "-0 m s" is positive here, by design
        EXPECT_NEAR(a.GetDouble() / kDeg, decoded, 3e-9) << ours;
    }
}

} // namespace

#endif
