// The body's dot transparency against the rule in its plainest form, on bodies
// where lone dots crowd together, stand first and last, and lie far apart.
#include <Zel260/mail/CZelSmtp.h>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

class OpenSmtp : public CZelSmtp {
public:
    using CZelSmtp::PrepareBody;
};

// Ends the body in "\r\n", doubles a leading lone dot, then replaces "\r\n.\r\n" by
// "\r\n..\r\n" one at a time, each time searching from the start again.
std::string reference(std::string body)
{
    if (body.size() < 2 || body.compare(body.size() - 2, 2, "\r\n") != 0)
        body += "\r\n";
    if (body.compare(0, 3, ".\r\n") == 0)
        body.insert(0, 1, '.');
    for (std::size_t at; (at = body.find("\r\n.\r\n")) != std::string::npos;)
        body.insert(at + 2, 1, '.');
    return body;
}

std::string prepared(const std::string& body)
{
    CString text(body);
    OpenSmtp().PrepareBody(text);
    return text.str();
}

} // namespace

TEST(DotTransparency, MatchesTheRuleOnRandomBodies)
{
    // Pieces that make and break lone-dot lines in every way, NUL included.
    const char* const pieces[] = {".", "\r\n", "\r", "\n", "a", "..", ".\r\n", "\r\n."};
    std::mt19937 gen(7);
    for (int round = 0; round < 3000; ++round) {
        std::string body;
        const int count = static_cast<int>(gen() % 24);
        for (int i = 0; i < count; ++i) {
            const std::size_t k = gen() % 9;
            body += k == 8 ? std::string(1, '\0') : std::string(pieces[k]);
        }
        ASSERT_EQ(prepared(body), reference(body)) << "round " << round;
    }
}

TEST(DotTransparency, LoneDotsFarApartInALargeBody)
{
    // Lone dots at the very start and end and between long runs of text without
    // any: every stretch between them moves by a different amount.
    std::string body = ".\r\n";
    for (int i = 0; i < 5; ++i) {
        body += std::string(70000 + i * 3, 'x');
        body += "\r\n.\r\n.\r\n";
    }
    body += "y\r\n.";
    const std::string out = prepared(body);
    EXPECT_EQ(out, reference(body));
    EXPECT_EQ(out.size(), body.size() + 2 + 1 + 10 + 1);
    // A body without a lone dot comes back as it was, but for the line end.
    const std::string plain(200000, 'z');
    EXPECT_EQ(prepared(plain), plain + "\r\n");
}
