#include <Zel260/pim32/Pim32Angle.h>
#include <Zel260/values/CZelFormat.h>

#include <Zel260/platform/ResourceModule.h>
#include <Zel260/resources/ZelValuesResourceIds.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <random>
#include <string>

namespace {

const std::string kDeg = "\xC2\xB0";

std::string text(CZelFormat& f, double value, long unit, const char* before = "")
{
    CString out(before);
    EXPECT_EQ(f.ConvertToString(value, unit, out), 0);
    return out.str();
}

struct Row {
    const char* name;
    double value;
    long unit;
    int precision;
    int trimTrailing;
    int trimLeading;
    int symbols;
    std::string want;
};

TEST(CZelFormat, DecimalAndSexagesimalPaths)
{
    const Row rows[] = {
        {"decimal default", 12.5, 11, 6, 0, 0, 1, " 12.500000"},
        {"decimal precision 3", 12.5, 11, 3, 0, 0, 1, " 12.500"},
        {"decimal trimmed", 12.5, 11, 6, 1, 0, 1, " 12.5"},
        {"trim keeps one digit", 3.0, 21, 4, 1, 0, 1, " 3.0"},
        {"negative decimal", -0.25, 22, 2, 0, 0, 1, "-0.25"},
        {"precision 0 means 6", 1.0, 18, 0, 0, 0, 1, " 1.000000"},
        {"unknown unit is decimal", 2.0, 99, 1, 0, 0, 1, " 2.0"},
        {"dms default", 45.3015, 12, 6, 0, 0, 1, "  45" + kDeg + " 30' 15.0\""},
        {"dms precision 10", 45.3015, 12, 10, 0, 0, 1, "  45" + kDeg + " 30' 15.00000\""},
        {"dms below 6 is five decimals", 45.3015, 12, 3, 0, 0, 1, "  45" + kDeg + " 30' 15.00000\""},
        {"dms negative sign before padding", -45.3015, 12, 5, 0, 0, 1, "- 45" + kDeg + " 30' 15.00000\""},
        {"dms without symbols", 5.0105, 12, 7, 0, 0, 0, "   5 01 05.00"},
        {"dms trimmed trailing", 5.01055, 12, 9, 1, 0, 1, "   5" + kDeg + " 01' 05.5\""},
        {"dms rounding carries", 10.595999, 12, 6, 0, 0, 1, "  11" + kDeg + " 00' 00.0\""},
        {"trim leading degree", 0.0105, 12, 6, 0, 1, 1, "  1' 05.0\""},
        {"trim leading all but seconds", 0.0005, 12, 5, 0, 1, 1, "  5.00000\""},
        {"trim leading negative seconds", -0.0005, 12, 6, 0, 1, 0, "- 5.0"},
        {"trim leading keeps nonzero degree", 1.0005, 12, 6, 0, 1, 0, "   1 00 05.0"},
        {"gon fields", 123.4567, 15, 6, 0, 0, 1, " 123g 45c 67.0cc"},
        {"gon without symbols", -3.0102, 15, 8, 0, 0, 0, "-  3 01 02.000"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CZelFormat f;
        f.Precision(r.precision);
        f.TrimTrailingZeros(r.trimTrailing);
        f.TrimLeadingZeros(r.trimLeading);
        f.UseDmsSymbols(r.symbols);
        EXPECT_EQ(text(f, r.value, r.unit), r.want);
    }
}

TEST(CZelFormat, SecondsOnlyAndItsSideEffect)
{
    CZelFormat f(11, 1, 0, nullptr);
    f.Precision(1);
    EXPECT_EQ(text(f, 1.5, 11), " 5400.0");
    EXPECT_EQ(text(f, 1.0105, 12), " 3665.0");
    EXPECT_EQ(text(f, -1.0105, 13), "-3665.0");
    EXPECT_EQ(text(f, 0.0123, 15), " 123.0");
    EXPECT_EQ(text(f, 0.0123, 14), " 123.0");
    EXPECT_EQ(f.UseSecOnly(), 1);
    EXPECT_EQ(text(f, 2.0, 21), " 2.0");
    EXPECT_EQ(f.UseSecOnly(), 0);  // a distance ended it for good
    EXPECT_EQ(text(f, 1.5, 11), " 1.5");

    CString abbreviation;
    CZelFormat(14, 1, 0, nullptr).GetUnitAbbreviation(abbreviation);
    EXPECT_EQ(abbreviation, "cc");
    CZelFormat(13, 1, 0, nullptr).GetUnitAbbreviation(abbreviation);
    EXPECT_EQ(abbreviation, "\"");
    CZelFormat(13, 0, 0, nullptr).GetUnitAbbreviation(abbreviation);
    EXPECT_EQ(abbreviation, "deg");
    CZelFormat(7, 0, 0, nullptr).GetUnitAbbreviation(abbreviation);
    EXPECT_EQ(abbreviation, "");
}

TEST(CZelFormat, TemplateRebuildsOnlyFromUnitNumbers)
{
    CZelFormat f(11, 0, 0, "%.3f %U %U");
    EXPECT_EQ(f.Format(), "%.3f dec dec");
    f.SetUnitAbbreviation("xx");
    EXPECT_EQ(f.Format(), "%.3f dec dec");
    f.SetUnitAbbreviation(23L);
    EXPECT_EQ(f.Format(), "%.3f fti fti");
    f.Format("");
    f.Format(nullptr);
    EXPECT_EQ(f.Format(), "%.3f fti fti");
    // An abbreviation that holds the field itself must not loop.
    f.SetUnitAbbreviation("%U");
    f.Format("<%U>");
    EXPECT_EQ(f.Format(), "<%U>");
}

TEST(CZelFormat, TemplateFields)
{
    const char* both = "x%[%.*f %U%]%[%degOrG%minOrC%secOrCC %Q%]%?";
    struct TRow {
        const char* name;
        const char* templ;
        long unit;
        double value;
        int precision;
        int trimLeading;
        std::string want;
    };
    const TRow rows[] = {
        {"decimal group", both, 11, 2.5, 2, 0, "x2.50 dec"},
        {"star needs precision 1", both, 11, 2.5, 0, 0, "x%.*f dec"},
        {"sexagesimal group", both, 12, -2.3015, 6, 0, "x-  2" + kDeg + "30'15.0\" S"},
        {"gon group", both, 15, 2.3015, 10, 0, "x   2g30c15.00000cc S"},
        {"brackets kept when %? is early", "%?%[%.2f%]%[no%]", 11, 1.0, 6, 0, "%[1.00%]%[no%]"},
        {"bare fields", "%DegOrG|%MinOrC|%SecOrCC", 12, 1.0203, 7, 0, "   1| 2| 3.00"},
        {"trimmed fields", "%degOrG|%minOrC|%secOrCC", 12, -0.0203, 5, 1, "|- 2'| 3.00000\""},
        {"all trimmed", "%DegOrG|%MinOrC|%SecOrCC", 12, -0.0003, 5, 1, "||- 3.00000"},
        {"no field leaves result", "plain", 12, 1.0, 6, 0, "before"},
        {"unsafe conversions stay text", "%s %d %n %*f %f %f", 11, 1.5, 6, 0, "%s %d %n %*f 1.500000 %f"},
        {"long double and percent", "%Lg%%", 21, 0.5, 6, 0, "0.5%"},
        {"unfinished conversion", "%5.", 21, 0.5, 6, 0, "%5."},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CZelFormat f(r.unit, 0, 0, r.templ);
        f.Precision(r.precision);
        f.TrimLeadingZeros(r.trimLeading);
        f.CustomFormat("%Q", "S");
        EXPECT_EQ(text(f, r.value, r.unit, "before"), r.want);
    }

    CZelFormat f(11, 0, 0, "%f%Q");
    f.CustomFormat("%Q", nullptr);
    EXPECT_EQ(text(f, 1.0, 11), "1.000000");
    f.CustomFormat("f", "ff");  // a replacement holding its search ends
    EXPECT_EQ(text(f, 1.0, 11), "1.000000f%Q");
}

// The degree symbol comes from the string table, which a host may replace; fields
// are still replaced one after the other, so a symbol that names a field is expanded.
TEST(CZelFormat, DegreeSymbolFromTheStringTable)
{
    CZelFormat f(12, 0, 0, "%degOrG|%SecOrCC");
    f.Precision(6);
    const CString saved(ZelFindResourceString(ZelLibraryInstance(), IDS_ZEL_DEGREE_SYMBOL));
    ZelSetResourceString(ZelLibraryInstance(), IDS_ZEL_DEGREE_SYMBOL, "<%MinOrC>");
    const std::string replaced = text(f, 1.0203, 12);
    CZelFormat plainFormat;
    const std::string plain = text(plainFormat, 1.0203, 12);
    ZelSetResourceString(ZelLibraryInstance(), IDS_ZEL_DEGREE_SYMBOL, saved);
    EXPECT_EQ(replaced, "   1< 2>| 3.0");
    EXPECT_EQ(plain, "   1<%MinOrC> 02' 03.0\"");
    EXPECT_EQ(text(f, 1.0203, 12), "   1" + kDeg + "| 3.0");
}

// The seconds are written from their integer count where that is exact; the text
// must be what printf makes of the split fields, for every precision.
TEST(CZelFormat, SecondsDigitsMatchPrintf)
{
    std::mt19937_64 rng(3);
    std::uniform_real_distribution<double> any(-400.0, 400.0);
    for (int i = 0; i < 20000; ++i) {
        const double packed = any(rng);
        const int precision = i % 18;
        CZelFormat f;
        f.UseDmsSymbols(0);
        f.Precision(precision);
        int sign, deg, min;
        double sec;
        const int decimals = precision < 6 ? 5 : precision - 5;
        Pim32GCCC2GCCC(packed, sign, deg, min, sec, decimals, 0);
        char want[128];
        if (precision < 6)
            std::snprintf(want, sizeof want, "%s%3d %02d %08.5f", sign >= 1 ? " " : "-", deg, min, sec);
        else
            std::snprintf(want, sizeof want, "%s%3d %02d %0*.*f", sign >= 1 ? " " : "-", deg, min, precision - 2,
                          precision - 5, sec);
        ASSERT_EQ(text(f, packed, 15), want) << packed << " p" << precision;
    }
}

// A width or precision in the millions only comes from a mistake: it gets no text,
// without printf first producing gigabytes of digits.
TEST(CZelFormat, AbsurdPrecisionOrWidthGivesNoTextAtOnce)
{
    const struct {
        const char* name;
        long unit;
        const char* templ;
        std::string want;
    } rows[] = {
        {"decimal", 11, nullptr, ".0"},
        {"sexagesimal", 12, nullptr, "   1" + kDeg + " 00' .0\""},
        {"star precision", 11, "<%.*f>", "<>"},
        {"template seconds", 12, "%SecOrCC", ""},
        {"literal precision", 11, "<%.2000000000f>", "<>"},
        {"literal width", 11, "<%2000000000f>", "<>"},
        {"width beyond int", 11, "<%99999999999999999999f>", "<>"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        CZelFormat f(r.unit, 0, 0, r.templ);
        f.Precision(INT_MAX);
        EXPECT_EQ(text(f, 1.0, r.unit), r.want);
    }
}

TEST(CZelFormat, CopyKeepsEveryField)
{
    CZelFormat a(15, 1, 1, "%SecOrCC");
    a.Precision(8);
    a.TrimLeadingZeros(1);
    CZelFormat b;
    b = a;
    CZelFormat c(b);
    EXPECT_EQ(c.Format(), "%SecOrCC");
    EXPECT_EQ(c.Precision(), 8);
    EXPECT_EQ(c.TrimLeadingZeros(), 1);
    EXPECT_EQ(c.UseSecOnly(), 1);
    EXPECT_EQ(c.LimitToCircle(), 1);
}

TEST(ZelAdvancedFormatDouble, PicksDigitsByMagnitude)
{
    const struct {
        double value;
        const char* want;
    } rows[] = {
        {1234.5, "1234.5"}, {0.00012, "0.00012"}, {1e20, "1e+20"},   {1.0, "1.0"},
        {0.0, "0"},         {-2.25, "-2.25"},     {1e-12, "1e-12"},  {0.001, "0.001"},
        {9.99e12, "9990000000000.0"},
    };
    for (const auto& r : rows)
        EXPECT_EQ(ZelAdvancedFormatDouble(r.value), r.want) << r.value;
}

} // namespace
