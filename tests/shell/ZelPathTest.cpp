#include <Zel260/shell/ZelFile.h>
#include <Zel260/shell/ZelPath.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/Win32Error.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

TEST(ZelPath, SplitPathLikeTheRuntime)
{
    struct Row {
        const char* path;
        const char* drive;
        const char* dir;
        const char* name;
        const char* ext;
    } rows[] = {
        {"C:\\data\\sub\\file.name.txt", "C:", "\\data\\sub\\", "file.name", ".txt"},
        {"/home/u/report.pdf", "", "/home/u/", "report", ".pdf"},
        {"mixed\\dir/x", "", "mixed\\dir/", "x", ""},
        {"/dir.d/noext", "", "/dir.d/", "noext", ""},
        {".profile", "", "", "", ".profile"},
        {"C:", "C:", "", "", ""},
        {"", "", "", "", ""},
    };
    for (const Row& r : rows) {
        CString d, dir, n, e;
        ZelSplitPath(r.path, d, dir, n, e);
        EXPECT_EQ(d, r.drive) << r.path;
        EXPECT_EQ(dir, r.dir) << r.path;
        EXPECT_EQ(n, r.name) << r.path;
        EXPECT_EQ(e, r.ext) << r.path;
    }
    CString d, dir, n, e;
    ZelSplitPath(("/" + std::string(300, 'a') + ".x").c_str(), d, dir, n, e);
    EXPECT_EQ(n.GetLength(), 255);
}

TEST(ZelPath, MakePathAndSeparators)
{
    EXPECT_EQ(ZelMakePath("C:", "\\data", "file", "txt"), "C:\\data/file.txt");
    EXPECT_EQ(ZelMakePath(nullptr, "/home/u/", "a", ".b"), "/home/u/a.b");
    EXPECT_EQ(ZelMakePath(nullptr, nullptr, nullptr, nullptr), "");

    struct Row {
        const char* in;
        const char* ensured;
        const char* removed;
    } rows[] = {
        {"", "", ""},
        {"/tmp", "/tmp/", "/tmp"},
        {"/tmp/", "/tmp/", "/tmp"},
        {"C:\\dir\\", "C:\\dir\\", "C:\\dir"},
        {"/", "/", "/"},
        {"C:\\", "C:\\", "C:\\"},
    };
    for (const Row& r : rows) {
        CString a(r.in), b(r.in);
        ZelEnsureTrailingBackslash(a);
        ZelRemoveTrailingBackslash(b);
        EXPECT_EQ(a, r.ensured) << r.in;
        EXPECT_EQ(b, r.removed) << r.in;
    }
}

TEST(ZelPath, DriveTextHelpers)
{
    EXPECT_EQ(ZelGetDriveString(2), "C:\\");
    EXPECT_EQ(ZelGetDriveInteger("c:\\x"), 2u);
    EXPECT_EQ(ZelGetDriveInteger("A:"), 0u);
    EXPECT_EQ(GetDriveType("/"), ZelGetMountPoints().empty() ? DRIVE_NO_ROOT_DIR : GetDriveType("/"));
    EXPECT_EQ(GetDriveType("C:\\"), DRIVE_NO_ROOT_DIR);
    std::vector<CString> all{"kept"};
    ZelGetAvailableDrives(static_cast<UINT>(-1), all);
    EXPECT_EQ(all.front(), "kept");
    EXPECT_NE(std::find(all.begin(), all.end(), CString("/")), all.end());
}

TEST(ZelPath, PathExists)
{
    zeltest::TempDir dir;
    dir.write("file.txt", "");
    dir.write("sub/x", "");
    struct Row {
        const char* name;
        std::string path;
        bool exists;
    } rows[] = {
        {"directory", dir.path(), true},
        {"directory with separator and blanks", "  " + dir.path() + "/sub\\ ", true},
        {"ordinary file", dir.file("file.txt"), false},
        {"missing", dir.file("none"), false},
        {"root", "/", true},
        {"root with blanks", " / ", true},
        {"drive letter", "C:", false},
        {"drive letter root", " C:\\ ", false},
        {"empty", "", false},
    };
    for (const Row& r : rows)
        EXPECT_EQ(ZelPathExists(r.path.c_str()), r.exists ? TRUE : FALSE) << r.name;
    EXPECT_FALSE(ZelPathExists(nullptr));
}

// Each component keeps the separator that followed it, so a path from Windows
// shortens exactly as it did there and a Linux path stays a Linux path.
TEST(ZelPath, ShortPathnameKeepsEachSeparatorAsWritten)
{
    struct Row {
        const char* path;
        const char* shortened;
    } rows[] = {
        {"C:\\abcdefghijkl\\my.dir.name\\abcdefghij.text", "C:\\abcdefgh\\my.dir.n\\abcdefgh.tex"},
        {"/home/with blank/a+b.c", "/home/with_bla/a_b.c"},
        {"\\lead/mixed\\x", "\\lead/mixed\\x"},
        {"rel\\x.y", "rel\\x.y"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(ZelBuildShortPathname(r.path), r.shortened) << r.path;
}

TEST(ZelPath, ExecutablesAndLibraries)
{
    zeltest::TempDir dir;
    std::string script = dir.write("tools/run", "#!/bin/sh\n");
    chmod(script.c_str(), 0755);
    std::string plain = dir.write("tools/data", "text");
    chmod(plain.c_str(), 0755);

    CString name((dir.path() + "\\tools\\run").c_str());
    EXPECT_TRUE(ZelFileIsEXE(name));
    EXPECT_EQ(name, CString(script.c_str())); // separators turned, nothing appended
    CString data(plain.c_str());
    EXPECT_FALSE(ZelFileIsEXE(data));
    CString empty;
    EXPECT_FALSE(ZelFileIsEXE(empty));

    CString libDir;
    ASSERT_TRUE(ZelGetModulePath(ZelLibraryInstance(), libDir));
    CString lib = libDir + "libzel260core";
    EXPECT_TRUE(ZelFileIsExecutable(lib));
    EXPECT_EQ(lib, libDir + "libzel260core.so"); // the completed name stays with the caller
    CString missing((dir.path() + "/nothing").c_str());
    CString before = missing;
    EXPECT_FALSE(ZelFileIsExecutable(missing));
    EXPECT_EQ(missing, before);

    CString libm("libm.so.6");
    CString copy = libm;
    EXPECT_FALSE(ZelFileIsDLL(copy)); // ".so" appended: "libm.so.6.so" doesn't exist
    EXPECT_EQ(copy, "libm.so.6.so");
}

TEST(ZelPath, TempNamesAndValidity)
{
    CString tmp = ZelTempDirectory();
    ASSERT_FALSE(tmp.IsEmpty());
    EXPECT_EQ(tmp[tmp.GetLength() - 1], '/');
    zeltest::TempDir dir;
    CString name = ZelTempFilename(dir.path().c_str(), "t");
    EXPECT_TRUE(ZelFileFind(name));
    EXPECT_FALSE(ZelPathIsValid("", 0, nullptr));
    EXPECT_FALSE(ZelFilenameIsValid(nullptr));
    EXPECT_TRUE(ZelFilenameIsValid("ok.txt"));
    CString bad("a/b");
    EXPECT_EQ(ZelReplaceInvalidFilenameCharacters(bad, '-', 2), 1u);
    EXPECT_EQ(bad, "a-b");
    CString module;
    EXPECT_TRUE(ZelGetModulePath(ZelLibraryInstance(), module));
    EXPECT_TRUE(ZelPathExists(module));
}

TEST(ZelFile, PrimitivesCarryBothErrorParameters)
{
    zeltest::TempDir dir;
    std::string name = dir.file("out.txt");
    HANDLE h = ZelFileCreate(name.c_str(), GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, 0);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    DWORD err = 77;
    CString text("untouched");
    EXPECT_TRUE(ZelFileWrite(h, static_cast<const char*>(nullptr), &err, &text));
    EXPECT_EQ(err, 77u);
    EXPECT_EQ(text, "untouched");
    EXPECT_TRUE(ZelFileWrite(h, "hello"));
    EXPECT_TRUE(ZelFileClose(h));
    EXPECT_EQ(ZelFileSize(name.c_str()), 5);

    CString onlyText;
    EXPECT_EQ(ZelFileOpen(dir.file("none").c_str(), GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, 0, nullptr,
                          &onlyText),
              INVALID_HANDLE_VALUE);
    EXPECT_EQ(onlyText, ZelSystemErrorText(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(ZelFileSize(dir.file("none").c_str(), &err), -1);
    EXPECT_EQ(err, ERROR_FILE_NOT_FOUND);
}
