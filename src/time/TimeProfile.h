// The time folder's access to the library's profile and to Base64, in one place.
#pragma once

#include <Zel260/platform/CString.h>

#include <vector>

namespace zeltime {

CString ReadProfileString(const char* section, const char* entry, const char* defaultValue);
unsigned int ReadProfileInt(const char* section, const char* entry, int defaultValue);
int WriteProfileString(const char* section, const char* entry, const char* value);
int WriteProfileInt(const char* section, const char* entry, int value);

CString EncodeBase64(const unsigned char* data, unsigned long size);
// Decodes the zero-terminated text in `buffer` in place; returns the byte count.
unsigned long DecodeBase64InPlace(std::vector<unsigned char>& buffer);

// A text of the library's string table; empty when it has none.
CString LibraryString(unsigned int id);

// Loads the text `id` from `module`, with the resource handle switched for the call.
bool LoadStringFrom(HINSTANCE module, unsigned int id, CString& text);

} // namespace zeltime
