#include "TimeTestSupport.h"

#include <Zel260/platform/CAtlException.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/time/CZelTimeHelper.h>
#include <Zel260/time/CZelTimeSpan.h>

#include <cmath>
#include <cstdio>

using zeltimetest::TimeTest;
using H = CZelTimeHelper;

namespace {

// A time at 2007-03-02 h:m:s plus `frac` seconds (an exact binary fraction), local.
CZelTime at(int h, int m, int s, double frac = 0.0, int day = 2, int month = 3, int year = 2007)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "%d-%d-%d %d:%d:%.17g", year, month, day, h, m, s + frac);
    CString text = buf;
    CString format = "%Y-%m-%d %H:%M:%s";
    return CZelTime(text, format);
}

CString clock(const CZelTime& t) { return t.Format("%H:%M:%S", 0x7F); } // 0x7F rounds nothing

// 2007-03-02 12:00 and `seconds` with an exact binary fraction, read by "%s".
CZelTime withSeconds(const char* seconds)
{
    CString text = CString("2007-03-02 12:00:") + seconds;
    CString format = "%Y-%m-%d %H:%M:%s";
    return CZelTime(text, format);
}

} // namespace

TEST_F(TimeTest, RoundToWholeUnits)
{
    struct Row {
        const char* name;
        CZelTime time;
        int flag;
        const char* expected;
        double frac;
    };
    const Row rows[] = {
        {"second, half up", at(12, 0, 59, 0.5), 0, "12:01:00", 0.0},
        {"second, below half", at(12, 0, 59, 0.4990234375), 0, "12:00:59", 0.0},
        {"minute at 30 s", at(12, 0, 30), 1, "12:01:00", 0.0},
        {"minute at 29 s", at(12, 0, 29), 1, "12:00:00", 0.0},
        {"minute ignores the fraction", at(12, 0, 29, 0.875), 1, "12:00:00", 0.0},
        {"hour at 30 min", at(12, 30, 0), 2, "13:00:00", 0.0},
        {"hour carries the day", at(23, 45, 0), 2, "00:00:00", 0.0},
        {"bit 128 is ignored", at(12, 0, 30), 1 | 128, "12:01:00", 0.0},
        {"unknown flag", at(12, 0, 59, 0.75), 6, "12:00:59", 0.75},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CZelTime t(r.time);
        const double mjd = t.Round(r.flag);
        EXPECT_EQ(clock(t), r.expected);
        EXPECT_NEAR(t.GetFracSecond(), r.frac, 1e-6);
        EXPECT_DOUBLE_EQ(mjd, t.Mjd());
    }
    CZelTime carried = at(23, 45, 0, 0.0, 31, 12);
    carried.Round(2);
    EXPECT_EQ(carried.Format("%Y-%m-%d %H", 0x7F), "2008-01-01 00");
}

TEST_F(TimeTest, RoundFractionsTiesToEven)
{
    struct Row {
        const char* name;
        const char* seconds;
        int flag;
        double expected;
        int second;
    };
    const Row rows[] = {
        {"tenth carries", "10.96", 4, 0.0, 11},
        {"tenth tie to even, down", "10.25", 4, 0.2, 10},
        {"tenth tie to even, up", "10.75", 4, 0.8, 10},
        {"millisecond tie to even", "10.0625", 3, 0.062, 10},
        {"millisecond below a tie", "10.0004", 3, 0.0, 10},
        {"millisecond carries", "10.9996", 3, 0.0, 11},
        {"hundredth tie to even", "10.125", 5, 0.12, 10},
        {"hundredth tie to even, up", "10.375", 5, 0.38, 10},
        {"hundredth carries", "59.996", 5, 0.0, 0},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CZelTime t = withSeconds(r.seconds);
        t.Round(r.flag);
        EXPECT_EQ(t.GetSecond(), r.second);
        EXPECT_NEAR(t.GetFracSecond(), r.expected, 1e-12);
    }
    // The carry of a hundredth reaches the minute.
    CZelTime m = withSeconds("59.996");
    m.Round(5);
    EXPECT_EQ(m.GetMinute(), 1);
    EXPECT_EQ(m.FormatFracSec(5), ".00");
    EXPECT_EQ(withSeconds("10.125").FormatFracSec(3), ".125");
    EXPECT_EQ(withSeconds("10.25").FormatFracSec(4), ".2");
    // CTime has no fraction: rounding to the second changes nothing.
    CTime c(2007, 3, 2, 12, 0, 59, -1);
    H::Round(c, H::eRoundSecond);
    EXPECT_EQ(c.GetSecond(), 59);
    H::Round(c, H::eRoundMinute);
    EXPECT_EQ(c.GetMinute(), 1);
    COleDateTime o(2007, 3, 2, 12, 29, 59);
    H::Round(o, H::eRoundHour);
    EXPECT_EQ(o.GetHour(), 12);
    EXPECT_EQ(o.GetMinute(), 0);
}

TEST_F(TimeTest, RoundingGuardsAtTheRangeEnds)
{
    CZelTime lo, hi;
    H::GetPhysicalRange(lo, hi);
    // A second of room is needed for the second and the tenth.
    CZelTime last = hi;
    last.Mjd(hi.Mjd()); // 23:59:59
    CString text = "2030-01-18 23:59:59.75";
    CString format = "%Y-%m-%d %H:%M:%s";
    CZelTime nearEnd(text, format);
    nearEnd.Round(0);
    EXPECT_EQ(nearEnd.GetSecond(), 59);
    EXPECT_NEAR(nearEnd.GetFracSecond(), 0.75, 1e-12);
    text = "2030-01-18 23:59:59.96";
    format = "%Y-%m-%d %H:%M:%s";
    CZelTime tenth(text, format);
    tenth.Round(4);
    EXPECT_NEAR(tenth.GetFracSecond(), 0.96, 1e-12);
    // The millisecond carries without a guard.
    text = "2030-01-18 23:59:59.9999";
    format = "%Y-%m-%d %H:%M:%s";
    CZelTime ms(text, format);
    ms.Round(3);
    EXPECT_EQ(ms.GetTime(), hi.GetTime() + 1);
    // Minute: the part taken off must stay above the minimum.
    CZelTime first = lo;
    H::AddSeconds(first, 20);
    first.Round(1);
    EXPECT_EQ(first.GetTime(), lo.GetTime());
}

TEST_F(TimeTest, FormatAndItsCut)
{
    const CZelTime t = at(13, 45, 10);
    EXPECT_EQ(t.Format("%d.%m.%Y %H:%M:%S", 0), "02.03.2007 13:45:10");
    EXPECT_EQ(t.Format("%d.%m.%Y %H:%M:%S", 1 | 128), "02.03.2007 13:45");
    // Only the last ':' goes when the minutes are cut too.
    EXPECT_EQ(t.Format("%d.%m.%Y %H:%M:%S", 2 | 128), "02.03.2007 14:");
    // Millisecond with the cut bit cuts as the hour does: the test is on the number.
    EXPECT_EQ(t.Format("%d.%m.%Y %H:%M:%S", 3 | 128), "02.03.2007 13:");
    EXPECT_EQ(at(13, 45, 0).Format("%#I:%M:%S %p", 1 | 128), "1:45: PM");
    EXPECT_EQ(t.Format(static_cast<const char*>(nullptr), 0), "");
    EXPECT_EQ(t.Format("", 0), "");
    EXPECT_EQ(t.Format(std::string(200, 'x').c_str(), 0), ""); // beyond the buffer
    EXPECT_EQ(t.Format(CZelTime::eTimeFormat(17), 0), "02.03.2007 13:45:10");
    EXPECT_EQ(t.Format(CZelTime::eTimeFormat(2), 0), "03/02/2007 1:45:10 PM");
    EXPECT_EQ(t.Format(CZelTime::eTimeFormat(24), 0), "2. Mar 2007 13:45:10");
    EXPECT_EQ(t.Format(CZelTime::eTimeFormat(40), 0), t.Format(0));
    EXPECT_EQ(t.FormatDate(0), "02.03.2007");
    EXPECT_EQ(t.FormatTime(1), "13:45:00");

    // The COleDateTime and CTime forms.
    EXPECT_EQ(H::Format(COleDateTime(2007, 3, 2, 13, 45, 40), "%H:%M", H::eRoundMinute), "13:46");
    COleDateTime bad(2007, 2, 30, 0, 0, 0);
    EXPECT_EQ(H::Format(bad, "%Y", H::eRoundSecond), "Invalid DateTime");
    COleDateTime nothing;
    nothing.SetStatus(COleDateTime::null);
    EXPECT_EQ(H::Format(nothing, "%Y", H::eRoundSecond), "");
    EXPECT_EQ(H::Format(CTime(t.GetTime()), H::eRoundHour), "02.03.2007 14:00:00");
}

TEST_F(TimeTest, FormatFromAResourceModule)
{
    HINSTANCE module = ZelCreateResourceModule("host");
    ZelSetResourceString(module, 7001, "%Y/%m/%d");
    const HINSTANCE before = AfxGetResourceHandle();
    EXPECT_EQ(at(13, 45, 10).Format(module, 7001, 0), "2007/03/02");
    EXPECT_EQ(AfxGetResourceHandle(), before);
    EXPECT_THROW(at(13, 45, 10).Format(module, 7002, 0), CAtlException);
    EXPECT_EQ(AfxGetResourceHandle(), before);
    ZelDestroyResourceModule(module);
}

TEST_F(TimeTest, UtcFormatsMoveByTheZone)
{
    CZelTime t = at(13, 45, 10);
    t.Timezone(-5.0);
    EXPECT_EQ(t.FormatUTC("%H:%M", 0), "08:45");
    EXPECT_EQ(t.FormatUTC(2.0, 0), "02.03.2007 15:45:10");
    EXPECT_EQ(t.FormatUTC(0), "02.03.2007 08:45:10");
    EXPECT_EQ(t.FormatDateUTC(-14.0, 0), "01.03.2007");
    EXPECT_EQ(t.FormatTimeUTC(0), "08:45:10");
    EXPECT_EQ(t.FormatUTC(CZelTime::eTimeFormat(0), 0), "03/02/2007 08:45:10");
}

TEST_F(TimeTest, TheCurrentFormatAndItsProfile)
{
    struct Row {
        unsigned index;
        char separator;
        int order;
        const char* dateTimeCtrl;
        const char* datePicture;
        const char* timePicture;
    };
    const Row rows[] = {
        {0, '/', 1, "MM/dd/yyyy HH:mm:ss", "MM/dd/yyyy", "HH:mm:ss"},
        {3, '/', 0, "dd/MM/yyyy tt hh:mm:ss", "dd/MM/yyyy", "tt hh:mm:ss"},
        {21, '.', 0, "dd.MM.yyyy HH:mm:ss", "dd.MM.yyyy", "HH:mm:ss"},
        {26, ' ', 1, "dd. MMM yyyy tt hh:mm:ss", "dd. MMM yyyy", "tt hh:mm:ss"},
        {29, '-', 1, "dd-MMM-yyyy HH:mm:ss", "dd-MMM-yyyy", "HH:mm:ss"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.index);
        CZelTime::StoreCurrentTimeFormat(r.index);
        EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), r.index);
        EXPECT_EQ(CZelTime::DateSeparator(), r.separator);
        EXPECT_EQ(CZelTime().DateOrder(), r.order);
        EXPECT_EQ(H::GetZelTimeFormat(H::eDateTime), r.dateTimeCtrl);
        EXPECT_EQ(H::GetZelTimeFormat(H::eDate), r.datePicture);
        EXPECT_EQ(H::GetZelTimeFormat(H::eTime), r.timePicture);
    }
    CString odd = "%a %j %Y%% %p %#H";
    H::ConvertZelTimeFormatToDateTimeCtrl(odd);
    EXPECT_EQ(odd, "  yyyy  HH");

    // Loading: missing and -1 give 0, above 32 gives 0, 32 itself passes.
    zeltime::WriteProfileString("CZelTime", "Time Format (###)", "");
    zeltime::WriteProfileInt("CZelTime", "Time Format (###)", -1);
    CZelTime::LoadCurrentTimeFormat();
    EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), 0u);
    zeltime::WriteProfileInt("CZelTime", "Time Format (###)", 33);
    CZelTime::LoadCurrentTimeFormat();
    EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), 0u);
    zeltime::WriteProfileInt("CZelTime", "Time Format (###)", 32);
    CZelTime::LoadCurrentTimeFormat();
    EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), 32u);
    EXPECT_EQ(at(13, 45, 10).Format(0), ""); // the slot behind the table is empty
    EXPECT_EQ(CZelTime::DateSeparator(), ' ');

    // DefaultSettings writes only when the stored choice isn't valid.
    CZelTime::DefaultSettings(CZelTime::eTimeFormat(9));
    EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), 9u);
    EXPECT_EQ(zeltime::ReadProfileInt("CZelTime", "Time Format (###)", -1), 9u);
    EXPECT_EQ(zeltime::ReadProfileString("CZelTime", "Time Format (str)", ""), "%d-%m-%Y %H:%M:%S");
    CZelTime::DefaultSettings(CZelTime::eTimeFormat(4));
    EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), 9u);
    CZelTime::DefaultSettings(CZelTime::eTimeFormat(32)); // not a table index: nothing
    EXPECT_EQ(CZelTime::CurrentTimeFormatIndex(), 9u);
}

TEST_F(TimeTest, AddUnitsWithinTheRange)
{
    // Days are spans of 86400 s: across a change of daylight saving time the clock
    // moves by the change.
    CZelTime dst = at(12, 0, 10);
    EXPECT_TRUE(H::AddDays(dst, 30));
    const std::string zone = zeltimetest::Zone();
    const bool daylightZone = zone == "Europe/Zurich" || zone == "America/New_York";
    EXPECT_EQ(dst.Format("%Y-%m-%d %H:%M:%S", 0x7F), daylightZone ? "2007-04-01 13:00:10" : "2007-04-01 12:00:10");

    CZelTime t = at(12, 0, 10, 0.75, 2, 6);
    EXPECT_TRUE(H::AddDays(t, 30));
    EXPECT_EQ(t.Format("%Y-%m-%d %H:%M:%S", 0x7F), "2007-07-02 12:00:10");
    EXPECT_NEAR(t.GetFracSecond(), 0.75, 1e-12); // kept by all but the months
    EXPECT_TRUE(H::AddWeeks(t, -1));
    EXPECT_EQ(t.GetDay(), 25);
    EXPECT_EQ(t.GetMonth(), 6);
    EXPECT_TRUE(H::AddSeconds(t, 50));
    EXPECT_EQ(t.Format("%H:%M:%S", 0x7F), "12:01:00");
    EXPECT_TRUE(H::AddMinutes(t, -61));
    EXPECT_TRUE(H::AddHours(t, 1));
    EXPECT_EQ(t.Format("%H:%M:%S", 0x7F), "12:00:00");
    EXPECT_TRUE(H::AddTimeSpan(t, CZelTimeSpan(1.5)));
    EXPECT_EQ(t.Format("%d %H", 0x7F), "27 00");
    EXPECT_NEAR(t.GetFracSecond(), 0.75, 1e-12);
    EXPECT_TRUE(H::AddMonths(t, 1));
    EXPECT_EQ(t.GetFracSecond(), 0.0);

    CZelTime lo, hi;
    H::GetPhysicalRange(lo, hi);
    CZelTime top = hi;
    EXPECT_TRUE(H::AddSeconds(top, 0));
    EXPECT_FALSE(H::AddSeconds(top, 1));
    EXPECT_FALSE(H::AddMonths(top, 1));
    EXPECT_EQ(top.GetTime(), hi.GetTime());
    CZelTime bottom = lo;
    EXPECT_TRUE(H::AddSeconds(bottom, 0));
    EXPECT_FALSE(H::SubtractTimeSpan(bottom, CZelTimeSpan(std::int64_t(1))));
    EXPECT_FALSE(H::AddYears(bottom, -1));
    EXPECT_EQ(bottom.GetTime(), lo.GetTime());

    COleDateTime o(9999, 12, 30, 0, 0, 0);
    EXPECT_TRUE(H::AddDays(o, 1, H::eRangeOleDateTime));
    EXPECT_FALSE(H::AddSeconds(o, 1, H::eRangeOleDateTime));
    EXPECT_FALSE(H::AddDays(o, 1, H::eRangeOleDateTime));
    COleDateTime early(1601, 1, 1, 0, 0, 0);
    EXPECT_FALSE(H::AddMinutes(early, -1, H::eRangeDateTimeCtrl));
    EXPECT_TRUE(H::AddMinutes(early, -1, H::eRangeOleDateTime));
}

TEST_F(TimeTest, AddMonthsKeepsTheDayOrTakesTheMonthsLast)
{
    struct Row {
        const char* name;
        int y, m, d, n;
        const char* expected;
    };
    const Row rows[] = {
        {"Jan 31 + 1, leap year", 2008, 1, 31, 1, "2008-02-29 10:20:30"},
        {"Mar 31 - 1, leap year", 2008, 3, 31, -1, "2008-02-29 10:20:30"},
        {"Jan 31 + 1", 2007, 1, 31, 1, "2007-02-28 10:20:30"},
        {"Jan 30 + 2", 2007, 1, 30, 2, "2007-03-30 10:20:30"},
        {"Aug 31 + 1", 2007, 8, 31, 1, "2007-09-30 10:20:30"},
        {"Dec 15 + 1", 2007, 12, 15, 1, "2008-01-15 10:20:30"},
        {"Jan 15 - 1", 2007, 1, 15, -1, "2006-12-15 10:20:30"},
        {"Feb 29 + 12", 2008, 2, 29, 12, "2009-02-28 10:20:30"},
        {"May 31 - 25", 2008, 5, 31, -25, "2006-04-30 10:20:30"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CTime c(r.y, r.m, r.d, 10, 20, 30, -1);
        EXPECT_TRUE(H::AddMonths(c, r.n));
        EXPECT_EQ(c.Format("%Y-%m-%d %H:%M:%S"), r.expected);
        COleDateTime o(r.y, r.m, r.d, 10, 20, 30);
        EXPECT_TRUE(H::AddMonths(o, r.n, H::eRangeOleDateTime));
        EXPECT_EQ(o.Format("%Y-%m-%d %H:%M:%S"), r.expected);
    }
    COleDateTime o(2007, 3, 31, 0, 0, 0);
    EXPECT_TRUE(H::AddYears(o, 1, H::eRangeCTime));
    EXPECT_EQ(o.GetYear(), 2008);
    EXPECT_FALSE(H::AddYears(o, 30, H::eRangeCTime));
}

TEST_F(TimeTest, ScanTimeSteppingRules)
{
    struct Row {
        const char* name;
        const char* text;
        const char* format;
        const char* expected;
        double frac;
    };
    const Row rows[] = {
        {"12-hour PM", "02/03/07 1:45:10 PM", "%m/%d/%y %I:%M:%S %p", "2007-02-03 13:45:10", 0.0},
        {"12 AM stays 12", "02/03/07 12:30:00 AM", "%m/%d/%y %I:%M:%S %p", "2007-02-03 12:30:00", 0.0},
        {"seconds with decimals", "2007-03-02 12:00:10.25", "%Y-%m-%d %H:%M:%s", "2007-03-02 12:00:10", 0.25},
        {"days with decimals", "2007-03 3.5", "%Y-%m %D", "2007-03-03 12:00:00", 0.0},
        {"short year 70", "1/1/70", "%d/%m/%y", "2070-01-01 00:00:00", 0.0},
        {"short year 71", "1-1-71", "%d-%m-%y", "1971-01-01 00:00:00", 0.0},
        {"separators are not matched", "2007x03yy02", "%Y-%m-%d", "2007-03-02 00:00:00", 0.0},
        {"leading blanks", "   02/03/2007  13:45:10", "  %d/%m/%Y %H:%M:%S", "2007-03-02 13:45:10", 0.0},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CString text = r.text, format = r.format;
        CZelTime t;
        const double mjd = t.ScanTime(text, format);
        EXPECT_EQ(t.Format("%Y-%m-%d %H:%M:%S", 0x7F), r.expected);
        EXPECT_NEAR(t.GetFracSecond(), r.frac, 1e-12);
        EXPECT_DOUBLE_EQ(mjd, t.Mjd());
        EXPECT_EQ(format.Find('%'), -1); // the format is consumed
    }
    // A "%#d" or a month name reads nothing: the day or month stays 0 and fails.
    auto code = [](const char* text, const char* format) -> HRESULT {
        try {
            CZelTime(CString(text), CString(format));
        } catch (const CAtlException& e) {
            return e.m_hr;
        }
        return S_OK;
    };
    EXPECT_EQ(code("2. 03 2007", "%#d. %m %Y"), E_FAIL);
    EXPECT_EQ(code("2. Mar 2007", "%d. %b %Y"), E_FAIL);
    EXPECT_EQ(code("", "%d.%m.%Y"), E_FAIL);
    // '.' belongs to a number: dotted fields run together and the hour becomes the month.
    EXPECT_EQ(code("02.03.2007 13:45:10", "%d.%m.%Y %H:%M:%S"), E_FAIL);
    EXPECT_EQ(code("1/1/1960", "%d/%m/%Y"), E_INVALIDARG);
    EXPECT_EQ(code("01.01.2000", "no fields"), E_FAIL); // a short year 0, but day 0
}

TEST_F(TimeTest, OleDateTimeFormsKeepTheirOwnBufferAndLimits)
{
    // Text between 128 and 255 bytes fits the COleDateTime buffer only, cut or not.
    const std::string text(150, 'x');
    const COleDateTime ole(2007, 3, 2, 13, 45, 10);
    EXPECT_EQ(H::Format(ole, text.c_str(), H::eRoundSecond), CString(text.c_str()));
    EXPECT_EQ(H::Format(ole, text.c_str(), H::eRoundCut), CString(text.c_str()));
    EXPECT_EQ(H::Format(CTime(CZelTime(2007, 3, 2, 13, 45, 10, -1).GetTime()), text.c_str(), H::eRoundSecond), "");

    // SetMjd takes both limits of the COleDateTime range and nothing beyond.
    double lo, hi;
    H::GetPhysicalRange(H::eRangeOleDateTime, lo, hi);
    COleDateTime t(2000, 1, 1, 0, 0, 0);
    H::SetMjd(hi + 1e-6, t);
    EXPECT_EQ(t.GetYear(), 2000);
    H::SetMjd(hi, t);
    EXPECT_EQ(t.GetYear(), 9999);
    H::SetMjd(lo, t);
    EXPECT_EQ(t.GetYear(), 100);

    // The control's range as system times: the upper limit stands at midnight.
    SYSTEMTIME a, b;
    H::GetPhysicalRange(H::eRangeDateTimeCtrl, a, b);
    EXPECT_EQ(a.wYear, 1601);
    EXPECT_EQ(a.wMonth, 1);
    EXPECT_EQ(b.wYear, 9999);
    EXPECT_EQ(b.wDay, 31);
    EXPECT_EQ(b.wHour, 0);
}
