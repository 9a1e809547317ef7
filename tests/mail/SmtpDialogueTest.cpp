// The client's whole dialogue, byte for byte, against a scripted server on loopback.
#include "ScriptedSmtpServer.h"

#include <Zel260/mail/CZelMailMessage.h>
#include <Zel260/mail/CZelSmtp.h>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

using mailtest::ScriptedSmtpServer;

namespace {

// The header has the time in it; a fixed one keeps the recorded bytes comparable.
class FixedHeaderMessage : public CZelMailMessage {
public:
    const CString Header() override { return "Subject: fixed\r\n"; }
};

const std::string kOk = "250 ok\r\n";
const std::string kGreeting = "220 test ESMTP\r\n";
const std::string kGoAhead = "354 go ahead\r\n";
const std::string kBye = "221 bye\r\n";

std::string helo() { return "HELO " + mailtest::hostName() + "\r\n"; }

class SmtpDialogue : public ::testing::Test {
protected:
    void SetUp() override { ZelSetSocketTimeout(5000); }
    void TearDown() override { ZelSetSocketTimeout(0); }
};

FixedHeaderMessage simpleMessage(const char* body)
{
    FixedHeaderMessage m;
    m.From("Sender <s@here>");
    m.AddRecipient("r@there", CZelMailMessage::To);
    m.Body(body);
    return m;
}

} // namespace

TEST_F(SmtpDialogue, WholeSessionAndDotTransparency)
{
    struct Row {
        const char* name;
        const char* body;
        const char* sent;
    };
    const Row rows[] = {
        {"lone dot line", "a\r\n.\r\nb", "a\r\n..\r\nb\r\n"},
        {"body starts with lone dot", ".\r\nb", "..\r\nb\r\n"},
        {"dot followed by text stays", ".x\r\n.y", ".x\r\n.y\r\n"},
        {"consecutive lone dots", "a\r\n.\r\n.\r\nb\r\n", "a\r\n..\r\n..\r\nb\r\n"},
        {"lone dot at the end", "a\r\n.", "a\r\n..\r\n"},
        {"body is one dot", ".", "..\r\n"},
        {"empty body", "", "\r\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ScriptedSmtpServer server({kGreeting, kOk, kOk, kOk, kGoAhead, kOk, kBye});
        {
            CZelSmtp smtp("127.0.0.1", server.port());
            ASSERT_EQ(smtp.Connect(), 1) << smtp.GetLastError().GetString();
            auto m = simpleMessage(row.body);
            EXPECT_EQ(smtp.SendMailMessage(&m), 1) << smtp.GetLastError().GetString();
            EXPECT_EQ(smtp.Disconnect(), 1);
            EXPECT_EQ(smtp.Connected(), 0);
            EXPECT_EQ(smtp.GetLastError(), "OK");
        }
        EXPECT_EQ(server.received(), helo() + "MAIL From: <s@here>\r\n" + "RCPT TO: <r@there>\r\n" + "DATA\r\n" +
                                         "Subject: fixed\r\n" + "\r\n" + row.sent + "\r\n.\r\n" + "QUIT\r\n");
    }
}

TEST_F(SmtpDialogue, RecipientsOfAllListsInOrderAndBccOnlyInTheEnvelope)
{
    ScriptedSmtpServer server({kGreeting, kOk, kOk, kOk, kOk, kOk, kGoAhead, kOk, kBye});
    CZelMailMessage m;
    m.From("s@here");
    m.AddRecipient("t@x", CZelMailMessage::To);
    m.AddRecipient("hidden@x", CZelMailMessage::Bcc);
    m.AddRecipient("c@x", CZelMailMessage::Cc);
    m.Body("hi");
    {
        CZelSmtp smtp("localhost", server.port());
        ASSERT_EQ(smtp.Connect(), 1) << smtp.GetLastError().GetString();
        EXPECT_EQ(smtp.SendMailMessage(&m), 1);
    }
    const std::string got = server.received();
    const std::string envelope =
        "MAIL From: <s@here>\r\nRCPT TO: <t@x>\r\nRCPT TO: <c@x>\r\nRCPT TO: <hidden@x>\r\nDATA\r\n";
    ASSERT_EQ(got.compare(helo().size(), envelope.size(), envelope), 0) << got;
    const std::string data = got.substr(helo().size() + envelope.size());
    EXPECT_EQ(data.find("hidden"), std::string::npos);
    EXPECT_NE(data.find("To: \" \" <t@x>\r\n"), std::string::npos);
    EXPECT_NE(data.find("Cc: \" \" <c@x>\r\n"), std::string::npos);
    EXPECT_EQ(data.substr(data.size() - 19), "\r\n\r\nhi\r\n\r\n.\r\nQUIT\r\n");
}

TEST_F(SmtpDialogue, RefusedRecipientStillGoesOnToData)
{
    ScriptedSmtpServer server({kGreeting, kOk, kOk, "550 no such user\r\n", kOk, kGoAhead, kOk, kBye});
    FixedHeaderMessage m;
    m.From("s@here");
    m.AddMultipleRecipients("gone@x,r@x", CZelMailMessage::To);
    CZelSmtp smtp("127.0.0.1", server.port());
    ASSERT_EQ(smtp.Connect(), 1);
    EXPECT_EQ(smtp.SendMailMessage(&m), 1);
    // The refusal is the only trace it leaves.
    EXPECT_EQ(smtp.GetLastError(), "550:SMTP server error.");
    EXPECT_EQ(smtp.Disconnect(), 1);
}

TEST_F(SmtpDialogue, NoValidRecipientLetsTheDataReplyDecide)
{
    ScriptedSmtpServer server({kGreeting, kOk, kOk, "550 no\r\n", "554 no valid recipients\r\n", kBye});
    FixedHeaderMessage m;
    m.From("s@here");
    m.AddRecipient("gone@x", CZelMailMessage::To);
    {
        CZelSmtp smtp("127.0.0.1", server.port());
        ASSERT_EQ(smtp.Connect(), 1);
        EXPECT_EQ(smtp.SendMailMessage(&m), 0);
        EXPECT_EQ(smtp.GetLastError(), "554:SMTP server not ready for data.");
        // The session stays open after a failed transaction.
        EXPECT_EQ(smtp.Connected(), 1);
    }
    EXPECT_EQ(server.received(), helo() + "MAIL From: <s@here>\r\nRCPT TO: <gone@x>\r\nDATA\r\nQUIT\r\n");
}

TEST_F(SmtpDialogue, MessagesRefusedBeforeAnyByteIsSent)
{
    ScriptedSmtpServer server({kGreeting, kOk, kBye});
    {
        CZelSmtp smtp("127.0.0.1", server.port());
        FixedHeaderMessage m;
        EXPECT_EQ(smtp.SendMailMessage(&m), 0);
        EXPECT_EQ(smtp.GetLastError(), "0:Must be connected to SMTP server.");
        ASSERT_EQ(smtp.Connect(), 1);

        EXPECT_EQ(smtp.SendMailMessage(nullptr), 0);
        m.AddRecipient("r@x", CZelMailMessage::To);
        EXPECT_EQ(smtp.SendMailMessage(&m), 0);
        EXPECT_EQ(smtp.GetLastError(), "0:No sender (FROM) given.");
        FixedHeaderMessage noRecipient;
        noRecipient.From("s@here");
        EXPECT_EQ(smtp.SendMailMessage(&noRecipient), 0);
        EXPECT_EQ(smtp.GetLastError(), "0:No Recipient (TO) given.");
        EXPECT_EQ(smtp.Disconnect(), 1);
    }
    EXPECT_EQ(server.received(), helo() + "QUIT\r\n");
}

TEST_F(SmtpDialogue, SessionStateGuardsConnectServerAndPort)
{
    ScriptedSmtpServer server({kGreeting, kOk, kOk, kOk, kGoAhead, kOk, kOk, kOk, kGoAhead, kOk, kBye});
    {
        CZelSmtp smtp("127.0.0.1", server.port());
        ASSERT_EQ(smtp.Connect(), 1);
        EXPECT_EQ(smtp.Connect(), 1); // sends nothing
        EXPECT_EQ(smtp.Server("elsewhere"), 0);
        EXPECT_EQ(smtp.Server(), "127.0.0.1");
        EXPECT_EQ(smtp.Port(26), 0);
        EXPECT_EQ(smtp.Port(), server.port());
        // Two mails in one session.
        auto first = simpleMessage("one");
        auto second = simpleMessage("two");
        EXPECT_EQ(smtp.SendMailMessage(&first), 1);
        EXPECT_EQ(smtp.SendMailMessage(&second), 1);
        // The destructor ends the session.
    }
    const std::string mail = "MAIL From: <s@here>\r\nRCPT TO: <r@there>\r\nDATA\r\nSubject: fixed\r\n\r\n";
    EXPECT_EQ(server.received(),
              helo() + mail + "one\r\n\r\n.\r\n" + mail + "two\r\n\r\n.\r\n" + "QUIT\r\n");

    // Made by class name, as a host's factory would.
    std::unique_ptr<CObject> made(CRuntimeClass::CreateObject("CZelSmtp"));
    auto* byName = dynamic_cast<CZelSmtp*>(made.get());
    ASSERT_NE(byName, nullptr);
    EXPECT_EQ(byName->GetLastError(), "OK");

    CZelSmtp idle;
    EXPECT_EQ(idle.Port(), 25u);
    EXPECT_EQ(idle.Server("mail.example"), 1);
    EXPECT_EQ(idle.Port(2525), 1);
    EXPECT_EQ(idle.Disconnect(), 1);
}

TEST_F(SmtpDialogue, ConnectFailures)
{
    struct Row {
        const char* name;
        std::vector<std::string> script;
        const char* error;
    };
    const std::vector<Row> rows = {
        {"greeting with the wrong code", {"554 go away\r\n"}, "0:Server didn't respond."},
        {"greeting that is no number", {"hello\r\n"}, "0:Server didn't respond."},
        {"closed before the greeting", {ScriptedSmtpServer::kClose}, "0:Server didn't respond."},
        {"HELO refused", {kGreeting, "501 bad HELO\r\n"}, "501:SMTP server error."},
        {"HELO answered by a short number", {kGreeting, "25\r\n"}, "25:SMTP server error."},
        {"HELO answered by a bare number", {kGreeting, "250"}, "OK"},
        {"HELO answered by text", {kGreeting, "ok fine\r\n"}, "0:SMTP server error."},
        {"closed after HELO", {kGreeting, ScriptedSmtpServer::kClose}, "0:SMTP server error."},
        {"reset after HELO", {kGreeting, ScriptedSmtpServer::kReset},
         "0:Virtual circuit was reset by the remote side."},
        // The first read takes 1024 bytes of the greeting; the rest is read as the
        // answer to HELO.
        {"greeting longer than one read", {"220 " + std::string(1500, 'x') + "\r\n", kOk}, "0:SMTP server error."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ScriptedSmtpServer server(row.script);
        CZelSmtp smtp("127.0.0.1", server.port());
        const int expected = std::string(row.error) == "OK" ? 1 : 0;
        EXPECT_EQ(smtp.Connect(), expected);
        EXPECT_EQ(smtp.Connected(), expected);
        EXPECT_EQ(smtp.GetLastError(), row.error);
    }

    CZelSmtp noName;
    EXPECT_EQ(noName.Connect(), 0);
    EXPECT_EQ(noName.GetLastError(), "0:SMTP server name must not be empty.");

    CZelSmtp refused("127.0.0.1", mailtest::closedLoopbackPort());
    EXPECT_EQ(refused.Connect(), 0);
    EXPECT_EQ(refused.GetLastError(), "0:Unable to connect to server.");
}

TEST_F(SmtpDialogue, ServerThatClosesMidDialogueEndsTheWaitAtOnce)
{
    // Socket time-out far above what the test allows: only the close may end it.
    ZelSetSocketTimeout(30000);
    ScriptedSmtpServer server({kGreeting, kOk, kOk, ScriptedSmtpServer::kClose});
    auto m = simpleMessage(std::string(200000, 'z').c_str());
    CZelSmtp smtp("127.0.0.1", server.port());
    ASSERT_EQ(smtp.Connect(), 1);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(smtp.SendMailMessage(&m), 0);
    EXPECT_EQ(smtp.GetLastError().Left(2), "0:");
    EXPECT_EQ(smtp.Disconnect(), 0);
    EXPECT_EQ(smtp.Connected(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
}

TEST_F(SmtpDialogue, SilentServerTimesOut)
{
    ZelSetSocketTimeout(200);
    {
        ScriptedSmtpServer server({ScriptedSmtpServer::kStall});
        CZelSmtp smtp("127.0.0.1", server.port());
        EXPECT_EQ(smtp.Connect(), 0);
        EXPECT_EQ(smtp.GetLastError(), "0:Server didn't respond.");
    }
    ScriptedSmtpServer server({kGreeting, ScriptedSmtpServer::kStall});
    CZelSmtp smtp("127.0.0.1", server.port());
    EXPECT_EQ(smtp.Connect(), 0);
    EXPECT_EQ(smtp.GetLastError(), "0:Socket error.");
}

TEST_F(SmtpDialogue, DisconnectNeedsTheClosingReply)
{
    ScriptedSmtpServer server({kGreeting, kOk, "500 what\r\n"});
    CZelSmtp smtp("127.0.0.1", server.port());
    ASSERT_EQ(smtp.Connect(), 1);
    EXPECT_EQ(smtp.Disconnect(), 0);
    EXPECT_EQ(smtp.GetLastError(), "500:SMTP server didn't terminate session.");
    EXPECT_EQ(smtp.Connected(), 0);
    EXPECT_EQ(smtp.Disconnect(), 1);
}
