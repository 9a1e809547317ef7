// Unit settings: in which unit and with which format a family of values is shown.
// A value points to one of the shared objects (Default() of the derived classes)
// unless it brought its own.
#pragma once

#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CString.h>
#include <Zel260/values/CZelFormat.h>

#include <memory>

class CZelUnitSettings : public CObject {
    DECLARE_DYNCREATE(CZelUnitSettings)

public:
    // Unit 2 (not fixed yet), status 0, format CZelFormat(2, 0, 0, null).
    CZelUnitSettings();
    // The given unit (see CZelFormat.h) and template `format` (null: none).
    CZelUnitSettings(long unit, const char* format);
    // Copies make a copy of the format object.
    CZelUnitSettings(const CZelUnitSettings& other);
    CZelUnitSettings& operator=(const CZelUnitSettings& other);
    ~CZelUnitSettings() override;

    virtual long Unit() const;
    // Stores the unit and gives the format its abbreviation; returns Status().
    virtual int Unit(long unit);
    // The abbreviation of the unit, by the format's use-seconds-only.
    virtual void GetUnitAbbreviation(CString& abbreviation) const;
    // The owned format object; never null.
    virtual CZelFormat* Format() const;
    // Sets the template of the format (null or empty is ignored); returns Status().
    virtual int Format(const char* format);
    // Forwarded to the format (CZelFormat::Precision): decimals of a decimal unit,
    // below 1 meaning 6; units 12 and 15 get precision - 5 decimals of the seconds,
    // five below precision 6. Any int is accepted.
    virtual void Precision(int precision);
    virtual int Precision() const;
    // Forwarded to the format: nonzero cuts trailing zeros, one digit stays behind ".".
    virtual void TrimTrailingZeros(int on);
    virtual int TrimTrailingZeros() const;
    // The first error since the last call, then 0.
    virtual int Status();
    int IsValid() const { return m_status == 0; }

    // The abbreviation of `unit` as a CZelFormat(unit, useSecOnly, 0, null) has it.
    static void UnitAbbreviation(long unit, CString& abbreviation, int useSecOnly);

protected:
    // Stores the unit, sets the template, then the abbreviation; returns Status().
    int Unit(long unit, const char* format);

private:
    long m_unit = 2;
    int m_status = 0;
    std::unique_ptr<CZelFormat> m_format;
};
