// A text part. Its body is the text unchanged, whatever encoding it declares: the
// application encodes beforehand if it must (ZelEncodeIso8859).
#pragma once

#include <Zel260/mail/CZelMailMessageMimePart.h>

class CZelMailMessageMimePartText : public CZelMailMessageMimePart {
public:
    // Type, charset and encoding start from the process-wide defaults.
    explicit CZelMailMessageMimePartText(CString text = CString());

    CString Body() override;
    // "Content-type: <type>; charset=\"<charset>\"" and
    // "Content-transfer-encoding: <encoding>", each closed by "\r\n".
    CString Header() override;
    const CString& ContentType() override;
    void ContentType(const char* type);
    const CString& Text();
    void Text(const char* text);
    const CString& Charset();
    void Charset(const char* charset);
    const CString& ContentTransferEncoding();
    void ContentTransferEncoding(const char* encoding);

    // Process-wide defaults for parts made afterwards: "iso-8859-1", "text/plain",
    // "quoted-printable".
    static const CString& CharsetDefault();
    static void CharsetDefault(const char* charset);
    static const CString& ContentTypeDefault();
    static void ContentTypeDefault(const char* type);
    static const CString& ContentTransferEncodingDefault();
    static void ContentTransferEncodingDefault(const char* encoding);

private:
    CString m_text;
    CString m_contentType;
    CString m_charset;
    CString m_contentTransferEncoding;
};
