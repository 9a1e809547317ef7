#include <Zel260/values/CZelValue.h>

#include <Zel260/pim32/Pim32Angle.h>
#include <Zel260/values/CZelUnitSettingsAngle.h>
#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>
#include <Zel260/values/CZelUnitSettingsDistance.h>

namespace {

constexpr double kRadPerDegree = 0.017453292519943295; // pi / 180
constexpr double kRadPerGrad = 0.015707963267948967;   // pi / 200
constexpr double kRadPerRevolution = 6.283185307179586; // 2 pi
constexpr double kMetrePerUsFoot = 0.3048006096012192;  // 1200 / 3937
constexpr double kMetrePerFoot = 0.3048;

bool knownUnit(long unit) { return unit >= 11 && unit <= 23 && unit != 19 && unit != 20; }

double toBase(double v, long unit)
{
    switch (unit) {
    case 11: return v * kRadPerDegree;
    case 12:
    case 13: return Pim32DMS2Rad(v);
    case 14: return v * kRadPerGrad;
    case 15:
    case 16: return Pim32GCCC2Rad(v);
    case 17: return v * kRadPerRevolution;
    case 22: return v * kMetrePerUsFoot;
    case 23: return v * kMetrePerFoot;
    default: return v; // 18 and 21 are the base itself
    }
}

double fromBase(double v, long unit, int precision, unsigned long limit)
{
    const int lim = limit ? 1 : 0;
    switch (unit) {
    case 11: return v / kRadPerDegree;
    case 12:
    case 13: return Pim32Rad2DMS(v, precision, lim);
    case 14: return v / kRadPerGrad;
    case 15:
    case 16: return Pim32Rad2GCCC(v, precision, lim);
    case 17: return v / kRadPerRevolution;
    case 22: return v / kMetrePerUsFoot;
    case 23: return v / kMetrePerFoot;
    default: return v;
    }
}

// Owned settings of the most derived kind, copied.
CZelUnitSettings* cloneSettings(const CZelUnitSettings* s)
{
    if (auto p = dynamic_cast<const CZelUnitSettingsAngleLatLon*>(s))
        return new CZelUnitSettingsAngleLatLon(*p);
    if (auto p = dynamic_cast<const CZelUnitSettingsAngle*>(s))
        return new CZelUnitSettingsAngle(*p);
    if (auto p = dynamic_cast<const CZelUnitSettingsDistance*>(s))
        return new CZelUnitSettingsDistance(*p);
    return s ? new CZelUnitSettings(*s) : nullptr;
}

} // namespace

CZelValue::CZelValue(CZelUnitSettings* settings, int own)
    : m_settings(settings), m_ownsSettings(own), m_precision(settings ? settings->Precision() : 6)
{
}

CZelValue::CZelValue(const CZelValue& other)
    : m_value(other.m_value), m_settings(other.m_settings), m_ownsSettings(other.m_ownsSettings),
      m_precision(other.m_precision), m_status(other.m_status)
{
    if (m_ownsSettings)
        m_settings = cloneSettings(other.m_settings);
}

CZelValue& CZelValue::operator=(const CZelValue& other)
{
    if (this == &other)
        return *this;
    CZelUnitSettings* settings = other.m_ownsSettings ? cloneSettings(other.m_settings) : other.m_settings;
    Release();
    m_value = other.m_value;
    m_settings = settings;
    m_ownsSettings = other.m_ownsSettings;
    m_precision = other.m_precision;
    m_status = other.m_status;
    return *this;
}

CZelValue::~CZelValue() { Release(); }

double CZelValue::GetDouble() { return m_value; }

int CZelValue::SetDouble(double value)
{
    m_value = value;
    return 1;
}

void CZelValue::UnitSettings(CZelUnitSettings* settings, int own)
{
    if (settings == m_settings) {
        m_ownsSettings = own;
        return;
    }
    Release();
    m_settings = settings;
    m_ownsSettings = own;
}

CZelUnitSettings* CZelValue::UnitSettings() { return m_settings; }

CZelUnitSettings* CZelValue::Settings() { return m_settings ? m_settings : DefaultSettingsObject(); }

void CZelValue::Release()
{
    if (m_ownsSettings)
        delete m_settings;
    m_settings = nullptr;
    m_ownsSettings = 0;
}

int CZelValue::Status()
{
    const int status = m_status;
    m_status = 0;
    return status;
}

void CZelValue::Status(int status)
{
    if (m_status == 0)
        m_status = status;
}

int CZelValue::Convert(double in, long inUnit, double& out, long outUnit, int precision, unsigned long limit)
{
    if (inUnit == outUnit) {
        out = in;
        return 0;
    }
    out = 0.0;
    if (!knownUnit(inUnit) || !knownUnit(outUnit))
        return 1;
    out = fromBase(toBase(in, inUnit), outUnit, precision, limit);
    return 0;
}

namespace {

struct Arguments {
    long unit;
    int precision;
    unsigned long limit;
};

Arguments fromSettings(CZelUnitSettings* s, int usePrecision, int useLimit)
{
    auto angle = dynamic_cast<CZelUnitSettingsAngle*>(s);
    return {s->Unit(), usePrecision ? s->Precision() : -1,
            static_cast<unsigned long>(useLimit && angle ? angle->LimitToCircle() : 0)};
}

} // namespace

int CZelValue::ConvertToStd(const char* text, int usePrecision, int useLimit)
{
    const Arguments a = fromSettings(Settings(), usePrecision, useLimit);
    return ConvertToStd(text, a.unit, a.precision, a.limit);
}

int CZelValue::ConvertToStd(double value, int usePrecision, int useLimit)
{
    const Arguments a = fromSettings(Settings(), usePrecision, useLimit);
    return ConvertToStd(value, a.unit, a.precision, a.limit);
}

int CZelValue::ConvertStdTo(CString& text, int usePrecision, int useLimit)
{
    const Arguments a = fromSettings(Settings(), usePrecision, useLimit);
    return ConvertStdTo(text, a.unit, a.precision, a.limit);
}

int CZelValue::ConvertStdTo(double& number, int usePrecision, int useLimit)
{
    const Arguments a = fromSettings(Settings(), usePrecision, useLimit);
    return ConvertStdTo(number, a.unit, a.precision, a.limit);
}

int CZelValue::ConvertStdTo(CString& text, CZelUnitSettings* other)
{
    return ConvertStdTo(text, (other ? other : Settings())->Unit(), -1, 0);
}
