#include <Zel260/shell/CZelFileList.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <thread>

#include <sys/stat.h>

namespace {

const zeltest::TempDir* g_tree = nullptr;

// Runs when the root is scanned, after every folder was listed and before any
// folder below the root is scanned.
void changeTree(DWORD, int number, const char*)
{
    if (number != 1)
        return;
    const zeltest::TempDir& d = *g_tree;
    std::remove(d.file("a/gone.txt").c_str());
    d.write("a/new.txt", "333");
    d.write("b/grow.txt", "55555");
    std::rename(d.file("c").c_str(), d.file("c-old").c_str());
    d.write("c/late.txt", "4444");
}

} // namespace

// The folders are listed once and their files found later: whatever happens to the
// tree in between must show as if each folder were read when it is scanned.
TEST(CZelFileList, ATreeThatChangesBetweenListingAndScanning)
{
    zeltest::TempDir dir;
    dir.write("a/keep.txt", "1");
    dir.write("a/gone.txt", "22");
    dir.write("b/grow.txt", "1");
    dir.write("c/old.txt", "666666");
    // Old enough that the listings are trusted, which is the case under test.
    std::this_thread::sleep_for(std::chrono::milliseconds(60));

    g_tree = &dir;
    CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    list.SetCallbackSearchInDirectory(changeTree, 0);
    list.DoIt();
    EXPECT_FALSE(list.Failed());

    std::map<std::string, DWORD> found;
    for (int i = 0; i < list.Size(); ++i)
        found[list[i]->GetFullFilename().str().substr(dir.path().size())] = list[i]->nFileSizeLow;
    EXPECT_EQ(found, (std::map<std::string, DWORD>{
                         {"/a/keep.txt", 1}, {"/a/new.txt", 3}, {"/b/grow.txt", 5}, {"/c/late.txt", 4}}));
}
