#include "ScriptedSmtpServer.h"

#include <arpa/inet.h>
#include <cstring>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace mailtest {

namespace {

int listenOnLoopback(unsigned int& port)
{
    int s = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (s < 0 || ::bind(s, reinterpret_cast<sockaddr*>(&a), sizeof a) != 0 || ::listen(s, 1) != 0)
        throw std::runtime_error("cannot listen on loopback");
    socklen_t len = sizeof a;
    ::getsockname(s, reinterpret_cast<sockaddr*>(&a), &len);
    port = ntohs(a.sin_port);
    return s;
}

void sendAll(int s, const std::string& text)
{
    ::send(s, text.data(), text.size(), MSG_NOSIGNAL);
}

} // namespace

ScriptedSmtpServer::ScriptedSmtpServer(std::vector<std::string> replies) : m_replies(std::move(replies))
{
    m_listen = listenOnLoopback(m_port);
    m_thread = std::thread([this] { run(); });
}

ScriptedSmtpServer::~ScriptedSmtpServer()
{
    if (m_thread.joinable()) {
        ::shutdown(m_listen, SHUT_RDWR);
        m_thread.join();
    }
    ::close(m_listen);
}

std::string ScriptedSmtpServer::received()
{
    if (m_thread.joinable())
        m_thread.join();
    return m_received;
}

void ScriptedSmtpServer::run()
{
    int c = ::accept(m_listen, nullptr, nullptr);
    if (c < 0)
        return;
    // A broken client must fail the test, not hang it.
    timeval tv{10, 0};
    ::setsockopt(c, SOL_SOCKET, SO_RCVTIMEO, &tv, sizeof tv);

    std::string pending;
    bool dataMode = false;
    auto nextUnit = [&](std::string& unit) {
        for (;;) {
            const char* end = dataMode ? "\r\n.\r\n" : "\r\n";
            std::size_t at = pending.find(end);
            if (at != std::string::npos) {
                at += std::strlen(end);
                unit = pending.substr(0, at);
                pending.erase(0, at);
                return true;
            }
            char buf[65536];
            ssize_t n = ::recv(c, buf, sizeof buf, 0);
            if (n <= 0)
                return false;
            m_received.append(buf, static_cast<std::size_t>(n));
            pending.append(buf, static_cast<std::size_t>(n));
        }
    };

    bool open = true;
    bool stalled = false;
    for (std::size_t i = 0; open && !stalled && i < m_replies.size(); ++i) {
        std::string unit;
        if (i > 0 && !nextUnit(unit))
            break;
        const std::string& reply = m_replies[i];
        if (reply == kStall) {
            stalled = true;
        } else if (reply == kClose) {
            open = false;
        } else if (reply == kReset) {
            linger l{1, 0};
            ::setsockopt(c, SOL_SOCKET, SO_LINGER, &l, sizeof l);
            open = false;
        } else {
            sendAll(c, reply);
            dataMode = reply.rfind("354", 0) == 0;
        }
    }
    // Nothing more to answer: stop talking, but keep recording what still comes.
    if (open) {
        if (!stalled)
            ::shutdown(c, SHUT_WR);
        char buf[4096];
        ssize_t n;
        while ((n = ::recv(c, buf, sizeof buf, 0)) > 0)
            m_received.append(buf, static_cast<std::size_t>(n));
    }
    ::close(c);
}

unsigned int closedLoopbackPort()
{
    unsigned int port = 0;
    int s = listenOnLoopback(port);
    ::close(s);
    return port;
}

std::string hostName()
{
    char host[256] = {};
    ::gethostname(host, sizeof host - 1);
    return host;
}

} // namespace mailtest
