// A longitude: an angle with flag 2, shown with "E" or "W", wrapped into [-pi, pi].
#pragma once

#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>
#include <Zel260/values/CZelValueAngle.h>

class CZelValueAngleLon : public CZelValueAngle {
public:
    // The shared CZelUnitSettingsAngleLatLon::Default(), not owned.
    CZelValueAngleLon();
    // `settings`, not owned; null means the shared object.
    explicit CZelValueAngleLon(CZelUnitSettingsAngleLatLon* settings);
    using CZelValueAngle::operator=;

protected:
    CZelUnitSettings* DefaultSettingsObject() override;
};
