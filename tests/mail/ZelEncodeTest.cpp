#include <Zel260/mail/ZelEncode.h>

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

// The rule as written, one character at a time: the yardstick for the fast code.
std::string referenceEncode(const std::vector<unsigned char>& data, unsigned lineLength)
{
    static const char* abc = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    unsigned sinceBreak = 0;
    auto put = [&](char c) {
        out += c;
        if (lineLength && ++sinceBreak == lineLength) {
            out += "\r\n";
            sinceBreak = 0;
        }
    };
    auto at = [&](size_t i) -> unsigned { return i < data.size() ? data[i] : 0; };
    for (size_t i = 0; i < data.size(); i += 3) {
        put(abc[at(i) >> 2]);
        put(abc[((at(i) & 3) << 4) | (at(i + 1) >> 4)]);
        if (i + 1 < data.size())
            put(abc[((at(i + 1) & 15) << 2) | (at(i + 2) >> 6)]);
        if (i + 2 < data.size())
            put(abc[at(i + 2) & 63]);
    }
    while (out.size() % 4)
        out += '=';
    return out;
}

std::string referenceDecode(const std::string& text)
{
    std::string out;
    int state = 0;
    unsigned carry = 0;
    for (char ch : text) {
        if (ch == '=' || ch == 0)
            break;
        if (ch == '\r' || ch == '\n') {
            state = 0;
            carry = 0;
            continue;
        }
        const char* abc = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        const char* p = std::strchr(abc, ch);
        if (!p)
            continue;
        unsigned v = static_cast<unsigned>(p - abc);
        if (state == 1)
            out += static_cast<char>((carry << 2) | (v >> 4));
        else if (state == 2)
            out += static_cast<char>((carry << 4) | (v >> 2));
        else if (state == 3)
            out += static_cast<char>((carry << 6) | v);
        carry = state == 0 ? v : state == 1 ? (v & 15) : state == 2 ? (v & 3) : 0;
        state = (state + 1) % 4;
    }
    return out;
}

std::string encode(const std::string& s, unsigned lineLength = 0)
{
    std::vector<unsigned char> v(s.begin(), s.end());
    return ZelEncodeBase64(v.data(), v.size(), lineLength).str();
}

std::string decode(std::string s)
{
    s.push_back(0);
    unsigned long n = ZelDecodeBase64(reinterpret_cast<unsigned char*>(s.data()));
    EXPECT_EQ(s[n], 0) << "terminator behind the bytes";
    return s.substr(0, n);
}

TEST(ZelEncodeBase64, KnownTexts)
{
    EXPECT_EQ(encode("Man"), "TWFu");
    EXPECT_EQ(encode("Ma"), "TWE=");
    EXPECT_EQ(encode("M"), "TQ==");
    EXPECT_EQ(encode(""), "");
    EXPECT_EQ(encode("\xff\xfe\x00"s), "//4A");
    EXPECT_EQ(ZelEncodeBase64(nullptr, 5, 76), "");
}

TEST(ZelEncodeBase64, PaddingCountsTheLineBreaks)
{
    // "M" on lines of 2: "TQ" fills the line, the break makes 4 characters: no "=".
    EXPECT_EQ(encode("M", 2), "TQ\r\n");
    // "Ma" on lines of 2: "TW\r\nE" is 5 characters, so three "=" follow.
    EXPECT_EQ(encode("Ma", 2), "TW\r\nE===");
    // A text that ends a line gets its break, also when it is the last.
    EXPECT_EQ(encode("Man", 4), "TWFu\r\n==");
    EXPECT_EQ(encode("ManMan", 3), "TWF\r\nuTW\r\nFu"); // 12 characters: none
    EXPECT_EQ(encode("ManMa", 5), "TWFuT\r\nWE===");     // RFC 4648 would give one
}

TEST(ZelEncodeBase64, LargeInputsMatchTheRuleForEveryLineLength)
{
    std::mt19937 rng(7);
    for (size_t size : {0u, 1u, 2u, 3u, 56u, 57u, 58u, 1000u, 100001u}) {
        std::vector<unsigned char> data(size);
        for (auto& b : data)
            b = static_cast<unsigned char>(rng());
        for (unsigned line : {0u, 1u, 2u, 3u, 4u, 5u, 7u, 64u, 76u, 77u}) {
            std::string got = ZelEncodeBase64(data.data(), data.size(), line).str();
            ASSERT_EQ(got, referenceEncode(data, line)) << "size " << size << " line " << line;
            // Breaks at multiples of four don't disturb the groups: the data comes back.
            if (line % 4 == 0) {
                ASSERT_EQ(decode(got), std::string(data.begin(), data.end())) << size << "/" << line;
            }
        }
    }
}

TEST(ZelDecodeBase64, GroupsBreaksAndStops)
{
    EXPECT_EQ(decode("TWFu"), "Man");
    EXPECT_EQ(decode("TWE="), "Ma");
    EXPECT_EQ(decode("TQ=="), "M");
    EXPECT_EQ(decode("TWFu=TWFu"), "Man");           // stops at the first "="
    EXPECT_EQ(decode("T*W F\tu"), "Man");            // other characters are skipped
    EXPECT_EQ(decode("TWFu\r\nTWFu"), "ManMan");     // a break between groups is harmless
    EXPECT_EQ(decode("TW\r\nFu"), "M\x16");         // a break inside a group restarts it
    EXPECT_EQ(decode("T"), "");
    EXPECT_EQ(decode(""), "");
    EXPECT_EQ(ZelDecodeBase64(nullptr), 0u);
}

TEST(ZelDecodeBase64, NoisyTextsMatchTheRule)
{
    std::mt19937 rng(11);
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::string noise = "\r\n \t*-\x80\xff";
    for (int round = 0; round < 200; ++round) {
        std::string text;
        size_t length = rng() % 400;
        for (size_t i = 0; i < length; ++i)
            text += (rng() % 10 == 0) ? noise[rng() % noise.size()] : alphabet[rng() % 64];
        if (rng() % 4 == 0)
            text.insert(rng() % (text.size() + 1), "=");
        ASSERT_EQ(decode(text), referenceDecode(text)) << text;
    }
}

TEST(ZelEncodeIso8859, EscapesEqualsAndBytesAbove0x99)
{
    EXPECT_EQ(ZelEncodeIso8859("a=b"), "a=3Db");
    EXPECT_EQ(ZelEncodeIso8859("\xE4"), "=E4");
    EXPECT_EQ(ZelEncodeIso8859("\x85\x99\x9A"), "\x85\x99=9A");
    EXPECT_EQ(ZelEncodeIso8859("plain text\r\n"), "plain text\r\n");
    EXPECT_EQ(ZelEncodeIso8859(nullptr), "");
}

} // namespace
