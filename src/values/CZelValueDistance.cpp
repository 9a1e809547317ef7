#include <Zel260/values/CZelValueDistance.h>

#include "ZelUnitTables.h"

#include <cstdlib>

CZelValueDistance::CZelValueDistance() : CZelValueDistance(static_cast<CZelUnitSettingsDistance*>(nullptr)) {}

CZelValueDistance::CZelValueDistance(CZelUnitSettingsDistance* settings) : CZelValue(settings, 0)
{
    if (!m_settings)
        m_settings = &CZelUnitSettingsDistance::Default();
    long unit = 20;
    CheckUnit(unit);
}

CZelValueDistance::CZelValueDistance(double value, long unit, const char* format) : CZelValue(nullptr, 0)
{
    m_settings = new CZelUnitSettingsDistance(unit, format);
    m_ownsSettings = 1;
    ConvertToStd(value, unit, -1, 0);
}

CZelValueDistance::CZelValueDistance(const char* text, long unit, const char* format) : CZelValue(nullptr, 0)
{
    m_settings = new CZelUnitSettingsDistance(unit, format);
    m_ownsSettings = 1;
    ConvertToStd(text, unit, -1, 0);
}

CZelValueDistance::CZelValueDistance(double value, CZelUnitSettingsDistance* settings) : CZelValueDistance(settings)
{
    ConvertToStd(value, 20, -1, 0);
}

CZelValueDistance::CZelValueDistance(const char* text, CZelUnitSettingsDistance* settings) : CZelValueDistance(settings)
{
    ConvertToStd(text, 20, -1, 0);
}

CZelUnitSettings* CZelValueDistance::DefaultSettingsObject() { return &CZelUnitSettingsDistance::Default(); }

void CZelValueDistance::CheckUnit(long& unit)
{
    if (unit != 2 && unit != 20)
        return;
    CZelUnitSettings* settings = Settings();
    unit = settings->Unit();
    if (unit != 2)
        return;
    using namespace zelvalues;
    long stored = ReadStoredUnit(SectionDistance(), KeyDistanceNumber(), -1);
    if (!InList(kDistanceUnits, stored))
        stored = 21;
    settings->Unit(stored);
    unit = settings->Unit();
}

int CZelValueDistance::SetDouble(double value)
{
    m_value = value;
    return 1;
}

int CZelValueDistance::ConvertToStd(const char* text, long unit, int precision, unsigned long limit)
{
    const double number = std::strtod(text ? text : "", nullptr);
    return ConvertToStd(number, unit, -1, 0);
}

int CZelValueDistance::ConvertToStd(double value, long unit, int precision, unsigned long limit)
{
    CheckUnit(unit);
    Status(Convert(value, unit, m_value, 21, -1, 0));
    return Status();
}

int CZelValueDistance::ConvertStdTo(double& number, long unit, int precision, unsigned long limit)
{
    CheckUnit(unit);
    Status(Convert(m_value, 21, number, unit, -1, 0));
    return Status();
}

int CZelValueDistance::ConvertStdTo(CString& text, long unit, int precision, unsigned long limit)
{
    double number = 0.0;
    if (const int status = ConvertStdTo(number, unit, -1, 0))
        return status;
    Status(Settings()->Format()->ConvertToString(number, Settings()->Unit(), text));
    return Status();
}

int CZelValueDistance::ConvertStdTo(CString& text, CZelUnitSettings* other)
{
    long unit = (other ? other : Settings())->Unit();
    CheckUnit(unit);
    double number = 0.0;
    if (const int status = ConvertStdTo(number, unit, -1, 0))
        return status;
    Status(Settings()->Format()->ConvertToString(number, unit, text));
    return Status();
}

int CZelValueDistance::GetString(CString& text) { return ConvertStdTo(text, 20, -1, 0); }

int CZelValueDistance::SetString(const char* text)
{
    ConvertToStd(text, 20, -1, 0);
    return 1;
}

int CZelValueDistance::StdFormat(CString& text)
{
    CString body, abbreviation;
    const int status = GetString(body);
    GetUnitAbbreviation(abbreviation);
    text.Format("%s %s", body.GetString(), abbreviation.GetString());
    return status;
}

void CZelValueDistance::GetUnitAbbreviation(CString& abbreviation)
{
    Settings()->Format()->GetUnitAbbreviation(abbreviation);
}
