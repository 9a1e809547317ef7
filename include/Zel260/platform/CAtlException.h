// The platform failure that the time types raise for bad calendar fields and bad
// format tokens. It carries an HRESULT: E_FAIL for a field outside its range,
// E_INVALIDARG for a date the calendar can't represent or an unknown format token.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <exception>

class CAtlException : public std::exception {
public:
    explicit CAtlException(HRESULT hr = E_FAIL) noexcept : m_hr(hr) {}
    operator HRESULT() const noexcept { return m_hr; }
    const char* what() const noexcept override;

    HRESULT m_hr;
};

// Throws CAtlException(hr).
[[noreturn]] void AtlThrow(HRESULT hr);
