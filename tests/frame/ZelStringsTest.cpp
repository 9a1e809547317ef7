#include "FixedWidthDC.h"

#include <Zel260/frame/ZelStrings.h>
#include <Zel260/platform/CWnd.h>
#include <Zel260/platform/SysColors.h>
#include <Zel260/platform/WindowMessages.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

int sign(int v) { return (v > 0) - (v < 0); }

} // namespace

TEST(ZelStringCompareIS, NaturalCaseInsensitiveOrder)
{
    struct Row {
        const char* a;
        const char* b;
        int expected;
    } rows[] = {
        {"", "a", -1},         {"abc", "ABC", 0},     {"a2", "a10", -1},      {"file9", "file10", -1},
        {"a007b", "a7b", 0},   {"b", "A", 1},         {"ab", "a", 1},         {"x10y", "x10z", -1},
        {"9", "a", -1},        {"", "", 0},           {nullptr, "a", -1},
        // Numbers past the int range compare as INT_MAX instead of overflowing.
        {"x99999999999", "x2147483647", 0},           {"x99999999999", "x1", 1},
    };
    for (const auto& r : rows)
        EXPECT_EQ(sign(ZelStringCompareIS(r.a, r.b)), r.expected) << r.a << " vs " << r.b;
    EXPECT_EQ(sign(ZelCompareIS("Item20", "item3")), 1);

    std::vector<const char*> names{"file10", "File2", "file1"};
    std::sort(names.begin(), names.end(),
              [](const char* x, const char* y) { return ZelStringCompareIS(x, y) < 0; });
    EXPECT_STREQ(names[0], "file1");
    EXPECT_STREQ(names[1], "File2");
    EXPECT_STREQ(names[2], "file10");
}

TEST(ZelCompare, OrdinalStringsWithUnsignedBytes)
{
    EXPECT_LT(ZelCompare("a", "b"), 0);
    EXPECT_GT(ZelCompare("a", "B"), 0) << "case matters";
    EXPECT_GT(ZelCompare("\xc3\xa9", "z"), 0) << "bytes compare unsigned";
    EXPECT_EQ(ZelCompare(static_cast<const char*>(nullptr), ""), 0);
}

TEST(ZelCompare, IntegersSubtractWithThirtyTwoBitWrap)
{
    EXPECT_EQ(ZelCompare(0u, 4294967295u), 1);
    EXPECT_EQ(ZelCompare(5, 3), 2);
    EXPECT_EQ(ZelCompare(INT_MIN, 1), INT_MAX);
    EXPECT_EQ(ZelCompare(INT_MAX, -1), INT_MIN);
    EXPECT_EQ(ZelCompare(0UL, 1UL), -1);
    EXPECT_EQ(ZelCompare(0x100000005L, 3L), 2) << "only the low 32 bits of a long count";
}

TEST(ZelCompare, DoublesWithRelativeTolerance)
{
    constexpr double e = 2.220446049250313e-16;
    EXPECT_EQ(ZelCompare(0.0, 0.0), 0);
    EXPECT_EQ(ZelCompare(1.0, 1.0 + 2 * e), 0);
    EXPECT_EQ(ZelCompare(1e6, 1e6 + 1e-10), 0);
    EXPECT_EQ(ZelCompare(1.0, 1.0 + 1e-12), -1);
    EXPECT_EQ(ZelCompare(2.0, 1.0), 1);
    // The difference e equals the tolerance (e/2) * e + e exactly after rounding.
    EXPECT_EQ(ZelCompare(-e / 2, e / 2), -1);
    EXPECT_EQ(ZelCompare(e / 2, -e / 2), 1);
}

TEST(ZelTrimTrailingZeros, KeepsOneDigitAndIgnoresExponents)
{
    struct Row {
        const char* in;
        const char* out;
    } rows[] = {
        {"1.500", "1.5"}, {"2.000", "2.0"}, {"3.", "3."},   {"10", "10"},          {"100", "100"},
        {"100.0", "100.0"}, {"0.10", "0.1"}, {"", ""},       {"1.5e+020", "1.5e+02"}, {"-7.250000", "-7.25"},
    };
    for (const auto& r : rows) {
        CString s(r.in);
        ZelTrimTrailingZeros(s);
        EXPECT_EQ(s, r.out) << r.in;
    }
}

TEST(ZelBooleanAsString, TextsFromTheStringTable)
{
    EXPECT_STREQ(ZelBooleanAsString(1, eZelBooleanYesNo), "Yes");
    EXPECT_STREQ(ZelBooleanAsString(0, eZelBooleanYesNo), "No");
    EXPECT_STREQ(ZelBooleanAsString(-5, eZelBooleanTrueFalse), "True");
    EXPECT_STREQ(ZelBooleanAsString(0, eZelBooleanTrueFalse), "False");
    EXPECT_STREQ(ZelBooleanAsString(2, eZelBooleanOnOff), "On");
    EXPECT_STREQ(ZelBooleanAsString(0, eZelBooleanOnOff), "Off");
    EXPECT_STREQ(ZelBooleanAsString(1, static_cast<eZelBooleanType>(0)), "");
    EXPECT_STREQ(ZelBooleanAsString(1, static_cast<eZelBooleanType>(4)), "");
    EXPECT_EQ(ZelBooleanAsString(1, eZelBooleanYesNo), ZelBooleanAsString(7, eZelBooleanYesNo));
}

TEST(ZelIncrementString, NextNameInTheSeries)
{
    struct Row {
        const char* in;
        int max;
        const char* out;
    } rows[] = {
        {"Name", 0, "Name (2)"},
        {"Name (2)", 0, "Name (3)"},
        {"(2)", 0, "(2) (2)"},             // "(" at the start
        {"A(2)", 0, "A(2) (2)"},           // "(" at index 1 is not past the second place
        {"AB(2)", 0, "AB(2) (2)"},         // no blank before "("
        {"Name (x)", 0, "Name (x) (2)"},
        {"Name (0)", 0, "Name (0) (2)"},
        {"Name   (4)", 0, "Name (5)"},     // trailing blanks go with the counter
        {"Long name of a thing", 10, "Long  (2)"},
        {"A (2147483646)", 0, "A (2147483647)"},
        {"A (2147483647)", 0, ""},
        {"A (99999999999)", 0, ""},        // atoi stops at INT_MAX
        {"Name", -5, " (2)"},
        {"", 0, ""},
    };
    for (const auto& r : rows)
        EXPECT_EQ(ZelIncrementString(r.in, r.max), r.out) << r.in << " / " << r.max;
    EXPECT_EQ(ZelIncrementString(nullptr, 0), "");
    CString longName('x', 300);
    EXPECT_EQ(ZelIncrementString(longName, 0).GetLength(), 259) << "0 means 260 with room for a terminator";
}

TEST(ZelExtractTokens, QuotedTokensOnly)
{
    std::vector<CString> out{"stale"};
    ZelExtractTokens("say \"hello\" and \"\" then \"big world\" \"unclosed", out);
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0], "hello");
    EXPECT_EQ(out[1], "big world");
    ZelExtractTokens(nullptr, out);
    EXPECT_TRUE(out.empty());
}

TEST(ZelExtractSubstrings, SplitsWithoutAnEmptyLastEntry)
{
    struct Row {
        const char* text;
        const char* seps;
        std::vector<CString> parts;
    } rows[] = {
        {"a,,b,", ",", {"a", "", "b"}},
        {"a;b,c", ";,", {"a", "b", "c"}},
        {",a", ",", {"", "a"}},
        {",", ",", {""}},
        {"abc", nullptr, {"abc"}},
        {"", ",", {}},
    };
    for (const auto& r : rows) {
        std::vector<CString> out{"stale"};
        EXPECT_EQ(ZelExtractSubstrings(r.text, r.seps, out), static_cast<int>(r.parts.size())) << r.text;
        EXPECT_EQ(out, r.parts) << r.text;
    }
}

TEST(ZelAdjustString, ShortensWithDots)
{
    FixedWidthDC dc; // "..." is 9 pixels, letters 10
    struct Row {
        int width;
        const char* out;
    } rows[] = {
        {60, "abcdef"}, {59, "abcde..."}, {30, "ab..."}, {28, "..."}, {8, ".."}, {4, "."}, {2, ""}, {0, ""},
    };
    for (const auto& r : rows)
        EXPECT_EQ(ZelAdjustString(&dc, r.width, "abcdef"), r.out) << r.width;
    EXPECT_EQ(ZelAdjustString(&dc, 0, ""), "");
    EXPECT_EQ(ZelAdjustString(nullptr, 100, "abc"), "");
}

TEST(ZelGetMaxStringLen, LeadingCharactersThatFit)
{
    FixedWidthDC dc;
    EXPECT_EQ(ZelGetMaxStringLen(&dc, 60, "abcdef"), 6);
    EXPECT_EQ(ZelGetMaxStringLen(&dc, 59, "abcdef"), 5);
    EXPECT_EQ(ZelGetMaxStringLen(&dc, 9, "abcdef"), 0);
    EXPECT_EQ(ZelGetMaxStringLen(&dc, -1, "abcdef"), 0);
    EXPECT_EQ(ZelGetMaxStringLen(&dc, 50, nullptr), 0);
}

TEST(ZelDraw3dString, ShadeFirstThenTextAndColourRestored)
{
    FixedWidthDC dc;
    const COLORREF before = dc.colour;
    ZelDraw3dString(&dc, 10, 20, "Hi", TRUE, RGB(0, 0, 0), RGB(9, 9, 9));
    ASSERT_EQ(dc.out.size(), 2u);
    EXPECT_EQ(dc.out[0].x, 9);
    EXPECT_EQ(dc.out[0].y, 19);
    EXPECT_EQ(dc.out[0].colour, RGB(9, 9, 9));
    EXPECT_EQ(dc.out[1].x, 10);
    EXPECT_EQ(dc.out[1].colour, RGB(0, 0, 0));
    EXPECT_EQ(dc.colour, before);

    dc.out.clear();
    ZelDraw3dString(&dc, 10, 20, "Hi", FALSE, RGB(0, 0, 0));
    ASSERT_EQ(dc.out.size(), 2u);
    EXPECT_EQ(dc.out[0].x, 11);
    EXPECT_EQ(dc.out[0].y, 21);
    EXPECT_EQ(dc.out[0].colour, GetSysColor(COLOR_BTNHIGHLIGHT));
    dc.out.clear();
    ZelDraw3dString(&dc, 10, 20, "Hi", TRUE, RGB(0, 0, 0));
    EXPECT_EQ(dc.out[0].colour, GetSysColor(COLOR_BTNSHADOW));
    ZelDraw3dString(nullptr, 0, 0, "x", TRUE, 0);
}

namespace {

// One live window (handle 1) whose font makes '.' and ' ' 1 pixel wide and every
// other character 10.
class MeasuringBackend : public ZelWindowBackend {
public:
    static HWND window() { return reinterpret_cast<HWND>(std::uintptr_t(1)); }
    BOOL IsWindow(HWND h) override { return h == window(); }
    LRESULT Send(HWND, UINT, WPARAM, LPARAM) override { return 0; }
    BOOL Post(HWND, UINT, WPARAM, LPARAM) override { return FALSE; }
    BOOL SendTimeout(HWND, UINT, WPARAM, LPARAM, UINT, UINT, LRESULT*) override { return FALSE; }
    std::vector<HWND> Children(HWND) override { return {}; }
    HWND Parent(HWND) override { return nullptr; }
    int CtrlId(HWND) override { return 0; }
    int SetCtrlId(HWND, int) override { return 0; }
    int TextWidth(HWND h, const char* text) override
    {
        if (h != window())
            return -1;
        int w = 0;
        for (const char* p = text; p && *p; ++p)
            w += *p == '.' || *p == ' ' ? 1 : 10;
        return w;
    }
};

} // namespace

TEST(ZelAdjustPathString, DropsFoldersBehindTheRootOneAtATime)
{
    MeasuringBackend backend;
    ZelWindowBackend* previous = ZelSetWindowBackend(&backend);
    CWnd wnd;
    wnd.m_hWnd = MeasuringBackend::window();
    const char* path = "C:\\a\\b\\c\\f.txt"; // 131 pixels
    struct Row {
        unsigned width;
        const char* out;
    } rows[] = {
        {131, "C:\\a\\b\\c\\f.txt"},
        {130, "C:\\ ...\\b\\c\\f.txt"}, // 125
        {124, "C:\\ ...\\c\\f.txt"},    // 105
        {104, "C:\\ ...\\f.txt"},       // 85
        {84, "C:\\ ...f.txt"},          // the last form is not measured
    };
    for (const auto& r : rows)
        EXPECT_EQ(ZelAdjustPathString(path, &wnd, r.width), r.out) << r.width;
    EXPECT_EQ(ZelAdjustPathString("C:/a/b/f.txt", &wnd, 10), "C:/ ...f.txt");
    EXPECT_EQ(ZelAdjustPathString("C:\\a/b\\f.txt", &wnd, 10), "C:\\ ...f.txt");
    // A "." at index 4 of the original counts as the mark of a shortened text.
    EXPECT_EQ(ZelAdjustPathString("C:\\a.b\\c.txt", &wnd, 10), "C:\\ ...c.txt");

    EXPECT_EQ(ZelAdjustPathString(nullptr, &wnd, 10), "");
    EXPECT_EQ(ZelAdjustPathString("C:\\", &wnd, 0), "") << "fewer than 4 characters";
    EXPECT_EQ(ZelAdjustPathString(path, nullptr, 1000), "");
    CWnd dead;
    dead.m_hWnd = reinterpret_cast<HWND>(std::uintptr_t(2));
    EXPECT_EQ(ZelAdjustPathString(path, &dead, 1000), "");
    wnd.m_hWnd = nullptr;
    dead.m_hWnd = nullptr;
    ZelSetWindowBackend(previous);
}
