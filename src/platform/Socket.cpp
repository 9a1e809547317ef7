#include <Zel260/platform/Socket.h>

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>

namespace {

thread_local int t_lastError = 0;

std::atomic<DWORD>& timeoutSetting()
{
    static std::atomic<DWORD> ms{0};
    return ms;
}

int failWith(int wsaError)
{
    WSASetLastError(wsaError);
    return SOCKET_ERROR;
}

int failFromErrno() { return failWith(ZelWsaErrorFromErrno(errno)); }

int wsaErrorFromResolver(int rc)
{
    switch (rc) {
    case EAI_AGAIN: return WSATRY_AGAIN;
    case EAI_FAIL: return WSANO_RECOVERY;
    case EAI_NODATA: return WSANO_DATA;
    case EAI_SYSTEM: return ZelWsaErrorFromErrno(errno);
    default: return WSAHOST_NOT_FOUND;
    }
}

// Fills `out` from a dotted address or a host name; false with the last error set.
bool resolve(const char* host, UINT port, sockaddr_in& out)
{
    std::memset(&out, 0, sizeof out);
    out.sin_family = AF_INET;
    out.sin_port = htons(static_cast<uint16_t>(port));
    if (!host || !*host) {
        out.sin_addr.s_addr = htonl(INADDR_ANY);
        return true;
    }
    if (inet_pton(AF_INET, host, &out.sin_addr) == 1)
        return true;
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* res = nullptr;
    int rc = getaddrinfo(host, nullptr, &hints, &res);
    if (rc != 0 || !res) {
        WSASetLastError(rc != 0 ? wsaErrorFromResolver(rc) : WSAHOST_NOT_FOUND);
        return false;
    }
    out.sin_addr = reinterpret_cast<sockaddr_in*>(res->ai_addr)->sin_addr;
    freeaddrinfo(res);
    return true;
}

} // namespace

int ZelWsaErrorFromErrno(int err)
{
    switch (err) {
    case 0: return 0;
    case EINTR: return WSAEINTR;
    case EBADF: return WSAENOTSOCK;
    case EACCES:
    case EPERM: return WSAEACCES;
    case EFAULT: return WSAEFAULT;
    case EINVAL: return WSAEINVAL;
    case EMFILE:
    case ENFILE: return WSAEMFILE;
    // Our sockets block, so "would block" only comes from a time-out.
    case EAGAIN: return WSAETIMEDOUT;
    // A blocking connect() reports its send time-out this way.
    case EINPROGRESS: return WSAETIMEDOUT;
    case EALREADY: return WSAEALREADY;
    case ENOTSOCK: return WSAENOTSOCK;
    case EDESTADDRREQ: return WSAEDESTADDRREQ;
    case EMSGSIZE: return WSAEMSGSIZE;
    case EPROTOTYPE: return WSAEPROTOTYPE;
    case ENOPROTOOPT: return WSAENOPROTOOPT;
    case EPROTONOSUPPORT: return WSAEPROTONOSUPPORT;
    case ESOCKTNOSUPPORT: return WSAESOCKTNOSUPPORT;
    case EOPNOTSUPP: return WSAEOPNOTSUPP;
    case EPFNOSUPPORT: return WSAEPFNOSUPPORT;
    case EAFNOSUPPORT: return WSAEAFNOSUPPORT;
    case EADDRINUSE: return WSAEADDRINUSE;
    case EADDRNOTAVAIL: return WSAEADDRNOTAVAIL;
    case ENETDOWN: return WSAENETDOWN;
    case ENETUNREACH: return WSAENETUNREACH;
    case ENETRESET: return WSAENETRESET;
    case ECONNABORTED: return WSAECONNABORTED;
    case ECONNRESET: return WSAECONNRESET;
    case ENOBUFS:
    case ENOMEM: return WSAENOBUFS;
    case EISCONN: return WSAEISCONN;
    case ENOTCONN: return WSAENOTCONN;
    // Writing after the peer has gone: Windows reports the connection as shut down.
    case EPIPE:
    case ESHUTDOWN: return WSAESHUTDOWN;
    case ETIMEDOUT: return WSAETIMEDOUT;
    case ECONNREFUSED: return WSAECONNREFUSED;
    case ELOOP: return WSAELOOP;
    case ENAMETOOLONG: return WSAENAMETOOLONG;
    case EHOSTDOWN: return WSAEHOSTDOWN;
    case EHOSTUNREACH: return WSAEHOSTUNREACH;
    default: return WSASYSCALLFAILURE;
    }
}

int WSAGetLastError() { return t_lastError; }
void WSASetLastError(int error) { t_lastError = error; }

BOOL AfxSocketInit() { return TRUE; }

void ZelSetSocketTimeout(DWORD milliseconds) { timeoutSetting().store(milliseconds); }
DWORD ZelSocketTimeout() { return timeoutSetting().load(); }

CSocket::~CSocket() { Close(); }

BOOL CSocket::Create(UINT socketPort, int socketType, long events, const char* socketAddress)
{
    (void)events;
    if (m_hSocket != INVALID_SOCKET)
        return failWith(WSAEISCONN), FALSE;
    if (socketType != SOCK_STREAM)
        return failWith(WSAESOCKTNOSUPPORT), FALSE;
    SOCKET s = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (s < 0)
        return failFromErrno(), FALSE;

    // Our protocols write a command in pieces and then wait for the answer; with
    // Nagle's algorithm each such turn would wait for the peer's delayed ACK.
    int one = 1;
    ::setsockopt(s, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);

    const DWORD ms = ZelSocketTimeout();
    if (ms) {
        timeval tv{static_cast<time_t>(ms / 1000), static_cast<suseconds_t>((ms % 1000) * 1000)};
        // On Linux the send time-out also bounds connect().
        ::setsockopt(s, SOL_SOCKET, SO_RCVTIMEO, &tv, sizeof tv);
        ::setsockopt(s, SOL_SOCKET, SO_SNDTIMEO, &tv, sizeof tv);
    }
    if (socketPort != 0 || (socketAddress && *socketAddress)) {
        sockaddr_in local;
        if (!resolve(socketAddress, socketPort, local)) {
            ::close(s);
            return FALSE;
        }
        if (::bind(s, reinterpret_cast<sockaddr*>(&local), sizeof local) != 0) {
            int err = errno;
            ::close(s);
            return failWith(ZelWsaErrorFromErrno(err)), FALSE;
        }
    }
    m_hSocket = s;
    return TRUE;
}

BOOL CSocket::Connect(const char* hostAddress, UINT hostPort)
{
    if (m_hSocket == INVALID_SOCKET)
        return failWith(WSAENOTSOCK), FALSE;
    if (!hostAddress || !*hostAddress || hostPort > 65535)
        return failWith(WSAEINVAL), FALSE;
    sockaddr_in remote;
    if (!resolve(hostAddress, hostPort, remote))
        return FALSE;
    int rc;
    do
        rc = ::connect(m_hSocket, reinterpret_cast<sockaddr*>(&remote), sizeof remote);
    while (rc != 0 && errno == EINTR);
    if (rc != 0)
        return failFromErrno(), FALSE;
    return TRUE;
}

int CSocket::Send(const void* buffer, int length, int flags)
{
    if (m_hSocket == INVALID_SOCKET)
        return failWith(WSAENOTSOCK);
    if (length < 0 || (!buffer && length > 0))
        return failWith(WSAEINVAL);
    const char* p = static_cast<const char*>(buffer);
    int left = length;
    while (left > 0) {
        ssize_t n = ::send(m_hSocket, p, static_cast<size_t>(left), flags | MSG_NOSIGNAL);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return failFromErrno();
        }
        p += n;
        left -= static_cast<int>(n);
    }
    return length;
}

int CSocket::Receive(void* buffer, int length, int flags)
{
    if (m_hSocket == INVALID_SOCKET)
        return failWith(WSAENOTSOCK);
    if (length < 0 || (!buffer && length > 0))
        return failWith(WSAEINVAL);
    ssize_t n;
    do
        n = ::recv(m_hSocket, buffer, static_cast<size_t>(length), flags);
    while (n < 0 && errno == EINTR);
    if (n < 0)
        return failFromErrno();
    return static_cast<int>(n);
}

void CSocket::Close()
{
    if (m_hSocket != INVALID_SOCKET) {
        ::close(m_hSocket);
        m_hSocket = INVALID_SOCKET;
    }
}
