#include <Zel260/values/CZelUnitSettingsAngle.h>

#include "ZelUnitTables.h"

using namespace zelvalues;

IMPLEMENT_DYNCREATE(CZelUnitSettingsAngle, CZelUnitSettings)

CZelUnitSettingsAngle::CZelUnitSettingsAngle() : CZelUnitSettingsAngle(SectionAngle(), 5) {}

CZelUnitSettingsAngle::CZelUnitSettingsAngle(const char* section, int precision) : m_section(section)
{
    Precision(precision);
}

CZelUnitSettingsAngle::CZelUnitSettingsAngle(long unit, const char* format) : CZelUnitSettings(unit, format) {}

void CZelUnitSettingsAngle::UseDmsSymbols(int on) { Format()->UseDmsSymbols(on); }
int CZelUnitSettingsAngle::UseDmsSymbols() const { return Format()->UseDmsSymbols(); }
void CZelUnitSettingsAngle::UseSecOnly(int on) { Format()->UseSecOnly(on); }
int CZelUnitSettingsAngle::UseSecOnly() const { return Format()->UseSecOnly(); }
void CZelUnitSettingsAngle::TrimLeadingZeros(int on) { Format()->TrimLeadingZeros(on); }
int CZelUnitSettingsAngle::TrimLeadingZeros() const { return Format()->TrimLeadingZeros(); }
void CZelUnitSettingsAngle::LimitToCircle(int on) { Format()->LimitToCircle(on); }
int CZelUnitSettingsAngle::LimitToCircle() const { return Format()->LimitToCircle(); }

CZelUnitSettingsAngle& CZelUnitSettingsAngle::Default()
{
    static CZelUnitSettingsAngle shared;
    return shared;
}

CZelUnitSettingsAngle& CZelUnitSettingsAngle::SharedObject() const { return Default(); }

namespace zelvalues {

long ChooseDefaultAngleUnit(const char* section, long unit, const int* excluded)
{
    if (unit == 2 || unit == 10 || IsExcluded(excluded, unit) || !InList(kAngleUnits, unit))
        return -1;
    const long stored = ReadStoredUnit(section, KeyAngleNumber(), -1);
    if (InList(kAngleUnits, stored) && !IsExcluded(excluded, stored))
        return stored;
    CString abbreviation;
    CZelUnitSettings::UnitAbbreviation(unit, abbreviation, 0);
    WriteStoredUnit(section, KeyAngleNumber(), KeyAngleText(), unit, abbreviation);
    return unit;
}

} // namespace zelvalues

void CZelUnitSettingsAngle::DefaultSettings(long unit, const int* excluded)
{
    const long chosen = ChooseDefaultAngleUnit(SectionAngle(), unit, excluded);
    if (chosen != -1)
        Default().Unit(chosen);
}
