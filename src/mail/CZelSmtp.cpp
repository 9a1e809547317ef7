#include <Zel260/mail/CZelSmtp.h>
#include <Zel260/resources/ZelMailResourceIds.h>

#include "mail/MailServices.h"

#include <cstdio>
#include <climits>
#include <cstring>
#include <unistd.h>
#include <vector>

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
    // memchr's pace, and a body without a lone dot is not touched at all.
    const std::string& text = body.str();
    const char* const begin = text.data();
    const std::size_t length = text.size();
    std::vector<std::size_t> dots;
    for (const char* p = begin; (p = static_cast<const char*>(std::memchr(p, '.', length - (p - begin))));) {
        const std::size_t at = static_cast<std::size_t>(p - begin);
        // The body ends in "\r\n", so every dot has two characters after it.
        if ((at == 0 || (at >= 2 && p[-2] == '\r' && p[-1] == '\n')) && p[1] == '\r' && p[2] == '\n')
            dots.push_back(at);
        ++p;
    }
    // A text past the string's int length can't be sent anyway; leaving it alone
    // keeps the widening below from wrapping.
    if (dots.empty() || length + dots.size() > static_cast<std::size_t>(INT_MAX))
        return;
    // Widen in place and move each stretch once, from the back.
    const int grown = body.GetLength() + static_cast<int>(dots.size());
    char* out = body.GetBufferSetLength(grown);
    std::size_t end = length;
    std::size_t shift = dots.size();
    for (auto it = dots.rbegin(); it != dots.rend(); ++it, --shift) {
        std::memmove(out + *it + shift, out + *it, end - *it);
        out[*it + shift - 1] = '.';
        end = *it;
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
