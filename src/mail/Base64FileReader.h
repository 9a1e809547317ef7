// The Base64 of a file in lines of 76, written in pieces onto the end of a larger
// text. A file read whole, encoded into a text of its own and then copied into the
// message would cost three buffers the size of the attachment; this costs one block
// of the file and the message text itself, which matters where every fresh page of
// memory is a fault.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

#include <cstddef>
#include <string>

namespace zelmail {

class Base64FileReader {
public:
    Base64FileReader() = default;
    ~Base64FileReader();
    Base64FileReader(const Base64FileReader&) = delete;
    Base64FileReader& operator=(const Base64FileReader&) = delete;

    // Opens the file (shared for reading) and takes its size. False when it can't
    // be opened or sized.
    bool Open(const CString& path);
    // Characters that AppendTo adds for the size found by Open.
    std::size_t EncodedLength() const;
    // Reads as many bytes as Open found and appends their encoding to `out`, the
    // same text as ZelEncodeBase64 of the whole content with line length 76; then
    // closes the file. False, with `out` as it was, when the file can't be read
    // that far (it shrank, or was never opened).
    bool AppendTo(std::string& out);

private:
    void Close();

    HANDLE m_file = INVALID_HANDLE_VALUE;
    std::size_t m_size = 0;
};

} // namespace zelmail
