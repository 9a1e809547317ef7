#include <Zel260/platform/Win32Error.h>
#include <Zel260/shell/ZelFile.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

TEST(ZelDirectoryOps, CountAndInUse)
{
    zeltest::TempDir dir;
    dir.write("a.txt", "");
    dir.write("b.txt", "");
    dir.write("sub/c.txt", "");
    DWORD err = 99;
    CString text("stale");
    EXPECT_EQ(ZelFileCount((dir.path() + "/*.txt").c_str(), &err, &text), 2u);
    EXPECT_EQ(err, 0u);
    EXPECT_EQ(text, "");
    EXPECT_EQ(ZelFileCount((dir.path() + "/none/*.txt").c_str(), &err, &text), 0u);
    EXPECT_EQ(err, ERROR_PATH_NOT_FOUND);
    EXPECT_FALSE(text.IsEmpty());

    EXPECT_FALSE(ZelFileInUse((dir.path() + "/*.txt").c_str(), &err));
    HANDLE h = ZelFileOpen(dir.file("b.txt").c_str(), GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, 0);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(ZelFileInUse((dir.path() + "/*.txt").c_str(), &err, &text));
    EXPECT_EQ(err, 0u);
    ZelFileClose(h);
    EXPECT_FALSE(ZelFileInUse((dir.path() + "/*.none").c_str()));
}

TEST(ZelDirectoryOps, CopyIsOneLevelAndStopsAtTheFirstFailure)
{
    zeltest::TempDir dir;
    dir.write("src/one", "1");
    dir.write("src/two", "2");
    dir.write("src/deeper/three", "3");
    std::string dst = dir.file("dst/new");
    ASSERT_TRUE(ZelDirectoryCopy(dir.file("src").c_str(), dst.c_str(), TRUE));
    EXPECT_EQ(zeltest::readFile(dst + "/one"), "1");
    EXPECT_EQ(zeltest::readFile(dst + "/two"), "2");
    EXPECT_NE(access((dst + "/deeper").c_str(), F_OK), 0);

    DWORD err = 0;
    CString text;
    EXPECT_FALSE(ZelDirectoryCopy(dir.file("src").c_str(), dst.c_str(), TRUE, &err, &text));
    EXPECT_EQ(err, ERROR_FILE_EXISTS);
    EXPECT_FALSE(text.IsEmpty());
    EXPECT_TRUE(ZelDirectoryCopy(dir.file("src").c_str(), dst.c_str(), FALSE, &err));

    dir.write("empty/.keep", "");
    ASSERT_EQ(unlink(dir.file("empty/.keep").c_str()), 0);
    EXPECT_TRUE(ZelDirectoryCopy(dir.file("empty").c_str(), dir.file("empty2").c_str(), TRUE));
    EXPECT_TRUE(ZelDirectoryExist(dir.file("empty2").c_str()));
}

TEST(ZelDirectoryOps, RemoveAndMove)
{
    zeltest::TempDir dir;
    dir.write("flat/a", "");
    dir.write("flat/b", "");
    EXPECT_TRUE(ZelDirectoryRemove((dir.path() + "\\flat\\").c_str()));
    EXPECT_FALSE(ZelDirectoryExist(dir.file("flat").c_str()));

    // A subdirectory isn't descended into: the files go, the directory stays.
    dir.write("nested/a", "");
    dir.write("nested/sub/b", "");
    DWORD err = 0;
    CString text;
    EXPECT_FALSE(ZelDirectoryRemove(dir.file("nested").c_str(), &err, &text));
    EXPECT_EQ(err, ERROR_DIR_NOT_EMPTY);
    EXPECT_EQ(text, ZelSystemErrorText(ERROR_DIR_NOT_EMPTY));
    EXPECT_NE(access(dir.file("nested/a").c_str(), F_OK), 0);
    EXPECT_EQ(access(dir.file("nested/sub/b").c_str(), F_OK), 0);

    dir.write("from/x", "x");
    EXPECT_TRUE(ZelDirectoryMove((dir.path() + "/from/").c_str(), dir.file("to").c_str(), &err));
    EXPECT_EQ(err, 0u);
    EXPECT_EQ(zeltest::readFile(dir.file("to/x")), "x");
    EXPECT_FALSE(ZelDirectoryMove(dir.file("gone").c_str(), dir.file("to2").c_str(), &err));
    EXPECT_EQ(err, ERROR_FILE_NOT_FOUND);
}

TEST(ZelDirectoryOps, MoveAcrossFileSystemsCopiesThenRemoves)
{
    zeltest::TempDir dir;
    struct stat a, b;
    if (stat(dir.path().c_str(), &a) != 0 || stat("/dev/shm", &b) != 0 || a.st_dev == b.st_dev)
        GTEST_SKIP() << "no second file system at hand";
    dir.write("src/one", "1");
    char target[] = "/dev/shm/zel260-move-XXXXXX";
    ASSERT_NE(mkdtemp(target), nullptr);
    std::string dst = std::string(target) + "/moved";
    EXPECT_TRUE(ZelDirectoryMove(dir.file("src").c_str(), dst.c_str()));
    EXPECT_EQ(zeltest::readFile(dst + "/one"), "1");
    EXPECT_FALSE(ZelDirectoryExist(dir.file("src").c_str()));
    EXPECT_TRUE(ZelFileMove((dst + "/one").c_str(), dir.file("back").c_str()));
    EXPECT_EQ(zeltest::readFile(dir.file("back")), "1");
    ZelDirectoryRemove(dst.c_str());
    RemoveDirectory(target);
}

// Copying a directory onto itself copies every file onto itself: that must fail
// without emptying the files, as it does on Windows.
TEST(ZelDirectoryOps, CopyOntoItselfKeepsTheData)
{
    zeltest::TempDir dir;
    std::string file = dir.write("src/one", "data");
    ASSERT_EQ(symlink(file.c_str(), dir.file("link").c_str()), 0);
    EXPECT_FALSE(CopyFile(file.c_str(), file.c_str(), FALSE));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
    EXPECT_FALSE(CopyFile(file.c_str(), dir.file("link").c_str(), FALSE));
    DWORD err = 0;
    EXPECT_FALSE(ZelDirectoryCopy(dir.file("src").c_str(), (dir.path() + "\\src\\").c_str(), FALSE, &err));
    EXPECT_EQ(err, ERROR_SHARING_VIOLATION);
    EXPECT_EQ(zeltest::readFile(file), "data");
}
