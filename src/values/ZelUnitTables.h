// The unit lists of the settings classes and the keys under which a chosen unit
// is stored.
#pragma once

#include <Zel260/platform/Win32Types.h>

namespace zelvalues {

struct UnitEntry {
    long unit;
    UINT textId; // text of the unit combo box
};

// Each list ends with unit -1.
extern const UnitEntry kAngleUnits[];
extern const UnitEntry kDistanceUnits[];

bool InList(const UnitEntry* list, long unit);
// True when `unit` stands in `excluded`, a list ended by any number below 1; null
// means nothing is excluded.
bool IsExcluded(const int* excluded, long unit);

constexpr const char* kSectionAngle = "CZelUnitSettingsAngle";
constexpr const char* kSectionAngleLatLon = "CZelUnitSettingsAngleLatLon";
constexpr const char* kSectionDistance = "CZelUnitSettingsDistance";
constexpr const char* kKeyAngleNumber = "UnitAngle Format (###)";
constexpr const char* kKeyAngleText = "UnitAngle Format (str)";
constexpr const char* kKeyDistanceNumber = "UnitDistance Format (###)";
constexpr const char* kKeyDistanceText = "UnitDistance Format (str)";

// The stored unit of `section`, or `fallback` when none is stored.
long ReadStoredUnit(const char* section, const char* numberKey, long fallback);
// Stores the unit number and, for a reader of the file, its abbreviation.
void WriteStoredUnit(const char* section, const char* numberKey, const char* textKey, long unit,
                     const char* abbreviation);
// The common steps of the angle and lat/lon DefaultSettings: the unit the shared
// object is to take, or -1 when nothing is to be done. Writes `unit` when the
// stored one doesn't serve.
long ChooseDefaultAngleUnit(const char* section, long unit, const int* excluded);

// Forgets every stored unit (tests start from an empty store with it).
void ForgetStoredUnits();

} // namespace zelvalues
