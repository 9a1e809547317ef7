#include <Zel260/platform/CAtlException.h>
#include <Zel260/platform/CTime.h>
#include <Zel260/platform/CTimeSpan.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

// Runs each test in a fixed zone with daylight saving, restoring the old one after.
class CTimeInZurich : public ::testing::Test {
protected:
    void SetUp() override
    {
        const char* old = std::getenv("TZ");
        m_hadTz = old != nullptr;
        if (old)
            m_oldTz = old;
        setenv("TZ", "Europe/Zurich", 1);
        tzset();
    }
    void TearDown() override
    {
        if (m_hadTz)
            setenv("TZ", m_oldTz.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }

private:
    bool m_hadTz = false;
    std::string m_oldTz;
};

HRESULT failureOf(auto&& make)
{
    try {
        make();
    } catch (const CAtlException& e) {
        return e.m_hr;
    }
    return S_OK;
}

} // namespace

TEST_F(CTimeInZurich, FieldsRoundTripThroughLocalTime)
{
    const CTime summer(2007, 7, 2, 13, 45, 10, -1);
    EXPECT_EQ(summer.GetTime(), 1183376710); // 11:45:10 UTC, daylight saving
    EXPECT_EQ(summer.GetYear(), 2007);
    EXPECT_EQ(summer.GetMonth(), 7);
    EXPECT_EQ(summer.GetDay(), 2);
    EXPECT_EQ(summer.GetHour(), 13);
    EXPECT_EQ(summer.GetMinute(), 45);
    EXPECT_EQ(summer.GetSecond(), 10);
    EXPECT_EQ(summer.GetDayOfWeek(), 2); // Monday
    const CTime winter(2007, 1, 2, 13, 0, 0, -1);
    EXPECT_EQ(winter.GetTime(), 1167739200); // 12:00 UTC
    // A day past the month's end rolls over, as mktime does.
    EXPECT_EQ(CTime(2007, 2, 31, 0, 0, 0).GetMonth(), 3);
}

TEST_F(CTimeInZurich, BadFieldsFailWithTheirOwnCode)
{
    EXPECT_EQ(failureOf([] { CTime(1899, 1, 1, 0, 0, 0); }), E_FAIL);
    EXPECT_EQ(failureOf([] { CTime(2000, 0, 1, 0, 0, 0); }), E_FAIL);
    EXPECT_EQ(failureOf([] { CTime(2000, 13, 1, 0, 0, 0); }), E_FAIL);
    EXPECT_EQ(failureOf([] { CTime(2000, 1, 0, 0, 0, 0); }), E_FAIL);
    EXPECT_EQ(failureOf([] { CTime(2000, 1, 32, 0, 0, 0); }), E_FAIL);
    EXPECT_EQ(failureOf([] { CTime(2000, 1, 1, 24, 0, 0); }), E_FAIL);
    EXPECT_EQ(failureOf([] { CTime(2000, 1, 1, 0, 60, 0); }), E_FAIL);
    EXPECT_EQ(failureOf([] { CTime(2000, 1, 1, 0, 0, 60); }), E_FAIL);
    // Before 1970 and after 3000 the calendar refuses the date.
    EXPECT_EQ(failureOf([] { CTime(1969, 12, 31, 0, 0, 0); }), E_INVALIDARG);
    EXPECT_EQ(failureOf([] { CTime(3001, 1, 2, 0, 0, 0); }), E_INVALIDARG);
    EXPECT_EQ(failureOf([] { CTime(2000, 1, 1, 0, 0, 0); }), S_OK);
}

TEST_F(CTimeInZurich, OtherConstructors)
{
    // DOS: 2007-07-02 13:45:10
    const WORD dosDate = static_cast<WORD>(((2007 - 1980) << 9) | (7 << 5) | 2);
    const WORD dosTime = static_cast<WORD>((13 << 11) | (45 << 5) | 5);
    EXPECT_EQ(CTime(dosDate, dosTime).GetTime(), 1183376710);
    EXPECT_EQ(failureOf([] { CTime(WORD(0), WORD(0)); }), E_FAIL); // month 0

    SYSTEMTIME st{2007, 7, 0, 2, 13, 45, 10, 999};
    EXPECT_EQ(CTime(st).GetTime(), 1183376710);
    SYSTEMTIME old{1601, 1, 0, 1, 0, 0, 0, 0};
    EXPECT_EQ(CTime(old).GetTime(), 0);

    // 2007-07-02 11:45:10 UTC as a file time.
    const std::uint64_t ticks = (1183376710ull + 11644473600ull) * 10000000ull;
    FILETIME ft{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    EXPECT_EQ(CTime(ft).GetTime(), 1183376710);
}

TEST_F(CTimeInZurich, FormatMapsTheNoPaddingFlag)
{
    const CTime t(2007, 3, 2, 9, 5, 7);
    EXPECT_EQ(t.Format("%d.%m.%Y %H:%M:%S"), "02.03.2007 09:05:07");
    EXPECT_EQ(t.Format("%#d.%#m. %#I:%M %p %%#"), "2.3. 9:05 AM %#");
    EXPECT_EQ(t.Format("%#b"), "Mar");
    EXPECT_EQ(CTime(-5).Format("%Y"), "");
    EXPECT_EQ(t.Format(std::string(130, 'x').c_str()), "");
}

TEST(CTimeSpan, FieldsAndFormat)
{
    const CTimeSpan s(1, 6, 5, 4);
    EXPECT_EQ(s.GetTimeSpan(), 108304);
    EXPECT_EQ(s.GetDays(), 1);
    EXPECT_EQ(s.GetHours(), 6);
    EXPECT_EQ(s.GetTotalHours(), 30);
    EXPECT_EQ(s.GetMinutes(), 5);
    EXPECT_EQ(s.GetSeconds(), 4);
    EXPECT_EQ(s.Format("%D %H:%M:%S %#H:%#M:%#S %#D %%"), "1 06:05:04 6:5:4 1 %");
    EXPECT_EQ(failureOf([&] { s.Format("%Q"); }), E_INVALIDARG);
    EXPECT_EQ(failureOf([&] { s.Format("%#x"); }), E_INVALIDARG);
    EXPECT_EQ(failureOf([&] { s.Format("abc%"); }), E_INVALIDARG);
}

TEST(CTimeFormatTm, NumericTemplatesGiveExactlyWhatStrftimeGives)
{
    // glibc's "%-" is the "%#" of the templates.
    auto viaStrftime = [](const std::string& format, const struct tm& tm, size_t size) {
        std::string mapped;
        for (size_t i = 0; i < format.size(); ++i) {
            if (format[i] == '%' && i + 1 < format.size() && format[i + 1] == '#') {
                mapped += "%-";
                ++i;
            } else {
                mapped += format[i];
            }
        }
        std::string out(size, '\0');
        const size_t n = strftime(out.data(), size, mapped.c_str(), &tm);
        out.resize(n);
        return out;
    };
    const char* const formats[] = {
        "%d.%m.%Y %H:%M:%S", "%m/%d/%y %H:%M:%S", "%#d-%#m-%Y %#H:%#M:%#S", "%d/%m/%Y %#I:%M:%S %p",
        "%#d. %b %y %H:%M:%S", "%I %#I %y %#y", "100%% %H", "%H:%M:%S ", "x", "%Y%m%d%H%M%S", "%",
        "%#d-%#b-%Y %#I:%M:%S %#p", "%p%b%p",
    };
    int failures = 0;
    struct tm tm {};
    // The names come from the locale, as strftime takes them.
    for (const char* locale : {"C", "C.UTF-8"}) {
        setlocale(LC_TIME, locale);
        for (int year : {70, 99, 100, 107, 130, 1100, -1, -1900, -901})
            for (int hour : {0, 1, 9, 11, 12, 13, 23, 24, -1})
                for (int sec : {0, 7, 59, 60}) {
                    tm.tm_year = year;
                    tm.tm_mon = year == -901 ? 12 : ((year + hour) % 12 + 12) % 12;
                    tm.tm_mday = 1 + (hour + 31) % 31;
                    tm.tm_hour = hour;
                    tm.tm_min = (sec * 7) % 60;
                    tm.tm_sec = sec;
                    for (const char* f : formats)
                        for (size_t size : {size_t(128), size_t(19), size_t(20), size_t(1)}) {
                            char buf[128];
                            const size_t n = CTime::FormatTm(buf, size, f, tm);
                            const std::string want = viaStrftime(f, tm, size);
                            if ((n != want.size() || std::string(buf, n) != want) && ++failures < 10)
                                ADD_FAILURE() << f << " year " << year << " hour " << hour << " size " << size << ": \""
                                              << std::string(buf, n) << "\" against \"" << want << "\"";
                        }
                }
    }
    setlocale(LC_TIME, "C");
    EXPECT_EQ(failures, 0);
}
