// A plain Internet mail: sender, reply address, To, Cc and Bcc recipients, subject
// and body. It knows nothing of transport: a sender asks it for Header() and Body().
//
// Header lines are closed by "\r\n"; no blank line closes the header (the sender
// writes it), nothing folds long lines or encodes non-ASCII text, and Bcc recipients
// never appear in it.
#pragma once

#include <Zel260/mail/ZelMailHelper.h>
#include <Zel260/platform/CString.h>

#include <vector>

class CZelMailMessage {
public:
    using MAIL_ADDRESS = ZelMailHelper::MAIL_ADDRESS;
    enum eRecipientTypes { To = 0, Cc = 1, Bcc = 2 };

    CZelMailMessage();
    virtual ~CZelMailMessage();

    // Parses "Name <address>" or a bare "address" and appends it to the list of
    // `type`. Returns 1, or 0 when the address fails CheckMailAddress or
    // TransformMailAdress or the type is unknown (nothing is added then).
    virtual int AddRecipient(const char* address, eRecipientTypes type);
    // Splits `addresses` at every "," (also inside a quoted name) and adds each piece
    // by AddRecipient, ignoring refusals. Always returns 1.
    virtual int AddMultipleRecipients(const char* addresses, eRecipientTypes type);
    // 1 when removed; 0 for an unknown type or an index out of range.
    virtual int DeleteRecipient(unsigned int index, eRecipientTypes type);
    // Address and name of entry `index` of the list; 1, or 0 (outputs untouched) for
    // an unknown type or an index out of range.
    virtual int Recipient(CString& address, CString& name, unsigned int index, eRecipientTypes type);
    // Count of all three lists together.
    virtual unsigned int GetNumRecipients();
    virtual unsigned int GetNumRecipientsTo();
    virtual unsigned int GetNumRecipientsCc();
    virtual unsigned int GetNumRecipientsBcc();
    // The X-Mailer value; starts as MailerNameDefault().
    virtual const CString& MailerName();
    virtual void MailerName(const char* name);
    // The sender. The text form is parsed like a recipient but not checked.
    virtual MAIL_ADDRESS From();
    virtual void From(const char* address);
    virtual void From(MAIL_ADDRESS address);
    // The reply address; a Reply-To line is written only when its address is set.
    virtual MAIL_ADDRESS ReplyTo();
    virtual void ReplyTo(const char* address);
    virtual void ReplyTo(MAIL_ADDRESS address);
    // Date (now, UTC), From, Reply-To, To, Cc, X-Mailer and Subject lines.
    virtual const CString Header();
    virtual const CString& Subject();
    virtual void Subject(const char* subject);
    // The body as it stands.
    virtual const CString Body();
    virtual void Body(const char* body);

    // Process-wide starting value of the mailer name ("ZelMail"); a change affects
    // messages made afterwards.
    static void MailerNameDefault(const char* name);
    static const CString& MailerNameDefault();

protected:
    // TRUE when the address is not empty and holds none of blank, '"', '<', '>',
    // and the name holds none of '"', '@', '<', '>'.
    virtual int CheckMailAddress(MAIL_ADDRESS address);
    // Hook that may veto an address: removes '"', '@', '<', '>' from its copy of the
    // name and returns CheckMailAddress of the copy. Nothing of the copy is kept.
    virtual int TransformMailAdress(MAIL_ADDRESS address);

    // "Name <address>": the name is what stands before the first '<' or '>',
    // trimmed; the address what follows it up to the next '<' or '>'. Without
    // either, the whole text is the address.
    static MAIL_ADDRESS MailAddressFromString(const char* text);

    std::vector<MAIL_ADDRESS> m_to;
    std::vector<MAIL_ADDRESS> m_cc;
    std::vector<MAIL_ADDRESS> m_bcc;
    CString m_mailerName;
    MAIL_ADDRESS m_from;
    MAIL_ADDRESS m_replyTo;
    CString m_subject;
    CString m_body;

private:
    std::vector<MAIL_ADDRESS>* List(eRecipientTypes type);
    static CString& MailerNameDefaultStore();
};
