#include <Zel260/values/CZelFormat.h>

#include <Zel260/frame/ZelStrings.h>
#include <Zel260/pim32/Pim32Angle.h>
#include <Zel260/resources/ZelValuesResourceIds.h>

#include "ZelValuesResources.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <charconv>
#include <cstring>
#include <string>

namespace {

// A replacement that can recreate what it searches for must not run forever.
constexpr int kMaxReplacements = 100000;
constexpr int kMaxText = 1 << 22;

void appendf(std::string& out, const char* format, ...) __attribute__((format(printf, 2, 3)));
void appendf(std::string& out, const char* format, ...)
{
    char buffer[128];
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int n = std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    // A width or precision in the millions only comes from a mistake; it gets no text.
    if (n < 0 || n > kMaxText) {
        va_end(again);
        return;
    }
    if (static_cast<size_t>(n) < sizeof buffer) {
        out.append(buffer, static_cast<size_t>(n));
    } else {
        const size_t old = out.size();
        out.resize(old + static_cast<size_t>(n) + 1);
        std::vsnprintf(out.data() + old, static_cast<size_t>(n) + 1, format, again);
        out.resize(old + static_cast<size_t>(n));
    }
    va_end(again);
}

// printf builds the whole text of a conversion before it can report that it is too
// long, which for a width or precision near INT_MAX means gigabytes and minutes. Such
// numbers are refused before printf sees them, with the same outcome: no text.
bool fitsText(long long width, long long precision) { return width <= kMaxText && precision <= kMaxText; }

// Replaces `search` by `replacement`, each search starting again at the beginning.
// Returns the number of replacements.
int replaceFromStart(std::string& text, const std::string& search, const std::string& replacement)
{
    if (search.empty())
        return 0;
    // When the replacement holds the search text, searching from the start again
    // would never end: go on behind the replacement instead.
    const bool selfFeeding = replacement.find(search) != std::string::npos;
    int count = 0;
    size_t from = 0;
    for (size_t pos = text.find(search); pos != std::string::npos && count < kMaxReplacements;
         pos = text.find(search, from)) {
        text.replace(pos, search.size(), replacement);
        from = selfFeeding ? pos + replacement.size() : 0;
        ++count;
    }
    return count;
}

int replaceAll(std::string& text, const char* search, const std::string& replacement)
{
    const size_t n = std::strlen(search);
    int count = 0;
    for (size_t pos = text.find(search); pos != std::string::npos;
         pos = text.find(search, pos + replacement.size())) {
        text.replace(pos, n, replacement);
        ++count;
    }
    return count;
}

// printf of a user's template with the value, refusing every conversion that
// would read an argument of another type or one that isn't there.
std::string formatTemplateNumber(const std::string& format, bool withPrecision, int precision, double value)
{
    struct Arg {
        bool isInt;
        int i;
        double d;
    };
    Arg args[2];
    int argCount = 0;
    if (withPrecision)
        args[argCount++] = {true, precision, 0.0};
    args[argCount++] = {false, 0, value};
    int next = 0;

    std::string out;
    size_t i = 0;
    while (i < format.size()) {
        const char ch = format[i];
        if (ch != '%') {
            out += ch;
            ++i;
            continue;
        }
        const size_t start = i++;
        if (i < format.size() && format[i] == '%') {
            out += '%';
            ++i;
            continue;
        }
        while (i < format.size() && std::strchr("-+ #0", format[i]))
            ++i;
        bool widthStar = false, precisionStar = false;
        long long width = 0, digitsPrecision = 0;
        // Saturates: any number past kMaxText is as good as the real one.
        auto digits = [&format, &i](long long& value) {
            for (; i < format.size() && format[i] >= '0' && format[i] <= '9'; ++i)
                value = std::min<long long>(value * 10 + (format[i] - '0'), kMaxText + 1LL);
        };
        if (i < format.size() && format[i] == '*') {
            widthStar = true;
            ++i;
        } else {
            digits(width);
        }
        if (i < format.size() && format[i] == '.') {
            ++i;
            if (i < format.size() && format[i] == '*') {
                precisionStar = true;
                ++i;
            } else {
                digits(digitsPrecision);
            }
        }
        bool longDouble = false, badLength = false;
        while (i < format.size() && std::strchr("hlLqjzt", format[i])) {
            if (format[i] == 'L')
                longDouble = true;
            else if (format[i] != 'l')
                badLength = true;
            ++i;
        }
        if (i >= format.size()) {
            out.append(format, start, std::string::npos);
            break;
        }
        const char conversion = format[i++];
        // Conversions are short; a longer one has a width nobody needs.
        char piece[32];
        if (i - start >= sizeof piece) {
            out.append(format, start, i - start);
            continue;
        }
        format.copy(piece, i - start, start);
        piece[i - start] = '\0';
        const bool floating = std::strchr("fFeEgGaA", conversion) != nullptr;
        const int needInts = (widthStar ? 1 : 0) + (precisionStar ? 1 : 0);
        bool fits = floating && !badLength && next + needInts + 1 <= argCount;
        for (int k = 0; fits && k < needInts; ++k)
            fits = args[next + k].isInt;
        fits = fits && !args[next + needInts].isInt;
        if (!fits) {
            out += piece;
            continue;
        }
        const double v = args[next + needInts].d;
        const long long starWidth = widthStar ? args[next].i : width;
        const long long starPrecision = precisionStar ? args[next + needInts - 1].i : digitsPrecision;
        if (!fitsText(starWidth, starPrecision)) {
            next += needInts + 1;
            continue;
        }
        if (needInts == 2) {
            const int w = args[next].i, p = args[next + 1].i;
            longDouble ? appendf(out, piece, w, p, static_cast<long double>(v))
                       : appendf(out, piece, w, p, v);
        } else if (needInts == 1) {
            const int a = args[next].i;
            longDouble ? appendf(out, piece, a, static_cast<long double>(v))
                       : appendf(out, piece, a, v);
        } else {
            longDouble ? appendf(out, piece, static_cast<long double>(v)) : appendf(out, piece, v);
        }
        next += needInts + 1;
    }
    return out;
}

struct Sexagesimal {
    int sign = 1, deg = 0, min = 0;
    double sec = 0.0;
};

int secondsDecimals(int precision) { return precision < 6 ? 5 : precision - 5; }

Sexagesimal split(double value, long unit, int precision, int limit)
{
    Sexagesimal s;
    if (unit == 15)
        Pim32GCCC2GCCC(value, s.sign, s.deg, s.min, s.sec, secondsDecimals(precision), limit);
    else
        Pim32DMS2DMS(value, s.sign, s.deg, s.min, s.sec, secondsDecimals(precision), limit);
    return s;
}

struct Symbols {
    const char* deg;
    const char* min;
    const char* sec;
};

Symbols symbolsOf(long unit, const char* degree)
{
    if (unit == 15)
        return {"g", "c", "cc"};
    return {degree, "'", "\""};
}

const char* signField(int sign) { return sign >= 1 ? " " : "-"; }

const char* abbreviationOf(long unit, int useSecOnly)
{
    switch (unit) {
    case 11: return useSecOnly ? "\"" : "dec";
    case 12: return useSecOnly ? "\"" : "";
    case 13: return useSecOnly ? "\"" : "deg";
    case 14: return useSecOnly ? "cc" : "grad";
    case 15: return useSecOnly ? "cc" : "";
    case 16: return useSecOnly ? "cc" : "gon";
    case 17: return "rev";
    case 18: return "rad";
    case 21: return "m";
    case 22: return "fts";
    case 23: return "fti";
    default: return "";
    }
}

// Loaded for every call so that a replaced language module takes effect at once.
CString degreeSymbol() { return zelvalues::LoadString(IDS_ZEL_DEGREE_SYMBOL); }

// printf's "%<width>d" (with '0': "%0<width>d") without the parsing of a format.
void appendInt(std::string& out, int value, int width, char pad = ' ')
{
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const int n = static_cast<int>(end - digits);
    if (n < width)
        out.append(static_cast<size_t>(width - n), pad);
    out.append(digits, end);
}

// printf's "%<width>.<decimals>f" (with '0': "%0<width>.<decimals>f") of a seconds
// field. The split functions leave seconds that are an integer count of the last
// decimal, so up to nine decimals the digits come from that count, exactly as printf
// would round them; anything else goes to printf.
void appendFixed(std::string& out, double sec, int width, int decimals, bool zero)
{
    static constexpr long long kPow10[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000,
                                           1000000000};
    if (!(sec >= 0.0 && sec < 1e6) || decimals < 0 || decimals > 9) {
        if (!fitsText(width, decimals))
            return;
        zero ? appendf(out, "%0*.*f", width, decimals, sec) : appendf(out, "%*.*f", width, decimals, sec);
        return;
    }
    const long long count = std::llround(sec * static_cast<double>(kPow10[decimals]));
    char digits[32];
    char* p = std::to_chars(digits, digits + 16, count / kPow10[decimals]).ptr;
    if (decimals > 0) {
        *p++ = '.';
        long long fraction = count % kPow10[decimals];
        for (int i = decimals - 1; i >= 0; --i) {
            p[i] = static_cast<char>('0' + fraction % 10);
            fraction /= 10;
        }
        p += decimals;
    }
    const int n = static_cast<int>(p - digits);
    if (n < width)
        out.append(static_cast<size_t>(width - n), zero ? '0' : ' ');
    out.append(digits, p);
}

// The seconds field: "%8.5f" below precision 6, else "%*.*f" with precision - 2 and
// precision - 5; `zero` pads with zeros ("%08.5f", "%0*.*f").
void appendSeconds(std::string& out, double sec, int precision, bool zero)
{
    if (precision < 6)
        appendFixed(out, sec, 8, 5, zero);
    else
        appendFixed(out, sec, precision - 2, precision - 5, zero);
}

} // namespace

CZelFormat::CZelFormat() = default;

CZelFormat::CZelFormat(long unit, int useSecOnly, int limitToCircle, const char* format)
    : m_useSecOnly(useSecOnly), m_limitToCircle(limitToCircle)
{
    SetUnitAbbreviation(unit);
    if (format && *format)
        Format(format);
}

CZelFormat::~CZelFormat() = default;

void CZelFormat::SetUnitAbbreviation(const char* abbreviation)
{
    if (abbreviation && *abbreviation)
        m_unitAbbreviation = abbreviation;
}

void CZelFormat::SetUnitAbbreviation(long unit)
{
    m_unitAbbreviation = abbreviationOf(unit, m_useSecOnly);
    if (!m_formatTemplate.IsEmpty())
        BuildFmtList();
}

void CZelFormat::GetUnitAbbreviation(CString& abbreviation) const { abbreviation = m_unitAbbreviation; }

CString CZelFormat::Format() { return m_builtFormat; }

void CZelFormat::Format(const char* format)
{
    if (!format || !*format)
        return;
    m_formatTemplate = format;
    BuildFmtList();
}

void CZelFormat::CustomFormat(const char* search, const char* replacement)
{
    m_customSearch = search;
    m_customReplacement = replacement;
    m_preparedValid[0] = m_preparedValid[1] = false;
}

void CZelFormat::Precision(int precision) { m_precision = precision; }
int CZelFormat::Precision() { return m_precision; }

void CZelFormat::BuildFmtList()
{
    std::string built = m_formatTemplate.str();
    replaceFromStart(built, "%U", m_unitAbbreviation.str());
    m_hasStarPrecision = built.find(".*f") != std::string::npos;
    m_builtFormat = std::move(built);
    m_preparedValid[0] = m_preparedValid[1] = false;
}

int CZelFormat::ConvertToString(double value, long unit, CString& result)
{
    const CString degreeText = degreeSymbol();
    const char* degree = degreeText.GetString();
    if (!m_builtFormat.IsEmpty()) {
        if (m_enabled)
            ConvertTemplate(value, unit, result, degree);
        return 0;
    }
    if (m_useSecOnly) {
        switch (unit) {
        case 11:
            value *= 3600.0;
            break;
        case 12:
        case 13: {
            Sexagesimal s;
            Pim32DMS2DMS(value, s.sign, s.deg, s.min, s.sec, secondsDecimals(m_precision), m_limitToCircle);
            value = (s.deg * 3600.0 + s.min * 60.0 + s.sec) * s.sign;
            break;
        }
        case 14:
        case 15:
        case 16:
            value *= 10000.0;
            break;
        default:
            m_useSecOnly = 0;
            break;
        }
    }
    if ((unit == 12 || unit == 15) && !m_useSecOnly)
        ConvertSexagesimal(value, unit, result, degree);
    else
        ConvertDecimal(value, result);
    return 0;
}

// The template after the custom replacement and the bracket steps depends only on
// fields that change through BuildFmtList and CustomFormat, so it is kept until then.
const std::string& CZelFormat::PreparedTemplate(bool sexagesimal) const
{
    const int slot = sexagesimal ? 1 : 0;
    if (m_preparedValid[slot])
        return m_prepared[slot];
    std::string text = m_builtFormat.str();
    replaceFromStart(text, m_customSearch.str(), m_customReplacement.str());

    size_t lastMark = std::string::npos;
    for (size_t pos = text.find("%?"); pos != std::string::npos; pos = text.find("%?", pos)) {
        text.erase(pos, 2);
        lastMark = pos;
    }
    if (lastMark != std::string::npos && lastMark > 2) {
        auto eraseMarker = [&text](const char* marker, size_t from) {
            const size_t pos = text.find(marker, from);
            if (pos != std::string::npos)
                text.erase(pos, 2);
            return pos;
        };
        auto eraseGroup = [&text]() {
            const size_t open = text.find("%[");
            if (open == std::string::npos)
                return;
            const size_t close = text.find("%]", open + 2);
            if (close != std::string::npos)
                text.erase(open, close + 2 - open);
        };
        if (sexagesimal) {
            eraseGroup();
            const size_t open = eraseMarker("%[", 0);
            eraseMarker("%]", open == std::string::npos ? 0 : open);
        } else {
            const size_t open = eraseMarker("%[", 0);
            eraseMarker("%]", open == std::string::npos ? 0 : open);
            eraseGroup();
        }
    }
    m_prepared[slot] = std::move(text);
    m_preparedValid[slot] = true;
    return m_prepared[slot];
}

void CZelFormat::ConvertTemplate(double value, long unit, CString& result, const char* degree) const
{
    const bool sexagesimal = unit == 12 || unit == 15;
    const std::string& prepared = PreparedTemplate(sexagesimal);
    if (!sexagesimal) {
        result = formatTemplateNumber(prepared, m_hasStarPrecision && m_precision >= 1, m_precision, value);
        return;
    }

    const Sexagesimal s = split(value, unit, m_precision, m_limitToCircle);
    const Symbols sym = symbolsOf(unit, degree);
    const char* sg = signField(s.sign);
    const bool trimDeg = m_trimLeadingZeros && s.deg == 0;

    auto seconds = [&](bool withSymbol) {
        std::string f;
        if (trimDeg && s.min == 0)
            f += sg;
        appendSeconds(f, s.sec, m_precision, false);
        if (withSymbol)
            f += sym.sec;
        return f;
    };
    auto minutes = [&](bool withSymbol) {
        std::string f;
        if (trimDeg) {
            if (s.min == 0)
                return f;
            f += sg;
        }
        appendInt(f, s.min, 2);
        if (withSymbol)
            f += sym.min;
        return f;
    };
    auto degrees = [&](bool withSymbol) {
        std::string f;
        if (trimDeg)
            return f;
        f += sg;
        appendInt(f, s.deg, 3);
        if (withSymbol)
            f += sym.deg;
        return f;
    };

    // The fields are replaced in a fixed order, each wherever it stands. As long as
    // no replacement text holds a '%', no replacement can make a new field, and one
    // pass over the template gives the same text.
    if (std::strchr(sym.deg, '%') == nullptr) {
        static const struct {
            const char* name;
            size_t length;
            int field;
            bool symbol;
        } names[] = {{"%DegOrG", 7, 0, false}, {"%degOrG", 7, 0, true}, {"%MinOrC", 7, 1, false},
                     {"%minOrC", 7, 1, true},  {"%SecOrCC", 8, 2, false}, {"%secOrCC", 8, 2, true}};
        std::string out;
        out.reserve(prepared.size() + 32);
        int replaced = 0;
        for (size_t i = 0; i < prepared.size();) {
            bool hit = false;
            if (prepared[i] == '%') {
                for (const auto& n : names) {
                    if (prepared.compare(i, n.length, n.name) == 0) {
                        out += n.field == 0 ? degrees(n.symbol) : n.field == 1 ? minutes(n.symbol) : seconds(n.symbol);
                        i += n.length;
                        hit = true;
                        ++replaced;
                        break;
                    }
                }
            }
            if (!hit)
                out += prepared[i++];
        }
        if (replaced)
            result = std::move(out);
        return;
    }
    std::string text = prepared;
    int replaced = 0;
    if (text.find("%DegOrG") != std::string::npos)
        replaced += replaceAll(text, "%DegOrG", degrees(false));
    if (text.find("%degOrG") != std::string::npos)
        replaced += replaceAll(text, "%degOrG", degrees(true));
    if (text.find("%MinOrC") != std::string::npos)
        replaced += replaceAll(text, "%MinOrC", minutes(false));
    if (text.find("%minOrC") != std::string::npos)
        replaced += replaceAll(text, "%minOrC", minutes(true));
    if (text.find("%SecOrCC") != std::string::npos)
        replaced += replaceAll(text, "%SecOrCC", seconds(false));
    if (text.find("%secOrCC") != std::string::npos)
        replaced += replaceAll(text, "%secOrCC", seconds(true));
    if (replaced)
        result = std::move(text);
}

void CZelFormat::ConvertSexagesimal(double value, long unit, CString& result, const char* degree) const
{
    const Sexagesimal s = split(value, unit, m_precision, m_limitToCircle);
    const Symbols sym = symbolsOf(unit, degree);
    const bool trimDeg = m_trimLeadingZeros && s.deg == 0;

    // The formats of this path, "%s%3d%s %02d%s %0*.*f" and its shorter forms, written
    // piece by piece: integers need no printf, only the seconds do.
    std::string text;
    text.reserve(32);
    text += signField(s.sign);
    if (trimDeg && s.min == 0) {
        appendSeconds(text, s.sec, m_precision, false);
    } else {
        if (trimDeg) {
            appendInt(text, s.min, 2);
        } else {
            appendInt(text, s.deg, 3);
            if (m_useDmsSymbols)
                text += sym.deg;
            text += ' ';
            appendInt(text, s.min, 2, '0');
        }
        if (m_useDmsSymbols)
            text += sym.min;
        text += ' ';
        appendSeconds(text, s.sec, m_precision, true);
    }
    result = std::move(text);
    Tail(result);
    if (m_useDmsSymbols)
        result += sym.sec;
}

void CZelFormat::ConvertDecimal(double value, CString& result) const
{
    std::string text;
    const int precision = m_precision < 1 ? 6 : m_precision;
    if (fitsText(0, precision))
        appendf(text, "% .*f", precision, value);
    result = std::move(text);
    Tail(result);
}

void CZelFormat::Tail(CString& result) const
{
    const int dot = result.Find('.');
    if (dot < 0) {
        result += ".0";
        return;
    }
    if (!m_trimTrailingZeros)
        return;
    int length = result.GetLength();
    while (length - 1 > dot + 1 && result[length - 1] == '0')
        --length;
    if (length != result.GetLength())
        result = result.Left(length);
}

CString ZelAdvancedFormatDouble(const double& value)
{
    const double a = std::fabs(value);
    std::string text;
    if (!(a > 1e-11) || a >= 1e13) {
        appendf(text, "%g", value);
    } else {
        const int decimals = a > 1.0 ? 5 : 5 - static_cast<int>(std::floor(std::log10(a)));
        appendf(text, "%.*f", decimals, value);
    }
    CString result(std::move(text));
    ZelTrimTrailingZeros(result);
    return result;
}
