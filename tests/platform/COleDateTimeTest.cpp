#include <Zel260/platform/CAtlException.h>
#include <Zel260/platform/COleDateTime.h>
#include <Zel260/platform/COleDateTimeSpan.h>

#include <gtest/gtest.h>

TEST(COleDateTime, FieldsAndValuesAgree)
{
    struct Row {
        const char* name;
        int y, mo, d, h, mi, s;
        double value;
    };
    const Row rows[] = {
        {"epoch", 1899, 12, 30, 0, 0, 0, 0.0},
        {"day before, 06:00", 1899, 12, 29, 6, 0, 0, -1.25},
        {"first day", 100, 1, 1, 0, 0, 0, -657434.0},
        {"unix epoch noon", 1970, 1, 1, 12, 0, 0, 25569.5},
        {"leap day", 2000, 2, 29, 18, 0, 0, 36585.75},
        {"last day", 9999, 12, 31, 0, 0, 0, 2958465.0},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        const COleDateTime t(r.y, r.mo, r.d, r.h, r.mi, r.s);
        ASSERT_EQ(t.GetStatus(), COleDateTime::valid);
        EXPECT_DOUBLE_EQ(static_cast<double>(t), r.value);
        const COleDateTime back(r.value);
        EXPECT_EQ(back.GetYear(), r.y);
        EXPECT_EQ(back.GetMonth(), r.mo);
        EXPECT_EQ(back.GetDay(), r.d);
        EXPECT_EQ(back.GetHour(), r.h);
        EXPECT_EQ(back.GetMinute(), r.mi);
        EXPECT_EQ(back.GetSecond(), r.s);
    }
}

TEST(COleDateTime, BadFieldsAndRangeMakeItInvalid)
{
    EXPECT_EQ(COleDateTime(99, 12, 31, 0, 0, 0).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(COleDateTime(2001, 2, 29, 0, 0, 0).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(COleDateTime(2000, 1, 1, 0, 60, 0).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(COleDateTime(3e6).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(COleDateTime(3e6).GetYear(), -1);
    EXPECT_EQ(COleDateTime(3e6).Format("%Y"), "");
}

TEST(COleDateTime, ArithmeticCrossesTheEpochOnTheTimeLine)
{
    const COleDateTime t(1899, 12, 30, 6, 0, 0);
    const COleDateTime earlier = t - COleDateTimeSpan(0.5);
    EXPECT_EQ(earlier.GetDay(), 29);
    EXPECT_EQ(earlier.GetHour(), 18);
    EXPECT_DOUBLE_EQ(static_cast<double>(earlier), -1.75);
    EXPECT_DOUBLE_EQ((t - earlier).GetTotalDays(), 0.5);
    EXPECT_TRUE(earlier < t);
    EXPECT_EQ((COleDateTime(9999, 12, 31, 0, 0, 0) + COleDateTimeSpan(1.0)).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(COleDateTime(2007, 3, 2, 13, 5, 0).Format("%#d.%m.%Y %#I:%M %p"), "2.03.2007 1:05 PM");
}

TEST(COleDateTimeSpan, TotalsRoundHalfASecondAwayFromZero)
{
    const COleDateTimeSpan s(1, 6, 5, 4);
    EXPECT_EQ(s.GetDays(), 1);
    EXPECT_EQ(s.GetHours(), 6);
    EXPECT_EQ(s.GetMinutes(), 5);
    EXPECT_EQ(s.GetSeconds(), 4);
    EXPECT_EQ(s.GetTotalHours(), 30.0);
    EXPECT_EQ(s.Format("%D %H:%M:%S %#H"), "1 06:05:04 6");
    // 59.6 s reads as a whole minute.
    const COleDateTimeSpan almost(59.6 / 86400.0);
    EXPECT_EQ(almost.GetTotalSeconds(), 60.0);
    EXPECT_EQ(almost.GetMinutes(), 1);
    EXPECT_EQ(COleDateTimeSpan(-59.6 / 86400.0).GetTotalSeconds(), -60.0);
    EXPECT_THROW(s.Format("%X"), CAtlException);
}

TEST(COleDateTime, FieldsOfEveryDayComeBackAsTheyWereSet)
{
    // Every day of the range at three clock times: the split for calculations gives
    // the fields back, and agrees with the broken-down form.
    int failures = 0;
    COleDateTime day(100, 1, 1, 0, 0, 0);
    const COleDateTimeSpan one(1.0);
    while (day.GetStatus() == COleDateTime::valid && failures < 5) {
        struct tm tm;
        ASSERT_TRUE(day.GetAsTm(tm));
        for (const int secs : {0, 45296, 86399}) {
            COleDateTime t(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, secs / 3600, secs / 60 % 60, secs % 60);
            int y, m, d, h, mi, s;
            struct tm back;
            const bool ok = t.GetAsFields(y, m, d, h, mi, s) && t.GetAsTm(back) && y == tm.tm_year + 1900 &&
                            m == tm.tm_mon + 1 && d == tm.tm_mday && h == secs / 3600 && mi == secs / 60 % 60 &&
                            s == secs % 60 && back.tm_mday == d && back.tm_hour == h && back.tm_sec == s;
            if (!ok && ++failures < 5)
                ADD_FAILURE() << "day " << static_cast<double>(day) << " at " << secs << " s";
        }
        day += one;
    }
    EXPECT_EQ(failures, 0);
    COleDateTime bad(2007, 2, 30, 0, 0, 0);
    int y = -7, m, d, h, mi, s;
    EXPECT_FALSE(bad.GetAsFields(y, m, d, h, mi, s));
    EXPECT_EQ(y, -7);
}

TEST(COleDateTime, TimeOfDayOnTheFirstDayOfTheRangeIsValid)
{
    // Before 1899-12-30 the time of day makes the value more negative, yet
    // 0100-01-01 12:00 lies inside the range as much as its midnight does.
    const COleDateTime noon(100, 1, 1, 12, 0, 0);
    EXPECT_EQ(noon.GetStatus(), COleDateTime::valid);
    EXPECT_EQ(noon.GetHour(), 12);
    EXPECT_EQ(COleDateTime(-657434.5).GetStatus(), COleDateTime::valid);
    EXPECT_EQ(COleDateTime(-657434.5).GetDay(), 1);
    EXPECT_EQ(COleDateTime(-657435.0).GetStatus(), COleDateTime::invalid);
    EXPECT_EQ((noon - COleDateTimeSpan(0.75)).GetStatus(), COleDateTime::invalid);
}

TEST(COleDateTime, ClockRoundingUpToMidnightBeforeTheEpochGoesToTheNextDay)
{
    // 1899-12-29 23:59:59.9991 rounds to the second as 1899-12-30 00:00:00, as
    // 1900-01-01 23:59:59.9991 rounds to 1900-01-02 00:00:00.
    const double almostMidnight = 86399.9991 / 86400.0;
    const COleDateTime before(-1.0 - almostMidnight);
    EXPECT_EQ(before.GetYear(), 1899);
    EXPECT_EQ(before.GetMonth(), 12);
    EXPECT_EQ(before.GetDay(), 30);
    EXPECT_EQ(before.GetHour(), 0);
    const COleDateTime after(2.0 + almostMidnight);
    EXPECT_EQ(after.GetDay(), 2);
    EXPECT_EQ(after.GetHour(), 0);
    // Rounding within the day stays with the day.
    const COleDateTime morning(-1.25);
    EXPECT_EQ(morning.GetDay(), 29);
    EXPECT_EQ(morning.GetHour(), 6);
}

TEST(COleDateTime, TheLastValueOfTheRangeReadsAsTheLastSecond)
{
    const COleDateTime last(COleDateTime::MaxDateValue);
    ASSERT_EQ(last.GetStatus(), COleDateTime::valid);
    EXPECT_EQ(last.GetYear(), 9999);
    EXPECT_EQ(last.GetMonth(), 12);
    EXPECT_EQ(last.GetDay(), 31);
    EXPECT_EQ(last.GetHour(), 23);
    EXPECT_EQ(last.GetMinute(), 59);
    EXPECT_EQ(last.GetSecond(), 59);
}
