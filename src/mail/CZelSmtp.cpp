#include <Zel260/mail/CZelSmtp.h>
#include <Zel260/resources/ZelMailResourceIds.h>

#include "mail/MailServices.h"

#include <cstdio>
#include <climits>
#include <cstring>
#include <unistd.h>

namespace {

struct ReplyRule {
    int code;
    unsigned int textId;
};

const ReplyRule replyTable[] = {
    {250, IDS_ZEL_SMTP_SERVER_ERROR},
    {220, IDS_ZEL_SMTP_NOT_AVAILABLE},
    {354, IDS_ZEL_SMTP_NOT_READY_FOR_DATA},
    {221, IDS_ZEL_SMTP_NOT_TERMINATED},
};

unsigned int socketErrorText(int wsaError)
{
    switch (wsaError) {
    case WSAEINVAL: return IDS_ZEL_SOCKET_EINVAL;
    case WSAEWOULDBLOCK: return IDS_ZEL_SOCKET_EWOULDBLOCK;
    case WSAEINPROGRESS: return IDS_ZEL_SOCKET_EINPROGRESS;
    case WSAENOTSOCK: return IDS_ZEL_SOCKET_ENOTSOCK;
    case WSAEMSGSIZE: return IDS_ZEL_SOCKET_EMSGSIZE;
    case WSAEOPNOTSUPP: return IDS_ZEL_SOCKET_EOPNOTSUPP;
    case WSAENETDOWN: return IDS_ZEL_SOCKET_ENETDOWN;
    case WSAECONNABORTED: return IDS_ZEL_SOCKET_ECONNABORTED;
    case WSAECONNRESET: return IDS_ZEL_SOCKET_ECONNRESET;
    case WSAENOTCONN: return IDS_ZEL_SOCKET_ENOTCONN;
    case WSAESHUTDOWN: return IDS_ZEL_SOCKET_ESHUTDOWN;
    case WSANOTINITIALISED: return IDS_ZEL_SOCKET_NOTINITIALISED;
    default: return IDS_ZEL_SOCKET_ERROR;
    }
}

} // namespace

IMPLEMENT_DYNCREATE(CZelSmtp, CObject)

CZelSmtp::CZelSmtp(CString server, unsigned int port)
    : m_server(std::move(server)), m_port(port), m_lastError("OK")
{
    AfxSocketInit();
}

CZelSmtp::~CZelSmtp()
{
    if (m_connected)
        Disconnect();
}

CString CZelSmtp::Server() { return m_server; }

int CZelSmtp::Server(CString server)
{
    if (m_connected)
        return 0;
    m_server = std::move(server);
    return 1;
}

unsigned int CZelSmtp::Port() { return m_port; }

int CZelSmtp::Port(unsigned int port)
{
    if (m_connected)
        return 0;
    m_port = port;
    return 1;
}

int CZelSmtp::Connected() { return m_connected; }

CString CZelSmtp::GetLastError() { return m_lastError; }

void CZelSmtp::SetError(unsigned int stringId, unsigned int code)
{
    m_lastError.Format("%d:%s", static_cast<int>(code), zelmail::LoadLibraryString(stringId).GetString());
}

int CZelSmtp::Send(const CString& text) { return m_socket.Send(text.GetString(), text.GetLength(), 0); }

int CZelSmtp::GetResponse(unsigned int index)
{
    if (index >= sizeof replyTable / sizeof replyTable[0]) {
        SetError(IDS_ZEL_SMTP_SERVER_ERROR, 0);
        return 0;
    }
    // One read is one reply. The extra byte keeps the buffer terminated even when
    // the server fills all 1024.
    char buffer[1025] = {};
    int n = m_socket.Receive(buffer, 1024, 0);
    if (n == SOCKET_ERROR) {
        m_lastReply.Empty();
        SetError(socketErrorText(WSAGetLastError()), 0);
        return 0;
    }
    m_lastReply = CString(buffer, n);

    // The code is the first three characters; no number at all reads as 0, and a
    // closed connection (nothing read) is such a reply.
    char digits[4] = {};
    std::memcpy(digits, buffer, 3);
    int code = 0;
    if (std::sscanf(digits, "%d", &code) != 1)
        code = 0;
    if (code == replyTable[index].code)
        return 1;
    SetError(replyTable[index].textId, static_cast<unsigned int>(code));
    return 0;
}

int CZelSmtp::Connect()
{
    if (m_connected)
        return 1;
    if (m_server.IsEmpty()) {
        SetError(IDS_ZEL_SMTP_SERVER_NAME_EMPTY, 0);
        return 0;
    }
    if (!m_socket.Create(0, SOCK_STREAM, FD_READ | FD_WRITE | FD_OOB | FD_ACCEPT | FD_CONNECT | FD_CLOSE, nullptr)) {
        SetError(IDS_ZEL_SMTP_CREATE_SOCKET, 0);
        return 0;
    }
    if (!m_socket.Connect(m_server, m_port)) {
        SetError(IDS_ZEL_SMTP_CONNECT, 0);
        m_socket.Close();
        return 0;
    }
    if (!GetResponse(1)) {
        SetError(IDS_ZEL_SMTP_NO_RESPONSE, 0);
        m_socket.Close();
        return 0;
    }
    char host[256] = {};
    if (::gethostname(host, sizeof host - 1) != 0)
        host[0] = '\0';
    CString helo;
    helo.Format("HELO %s\r\n", host);
    Send(helo);
    if (!GetResponse(0)) {
        m_socket.Close();
        return 0;
    }
    m_connected = 1;
    return 1;
}

int CZelSmtp::Disconnect()
{
    if (!m_connected)
        return 1;
    Send("QUIT\r\n");
    int result = GetResponse(3);
    m_socket.Close();
    m_connected = 0;
    return result;
}

int CZelSmtp::SendMailMessage(CZelMailMessage* message)
{
    if (!m_connected) {
        SetError(IDS_ZEL_SMTP_NOT_CONNECTED, 0);
        return 0;
    }
    zelmail::WaitCursor wait;
    return TransmitMailMessage(message);
}

void CZelSmtp::PrepareHeader(CString& header) { (void)header; }

void CZelSmtp::PrepareBody(CString& body)
{
    if (body.Right(2) != "\r\n")
        body += "\r\n";
    // The dots to double are those of lines that are a lone "." (the first line
    // included), which is what replacing "\r\n.\r\n" one by one comes to: an
    // inserted dot never makes or breaks another match. A dot is rare in a body and
    // absent from Base64, so looking for dots alone passes over an attachment at
    // memchr's pace, and a body without a lone dot is not touched at all. The body
    // ends in "\r\n", so every dot has two characters after it.
    const auto loneDot = [](const char* text, std::size_t at) {
        return (at == 0 || (at >= 2 && text[at - 2] == '\r' && text[at - 1] == '\n')) && text[at + 1] == '\r' &&
               text[at + 2] == '\n';
    };
    const char* const text = body.str().data();
    const std::size_t length = body.str().size();
    std::size_t count = 0;
    for (const char* p = text; (p = static_cast<const char*>(std::memchr(p, '.', length - (p - text)))); ++p)
        count += loneDot(text, static_cast<std::size_t>(p - text));
    // A text past the string's int length can't be sent anyway; leaving it alone
    // keeps the widening below from wrapping.
    if (count == 0 || length + count > static_cast<std::size_t>(INT_MAX))
        return;
    // Widen in place and move each stretch once, from the back. What lies ahead of
    // the last stretch moved is still the text as it was, so the dots are found
    // again by the same test.
    const int grown = static_cast<int>(length + count);
    char* const out = body.GetBufferSetLength(grown);
    std::size_t tail = length; // end of the stretch that moves next
    std::size_t end = length;  // end of the search for the next dot
    for (std::size_t shift = count; shift > 0;) {
        const std::size_t at = static_cast<std::size_t>(static_cast<const char*>(::memrchr(out, '.', end)) - out);
        if (loneDot(out, at)) {
            std::memmove(out + at + shift, out + at, tail - at);
            out[at + shift - 1] = '.';
            --shift;
            tail = at;
        }
        end = at;
    }
    body.ReleaseBuffer(grown);
}

int CZelSmtp::TransmitMailMessage(CZelMailMessage* message)
{
    if (!message)
        return 0;
    if (!m_connected) {
        SetError(IDS_ZEL_SMTP_NOT_CONNECTED, 0);
        return 0;
    }
    const ZelMailHelper::MAIL_ADDRESS from = message->From();
    if (from.address.IsEmpty()) {
        SetError(IDS_ZEL_SMTP_NO_SENDER, 0);
        return 0;
    }
    CString sender;
    sender.Format("<%s>", from.address.GetString());
    if (message->GetNumRecipients() == 0) {
        SetError(IDS_ZEL_SMTP_NO_RECIPIENT, 0);
        return 0;
    }

    CString line;
    line.Format("MAIL From: %s\r\n", sender.GetString());
    Send(line);
    if (!GetResponse(0))
        return 0;

    const struct {
        CZelMailMessage::eRecipientTypes type;
        unsigned int count;
    } lists[] = {
        {CZelMailMessage::To, message->GetNumRecipientsTo()},
        {CZelMailMessage::Cc, message->GetNumRecipientsCc()},
        {CZelMailMessage::Bcc, message->GetNumRecipientsBcc()},
    };
    for (const auto& list : lists) {
        for (unsigned int i = 0; i < list.count; ++i) {
            CString address, name;
            message->Recipient(address, name, i, list.type);
            line.Format("RCPT TO: <%s>\r\n", address.GetString());
            Send(line);
            GetResponse(0); // a refused recipient leaves only its error behind
        }
    }

    Send("DATA\r\n");
    if (!GetResponse(2))
        return 0;

    CString header = message->Header();
    PrepareHeader(header);
    Send(header);
    Send("\r\n");
    CString body = message->Body();
    PrepareBody(body);
    Send(body);
    Send("\r\n.\r\n");
    return GetResponse(0);
}
