#include <Zel260/mail/CZelMailMessageMimePartBinary.h>
#include <Zel260/mail/ZelEncodeFile.h>

#include "mail/MailServices.h"

namespace {

CString& dispositionDefault()
{
    static CString s("attachment");
    return s;
}
CString& contentTypeDefault()
{
    static CString s("application/octet-stream");
    return s;
}
CString& encodingDefault()
{
    static CString s("Base64");
    return s;
}

} // namespace

CZelMailMessageMimePartBinary::CZelMailMessageMimePartBinary(CString fileName)
    : m_fileName(std::move(fileName)), m_contentType(contentTypeDefault()),
      m_contentDisposition(dispositionDefault()), m_contentTransferEncoding(encodingDefault())
{
}

CString CZelMailMessageMimePartBinary::Body() { return ZelEncodeBase64(m_fileName); }

CString CZelMailMessageMimePartBinary::Header()
{
    CString base, ext;
    zelmail::SplitFileName(m_fileName, base, ext);
    const CString file = base + ext;
    return "Content-type: " + m_contentType + "; name=\"" + file + "\"\r\n" + "Content-Disposition: " +
           m_contentDisposition + "; filename=\"" + file + "\"\r\n" + "Content-transfer-encoding: " +
           m_contentTransferEncoding + "\r\n";
}

const CString& CZelMailMessageMimePartBinary::ContentType() { return m_contentType; }
void CZelMailMessageMimePartBinary::ContentType(const char* type) { m_contentType = type; }
const CString& CZelMailMessageMimePartBinary::Filename() { return m_fileName; }
void CZelMailMessageMimePartBinary::Filename(const char* fileName) { m_fileName = fileName; }
const CString& CZelMailMessageMimePartBinary::ContentDisposition() { return m_contentDisposition; }
void CZelMailMessageMimePartBinary::ContentDisposition(const char* disposition) { m_contentDisposition = disposition; }
const CString& CZelMailMessageMimePartBinary::ContentTransferEncoding() { return m_contentTransferEncoding; }
void CZelMailMessageMimePartBinary::ContentTransferEncoding(const char* encoding)
{
    m_contentTransferEncoding = encoding;
}

const CString& CZelMailMessageMimePartBinary::ContentDispositionDefault() { return dispositionDefault(); }
void CZelMailMessageMimePartBinary::ContentDispositionDefault(const char* disposition)
{
    dispositionDefault() = disposition;
}
const CString& CZelMailMessageMimePartBinary::ContentTypeDefault() { return contentTypeDefault(); }
void CZelMailMessageMimePartBinary::ContentTypeDefault(const char* type) { contentTypeDefault() = type; }
const CString& CZelMailMessageMimePartBinary::ContentTransferEncodingDefault() { return encodingDefault(); }
void CZelMailMessageMimePartBinary::ContentTransferEncodingDefault(const char* encoding)
{
    encodingDefault() = encoding;
}
