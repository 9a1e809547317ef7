// An angle in radians. A plain angle lies strictly between -2 pi and 2 pi (SetDouble
// keeps the remainder by 2 pi with the sign of the number); latitudes and longitudes
// (CZelValueAngleLat, CZelValueAngleLon) lie between -pi and pi.
#pragma once

#include <Zel260/platform/Win32Types.h>
#include <Zel260/values/CZelUnitSettingsAngle.h>
#include <Zel260/values/CZelValue.h>

class CZelValueAngle : public CZelValue {
public:
    // The shared CZelUnitSettingsAngle::Default(), not owned.
    CZelValueAngle();
    // `settings`, not owned; null means the shared default object.
    explicit CZelValueAngle(CZelUnitSettingsAngle* settings);
    // Own settings CZelUnitSettingsAngle(unit, format), then the number or text in
    // `unit` is taken with precision -1 and limit 0.
    CZelValueAngle(double value, long unit, const char* format);
    CZelValueAngle(const char* text, long unit, const char* format);
    // The number or text in the unit of `settings` (null: the shared object).
    CZelValueAngle(double value, CZelUnitSettingsAngle* settings);
    CZelValueAngle(const char* text, CZelUnitSettingsAngle* settings);

    using CZelValue::operator=;
    using CZelValue::ConvertToStd;
    using CZelValue::ConvertStdTo;

    // Flag word: 0 plain angle, bit 0 latitude, bit 1 longitude.
    int IsLat() const { return (m_flag & 1) != 0; }
    int IsLon() const { return (m_flag & 2) != 0; }
    int IsLatOrLon() const { return (m_flag & 3) != 0; }
    void SetFlag(WORD flag) { m_flag = flag; }
    WORD GetFlag() const { return m_flag; }

    // The text in the settings' unit, precision and limit.
    int GetString(CString& text) override;
    // Reads text in the settings' unit; returns 1.
    int SetString(const char* text) override;
    // Keeps fmod(value, 2 pi); latitudes and longitudes are then brought into
    // [-pi, pi] by whole circles. Returns 1.
    int SetDouble(double value) override;
    // Units 12 and 15: the text (it holds its symbols); other units: "text [abbr]".
    int StdFormat(CString& text) override;
    void GetUnitAbbreviation(CString& abbreviation) override;

    // Text in `unit` (2 and 10: the settings' unit). Units 12 and 15 are read as
    // "deg min sec" after every character but digits, '-' and '.' has become a blank
    // ("12 30 15.5", "12°30'15.5\"" and "12g 30c 15.5cc" read alike); a negative field
    // makes the angle negative ("-0 30 0" is positive: zero has no sign). Other units
    // are read by strtod. A capital "S" or "W" anywhere negates the angle (so
    // "-12 30 15 S" is positive; a lower-case "s" does nothing).
    int ConvertToStd(const char* text, long unit, int precision, unsigned long limit) override;
    // A nonnegative precision of units 12 and 15 counts decimals of the seconds (cc),
    // 1 and up; 0 gives five decimals, the formatter's fixed form. Units 13 and 16 take
    // the angle functions' precision as it is (see Pim32Angle.h).
    int ConvertToStd(double value, long unit, int precision, unsigned long limit) override;
    // The text is written by the settings' format in the settings' unit (the number
    // is converted into `unit`). A latitude gets "N" or "S", a longitude "E" or "W"
    // (zero is "N" and "E"), and the number loses its sign; without a template the
    // letter follows a blank, with one it fills the template's field %Q.
    int ConvertStdTo(CString& text, long unit, int precision, unsigned long limit) override;
    int ConvertStdTo(double& number, long unit, int precision, unsigned long limit) override;
    int ConvertStdTo(CString& text, CZelUnitSettings* other) override;

protected:
    CZelValueAngle(CZelUnitSettingsAngle* settings, WORD flag);
    CZelUnitSettings* DefaultSettingsObject() override;
    // 2 and 10 become the settings' unit; when that is still 2, the stored unit of
    // the settings file (lat/lon or angle section), or 12 when none serves.
    void CheckUnit(long& unit);

private:
    int StringToNumber(const char* text, double& result, long unit);
    int WriteText(CString& text, long unit, int precision, unsigned long limit, long formatUnit);

    WORD m_flag = 0;
};
