#include "TimeProfile.h"

#include <Zel260/frame/ZelModule.h>
#include <Zel260/mail/ZelEncode.h>
#include <Zel260/services/CZelProfileEntries.h>

namespace zeltime {

CString ReadProfileString(const char* section, const char* entry, const char* defaultValue)
{
    return CZelProfileEntries::ReadZelProfileString(section, entry, defaultValue);
}

unsigned int ReadProfileInt(const char* section, const char* entry, int defaultValue)
{
    return CZelProfileEntries::ReadZelProfileInt(section, entry, defaultValue);
}

int WriteProfileString(const char* section, const char* entry, const char* value)
{
    return CZelProfileEntries::WriteZelProfileString(section, entry, value);
}

int WriteProfileInt(const char* section, const char* entry, int value)
{
    return CZelProfileEntries::WriteZelProfileInt(section, entry, value);
}

CString EncodeBase64(const unsigned char* data, unsigned long size)
{
    // The encoder only reads its input; its signature predates const.
    return ZelEncodeBase64(const_cast<unsigned char*>(data), size, 0);
}

unsigned long DecodeBase64InPlace(std::vector<unsigned char>& buffer)
{
    if (buffer.empty() || buffer.back() != 0)
        buffer.push_back(0);
    return ZelDecodeBase64(buffer.data());
}

CString LibraryString(unsigned int id) { return ZelLoadLibraryString(id); }

bool LoadStringFrom(HINSTANCE module, unsigned int id, CString& text)
{
    ZelSetResourceHandle(module);
    const bool ok = text.LoadString(id) != 0;
    ZelRestoreResourceHandle();
    return ok;
}

} // namespace zeltime
