// Blocking TCP sockets in the manner of MFC's CSocket, over POSIX sockets. Failures
// are reported in the Windows Sockets vocabulary: the library's texts for socket
// failures are keyed by these numbers, so errno values are mapped onto them here
// and nowhere else.
//
// Like a Windows blocking socket, a socket waits for its peer for as long as it
// takes. A host that would rather not have a silent server tie up its thread sets a
// process-wide time-out with ZelSetSocketTimeout; a call that runs into it fails
// with WSAETIMEDOUT. Sends never raise SIGPIPE: a send to a
// peer that has gone fails with its error like any other. Stream sockets are made
// with TCP_NODELAY, so a command written in pieces goes out without waiting.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <sys/socket.h>

using SOCKET = int;
constexpr SOCKET INVALID_SOCKET = -1;
constexpr int SOCKET_ERROR = -1;

// Event bits of an asynchronous socket. A blocking socket ignores them; they are
// accepted so that calls written for the event-driven original compile unchanged.
constexpr long FD_READ = 0x01;
constexpr long FD_WRITE = 0x02;
constexpr long FD_OOB = 0x04;
constexpr long FD_ACCEPT = 0x08;
constexpr long FD_CONNECT = 0x10;
constexpr long FD_CLOSE = 0x20;

// Windows Sockets error numbers.
constexpr int WSAEINTR = 10004;
constexpr int WSAEBADF = 10009;
constexpr int WSAEACCES = 10013;
constexpr int WSAEFAULT = 10014;
constexpr int WSAEINVAL = 10022;
constexpr int WSAEMFILE = 10024;
constexpr int WSAEWOULDBLOCK = 10035;
constexpr int WSAEINPROGRESS = 10036;
constexpr int WSAEALREADY = 10037;
constexpr int WSAENOTSOCK = 10038;
constexpr int WSAEDESTADDRREQ = 10039;
constexpr int WSAEMSGSIZE = 10040;
constexpr int WSAEPROTOTYPE = 10041;
constexpr int WSAENOPROTOOPT = 10042;
constexpr int WSAEPROTONOSUPPORT = 10043;
constexpr int WSAESOCKTNOSUPPORT = 10044;
constexpr int WSAEOPNOTSUPP = 10045;
constexpr int WSAEPFNOSUPPORT = 10046;
constexpr int WSAEAFNOSUPPORT = 10047;
constexpr int WSAEADDRINUSE = 10048;
constexpr int WSAEADDRNOTAVAIL = 10049;
constexpr int WSAENETDOWN = 10050;
constexpr int WSAENETUNREACH = 10051;
constexpr int WSAENETRESET = 10052;
constexpr int WSAECONNABORTED = 10053;
constexpr int WSAECONNRESET = 10054;
constexpr int WSAENOBUFS = 10055;
constexpr int WSAEISCONN = 10056;
constexpr int WSAENOTCONN = 10057;
constexpr int WSAESHUTDOWN = 10058;
constexpr int WSAETIMEDOUT = 10060;
constexpr int WSAECONNREFUSED = 10061;
constexpr int WSAELOOP = 10062;
constexpr int WSAENAMETOOLONG = 10063;
constexpr int WSAEHOSTDOWN = 10064;
constexpr int WSAEHOSTUNREACH = 10065;
constexpr int WSANOTINITIALISED = 10093;
constexpr int WSASYSCALLFAILURE = 10107;
constexpr int WSAHOST_NOT_FOUND = 11001;
constexpr int WSATRY_AGAIN = 11002;
constexpr int WSANO_RECOVERY = 11003;
constexpr int WSANO_DATA = 11004;

// The Windows Sockets number for an errno value. EAGAIN counts as a time-out, since
// the sockets made here block; values without a counterpart give WSASYSCALLFAILURE.
int ZelWsaErrorFromErrno(int err);

// The last socket failure of the calling thread (thread-local, as on Windows).
int WSAGetLastError();
void WSASetLastError(int error);

// Initialises the socket layer. Nothing needs initialising here; always TRUE.
BOOL AfxSocketInit();

// Send and receive time-out of sockets created from now on, in milliseconds
// (process-wide; 0 means none, i.e. block for as long as the peer keeps quiet).
// Starts at 0.
void ZelSetSocketTimeout(DWORD milliseconds);
DWORD ZelSocketTimeout();

// A blocking IPv4 stream socket. Every failing call returns FALSE (or SOCKET_ERROR)
// and leaves its reason in WSAGetLastError.
class CSocket {
public:
    CSocket() = default;
    virtual ~CSocket();
    CSocket(const CSocket&) = delete;
    CSocket& operator=(const CSocket&) = delete;

    // Makes the socket. socketType must be SOCK_STREAM; a nonzero port or an address
    // (dotted IPv4 or host name) binds it locally. `events` is ignored (see FD_READ).
    // Fails with WSAEISCONN when the socket already exists.
    BOOL Create(UINT socketPort = 0, int socketType = SOCK_STREAM,
                long events = FD_READ | FD_WRITE | FD_OOB | FD_ACCEPT | FD_CONNECT | FD_CLOSE,
                const char* socketAddress = nullptr);
    // Connects to `hostAddress` (dotted IPv4 or a host name, resolved to IPv4) on
    // `hostPort`. An unknown host fails with WSAHOST_NOT_FOUND.
    BOOL Connect(const char* hostAddress, UINT hostPort);
    // Sends all `length` bytes, as CSocket does, retrying after partial writes.
    // Returns `length`, or SOCKET_ERROR. A negative length fails with WSAEINVAL.
    int Send(const void* buffer, int length, int flags = 0);
    // One read of at most `length` bytes: the number read, 0 when the peer has
    // closed the connection, SOCKET_ERROR on failure.
    int Receive(void* buffer, int length, int flags = 0);
    // Closes the socket; harmless when it is not open.
    void Close();

    SOCKET m_hSocket = INVALID_SOCKET;
};
