#include <Zel260/mail/CZelMailMessageMimeContainer.h>

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
    CString b = m_preMime;
    for (auto* part : m_parts) {
        b += "\r\n--" + m_boundary + "\r\n";
        b += part->Header();
        b += "\r\n";
        b += part->Body();
    }
    b += "\r\n--" + m_boundary + "--\r\n";
    b += m_postMime;
    return b;
}

const CString& CZelMailMessageMimeContainer::Boundary() { return m_boundary; }
void CZelMailMessageMimeContainer::Boundary(const char* boundary) { m_boundary = boundary; }
const CString& CZelMailMessageMimeContainer::PreMime() { return m_preMime; }
void CZelMailMessageMimeContainer::PreMime(const char* text) { m_preMime = text; }
const CString& CZelMailMessageMimeContainer::PostMime() { return m_postMime; }
void CZelMailMessageMimeContainer::PostMime(const char* text) { m_postMime = text; }
