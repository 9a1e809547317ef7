#include <Zel260/mail/CZelMailMessage.h>

#include "mail/MailServices.h"

#include <cstring>

namespace {

bool holdsAny(const CString& text, const char* chars) { return text.FindOneOf(chars) >= 0; }

void appendEntries(CString& out, const std::vector<ZelMailHelper::MAIL_ADDRESS>& list)
{
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i)
            out += ",";
        // The blank after the opening quote is part of the established form.
        out += "\" ";
        out += list[i].name;
        out += "\" <";
        out += list[i].address;
        out += ">";
    }
}

} // namespace

CZelMailMessage::CZelMailMessage() : m_mailerName(MailerNameDefault()) {}

CZelMailMessage::~CZelMailMessage() = default;

CString& CZelMailMessage::MailerNameDefaultStore()
{
    static CString name("ZelMail");
    return name;
}

void CZelMailMessage::MailerNameDefault(const char* name) { MailerNameDefaultStore() = name; }

const CString& CZelMailMessage::MailerNameDefault() { return MailerNameDefaultStore(); }

std::vector<ZelMailHelper::MAIL_ADDRESS>* CZelMailMessage::List(eRecipientTypes type)
{
    switch (type) {
    case To: return &m_to;
    case Cc: return &m_cc;
    case Bcc: return &m_bcc;
    }
    return nullptr;
}

ZelMailHelper::MAIL_ADDRESS CZelMailMessage::MailAddressFromString(const char* text)
{
    MAIL_ADDRESS a;
    CString s(text);
    int open = s.FindOneOf("<>");
    if (open < 0) {
        a.address = s;
        return a;
    }
    a.name = s.Left(open);
    a.name.Trim();
    CString rest = s.Mid(open + 1);
    int close = rest.FindOneOf("<>");
    a.address = close < 0 ? rest : rest.Left(close);
    return a;
}

int CZelMailMessage::CheckMailAddress(MAIL_ADDRESS a)
{
    if (a.address.IsEmpty() || holdsAny(a.address, " \"<>"))
        return 0;
    return holdsAny(a.name, "\"@<>") ? 0 : 1;
}

int CZelMailMessage::TransformMailAdress(MAIL_ADDRESS a)
{
    a.name.Remove('"');
    a.name.Remove('@');
    a.name.Remove('<');
    a.name.Remove('>');
    return CheckMailAddress(a);
}

int CZelMailMessage::AddRecipient(const char* address, eRecipientTypes type)
{
    MAIL_ADDRESS a = MailAddressFromString(address);
    if (!CheckMailAddress(a) || !TransformMailAdress(a))
        return 0;
    auto* list = List(type);
    if (!list)
        return 0;
    list->push_back(a);
    return 1;
}

int CZelMailMessage::AddMultipleRecipients(const char* addresses, eRecipientTypes type)
{
    CString all(addresses);
    int start = 0;
    for (;;) {
        int comma = all.Find(',', start);
        CString piece = comma < 0 ? all.Mid(start) : all.Mid(start, comma - start);
        AddRecipient(piece, type);
        if (comma < 0)
            break;
        start = comma + 1;
    }
    return 1;
}

int CZelMailMessage::DeleteRecipient(unsigned int index, eRecipientTypes type)
{
    auto* list = List(type);
    if (!list || index >= list->size())
        return 0;
    list->erase(list->begin() + index);
    return 1;
}

int CZelMailMessage::Recipient(CString& address, CString& name, unsigned int index, eRecipientTypes type)
{
    auto* list = List(type);
    if (!list || index >= list->size())
        return 0;
    address = (*list)[index].address;
    name = (*list)[index].name;
    return 1;
}

unsigned int CZelMailMessage::GetNumRecipients()
{
    return GetNumRecipientsTo() + GetNumRecipientsCc() + GetNumRecipientsBcc();
}
unsigned int CZelMailMessage::GetNumRecipientsTo() { return static_cast<unsigned int>(m_to.size()); }
unsigned int CZelMailMessage::GetNumRecipientsCc() { return static_cast<unsigned int>(m_cc.size()); }
unsigned int CZelMailMessage::GetNumRecipientsBcc() { return static_cast<unsigned int>(m_bcc.size()); }

const CString& CZelMailMessage::MailerName() { return m_mailerName; }
void CZelMailMessage::MailerName(const char* name) { m_mailerName = name; }

ZelMailHelper::MAIL_ADDRESS CZelMailMessage::From() { return m_from; }
void CZelMailMessage::From(const char* address) { m_from = MailAddressFromString(address); }
void CZelMailMessage::From(MAIL_ADDRESS address) { m_from = address; }

ZelMailHelper::MAIL_ADDRESS CZelMailMessage::ReplyTo() { return m_replyTo; }
void CZelMailMessage::ReplyTo(const char* address) { m_replyTo = MailAddressFromString(address); }
void CZelMailMessage::ReplyTo(MAIL_ADDRESS address) { m_replyTo = address; }

const CString CZelMailMessage::Header()
{
    CString h("Date: ");
    h += zelmail::DateNowUtc();
    h += "\r\n";
    h += "From: \"" + m_from.name + "\" <" + m_from.address + ">\r\n";
    if (!m_replyTo.address.IsEmpty())
        h += "Reply-To: \"" + m_replyTo.name + "\" <" + m_replyTo.address + ">\r\n";
    if (!m_to.empty()) {
        h += "To: ";
        appendEntries(h, m_to);
        h += "\r\n";
    }
    if (!m_cc.empty()) {
        h += "Cc: ";
        appendEntries(h, m_cc);
        h += "\r\n";
    }
    h += "X-Mailer: " + m_mailerName + "\r\n";
    h += "Subject: " + m_subject + "\r\n";
    return h;
}

const CString& CZelMailMessage::Subject() { return m_subject; }
void CZelMailMessage::Subject(const char* subject) { m_subject = subject; }

const CString CZelMailMessage::Body() { return m_body; }
void CZelMailMessage::Body(const char* body) { m_body = body; }
