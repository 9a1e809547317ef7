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

// The keys of the library's profile (CZelProfileEntries).
const char* SectionAngle();
const char* SectionAngleLatLon();
const char* SectionDistance();
const char* KeyAngleNumber();
const char* KeyAngleText();
const char* KeyDistanceNumber();
const char* KeyDistanceText();

// The stored unit of `section` in the library's profile, or `fallback` when none
// is stored.
long ReadStoredUnit(const char* section, const char* numberKey, long fallback);
// Stores the unit number and, for a reader of the file, its abbreviation.
void WriteStoredUnit(const char* section, const char* numberKey, const char* textKey, long unit,
                     const char* abbreviation);
// The common steps of the angle and lat/lon DefaultSettings: the unit the shared
// object is to take, or -1 when nothing is to be done. Writes `unit` when the
// stored one doesn't serve.
long ChooseDefaultAngleUnit(const char* section, long unit, const int* excluded);

} // namespace zelvalues
