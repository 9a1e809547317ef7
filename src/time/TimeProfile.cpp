#include "TimeProfile.h"

#include <Zel260/platform/ResourceModule.h>

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

// Interim store until the profile service is linked in: the same read and write
// semantics, kept in memory for the process.
namespace {

std::map<std::string, std::string>& store()
{
    static std::map<std::string, std::string> s;
    return s;
}

std::string key(const char* section, const char* entry)
{
    std::string k = std::string(section ? section : "") + "\x1f" + (entry ? entry : "");
    for (auto& c : k)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return k;
}

const char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

namespace zeltime {

CString ReadProfileString(const char* section, const char* entry, const char* defaultValue)
{
    auto it = store().find(key(section, entry));
    return it == store().end() ? CString(defaultValue) : CString(it->second.substr(0, 4095));
}

unsigned int ReadProfileInt(const char* section, const char* entry, int defaultValue)
{
    auto it = store().find(key(section, entry));
    if (it == store().end())
        return static_cast<unsigned int>(defaultValue);
    return static_cast<unsigned int>(std::strtol(it->second.c_str(), nullptr, 10));
}

int WriteProfileString(const char* section, const char* entry, const char* value)
{
    store()[key(section, entry)] = value ? value : "";
    return 1;
}

int WriteProfileInt(const char* section, const char* entry, int value)
{
    return WriteProfileString(section, entry, std::to_string(value).c_str());
}

CString EncodeBase64(const unsigned char* data, unsigned long size)
{
    std::string out;
    for (unsigned long i = 0; i < size; i += 3) {
        const unsigned b0 = data[i];
        const unsigned b1 = i + 1 < size ? data[i + 1] : 0;
        const unsigned b2 = i + 2 < size ? data[i + 2] : 0;
        out += Alphabet[b0 >> 2];
        out += Alphabet[((b0 & 3) << 4) | (b1 >> 4)];
        if (i + 1 < size)
            out += Alphabet[((b1 & 15) << 2) | (b2 >> 6)];
        if (i + 2 < size)
            out += Alphabet[b2 & 63];
    }
    while (out.size() % 4)
        out += '=';
    return CString(out);
}

unsigned long DecodeBase64InPlace(std::vector<unsigned char>& buffer)
{
    if (buffer.empty() || buffer.back() != 0)
        buffer.push_back(0);
    unsigned long n = 0;
    int state = 0;
    unsigned carry = 0;
    for (size_t i = 0; buffer[i] && buffer[i] != '='; ++i) {
        const unsigned char c = buffer[i];
        if (c == '\r' || c == '\n') {
            state = 0;
            carry = 0;
            continue;
        }
        const char* p = std::strchr(Alphabet, c);
        if (!p || !*p)
            continue;
        const unsigned v = static_cast<unsigned>(p - Alphabet);
        switch (state) {
        case 0: carry = v; break;
        case 1: buffer[n++] = static_cast<unsigned char>((carry << 2) | (v >> 4)); carry = v & 15; break;
        case 2: buffer[n++] = static_cast<unsigned char>((carry << 4) | (v >> 2)); carry = v & 3; break;
        case 3: buffer[n++] = static_cast<unsigned char>((carry << 6) | v); break;
        }
        state = (state + 1) % 4;
    }
    buffer[n] = 0;
    return n;
}

const char* LibraryString(unsigned int id) { return ZelFindResourceString(ZelLibraryInstance(), id); }

bool LoadStringFrom(HINSTANCE module, unsigned int id, CString& text)
{
    const HINSTANCE saved = AfxGetResourceHandle();
    AfxSetResourceHandle(module);
    const bool ok = text.LoadString(id) != 0;
    AfxSetResourceHandle(saved);
    return ok;
}

} // namespace zeltime
