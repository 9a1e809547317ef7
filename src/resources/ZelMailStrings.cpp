#include <Zel260/platform/ResourceModule.h>
#include <Zel260/resources/ZelMailResourceIds.h>

namespace {

const CZelStringTableRegistrar mailStrings{
    {IDS_ZEL_SMTP_SERVER_ERROR, "SMTP server error."},
    {IDS_ZEL_SMTP_NOT_AVAILABLE, "SMTP server not available."},
    {IDS_ZEL_SMTP_NOT_READY_FOR_DATA, "SMTP server not ready for data."},
    {IDS_ZEL_SMTP_NOT_TERMINATED, "SMTP server didn't terminate session."},
    {IDS_ZEL_SMTP_SERVER_NAME_EMPTY, "SMTP server name must not be empty."},
    {IDS_ZEL_SMTP_CREATE_SOCKET, "Unable to create the socket."},
    {IDS_ZEL_SMTP_CONNECT, "Unable to connect to server."},
    {IDS_ZEL_SMTP_NO_RESPONSE, "Server didn't respond."},
    {IDS_ZEL_SMTP_NOT_CONNECTED, "Must be connected to SMTP server."},
    {IDS_ZEL_SMTP_NO_SENDER, "No sender (FROM) given."},
    {IDS_ZEL_SMTP_NO_RECIPIENT, "No Recipient (TO) given."},
    {IDS_ZEL_SOCKET_EINVAL, "Socket has not been bound with Bind."},
    {IDS_ZEL_SOCKET_EWOULDBLOCK, "Socket is marked as nonblocking and Receive operation would block"},
    {IDS_ZEL_SOCKET_EINPROGRESS, "Blocking Windows sockets operation is in progress."},
    {IDS_ZEL_SOCKET_ENOTSOCK, "The descriptor is not a socket."},
    {IDS_ZEL_SOCKET_EMSGSIZE, "The datagram was too large to fit into the specified buffer and was truncated."},
    {IDS_ZEL_SOCKET_EOPNOTSUPP, "Socket is not of type SOCK_STREAM."},
    {IDS_ZEL_SOCKET_ENETDOWN, "Network subsystem failed."},
    {IDS_ZEL_SOCKET_ECONNABORTED, "Virtual circuit was aborted due to timeout or other failure."},
    {IDS_ZEL_SOCKET_ECONNRESET, "Virtual circuit was reset by the remote side."},
    {IDS_ZEL_SOCKET_ENOTCONN, "Socket is not connected."},
    {IDS_ZEL_SOCKET_ESHUTDOWN, "Socket has been shut down."},
    {IDS_ZEL_SOCKET_NOTINITIALISED, "Socket not initialized."},
    {IDS_ZEL_SOCKET_ERROR, "Socket error."},
};

} // namespace
