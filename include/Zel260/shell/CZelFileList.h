// A file search: the files that match one path with a wildcard ("dir/pattern",
// either separator), optionally in every subdirectory too, found on the calling
// thread or on a worker thread that reports to a window and to callbacks.
//
// Order of the result: directories in a fixed order (the root, then each directory's
// subdirectories together, before the first of them is descended into), within each
// directory the patterns in their order (the search path's own pattern first), and
// the entries of one scan in the file system's order. A file is found once for each
// pattern that matches it. A recursive search doesn't descend into symbolic links to
// directories, so a loop of links can't make it run forever; a link to a file counts
// as that file; a dangling link is skipped.
//
// Failures: a directory that can't be read, and a pattern that matches nothing, are
// no failures (an unreadable directory counts as empty). Any other system error
// stops the search: Failed() is TRUE and GetLastError() the Win32 number; a missing
// search directory is such an error (ERROR_PATH_NOT_FOUND).
//
// Messages to the window given to Search (registered messages of the frame):
//   WM_ZEL_FILESEARCHTHREAD_BEGIN (posted, 0, 0): the worker starts;
//   WM_ZEL_FILESEARCHTHREAD_SEARCHDIRECTORY (posted, number, 0): one more
//     subdirectory found (recursive searches);
//   WM_ZEL_FILESEARCHTHREAD_FILESEARCHINDIRECTORY (sent, number, const char* dir):
//     files are now searched in dir. Sent with a limit of 100 ms, so a busy window
//     delays the search by at most that much per directory; the text lives only
//     during the send, so copy it at once;
//   WM_ZEL_FILESEARCHTHREAD_TERMINATE (posted, aborted, 0): the worker is done;
//     non-zero when aborted or failed;
//   WM_ZEL_FILESEARCHTHREAD_ABORT (posted by Abort, 0, 0): results cleared.
// An aborted run shows begin, progress, terminate (non-zero), abort. A window that
// dies during the search gets no more messages; the search goes on. Each callback
// runs right behind its message, on the thread that sent it, with the same number.
//
// Threads: every reader (Size, operator[], the lists, Failed, GetLastError, Sort)
// first waits for a running worker, unless it is called on that worker (from a
// callback), where it returns at once with what is there.
#pragma once

#include <Zel260/platform/CObject.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>
#include <Zel260/shell/CZelFindData.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class CZelFileList : public CObject {
    DECLARE_DYNAMIC(CZelFileList)

public:
    // Fixed underlying type: a value outside the list is valid and sorts by name.
    enum eSortMode : int {
        eSortNone = 0,              // found order, no sorting
        eSortFilename = 1,          // file name, descending, byte-wise
        eSortFullFilename = 2,      // full name, ascending
        eSortAlternateFilename = 3, // alternate name, descending
        eSortCreationTime = 4,      // ascending
        eSortLastWriteTime = 5,     // ascending
        eSortLastAccessTime = 6,    // ascending
        eSortSize = 7,              // ascending
    };

    // Callbacks, each given back its user value first.
    using CallbackThreadBegin = void (*)(DWORD value);
    using CallbackThreadTerminate = void (*)(DWORD value, int aborted);
    using CallbackThreadAbort = void (*)(DWORD value);
    // `number` counts the directories found (search directory) or the scans (search in
    // directory); the path is valid only during the call.
    using CallbackSearch = void (*)(DWORD value, int number, const char* path);

    // Stores the search path and flags (sort mode 0). With `threaded` zero and `start`
    // non-zero the whole search runs here, so (path, 0, 0, 1) is a complete
    // synchronous search. With `threaded` non-zero, Search starts it.
    CZelFileList(const char* path, int recursive, int threaded, int start);
    // Looks up each name exactly (no wildcards), in order, on this thread, skipping
    // names that don't exist or are directories; then sorts unless `mode` is 0.
    CZelFileList(const std::vector<CString>& names, eSortMode mode);
    // Waits for a worker that still runs (call Abort first to cut it short).
    virtual ~CZelFileList();

    CZelFileList(const CZelFileList&) = delete;
    CZelFileList& operator=(const CZelFileList&) = delete;

    // Adds a pattern behind the others, before the search starts. FALSE (nothing added)
    // when it holds a "\" or "/"; TRUE otherwise, also when an equal pattern (case
    // ignored) is there already and nothing is added.
    BOOL AddSearchPattern(const char* pattern);

    // The search, on the calling thread. Results add up over repeated runs.
    void DoIt();
    // Starts the search on a worker and returns when the worker runs. `window` (may be
    // null) receives the WM_ZEL_FILESEARCHTHREAD_* messages. Throws std::bad_alloc
    // when no thread can be started. Waits first for an earlier worker of this list;
    // called from a callback on that worker it does nothing.
    void Search(HWND window);
    // Blocks until the worker has ended; returns at once without a worker or on it.
    void Wait();
    // Stops a running search, waits for it, clears the results, then tells the window
    // (WM_ZEL_FILESEARCHTHREAD_ABORT) and calls the abort callback. Called from a
    // search callback on the worker it only sets the abort flag: the search stops soon
    // after, its results stay, and no abort message or callback follows. From the
    // begin or terminate callback it does the whole abort at once.
    void Abort();

    // Sets the mode and sorts the records, then rewrites the string lists from them
    // (the entries the lists have; nothing is added to a list that is shorter).
    void Sort(eSortMode mode);
    eSortMode SortMode() const { return m_sortMode; }

    // operator[] is declared before Size so that the virtual table has the list's
    // documented layout behind CObject's.
    // The record at `index`, null when the index is not below Size().
    virtual CZelFindData* operator[](unsigned index);
    virtual int Size();
    const std::vector<CString>& AllFilenames();
    const std::vector<CString>& AllAlternateFilenames();
    const std::vector<CString>& AllFullFilenames();
    BOOL Failed();
    DWORD GetLastError();

    void SetCallbackThreadBegin(CallbackThreadBegin fn, DWORD value);
    void SetCallbackThreadTerminate(CallbackThreadTerminate fn, DWORD value);
    void SetCallbackThreadAbort(CallbackThreadAbort fn, DWORD value);
    void SetCallbackSearchDirectory(CallbackSearch fn, DWORD value);
    void SetCallbackSearchInDirectory(CallbackSearch fn, DWORD value);

private:
    void FindDirectories(const CString& path);
    void FindFiles(const CString& path, bool last);
    void FindFile(const char* name, bool fill);
    void FillLists();
    void SortRecords();
    bool Aborted();
    void SetError(DWORD error, bool abort);
    void NotifySearchDirectory(const char* path);
    void NotifySearchInDirectory(const char* path);
    void WorkerMain();

    CString m_path;
    int m_recursive;
    eSortMode m_sortMode;
    std::unique_ptr<CZelFindData> m_work;
    std::vector<CZelFindData> m_records;
    std::vector<CString> m_patterns;
    HWND m_window;
    std::vector<CString> m_filenames;
    std::vector<CString> m_alternateFilenames;
    std::vector<CString> m_fullFilenames;
    std::vector<CString> m_directories;
    int m_counter;

    std::mutex m_stateLock; // abort flag, failed flag, last error
    std::mutex m_busyLock;  // held by the worker for the whole search
    std::mutex m_joinLock;  // one waiter joins the worker at a time
    std::thread m_thread;
    std::atomic<std::thread::id> m_workerId;
    bool m_workerScanning = false; // the worker is inside DoIt; touched by it alone

    int m_abort;
    int m_failed;
    DWORD m_lastError;

    CallbackThreadBegin m_cbBegin = nullptr;
    CallbackThreadTerminate m_cbTerminate = nullptr;
    CallbackThreadAbort m_cbAbort = nullptr;
    CallbackSearch m_cbSearchDirectory = nullptr;
    CallbackSearch m_cbSearchInDirectory = nullptr;
    DWORD m_valBegin = 0;
    DWORD m_valTerminate = 0;
    DWORD m_valAbort = 0;
    DWORD m_valSearchDirectory = 0;
    DWORD m_valSearchInDirectory = 0;
};
