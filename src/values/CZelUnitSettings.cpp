#include <Zel260/values/CZelUnitSettings.h>

IMPLEMENT_DYNCREATE(CZelUnitSettings, CObject)

CZelUnitSettings::CZelUnitSettings() : m_format(std::make_unique<CZelFormat>(2, 0, 0, nullptr)) {}

CZelUnitSettings::CZelUnitSettings(long unit, const char* format)
    : m_unit(unit), m_format(std::make_unique<CZelFormat>(unit, 0, 0, format))
{
}

CZelUnitSettings::CZelUnitSettings(const CZelUnitSettings& other)
    : m_unit(other.m_unit), m_status(other.m_status), m_format(std::make_unique<CZelFormat>(*other.m_format))
{
}

CZelUnitSettings& CZelUnitSettings::operator=(const CZelUnitSettings& other)
{
    if (this != &other) {
        m_unit = other.m_unit;
        m_status = other.m_status;
        *m_format = *other.m_format;
    }
    return *this;
}

CZelUnitSettings::~CZelUnitSettings() = default;

long CZelUnitSettings::Unit() const { return m_unit; }

int CZelUnitSettings::Unit(long unit)
{
    m_unit = unit;
    m_format->SetUnitAbbreviation(unit);
    return Status();
}

int CZelUnitSettings::Unit(long unit, const char* format)
{
    m_unit = unit;
    m_format->Format(format);
    m_format->SetUnitAbbreviation(unit);
    return Status();
}

void CZelUnitSettings::GetUnitAbbreviation(CString& abbreviation) const
{
    UnitAbbreviation(m_unit, abbreviation, m_format->UseSecOnly());
}

CZelFormat* CZelUnitSettings::Format() const { return m_format.get(); }

int CZelUnitSettings::Format(const char* format) { return Unit(m_unit, format); }

void CZelUnitSettings::Precision(int precision) { m_format->Precision(precision); }
int CZelUnitSettings::Precision() const { return m_format->Precision(); }
void CZelUnitSettings::TrimTrailingZeros(int on) { m_format->TrimTrailingZeros(on); }
int CZelUnitSettings::TrimTrailingZeros() const { return m_format->TrimTrailingZeros(); }

int CZelUnitSettings::Status()
{
    const int status = m_status;
    m_status = 0;
    return status;
}

void CZelUnitSettings::UnitAbbreviation(long unit, CString& abbreviation, int useSecOnly)
{
    CZelFormat(unit, useSecOnly, 0, nullptr).GetUnitAbbreviation(abbreviation);
}
