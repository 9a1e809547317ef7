#include <Zel260/mail/CZelMailMessage.h>
#include <Zel260/mail/CZelMailMessageMimeContainer.h>
#include <Zel260/mail/CZelMailMessageMimePartBinary.h>
#include <Zel260/mail/CZelMailMessageMimePartText.h>
#include <Zel260/mail/ZelEncode.h>
#include <Zel260/mail/ZelEncodeFile.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <string>

namespace {

using Type = CZelMailMessage::eRecipientTypes;

// "Date: " line of a UTC time, built independently of the library.
std::string dateLine(std::time_t when)
{
    std::tm t{};
    gmtime_r(&when, &t);
    char buf[64];
    static const char* const days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::snprintf(buf, sizeof buf, "Date: %s, %02d %s %02d %02d:%02d:%02d GMT\r\n", days[t.tm_wday], t.tm_mday,
                  months[t.tm_mon], t.tm_year % 100, t.tm_hour, t.tm_min, t.tm_sec);
    return buf;
}

// Header() of `message`, with its Date line checked against the clock (in UTC,
// whatever the zone of the process) and taken off.
std::string withoutDate(CZelMailMessage& message)
{
    const std::time_t before = std::time(nullptr);
    const std::string h = message.Header().str();
    const std::time_t after = std::time(nullptr);
    const std::size_t eol = h.find("\r\n") + 2;
    const std::string date = h.substr(0, eol);
    bool matches = false;
    for (std::time_t t = before; t <= after + 1 && !matches; ++t)
        matches = date == dateLine(t);
    EXPECT_TRUE(matches) << date << " is not " << dateLine(before);
    return h.substr(eol);
}

class VetoingMessage : public CZelMailMessage {
protected:
    int TransformMailAdress(MAIL_ADDRESS a) override { return a.address != "blocked@x"; }
};

} // namespace

TEST(MailAddress, ParsingAndChecking)
{
    struct Row {
        const char* text;
        int accepted;
        const char* name;
        const char* address;
    };
    const Row rows[] = {
        {"Ann <ann@site>", 1, "Ann", "ann@site"},
        {"ann@site", 1, "", "ann@site"},
        {"  Ann Lee   <ann@site>", 1, "Ann Lee", "ann@site"},
        {"<ann@site>", 1, "", "ann@site"},
        {"Ann <ann@site> trailing", 1, "Ann", "ann@site"},
        {"Ann >ann@site<", 1, "Ann", "ann@site"},
        {"Ann <ann@site", 1, "Ann", "ann@site"},
        {"a b@site", 0, "", ""},
        {"Ann < ann@site>", 0, "", ""},   // the address isn't trimmed
        {" ann@site", 0, "", ""},
        {"\"Ann\" <ann@site>", 0, "", ""},
        {"ann@home <ann@site>", 0, "", ""},
        {"Ann <>", 0, "", ""},
        {"", 0, "", ""},
        {"a\"b@site", 0, "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        CZelMailMessage m;
        EXPECT_EQ(m.AddRecipient(row.text, CZelMailMessage::To), row.accepted);
        EXPECT_EQ(m.GetNumRecipientsTo(), static_cast<unsigned>(row.accepted));
        CString address("untouched"), name("untouched");
        EXPECT_EQ(m.Recipient(address, name, 0, CZelMailMessage::To), row.accepted);
        if (row.accepted) {
            EXPECT_EQ(address, row.address);
            EXPECT_EQ(name, row.name);
        } else {
            EXPECT_EQ(address, "untouched");
        }
    }
    // Null text is the empty text, and refused like it.
    CZelMailMessage m;
    EXPECT_EQ(m.AddRecipient(nullptr, CZelMailMessage::Cc), 0);
}

TEST(MailAddress, ListsAndIndices)
{
    VetoingMessage m;
    EXPECT_EQ(m.AddMultipleRecipients("a@x,b@y", CZelMailMessage::Cc), 1);
    EXPECT_EQ(m.GetNumRecipientsCc(), 2u);
    // Split at every comma, even inside a name; the pieces fail the check but the
    // call still succeeds.
    EXPECT_EQ(m.AddMultipleRecipients("\"Doe, John\" <j@x>,c@z,, d@z", CZelMailMessage::To), 1);
    EXPECT_EQ(m.GetNumRecipientsTo(), 1u);
    EXPECT_EQ(m.AddRecipient("blocked@x", CZelMailMessage::Bcc), 0);
    EXPECT_EQ(m.AddRecipient("ok@x", CZelMailMessage::Bcc), 1);
    EXPECT_EQ(m.AddRecipient("ok@x", static_cast<Type>(3)), 0);
    EXPECT_EQ(m.GetNumRecipients(), 4u);

    CString address, name;
    EXPECT_EQ(m.Recipient(address, name, 1, CZelMailMessage::Cc), 1);
    EXPECT_EQ(address, "b@y");
    EXPECT_EQ(m.Recipient(address, name, 2, CZelMailMessage::Cc), 0);
    EXPECT_EQ(m.Recipient(address, name, 0, static_cast<Type>(-1)), 0);
    EXPECT_EQ(m.DeleteRecipient(2, CZelMailMessage::Cc), 0);
    EXPECT_EQ(m.DeleteRecipient(0, static_cast<Type>(7)), 0);
    EXPECT_EQ(m.DeleteRecipient(0, CZelMailMessage::Cc), 1);
    EXPECT_EQ(m.Recipient(address, name, 0, CZelMailMessage::Cc), 1);
    EXPECT_EQ(address, "b@y");
    EXPECT_EQ(m.GetNumRecipients(), 3u);
}

TEST(MailMessage, HeaderLines)
{
    CZelMailMessage m;
    EXPECT_EQ(m.MailerName(), "ZelMail");
    // From is parsed but not checked; its quotes are written even for no name.
    m.From("s@here");
    m.Subject("Survey  report");
    m.Body("body text");
    EXPECT_EQ(withoutDate(m), "From: \"\" <s@here>\r\nX-Mailer: ZelMail\r\nSubject: Survey  report\r\n");

    m.From("Site Office <office@site>");
    m.ReplyTo("Desk <desk@site>");
    m.AddRecipient("ann@site", CZelMailMessage::To);
    m.AddRecipient("Bob <bob@site>", CZelMailMessage::To);
    m.AddRecipient("Cy <cy@site>", CZelMailMessage::Cc);
    m.AddRecipient("secret@site", CZelMailMessage::Bcc);
    m.MailerName("Field 2");
    EXPECT_EQ(withoutDate(m), "From: \"Site Office\" <office@site>\r\n"
                                       "Reply-To: \"Desk\" <desk@site>\r\n"
                                       "To: \" \" <ann@site>,\" Bob\" <bob@site>\r\n"
                                       "Cc: \" Cy\" <cy@site>\r\n"
                                       "X-Mailer: Field 2\r\n"
                                       "Subject: Survey  report\r\n");
    EXPECT_EQ(m.Body(), "body text");
    EXPECT_EQ(m.From().name, "Site Office");
    EXPECT_EQ(m.ReplyTo().address, "desk@site");

    // A reply name without an address writes no line.
    ZelMailHelper::MAIL_ADDRESS nameOnly{"Desk", ""};
    m.ReplyTo(nameOnly);
    EXPECT_EQ(withoutDate(m).find("Reply-To"), std::string::npos);
}

TEST(MailMessage, DefaultsApplyToObjectsMadeAfterwards)
{
    CZelMailMessage before;
    CZelMailMessage::MailerNameDefault("Office 7");
    CZelMailMessage after;
    CZelMailMessage::MailerNameDefault("ZelMail");
    EXPECT_EQ(before.MailerName(), "ZelMail");
    EXPECT_EQ(after.MailerName(), "Office 7");

    CZelMailMessageMimePartText::CharsetDefault("utf-8");
    CZelMailMessageMimePartText text("t");
    CZelMailMessageMimePartText::CharsetDefault("iso-8859-1");
    EXPECT_EQ(text.Charset(), "utf-8");
    EXPECT_EQ(CZelMailMessageMimePartText("t").Charset(), "iso-8859-1");
}

TEST(MimeContainer, OnePartAndManyParts)
{
    zeltest::TempDir dir;
    const std::string file = dir.write("points.final.csv", "Man");

    CZelMailMessageMimeContainer mail;
    mail.From("s@here");
    mail.Subject("S");
    mail.Body("plain body");
    const std::string plain = withoutDate(mail);
    EXPECT_EQ(mail.Body(), "plain body");

    // One part: its header follows the MIME version, and its body is all there is.
    EXPECT_EQ(mail.AddMimePart(nullptr), 0);
    ASSERT_EQ(mail.AddMimePart(new CZelMailMessageMimePartText("Hello.\r\n")), 1);
    EXPECT_EQ(withoutDate(mail), plain + "MIME-Version: 1.0\r\n"
                                                  "Content-type: text/plain; charset=\"iso-8859-1\"\r\n"
                                                  "Content-transfer-encoding: quoted-printable\r\n");
    EXPECT_EQ(mail.Body(), "Hello.\r\n");

    auto* binary = new CZelMailMessageMimePartBinary(file.c_str());
    ASSERT_EQ(mail.AddMimePart(binary), 1);
    EXPECT_EQ(withoutDate(mail),
              plain + "MIME-Version: 1.0\r\n"
                      "Content-Type: multipart/mixed;\r\n\tboundary=_NextPart_CZelMail_1dE8e48F60beBCECoestrsf\r\n");
    const std::string binaryHeader = "Content-type: application/octet-stream; name=\"points.final.csv\"\r\n"
                                     "Content-Disposition: attachment; filename=\"points.final.csv\"\r\n"
                                     "Content-transfer-encoding: Base64\r\n";
    EXPECT_EQ(mail.Body(), "\r\n--_NextPart_CZelMail_1dE8e48F60beBCECoestrsf\r\n"
                           "Content-type: text/plain; charset=\"iso-8859-1\"\r\n"
                           "Content-transfer-encoding: quoted-printable\r\n"
                           "\r\nHello.\r\n"
                           "\r\n--_NextPart_CZelMail_1dE8e48F60beBCECoestrsf\r\n" +
                               binaryHeader + "\r\nTWFu" + "\r\n--_NextPart_CZelMail_1dE8e48F60beBCECoestrsf--\r\n");

    mail.Boundary("B");
    mail.PreMime("This is a multi-part message.");
    mail.PostMime("Bye.");
    const std::string body = mail.Body().str();
    EXPECT_EQ(body.rfind("This is a multi-part message.\r\n--B\r\n", 0), 0u) << body;
    EXPECT_EQ(body.substr(body.size() - 13), "\r\n--B--\r\nBye.");

    // An attachment read at send time: once the file has gone, the part is empty.
    std::remove(file.c_str());
    EXPECT_EQ(binary->Body(), "");
    EXPECT_NE(mail.Body().Find("Content-transfer-encoding: Base64\r\n\r\n\r\n--B--"), -1);
}

TEST(MimeParts, FileNamesAndSettings)
{
    struct Row {
        const char* path;
        const char* shown;
    };
    const Row rows[] = {
        {"/data/job 12/plan.dxf", "plan.dxf"},
        {"C:\\Jobs\\scan.tar.gz", "scan.tar.gz"},
        {"README", "README"},
        {"dir.d/noext", "noext"},
    };
    for (const auto& row : rows) {
        CZelMailMessageMimePartBinary part(row.path);
        EXPECT_NE(part.Header().Find(CString("; name=\"") + row.shown + "\"\r\n"), -1) << row.path;
        EXPECT_NE(part.Header().Find(CString("; filename=\"") + row.shown + "\"\r\n"), -1) << row.path;
    }
    CZelMailMessageMimePartBinary part("x.bin");
    part.ContentType("image/png");
    part.ContentDisposition("inline");
    part.ContentTransferEncoding("base64");
    EXPECT_EQ(part.Header(), "Content-type: image/png; name=\"x.bin\"\r\n"
                             "Content-Disposition: inline; filename=\"x.bin\"\r\n"
                             "Content-transfer-encoding: base64\r\n");
    EXPECT_EQ(part.ContentType(), "image/png");

    // The text goes out as it is, whatever the declared encoding.
    CZelMailMessageMimePartText text("caf\xe9 = 1");
    text.Charset("utf-8");
    text.ContentTransferEncoding("8bit");
    EXPECT_EQ(text.Body(), "caf\xe9 = 1");
    EXPECT_EQ(text.Header(), "Content-type: text/plain; charset=\"utf-8\"\r\nContent-transfer-encoding: 8bit\r\n");
}

TEST(EncodeFile, LinesOf76AndMissingFiles)
{
    zeltest::TempDir dir;
    std::string data;
    for (int i = 0; i < 300; ++i)
        data += static_cast<char>(i * 7);
    CString path(dir.write("bytes.bin", data));
    const std::string text = ZelEncodeBase64(path).str();
    // 300 bytes are 400 characters: five full lines and one of 20. The padding
    // counts the line breaks too, so 410 characters get two "=".
    ASSERT_EQ(text.size(), 400u + 5 * 2 + 2);
    EXPECT_EQ(text.substr(text.size() - 2), "==");
    for (std::size_t at = 76; at < text.size(); at += 78)
        EXPECT_EQ(text.substr(at, 2), "\r\n") << at;
    EXPECT_EQ(text.substr(0, 8), "AAcOFRwj");

    CString empty(dir.write("empty", ""));
    EXPECT_EQ(ZelEncodeBase64(empty), "");
    CString missing(dir.file("missing"));
    EXPECT_EQ(ZelEncodeBase64(missing), "");
    CString folder(dir.path());
    EXPECT_EQ(ZelEncodeBase64(folder), "");
}

// The file is read and encoded a block at a time; the text must be the one the
// encoder gives for the whole content, wherever the blocks and lines end.
TEST(EncodeFile, BlockwiseReadingGivesTheWholeEncoding)
{
    zeltest::TempDir dir;
    const std::size_t block = 57 * 2 * 576;
    const std::size_t sizes[] = {1, 2, 3, 56, 57, 58, 113, 114, 115, 171, block - 1, block, block + 1,
                                 block + 57, 2 * block + 58, 3 * block + 2};
    for (std::size_t size : sizes) {
        std::string data(size, '\0');
        for (std::size_t i = 0; i < size; ++i)
            data[i] = static_cast<char>((i * 131 + size) & 0xFF);
        CString path(dir.write("f.bin", data));
        const CString whole = ZelEncodeBase64(reinterpret_cast<unsigned char*>(data.data()),
                                              static_cast<unsigned long>(size), 76);
        EXPECT_EQ(ZelEncodeBase64(path), whole) << size;

        // Written straight into a message of several parts, the same text.
        CZelMailMessageMimeContainer mail;
        mail.Boundary("B");
        mail.AddMimePart(new CZelMailMessageMimePartText("t"));
        auto* binary = new CZelMailMessageMimePartBinary(path);
        mail.AddMimePart(binary);
        const std::string expected = "\r\n--B\r\n" + CZelMailMessageMimePartText("t").Header().str() + "\r\nt" +
                                     "\r\n--B\r\n" + binary->Header().str() + "\r\n" + whole.str() + "\r\n--B--\r\n";
        EXPECT_EQ(mail.Body().str(), expected) << size;
    }
}

// A class derived from the file part may give its own body; the container must ask
// it rather than read the file itself.
TEST(MimeContainer, DerivedFilePartKeepsItsOwnBody)
{
    class Stamped : public CZelMailMessageMimePartBinary {
    public:
        using CZelMailMessageMimePartBinary::CZelMailMessageMimePartBinary;
        CString Body() override { return "stamped"; }
    };
    zeltest::TempDir dir;
    const std::string file = dir.write("a.bin", "Man");
    CZelMailMessageMimeContainer mail;
    mail.Boundary("B");
    mail.AddMimePart(new Stamped(file.c_str()));
    mail.AddMimePart(new CZelMailMessageMimePartBinary(file.c_str()));
    const std::string body = mail.Body().str();
    EXPECT_NE(body.find("\r\n\r\nstamped\r\n--B\r\n"), std::string::npos) << body;
    EXPECT_NE(body.find("\r\n\r\nTWFu\r\n--B--\r\n"), std::string::npos) << body;
}

// The container owns its parts and deletes each once: the same part offered twice
// must be refused, or the destructor would delete it twice.
TEST(MimeContainer, SamePartTwiceIsRefused)
{
    CZelMailMessageMimeContainer mail;
    auto* text = new CZelMailMessageMimePartText("only once");
    ASSERT_EQ(mail.AddMimePart(text), 1);
    EXPECT_EQ(mail.AddMimePart(text), 0);
    // Still the one-part form.
    EXPECT_EQ(mail.Body(), "only once");
}
