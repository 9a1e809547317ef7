#include <Zel260/platform/Win32Error.h>
#include <Zel260/shell/CZelFileList.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include "Unprivileged.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::vector<std::string> names(const std::vector<CString>& list, size_t strip = 0)
{
    std::vector<std::string> out;
    for (const CString& s : list)
        out.push_back(s.str().substr(strip));
    return out;
}

// What the callbacks saw, in order.
struct Journal {
    std::mutex m;
    std::vector<std::string> events;
    void add(std::string e)
    {
        std::lock_guard<std::mutex> lock(m);
        events.push_back(std::move(e));
    }
};
Journal g_journal;
CZelFileList* g_list = nullptr;
std::atomic<int> g_sizeSeen{-1};

void onBegin(DWORD v) { g_journal.add("begin " + std::to_string(v)); }
void onTerminate(DWORD v, int aborted) { g_journal.add("terminate " + std::to_string(aborted)); }
void onAbort(DWORD) { g_journal.add("abort"); }
void onDirectory(DWORD, int n, const char* p) { g_journal.add("dir " + std::to_string(n) + " " + p); }
void onScan(DWORD, int n, const char* p) { g_journal.add("scan " + std::to_string(n) + " " + p); }
void onScanAskSize(DWORD, int, const char*)
{
    // A reader on the worker must not wait for itself.
    g_sizeSeen = g_list->Size();
}

void setAll(CZelFileList& list)
{
    list.SetCallbackThreadBegin(onBegin, 7);
    list.SetCallbackThreadTerminate(onTerminate, 0);
    list.SetCallbackThreadAbort(onAbort, 0);
    list.SetCallbackSearchDirectory(onDirectory, 0);
    list.SetCallbackSearchInDirectory(onScan, 0);
}

} // namespace

TEST(CZelFindData, SortingAsymmetry)
{
    CZelFileList owner(std::vector<CString>{}, CZelFileList::eSortNone);
    CZelFindData a(&owner), z(&owner);
    std::strcpy(a.cFileName, "A");
    std::strcpy(z.cFileName, "Z");
    a.SetFullFilename("/d/A");
    z.SetFullFilename("/d/Z");
    a.nFileSizeHigh = 1; // 4 GiB + 0 beats 0 + 0xFFFFFFFF
    z.nFileSizeLow = 0xFFFFFFFFu;
    a.ftLastWriteTime = {5, 0};
    z.ftLastWriteTime = {0, 1};

    struct Row {
        CZelFileList::eSortMode mode;
        bool aBeforeZ;
    } rows[] = {
        {CZelFileList::eSortNone, false},         {CZelFileList::eSortFilename, false},
        {CZelFileList::eSortFullFilename, true},  {CZelFileList::eSortSize, false},
        {CZelFileList::eSortLastWriteTime, true}, {static_cast<CZelFileList::eSortMode>(42), false},
    };
    for (const Row& r : rows) {
        owner.Sort(r.mode);
        EXPECT_EQ(a < z, r.aBeforeZ) << r.mode;
        EXPECT_EQ(z < a, !r.aBeforeZ) << r.mode;
    }
    CZelFindData loose;
    std::strcpy(loose.cFileName, "A");
    CZelFindData copy(z);
    EXPECT_EQ(copy.GetOwner(), &owner);
    EXPECT_EQ(copy.GetFullFilename(), "/d/Z");
    CZelFindData lz;
    std::strcpy(lz.cFileName, "Z");
    EXPECT_TRUE(lz < loose); // no owner: by name, descending
}

TEST(CZelFileList, PatternsOrderAndDuplicates)
{
    zeltest::TempDir dir;
    dir.write("b.txt", "");
    dir.write("a.dat", "");
    dir.write("c.TXT", "");
    dir.write("sub/d.txt", "");

    CZelFileList list((dir.path() + "/*.txt").c_str(), 0, 1, 0);
    EXPECT_FALSE(list.AddSearchPattern("a\\b"));
    EXPECT_TRUE(list.AddSearchPattern("*.dat"));
    EXPECT_TRUE(list.AddSearchPattern("*.DAT")); // equal but for case: nothing added
    EXPECT_TRUE(list.AddSearchPattern("b*"));
    list.DoIt();
    ASSERT_FALSE(list.Failed());
    // Patterns in order, the path's own first; b.txt matches twice and is found twice.
    std::vector<std::string> found = names(list.AllFullFilenames(), dir.path().size() + 1);
    ASSERT_EQ(found.size(), 4u);
    std::vector<std::string> txt(found.begin(), found.begin() + 2);
    std::sort(txt.begin(), txt.end());
    EXPECT_EQ(txt, (std::vector<std::string>{"b.txt", "c.TXT"}));
    EXPECT_EQ(found[2], "a.dat");
    EXPECT_EQ(found[3], "b.txt");
    EXPECT_EQ(list.Size(), 4);
    EXPECT_EQ(list.AllFilenames().size(), 4u);
    EXPECT_EQ(list[4], nullptr);

    list.Sort(CZelFileList::eSortFilename);
    EXPECT_EQ(names(list.AllFilenames()), (std::vector<std::string>{"c.TXT", "b.txt", "b.txt", "a.dat"}));
    list.Sort(CZelFileList::eSortFullFilename);
    EXPECT_EQ(list[0]->GetFullFilename(), list.AllFullFilenames()[0]);
    EXPECT_EQ(names(list.AllFilenames()), (std::vector<std::string>{"a.dat", "b.txt", "b.txt", "c.TXT"}));
}

TEST(CZelFileList, NothingToSearchIsNoFailure)
{
    zeltest::TempDir dir;
    CZelFileList noDir("*.txt", 0, 0, 1);
    EXPECT_EQ(noDir.Size(), 0);
    EXPECT_FALSE(noDir.Failed());
    CZelFileList noMatch((dir.path() + "/*.none").c_str(), 1, 0, 1);
    EXPECT_EQ(noMatch.Size(), 0);
    EXPECT_FALSE(noMatch.Failed());
    // A missing folder is a real error of the enumeration, which stops the search.
    CZelFileList missing((dir.path() + "/none/*.txt").c_str(), 0, 0, 1);
    EXPECT_EQ(missing.Size(), 0);
    EXPECT_TRUE(missing.Failed());
    EXPECT_EQ(missing.GetLastError(), ERROR_PATH_NOT_FOUND);
}

TEST(CZelFileList, RecursiveOrderCountersAndLinks)
{
    zeltest::TempDir dir;
    dir.write("top.txt", "1");
    dir.write("a/a.txt", "22");
    dir.write("a/x/ax.txt", "333");
    dir.write("b/b.txt", "4444");
    dir.write("with blank \xc3\xa9/n.txt", "");
    ASSERT_EQ(symlink("..", dir.file("a/up").c_str()), 0);
    ASSERT_EQ(symlink("../top.txt", dir.file("b/link.txt").c_str()), 0);
    ASSERT_EQ(symlink("missing", dir.file("b/dangling.txt").c_str()), 0);

    g_journal.events.clear();
    CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    list.SetCallbackSearchDirectory(onDirectory, 0);
    list.SetCallbackSearchInDirectory(onScan, 0);
    list.Sort(CZelFileList::eSortSize);
    list.DoIt();
    ASSERT_FALSE(list.Failed());

    // Directories are numbered 1, 2, ... as found; scans start at 1 again. The root's
    // children come before any grandchild, and the link back up isn't followed.
    std::vector<std::string> dirs, scans;
    for (const std::string& e : g_journal.events)
        (e.rfind("dir ", 0) == 0 ? dirs : scans).push_back(e);
    ASSERT_EQ(dirs.size(), 4u);
    EXPECT_EQ(dirs.back(), "dir 4 " + dir.path() + "/a/x/");
    for (size_t i = 0; i < dirs.size(); ++i)
        EXPECT_EQ(dirs[i].rfind("dir " + std::to_string(i + 1) + " ", 0), 0u);
    ASSERT_EQ(scans.size(), 5u);
    EXPECT_EQ(scans.front(), "scan 1 " + dir.path() + "/");
    EXPECT_EQ(scans.back(), "scan 5 " + dir.path() + "/a/x/");

    // Sorted by size after each scan; the link counts as the file it points to.
    EXPECT_EQ(names(list.AllFilenames()),
              (std::vector<std::string>{"n.txt", "top.txt", "link.txt", "a.txt", "ax.txt", "b.txt"}));
}

TEST(CZelFileList, UnreadableDirectoryCountsAsEmpty)
{
    zeltest::TempDir dir;
    ASSERT_EQ(chmod(dir.path().c_str(), 0755), 0);
    dir.write("open/f.txt", "");
    dir.write("locked/secret.txt", "");
    ASSERT_EQ(chmod(dir.file("open").c_str(), 0755), 0);
    ASSERT_EQ(chmod(dir.file("open/f.txt").c_str(), 0644), 0);
    ASSERT_EQ(chmod(dir.file("locked").c_str(), 0), 0);
    std::string root = dir.path();
    int code = zeltest::runUnprivileged([&] {
        CZelFileList list((root + "/*.txt").c_str(), 1, 0, 1);
        if (list.Failed())
            return 1;
        return list.Size() == 1 && list.AllFilenames()[0] == "f.txt" ? 0 : 2;
    });
    EXPECT_EQ(code, 0);
}

TEST(CZelFileList, NameListSkipsMissingAndDirectories)
{
    zeltest::TempDir dir;
    std::string small = dir.write("small", "1");
    std::string big = dir.write("big", "12345");
    CZelFileList list({CString(big.c_str()), CString(dir.file("gone").c_str()), CString(dir.path().c_str()),
                       CString(small.c_str())},
                      CZelFileList::eSortSize);
    EXPECT_FALSE(list.Failed());
    EXPECT_EQ(names(list.AllFullFilenames()), (std::vector<std::string>{small, big}));
}

TEST(CZelFileList, ThreadedRunCallbacksAndReadersOnTheWorker)
{
    zeltest::TempDir dir;
    dir.write("a/1.txt", "");
    dir.write("b/2.txt", "");
    g_journal.events.clear();
    CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    setAll(list);
    g_list = &list;
    g_sizeSeen = -1;
    list.SetCallbackSearchInDirectory(onScanAskSize, 0);
    list.Search(nullptr);
    EXPECT_EQ(list.Size(), 2);
    EXPECT_GE(g_sizeSeen.load(), 0);
    ASSERT_GE(g_journal.events.size(), 2u);
    EXPECT_EQ(g_journal.events.front(), "begin 7");
    EXPECT_EQ(g_journal.events.back(), "terminate 0");
    list.Wait(); // after the end, at once
}

namespace {
// Holds the worker at its first found folder until the test lets it go, so that the
// abort lands in the middle of the search however the threads are scheduled.
std::atomic<bool> g_atGate{false}, g_release{false};
void onDirectoryGate(DWORD v, int n, const char* p)
{
    onDirectory(v, n, p);
    g_atGate = true;
    while (!g_release)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}
} // namespace

TEST(CZelFileList, AbortInTheMiddleOfALargeSearch)
{
    zeltest::TempDir dir;
    for (int d = 0; d < 200; ++d)
        for (int f = 0; f < 5; ++f)
            dir.write("d" + std::to_string(d) + "/f" + std::to_string(f) + ".txt", "");
    g_journal.events.clear();
    g_atGate = false;
    g_release = false;
    CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    setAll(list);
    list.SetCallbackSearchDirectory(onDirectoryGate, 0);
    list.Search(nullptr);
    while (!g_atGate)
        std::this_thread::yield();
    // Abort sets its flag before it waits; the worker goes on a little later.
    std::thread opener([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        g_release = true;
    });
    list.Abort();
    opener.join();
    EXPECT_EQ(list.Size(), 0);
    EXPECT_TRUE(list.AllFullFilenames().empty());
    ASSERT_GE(g_journal.events.size(), 4u);
    EXPECT_EQ(g_journal.events.front(), "begin 7");
    EXPECT_EQ(g_journal.events[g_journal.events.size() - 2], "terminate 1");
    EXPECT_EQ(g_journal.events.back(), "abort");
    // It stopped early: far fewer scans than directories.
    EXPECT_LT(std::count_if(g_journal.events.begin(), g_journal.events.end(),
                            [](const std::string& e) { return e.rfind("scan ", 0) == 0; }),
              201);
}

namespace {
std::string g_victim;
void deleteVictim(DWORD, int, const char* dir)
{
    if (g_victim.rfind(dir, 0) == 0)
        std::filesystem::remove_all(g_victim);
}
} // namespace

TEST(CZelFileList, ThingsThatVanishDuringTheSearch)
{
    zeltest::TempDir dir;
    dir.write("a/keep.txt", "");
    dir.write("a/gone.txt", "");
    dir.write("b/x.txt", "");

    // A file deleted just before its folder is scanned is simply not found.
    g_victim = dir.file("a/gone.txt");
    CZelFileList files((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    files.SetCallbackSearchInDirectory(deleteVictim, 0);
    files.DoIt();
    EXPECT_FALSE(files.Failed());
    EXPECT_EQ(names(files.AllFilenames()).size(), 2u);

    // A folder that goes away between being found and being scanned is an error of
    // the enumeration, and stops the search with what was found so far.
    g_victim = dir.file("b");
    CZelFileList folders((dir.path() + "/*.txt").c_str(), 1, 1, 0);
    folders.SetCallbackSearchInDirectory(deleteVictim, 0);
    folders.DoIt();
    EXPECT_TRUE(folders.Failed());
    EXPECT_EQ(folders.GetLastError(), ERROR_PATH_NOT_FOUND);
}

namespace {
void abortFromBegin(DWORD v)
{
    onBegin(v);
    g_list->Abort();
}
void abortFromScan(DWORD v, int n, const char* p)
{
    onScan(v, n, p);
    g_list->Abort();
}
void abortFromTerminate(DWORD v, int aborted)
{
    onTerminate(v, aborted);
    g_list->Abort();
}
} // namespace

// Abort from the worker's own callbacks. Inside the scan it can only stop it (the
// results are in use); before and after the scan it is a whole abort, and one before
// the scan doesn't stop the search that then starts.
TEST(CZelFileList, AbortFromTheWorkersCallbacks)
{
    struct Row {
        const char* name;
        void (*setup)(CZelFileList&);
        std::vector<std::string> tail; // the last events, in order
        int size;
    } rows[] = {
        {"begin", [](CZelFileList& l) { l.SetCallbackThreadBegin(abortFromBegin, 7); }, {"terminate 0"}, 2},
        {"scan", [](CZelFileList& l) { l.SetCallbackSearchInDirectory(abortFromScan, 0); }, {"terminate 1"}, -1},
        {"terminate",
         [](CZelFileList& l) { l.SetCallbackThreadTerminate(abortFromTerminate, 0); },
         {"terminate 0", "abort"},
         0},
    };
    for (const Row& r : rows) {
        zeltest::TempDir dir;
        dir.write("a/1.txt", "");
        dir.write("2.txt", "");
        g_journal.events.clear();
        CZelFileList list((dir.path() + "/*.txt").c_str(), 1, 1, 0);
        setAll(list);
        r.setup(list);
        g_list = &list;
        list.Search(nullptr);
        list.Wait();
        const std::vector<std::string>& ev = g_journal.events;
        ASSERT_GE(ev.size(), r.tail.size()) << r.name;
        EXPECT_EQ(std::vector<std::string>(ev.end() - r.tail.size(), ev.end()), r.tail) << r.name;
        if (r.size >= 0) {
            EXPECT_EQ(list.Size(), r.size) << r.name;
        }
        if (std::string(r.name) == "begin") {
            EXPECT_EQ(ev[1], "abort");
        }
        EXPECT_FALSE(list.Failed()) << r.name;
        bool aborted = std::find(ev.begin(), ev.end(), "abort") != ev.end();
        EXPECT_EQ(aborted, std::string(r.name) != "scan") << r.name;
    }
}
