// The few services the mail classes take from other folders of the library, each
// behind one function so that the mail code doesn't care where it comes from.
#pragma once

#include <Zel260/platform/CString.h>

#include <cstddef>
#include <string>

namespace zelmail {

// "Date: " value: the time now in UTC as "%a, %d %b %y %H:%M:%S GMT", English names.
CString DateNowUtc();

// The whole content of a file; false when it can't be opened or read.
bool ReadWholeFile(const CString& path, std::string& content);

// Base name and extension (with its dot) of the last element of a path; either
// separator counts.
void SplitFileName(const CString& path, CString& baseName, CString& extension);

// Base64 of `size` bytes with a line break after every `lineLength` characters.
CString EncodeBase64(const unsigned char* data, std::size_t size, unsigned int lineLength);

// The text `id` of the library's string table; empty when it has none.
CString LoadLibraryString(unsigned int id);

// Shows the wait cursor while it lives.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace zelmail
