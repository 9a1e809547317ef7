#include <Zel260/frame/ZelStrings.h>
#include <Zel260/frame/ZelModule.h>
#include <Zel260/platform/CDC.h>
#include <Zel260/platform/CWnd.h>
#include <Zel260/platform/SysColors.h>
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/resources/ZelFrameResourceIds.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

const char* orEmpty(const char* s) { return s ? s : ""; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

int lowered(char c) { return std::tolower(static_cast<unsigned char>(c)); }

// The run-time's atoi as the library knew it: leading white space, a sign, digits;
// values beyond the int range stop at INT_MAX or INT_MIN instead of overflowing.
int clampedAtoi(const char* s)
{
    while (*s == ' ' || (*s >= '\t' && *s <= '\r'))
        ++s;
    bool negative = *s == '-';
    if (*s == '-' || *s == '+')
        ++s;
    long long v = 0;
    for (; isDigit(*s); ++s) {
        v = v * 10 + (*s - '0');
        if (v > static_cast<long long>(INT_MAX) + 1)
            v = static_cast<long long>(INT_MAX) + 1;
    }
    if (negative)
        return v > INT_MAX ? INT_MIN : static_cast<int>(-v);
    return v > INT_MAX ? INT_MAX : static_cast<int>(v);
}

int wrap32(std::uint32_t a, std::uint32_t b) { return static_cast<int>(static_cast<std::uint32_t>(a - b)); }

int textWidth(const CDC* dc, const char* text, int length) { return dc->GetTextExtent(text, length).cx; }

} // namespace

int ZelCompare(const char* a, const char* b) { return std::strcmp(orEmpty(a), orEmpty(b)); }

int ZelCompareIS(const char* a, const char* b)
{
    const char* x = orEmpty(a);
    const char* y = orEmpty(b);
    return ZelStringCompareIS(x, y);
}

int ZelStringCompareIS(const char* const& first, const char* const& second)
{
    const char* a = orEmpty(first);
    const char* b = orEmpty(second);
    while (*a && *b) {
        if (isDigit(*a) && isDigit(*b)) {
            int na = clampedAtoi(a);
            int nb = clampedAtoi(b);
            if (na != nb)
                return na - nb; // both are >= 0, so this can't overflow
            while (isDigit(*a))
                ++a;
            while (isDigit(*b))
                ++b;
            continue;
        }
        int ca = lowered(*a);
        int cb = lowered(*b);
        if (ca != cb)
            return ca - cb;
        ++a;
        ++b;
    }
    return lowered(*a) - lowered(*b);
}

int ZelCompare(int a, int b) { return wrap32(static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b)); }
int ZelCompare(unsigned int a, unsigned int b) { return wrap32(a, b); }
int ZelCompare(long a, long b) { return wrap32(static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b)); }
int ZelCompare(unsigned long a, unsigned long b)
{
    return wrap32(static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b));
}

int ZelCompare(double a, double b)
{
    constexpr double e = 2.220446049250313e-16;
    double m = std::max(std::fabs(a), std::fabs(b));
    if (std::fabs(a - b) < m * e + e)
        return 0;
    return a > b ? 1 : -1;
}

void ZelTrimTrailingZeros(CString& text)
{
    char probe[32];
    std::snprintf(probe, sizeof probe, "%f", 1.1);
    int separator = text.Find(probe[1]);
    if (separator < 0)
        return;
    for (;;) {
        int last = text.GetLength() - 1;
        int zero = text.ReverseFind('0');
        if (zero != last || zero <= separator + 1)
            break;
        text.Delete(last);
    }
}

const char* ZelBooleanAsString(int value, eZelBooleanType type)
{
    struct Texts {
        CString yes = ZelLoadLibraryString(IDS_ZEL_BOOLEAN_YES);
        CString no = ZelLoadLibraryString(IDS_ZEL_BOOLEAN_NO);
        CString yesTrue = ZelLoadLibraryString(IDS_ZEL_BOOLEAN_TRUE);
        CString noFalse = ZelLoadLibraryString(IDS_ZEL_BOOLEAN_FALSE);
        CString on = ZelLoadLibraryString(IDS_ZEL_BOOLEAN_ON);
        CString off = ZelLoadLibraryString(IDS_ZEL_BOOLEAN_OFF);
    };
    static const Texts* texts = new Texts;
    switch (type) {
    case eZelBooleanYesNo: return value ? texts->yes : texts->no;
    case eZelBooleanTrueFalse: return value ? texts->yesTrue : texts->noFalse;
    case eZelBooleanOnOff: return value ? texts->on : texts->off;
    default: return "";
    }
}

CString ZelIncrementString(const char* text, int maxLength)
{
    if (!text || !*text)
        return CString();
    if (maxLength == 0)
        maxLength = MAX_PATH;
    CString name(text);
    int counter = 1;
    if (name.GetAt(name.GetLength() - 1) == ')') {
        int open = name.ReverseFind('(');
        if (open > 1 && name.GetAt(open - 1) == ' ') {
            CString digits = name.Mid(open + 1, name.GetLength() - open - 2);
            int n = clampedAtoi(digits);
            if (n > 0) {
                counter = n;
                name = name.Left(open);
                name.TrimRight();
            }
        }
    }
    if (counter == INT_MAX)
        return CString();
    CString suffix;
    suffix.Format(" (%d)", counter + 1);
    // 64-bit arithmetic: a maxLength near INT_MIN must not overflow.
    long long room = static_cast<long long>(maxLength) - suffix.GetLength();
    if (name.GetLength() >= room)
        name = name.Left(static_cast<int>(std::max(room - 1, 0LL)));
    return name + suffix;
}

void ZelExtractTokens(const char* text, std::vector<CString>& out)
{
    out.clear();
    bool inside = false;
    CString token;
    for (const char* p = orEmpty(text); *p; ++p) {
        if (*p == '"') {
            if (inside && !token.IsEmpty())
                out.push_back(token);
            token.Empty();
            inside = !inside;
        } else if (inside) {
            token += *p;
        }
    }
}

int ZelExtractSubstrings(const char* text, const char* separators, std::vector<CString>& out)
{
    out.clear();
    const char* rest = orEmpty(text);
    const char* seps = orEmpty(separators);
    while (*rest) {
        size_t n = std::strcspn(rest, seps);
        out.emplace_back(rest, static_cast<int>(n));
        if (!rest[n])
            break;
        rest += n + 1;
    }
    return static_cast<int>(out.size());
}

CString ZelAdjustPathString(const char* path, CWnd* wnd, unsigned int width)
{
    if (!path || std::strlen(path) < 4 || !wnd || !IsWindow(wnd->GetSafeHwnd()))
        return CString();
    const CString head = CString(path, 3) + " ...";
    CString work(path);
    for (;;) {
        int measured = ZelWindowTextWidth(wnd->GetSafeHwnd(), work);
        if (measured < 0 || static_cast<unsigned int>(measured) <= width)
            return work;
        if (work.GetAt(4) == '.')
            work = work.Mid(4);
        int first = work.FindOneOf("\\/");
        if (first < 0)
            return head + work;
        work = work.Mid(first + 1);
        int second = work.FindOneOf("\\/");
        if (second < 0)
            return head + work;
        work = head + work.Mid(second);
    }
}

CString ZelAdjustString(const CDC* dc, int width, const char* text)
{
    if (!dc)
        return CString();
    const char* t = orEmpty(text);
    int length = static_cast<int>(std::strlen(t));
    if (textWidth(dc, t, length) <= width)
        return CString(t);
    int dots = textWidth(dc, "...", 3);
    for (int n = length - 1; n >= 2; --n)
        if (textWidth(dc, t, n) + dots <= width)
            return CString(t, n) + "...";
    for (int n = 3; n >= 1; --n)
        if (textWidth(dc, "...", n) <= width)
            return CString('.', n);
    return CString();
}

int ZelGetMaxStringLen(const CDC* dc, int width, const char* text)
{
    if (!dc)
        return 0;
    const char* t = orEmpty(text);
    int length = static_cast<int>(std::strlen(t));
    while (length > 0 && textWidth(dc, t, length) > width)
        --length;
    return length;
}

void ZelDraw3dString(CDC* dc, int x, int y, const char* text, int raised, COLORREF textColour, COLORREF shade)
{
    if (!dc || !text)
        return;
    int length = static_cast<int>(std::strlen(text));
    COLORREF previous = dc->SetTextColor(shade);
    int offset = raised ? -1 : 1;
    dc->TextOut(x + offset, y + offset, text, length);
    dc->SetTextColor(textColour);
    dc->TextOut(x, y, text, length);
    dc->SetTextColor(previous);
}

void ZelDraw3dString(CDC* dc, int x, int y, const char* text, int raised, COLORREF textColour)
{
    ZelDraw3dString(dc, x, y, text, raised, textColour, GetSysColor(raised ? COLOR_BTNSHADOW : COLOR_BTNHIGHLIGHT));
}
