#include <Zel260/values/CZelUnitSettingsDistance.h>

#include "ZelUnitTables.h"

using namespace zelvalues;

CZelUnitSettingsDistance::CZelUnitSettingsDistance() = default;

CZelUnitSettingsDistance::CZelUnitSettingsDistance(long unit, const char* format) : CZelUnitSettings(unit, format) {}

CZelUnitSettingsDistance& CZelUnitSettingsDistance::Default()
{
    static CZelUnitSettingsDistance shared;
    return shared;
}

void CZelUnitSettingsDistance::DefaultSettings(long unit)
{
    if (unit == 2 || unit == 20 || !InList(kDistanceUnits, unit))
        return;
    const long stored = ReadStoredUnit(kSectionDistance, kKeyDistanceNumber, -1);
    if (InList(kDistanceUnits, stored)) {
        Default().Unit(stored);
        return;
    }
    CString abbreviation;
    UnitAbbreviation(unit, abbreviation, 0);
    WriteStoredUnit(kSectionDistance, kKeyDistanceNumber, kKeyDistanceText, unit, abbreviation);
    Default().Unit(unit);
}
