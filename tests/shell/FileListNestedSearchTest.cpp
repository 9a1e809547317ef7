#include <Zel260/shell/CZelFileList.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace {

std::vector<std::string> sortedNames(CZelFileList& list)
{
    std::vector<std::string> out;
    for (const CString& s : list.AllFullFilenames())
        out.push_back(s.str());
    std::sort(out.begin(), out.end());
    return out;
}

void makeTree(const zeltest::TempDir& dir, const std::string& prefix)
{
    for (int d = 0; d < 4; ++d)
        for (int f = 0; f < 3; ++f)
            dir.write("d" + std::to_string(d) + "/s/" + prefix + std::to_string(f) + ".txt", "x");
    dir.write(prefix + "top.txt", "y");
}

std::string g_otherSearch;
std::vector<std::vector<std::string>> g_innerResults;

// Runs a whole recursive search of another tree on the outer search's thread, once
// while the outer one walks its folders and once while it scans them.
void searchInside(DWORD, int number, const char*)
{
    if (number != 2)
        return;
    CZelFileList inner(g_otherSearch.c_str(), 1, 0, 1);
    g_innerResults.push_back(sortedNames(inner));
}

} // namespace

// Each search keeps what its folder walk read to itself: another search on another
// thread, or one run from a callback on the same thread, neither sees nor disturbs it.
TEST(CZelFileList, SearchesAtOnceAndInsideAnotherKeepTheirOwnFolders)
{
    zeltest::TempDir one, two;
    makeTree(one, "one");
    makeTree(two, "two");
    // Old enough that the walk's listings are used, which is the case under test.
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    const std::string searchOne = one.path() + "/*.txt", searchTwo = two.path() + "/*.txt";
    CZelFileList refOne(searchOne.c_str(), 1, 0, 1), refTwo(searchTwo.c_str(), 1, 0, 1);
    const std::vector<std::string> expectOne = sortedNames(refOne), expectTwo = sortedNames(refTwo);
    ASSERT_EQ(expectOne.size(), 13u);
    ASSERT_EQ(expectTwo.size(), 13u);

    for (int round = 0; round < 20; ++round) {
        CZelFileList a(searchOne.c_str(), 1, 1, 0), b(searchTwo.c_str(), 1, 1, 0);
        a.Search(nullptr);
        b.Search(nullptr);
        EXPECT_EQ(sortedNames(a), expectOne);
        EXPECT_EQ(sortedNames(b), expectTwo);
    }

    g_otherSearch = searchTwo;
    g_innerResults.clear();
    CZelFileList outer(searchOne.c_str(), 1, 1, 0);
    outer.SetCallbackSearchDirectory(searchInside, 0);
    outer.SetCallbackSearchInDirectory(searchInside, 0);
    outer.Search(nullptr);
    EXPECT_EQ(sortedNames(outer), expectOne);
    ASSERT_EQ(g_innerResults.size(), 2u);
    EXPECT_EQ(g_innerResults[0], expectTwo);
    EXPECT_EQ(g_innerResults[1], expectTwo);
}
