#include <Zel260/platform/CAtlException.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/time/CZelTimeSpan.h>
#include <Zel260/time/CZelTimeSpanHelper.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using S = CZelTimeSpanHelper;

namespace {

// A span of whole seconds and an exact binary fraction.
CZelTimeSpan span(std::int64_t seconds, double frac = 0.0)
{
    if (frac == 0.0)
        return CZelTimeSpan(seconds);
    return CZelTimeSpan(static_cast<double>(seconds) / 86400.0 + frac / 86400.0);
}

} // namespace

TEST(CZelTimeSpan, DaysAndParts)
{
    const CZelTimeSpan half(0.5);
    EXPECT_EQ(half.GetTimeSpan(), 43200);
    EXPECT_DOUBLE_EQ(half.Mjd(), 0.5);
    EXPECT_EQ(CZelTimeSpan(1L, 6, 5, 4).GetTimeSpan(), 108304);

    long d, h, m, s;
    double f;
    S::Mjd2Hms(1.75 + 61.25 / 86400.0, d, h, m, s, f);
    EXPECT_EQ(d, 1);
    EXPECT_EQ(h, 18);
    EXPECT_EQ(m, 1);
    EXPECT_EQ(s, 1);
    EXPECT_NEAR(f, 0.25, 1e-5);

    int weeks;
    double seconds;
    EXPECT_TRUE(CZelTimeSpan(8.0).GetGpsTimeSpan(weeks, seconds));
    EXPECT_EQ(weeks, 1);
    EXPECT_DOUBLE_EQ(seconds, 86400.0);
    const CZelTimeSpan gps(2, 3600.5);
    EXPECT_EQ(gps.GetTimeSpan(), 2 * 604800 + 3600);
    EXPECT_NEAR(gps.GetFracSecond(), 0.5, 1e-5);
}

TEST(CZelTimeSpan, SetMjdRespectsTheRangeAndWrapsCTimeSpan)
{
    CZelTimeSpan z(1.0);
    z.Mjd(-0.5);
    EXPECT_DOUBLE_EQ(z.Mjd(), 1.0);
    z.Mjd(2147483648.0);
    EXPECT_DOUBLE_EQ(z.Mjd(), 1.0);
    z.Mjd(std::nan(""));
    EXPECT_DOUBLE_EQ(z.Mjd(), 1.0);
    z.Mjd(0.25);
    EXPECT_DOUBLE_EQ(z.Mjd(), 0.25);
    z.Mjd(2147483647.0); // the upper limit is the count of seconds taken as days
    EXPECT_DOUBLE_EQ(z.Mjd(), 2147483647.0);

    CTimeSpan c(5);
    S::SetMjd(1.0, c);
    EXPECT_EQ(c.GetTimeSpan(), 86400);
    S::SetMjd(30000.0, c); // 2592000000 s: past 2^31, wraps
    EXPECT_EQ(c.GetTimeSpan(), 2592000000LL - 4294967296LL);
    COleDateTimeSpan o;
    S::SetMjd(-3.0, o); // no test at all
    EXPECT_DOUBLE_EQ(o.m_span, -3.0);
}

TEST(CZelTimeSpan, LimitsKeepTheirOddUnits)
{
    double lo, hi;
    S::GetPhysicalRange(S::eRangeCTimeSpan, lo, hi);
    EXPECT_EQ(hi, 2147483647.0);
    S::GetPhysicalRangeMjd(S::eRangeCTimeSpan, lo, hi);
    EXPECT_DOUBLE_EQ(hi, 2147483647.0 / 86400.0);
    S::GetPhysicalRange(S::eRangeDateTimeSpanCtrl, lo, hi);
    EXPECT_EQ(lo, 0.0);
    EXPECT_EQ(hi, 86399.0);
    COleDateTimeSpan a, b;
    S::GetPhysicalRange(S::eRangeCTimeSpan, a, b);
    EXPECT_EQ(b.m_span, 2147483647.0); // seconds carried as days
    S::GetPhysicalRange(S::eRangeOleDateTimeSpan, a, b);
    EXPECT_EQ(b.m_span, 1.7976931348623157e308);
}

TEST(CZelTimeSpan, Rounding)
{
    struct Row {
        const char* name;
        CZelTimeSpan value;
        int flag;
        std::int64_t seconds;
        double frac;
    };
    const Row rows[] = {
        {"second needs a second of room", span(0, 0.75), 0, 0, 0.75},
        {"second", span(1, 0.75), 0, 2, 0.0},
        {"tenth below a second keeps", span(0, 0.96875), 4, 0, 0.96875},
        {"tenth carries", span(1, 0.96875), 4, 2, 0.0},
        {"minute rounds 89 s down", span(89), 1, 60, 0.0},
        {"minute rounds 90 s up", span(90), 1, 120, 0.0},
        {"minute of 29 s", span(29), 1, 0, 0.0},
        {"hour", span(5400), 2, 7200, 0.0},
        {"hundredth ties to even", span(3, 0.125), 5, 3, 0.12},
        {"millisecond carries without guard", span(0, 0.99975), 3, 1, 0.0},
        {"bit 128 rounds nothing", span(1, 0.75), 128, 1, 0.75},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CZelTimeSpan v(r.value);
        const double days = v.Round(r.flag);
        EXPECT_EQ(v.GetTimeSpan(), r.seconds);
        EXPECT_NEAR(v.GetFracSecond(), r.frac, 1e-4);
        EXPECT_DOUBLE_EQ(days, v.Mjd());
    }
    CTimeSpan c(89);
    S::Round(c, S::eRoundSecond);
    EXPECT_EQ(c.GetTimeSpan(), 89);
    S::Round(c, S::eRoundMinute);
    EXPECT_EQ(c.GetTimeSpan(), 60);
    COleDateTimeSpan o(0, 1, 44, 40);
    S::Round(o, S::eRoundHour);
    EXPECT_EQ(o.GetTotalSeconds(), 7200.0);
}

TEST(CZelTimeSpan, FormatWithTheHourToken)
{
    struct Row {
        const char* name;
        CZelTimeSpan value;
        const char* format;
        const char* expected;
    };
    const Row rows[] = {
        {"hours beyond a day", CZelTimeSpan(0L, 30, 0, 0), "%H:%M:%S", "30:00:00"},
        {"no leading zero", CZelTimeSpan(0L, 5, 0, 7), "%H:%M:%S", "5:00:07"},
        {"the # form is a plain span token", CZelTimeSpan(0L, 30, 0, 0), "%D %#H", "1 6"},
        {"no hour token", CZelTimeSpan(1.5), "%D %M", "1 00"},
        {"lower-case token", CZelTimeSpan(0L, 49, 3, 0), "%h h %M", "49 h 03"},
        {"lower-case token wins, %H stays a span token", CZelTimeSpan(0L, 30, 0, 0), "%H %h", "06 30"},
        {"second token reads the high half", CZelTimeSpan(0L, 30, 0, 0), "%H/%H", "30/0"},
        {"days named: hours in the day", CZelTimeSpan(0L, 30, 0, 0), "%%D %H", "%D 6"},
        {"percent survives", CZelTimeSpan(0L, 2, 0, 0), "%H%%", "2%"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        EXPECT_EQ(r.value.Format(r.format, 0), r.expected);
    }
    EXPECT_EQ(S::Format(CTimeSpan(30 * 3600), "%H:%M", S::eRoundSecond), "30:00");
    EXPECT_EQ(CZelTimeSpan(0L, 1, 59, 40).Format("%H:%M", 1), "2:00");
    EXPECT_THROW(CZelTimeSpan(1.0).Format("%Q", 0), CAtlException);
    try {
        CZelTimeSpan(1.0).Format("%H %x", 0);
        ADD_FAILURE() << "no failure for a bad token";
    } catch (const CAtlException& e) {
        EXPECT_EQ(e.m_hr, E_INVALIDARG);
    }

    // The hours of a COleDateTimeSpan print as 0: its value travels as a double.
    EXPECT_EQ(S::Format(COleDateTimeSpan(0, 30, 5, 0), "%H:%M", S::eRoundSecond), "0:05");
    EXPECT_EQ(S::Format(COleDateTimeSpan(0, 30, 5, 0), "%D %#H:%M", S::eRoundSecond), "1 6:05");

    HINSTANCE module = ZelCreateResourceModule("spans");
    ZelSetResourceString(module, 9, "%M:%S");
    EXPECT_EQ(CZelTimeSpan(0L, 0, 3, 4).Format(module, 9, 0), "03:04");
    EXPECT_THROW(CZelTimeSpan(0L, 0, 3, 4).Format(module, 10, 0), CAtlException);
    ZelDestroyResourceModule(module);
}

TEST(CZelTimeSpan, AddingStaysInsideTheRange)
{
    CZelTimeSpan a = span(10, 0.5);
    EXPECT_FALSE(S::SubtractTimeSpan(a, span(11)));
    EXPECT_EQ(a.GetTimeSpan(), 10);
    EXPECT_TRUE(S::SubtractTimeSpan(a, span(10, 0.75)));
    EXPECT_EQ(a.GetTimeSpan(), 0);
    EXPECT_NEAR(a.GetFracSecond(), 0.5, 1e-5); // only whole seconds take part
    EXPECT_TRUE(S::AddDays(a, 2));
    EXPECT_TRUE(S::AddHours(a, -48));
    EXPECT_TRUE(S::AddMinutes(a, 0));
    EXPECT_FALSE(S::AddSeconds(a, -1));
    CZelTimeSpan top(static_cast<std::int64_t>(2147483647));
    EXPECT_FALSE(S::AddSeconds(top, 1));
    EXPECT_TRUE(S::AddSeconds(top, -1));

    COleDateTimeSpan o(0, 23, 59, 0);
    EXPECT_FALSE(S::AddMinutes(o, 1, S::eRangeDateTimeSpanCtrl));
    EXPECT_TRUE(S::AddSeconds(o, 59, S::eRangeDateTimeSpanCtrl));
    EXPECT_TRUE(S::AddDays(o, 5, S::eRangeOleDateTimeSpan));
    EXPECT_TRUE(S::AddDays(o, -50, S::eRangeOleDateTimeSpan)); // no test for this range
    EXPECT_LT(o.m_span, 0.0);
    EXPECT_FALSE(S::AddDays(o, -1, S::eRangeCTimeSpan));
}

// Each unit added to a COleDateTimeSpan is the span the platform builds from that
// many units, so counting up to the control's 23:59:59 lands on it exactly and the
// same span can be taken off again.
TEST(CZelTimeSpan, OleUnitsAddUpToTheControlMaximumExactly)
{
    COleDateTimeSpan lo, hi;
    S::GetPhysicalRange(S::eRangeDateTimeSpanCtrl, lo, hi);
    struct Row {
        const char* name;
        int (*add)(COleDateTimeSpan&, int, S::eRangeType);
        int n;
        COleDateTimeSpan expected;
    };
    const Row rows[] = {
        {"seconds", &S::AddSeconds, 86399, COleDateTimeSpan(0, 0, 0, 86399)},
        {"minutes", &S::AddMinutes, 1439, COleDateTimeSpan(0, 0, 1439, 0)},
        {"hours", &S::AddHours, 23, COleDateTimeSpan(0, 23, 0, 0)},
        {"days", &S::AddDays, 3, COleDateTimeSpan(3, 0, 0, 0)},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        COleDateTimeSpan up(0.0);
        EXPECT_TRUE(r.add(up, r.n, S::eRangeOleDateTimeSpan));
        EXPECT_EQ(up.m_span, r.expected.m_span);
        EXPECT_TRUE(r.add(up, -r.n, S::eRangeOleDateTimeSpan));
        EXPECT_EQ(up.m_span, 0.0);
    }
    COleDateTimeSpan a(0.0);
    ASSERT_TRUE(S::AddSeconds(a, 86399, S::eRangeDateTimeSpanCtrl));
    EXPECT_EQ(a.m_span, hi.m_span);
    EXPECT_TRUE(S::SubtractTimeSpan(a, hi, S::eRangeDateTimeSpanCtrl));
}

// Extreme counts, NaN and infinities must give defined results (the sanitizer run
// checks that nothing overflows on the way).
TEST(CZelTimeSpan, ExtremeAndNonNumericValuesStayDefined)
{
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Split {
        const char* name;
        double days;
        long day, hour, minute, second;
    };
    const Split splits[] = {
        {"negative truncates toward zero", -(1.75 + 61.5 / 86400.0), -1, -18, -1, -1},
        {"NaN gives no clock", nan, 0, 0, 0, 0},
        {"infinity has no fraction of a day", inf, 9200000000000000000L, 0, 0, 0},
    };
    for (const auto& r : splits) {
        SCOPED_TRACE(r.name);
        long d, h, m, s;
        double f;
        S::Mjd2Hms(r.days, d, h, m, s, f);
        EXPECT_EQ(d, r.day);
        EXPECT_EQ(h, r.hour);
        EXPECT_EQ(m, r.minute);
        EXPECT_EQ(s, r.second);
    }

    CZelTimeSpan none(nan);
    EXPECT_EQ(none.GetTimeSpan(), 0);
    EXPECT_TRUE(std::isnan(none.GetFracSecond()));
    EXPECT_EQ(none.Format("%H:%M:%S", 0), "0:00:00");
    for (int flag = 0; flag <= 5; ++flag) {
        CZelTimeSpan c(none);
        c.Round(flag);
        EXPECT_EQ(c.GetTimeSpan(), 0) << "flag " << flag;
    }
    int weeks = -1;
    double seconds = 0.0;
    EXPECT_TRUE(none.GetGpsTimeSpan(weeks, seconds));
    EXPECT_EQ(weeks, 0);

    CZelTimeSpan z(1.0);
    CTimeSpan c(5);
    for (const double bad : {nan, inf, -inf}) {
        z.Mjd(bad);
        S::SetMjd(bad, c);
    }
    EXPECT_DOUBLE_EQ(z.Mjd(), 1.0);
    EXPECT_EQ(c.GetTimeSpan(), 5);

    // Far outside the range every Add is refused and the span stays.
    CZelTimeSpan top(std::numeric_limits<std::int64_t>::max());
    CZelTimeSpan bottom(std::numeric_limits<std::int64_t>::min());
    CZelTimeSpan zero;
    EXPECT_FALSE(S::AddSeconds(top, 1));
    EXPECT_FALSE(S::AddSeconds(bottom, -1));
    EXPECT_FALSE(S::AddSeconds(zero, std::numeric_limits<int>::min()));
    EXPECT_FALSE(S::AddDays(zero, std::numeric_limits<int>::max()));
    EXPECT_EQ(top.GetTimeSpan(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(zero.GetTimeSpan(), 0);
    for (int flag = 0; flag <= 5; ++flag) {
        CZelTimeSpan a(top), b(bottom);
        a.Round(flag);
        b.Round(flag);
        EXPECT_NO_THROW(a.Format("%D %H %M %S", flag));
        EXPECT_NO_THROW(b.Format("%D %H %M %S", flag));
    }
    // A week count beyond int is clamped, not converted out of range.
    EXPECT_TRUE(CZelTimeSpan(std::numeric_limits<std::int64_t>::max()).GetGpsTimeSpan(weeks, seconds));
    EXPECT_EQ(weeks, std::numeric_limits<int>::max());

    for (const double bad : {nan, inf, -inf, 1e300}) {
        COleDateTimeSpan o(bad);
        S::Round(o, S::eRoundMinute);
        S::Round(o, S::eRoundHour);
        EXPECT_NO_THROW(S::Format(COleDateTimeSpan(bad), "%D %H:%M:%S", S::eRoundHour));
    }
    double lo, hi;
    S::GetPhysicalRange(S::eRangeOleDateTimeSpan, lo, hi);
    EXPECT_EQ(lo, 0.0);
    EXPECT_TRUE(std::isinf(hi)); // the largest double of days has no count of seconds
}
