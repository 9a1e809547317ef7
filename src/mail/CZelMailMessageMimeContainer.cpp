#include <Zel260/mail/CZelMailMessageMimeContainer.h>

#include <Zel260/mail/CZelMailMessageMimePartBinary.h>

#include "mail/Base64FileReader.h"

#include <algorithm>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

namespace {

// The library's own file part, whose Body() is known to be the Base64 of its file.
// A class derived from it may give another body, so it doesn't qualify.
CZelMailMessageMimePartBinary* plainBinaryPart(CZelMailMessageMimePart* part)
{
    if (typeid(*part) != typeid(CZelMailMessageMimePartBinary))
        return nullptr;
    return static_cast<CZelMailMessageMimePartBinary*>(part);
}

CString& boundaryDefaultStore()
{
    static CString boundary("_NextPart_CZelMail_1dE8e48F60beBCECoestrsf");
    return boundary;
}

} // namespace

CZelMailMessageMimeContainer::CZelMailMessageMimeContainer() : m_boundary(BoundaryDefault()) {}

CZelMailMessageMimeContainer::~CZelMailMessageMimeContainer()
{
    for (auto* part : m_parts)
        delete part;
}

const CString& CZelMailMessageMimeContainer::BoundaryDefault() { return boundaryDefaultStore(); }
void CZelMailMessageMimeContainer::BoundaryDefault(const char* boundary) { boundaryDefaultStore() = boundary; }

int CZelMailMessageMimeContainer::AddMimePart(CZelMailMessageMimePart* part)
{
    // Each part is deleted once by the destructor, so it may stand in the list once.
    if (!part || std::find(m_parts.begin(), m_parts.end(), part) != m_parts.end())
        return 0;
    m_parts.push_back(part);
    return 1;
}

const CString CZelMailMessageMimeContainer::Header()
{
    CString h = CZelMailMessage::Header();
    if (m_parts.empty())
        return h;
    h += "MIME-Version: 1.0\r\n";
    if (m_parts.size() == 1)
        h += m_parts.front()->Header();
    else
        h += "Content-Type: multipart/mixed;\r\n\tboundary=" + m_boundary + "\r\n";
    return h;
}

const CString CZelMailMessageMimeContainer::Body()
{
    if (m_parts.empty())
        return CZelMailMessage::Body();
    if (m_parts.size() == 1)
        return m_parts.front()->Body();
    // Attachments make this text large: gather the pieces first and copy each once
    // into a text reserved at its final size. A file attachment is not even copied:
    // its Base64 is written straight into place.
    struct Piece {
        CString header;
        CString body;
        std::unique_ptr<zelmail::Base64FileReader> file;
    };
    std::vector<Piece> pieces(m_parts.size());
    const std::size_t boundary = m_boundary.str().size();
    std::size_t total = m_preMime.str().size() + m_postMime.str().size() + 8 + boundary;
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        Piece& piece = pieces[i];
        piece.header = m_parts[i]->Header();
        if (auto* binary = plainBinaryPart(m_parts[i])) {
            // A file that can't be opened gives the empty part, as Body() would.
            auto file = std::make_unique<zelmail::Base64FileReader>();
            if (file->Open(binary->Filename())) {
                total += file->EncodedLength();
                piece.file = std::move(file);
            }
        } else {
            piece.body = m_parts[i]->Body();
            total += piece.body.str().size();
        }
        total += piece.header.str().size() + boundary + 8;
    }
    std::string b;
    // Room for the line end a sender adds, so that it doesn't copy the whole text.
    b.reserve(total + 2);
    b += m_preMime.str();
    for (Piece& piece : pieces) {
        b += "\r\n--";
        b += m_boundary.str();
        b += "\r\n";
        b += piece.header.str();
        b += "\r\n";
        if (piece.file)
            piece.file->AppendTo(b); // a file cut short meanwhile leaves the part empty
        else
            b += piece.body.str();
    }
    b += "\r\n--";
    b += m_boundary.str();
    b += "--\r\n";
    b += m_postMime.str();
    return CString(std::move(b));
}

const CString& CZelMailMessageMimeContainer::Boundary() { return m_boundary; }
void CZelMailMessageMimeContainer::Boundary(const char* boundary) { m_boundary = boundary; }
const CString& CZelMailMessageMimeContainer::PreMime() { return m_preMime; }
void CZelMailMessageMimeContainer::PreMime(const char* text) { m_preMime = text; }
const CString& CZelMailMessageMimeContainer::PostMime() { return m_postMime; }
void CZelMailMessageMimeContainer::PostMime(const char* text) { m_postMime = text; }
