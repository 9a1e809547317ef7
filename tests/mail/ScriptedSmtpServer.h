// A one-connection SMTP server on a loopback port that replays a script of replies
// and records every byte it receives.
#pragma once

#include <string>
#include <thread>
#include <vector>

namespace mailtest {

class ScriptedSmtpServer {
public:
    // What the server does instead of a reply.
    static constexpr const char* kClose = "<close>"; // close the connection
    static constexpr const char* kReset = "<reset>"; // abort it (the client sees a reset)
    static constexpr const char* kStall = "<stall>"; // say nothing more, keep it open

    // replies[0] is sent on accept; each further reply answers one client command
    // (a line, or after a 354 reply the whole mail up to "\r\n.\r\n"). When the
    // replies run out the server closes the connection.
    explicit ScriptedSmtpServer(std::vector<std::string> replies);
    ~ScriptedSmtpServer();

    unsigned int port() const { return m_port; }
    // Waits for the session to end and returns everything the client sent.
    std::string received();

private:
    void run();

    std::vector<std::string> m_replies;
    int m_listen = -1;
    unsigned int m_port = 0;
    std::string m_received;
    std::thread m_thread;
};

// A port on loopback where nothing listens.
unsigned int closedLoopbackPort();

// The machine's host name as the client sends it after HELO.
std::string hostName();

} // namespace mailtest
