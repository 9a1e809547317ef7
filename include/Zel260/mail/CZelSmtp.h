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
    // read 250. 1 at once when already connected (nothing is sent). 0 on failure,
    // with the socket closed and the last error "0:SMTP server name must not be
    // empty.", "0:Unable to create the socket.", "0:Unable to connect to server.",
    // "0:Server didn't respond." (no 220 greeting, whatever the reason), or what
    // GetResponse set for the reply to HELO.
    virtual int Connect();
    // Sends QUIT and closes the socket whatever the reply; not connected afterwards.
    // 1 when the reply was 221 or when not connected; 0 otherwise, with the error of
    // GetResponse ("<code>:SMTP server didn't terminate session.").
    virtual int Disconnect();
    // Sends one message in the open session (see TransmitMailMessage); 1 when the
    // server accepted it. 0 with "0:Must be connected to SMTP server." when not
    // connected, or with the failure of TransmitMailMessage.
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
    // don't stop it: their error stays as the last error. Returns the result of the
    // reply to the end mark. 0 without sending anything for a null message (last
    // error unchanged), when not connected ("0:Must be connected to SMTP server."),
    // with no sender address ("0:No sender (FROM) given.") or no recipient in any
    // list ("0:No Recipient (TO) given."); 0 when MAIL or DATA is refused, with the
    // error of GetResponse. On failure the session stays open, without RSET.
    virtual int TransmitMailMessage(CZelMailMessage* message);
    // Reads one reply (one read of up to 1024 bytes) and compares its first three
    // characters with the code expected for `index`: 0 250, 1 220, 2 354, 3 221.
    // 1 on the expected code. Otherwise 0 with "<code>:<text of the index>" ("SMTP
    // server error.", "SMTP server not available.", "SMTP server not ready for
    // data.", "SMTP server didn't terminate session."), where a reply without a
    // number and a closed connection count as code 0; or, when the read fails,
    // 0 with "0:<text of the socket error>" ("0:Socket error." for one without a
    // text of its own). An index past 3 fails without reading ("0:SMTP server
    // error.").
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
