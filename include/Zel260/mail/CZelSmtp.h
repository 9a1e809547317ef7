// Sends a CZelMailMessage to an SMTP server by the plain dialogue: HELO, MAIL, RCPT,
// DATA, QUIT; no extensions, no authentication, no encryption. One blocking socket,
// one read for each reply.
//
// Every operation returns nonzero on success and 0 on failure; the reason is then in
// GetLastError() as "<code>:<text>", where the code is the server's reply code or 0
// for failures of the client or the socket ("550:SMTP server error.",
// "0:Unable to connect to server."). It starts as "OK".
//
// The socket blocks up to ZelSocketTimeout() (platform/Socket.h) on each read and
// send; a server that closes the connection ends the wait at once.
#pragma once

#include <Zel260/mail/CZelMailMessage.h>
#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/Socket.h>

class CZelSmtp : public CObject {
    DECLARE_DYNCREATE(CZelSmtp)

public:
    // The socket of one session.
    class CSmtpSocket : public CSocket {};

    explicit CZelSmtp(CString server = CString(), unsigned int port = 25);
    // Disconnects (sends QUIT) when still connected.
    ~CZelSmtp() override;
    CZelSmtp(const CZelSmtp&) = delete;
    CZelSmtp& operator=(const CZelSmtp&) = delete;

    // Opens the session: connect, read the greeting (220), send "HELO <host name>",
    // read 250. 1 at once when already connected (nothing is sent).
    virtual int Connect();
    // Sends QUIT and closes the socket whatever the reply; 1 when the reply was 221
    // or when not connected.
    virtual int Disconnect();
    // Sends one message in the open session. 0 when not connected.
    virtual int SendMailMessage(CZelMailMessage* message);
    virtual CString Server();
    // Changes the server name; refused with 0 while connected.
    virtual int Server(CString server);
    virtual unsigned int Port();
    // Changes the port; refused with 0 while connected.
    virtual int Port(unsigned int port);
    virtual int Connected();
    virtual CString GetLastError();

protected:
    // Hook for the header text just before it is sent; does nothing here.
    virtual void PrepareHeader(CString& header);
    // Ends the body in "\r\n" and doubles the dot of every line that is a lone ".".
    // Lines that merely start with a dot go out unchanged.
    virtual void PrepareBody(CString& body);
    // The mail transaction of one message (MAIL, RCPT for every recipient of the
    // three lists, DATA, header, blank line, body, end mark). Refused recipients
    // don't stop it. On failure the session stays open, without RSET.
    virtual int TransmitMailMessage(CZelMailMessage* message);
    // Reads one reply (one read of up to 1024 bytes) and compares its first three
    // characters with the code expected for `index`: 0 250, 1 220, 2 354, 3 221.
    // A reply without a number counts as code 0; a read that fails sets the socket
    // error's text. An index past 3 fails without reading.
    virtual int GetResponse(unsigned int index);
    // Last error becomes "<code>:<text of stringId>".
    virtual void SetError(unsigned int stringId, unsigned int code);

private:
    int Send(const CString& text);

    CString m_lastReply;
    CString m_server;
    unsigned int m_port;
    int m_connected = 0;
    CString m_lastError;
    CSmtpSocket m_socket;
};
