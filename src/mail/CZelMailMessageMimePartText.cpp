#include <Zel260/mail/CZelMailMessageMimePartText.h>

namespace {

CString& charsetDefault()
{
    static CString s("iso-8859-1");
    return s;
}
CString& contentTypeDefault()
{
    static CString s("text/plain");
    return s;
}
CString& encodingDefault()
{
    static CString s("quoted-printable");
    return s;
}

} // namespace

CZelMailMessageMimePartText::CZelMailMessageMimePartText(CString text)
    : m_text(std::move(text)), m_contentType(contentTypeDefault()), m_charset(charsetDefault()),
      m_contentTransferEncoding(encodingDefault())
{
}

CString CZelMailMessageMimePartText::Body() { return m_text; }

CString CZelMailMessageMimePartText::Header()
{
    return "Content-type: " + m_contentType + "; charset=\"" + m_charset + "\"\r\n" +
           "Content-transfer-encoding: " + m_contentTransferEncoding + "\r\n";
}

const CString& CZelMailMessageMimePartText::ContentType() { return m_contentType; }
void CZelMailMessageMimePartText::ContentType(const char* type) { m_contentType = type; }
const CString& CZelMailMessageMimePartText::Text() { return m_text; }
void CZelMailMessageMimePartText::Text(const char* text) { m_text = text; }
const CString& CZelMailMessageMimePartText::Charset() { return m_charset; }
void CZelMailMessageMimePartText::Charset(const char* charset) { m_charset = charset; }
const CString& CZelMailMessageMimePartText::ContentTransferEncoding() { return m_contentTransferEncoding; }
void CZelMailMessageMimePartText::ContentTransferEncoding(const char* encoding) { m_contentTransferEncoding = encoding; }

const CString& CZelMailMessageMimePartText::CharsetDefault() { return charsetDefault(); }
void CZelMailMessageMimePartText::CharsetDefault(const char* charset) { charsetDefault() = charset; }
const CString& CZelMailMessageMimePartText::ContentTypeDefault() { return contentTypeDefault(); }
void CZelMailMessageMimePartText::ContentTypeDefault(const char* type) { contentTypeDefault() = type; }
const CString& CZelMailMessageMimePartText::ContentTransferEncodingDefault() { return encodingDefault(); }
void CZelMailMessageMimePartText::ContentTransferEncodingDefault(const char* encoding) { encodingDefault() = encoding; }
