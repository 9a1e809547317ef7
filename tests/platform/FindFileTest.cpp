#include <Zel260/platform/FindFile.h>
#include <Zel260/platform/Win32Error.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include "Unprivileged.h"

#include <set>
#include <string>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::set<std::string> enumerate(const std::string& search, DWORD* error = nullptr)
{
    std::set<std::string> names;
    WIN32_FIND_DATA fd;
    HANDLE h = FindFirstFile(search.c_str(), &fd);
    if (h == INVALID_HANDLE_VALUE) {
        if (error)
            *error = GetLastError();
        return names;
    }
    do
        names.insert(fd.cFileName);
    while (FindNextFile(h, &fd));
    if (error)
        *error = GetLastError();
    FindClose(h);
    return names;
}

} // namespace

TEST(FindFile, WildcardRules)
{
    struct Row {
        const char* name;
        const char* pattern;
        const char* file;
        bool match;
    } rows[] = {
        {"star matches all", "*", "abc", true},
        {"star-dot-star matches a name without dot", "*.*", "README", true},
        {"case is ignored", "*.TXT", "notes.txt", true},
        {"question mark is one char", "a?c", "abc", true},
        {"question mark needs a char", "a?c", "ac", false},
        {"question mark takes one UTF-8 character", "?x", "\xc3\xa9x", true},
        {"suffix must match", "*.txt", "notes.txt.bak", false},
        {"backtracking over several stars", "*a*a*b", "aaaaaaaaaaaaaaaaaaaaaaac", false},
        {"X.* takes the bare name", "notes.*", "notes", true},
        {"non-ASCII compares bytewise", "\xc3\x89*", "\xc3\xa9t\xc3\xa9", false},
        {"literal blank", "a b*", "a bc", true},
        // "*" and a plain tail is decided by the name's end alone; these rows are
        // the places where that could part from the general rule.
        {"star may match nothing", "*.txt", ".txt", true},
        {"name shorter than the tail", "*.txt", "txt", false},
        {"case is ignored on both sides", "*.TxT", "A.tXt", true},
        {"tail repeated", "*.txt", "a.txt.txt", true},
        {"tail only inside", "*.txt", "a.txt.bak", false},
        {"multi-byte character before the tail", "*.txt", "\xc3\xa9.txt", true},
        {"tail starting inside a character is never met", "*\xa9x", "\xc3\xa9x", false},
        {"non-ASCII tail compares bytewise", "*\xc3\xa9", "x\xc3\x89", false},
        {"wildcard in the tail", "*.t?t", "a.txt", true},
    };
    for (const Row& r : rows)
        EXPECT_EQ(ZelWildcardMatch(r.pattern, r.file), r.match ? TRUE : FALSE) << r.name;
    EXPECT_FALSE(ZelWildcardMatch(nullptr, "a"));
}

TEST(FindFile, EnumeratesWithDotEntriesAndPattern)
{
    zeltest::TempDir dir;
    dir.write("a.txt", "hello");
    dir.write("B.TXT", "");
    dir.write("c.dat", "");
    dir.write("sub/x", "");
    dir.write("with blank \xc3\xa9.txt", "");

    EXPECT_EQ(enumerate(dir.path() + "/*.*"),
              (std::set<std::string>{".", "..", "a.txt", "B.TXT", "c.dat", "sub", "with blank \xc3\xa9.txt"}));
    EXPECT_EQ(enumerate(dir.path() + "\\*.txt"), (std::set<std::string>{"a.txt", "B.TXT", "with blank \xc3\xa9.txt"}));
    // A plain name finds the entry, and in another case too.
    EXPECT_EQ(enumerate(dir.path() + "/A.TXT"), (std::set<std::string>{"a.txt"}));
}

TEST(FindFile, RecordIsFilledFromStat)
{
    zeltest::TempDir dir;
    std::string f = dir.write("data.bin", std::string(5000, 'x'));
    dir.write(".hidden", "");
    ASSERT_EQ(chmod(f.c_str(), 0444), 0);

    WIN32_FIND_DATA fd;
    HANDLE h = FindFirstFile((dir.path() + "/data.bin").c_str(), &fd);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    EXPECT_EQ(fd.nFileSizeLow, 5000u);
    EXPECT_EQ(fd.nFileSizeHigh, 0u);
    EXPECT_EQ(fd.dwFileAttributes, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    EXPECT_STREQ(fd.cAlternateFileName, "");
    struct stat st;
    ASSERT_EQ(stat(f.c_str(), &st), 0);
    FILETIME expect = ZelFileTimeFromUnix(st.st_mtim.tv_sec, st.st_mtim.tv_nsec);
    EXPECT_EQ(fd.ftLastWriteTime.dwHighDateTime, expect.dwHighDateTime);
    EXPECT_EQ(fd.ftLastWriteTime.dwLowDateTime, expect.dwLowDateTime);
    EXPECT_FALSE(FindNextFile(h, &fd));
    EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
    EXPECT_TRUE(FindClose(h));
    EXPECT_FALSE(FindClose(h));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);

    h = FindFirstFile((dir.path() + "/.hidden").c_str(), &fd);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(fd.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN);
    FindClose(h);

    h = FindFirstFile((dir.path() + "/.").c_str(), &fd);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    EXPECT_EQ(fd.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN), FILE_ATTRIBUTE_DIRECTORY);
    FindClose(h);

    // 1970-01-01 is 116444736000000000 in FILETIME units.
    FILETIME epoch = ZelFileTimeFromUnix(0, 0);
    EXPECT_EQ((static_cast<unsigned long long>(epoch.dwHighDateTime) << 32) | epoch.dwLowDateTime,
              116444736000000000ULL);
}

TEST(FindFile, ErrorNumbers)
{
    zeltest::TempDir dir;
    dir.write("file", "");
    struct Row {
        const char* name;
        std::string search;
        DWORD error;
    } rows[] = {
        {"no match", dir.path() + "/*.none", ERROR_FILE_NOT_FOUND},
        {"missing name", dir.path() + "/nothing", ERROR_FILE_NOT_FOUND},
        {"missing directory", dir.path() + "/nodir/*", ERROR_PATH_NOT_FOUND},
        {"directory is a file", dir.path() + "/file/*", ERROR_PATH_NOT_FOUND},
        {"empty pattern", dir.path() + "/", ERROR_FILE_NOT_FOUND},
    };
    for (const Row& r : rows) {
        WIN32_FIND_DATA fd;
        EXPECT_EQ(FindFirstFile(r.search.c_str(), &fd), INVALID_HANDLE_VALUE) << r.name;
        EXPECT_EQ(GetLastError(), r.error) << r.name;
    }
    WIN32_FIND_DATA fd;
    EXPECT_EQ(FindFirstFile(nullptr, &fd), INVALID_HANDLE_VALUE);
    EXPECT_FALSE(FindNextFile(reinterpret_cast<HANDLE>(&fd), &fd));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(FindFile, UnreadableDirectoryIsAccessDenied)
{
    zeltest::TempDir dir;
    ASSERT_EQ(chmod(dir.path().c_str(), 0755), 0);
    std::string locked = dir.path() + "/locked";
    ASSERT_EQ(mkdir(locked.c_str(), 0), 0);
    int code = zeltest::runUnprivileged([&] {
        WIN32_FIND_DATA fd;
        HANDLE h = FindFirstFile((locked + "/*").c_str(), &fd);
        return h == INVALID_HANDLE_VALUE && GetLastError() == ERROR_ACCESS_DENIED ? 0 : 1;
    });
    EXPECT_EQ(code, 0);
}

TEST(FindFile, LinksThatLoopOrDangleAreLeftOut)
{
    zeltest::TempDir dir;
    dir.write("real", "abc");
    ASSERT_EQ(symlink("a", dir.file("b").c_str()), 0);
    ASSERT_EQ(symlink("b", dir.file("a").c_str()), 0);
    ASSERT_EQ(symlink("missing", dir.file("dangling").c_str()), 0);
    ASSERT_EQ(symlink("real", dir.file("tofile").c_str()), 0);
    ASSERT_EQ(symlink(".", dir.file("self").c_str()), 0);

    EXPECT_EQ(enumerate(dir.path() + "/*"), (std::set<std::string>{".", "..", "real", "tofile", "self"}));

    WIN32_FIND_DATA fd;
    HANDLE h = FindFirstFile(dir.file("tofile").c_str(), &fd);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    EXPECT_EQ(fd.nFileSizeLow, 3u);
    EXPECT_EQ(fd.dwFileAttributes, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT);
    FindClose(h);
    h = FindFirstFile(dir.file("self").c_str(), &fd);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    EXPECT_EQ(fd.dwFileAttributes, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
    FindClose(h);
    EXPECT_EQ(FindFirstFile(dir.file("a").c_str(), &fd), INVALID_HANDLE_VALUE);
}

TEST(FindFile, LimitToDirectoriesStillReportsEveryDirectory)
{
    zeltest::TempDir dir;
    dir.write("f1", "");
    dir.write("d1/f", "");
    dir.write("d2/f", "");
    std::set<std::string> dirs;
    WIN32_FIND_DATA fd;
    HANDLE h = FindFirstFileEx((dir.path() + "/*.*").c_str(), &fd, FindExSearchLimitToDirectories);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    do
        if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            dirs.insert(fd.cFileName);
    while (FindNextFile(h, &fd));
    FindClose(h);
    EXPECT_EQ(dirs, (std::set<std::string>{".", "..", "d1", "d2"}));
}
