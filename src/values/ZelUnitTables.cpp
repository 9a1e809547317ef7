#include "ZelUnitTables.h"

#include <Zel260/resources/ZelValuesResourceIds.h>

#include <map>
#include <string>
#include <utility>

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

namespace {

// Until the settings file of the services folder is in the tree, the stored units
// live for the process only.
std::map<std::pair<std::string, std::string>, std::string>& store()
{
    static std::map<std::pair<std::string, std::string>, std::string> entries;
    return entries;
}

} // namespace

long ReadStoredUnit(const char* section, const char* numberKey, long fallback)
{
    auto it = store().find({section, numberKey});
    if (it == store().end())
        return fallback;
    return std::stol(it->second);
}

void WriteStoredUnit(const char* section, const char* numberKey, const char* textKey, long unit,
                     const char* abbreviation)
{
    store()[{section, numberKey}] = std::to_string(unit);
    store()[{section, textKey}] = abbreviation ? abbreviation : "";
}

void ForgetStoredUnits() { store().clear(); }

} // namespace zelvalues
