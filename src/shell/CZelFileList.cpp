#include <Zel260/shell/CZelFileList.h>

#include "FileSearchMessages.h"
#include "platform/LargeBuffer.h"

#include <Zel260/platform/FindFile.h>
#include <Zel260/platform/Win32Error.h>
#include <Zel260/shell/ZelPath.h>

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace {

int lastSeparator(const CString& s)
{
    int a = s.ReverseFind('/');
    int b = s.ReverseFind('\\');
    return std::max(a, b);
}

bool isDotEntry(const char* name) { return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0; }

bool quietError(DWORD e) { return e == ERROR_FILE_NOT_FOUND || e == ERROR_ACCESS_DENIED; }

// What the directory walk of one DoIt read, by directory, so that the file scans
// after it need not read each directory again. It lives on DoIt's stack; the
// search's own functions reach it through the thread, and a callback that runs
// another list's search on this thread gets a context of its own.
struct WalkListings {
    const CZelFileList* owner;
    std::vector<ZelDirectoryListing> byDirectory; // parallel to the directory list
    size_t current = SIZE_MAX;                    // index of the directory at hand
    ZelOpenFolders folders;                       // the parent of the directory at hand
    ZelDirectoryListing* at(const CZelFileList* list)
    {
        return owner == list && current < byDirectory.size() ? &byDirectory[current] : nullptr;
    }
};
thread_local WalkListings* t_walk = nullptr;

// Room for the records the listed directories are about to give, so that the list
// doesn't copy every record it holds each time it grows, in huge pages where the
// kernel has them: the records of a large search fill tens of megabytes. Only a hint, reckoned as one
// record per listed name: matching every name here would cost as much as the
// copies it saves, and room that is never written to costs no memory.
void reserveForListedRecords(std::vector<CZelFindData>& records, const WalkListings& walk)
{
    size_t expected = 0;
    for (const ZelDirectoryListing& listing : walk.byDirectory)
        expected += listing.types.size();
    try {
        records.reserve(records.size() + expected);
        zelplatform::AdviseLargeBuffer(records.data() + records.size(),
                                       (records.capacity() - records.size()) * sizeof(CZelFindData));
    } catch (const std::bad_alloc&) {
        // Then the list grows as it goes.
    } catch (const std::length_error&) {
    }
}

class WalkScope {
public:
    explicit WalkScope(WalkListings* walk) : m_previous(t_walk) { t_walk = walk; }
    ~WalkScope() { t_walk = m_previous; }
    WalkScope(const WalkScope&) = delete;
    WalkScope& operator=(const WalkScope&) = delete;

private:
    WalkListings* m_previous;
};

} // namespace

IMPLEMENT_DYNAMIC(CZelFileList, CObject)

CZelFileList::CZelFileList(const char* path, int recursive, int threaded, int start)
    : m_path(path), m_recursive(recursive), m_sortMode(eSortNone), m_window(nullptr), m_counter(0), m_abort(0),
      m_failed(0), m_lastError(0)
{
    if (!threaded && start)
        DoIt();
}

CZelFileList::CZelFileList(const std::vector<CString>& names, eSortMode mode)
    : m_recursive(0), m_sortMode(eSortNone), m_window(nullptr), m_counter(0), m_abort(0), m_failed(0),
      m_lastError(0)
{
    m_work = std::make_unique<CZelFindData>(this);
    for (const CString& name : names)
        FindFile(name, true);
    if (mode != eSortNone)
        Sort(mode);
}

CZelFileList::~CZelFileList()
{
    // A worker still running would write into freed memory, so it is waited for
    // here; after Wait or Abort this only releases the ended thread.
    if (m_thread.joinable()) {
        if (m_thread.get_id() == std::this_thread::get_id())
            m_thread.detach();
        else
            m_thread.join();
    }
}

BOOL CZelFileList::AddSearchPattern(const char* pattern)
{
    if (!pattern || std::strchr(pattern, '\\') || std::strchr(pattern, '/'))
        return FALSE;
    for (const CString& p : m_patterns)
        if (p.CompareNoCase(pattern) == 0)
            return TRUE;
    m_patterns.emplace_back(pattern);
    return TRUE;
}

bool CZelFileList::Aborted()
{
    std::lock_guard<std::mutex> lock(m_stateLock);
    return m_abort != 0;
}

void CZelFileList::SetError(DWORD error, bool abort)
{
    std::lock_guard<std::mutex> lock(m_stateLock);
    m_failed = 1;
    if (abort)
        m_abort = 1;
    m_lastError = error;
}

void CZelFileList::DoIt()
{
    m_work = std::make_unique<CZelFindData>(this);
    {
        std::lock_guard<std::mutex> lock(m_stateLock);
        m_abort = 0;
        m_failed = 0;
        m_lastError = 0;
    }
    int sep = lastSeparator(m_path);
    if (sep <= 0)
        return;
    CString dir = m_path.Left(sep + 1);
    CString pattern = m_path.Mid(sep + 1);
    m_patterns.insert(m_patterns.begin(), pattern);

    WalkListings walk{this, {}, SIZE_MAX, {}};
    WalkScope scope(m_recursive ? &walk : t_walk);
    if (m_recursive) {
        if (m_directories.empty())
            walk.current = 0;
        FindDirectories(m_path);
    } else {
        m_directories.assign(1, dir);
    }
    if (Aborted())
        return;
    reserveForListedRecords(m_records, walk);

    m_counter = 0;
    for (size_t d = 0; d < m_directories.size(); ++d) {
        walk.current = d;
        for (size_t p = 0; p < m_patterns.size(); ++p) {
            bool last = d + 1 == m_directories.size() && p + 1 == m_patterns.size();
            FindFiles(m_directories[d] + m_patterns[p], last);
            if (Aborted())
                return;
        }
    }
}

void CZelFileList::FindDirectories(const CString& path)
{
    if (!m_work || Aborted())
        return;
    int sep = lastSeparator(path);
    if (sep < 0)
        return;
    CString dir = path.Left(sep + 1);
    CString search = dir + "*.*";

    size_t start = m_directories.size();
    if (m_directories.empty()) {
        m_directories.push_back(dir);
        start = 1;
    }

    // Only directories matter here: the enumeration may skip the rest unexamined.
    ZelDirectoryListing* listing = nullptr;
    if (t_walk && t_walk->owner == this && t_walk->current != SIZE_MAX) {
        if (t_walk->byDirectory.size() <= t_walk->current)
            t_walk->byDirectory.resize(t_walk->current + 1);
        listing = &t_walk->byDirectory[t_walk->current];
    }
    HANDLE h = listing ? ZelFindFirstDirectories(search, m_work.get(), listing, &t_walk->folders)
                       : FindFirstFileEx(search, m_work.get(), FindExSearchLimitToDirectories);
    if (h == INVALID_HANDLE_VALUE) {
        DWORD e = ::GetLastError();
        if (!quietError(e))
            SetError(e, true);
        return;
    }
    bool aborted = false;
    for (;;) {
        const DWORD attr = m_work->dwFileAttributes;
        // A link to a directory is not descended into: a loop of links would never end.
        if ((attr & FILE_ATTRIBUTE_DIRECTORY) && !(attr & FILE_ATTRIBUTE_REPARSE_POINT) &&
            !isDotEntry(m_work->cFileName)) {
            CString child = dir + m_work->cFileName;
            child += ZEL_PATH_SEPARATOR;
            m_directories.push_back(child);
            ++m_counter;
            NotifySearchDirectory(child);
        }
        if (!FindNextFile(h, m_work.get())) {
            DWORD e = ::GetLastError();
            if (e != ERROR_NO_MORE_FILES) {
                SetError(e, true);
                FindClose(h);
                return;
            }
            break;
        }
        if (Aborted()) {
            aborted = true;
            break;
        }
    }
    FindClose(h);
    if (aborted)
        return;
    size_t end = m_directories.size();
    for (size_t i = start; i < end; ++i) {
        CString child = m_directories[i];
        if (t_walk && t_walk->owner == this)
            t_walk->current = i;
        FindDirectories(child);
        if (Aborted())
            break;
    }
}

void CZelFileList::FindFiles(const CString& path, bool last)
{
    if (!m_work || Aborted())
        return;
    int sep = lastSeparator(path);
    if (sep < 0)
        return;
    CString dir = path.Left(sep + 1);
    ++m_counter;
    NotifySearchInDirectory(dir);

    const ZelDirectoryListing* listing = t_walk ? t_walk->at(this) : nullptr;
    HANDLE h = listing ? ZelFindFirstListed(path, *listing, m_work.get(), &t_walk->folders)
                       : FindFirstFile(path, m_work.get());
    if (h == INVALID_HANDLE_VALUE) {
        DWORD e = ::GetLastError();
        if (!quietError(e))
            SetError(e, true);
    } else {
        std::string full = dir.str();
        const size_t dirLength = full.size();
        for (;;) {
            if (!(m_work->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
                full.resize(dirLength);
                full += m_work->cFileName;
                m_work->SetFullFilename(full.c_str());
                m_records.push_back(*m_work);
            }
            if (!FindNextFile(h, m_work.get())) {
                DWORD e = ::GetLastError();
                if (e != ERROR_NO_MORE_FILES)
                    SetError(e, true);
                break;
            }
            if (Aborted()) {
                FindClose(h);
                return;
            }
        }
        FindClose(h);
    }
    if (m_sortMode != eSortNone)
        SortRecords();
    if (last)
        FillLists();
}

void CZelFileList::FindFile(const char* name, bool fill)
{
    ++m_counter;
    NotifySearchInDirectory(name);
    HANDLE h = FindFirstFile(name, m_work.get());
    if (h == INVALID_HANDLE_VALUE) {
        DWORD e = ::GetLastError();
        if (!quietError(e))
            SetError(e, false);
        return;
    }
    FindClose(h);
    if (m_work->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        return;
    m_work->SetFullFilename(name);
    m_records.push_back(*m_work);
    if (fill) {
        m_filenames.emplace_back(m_work->cFileName);
        m_alternateFilenames.emplace_back(m_work->cAlternateFileName);
        m_fullFilenames.push_back(m_work->GetFullFilename());
    }
}

void CZelFileList::FillLists()
{
    m_filenames.clear();
    m_alternateFilenames.clear();
    m_fullFilenames.clear();
    m_filenames.reserve(m_records.size());
    m_alternateFilenames.reserve(m_records.size());
    m_fullFilenames.reserve(m_records.size());
    for (const CZelFindData& r : m_records) {
        m_filenames.emplace_back(r.cFileName);
        m_alternateFilenames.emplace_back(r.cAlternateFileName);
        m_fullFilenames.push_back(r.GetFullFilename());
    }
}

void CZelFileList::SortRecords()
{
    // Stable, so that equal keys keep the order in which they were found.
    std::stable_sort(m_records.begin(), m_records.end());
}

void CZelFileList::Sort(eSortMode mode)
{
    Wait();
    m_sortMode = mode;
    SortRecords();
    for (size_t i = 0; i < m_records.size(); ++i) {
        if (i < m_filenames.size())
            m_filenames[i] = m_records[i].cFileName;
        if (i < m_alternateFilenames.size())
            m_alternateFilenames[i] = m_records[i].cAlternateFileName;
        if (i < m_fullFilenames.size())
            m_fullFilenames[i] = m_records[i].GetFullFilename();
    }
}

void CZelFileList::NotifySearchDirectory(const char* path)
{
    if (ZelFileSearchIsWindow(m_window))
        ZelFileSearchPost(m_window, ZelFileSearchMessage::SearchDirectory, static_cast<WPARAM>(m_counter));
    if (m_cbSearchDirectory)
        m_cbSearchDirectory(m_valSearchDirectory, m_counter, path);
}

void CZelFileList::NotifySearchInDirectory(const char* path)
{
    if (ZelFileSearchIsWindow(m_window))
        ZelFileSearchSendProgress(m_window, static_cast<WPARAM>(m_counter), path);
    if (m_cbSearchInDirectory)
        m_cbSearchInDirectory(m_valSearchInDirectory, m_counter, path);
}

void CZelFileList::Search(HWND window)
{
    // From a callback of its own worker a new search would have to wait for itself.
    if (m_workerId.load() == std::this_thread::get_id())
        return;
    Wait();
    if (m_thread.joinable())
        m_thread.join();
    m_window = window;
    // The worker reports that it holds the busy lock; only then may Wait and Abort
    // rely on it. The notify happens under the mutex, so once this thread wakes the
    // worker no longer touches these locals.
    std::mutex startLock;
    std::condition_variable startSignal;
    bool running = false;
    try {
        m_thread = std::thread([this, &startLock, &startSignal, &running] {
            m_workerId = std::this_thread::get_id();
            m_busyLock.lock();
            {
                std::lock_guard<std::mutex> lock(startLock);
                running = true;
                startSignal.notify_one();
            }
            WorkerMain();
        });
    } catch (const std::system_error&) {
        throw std::bad_alloc();
    }
    std::unique_lock<std::mutex> lock(startLock);
    startSignal.wait(lock, [&] { return running; });
}

void CZelFileList::WorkerMain()
{
    if (m_window)
        ZelFileSearchPost(m_window, ZelFileSearchMessage::Begin, 0);
    if (m_cbBegin)
        m_cbBegin(m_valBegin);
    m_workerScanning = true;
    DoIt();
    m_workerScanning = false;
    int aborted;
    {
        std::lock_guard<std::mutex> lock(m_stateLock);
        aborted = m_abort;
    }
    m_busyLock.unlock();
    if (m_window)
        ZelFileSearchPost(m_window, ZelFileSearchMessage::Terminate, static_cast<WPARAM>(aborted));
    if (m_cbTerminate)
        m_cbTerminate(m_valTerminate, aborted);
    m_workerId = std::thread::id();
}

void CZelFileList::Wait()
{
    std::thread::id worker = m_workerId;
    if (worker == std::this_thread::get_id())
        return;
    std::lock_guard<std::mutex> lock(m_joinLock);
    if (m_thread.joinable() && m_thread.get_id() != std::this_thread::get_id())
        m_thread.join();
}

void CZelFileList::Abort()
{
    {
        std::lock_guard<std::mutex> lock(m_stateLock);
        m_abort = 1;
    }
    // From a progress callback on the worker the scan is still using the results, so
    // clearing them here would pull them from under it: the flag alone stops it. The
    // begin and terminate callbacks run outside the scan, where the whole abort is safe.
    if (m_workerId.load() == std::this_thread::get_id() && m_workerScanning)
        return;
    Wait();
    m_records.clear();
    m_filenames.clear();
    m_alternateFilenames.clear();
    m_fullFilenames.clear();
    if (ZelFileSearchIsWindow(m_window))
        ZelFileSearchPost(m_window, ZelFileSearchMessage::Abort, 0);
    if (m_cbAbort)
        m_cbAbort(m_valAbort);
}

int CZelFileList::Size()
{
    Wait();
    return static_cast<int>(m_records.size());
}

CZelFindData* CZelFileList::operator[](unsigned index)
{
    Wait();
    return index < m_records.size() ? &m_records[index] : nullptr;
}

const std::vector<CString>& CZelFileList::AllFilenames()
{
    Wait();
    return m_filenames;
}

const std::vector<CString>& CZelFileList::AllAlternateFilenames()
{
    Wait();
    return m_alternateFilenames;
}

const std::vector<CString>& CZelFileList::AllFullFilenames()
{
    Wait();
    return m_fullFilenames;
}

BOOL CZelFileList::Failed()
{
    Wait();
    std::lock_guard<std::mutex> lock(m_stateLock);
    return m_failed;
}

DWORD CZelFileList::GetLastError()
{
    Wait();
    std::lock_guard<std::mutex> lock(m_stateLock);
    return m_lastError;
}

void CZelFileList::SetCallbackThreadBegin(CallbackThreadBegin fn, DWORD value)
{
    m_cbBegin = fn;
    m_valBegin = value;
}

void CZelFileList::SetCallbackThreadTerminate(CallbackThreadTerminate fn, DWORD value)
{
    m_cbTerminate = fn;
    m_valTerminate = value;
}

void CZelFileList::SetCallbackThreadAbort(CallbackThreadAbort fn, DWORD value)
{
    m_cbAbort = fn;
    m_valAbort = value;
}

void CZelFileList::SetCallbackSearchDirectory(CallbackSearch fn, DWORD value)
{
    m_cbSearchDirectory = fn;
    m_valSearchDirectory = value;
}

void CZelFileList::SetCallbackSearchInDirectory(CallbackSearch fn, DWORD value)
{
    m_cbSearchInDirectory = fn;
    m_valSearchInDirectory = value;
}
