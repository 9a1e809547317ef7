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
