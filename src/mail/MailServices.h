// The few services the mail classes take from other folders of the library, each
// behind one function so that the mail code doesn't care where it comes from.
#pragma once

#include <Zel260/platform/CString.h>

namespace zelmail {

// "Date: " value: the time now in UTC as "%a, %d %b %y %H:%M:%S GMT", English names.
CString DateNowUtc();

// Base name and extension (with its dot) of the last element of a path; either
// separator counts.
void SplitFileName(const CString& path, CString& baseName, CString& extension);

// The text `id` of the library's string table; empty when it has none.
CString LoadLibraryString(unsigned int id);

// Marks the time the user-interface thread is tied up by a send. The core has no
// cursor of its own, so for now this does nothing; it is the one place where the
// application's wait cursor is to be shown.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace zelmail
