#include "ZelUnitTables.h"

#include <Zel260/resources/ZelValuesResourceIds.h>
#include <Zel260/services/CZelProfileEntries.h>


namespace zelvalues {

const UnitEntry kAngleUnits[] = {
    {11, IDS_ZEL_UNIT_DEGREE},   {12, IDS_ZEL_UNIT_DMS},         {13, IDS_ZEL_UNIT_DECIMAL_DMS},
    {14, IDS_ZEL_UNIT_GRAD},     {15, IDS_ZEL_UNIT_GON},         {16, IDS_ZEL_UNIT_DECIMAL_GON},
    {17, IDS_ZEL_UNIT_REVOLUTION}, {18, IDS_ZEL_UNIT_RADIAN},    {-1, 0},
};

const UnitEntry kDistanceUnits[] = {
    {21, IDS_ZEL_UNIT_METRE},
    {22, IDS_ZEL_UNIT_US_SURVEY_FOOT},
    {23, IDS_ZEL_UNIT_INTERNATIONAL_FOOT},
    {-1, 0},
};

bool InList(const UnitEntry* list, long unit)
{
    for (; list->unit != -1; ++list)
        if (list->unit == unit)
            return true;
    return false;
}

bool IsExcluded(const int* excluded, long unit)
{
    if (!excluded)
        return false;
    for (; *excluded >= 1; ++excluded)
        if (*excluded == unit)
            return true;
    return false;
}

const char* SectionAngle() { return CZelProfileEntries::UnitSettingsAngleSection(); }
const char* SectionAngleLatLon() { return CZelProfileEntries::UnitSettingsAngleLatLonSection(); }
const char* SectionDistance() { return CZelProfileEntries::UnitSettingsDistanceSection(); }
const char* KeyAngleNumber() { return CZelProfileEntries::UnitSettingsAngleEntryFormatNumber(); }
const char* KeyAngleText() { return CZelProfileEntries::UnitSettingsAngleEntryFormatString(); }
const char* KeyDistanceNumber() { return CZelProfileEntries::UnitSettingsDistanceEntryFormatNumber(); }
const char* KeyDistanceText() { return CZelProfileEntries::UnitSettingsDistanceEntryFormatString(); }

long ReadStoredUnit(const char* section, const char* numberKey, long fallback)
{
    // The platform reads integers as unsigned: a stored -1 comes back as 0xFFFFFFFF,
    // which is -1 again as a 32-bit int.
    const unsigned int raw = CZelProfileEntries::ReadZelProfileInt(section, numberKey, static_cast<int>(fallback));
    return static_cast<int>(raw);
}

void WriteStoredUnit(const char* section, const char* numberKey, const char* textKey, long unit,
                     const char* abbreviation)
{
    CZelProfileEntries::WriteZelProfileInt(section, numberKey, static_cast<int>(unit));
    CZelProfileEntries::WriteZelProfileString(section, textKey, abbreviation ? abbreviation : "");
}

} // namespace zelvalues
