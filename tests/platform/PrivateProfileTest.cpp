#include <Zel260/platform/PrivateProfile.h>
#include <Zel260/platform/Win32Error.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string readString(const std::string& file, const char* section, const char* key, const char* def = "<def>",
                       DWORD size = 256)
{
    std::string buf(size ? size : 1, '\x7f');
    DWORD n = GetPrivateProfileString(section, key, def, buf.data(), size, file.c_str());
    return buf.substr(0, n);
}

struct ReadRow {
    const char* name;
    std::string content;
    const char* section;
    const char* key;
    const char* expected;
};

class PrivateProfileRead : public ::testing::TestWithParam<ReadRow> {};

TEST_P(PrivateProfileRead, FindsTheValueWindowsWould)
{
    zeltest::TempDir dir;
    auto file = dir.write("p.ini", GetParam().content);
    EXPECT_EQ(readString(file, GetParam().section, GetParam().key), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PrivateProfileRead,
    ::testing::Values(
        ReadRow{"plain", "[S]\nk=v\n", "S", "k", "v"},
        ReadRow{"caseInsensitiveNames", "[Section]\nKey=v\n", "sEcTiOn", "KEY", "v"},
        ReadRow{"blanksAroundNamesAndValue", "  [ S ]  \n  k  =  a b  \n", "S", "k", "a b"},
        ReadRow{"crlf", "[S]\r\nk=v\r\nj=w\r\n", "S", "j", "w"},
        ReadRow{"lastLineWithoutEnd", "[S]\nk=v", "S", "k", "v"},
        ReadRow{"doubleQuotesStripped", "[S]\nk=\" x \"\n", "S", "k", " x "},
        ReadRow{"singleQuotesStripped", "[S]\nk='x'\n", "S", "k", "x"},
        ReadRow{"unmatchedQuoteKept", "[S]\nk=\"x'\n", "S", "k", "\"x'"},
        ReadRow{"valueKeepsEqualsSigns", "[S]\nk=a=b\n", "S", "k", "a=b"},
        ReadRow{"emptyValueIsNotDefault", "[S]\nk=\n", "S", "k", ""},
        ReadRow{"firstDuplicateKeyWins", "[S]\nk=1\nk=2\n", "S", "k", "1"},
        ReadRow{"firstDuplicateSectionWins", "[S]\na=1\n[T]\n[S]\nk=2\n", "S", "k", "<def>"},
        ReadRow{"keyInOtherSection", "[S]\na=1\n[T]\nk=2\n", "S", "k", "<def>"},
        ReadRow{"keyBeforeAnySection", "k=1\n[S]\n", "S", "k", "<def>"},
        ReadRow{"commentIsNoKey", "[S]\n;k=1\n", "S", ";k", "<def>"},
        ReadRow{"byteOrderMark", "\xEF\xBB\xBF[S]\nk=v\n", "S", "k", "v"},
        ReadRow{"headerWithoutBracketIgnored", "[S]\n[T\nk=v\n", "S", "k", "v"},
        ReadRow{"binaryGarbage", std::string("\0\xff[\x01]=\n\n\0=[", 11), "S", "k", "<def>"},
        ReadRow{"emptyFile", "", "S", "k", "<def>"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PrivateProfile, UnreadableFilesGiveTheDefault)
{
    zeltest::TempDir dir;
    std::filesystem::create_directory(dir.file("folder.ini"));
    ASSERT_EQ(mkfifo(dir.file("fifo.ini").c_str(), 0600), 0);
    for (const std::string name : {"missing.ini", "folder.ini", "fifo.ini"}) {
        EXPECT_EQ(readString(dir.file(name), "S", "k"), "<def>") << name;
        EXPECT_EQ(GetPrivateProfileInt("S", "k", 7, dir.file(name).c_str()), 7u) << name;
    }
    EXPECT_EQ(readString(dir.file("missing.ini"), "S", "k", nullptr), "");
    // Trailing blanks of the default are dropped, as on Windows.
    EXPECT_EQ(readString(dir.file("missing.ini"), "S", "k", "ab  "), "ab");
}

TEST(PrivateProfile, IntegerParse)
{
    struct Row {
        const char* value;
        UINT expected;
    };
    const Row rows[] = {
        {"42", 42},
        {"  -1", 0xFFFFFFFFu},
        {"+17", 17},
        {"12abc", 12},
        {"abc", 0},
        {"0x10", 0},
        {"-", 0},
        {"4294967297", 1},          // wraps modulo 2^32
        {"-2147483648", 0x80000000u},
        {"\"-5\"", static_cast<UINT>(-5)}, // quotes go before the parse
        {"", 99},                   // an empty value gives the default
    };
    zeltest::TempDir dir;
    for (const auto& r : rows) {
        auto file = dir.write("i.ini", std::string("[S]\nk=") + r.value + "\n");
        EXPECT_EQ(GetPrivateProfileInt("S", "k", 99, file.c_str()), r.expected) << r.value;
    }
    auto file = dir.write("i.ini", "[S]\nk=1\n");
    EXPECT_EQ(GetPrivateProfileInt("S", "missing", -1, file.c_str()), 0xFFFFFFFFu);
    EXPECT_EQ(GetPrivateProfileInt(nullptr, "k", 5, file.c_str()), 5u);
}

TEST(PrivateProfile, BufferLimitCutsValueAndDefault)
{
    zeltest::TempDir dir;
    auto file = dir.write("p.ini", "[S]\nk=abcdef\n");
    char buf[4] = {'x', 'x', 'x', 'x'};
    EXPECT_EQ(GetPrivateProfileString("S", "k", "", buf, 4, file.c_str()), 3u);
    EXPECT_STREQ(buf, "abc");
    EXPECT_EQ(GetPrivateProfileString("S", "none", "123456", buf, 4, file.c_str()), 3u);
    EXPECT_STREQ(buf, "123");
    EXPECT_EQ(GetPrivateProfileString("S", "k", "", buf, 1, file.c_str()), 0u);
    EXPECT_EQ(buf[0], 0);
    buf[0] = 'x';
    EXPECT_EQ(GetPrivateProfileString("S", "k", "", buf, 0, file.c_str()), 0u);
    EXPECT_EQ(buf[0], 'x');
    EXPECT_EQ(GetPrivateProfileString("S", "k", "", nullptr, 10, file.c_str()), 0u);
}

TEST(PrivateProfile, EnumeratesSectionsAndKeys)
{
    zeltest::TempDir dir;
    auto file = dir.write("p.ini", "[A]\nx=1\n; note\ny = 2\n[B]\n[a]\nz=3\n");
    using namespace std::string_literals;
    EXPECT_EQ(readString(file, nullptr, nullptr), "A\0B\0"s);
    EXPECT_EQ(readString(file, "a", nullptr), "x\0y\0"s);
    EXPECT_EQ(readString(file, "B", nullptr), ""s);

    // A list that doesn't fit is cut and ends in two zero bytes; the result is size - 2.
    char buf[5];
    EXPECT_EQ(GetPrivateProfileString(nullptr, nullptr, "", buf, 5, file.c_str()), 4u); // fits exactly
    EXPECT_EQ(std::string(buf, 5), "A\0B\0\0"s);
    EXPECT_EQ(GetPrivateProfileString(nullptr, nullptr, "", buf, 4, file.c_str()), 2u);
    EXPECT_EQ(std::string(buf, 4), "A\0\0\0"s);
    EXPECT_EQ(GetPrivateProfileString("A", nullptr, "", buf, 3, file.c_str()), 1u);
    EXPECT_EQ(std::string(buf, 3), "x\0\0"s);
    char two[2] = {'x', 'x'};
    EXPECT_EQ(GetPrivateProfileString("missing", nullptr, "", two, 2, file.c_str()), 0u);
    EXPECT_EQ(std::string(two, 2), "\0\0"s);
}

// A list that fills the buffer to its last byte and has one more name behind: the
// cut must stay inside the buffer.
TEST(PrivateProfile, ListCutAfterAnExactFitStaysInsideTheBuffer)
{
    zeltest::TempDir dir;
    auto file = dir.write("p.ini", "[A]\n[B]\n[Cxyzuvw]\n");
    using namespace std::string_literals;
    std::string buf(16, '#');
    EXPECT_EQ(GetPrivateProfileString(nullptr, nullptr, "", buf.data(), 5, file.c_str()), 3u);
    EXPECT_EQ(buf, "A\0B\0\0###########"s);
}

TEST(PrivateProfile, WriteCreatesFileSectionAndKey)
{
    zeltest::TempDir dir;
    auto file = dir.file("new.ini");
    ASSERT_TRUE(WritePrivateProfileString("S", "a", "1", file.c_str()));
    ASSERT_TRUE(WritePrivateProfileString("S", "b", "2", file.c_str()));
    ASSERT_TRUE(WritePrivateProfileString("T", "c", "3", file.c_str()));
    EXPECT_EQ(zeltest::readFile(file), "[S]\na=1\nb=2\n\n[T]\nc=3\n");
    EXPECT_EQ(GetPrivateProfileInt("s", "B", 0, file.c_str()), 2u);
}

TEST(PrivateProfile, WriteKeepsEverythingElse)
{
    zeltest::TempDir dir;
    auto file = dir.write("p.ini", "; head\r\n[S]\r\n  Key = old \r\n; inside\r\nother=x\r\n\r\n"
                                   "; about T\r\n[T]\r\nk=1\r\n");
    ASSERT_TRUE(WritePrivateProfileString("s", "KEY", "new", file.c_str()));
    ASSERT_TRUE(WritePrivateProfileString("S", "added", "y", file.c_str()));
    ASSERT_TRUE(WritePrivateProfileString("T", "k", nullptr, file.c_str()));
    EXPECT_EQ(zeltest::readFile(file), "; head\r\n[S]\r\nKey=new\r\n; inside\r\nother=x\r\nadded=y\r\n\r\n"
                                       "; about T\r\n[T]\r\n");
    ASSERT_TRUE(WritePrivateProfileString("S", nullptr, nullptr, file.c_str()));
    EXPECT_EQ(zeltest::readFile(file), "; head\r\n[T]\r\n");
    // No temporary file is left behind.
    size_t count = 0;
    for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator(dir.path()))
        ++count;
    EXPECT_EQ(count, 1u);
}

TEST(PrivateProfile, DeletingRemovesHiddenDuplicatesToo)
{
    zeltest::TempDir dir;
    auto file = dir.write("p.ini", "[S]\nk=1\nk=2\n[X]\n[s]\nk=3\n");
    ASSERT_TRUE(WritePrivateProfileString("S", "k", nullptr, file.c_str()));
    EXPECT_EQ(readString(file, "S", "k"), "<def>");
    ASSERT_TRUE(WritePrivateProfileString("S", nullptr, nullptr, file.c_str()));
    EXPECT_EQ(zeltest::readFile(file), "[X]\n");
}

TEST(PrivateProfile, WriteFailures)
{
    zeltest::TempDir dir;
    SetLastError(0);
    EXPECT_FALSE(WritePrivateProfileString("S", "k", "v", dir.file("no/such/folder.ini").c_str()));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_FALSE(std::filesystem::exists(dir.file("no")));

    EXPECT_FALSE(WritePrivateProfileString(nullptr, "k", "v", dir.file("p.ini").c_str()));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);

    // Deleting from a file that isn't there succeeds without making one.
    EXPECT_TRUE(WritePrivateProfileString("S", "k", nullptr, dir.file("absent.ini").c_str()));
    EXPECT_FALSE(std::filesystem::exists(dir.file("absent.ini")));

    if (geteuid() != 0) { // root writes anywhere
        auto file = dir.write("ro.ini", "[S]\nk=1\n");
        chmod(file.c_str(), 0444);
        EXPECT_FALSE(WritePrivateProfileString("S", "k", "2", file.c_str()));
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
        EXPECT_EQ(zeltest::readFile(file), "[S]\nk=1\n");
    }
}

TEST(PrivateProfile, WriteKeepsModeAndFollowsLinks)
{
    zeltest::TempDir dir;
    auto file = dir.write("p.ini", "[S]\n");
    chmod(file.c_str(), 0640);
    ASSERT_EQ(symlink(file.c_str(), dir.file("link.ini").c_str()), 0);
    ASSERT_TRUE(WritePrivateProfileString("S", "k", "v", dir.file("link.ini").c_str()));
    struct stat st;
    ASSERT_EQ(lstat(dir.file("link.ini").c_str(), &st), 0);
    EXPECT_TRUE(S_ISLNK(st.st_mode));
    ASSERT_EQ(stat(file.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0640u);
    EXPECT_EQ(zeltest::readFile(file), "[S]\nk=v\n");
}

TEST(PrivateProfile, BareNamesLiveInTheConfigFolder)
{
    zeltest::TempDir dir;
    std::string saved = getenv("XDG_CONFIG_HOME") ? getenv("XDG_CONFIG_HOME") : "";
    std::string savedHome = getenv("HOME") ? getenv("HOME") : "";
    setenv("XDG_CONFIG_HOME", dir.path().c_str(), 1);
    char buf[512];
    EXPECT_EQ(GetWindowsDirectory(buf, sizeof buf), dir.path().size());
    EXPECT_EQ(std::string(buf), dir.path());
    EXPECT_EQ(GetWindowsDirectory(buf, 3), dir.path().size() + 1);
    EXPECT_TRUE(WritePrivateProfileString("S", "k", "v", "bare.ini"));
    EXPECT_EQ(zeltest::readFile(dir.file("bare.ini")), "[S]\nk=v\n");
    setenv("XDG_CONFIG_HOME", "relative/ignored", 1);
    setenv("HOME", dir.path().c_str(), 1);
    EXPECT_EQ(GetWindowsDirectory(buf, sizeof buf), dir.path().size() + 8);
    EXPECT_EQ(std::string(buf), dir.path() + "/.config");
    setenv("HOME", savedHome.c_str(), 1);
    if (saved.empty())
        unsetenv("XDG_CONFIG_HOME");
    else
        setenv("XDG_CONFIG_HOME", saved.c_str(), 1);
}

} // namespace

namespace {

// Files are read block by block; headers, keys and brackets inside values may fall
// on any byte of a block's edge.
TEST(PrivateProfile, LongFilesReadAcrossBlockEdges)
{
    zeltest::TempDir dir;
    for (size_t shift = 0; shift < 24; ++shift) {
        std::string content = "[A]\n";
        while (content.size() < 16384 - 12 + shift)
            content += "k=[x] y\n"; // "[" in values is no header
        content.resize(16384 - 12 + shift, 'z');
        content += "\n  [Target]\r\nkey = found\r\n[B]\nkey=other\n";
        auto file = dir.write("long.ini", content);
        EXPECT_EQ(readString(file, "target", "KEY"), "found") << shift;
        EXPECT_EQ(readString(file, "B", "key"), "other") << shift;
        EXPECT_EQ(readString(file, "A", "key"), "<def>") << shift;
    }
}

} // namespace
