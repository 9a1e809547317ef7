#include <Zel260/pim32/Pim32Angle.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kDeg = kPi / 180.0;
constexpr double kGon = kPi / 200.0;

struct Fields {
    int sign, deg, min;
    double sec;
};

Fields splitDms(double packed, int decimals, int limit = 0)
{
    Fields f{};
    Pim32DMS2DMS(packed, f.sign, f.deg, f.min, f.sec, decimals, limit);
    return f;
}

Fields splitGon(double packed, int decimals, int limit = 0)
{
    Fields f{};
    Pim32GCCC2GCCC(packed, f.sign, f.deg, f.min, f.sec, decimals, limit);
    return f;
}

struct SplitRow {
    const char* name;
    double packed;
    int decimals;
    int limit;
    Fields want;
};

TEST(Pim32Angle, SplitsPackedDmsWithCarry)
{
    const SplitRow rows[] = {
        {"plain", 45.301515, 5, 0, {1, 45, 30, 15.15}},
        {"negative", -45.3015, 2, 0, {-1, 45, 30, 15.0}},
        {"seconds round up to a minute", 10.295999999, 2, 0, {1, 10, 30, 0.0}},
        {"minutes carry into degrees", 10.595999999, 3, 0, {1, 11, 0, 0.0}},
        {"binary noise below 30 minutes", 10.3, -1, 0, {1, 10, 30, 0.0}},
        {"noise at 60 seconds", 0.0060, 5, 0, {1, 0, 1, 0.0}},
        {"written 60 seconds carry", 12.2960, 0, 0, {1, 12, 30, 0.0}},
        {"full circle without limit", 359.5959996, 2, 0, {1, 360, 0, 0.0}},
        {"full circle with limit", 359.5959996, 2, 1, {1, 0, 0, 0.0}},
        {"beyond a circle with limit", -370.1, 0, 1, {-1, 10, 10, 0.0}},
        {"negative zero after rounding", -0.0000001, 2, 0, {1, 0, 0, 0.0}},
        {"half away from zero", 1.00005, 0, 0, {1, 1, 0, 1.0}},
        {"more than nine decimals", 1.000012345678901, 12, 0, {1, 1, 0, 0.123456789}},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        Fields f = splitDms(r.packed, r.decimals, r.limit);
        EXPECT_EQ(f.sign, r.want.sign);
        EXPECT_EQ(f.deg, r.want.deg);
        EXPECT_EQ(f.min, r.want.min);
        EXPECT_DOUBLE_EQ(f.sec, r.want.sec);
    }
}

TEST(Pim32Angle, GonCarriesAtHundred)
{
    Fields f = splitGon(123.459999, 1);
    EXPECT_EQ(f.deg, 123);
    EXPECT_EQ(f.min, 46);
    EXPECT_DOUBLE_EQ(f.sec, 0.0);
    f = splitGon(399.99999, 0, 1);
    EXPECT_EQ(f.deg, 0);
    EXPECT_EQ(f.min, 0);
    // Packed gon is decimal gon.
    EXPECT_DOUBLE_EQ(Pim32GCCC2Rad(100.0), kPi / 2);
    EXPECT_DOUBLE_EQ(Pim32Rad2GCCC(kPi, 10, 0), 200.0);
    EXPECT_DOUBLE_EQ(Pim32GCCC2GCCC(-1, 12, 34, 56.7, 6, 0), -12.34567);
}

TEST(Pim32Angle, JoinsFieldsWithRoundingAndLimit)
{
    EXPECT_DOUBLE_EQ(Pim32DMS2DMS(1, 45, 30, 15.5, -1, 0), 45.30155);
    EXPECT_DOUBLE_EQ(Pim32DMS2DMS(-1, 45, 30, 15.5, 6, 0), -45.30155);
    EXPECT_DOUBLE_EQ(Pim32DMS2DMS(-1, 45, 30, 15.54, 7, 0), -45.301554);
    EXPECT_DOUBLE_EQ(Pim32DMS2DMS(1, 10, 59, 59.99, 6, 0), 11.0);    // one decimal
    EXPECT_DOUBLE_EQ(Pim32DMS2DMS(1, 0, 70, 0.0, -1, 0), 1.10);      // fields out of range
    EXPECT_DOUBLE_EQ(Pim32DMS2DMS(1, 359, 59, 59.9999, 6, 1), 0.0);  // circle with limit
    EXPECT_DOUBLE_EQ(Pim32DMS2DMS(1, 359, 59, 59.9999, 6, 0), 360.0);
    EXPECT_DOUBLE_EQ(Pim32DMS2DMS(1, 0, -30, 0.0, -1, 0), -0.30);    // a negative sum flips
    EXPECT_DOUBLE_EQ(Pim32DMS2Deg(-1, 45, 30, 36.0), -45.51);
    EXPECT_DOUBLE_EQ(Pim32DMS2Deg(0, 1, 30, 0.0), 1.5);
}

TEST(Pim32Angle, RadiansToPackedAndBack)
{
    EXPECT_DOUBLE_EQ(Pim32DMS2Rad(45.30), 45.5 * kDeg);
    EXPECT_DOUBLE_EQ(Pim32DMS2Rad(-0.0036), -kDeg / 100);
    EXPECT_DOUBLE_EQ(Pim32Rad2DMS(45.5 * kDeg, 5, 0), 45.30);
    EXPECT_DOUBLE_EQ(Pim32Rad2DMS(-2 * kPi, 8, 1), 0.0);
    EXPECT_DOUBLE_EQ(Pim32Rad2DMS(-2 * kPi, 8, 0), -360.0);
    EXPECT_DOUBLE_EQ(Pim32Rad2DMS(1.0, 10, 0), 57.174480625); // 57 17' 44.80625"

    Fields f{};
    Pim32Rad2DMS(-(10 + 59.0 / 60 + 59.96 / 3600) * kDeg, f.sign, f.deg, f.min, f.sec, 1, 0);
    EXPECT_EQ(f.sign, -1);
    EXPECT_EQ(f.deg, 11);
    EXPECT_EQ(f.min, 0);
    EXPECT_EQ(f.sec, 0.0);
    Pim32Rad2GCCC(150 * kGon, f.sign, f.deg, f.min, f.sec, 3, 0);
    EXPECT_EQ(f.deg, 150);
    EXPECT_EQ(f.min, 0);
}

TEST(Pim32Angle, BadNumbersPassThroughWithoutHarm)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(std::isnan(Pim32DMS2Rad(nan)));
    EXPECT_TRUE(std::isnan(Pim32Rad2DMS(nan, 6, 1)));
    EXPECT_EQ(Pim32Rad2GCCC(-inf, 6, 1), -inf);
    EXPECT_TRUE(std::isnan(Pim32DMS2DMS(1, 1, 1, nan, 6, 0)));
    Fields f = splitDms(inf, 3);
    EXPECT_EQ(f.deg, 0);
    EXPECT_EQ(f.sec, inf);
    f = splitDms(-1e300, 3);
    EXPECT_EQ(f.sign, -1);
    EXPECT_EQ(f.deg, std::numeric_limits<int>::max());
    f = splitDms(123456789.5, 12);  // large, but still split
    EXPECT_EQ(f.deg, 123456789);
    EXPECT_EQ(f.min, 50);
    EXPECT_TRUE(std::isfinite(Pim32Rad2DMS(1e20, 12, 0)));
    EXPECT_TRUE(std::isfinite(Pim32DMS2DMS(1, 2000000000, 2000000000, 1e30, 12, 0)));
}

// Precisions below 6 mean five decimals, as in the number formatter; they never
// round to whole seconds.
TEST(Pim32Angle, PrecisionBelowSixKeepsFiveDecimals)
{
    const double rad = (45 + 30 / 60.0 + 15.432106 / 3600) * kDeg;
    for (int precision : {0, 3, 5}) {
        SCOPED_TRACE(precision);
        EXPECT_DOUBLE_EQ(Pim32Rad2DMS(rad, precision, 0), 45.301543211);
        EXPECT_DOUBLE_EQ(Pim32DMS2DMS(1, 45, 30, 15.432106, precision, 0), 45.301543211);
        EXPECT_DOUBLE_EQ(Pim32GCCC2GCCC(-1, 12, 34, 56.789016, precision, 0), -12.345678902);
        EXPECT_DOUBLE_EQ(Pim32Rad2GCCC(12.345678902 * kGon, precision, 0), 12.345678902);
    }
    EXPECT_DOUBLE_EQ(Pim32Rad2DMS(rad, 6, 0), 45.30154);
}

// radians -> packed -> split -> packed -> radians -> packed is stable for every
// precision, on random angles and on angles just below a carry.
TEST(Pim32Angle, WriteAndReadBackIsStable)
{
    std::mt19937_64 rng(260);
    std::uniform_real_distribution<double> any(-4 * kPi, 4 * kPi);
    std::vector<double> angles;
    for (int i = 0; i < 3000; ++i)
        angles.push_back(any(rng));
    for (int d : {0, 1, 45, 89, 179, 359, 360}) {
        for (double eps : {0.0, 1e-13, 1e-11, 1e-9, 1e-7, 1e-5}) {
            angles.push_back(d * kDeg - eps);
            angles.push_back(-(d * kDeg - eps));
            angles.push_back(d * kGon * 10 / 9 - eps);
        }
    }
    struct Kind {
        const char* name;
        double (*toPacked)(double, int, int);
        double (*toRad)(double);
        void (*split)(double, int&, int&, int&, double&, int, int);
        double (*join)(int, int, int, double, int, int);
        void (*radSplit)(double, int&, int&, int&, double&, int, int);
        int minPer, secPer;
    };
    const Kind kinds[] = {
        {"dms", Pim32Rad2DMS, Pim32DMS2Rad, Pim32DMS2DMS, Pim32DMS2DMS, Pim32Rad2DMS, 60, 60},
        {"gon", Pim32Rad2GCCC, Pim32GCCC2Rad, Pim32GCCC2GCCC, Pim32GCCC2GCCC, Pim32Rad2GCCC, 100, 100},
    };
    for (const auto& kind : kinds) {
        for (int precision = -1; precision <= 12; ++precision) {
            const int decimals = precision < 0 ? -1 : precision < 6 ? 5 : precision - 5;
            for (int limit = 0; limit <= 1; ++limit) {
                for (double rad : angles) {
                    const double packed = kind.toPacked(rad, precision, limit);
                    int s, d, m;
                    double sec;
                    kind.split(packed, s, d, m, sec, decimals, limit);
                    ASSERT_TRUE(m >= 0 && m < kind.minPer && sec >= 0 && sec < kind.secPer)
                        << kind.name << " " << rad << " p" << precision;
                    if (limit) {
                        ASSERT_LT(kind.toRad(std::fabs(packed)), 2 * kPi + 1e-12);
                    }
                    int s2, d2, m2;
                    double sec2;
                    kind.radSplit(rad, s2, d2, m2, sec2, decimals, limit);
                    if (precision >= 0) {
                        ASSERT_EQ(s, s2);
                        ASSERT_EQ(d, d2);
                        ASSERT_EQ(m, m2);
                        ASSERT_EQ(sec, sec2) << kind.name << " " << rad << " p" << precision;
                    }
                    const double joined = kind.join(s, d, m, sec, precision, limit);
                    ASSERT_EQ(joined, packed) << kind.name << " " << rad << " p" << precision;
                    const double back = kind.toRad(joined);
                    if (precision >= 0)
                        ASSERT_EQ(kind.toPacked(back, precision, limit), packed)
                            << kind.name << " " << rad << " p" << precision;
                    else
                        ASSERT_NEAR(limit ? std::remainder(back - rad, 2 * kPi) : back - rad, 0.0, 1e-12);
                }
            }
        }
    }
}

} // namespace
