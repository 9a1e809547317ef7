#include <Zel260/pim32/Pim32File.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/Win32Error.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

TEST(Pim32File, WriteSeekReadRoundTrip)
{
    zeltest::TempDir dir;
    std::string name = dir.file("data.bin");
    HANDLE h = Pim32FileCreate(name.c_str(), GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, 0);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(Pim32FileWrite(h, "0123456789", 10));
    EXPECT_TRUE(Pim32FileSeek(h, 2));
    EXPECT_TRUE(Pim32FileWrite(h, "AB", 2));
    EXPECT_TRUE(Pim32FileSeekEnd(h));
    EXPECT_TRUE(Pim32FileWrite(h, "Z", 1));
    EXPECT_EQ(Pim32FileSize(h), 11);
    EXPECT_TRUE(Pim32FileClose(h));
    EXPECT_EQ(zeltest::readFile(name), "01AB456789Z");
    EXPECT_EQ(Pim32FileSize(name.c_str()), 11);

    h = Pim32FileOpen(name.c_str(), GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, 0);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    char buf[16] = {};
    EXPECT_TRUE(Pim32FileRead(h, buf, 4));
    EXPECT_STREQ(buf, "01AB");
    DWORD err = 0;
    char text[260] = {};
    EXPECT_FALSE(Pim32FileRead(h, buf, 10, &err, text, sizeof text));
    EXPECT_EQ(err, ERROR_HANDLE_EOF);
    EXPECT_STRNE(text, "");
    EXPECT_FALSE(Pim32FileSeek(h, -1, &err));
    EXPECT_EQ(err, ERROR_INVALID_PARAMETER);
    Pim32FileClose(h);
}

TEST(Pim32File, OpenFailuresFillTheTriple)
{
    zeltest::TempDir dir;
    std::string existing = dir.write("x", "");
    struct Row {
        const char* name;
        std::string path;
        DWORD disposition;
        DWORD error;
    } rows[] = {
        {"missing file", dir.file("nope"), OPEN_EXISTING, ERROR_FILE_NOT_FOUND},
        {"missing folder", dir.file("nope/x"), CREATE_ALWAYS, ERROR_PATH_NOT_FOUND},
        {"new over existing", existing, CREATE_NEW, ERROR_FILE_EXISTS},
        {"directory", dir.path(), OPEN_EXISTING, ERROR_ACCESS_DENIED},
        {"bad disposition", existing, 99, ERROR_INVALID_PARAMETER},
    };
    for (const Row& r : rows) {
        DWORD err = 0;
        char text[8] = "unset";
        EXPECT_EQ(Pim32FileCreate(r.path.c_str(), GENERIC_WRITE, r.disposition, 0, 0, &err, text, sizeof text),
                  INVALID_HANDLE_VALUE)
            << r.name;
        EXPECT_EQ(err, r.error) << r.name;
        EXPECT_LT(std::strlen(text), sizeof text) << r.name; // cut, and terminated
        EXPECT_EQ(GetLastError(), r.error) << r.name;
    }
    // Text without number and number without text both work.
    char text[260] = {};
    EXPECT_EQ(Pim32FileOpen(rows[0].path.c_str(), GENERIC_READ, OPEN_EXISTING, 0, 0, nullptr, text, sizeof text),
              INVALID_HANDLE_VALUE);
    EXPECT_STRNE(text, "");
}

TEST(Pim32File, ShareModeZeroExcludesOtherOpens)
{
    zeltest::TempDir dir;
    std::string name = dir.write("locked", "abc");
    HANDLE a = Pim32FileOpen(name.c_str(), GENERIC_WRITE, OPEN_EXISTING, 0, 0);
    ASSERT_NE(a, INVALID_HANDLE_VALUE);
    DWORD err = 0;
    EXPECT_EQ(Pim32FileOpen(name.c_str(), GENERIC_READ, OPEN_EXISTING, 0, FILE_SHARE_READ, &err), INVALID_HANDLE_VALUE);
    EXPECT_EQ(err, ERROR_SHARING_VIOLATION);
    Pim32FileClose(a);
    HANDLE r1 = Pim32FileOpen(name.c_str(), GENERIC_READ, OPEN_EXISTING, 0, FILE_SHARE_READ);
    HANDLE r2 = Pim32FileOpen(name.c_str(), GENERIC_READ, OPEN_EXISTING, 0, FILE_SHARE_READ);
    EXPECT_NE(r1, INVALID_HANDLE_VALUE);
    EXPECT_NE(r2, INVALID_HANDLE_VALUE);
    Pim32FileClose(r1);
    Pim32FileClose(r2);
}

TEST(Pim32File, FindExistCreateMoveHide)
{
    zeltest::TempDir dir;
    std::string f = dir.write("a.txt", "abc");
    EXPECT_TRUE(Pim32FileFind(f.c_str()));
    EXPECT_FALSE(Pim32FileFind(dir.path().c_str()));
    EXPECT_TRUE(Pim32DirectoryExist((dir.path() + "/").c_str()));
    EXPECT_FALSE(Pim32DirectoryExist(f.c_str()));

    std::string deep = dir.file("x/y/z");
    EXPECT_TRUE(Pim32DirectoryCreate(deep.c_str()));
    EXPECT_TRUE(Pim32DirectoryCreate((deep + "\\").c_str()));
    DWORD err = 0;
    EXPECT_FALSE(Pim32DirectoryCreate(f.c_str(), &err));
    EXPECT_EQ(err, ERROR_ALREADY_EXISTS);

    EXPECT_TRUE(Pim32FileMove(f.c_str(), dir.file("x/b.txt").c_str()));
    EXPECT_EQ(zeltest::readFile(dir.file("x/b.txt")), "abc");
    dir.write("c.txt", "");
    EXPECT_FALSE(Pim32FileMove(dir.file("c.txt").c_str(), dir.file("x/b.txt").c_str(), &err));
    EXPECT_EQ(err, ERROR_ALREADY_EXISTS);

    EXPECT_TRUE(Pim32FileHide(dir.file("c.txt").c_str()));
    EXPECT_TRUE(Pim32FileHide(dir.file("c.txt").c_str()));
    EXPECT_EQ(zeltest::readFile(dir.file(".hidden")), "c.txt\n");
    EXPECT_FALSE(Pim32FileHide(dir.file("gone").c_str(), &err));
    EXPECT_EQ(err, ERROR_FILE_NOT_FOUND);

    WIN32_FIND_DATA fd;
    HANDLE h = Pim32DirectoryFind(dir.file("*").c_str(), &fd);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    FindClose(h);
    EXPECT_EQ(Pim32DirectoryFind(dir.file("*.txt").c_str(), &fd, &err), INVALID_HANDLE_VALUE);
    EXPECT_EQ(err, ERROR_FILE_NOT_FOUND);
}

TEST(Pim32File, NameAndPathValidity)
{
    struct Row {
        const char* text;
        bool name;
        bool path;
    } rows[] = {
        {"report.txt", true, true},
        {"with blank \xc3\xa9", true, true},
        {"a/b", false, true},
        {"a\\b", false, true},
        {"C:\\data\\x.txt", false, true},
        {"/abs//double/", false, true},
        {"..", false, true},
        {"tab\there", false, false},
        {"a/b\x7f/c", false, false},
        {"", false, false},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(Pim32FilenameIsValid(r.text), r.name ? TRUE : FALSE) << r.text;
        EXPECT_EQ(Pim32PathIsValid(r.text, 0, nullptr), r.path ? TRUE : FALSE) << r.text;
    }
    EXPECT_FALSE(Pim32FilenameIsValid(std::string(256, 'a').c_str()));

    struct Repl {
        const char* in;
        unsigned mode;
        const char* out;
        unsigned count;
    } repl[] = {
        {"a/b\\c", 0, "a_b_c", 2},
        {"a:b?c d", 0, "a:b?c d", 0},
        {"a:b?c d", 1, "a_b_c d", 2},
        {"a:b?c d+e.x", 2, "a_b_c_d_e.x", 4},
        {"..", 2, "..", 0},
    };
    for (const Repl& r : repl) {
        char buf[64];
        std::strcpy(buf, r.in);
        EXPECT_EQ(Pim32ReplaceInvalidFilenameCharacters(buf, '_', r.mode), r.count) << r.in;
        EXPECT_STREQ(buf, r.out) << r.in;
    }
}

TEST(Pim32File, TempNamesDrivesAndModulePath)
{
    zeltest::TempDir dir;
    char small[4];
    DWORD need = Pim32TempFilename(small, sizeof small, dir.path().c_str(), "pre");
    EXPECT_GE(need, sizeof small);
    std::string buf(need + 1, '\0');
    EXPECT_EQ(Pim32TempFilename(buf.data(), need + 1, dir.path().c_str(), "pre"), need);
    EXPECT_EQ(access(buf.c_str(), F_OK), 0);
    EXPECT_EQ(buf.rfind(dir.path() + "/pre", 0), 0u);
    // Asking with a small buffer left nothing behind: only the one file is there.
    int count = 0;
    WIN32_FIND_DATA fd;
    HANDLE h = FindFirstFile(dir.file("*").c_str(), &fd);
    do
        count += !(fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    while (FindNextFile(h, &fd));
    FindClose(h);
    EXPECT_EQ(count, 1);

    char tmp[2];
    DWORD len = Pim32TempDirectory(tmp, sizeof tmp);
    EXPECT_GE(len, 2u);

    EXPECT_TRUE(Pim32DriveIsEqual(dir.path().c_str(), dir.file("not/yet/there").c_str()));
    EXPECT_TRUE(Pim32DriveIsEqual("c:\\a", "C:\\b"));
    EXPECT_FALSE(Pim32DriveIsEqual("c:\\a", "D:\\a"));
    EXPECT_FALSE(Pim32DriveIsEqual("/proc/self", dir.path().c_str()));

    char path[4096];
    ASSERT_TRUE(Pim32GetModulePath(nullptr, path, sizeof path));
    EXPECT_EQ(path[std::strlen(path) - 1], '/');
    ASSERT_TRUE(Pim32GetModulePath(ZelLibraryInstance(), path, sizeof path));
    EXPECT_EQ(path[std::strlen(path) - 1], '/');
    DWORD err = 0;
    EXPECT_FALSE(Pim32GetModulePath(nullptr, path, 2, &err));
    EXPECT_EQ(err, ERROR_INSUFFICIENT_BUFFER);
}
