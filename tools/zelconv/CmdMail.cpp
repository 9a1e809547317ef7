// zelconv mail: builds a message and sends it by SMTP.
#include "ZelconvCommand.h"

#include <Zel260/platform/Socket.h>

#include <Zel260/mail/CZelMailMessageMimeContainer.h>
#include <Zel260/mail/CZelMailMessageMimePartBinary.h>
#include <Zel260/mail/CZelMailMessageMimePartText.h>
#include <Zel260/mail/CZelSmtp.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

bool readAll(const std::string& path, std::string& out)
{
    if (path == "-") {
        out.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
        return !std::cin.bad();
    }
    std::ifstream f(path, std::ios::binary);
    if (!f)
        return false;
    std::ostringstream s;
    s << f.rdbuf();
    out = s.str();
    return true;
}

// Mail lines end in CR LF; text files here end theirs in LF.
std::string toCrLf(const std::string& text)
{
    std::string out;
    out.reserve(text.size() + text.size() / 32);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r'))
            out += '\r';
        out += text[i];
    }
    return out;
}

// Adds every comma-separated address of every occurrence of the option; false with
// the refused address in `bad`.
bool addRecipients(CZelMailMessage& mail, const std::vector<std::string>& values,
                   CZelMailMessage::eRecipientTypes type, std::string& bad)
{
    for (const auto& value : values) {
        std::size_t start = 0;
        for (;;) {
            std::size_t comma = value.find(',', start);
            std::string one = value.substr(start, comma == std::string::npos ? std::string::npos : comma - start);
            if (!mail.AddRecipient(one.c_str(), type)) {
                bad = one;
                return false;
            }
            if (comma == std::string::npos)
                break;
            start = comma + 1;
        }
    }
    return true;
}

int run(ZelconvArgs& args)
{
    const auto server = args.Value("--server");
    const auto port = args.Value("--port");
    const auto from = args.Value("--from");
    const auto to = args.Values("--to");
    const auto cc = args.Values("--cc");
    const auto bcc = args.Values("--bcc");
    const auto subject = args.Value("--subject");
    const auto bodyFile = args.Value("--body");
    const auto attachments = args.Values("--attach");
    const auto timeout = args.Value("--timeout");
    std::string error;
    if (!args.Finish(error))
        return ZelconvUsageError(error);
    if (!server || server->empty())
        return ZelconvUsageError("mail needs --server HOST");
    if (!from)
        return ZelconvUsageError("mail needs --from ADDR");
    if (to.empty())
        return ZelconvUsageError("mail needs --to ADDR");
    if (!subject)
        return ZelconvUsageError("mail needs --subject S");

    unsigned int portNumber = 25;
    if (port) {
        char* end = nullptr;
        unsigned long n = std::strtoul(port->c_str(), &end, 10);
        if (port->empty() || *end || n == 0 || n > 65535)
            return ZelconvUsageError("--port must be a number from 1 to 65535");
        portNumber = static_cast<unsigned int>(n);
    }

    long timeoutSeconds = 60;
    if (timeout && (!ZelconvParseInt(*timeout, timeoutSeconds) || timeoutSeconds < 0 || timeoutSeconds > 86400))
        return ZelconvUsageError("--timeout must be a number of seconds from 0 to 86400");
    // A command line tool must not hang on a server that accepts and then keeps quiet.
    ZelSetSocketTimeout(static_cast<DWORD>(timeoutSeconds) * 1000);

    std::string body;
    if (bodyFile && !readAll(*bodyFile, body))
        return ZelconvUsageError("cannot read the body from " + *bodyFile);
    body = toCrLf(body);
    for (const auto& file : attachments) {
        // The library would send a vanished file as an empty part; here the user
        // can still be told.
        std::ifstream probe(file, std::ios::binary);
        if (!probe)
            return ZelconvUsageError("cannot read attachment " + file);
    }

    CZelMailMessageMimeContainer mail;
    mail.From(from->c_str());
    if (mail.From().address.IsEmpty())
        return ZelconvUsageError("--from has no address");
    mail.Subject(subject->c_str());
    std::string bad;
    if (!addRecipients(mail, to, CZelMailMessage::To, bad) || !addRecipients(mail, cc, CZelMailMessage::Cc, bad) ||
        !addRecipients(mail, bcc, CZelMailMessage::Bcc, bad))
        return ZelconvUsageError("not a valid mail address: \"" + bad + "\"");
    if (attachments.empty()) {
        mail.Body(body.c_str());
    } else {
        if (bodyFile)
            mail.AddMimePart(new CZelMailMessageMimePartText(CString(body)));
        for (const auto& file : attachments)
            mail.AddMimePart(new CZelMailMessageMimePartBinary(CString(file)));
    }

    CZelSmtp smtp(CString(*server), portNumber);
    int ok = smtp.Connect() && smtp.SendMailMessage(&mail);
    if (!ok) {
        std::fprintf(stderr, "zelconv: mail not sent: %s\n", smtp.GetLastError().GetString());
        return 1;
    }
    ok = smtp.Disconnect();
    std::printf("sent to %u recipient(s) through %s:%u\n", mail.GetNumRecipients(), server->c_str(), portNumber);
    if (!ok)
        std::fprintf(stderr, "zelconv: warning: %s\n", smtp.GetLastError().GetString());
    return 0;
}

const ZelconvRegistration registration({
    "mail",
    "mail --server HOST [--port N] [--timeout S] --from ADDR --to ADDR[,ADDR] [--cc ADDR] [--bcc ADDR] --subject S "
    "[--body FILE|-] [--attach FILE]...",
    "Builds a mail and sends it by SMTP (HELO, no authentication, no encryption).\n"
    "  --server HOST    SMTP server: host name or dotted IPv4 address\n"
    "  --port N         server port (default 25)\n"
    "  --timeout S      give up on a server that keeps quiet for S seconds (default 60,\n"
    "                   0 waits for ever)\n"
    "  --from ADDR      sender, \"Name <user@host>\" or \"user@host\"\n"
    "  --to ADDR        recipients, comma-separated; may be repeated\n"
    "  --cc ADDR        copy recipients, comma-separated; may be repeated\n"
    "  --bcc ADDR       blind copy recipients (envelope only), comma-separated; may be repeated\n"
    "  --subject S      subject line\n"
    "  --body FILE      message text from FILE, or from standard input with -; LF line\n"
    "                   ends are sent as CR LF\n"
    "  --attach FILE    attach FILE (Base64); may be repeated. With attachments the mail\n"
    "                   is multipart/mixed and the body becomes its first, text part\n"
    "Exit status: 0 sent, 1 not sent (the server's or the socket's error is printed),\n"
    "2 bad usage or an address that isn't valid.",
    run,
});

} // namespace
