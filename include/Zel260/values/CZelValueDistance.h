// A distance in metres.
#pragma once

#include <Zel260/values/CZelUnitSettingsDistance.h>
#include <Zel260/values/CZelValue.h>

class CZelValueDistance : public CZelValue {
public:
    // The shared CZelUnitSettingsDistance::Default(), not owned.
    CZelValueDistance();
    // `settings`, not owned; null means the shared object.
    explicit CZelValueDistance(CZelUnitSettingsDistance* settings);
    // Own settings CZelUnitSettingsDistance(unit, format), then the number or text in
    // `unit`.
    CZelValueDistance(double value, long unit, const char* format);
    CZelValueDistance(const char* text, long unit, const char* format);
    // The number or text in the unit of `settings` (null: the shared object).
    CZelValueDistance(double value, CZelUnitSettingsDistance* settings);
    CZelValueDistance(const char* text, CZelUnitSettingsDistance* settings);

    using CZelValue::operator=;
    using CZelValue::ConvertToStd;
    using CZelValue::ConvertStdTo;

    // The text in the settings' unit, precision -1, limit 0.
    int GetString(CString& text) override;
    int SetString(const char* text) override;
    // Stores the number unchanged; returns 1.
    int SetDouble(double value) override;
    // "text abbr".
    int StdFormat(CString& text) override;
    void GetUnitAbbreviation(CString& abbreviation) override;

    // Text in `unit` (2 and 20: the settings' unit), read by strtod; precision and
    // limit play no part for distances.
    int ConvertToStd(const char* text, long unit, int precision, unsigned long limit) override;
    int ConvertToStd(double value, long unit, int precision, unsigned long limit) override;
    // The number in `unit`, written by the settings' format in the settings' unit.
    int ConvertStdTo(CString& text, long unit, int precision, unsigned long limit) override;
    int ConvertStdTo(double& number, long unit, int precision, unsigned long limit) override;
    int ConvertStdTo(CString& text, CZelUnitSettings* other) override;

protected:
    CZelUnitSettings* DefaultSettingsObject() override;
    // 2 and 20 become the settings' unit; when that is still 2, the stored unit of the
    // settings file, or 21 when none serves.
    void CheckUnit(long& unit);
};
