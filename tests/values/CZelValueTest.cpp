#include <Zel260/values/CZelValueAngle.h>
#include <Zel260/values/CZelValueAngleLat.h>
#include <Zel260/values/CZelValueAngleLon.h>
#include <Zel260/values/CZelValueDistance.h>

#include "values/ZelUnitTables.h"

#include <Zel260/services/ZelProfilePath.h>

#include <TestSupport.h>
#include <gtest/gtest.h>

#include "UnitSettingsFixture.h"

#include <climits>
#include <cmath>
#include <random>
#include <string>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kDeg = kPi / 180;

class Values : public valuestest::UnitSettingsFixture {};

TEST_F(Values, ConvertTableAndEqualUnits)
{
    double out = -1;
    EXPECT_EQ(CZelValue::Convert(5.5, 19, out, 19, 6, 0), 0);
    EXPECT_EQ(out, 5.5);
    EXPECT_EQ(CZelValue::Convert(5.5, 19, out, 18, 6, 0), 1);
    EXPECT_EQ(out, 0.0);
    EXPECT_EQ(CZelValue::Convert(1.0, 18, out, 20, 6, 0), 1);
    EXPECT_EQ(CZelValue::Convert(1.0, 10, out, 18, 6, 0), 1);
    EXPECT_EQ(CZelValue::Convert(1.0, 22, out, 21, -1, 0), 0);
    EXPECT_DOUBLE_EQ(out, 0.3048006096012192);
    EXPECT_EQ(CZelValue::Convert(1.0, 23, out, 21, -1, 0), 0);
    EXPECT_EQ(out, 0.3048);
    EXPECT_EQ(CZelValue::Convert(1.0, 18, out, 21, -1, 0), 0);  // no dimension check
    EXPECT_EQ(out, 1.0);
    EXPECT_EQ(CZelValue::Convert(45.3, 12, out, 11, -1, 0), 0);
    EXPECT_DOUBLE_EQ(out, 45.5);
    EXPECT_EQ(CZelValue::Convert(100.0, 14, out, 16, 10, 0), 0);
    EXPECT_DOUBLE_EQ(out, 100.0);
    EXPECT_EQ(CZelValue::Convert(0.25, 17, out, 13, 10, 0), 0);
    EXPECT_DOUBLE_EQ(out, 90.0);
    EXPECT_EQ(CZelValue::Convert(359.99999999, 11, out, 12, 6, 1), 0);  // limited circle
    EXPECT_EQ(out, 0.0);
}

// Every pair of units converts there and back within 1e-9 of the value (relative).
TEST_F(Values, EveryPairOfUnitsRoundTrips)
{
    const long units[] = {11, 12, 13, 14, 15, 16, 17, 18, 21, 22, 23};
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> any(-6.0, 6.0);
    for (long a : units) {
        for (long b : units) {
            for (int i = 0; i < 50; ++i) {
                double base = any(rng), in = 0, mid = 0, back = 0;
                ASSERT_EQ(CZelValue::Convert(base, 18, in, a, -1, 0), 0);
                ASSERT_EQ(CZelValue::Convert(in, a, mid, b, -1, 0), 0);
                ASSERT_EQ(CZelValue::Convert(mid, b, back, a, -1, 0), 0);
                ASSERT_NEAR(back, in, 1e-9 * std::max(1.0, std::fabs(in))) << a << "->" << b;
            }
        }
    }
}

TEST_F(Values, StatusSticksUntilRead)
{
    CZelValueAngle a;
    double out = 5;
    EXPECT_EQ(a.ConvertStdTo(out, 99, -1, 0), 1);
    EXPECT_EQ(out, 0.0);
    EXPECT_TRUE(a.IsValid());  // the conversion read it
    EXPECT_EQ(a.ConvertToStd(1.0, 99, -1, 0), 1);
    EXPECT_EQ(a.GetDouble(), 0.0);
    CString text("kept");
    EXPECT_EQ(a.ConvertStdTo(text, 99, -1, 0), 1);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(a.ConvertStdTo(text, 11, -1, 0), 0);
}

TEST_F(Values, WrappingBySetDouble)
{
    CZelValueAngle a;
    CZelValueAngleLat lat;
    CZelValueAngleLon lon;
    a = 7.0;
    lat = 7.0;
    EXPECT_NEAR(a.GetDouble(), 7.0 - 2 * kPi, 1e-12);
    EXPECT_NEAR(lat.GetDouble(), 7.0 - 2 * kPi, 1e-12);
    a = 4.0;
    lat = 4.0;
    lon = -4.0;
    EXPECT_EQ(a.GetDouble(), 4.0);
    EXPECT_NEAR(lat.GetDouble(), 4.0 - 2 * kPi, 1e-12);
    EXPECT_NEAR(lon.GetDouble(), 2 * kPi - 4.0, 1e-12);
    a = -7.0;
    EXPECT_NEAR(a.GetDouble(), -7.0 + 2 * kPi, 1e-12);
    lat = 2.0;  // beyond a quarter circle stays
    EXPECT_EQ(lat.GetDouble(), 2.0);
    a = std::nan("");  // no hang
    lat = static_cast<double>(INFINITY);
    EXPECT_TRUE(std::isnan(lat.GetDouble()));
    CZelValueDistance d;
    d = 1e9;
    EXPECT_EQ(d.GetDouble(), 1e9);
}

TEST_F(Values, InertIntegerAccessors)
{
    CZelValueDistance d;
    d = 2.5;
    d = 7;
    d = 3.0f;
    EXPECT_EQ(d.GetDouble(), 2.5);
    EXPECT_EQ(d.GetInt(), 0);
    EXPECT_EQ(d.SetLong(5), 0);
    EXPECT_EQ(static_cast<int>(d), 0);
    EXPECT_EQ(static_cast<double>(d), 2.5);
}

struct ParseRow {
    const char* name;
    const char* text;
    long unit;
    double degrees;
};

TEST_F(Values, StringToNumberRules)
{
    const ParseRow rows[] = {
        {"blanks", "12 30 15.5", 12, 12 + 30 / 60.0 + 15.5 / 3600},
        {"symbols", "12\xC2\xB0" "30'15.5\"", 12, 12 + 30 / 60.0 + 15.5 / 3600},
        {"gon symbols", "12g 30c 15.5cc", 15, (12 + 0.3 + 0.00155) * 0.9},
        {"negative degree", "-12 30 15", 12, -(12 + 30 / 60.0 + 15 / 3600.0)},
        {"south", "12 30 15 S", 12, -(12 + 30 / 60.0 + 15 / 3600.0)},
        {"two negatives cancel", "-12 30 15 S", 12, 12 + 30 / 60.0 + 15 / 3600.0},
        {"minus zero loses its sign", "-0 30 0", 12, 0.5},
        {"negative minute", "0 -30 0", 12, -0.5},
        {"decimal in degree field stops", "12.5", 12, 12},
        {"lower-case s has no effect", "12 30 0 s", 12, 12.5},
        {"South by its capital", "South 12 30", 12, -12.5},
        {"west", "10 W", 11, -10},
        {"symbol after minus is dropped", "-\xC2\xB0" "5", 12, -5},
        {"decimal degree strtod", "12.5abc", 11, 12.5},
        {"grad", "50", 14, 45},
        {"empty", "", 12, 0},
        {"garbage", "abc", 12, 0},
        {"only minus", "-", 12, 0},
        {"huge fields saturate", "99999999999999 99999999999 1e39", 12, std::nan("")},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CZelValueAngle a;
        a.ConvertToStd(r.text, r.unit, -1, 0);
        if (std::isnan(r.degrees))
            continue;  // only: no crash, no undefined behaviour
        const double want = std::fmod(r.degrees * kDeg, 2 * kPi);
        EXPECT_NEAR(a.GetDouble(), want, 1e-9);
    }
    CZelValueDistance d;
    d.ConvertToStd("12.5 m S", 21, -1, 0);
    EXPECT_EQ(d.GetDouble(), 12.5);
    d.ConvertToStd(static_cast<const char*>(nullptr), 21, -1, 0);
    EXPECT_EQ(d.GetDouble(), 0.0);
}

TEST_F(Values, TextWithHemisphereLetters)
{
    CZelUnitSettingsAngleLatLon settings(12, nullptr);
    settings.Precision(6);
    CZelValueAngleLat lat(&settings);
    CZelValueAngleLon lon(&settings);
    CString text;
    lat = 0.0;
    lat.GetString(text);
    EXPECT_EQ(text, "   0\xC2\xB0 00' 00.0\" N");
    lon = 0.0;
    lon.GetString(text);
    EXPECT_EQ(text, "   0\xC2\xB0 00' 00.0\" E");
    lat.ConvertToStd("47 30 0 S", 12, -1, 0);
    lat.GetString(text);
    EXPECT_EQ(text, "  47\xC2\xB0 30' 00.0\" S");
    lon.ConvertToStd("-8 15 0", 12, -1, 0);
    // The number comes out in unit 11 (8.25) but is written in the settings' unit.
    lon.ConvertStdTo(text, 11, 6, 0);
    EXPECT_EQ(text, "   8\xC2\xB0 25' 00.0\" W");

    // With a template the letter fills %Q; a plain angle empties it.
    CZelUnitSettingsAngleLatLon templ(11, "%.2f%Q");
    CZelValueAngleLat withTemplate(&templ);
    withTemplate = -10 * kDeg;
    withTemplate.GetString(text);
    EXPECT_EQ(text, "10.00S");
    CZelUnitSettingsAngle plainTempl(11, "%.2f%Q");
    CZelValueAngle plain(&plainTempl);
    plain = -10 * kDeg;
    plain.GetString(text);
    EXPECT_EQ(text, "-10.00");
}

TEST_F(Values, StdFormatAndOtherSettings)
{
    CZelUnitSettingsAngle grad(14, nullptr);
    grad.Precision(3);
    CZelValueAngle a(&grad);
    a = kPi / 2;
    CString text;
    a.StdFormat(text);
    EXPECT_EQ(text, " 100.000 [grad]");
    CZelUnitSettingsAngle dms(12, nullptr);
    dms.Precision(6);
    a.ConvertStdTo(text, &dms);
    EXPECT_EQ(text, "  90\xC2\xB0 00' 00.00000\"");  // by this value's format
    CZelUnitSettingsAngle dmsSettings(12, nullptr);
    CZelValueAngle b(&dmsSettings);
    b = kPi / 4;
    b.StdFormat(text);
    EXPECT_EQ(text, "  45\xC2\xB0 00' 00.0\"");

    CZelValueDistance d(1.0, 22, nullptr);
    EXPECT_DOUBLE_EQ(d.GetDouble(), 0.3048006096012192);
    d.StdFormat(text);
    EXPECT_EQ(text, " 1.000000 fts");
    CZelUnitSettingsDistance metres(21, nullptr);
    d.ConvertStdTo(text, &metres);
    EXPECT_EQ(text, " 0.304801");
    d.SetString("3");
    EXPECT_DOUBLE_EQ(d.GetDouble(), 3 * 0.3048006096012192);
}

TEST_F(Values, PrecisionRoundsSexagesimalUnits)
{
    CZelUnitSettingsAngle dms(12, nullptr);
    CZelValueAngle a(&dms);
    // A nonnegative precision counts decimals of the seconds in units 12 and 15;
    // only the way out rounds.
    a.ConvertToStd(10.3015678, 12, 1, 0);
    double packed = 0;
    a.ConvertStdTo(packed, 12, -1, 0);
    EXPECT_DOUBLE_EQ(packed, 10.3015678);
    a.ConvertStdTo(packed, 12, 1, 0);
    EXPECT_DOUBLE_EQ(packed, 10.30157);
    a.ConvertStdTo(packed, 12, 0, 0);  // 0 + 5 is below 6: five decimals
    EXPECT_DOUBLE_EQ(packed, 10.3015678);
    a = 2 * kPi - 1e-9;
    a.ConvertStdTo(packed, 12, 2, 1);
    EXPECT_EQ(packed, 0.0);
    // Three-argument forms take unit, precision and limit from the settings.
    dms.Precision(1);
    a.ConvertToStd(10.3015678, 1, 1);
    a.ConvertStdTo(packed, 0, 0);
    EXPECT_DOUBLE_EQ(packed, 10.3015678);
    a.ConvertStdTo(packed, 1, 0);
    EXPECT_DOUBLE_EQ(packed, 10.30157);
}

// Packed units get no extra 5: the angle settings' default precision 5 rounds
// them to five decimals of the seconds, not to whole seconds.
TEST_F(Values, PackedDmsAtDefaultPrecisionKeepsTenthsOfSeconds)
{
    CZelUnitSettingsAngle packedDms(13, nullptr);
    packedDms.Precision(5);
    CZelValueAngle a(&packedDms);
    a = (45 + 30 / 60.0 + 15.4 / 3600) * kDeg;
    CString text;
    a.GetString(text);
    EXPECT_EQ(text, " 45.30154");
}

// The 5 added for units 12 and 15 must not overflow a precision near INT_MAX.
TEST_F(Values, HugePrecisionDoesNotOverflow)
{
    CZelUnitSettingsAngle dms(12, nullptr);
    CZelValueAngle a(&dms);
    EXPECT_EQ(a.ConvertToStd(10.3015678, 12, INT_MAX, 0), 0);
    double packed = 0;
    EXPECT_EQ(a.ConvertStdTo(packed, 15, INT_MAX, 0), 0);
    EXPECT_EQ(a.ConvertStdTo(packed, 12, INT_MAX, 0), 0);
    EXPECT_DOUBLE_EQ(packed, 10.3015678);
    CZelUnitSettingsAngle huge(12, nullptr);
    huge.Precision(INT_MAX);
    CString text;
    EXPECT_EQ(a.ConvertStdTo(text, &huge), 0);
    EXPECT_EQ(text, "  10\xC2\xB0 30' 15.7\"");
}

TEST_F(Values, CheckUnitFallsBackToTheStoredUnit)
{
    // Nothing stored: angles take 12, distances 21.
    CZelValueAngle a;
    EXPECT_EQ(CZelUnitSettingsAngle::Default().Unit(), 12);
    CZelValueDistance d;
    EXPECT_EQ(CZelUnitSettingsDistance::Default().Unit(), 21);
    // A stored unit wins; an unknown stored number doesn't.
    CZelUnitSettingsAngleLatLon::DefaultSettings(16, nullptr);
    EXPECT_EQ(CZelUnitSettingsAngleLatLon::Default().Unit(), 2);
    CZelValueAngleLon lon;
    EXPECT_EQ(CZelUnitSettingsAngleLatLon::Default().Unit(), 16);
    CZelUnitSettingsDistance::Default() = CZelUnitSettingsDistance();
    zelvalues::WriteStoredUnit(zelvalues::SectionDistance(), zelvalues::KeyDistanceNumber(),
                               zelvalues::KeyDistanceText(), 99, "");
    CZelValueDistance d2;
    EXPECT_EQ(CZelUnitSettingsDistance::Default().Unit(), 21);
}

TEST_F(Values, CopiesShareOrCloneSettings)
{
    CZelUnitSettingsAngle settings(11, nullptr);
    CZelValueAngle a(&settings);
    a = 1.0;
    CZelValueAngle b(a);
    EXPECT_EQ(b.UnitSettings(), &settings);
    EXPECT_EQ(b.GetDouble(), 1.0);
    {
        CZelValueAngle owner(0.5, 14, nullptr);
        CZelValueAngle copy(owner);
        EXPECT_NE(copy.UnitSettings(), owner.UnitSettings());
        EXPECT_EQ(copy.UnitSettings()->Unit(), 14);
        b = owner;
    }
    EXPECT_EQ(b.UnitSettings()->Unit(), 14);  // still alive after the owner went
    b.UnitSettings(&settings, 0);
    EXPECT_EQ(b.UnitSettings(), &settings);
}

// Text parsers take any bytes.
TEST_F(Values, RandomBytesDontCrashTheParsers)
{
    std::mt19937 rng(1);
    std::uniform_int_distribution<int> byte(1, 255), length(0, 40);
    const long units[] = {11, 12, 13, 15, 16, 18, 2, 10, 99};
    CZelValueAngle a;
    CZelValueAngleLat lat;
    CZelValueDistance d;
    for (int i = 0; i < 20000; ++i) {
        std::string s;
        for (int n = length(rng); n > 0; --n)
            s += static_cast<char>(byte(rng) % 4 == 0 ? "-. 0123456789SW"[byte(rng) % 15] : byte(rng));
        const long unit = units[i % std::size(units)];
        a.ConvertToStd(s.c_str(), unit, i % 14 - 1, i & 1);
        lat.ConvertToStd(s.c_str(), unit, -1, 0);
        d.ConvertToStd(s.c_str(), 21, -1, 0);
        CString text;
        a.ConvertStdTo(text, unit, i % 14 - 1, i & 1);
        lat.GetString(text);
    }
    SUCCEED();
}

} // namespace
