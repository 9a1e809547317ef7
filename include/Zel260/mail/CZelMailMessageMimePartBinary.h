// A file attachment. The file is read and encoded in Base64 each time Body() is
// asked for, not when the part is made.
#pragma once

#include <Zel260/mail/CZelMailMessageMimePart.h>

class CZelMailMessageMimePartBinary : public CZelMailMessageMimePart {
public:
    // Type, disposition and encoding start from the process-wide defaults.
    explicit CZelMailMessageMimePartBinary(CString fileName = CString());

    // The file's content in Base64, lines of 76; empty when the file can't be read
    // (a vanished attachment gives an empty part, not a failure).
    CString Body() override;
    // "Content-type: <type>; name=\"<file>\"",
    // "Content-Disposition: <disposition>; filename=\"<file>\"" and
    // "Content-transfer-encoding: <encoding>", each closed by "\r\n"; <file> is the
    // base name and extension of the path.
    CString Header() override;
    const CString& ContentType() override;
    void ContentType(const char* type);
    const CString& Filename();
    void Filename(const char* fileName);
    const CString& ContentDisposition();
    void ContentDisposition(const char* disposition);
    const CString& ContentTransferEncoding();
    void ContentTransferEncoding(const char* encoding);

    // Process-wide defaults for parts made afterwards: "attachment",
    // "application/octet-stream", "Base64".
    static const CString& ContentDispositionDefault();
    static void ContentDispositionDefault(const char* disposition);
    static const CString& ContentTypeDefault();
    static void ContentTypeDefault(const char* type);
    static const CString& ContentTransferEncodingDefault();
    static void ContentTransferEncodingDefault(const char* encoding);

private:
    CString m_fileName;
    CString m_contentType;
    CString m_contentDisposition;
    CString m_contentTransferEncoding;
};
