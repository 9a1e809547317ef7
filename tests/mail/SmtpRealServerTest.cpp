// A container with a text part and two binary attachments, sent through the client
// to a real SMTP server (aiosmtpd) and read back with Python's own e-mail parser.
#include <Zel260/mail/CZelMailMessageMimeContainer.h>
#include <Zel260/mail/CZelMailMessageMimePartBinary.h>
#include <Zel260/mail/CZelMailMessageMimePartText.h>
#include <Zel260/mail/CZelSmtp.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Debian's interpreter, which sees Debian's python3-aiosmtpd.
const char* const kPython = "/usr/bin/python3";

class SinkProcess {
public:
    explicit SinkProcess(const std::string& outdir)
    {
        int out[2];
        if (::pipe(out) != 0)
            return;
        m_pid = ::fork();
        if (m_pid == 0) {
            ::dup2(out[1], 1);
            ::close(out[0]);
            ::close(out[1]);
            const std::string script = std::string(MAIL_TEST_DIR) + "/mail_aiosmtpd_sink.py";
            ::execl(kPython, kPython, script.c_str(), outdir.c_str(), static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(out[1]);
        FILE* f = ::fdopen(out[0], "r");
        char line[32] = {};
        if (f && std::fgets(line, sizeof line, f))
            m_port = static_cast<unsigned>(std::strtoul(line, nullptr, 10));
        if (f)
            std::fclose(f);
    }
    ~SinkProcess()
    {
        if (m_pid > 0 && !m_reaped) {
            ::kill(m_pid, SIGTERM);
            ::waitpid(m_pid, nullptr, 0);
        }
    }
    unsigned port() const { return m_port; }
    // Exit status of the script once the session has ended.
    int wait()
    {
        int status = 0;
        ::waitpid(m_pid, &status, 0);
        m_reaped = true;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_pid = -1;
    unsigned m_port = 0;
    bool m_reaped = false;
};

std::string randomBytes(std::size_t size, unsigned seed)
{
    std::mt19937 gen(seed);
    std::string s(size, '\0');
    for (auto& c : s)
        c = static_cast<char>(gen() & 0xFF);
    return s;
}

} // namespace

TEST(SmtpRealServer, ContainerWithAttachmentsArrivesIntact)
{
    if (std::system("/usr/bin/python3 -c 'import aiosmtpd' >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "needs Debian's python3-aiosmtpd";
    zeltest::TempDir files, received;
    const std::string small = randomBytes(1000, 1);
    const std::string big = randomBytes(3 * 1024 * 1024 + 17, 2);
    const std::string smallPath = files.write("station list.bin", small);
    const std::string bigPath = files.write("scan.raw", big);

    SinkProcess sink(received.path());
    ASSERT_NE(sink.port(), 0u);

    CZelMailMessageMimeContainer mail;
    mail.From("Survey Office <office@site.test>");
    mail.ReplyTo("desk@site.test");
    mail.AddMultipleRecipients("Ann <ann@site.test>,bob@site.test", CZelMailMessage::To);
    mail.AddRecipient("cy@site.test", CZelMailMessage::Cc);
    mail.AddRecipient("audit@site.test", CZelMailMessage::Bcc);
    mail.Subject("Levelling run 12");
    mail.AddMimePart(new CZelMailMessageMimePartText("Results attached.\r\n.\r\nLast line.\r\n"));
    mail.AddMimePart(new CZelMailMessageMimePartBinary(smallPath.c_str()));
    mail.AddMimePart(new CZelMailMessageMimePartBinary(bigPath.c_str()));

    CZelSmtp smtp("127.0.0.1", sink.port());
    ASSERT_EQ(smtp.Connect(), 1) << smtp.GetLastError().GetString();
    EXPECT_EQ(smtp.SendMailMessage(&mail), 1) << smtp.GetLastError().GetString();
    EXPECT_EQ(smtp.Disconnect(), 1) << smtp.GetLastError().GetString();
    ASSERT_EQ(sink.wait(), 0);

    EXPECT_EQ(zeltest::readFile(received.file("envelope.txt")),
              "office@site.test\nann@site.test\nbob@site.test\ncy@site.test\naudit@site.test\n");
    const std::string headers = zeltest::readFile(received.file("headers.txt"));
    for (const char* line : {"From: \"Survey Office\" <office@site.test>\n", "Reply-To: \"\" <desk@site.test>\n",
                             "To: \" Ann\" <ann@site.test>,\" \" <bob@site.test>\n", "Cc: \" \" <cy@site.test>\n",
                             "X-Mailer: ZelMail\n", "Subject: Levelling run 12\n", "MIME-Version: 1.0\n",
                             "Content-Type: multipart/mixed; boundary=_NextPart_CZelMail_1dE8e48F60beBCECoestrsf\n"})
        EXPECT_NE(headers.find(line), std::string::npos) << line << "\nin\n" << headers;
    EXPECT_EQ(headers.find("audit"), std::string::npos);
    EXPECT_EQ(headers.rfind("Date: ", 0), 0u) << headers;

    // The server undoes the doubled dot. Base64 padding counts the line breaks, so a
    // receiver may find it short (1000 bytes: 1334 characters and 17 breaks make a
    // multiple of four, hence no "="); Python notes that and decodes all the same.
    EXPECT_EQ(zeltest::readFile(received.file("text.txt")), "Results attached.\r\n.\r\nLast line.\r\n");
    EXPECT_EQ(zeltest::readFile(received.file("parts.txt")),
              "text/plain|None|quoted-printable|\n"
              "application/octet-stream|station list.bin|Base64|InvalidBase64PaddingDefect\n"
              "application/octet-stream|scan.raw|Base64|\n");
    EXPECT_TRUE(zeltest::readFile(received.file("att_station list.bin")) == small);
    EXPECT_TRUE(zeltest::readFile(received.file("att_scan.raw")) == big);
}
