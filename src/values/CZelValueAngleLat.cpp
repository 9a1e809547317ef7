#include <Zel260/values/CZelValueAngleLat.h>

CZelValueAngleLat::CZelValueAngleLat() : CZelValueAngle(static_cast<CZelUnitSettingsAngle*>(nullptr), WORD{1}) {}
CZelValueAngleLat::CZelValueAngleLat(CZelUnitSettingsAngleLatLon* settings) : CZelValueAngle(settings, WORD{1}) {}
CZelUnitSettings* CZelValueAngleLat::DefaultSettingsObject() { return &CZelUnitSettingsAngleLatLon::Default(); }
