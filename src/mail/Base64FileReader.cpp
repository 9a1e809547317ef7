#include "mail/Base64FileReader.h"

#include <Zel260/mail/ZelEncode.h>
#include <Zel260/shell/ZelFile.h>

#include <algorithm>
#include <memory>

namespace zelmail {

namespace {

constexpr unsigned kLineLength = 76;
// A line holds 57 bytes. Blocks of an even number of lines are encoded exactly as
// that stretch of the whole file would be: each ends with a line break, and their
// code and breaks come to a multiple of four characters, so the encoder adds no
// padding until the last block.
constexpr std::size_t kBlockBytes = 57 * 2 * 576;

} // namespace

Base64FileReader::~Base64FileReader() { Close(); }

void Base64FileReader::Close()
{
    if (m_file != INVALID_HANDLE_VALUE) {
        ZelFileClose(m_file);
        m_file = INVALID_HANDLE_VALUE;
    }
}

bool Base64FileReader::Open(const CString& path)
{
    Close();
    m_size = 0;
    // A shared lock: two mails may attach the same file at once.
    m_file = ZelFileOpen(path, GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ);
    if (m_file == INVALID_HANDLE_VALUE)
        return false;
    const LONG size = ZelFileSize(m_file);
    if (size < 0) {
        Close();
        return false;
    }
    m_size = static_cast<std::size_t>(size);
    return true;
}

std::size_t Base64FileReader::EncodedLength() const
{
    // The encoder's own arithmetic: its padding counts the line breaks too.
    const std::size_t code = m_size / 3 * 4 + (m_size % 3 ? m_size % 3 + 1 : 0);
    const std::size_t written = code + 2 * (code / kLineLength);
    return written + (4 - written % 4) % 4;
}

bool Base64FileReader::AppendTo(std::string& out)
{
    if (m_file == INVALID_HANDLE_VALUE)
        return false;
    const std::size_t start = out.size();
    out.reserve(start + EncodedLength());
    std::unique_ptr<unsigned char[]> block(new unsigned char[std::min(kBlockBytes, std::max<std::size_t>(m_size, 1))]);
    for (std::size_t left = m_size; left > 0;) {
        const std::size_t n = std::min(left, kBlockBytes);
        if (!ZelFileRead(m_file, block.get(), static_cast<DWORD>(n))) {
            out.resize(start);
            Close();
            return false;
        }
        out += ZelEncodeBase64(block.get(), static_cast<unsigned long>(n), kLineLength).str();
        left -= n;
    }
    Close();
    return true;
}

} // namespace zelmail
