#include <Zel260/platform/FindFile.h>
#include <Zel260/platform/Win32Error.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Name -> size of every non-directory entry a search reports.
using Found = std::map<std::string, DWORD>;

Found collect(HANDLE h, WIN32_FIND_DATA& fd)
{
    Found found;
    if (h == INVALID_HANDLE_VALUE)
        return found;
    do
        if (!(fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            found[fd.cFileName] = fd.nFileSizeLow;
    while (FindNextFile(h, &fd));
    FindClose(h);
    return found;
}

Found direct(const std::string& search)
{
    WIN32_FIND_DATA fd;
    return collect(FindFirstFile(search.c_str(), &fd), fd);
}

Found listed(const std::string& search, const ZelDirectoryListing& listing, ZelOpenFolders* folders = nullptr)
{
    WIN32_FIND_DATA fd;
    return collect(ZelFindFirstListed(search.c_str(), listing, &fd, folders), fd);
}

// Walks the whole directory as the recursive search does and keeps its listing.
ZelDirectoryListing walk(const std::string& dir, ZelOpenFolders* folders = nullptr)
{
    ZelDirectoryListing listing;
    WIN32_FIND_DATA fd;
    HANDLE h = ZelFindFirstDirectories((dir + "/*.*").c_str(), &fd, &listing, folders);
    if (h != INVALID_HANDLE_VALUE) {
        while (FindNextFile(h, &fd)) {
        }
        FindClose(h);
    }
    return listing;
}

// Every case runs on a lone directory, and as a recursive search meets it: found
// one step below its parent, which the search keeps open.
struct Way {
    const char* name;
    bool viaParent;
};
const Way kWays[] = {{"by path", false}, {"below the open parent", true}};

// File times move in steps; a directory changed shortly before its reading can't
// vouch for its listing, so the trees here are let age first.
void letAge() { std::this_thread::sleep_for(std::chrono::milliseconds(60)); }

} // namespace

TEST(DirectoryListing, AnAgedDirectoryIsServedFromItsListing)
{
    zeltest::TempDir dir;
    dir.write("a.txt", "1");
    dir.write("B.TXT", "22");
    dir.write("c.dat", "333");
    dir.write("sub/x.txt", "");
    symlink("a.txt", dir.file("link.txt").c_str());
    symlink("missing", dir.file("dangling.txt").c_str());
    letAge();

    symlink(dir.path().c_str(), (dir.path() + "-link").c_str());
    for (const Way& way : kWays) {
        for (const std::string& root : {dir.path(), dir.path() + "-link"}) {
            ZelOpenFolders folders;
            ZelOpenFolders* f = way.viaParent ? &folders : nullptr;
            ZelDirectoryListing listing = walk(root, f);
            EXPECT_TRUE(listing.complete);
            EXPECT_TRUE(listing.trustworthy);
            for (const char* pattern : {"*.txt", "*", "*.*", "?.*", "b.*", "*.DAT"}) {
                std::string search = root + "/" + pattern;
                EXPECT_EQ(listed(search, listing, f), direct(search)) << way.name << ", " << root << ", " << pattern;
            }
            // No match is the same quiet error as FindFirstFile's.
            WIN32_FIND_DATA fd;
            EXPECT_EQ(ZelFindFirstListed((root + "/*.none").c_str(), listing, &fd, f), INVALID_HANDLE_VALUE);
            EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
        }
    }
    std::remove((dir.path() + "-link").c_str());
}

TEST(DirectoryListing, ChangesAfterTheWalkAreSeen)
{
    struct Row {
        const char* name;
        void (*change)(const zeltest::TempDir&);
        Found expected;
    };
    const Row rows[] = {
        {"file added", [](const zeltest::TempDir& d) { d.write("new.txt", "4444"); },
         {{"keep.txt", 1}, {"gone.txt", 2}, {"new.txt", 4}}},
        {"file removed", [](const zeltest::TempDir& d) { std::remove(d.file("gone.txt").c_str()); },
         {{"keep.txt", 1}}},
        // Content alone doesn't touch the directory: the sizes must still be fresh.
        {"file grown", [](const zeltest::TempDir& d) { d.write("keep.txt", "55555"); },
         {{"keep.txt", 5}, {"gone.txt", 2}}},
        {"file renamed", [](const zeltest::TempDir& d) {
             std::rename(d.file("gone.txt").c_str(), d.file("back.txt").c_str());
         },
         {{"keep.txt", 1}, {"back.txt", 2}}},
    };
    for (const Way& way : kWays) {
        for (const Row& row : rows) {
            zeltest::TempDir dir;
            dir.write("keep.txt", "1");
            dir.write("gone.txt", "22");
            letAge();
            ZelOpenFolders folders;
            ZelOpenFolders* f = way.viaParent ? &folders : nullptr;
            ZelDirectoryListing listing = walk(dir.path(), f);
            row.change(dir);
            EXPECT_EQ(listed(dir.path() + "/*.txt", listing, f), row.expected) << way.name << ", " << row.name;
        }
    }

    // A directory with nothing to match when it was listed isn't opened again, but
    // it is still looked at.
    zeltest::TempDir dir;
    dir.write("a.dat", "");
    letAge();
    ZelDirectoryListing listing = walk(dir.path());
    EXPECT_EQ(listed(dir.path() + "/*.txt", listing), Found{});
    dir.write("b.txt", "22");
    EXPECT_EQ(listed(dir.path() + "/*.txt", listing), (Found{{"b.txt", 2}}));
}

TEST(DirectoryListing, AListingThatCantBeTrustedFallsBackToReading)
{
    zeltest::TempDir dir;
    dir.write("one.txt", "1");
    dir.write("sub/two.txt", "22");
    letAge();

    // A directory put in place of the listed one, even with the same names, or a
    // link to another one; the open parent is still the same folder.
    ZelOpenFolders folders;
    ZelDirectoryListing replaced = walk(dir.file("sub"), &folders);
    ASSERT_EQ(std::rename(dir.file("sub").c_str(), dir.file("old").c_str()), 0);
    dir.write("sub/three.txt", "333");
    EXPECT_EQ(listed(dir.file("sub") + "/*.txt", replaced, &folders), (Found{{"three.txt", 3}}));
    EXPECT_EQ(listed(dir.file("sub") + "/*.txt", replaced), (Found{{"three.txt", 3}}));
    ZelDirectoryListing linked = walk(dir.file("sub"), &folders);
    ASSERT_EQ(std::remove(dir.file("sub/three.txt").c_str()), 0);
    ASSERT_EQ(rmdir(dir.file("sub").c_str()), 0);
    ASSERT_EQ(symlink("old", dir.file("sub").c_str()), 0);
    EXPECT_EQ(listed(dir.file("sub") + "/*.txt", linked, &folders), (Found{{"two.txt", 2}}));
    std::remove(dir.file("sub").c_str());

    // A walk left before its end lists only part of the directory.
    ZelDirectoryListing partial;
    WIN32_FIND_DATA fd;
    HANDLE h = ZelFindFirstDirectories((dir.path() + "/*.*").c_str(), &fd, &partial);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    FindClose(h);
    EXPECT_FALSE(partial.complete);
    EXPECT_EQ(listed(dir.path() + "/*.txt", partial), (Found{{"one.txt", 1}}));

    // A directory changed just before it was read.
    dir.write("fresh.txt", "");
    ZelDirectoryListing fresh = walk(dir.path());
    dir.write("later.txt", "");
    EXPECT_EQ(listed(dir.path() + "/*.txt", fresh), (Found{{"one.txt", 1}, {"fresh.txt", 0}, {"later.txt", 0}}));

    // A directory that went away gives FindFirstFile's error.
    ZelDirectoryListing gone = walk(dir.file("old"));
    std::remove(dir.file("old/two.txt").c_str());
    ASSERT_EQ(rmdir(dir.file("old").c_str()), 0);
    EXPECT_EQ(ZelFindFirstListed((dir.file("old") + "/*.txt").c_str(), gone, &fd), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
}
