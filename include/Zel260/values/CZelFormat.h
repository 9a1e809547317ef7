// One number in one unit to the text the user sees.
//
// Units (eUnit, a long): 11 decimal degree, 12 DMS in three fields, 13 packed DMS
// (ddd.mmss), 14 grad, 15 gon in three fields, 16 packed gon (ggg.ccCC), 17 revolution,
// 18 radian, 21 metre, 22 US survey foot, 23 international foot. Any other number
// formats as a plain decimal number with an empty abbreviation.
//
// Three ways of writing a number, chosen by ConvertToString:
//  - template: when a template has been set with Format(const char*);
//  - sexagesimal: units 12 and 15 (packed value in, three fields out), unless
//    use-seconds-only is on;
//  - decimal: everything else, "% .*f" so a positive number starts with a blank.
// Numbers always use ".", whatever the locale.
#pragma once

#include <Zel260/platform/CString.h>

#include <string>

class CZelFormat {
public:
    // Defaults: no template, DMS symbols on, no trimming, use-seconds-only off,
    // limit-to-circle off, precision 6.
    CZelFormat();
    // Sets the two flags, takes the abbreviation of `unit` (looking at `useSecOnly`)
    // and the template `format` unless it is null or empty.
    CZelFormat(long unit, int useSecOnly, int limitToCircle, const char* format);
    CZelFormat(const CZelFormat&) = default;
    CZelFormat& operator=(const CZelFormat&) = default;
    virtual ~CZelFormat();

    // The text of the field %U. A null or empty text is ignored; the template is not
    // rebuilt, so a template built before keeps the old abbreviation.
    virtual void SetUnitAbbreviation(const char* abbreviation);
    // The abbreviation of `unit` ("dec", "", "deg", "grad", "", "gon", "rev", "rad",
    // "m", "fts", "fti"; with use-seconds-only on, the angle units give `"` or "cc"),
    // empty for any other unit. Rebuilds the template when one is set.
    virtual void SetUnitAbbreviation(long unit);
    virtual void GetUnitAbbreviation(CString& abbreviation) const;

    // The built template (every %U replaced), not the template as given.
    virtual CString Format();
    // Sets the template and builds it. Null or empty is ignored: a template can't be
    // removed once set. Fields: %U abbreviation; %? marks that brackets are in use
    // (after index 2); %[ ... %] two groups, the first for the decimal units, the second
    // for units 12 and 15; printf conversions of the value for the decimal units (".*f"
    // takes the precision); %DegOrG %degOrG %MinOrC %minOrC %SecOrCC %secOrCC for units
    // 12 and 15, the lower-case ones with their symbol. A conversion that doesn't fit
    // the arguments (anything but a floating conversion, or one too many) is written
    // as it stands.
    virtual void Format(const char* format);
    // Every occurrence of `search` in the template is replaced by `replacement` before
    // formatting. A null argument empties its field; an empty search does nothing.
    virtual void CustomFormat(const char* search, const char* replacement);
    // Number of decimals on the decimal path (below 1 means 6). For units 12 and 15 the
    // seconds get precision - 5 decimals in a field of precision - 2, and a precision
    // below 6 means 5 decimals in a field of 8. A field that would need more than
    // 4194304 characters (a precision or template width in the millions) gets no text.
    virtual void Precision(int precision);
    virtual int Precision();

    void UseDmsSymbols(int on) { m_useDmsSymbols = on; }
    int UseDmsSymbols() const { return m_useDmsSymbols; }
    // Fields of 0 degrees (and 0 minutes) are left out on units 12 and 15.
    void TrimLeadingZeros(int on) { m_trimLeadingZeros = on; }
    int TrimLeadingZeros() const { return m_trimLeadingZeros; }
    // Zeros at the end are cut, but one digit stays behind the ".".
    void TrimTrailingZeros(int on) { m_trimTrailingZeros = on; }
    int TrimTrailingZeros() const { return m_trimTrailingZeros; }
    // Angles are written in their smallest subunit (seconds or cc). Formatting a
    // value of a non-angular unit switches this off in the object for good.
    void UseSecOnly(int on) { m_useSecOnly = on; }
    int UseSecOnly() const { return m_useSecOnly; }
    // Rounding of units 12 and 15 stays within one circle (see Pim32Angle.h).
    void LimitToCircle(int on) { m_limitToCircle = on; }
    int LimitToCircle() const { return m_limitToCircle; }

    // Writes `value`, given in `unit`, into `result`. Always returns 0. On the template
    // path `result` keeps what the caller gave when nothing is to be written.
    virtual int ConvertToString(double value, long unit, CString& result);

private:
    void BuildFmtList();
    const std::string& PreparedTemplate(bool sexagesimal) const;
    void ConvertTemplate(double value, long unit, CString& result, const char* degree) const;
    void ConvertSexagesimal(double value, long unit, CString& result, const char* degree) const;
    void ConvertDecimal(double value, CString& result) const;
    void Tail(CString& result) const;

    CString m_unitAbbreviation;
    CString m_builtFormat;
    CString m_formatTemplate;
    CString m_customSearch;
    CString m_customReplacement;
    int m_enabled = 1;
    int m_useDmsSymbols = 1;
    int m_trimLeadingZeros = 0;
    int m_trimTrailingZeros = 0;
    int m_useSecOnly = 0;
    int m_limitToCircle = 0;
    int m_hasStarPrecision = 0;
    int m_precision = 6;
    mutable std::string m_prepared[2];
    mutable bool m_preparedValid[2] = {false, false};
};

// A double with a sensible number of digits and no unit: "%g" for magnitudes up to
// 1e-11 and from 1e13 on, otherwise 5 decimals above 1 and 5 - floor(log10(|v|))
// at or below 1; trailing zeros are then trimmed to one digit behind the separator
// ("1.0", "1234.5", "0.00012", "1e+20"). 0 gives "0".
CString ZelAdvancedFormatDouble(const double& value);
