// String ids of the mail folder (range 4000-4199) in the library's string table.
#pragma once

// Replies of an SMTP server that differ from the expected code.
constexpr unsigned int IDS_ZEL_SMTP_SERVER_ERROR = 4000;         // 250 expected
constexpr unsigned int IDS_ZEL_SMTP_NOT_AVAILABLE = 4001;        // 220 expected
constexpr unsigned int IDS_ZEL_SMTP_NOT_READY_FOR_DATA = 4002;   // 354 expected
constexpr unsigned int IDS_ZEL_SMTP_NOT_TERMINATED = 4003;       // 221 expected

// Failures of the client itself.
constexpr unsigned int IDS_ZEL_SMTP_SERVER_NAME_EMPTY = 4010;
constexpr unsigned int IDS_ZEL_SMTP_CREATE_SOCKET = 4011;
constexpr unsigned int IDS_ZEL_SMTP_CONNECT = 4012;
constexpr unsigned int IDS_ZEL_SMTP_NO_RESPONSE = 4013;
constexpr unsigned int IDS_ZEL_SMTP_NOT_CONNECTED = 4014;
constexpr unsigned int IDS_ZEL_SMTP_NO_SENDER = 4015;
constexpr unsigned int IDS_ZEL_SMTP_NO_RECIPIENT = 4016;

// Failures of a read from the socket, by Windows Sockets error number.
constexpr unsigned int IDS_ZEL_SOCKET_EINVAL = 4020;          // 10022
constexpr unsigned int IDS_ZEL_SOCKET_EWOULDBLOCK = 4021;     // 10035
constexpr unsigned int IDS_ZEL_SOCKET_EINPROGRESS = 4022;     // 10036
constexpr unsigned int IDS_ZEL_SOCKET_ENOTSOCK = 4023;        // 10038
constexpr unsigned int IDS_ZEL_SOCKET_EMSGSIZE = 4024;        // 10040
constexpr unsigned int IDS_ZEL_SOCKET_EOPNOTSUPP = 4025;      // 10045
constexpr unsigned int IDS_ZEL_SOCKET_ENETDOWN = 4026;        // 10050
constexpr unsigned int IDS_ZEL_SOCKET_ECONNABORTED = 4027;    // 10053
constexpr unsigned int IDS_ZEL_SOCKET_ECONNRESET = 4028;      // 10054
constexpr unsigned int IDS_ZEL_SOCKET_ENOTCONN = 4029;        // 10057
constexpr unsigned int IDS_ZEL_SOCKET_ESHUTDOWN = 4030;       // 10058
constexpr unsigned int IDS_ZEL_SOCKET_NOTINITIALISED = 4031;  // 10093
constexpr unsigned int IDS_ZEL_SOCKET_ERROR = 4032;           // any other
