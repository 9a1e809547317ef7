#include <Zel260/values/CZelValueAngleLon.h>

CZelValueAngleLon::CZelValueAngleLon() : CZelValueAngle(static_cast<CZelUnitSettingsAngle*>(nullptr), WORD{2}) {}
CZelValueAngleLon::CZelValueAngleLon(CZelUnitSettingsAngleLatLon* settings) : CZelValueAngle(settings, WORD{2}) {}
CZelUnitSettings* CZelValueAngleLon::DefaultSettingsObject() { return &CZelUnitSettingsAngleLatLon::Default(); }
