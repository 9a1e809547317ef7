// Building and sending a mail with a 10 MiB attachment through CZelSmtp, against
// curl sending the same file to the same loopback server in the same run.
//
// Peers: `curl --upload-file FILE smtp://...` with the raw file (what a user would
// type), and with the message the library builds (the same bytes on the wire).
//
// curl is a process of its own, so the benchmark's CPU column shows only the wait
// for it; the counter client_cpu_ms is the CPU time of the sending side alone (the
// child's user and system time for curl and for the fresh-process run, the sending
// thread's for the library in this process), the sink excluded in every case.
// The library is measured twice: in a long-lived process, where the allocator
// hands the message buffer of the last mail to the next, and as a fresh process
// per mail, which pays process start and the page faults of a new buffer as curl
// does.
#include <Zel260/mail/CZelMailMessageMimeContainer.h>
#include <Zel260/mail/CZelMailMessageMimePartBinary.h>
#include <Zel260/mail/CZelMailMessageMimePartText.h>
#include <Zel260/mail/CZelSmtp.h>

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <thread>

extern char** environ;

namespace {

// A sink that speaks just enough SMTP for both clients, one session after another,
// and throws the mail away; it reads in large blocks so that it never sets the pace.
class SinkServer {
public:
    SinkServer()
    {
        m_listen = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(m_listen, reinterpret_cast<sockaddr*>(&a), sizeof a);
        ::listen(m_listen, 8);
        socklen_t len = sizeof a;
        ::getsockname(m_listen, reinterpret_cast<sockaddr*>(&a), &len);
        m_port = ntohs(a.sin_port);
        std::thread([this] { run(); }).detach();
    }
    unsigned port() const { return m_port; }

private:
    static void say(int c, const char* text) { ::send(c, text, std::strlen(text), MSG_NOSIGNAL); }

    void session(int c)
    {
        say(c, "220 sink\r\n");
        std::string pending;
        bool data = false;
        static char buf[1 << 20];
        for (;;) {
            if (data) {
                std::size_t end = pending.find("\r\n.\r\n");
                if (end == std::string::npos) {
                    // Keep only what could start the end mark.
                    if (pending.size() > 4)
                        pending.erase(0, pending.size() - 4);
                } else {
                    pending.erase(0, end + 5);
                    data = false;
                    say(c, "250 stored\r\n");
                    continue;
                }
            } else {
                std::size_t eol = pending.find("\r\n");
                if (eol != std::string::npos) {
                    std::string verb = pending.substr(0, 4);
                    pending.erase(0, eol + 2);
                    for (auto& ch : verb)
                        ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
                    if (verb == "DATA") {
                        say(c, "354 go ahead\r\n");
                        // The end mark may follow at once with an empty message.
                        pending.insert(0, "\r\n");
                        data = true;
                    } else if (verb == "QUIT") {
                        say(c, "221 bye\r\n");
                        return;
                    } else {
                        say(c, "250 ok\r\n");
                    }
                    continue;
                }
            }
            ssize_t n = ::recv(c, buf, sizeof buf, 0);
            if (n <= 0)
                return;
            pending.append(buf, static_cast<std::size_t>(n));
        }
    }

    void run()
    {
        for (;;) {
            int c = ::accept(m_listen, nullptr, nullptr);
            if (c < 0)
                return;
            session(c);
            ::close(c);
        }
    }

    int m_listen = -1;
    unsigned m_port = 0;
};

constexpr std::size_t kSize = 10u << 20;
constexpr const char* kSendOnce = "--send-once";

std::unique_ptr<CZelMailMessageMimeContainer> buildMail(const std::string& attachment)
{
    auto mail = std::make_unique<CZelMailMessageMimeContainer>();
    mail->From("Office <office@site.test>");
    mail->AddRecipient("ann@site.test", CZelMailMessage::To);
    mail->Subject("Scan data");
    mail->AddMimePart(new CZelMailMessageMimePartText("Scan attached.\r\n"));
    mail->AddMimePart(new CZelMailMessageMimePartBinary(attachment.c_str()));
    return mail;
}

// One mail, as the fresh-process run's child sends it; the exit status tells.
int sendOnce(unsigned port, const std::string& attachment)
{
    auto mail = buildMail(attachment);
    CZelSmtp smtp("127.0.0.1", port);
    if (!smtp.Connect() || !smtp.SendMailMessage(mail.get()) || !smtp.Disconnect()) {
        std::fprintf(stderr, "%s\n", smtp.GetLastError().GetString());
        return 1;
    }
    return 0;
}

double threadCpuMs()
{
    timespec t{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) / 1e6;
}

double cpuMs(const rusage& u)
{
    return static_cast<double>(u.ru_utime.tv_sec + u.ru_stime.tv_sec) * 1e3 +
           static_cast<double>(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e3;
}

struct Fixture {
    SinkServer server;
    std::string dir;
    std::string attachment;
    std::string prepared;

    Fixture()
    {
        char pattern[] = "/tmp/zel260-mailbench-XXXXXX";
        dir = ::mkdtemp(pattern);
        attachment = dir + "/survey.bin";
        std::mt19937 gen(42);
        std::string bytes(kSize, '\0');
        for (auto& b : bytes)
            b = static_cast<char>(gen() & 0xFF);
        std::ofstream(attachment, std::ios::binary) << bytes;

        // The library's own message, as a file for curl to send.
        auto mail = build();
        prepared = dir + "/message.eml";
        std::ofstream(prepared, std::ios::binary) << mail->Header().str() << "\r\n" << mail->Body().str();
    }
    ~Fixture()
    {
        std::remove(attachment.c_str());
        std::remove(prepared.c_str());
        ::rmdir(dir.c_str());
    }

    std::unique_ptr<CZelMailMessageMimeContainer> build() const { return buildMail(attachment); }
};

Fixture& fixture()
{
    static Fixture f;
    return f;
}

void BM_ZelSmtpBuildAndSend10MiB(benchmark::State& state)
{
    Fixture& f = fixture();
    double cpu = 0;
    for (auto _ : state) {
        const double before = threadCpuMs();
        auto mail = f.build();
        CZelSmtp smtp("127.0.0.1", f.server.port());
        if (!smtp.Connect() || !smtp.SendMailMessage(mail.get()) || !smtp.Disconnect()) {
            state.SkipWithError(smtp.GetLastError().GetString());
            return;
        }
        mail.reset();
        cpu += threadCpuMs() - before;
    }
    state.counters["client_cpu_ms"] = benchmark::Counter(cpu, benchmark::Counter::kAvgIterations);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kSize));
}

// Runs `argv` once per iteration and waits for it to exit; the timer thus stops
// only after the client has had the server's reply to the end of the data and to
// QUIT.
void runProcess(benchmark::State& state, char** argv, const char* what)
{
    double cpu = 0;
    for (auto _ : state) {
        pid_t pid;
        if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv, environ) != 0) {
            state.SkipWithError((std::string(what) + " can't be started").c_str());
            return;
        }
        int status = 0;
        rusage usage{};
        ::wait4(pid, &status, 0, &usage);
        cpu += cpuMs(usage);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            state.SkipWithError((std::string(what) + " failed").c_str());
            return;
        }
    }
    state.counters["client_cpu_ms"] = benchmark::Counter(cpu, benchmark::Counter::kAvgIterations);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kSize));
}

void BM_ZelSmtpFreshProcess10MiB(benchmark::State& state)
{
    Fixture& f = fixture();
    char self[4096] = {};
    if (::readlink("/proc/self/exe", self, sizeof self - 1) <= 0) {
        state.SkipWithError("can't find the program itself");
        return;
    }
    std::string argvText[] = {self, kSendOnce, std::to_string(f.server.port()), f.attachment};
    char* argv[5] = {};
    for (int i = 0; i < 4; ++i)
        argv[i] = argvText[i].data();
    runProcess(state, argv, "the sending process");
}

void runCurl(benchmark::State& state, const std::string& file)
{
    Fixture& f = fixture();
    const std::string url = "smtp://127.0.0.1:" + std::to_string(f.server.port());
    std::string argvText[] = {"/usr/bin/curl", "-s", "-S", "--url", url, "--mail-from", "office@site.test",
                              "--mail-rcpt", "ann@site.test", "--upload-file", file};
    char* argv[12] = {};
    for (int i = 0; i < 11; ++i)
        argv[i] = argvText[i].data();
    if (::access(argv[0], X_OK) != 0) {
        state.SkipWithError("curl is not installed");
        return;
    }
    runProcess(state, argv, "curl");
}

void BM_CurlUploadRawFile10MiB(benchmark::State& state) { runCurl(state, fixture().attachment); }
void BM_CurlUploadBuiltMessage10MiB(benchmark::State& state) { runCurl(state, fixture().prepared); }

} // namespace

BENCHMARK(BM_ZelSmtpBuildAndSend10MiB)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ZelSmtpFreshProcess10MiB)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CurlUploadRawFile10MiB)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CurlUploadBuiltMessage10MiB)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char** argv)
{
    if (argc == 4 && std::strcmp(argv[1], kSendOnce) == 0)
        return sendOnce(static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)), argv[3]);
    return zelbench::runBenchmarks(argc, argv);
}
