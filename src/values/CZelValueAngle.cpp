#include <Zel260/values/CZelValueAngle.h>

#include <Zel260/pim32/Pim32Angle.h>
#include <Zel260/resources/ZelValuesResourceIds.h>
#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>

#include "ZelUnitTables.h"
#include "ZelValuesResources.h"

#include <cctype>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kPi = 3.141592653589793;

struct Letters {
    CString north, south, east, west;
};

// Loaded once, on first use, like every resource text of the library.
const Letters& letters()
{
    static const Letters loaded{zelvalues::LoadString(IDS_ZEL_HEMISPHERE_NORTH),
                                zelvalues::LoadString(IDS_ZEL_HEMISPHERE_SOUTH),
                                zelvalues::LoadString(IDS_ZEL_HEMISPHERE_EAST),
                                zelvalues::LoadString(IDS_ZEL_HEMISPHERE_WEST)};
    return loaded;
}

bool contains(const char* text, const CString& letter)
{
    // In UTF-8 no byte of a multibyte character is ASCII, so a byte search finds a
    // letter only where it stands as a character of its own.
    return !letter.IsEmpty() && std::strstr(text, letter.GetString()) != nullptr;
}

// scanf's "%d": blanks, a sign, digits. Saturates instead of overflowing (and keeps
// clear of INT_MIN, whose magnitude has no int). False when no digit follows.
bool scanInt(const char*& p, int& out)
{
    const char* q = p;
    while (std::isspace(static_cast<unsigned char>(*q)))
        ++q;
    bool negative = false;
    if (*q == '-' || *q == '+')
        negative = *q++ == '-';
    if (!std::isdigit(static_cast<unsigned char>(*q)))
        return false;
    long long v = 0;
    for (; std::isdigit(static_cast<unsigned char>(*q)); ++q)
        if (v < INT_MAX)
            v = v * 10 + (*q - '0');
    if (v > INT_MAX)
        v = INT_MAX;
    out = static_cast<int>(negative ? -v : v);
    p = q;
    return true;
}

// scanf's "%f" into a float: the longest number strtof reads.
bool scanFloat(const char*& p, float& out)
{
    char* end = nullptr;
    const float v = std::strtof(p, &end);
    if (end == p)
        return false;
    out = v;
    p = end;
    return true;
}

// Units 12 and 15 count the precision in decimals of the seconds, five fewer than
// the angle functions do. A host's precision may be anything, so the sum saturates.
int anglePrecision(int precision, long unit)
{
    if (precision < 0 || (unit != 12 && unit != 15))
        return precision;
    return precision > INT_MAX - 5 ? INT_MAX : precision + 5;
}

} // namespace

CZelValueAngle::CZelValueAngle() : CZelValueAngle(static_cast<CZelUnitSettingsAngle*>(nullptr), WORD{0}) {}

CZelValueAngle::CZelValueAngle(CZelUnitSettingsAngle* settings) : CZelValueAngle(settings, WORD{0}) {}

CZelValueAngle::CZelValueAngle(CZelUnitSettingsAngle* settings, WORD flag) : CZelValue(settings, 0), m_flag(flag)
{
    if (!m_settings)
        m_settings = DefaultSettingsObject();
    long unit = 10;
    CheckUnit(unit);
}

CZelValueAngle::CZelValueAngle(double value, long unit, const char* format)
    : CZelValue(nullptr, 0)
{
    m_settings = new CZelUnitSettingsAngle(unit, format);
    m_ownsSettings = 1;
    ConvertToStd(value, unit, -1, 0);
}

CZelValueAngle::CZelValueAngle(const char* text, long unit, const char* format) : CZelValue(nullptr, 0)
{
    m_settings = new CZelUnitSettingsAngle(unit, format);
    m_ownsSettings = 1;
    ConvertToStd(text, unit, -1, 0);
}

CZelValueAngle::CZelValueAngle(double value, CZelUnitSettingsAngle* settings) : CZelValueAngle(settings, WORD{0})
{
    ConvertToStd(value, 10, -1, 0);
}

CZelValueAngle::CZelValueAngle(const char* text, CZelUnitSettingsAngle* settings) : CZelValueAngle(settings, WORD{0})
{
    ConvertToStd(text, 10, -1, 0);
}

CZelUnitSettings* CZelValueAngle::DefaultSettingsObject()
{
    if (IsLatOrLon())
        return &CZelUnitSettingsAngleLatLon::Default();
    return &CZelUnitSettingsAngle::Default();
}

void CZelValueAngle::CheckUnit(long& unit)
{
    if (unit != 2 && unit != 10)
        return;
    CZelUnitSettings* settings = Settings();
    unit = settings->Unit();
    if (unit != 2)
        return;
    using namespace zelvalues;
    long stored = ReadStoredUnit(IsLatOrLon() ? SectionAngleLatLon() : SectionAngle(), KeyAngleNumber(), -1);
    if (!InList(kAngleUnits, stored))
        stored = 12;
    settings->Unit(stored);
    unit = settings->Unit();
}

int CZelValueAngle::SetDouble(double value)
{
    double v = std::fmod(value, kTwoPi);
    if (IsLatOrLon()) {
        while (v > kPi)
            v -= kTwoPi;
        while (v < -kPi)
            v += kTwoPi;
    }
    m_value = v;
    return 1;
}

int CZelValueAngle::StringToNumber(const char* text, double& result, long unit)
{
    if (!text)
        text = "";
    const Letters& l = letters();
    const double hemisphere = contains(text, l.south) || contains(text, l.west) ? -1.0 : 1.0;

    if (unit != 12 && unit != 15) {
        result = std::strtod(text, nullptr) * hemisphere;
        return 1;
    }

    std::string cleaned;
    for (const char* p = text; *p; ++p) {
        const char c = *p;
        if (std::isdigit(static_cast<unsigned char>(c)) || c == '-' || c == '.')
            cleaned += c;
        else if (cleaned.empty() || (cleaned.back() != '-' && cleaned.back() != '.'))
            cleaned += ' ';
    }
    const size_t first = cleaned.find_first_not_of(' ');
    cleaned = first == std::string::npos ? std::string() : cleaned.substr(first, cleaned.find_last_not_of(' ') - first + 1);

    int deg = 0, min = 0;
    float sec = 0.0f;
    int sign = 1;
    if (!cleaned.empty()) {
        const char* p = cleaned.c_str();
        if (scanInt(p, deg) && scanInt(p, min))
            scanFloat(p, sec);
        if (deg < 0 || min < 0 || sec < 0)
            sign = -1;
    }
    const double s = std::fabs(static_cast<double>(sec));
    result = unit == 12 ? Pim32DMS2DMS(sign, std::abs(deg), std::abs(min), s, -1, 0)
                        : Pim32GCCC2GCCC(sign, std::abs(deg), std::abs(min), s, -1, 0);
    result *= hemisphere;
    return 1;
}

int CZelValueAngle::ConvertToStd(const char* text, long unit, int precision, unsigned long limit)
{
    CheckUnit(unit);
    double number = 0.0;
    StringToNumber(text, number, unit);
    return ConvertToStd(number, unit, precision, limit);
}

int CZelValueAngle::ConvertToStd(double value, long unit, int precision, unsigned long limit)
{
    CheckUnit(unit);
    double out = 0.0;
    Status(Convert(value, unit, out, 18, anglePrecision(precision, unit), limit));
    SetDouble(out);
    return Status();
}

int CZelValueAngle::ConvertStdTo(double& number, long unit, int precision, unsigned long limit)
{
    CheckUnit(unit);
    Status(Convert(m_value, 18, number, unit, anglePrecision(precision, unit), limit));
    return Status();
}

int CZelValueAngle::WriteText(CString& text, long unit, int precision, unsigned long limit, long formatUnit)
{
    const Letters& l = letters();
    double number = 0.0;
    if (const int status = ConvertStdTo(number, unit, precision, limit))
        return status;
    CZelFormat* format = Settings()->Format();
    const bool hasTemplate = !format->Format().IsEmpty();
    const CString* letter = nullptr;
    if (IsLat())
        letter = number < 0 ? &l.south : &l.north;
    else if (IsLon())
        letter = number < 0 ? &l.west : &l.east;
    if (letter) {
        number = std::fabs(number);
        if (hasTemplate)
            format->CustomFormat("%Q", *letter);
    } else if (hasTemplate) {
        format->CustomFormat("%Q", nullptr);
    }
    Status(format->ConvertToString(number, formatUnit, text));
    if (letter && !hasTemplate)
        text += " " + *letter;
    return Status();
}

int CZelValueAngle::ConvertStdTo(CString& text, long unit, int precision, unsigned long limit)
{
    CheckUnit(unit);
    return WriteText(text, unit, precision, limit, Settings()->Unit());
}

int CZelValueAngle::ConvertStdTo(CString& text, CZelUnitSettings* other)
{
    CZelUnitSettings* own = Settings();
    if (!other)
        other = own;
    const auto* ownAngle = dynamic_cast<CZelUnitSettingsAngle*>(own);
    const unsigned long limit = ownAngle ? ownAngle->LimitToCircle() : 0;
    long unit = other->Unit();
    CheckUnit(unit);
    return WriteText(text, unit, other->Precision(), limit, unit);
}

int CZelValueAngle::GetString(CString& text)
{
    CZelUnitSettings* s = Settings();
    const auto* angle = dynamic_cast<CZelUnitSettingsAngle*>(s);
    return ConvertStdTo(text, 10, s->Precision(), angle ? angle->LimitToCircle() : 0);
}

int CZelValueAngle::SetString(const char* text)
{
    ConvertToStd(text, 10, -1, 0);
    return 1;
}

int CZelValueAngle::StdFormat(CString& text)
{
    CString body;
    const int status = GetString(body);
    const long unit = Settings()->Unit();
    if (unit == 12 || unit == 15) {
        text = body;
    } else {
        CString abbreviation;
        GetUnitAbbreviation(abbreviation);
        text.Format("%s [%s]", body.GetString(), abbreviation.GetString());
    }
    return status;
}

void CZelValueAngle::GetUnitAbbreviation(CString& abbreviation) { Settings()->GetUnitAbbreviation(abbreviation); }
