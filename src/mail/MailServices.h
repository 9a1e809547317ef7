// The few services the mail classes take from other folders of the library, each
// behind one function so that the mail code doesn't care where it comes from.
#pragma once

#include <Zel260/platform/CString.h>

#include <cstddef>
#include <string>

namespace zelmail {

// "Date: " value: the time now in UTC as "%a, %d %b %y %H:%M:%S GMT", English names.
CString DateNowUtc();

// The whole content of a file, in memory while the object lives. Large files are
// mapped rather than copied: an attachment is read once, by the encoder.
class FileContent {
public:
    FileContent() = default;
    ~FileContent();
    FileContent(const FileContent&) = delete;
    FileContent& operator=(const FileContent&) = delete;
    // False when the file can't be opened or read (a folder can't be read).
    bool Load(const CString& path);
    unsigned char* data();
    std::size_t size() const;

private:
    void* m_map = nullptr;
    std::size_t m_mapSize = 0;
    std::string m_copy;
};

// Base name and extension (with its dot) of the last element of a path; either
// separator counts.
void SplitFileName(const CString& path, CString& baseName, CString& extension);

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
