// A number in a standard unit (radians for angles, metres for distances) with the
// unit settings that say how it is shown.
//
// Units are those of CZelFormat.h, plus three that mean "the unit of the settings":
// 2 any value, 10 an angle, 20 a distance.
//
// Failures are a sticky status: the first error since the last Status() stays, and
// the conversions return Status(), which clears it. The only error is 1, an unknown
// unit in Convert. Text that can't be parsed gives 0 or what could be read, and no
// error.
//
// A value speaks double and text only: the integer and float accessors are inert
// (getters return 0, setters return 0 and store nothing).
#pragma once

#include <Zel260/platform/CString.h>

class CZelUnitSettings;

class CZelValue {
public:
    // Copies take value, settings pointer, owner flag, precision and status as they
    // stand. Owned settings are the exception: two owners of one object would both
    // delete it, so a copy of a value that owns its settings owns a copy of them.
    CZelValue(const CZelValue& other);
    CZelValue& operator=(const CZelValue& other);
    // Deletes owned settings.
    virtual ~CZelValue();

    // The text in the settings' unit. Return Status().
    virtual int GetString(CString& text) = 0;
    // Reads text in the settings' unit; always returns 1.
    virtual int SetString(const char* text) = 0;

    virtual short GetShort() { return 0; }
    virtual int SetShort(short) { return 0; }
    virtual unsigned short GetUshort() { return 0; }
    virtual int SetUshort(unsigned short) { return 0; }
    virtual int GetInt() { return 0; }
    virtual int SetInt(int) { return 0; }
    virtual unsigned int GetUint() { return 0; }
    virtual int SetUint(unsigned int) { return 0; }
    virtual long GetLong() { return 0; }
    virtual int SetLong(long) { return 0; }
    virtual unsigned long GetUlong() { return 0; }
    virtual int SetUlong(unsigned long) { return 0; }
    virtual float GetFloat() { return 0; }
    virtual int SetFloat(float) { return 0; }

    // The number in the standard unit.
    virtual double GetDouble();
    // Stores the number (angles wrap it, see CZelValueAngle.h); returns 1.
    virtual int SetDouble(double value);

    // The text with its unit. Returns Status().
    virtual int StdFormat(CString& text) = 0;

    // Releases the old settings (deleting them if owned), then takes `settings`;
    // `own` nonzero makes this value delete them.
    virtual void UnitSettings(CZelUnitSettings* settings, int own);
    virtual CZelUnitSettings* UnitSettings();
    virtual void GetUnitAbbreviation(CString& abbreviation) = 0;

    // Text or number in `unit` into the standard unit. `precision` rounds units 12,
    // 13, 15 and 16 (see Pim32Angle.h; -1 none), `limit` keeps them within a circle.
    // Return Status().
    virtual int ConvertToStd(const char* text, long unit, int precision, unsigned long limit) = 0;
    virtual int ConvertToStd(double value, long unit, int precision, unsigned long limit) = 0;
    // The same in the settings' unit, with the settings' precision when `usePrecision`
    // is nonzero (else -1) and the settings' limit when `useLimit` is nonzero and the
    // settings are angle settings (else 0).
    virtual int ConvertToStd(const char* text, int usePrecision, int useLimit);
    virtual int ConvertToStd(double value, int usePrecision, int useLimit);

    // The text of this value in `other`'s unit, written by this value's format.
    // A null `other` means this value's settings. Returns Status().
    virtual int ConvertStdTo(CString& text, CZelUnitSettings* other);
    // The standard number out into `unit`, as text (by the settings' format) or as a
    // number. Return Status(); on an unknown unit `number` is 0.
    virtual int ConvertStdTo(CString& text, long unit, int precision, unsigned long limit) = 0;
    virtual int ConvertStdTo(double& number, long unit, int precision, unsigned long limit) = 0;
    // The same in the settings' unit (see the three-argument ConvertToStd).
    virtual int ConvertStdTo(CString& text, int usePrecision, int useLimit);
    virtual int ConvertStdTo(double& number, int usePrecision, int useLimit);

    // The status, which is then cleared.
    int Status();
    // True when no error waits; doesn't clear.
    int IsValid() const { return m_status == 0; }
    // 6, or the precision of the settings given at construction.
    int Precision() const { return m_precision; }

    // The one conversion routine: `in` in `inUnit` to `out` in `outUnit`. Equal units
    // give `in` unchanged without any check. Otherwise `out` is 0 and the result 1
    // when either unit is outside 11..23 or is 19 or 20; units are converted through
    // radians or metres, and an angle unit converts to a length unit as if radians
    // were metres. Returns 0 on success.
    static int Convert(double in, long inUnit, double& out, long outUnit, int precision, unsigned long limit);

    CZelValue& operator=(double value) { SetDouble(value); return *this; }
    CZelValue& operator=(const char* text) { SetString(text); return *this; }
    CZelValue& operator=(const CString& text) { SetString(text); return *this; }
    CZelValue& operator=(short value) { SetShort(value); return *this; }
    CZelValue& operator=(unsigned short value) { SetUshort(value); return *this; }
    CZelValue& operator=(int value) { SetInt(value); return *this; }
    CZelValue& operator=(unsigned int value) { SetUint(value); return *this; }
    CZelValue& operator=(long value) { SetLong(value); return *this; }
    CZelValue& operator=(unsigned long value) { SetUlong(value); return *this; }
    CZelValue& operator=(float value) { SetFloat(value); return *this; }
    operator double() { return GetDouble(); }
    explicit operator short() { return GetShort(); }
    explicit operator unsigned short() { return GetUshort(); }
    explicit operator int() { return GetInt(); }
    explicit operator unsigned int() { return GetUint(); }
    explicit operator long() { return GetLong(); }
    explicit operator unsigned long() { return GetUlong(); }
    explicit operator float() { return GetFloat(); }

protected:
    CZelValue() = default;
    // Precision 6, or the settings' precision when `settings` isn't null.
    CZelValue(CZelUnitSettings* settings, int own);

    // Keeps `status` only while no earlier error waits.
    void Status(int status);
    // Deletes the settings if owned; clears the pointer in any case.
    void Release();
    // The settings, or the shared default settings of the kind when none are set.
    CZelUnitSettings* Settings();
    virtual CZelUnitSettings* DefaultSettingsObject() = 0;

    double m_value = 0.0;
    CZelUnitSettings* m_settings = nullptr;
    int m_ownsSettings = 0;
    int m_precision = 6;
    int m_status = 0;
};
