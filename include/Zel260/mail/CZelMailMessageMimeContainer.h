// A mail with MIME parts. With no part it is the plain message. With one part the
// part's header follows "MIME-Version: 1.0" and its body is the whole mail body.
// With two or more the body is multipart/mixed:
//   PreMime, then for each part "\r\n--<boundary>\r\n", its header, "\r\n", its body,
//   then "\r\n--<boundary>--\r\n", then PostMime.
// As soon as there is a part the plain body is left out: put the message text into
// a text part.
#pragma once

#include <Zel260/mail/CZelMailMessage.h>
#include <Zel260/mail/CZelMailMessageMimePart.h>

#include <vector>

class CZelMailMessageMimeContainer : public CZelMailMessage {
public:
    CZelMailMessageMimeContainer();
    // Deletes every part.
    ~CZelMailMessageMimeContainer() override;
    CZelMailMessageMimeContainer(const CZelMailMessageMimeContainer&) = delete;
    CZelMailMessageMimeContainer& operator=(const CZelMailMessageMimeContainer&) = delete;

    using CZelMailMessage::Body; // keeps the setter in view
    const CString Header() override;
    const CString Body() override;

    // Takes ownership of `part`. Returns 1; 0 (ownership stays with the caller) for a
    // null part or one already in this container.
    int AddMimePart(CZelMailMessageMimePart* part);

    const CString& Boundary();
    void Boundary(const char* boundary);
    // Text ahead of the first part and behind the last; used with two parts or more.
    const CString& PreMime();
    void PreMime(const char* text);
    const CString& PostMime();
    void PostMime(const char* text);

    // Process-wide starting boundary ("_NextPart_CZelMail_1dE8e48F60beBCECoestrsf").
    static const CString& BoundaryDefault();
    static void BoundaryDefault(const char* boundary);

protected:
    std::vector<CZelMailMessageMimePart*> m_parts;
    CString m_boundary;
    CString m_preMime;
    CString m_postMime;
};
