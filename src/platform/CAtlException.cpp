#include <Zel260/platform/CAtlException.h>

const char* CAtlException::what() const noexcept
{
    switch (m_hr) {
    case E_FAIL: return "unspecified failure (E_FAIL)";
    case E_INVALIDARG: return "invalid argument (E_INVALIDARG)";
    case E_OUTOFMEMORY: return "out of memory (E_OUTOFMEMORY)";
    default: return "platform failure";
    }
}

void AtlThrow(HRESULT hr) { throw CAtlException(hr); }
