// A latitude: an angle with flag 1, shown with "N" or "S". Wrapped at plus and minus
// pi like a longitude; a range check of a quarter circle is the edit control's.
#pragma once

#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>
#include <Zel260/values/CZelValueAngle.h>

class CZelValueAngleLat : public CZelValueAngle {
public:
    // The shared CZelUnitSettingsAngleLatLon::Default(), not owned.
    CZelValueAngleLat();
    // `settings`, not owned; null means the shared object.
    explicit CZelValueAngleLat(CZelUnitSettingsAngleLatLon* settings);
    using CZelValueAngle::operator=;

protected:
    CZelUnitSettings* DefaultSettingsObject() override;
};
