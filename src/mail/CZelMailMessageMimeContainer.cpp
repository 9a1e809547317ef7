#include <Zel260/mail/CZelMailMessageMimeContainer.h>

#include <string>
#include <vector>

namespace {

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
    if (!part)
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
    // Attachments make this text large: gather the pieces first and copy each once.
    std::vector<CString> headers, bodies;
    std::size_t total = m_preMime.str().size() + m_postMime.str().size() + 8 + m_boundary.str().size();
    for (auto* part : m_parts) {
        headers.push_back(part->Header());
        bodies.push_back(part->Body());
        total += headers.back().str().size() + bodies.back().str().size() + m_boundary.str().size() + 8;
    }
    std::string b;
    // Room for the line end a sender adds, so that it doesn't copy the whole text.
    b.reserve(total + 2);
    b += m_preMime.str();
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        b += "\r\n--";
        b += m_boundary.str();
        b += "\r\n";
        b += headers[i].str();
        b += "\r\n";
        b += bodies[i].str();
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
