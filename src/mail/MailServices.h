// The few services the mail classes take from other folders of the library, each
// behind one function so that the mail code doesn't care where it comes from.
#pragma once

#include <Zel260/platform/CString.h>

#include <cstddef>
#include <memory>
#include <string>

namespace zelmail {

// "Date: " value: the time now in UTC as "%a, %d %b %y %H:%M:%S GMT", English names.
CString DateNowUtc();

// The whole content of a file, in memory while the object lives. It is copied,
// not mapped: a file that another program truncates while it is mapped would
// kill the process at the first read past its new end.
class FileContent {
public:
    // False when the file can't be opened or read, or memory for it can't be had.
    bool Load(const CString& path);
    unsigned char* data() { return m_data.get(); }
    std::size_t size() const { return m_size; }

private:
    std::unique_ptr<unsigned char[]> m_data;
    std::size_t m_size = 0;
};

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
