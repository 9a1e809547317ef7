// Recursive file search of a generated tree (100,000 files in 10,000 folders)
// against GNU find on the same tree, warm cache, in one run; and the threaded search
// with a window that receives every progress message against the synchronous one.
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/shell/CZelFileList.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const char* const kPattern = "*.txt";

// CPU seconds (user and system) of this process, all its threads, or of its waited-for
// children: the CPU column of Google Benchmark counts only the benchmark's own
// thread, which would leave out find (a child) and the window's thread.
double cpuSeconds(int who)
{
    rusage u{};
    getrusage(who, &u);
    return static_cast<double>(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
           static_cast<double>(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

// Reports the CPU milliseconds per iteration that `who` spent inside the loop.
class CpuCounter {
public:
    CpuCounter(benchmark::State& state, int who) : m_state(state), m_who(who), m_start(cpuSeconds(who)) {}
    ~CpuCounter()
    {
        double spent = cpuSeconds(m_who) - m_start;
        m_state.counters["cpu_ms"] = spent * 1e3 / static_cast<double>(std::max<int64_t>(1, m_state.iterations()));
    }

private:
    benchmark::State& m_state;
    int m_who;
    double m_start;
};

// 100 folders of 100 folders (10,000 leaves), each leaf with 10 files, half of them
// matching the pattern. Made once per process and removed at exit.
const std::string& tree()
{
    static std::string root = [] {
        std::string base = (std::filesystem::temp_directory_path() / "zel260-bench-XXXXXX").string();
        if (!mkdtemp(base.data()))
            std::abort();
        for (int a = 0; a < 100; ++a) {
            std::string da = base + "/d" + std::to_string(a);
            mkdir(da.c_str(), 0755);
            for (int b = 0; b < 100; ++b) {
                std::string db = da + "/e" + std::to_string(b);
                mkdir(db.c_str(), 0755);
                for (int f = 0; f < 10; ++f) {
                    std::string name = db + "/file" + std::to_string(f) + (f % 2 ? ".txt" : ".dat");
                    int fd = open(name.c_str(), O_CREAT | O_WRONLY, 0644);
                    if (fd >= 0)
                        close(fd);
                }
            }
        }
        // The static string is destroyed before handlers registered earlier than it
        // run, so the handler keeps a copy of its own.
        static const std::string* doomed = new std::string(base);
        std::atexit([] {
            std::error_code ec;
            std::filesystem::remove_all(*doomed, ec);
        });
        return base;
    }();
    return root;
}

void BM_CZelFileListRecursive(benchmark::State& state)
{
    const std::string search = tree() + "/" + kPattern;
    CpuCounter cpu(state, RUSAGE_SELF);
    for (auto _ : state) {
        CZelFileList list(search.c_str(), 1, 0, 1);
        if (list.Size() != 50000)
            state.SkipWithError("wrong count");
        benchmark::DoNotOptimize(list.AllFullFilenames().data());
    }
}

void BM_GnuFind(benchmark::State& state)
{
    const std::string cmd = "find '" + tree() + "' -name '" + kPattern + "'";
    CpuCounter cpu(state, RUSAGE_CHILDREN);
    for (auto _ : state) {
        FILE* p = popen(cmd.c_str(), "r");
        if (!p) {
            state.SkipWithError("no find");
            break;
        }
        size_t lines = 0;
        char buf[65536];
        size_t n;
        while ((n = fread(buf, 1, sizeof buf, p)) > 0)
            for (size_t i = 0; i < n; ++i)
                lines += buf[i] == '\n';
        pclose(p);
        if (lines != 50000)
            state.SkipWithError("wrong count");
    }
}

// One window served by a thread of its own, as a GUI thread that answers each
// message at once: posts are queued, sends wait for the answer. It copies the
// directory text of each progress message, as a receiver must. Like the Qt window
// layer, it takes what is queued in one go and handles it without holding the
// queue's lock, and each send waits on a state of its own that is signalled after
// that state's lock is let go, so that neither side wakes only to block again.
class OneWindowBackend : public ZelWindowBackend {
public:
    static HWND window() { return reinterpret_cast<HWND>(static_cast<std::intptr_t>(0x5EA7)); }
    OneWindowBackend() : m_thread([this] { run(); }) {}
    ~OneWindowBackend() override
    {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_stop = true;
        }
        m_wake.notify_all();
        m_thread.join();
    }
    BOOL IsWindow(HWND h) override { return h == window(); }
    LRESULT Send(HWND h, UINT m, WPARAM w, LPARAM l) override
    {
        LRESULT r = 0;
        SendTimeout(h, m, w, l, 0, INFINITE, &r);
        return r;
    }
    BOOL Post(HWND h, UINT m, WPARAM w, LPARAM l) override
    {
        if (h != window())
            return FALSE;
        enqueue({m, w, l, nullptr});
        return TRUE;
    }
    BOOL SendTimeout(HWND h, UINT m, WPARAM w, LPARAM l, UINT, UINT, LRESULT* result) override
    {
        if (h != window())
            return FALSE;
        Answer answer;
        enqueue({m, w, l, &answer});
        std::unique_lock<std::mutex> lock(answer.m);
        answer.cv.wait(lock, [&] { return answer.done; });
        if (result)
            *result = 0;
        return TRUE;
    }
    std::vector<HWND> Children(HWND) override { return {}; }
    HWND Parent(HWND) override { return nullptr; }
    int CtrlId(HWND) override { return 0; }
    int SetCtrlId(HWND, int) override { return 0; }
    int TextWidth(HWND, const char*) override { return 0; }
    size_t handled() const { return m_handled; }

private:
    struct Answer {
        std::mutex m;
        std::condition_variable cv;
        bool done = false;
    };
    struct Item {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        Answer* answer;
    };
    void enqueue(const Item& item)
    {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_queue.push_back(item);
        }
        m_wake.notify_one();
    }
    void run()
    {
        std::deque<Item> batch;
        std::unique_lock<std::mutex> lock(m_mutex);
        for (;;) {
            m_wake.wait(lock, [&] { return m_stop || !m_queue.empty(); });
            if (m_queue.empty())
                return;
            batch.swap(m_queue);
            lock.unlock();
            for (const Item& item : batch) {
                if (item.answer) {
                    m_lastText.assign(reinterpret_cast<const char*>(item.lParam));
                    {
                        std::lock_guard<std::mutex> done(item.answer->m);
                        item.answer->done = true;
                    }
                    item.answer->cv.notify_one();
                }
                ++m_handled;
            }
            batch.clear();
            lock.lock();
        }
    }
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Item> m_queue;
    std::string m_lastText;
    std::atomic<size_t> m_handled{0};
    bool m_stop = false;
    std::thread m_thread;
};

void BM_ThreadedWithWindow(benchmark::State& state)
{
    const std::string search = tree() + "/" + kPattern;
    OneWindowBackend backend;
    ZelWindowBackend* previous = ZelSetWindowBackend(&backend);
    CpuCounter cpu(state, RUSAGE_SELF);
    for (auto _ : state) {
        CZelFileList list(search.c_str(), 1, 1, 0);
        list.Search(OneWindowBackend::window());
        if (list.Size() != 50000)
            state.SkipWithError("wrong count");
    }
    ZelSetWindowBackend(previous);
    state.counters["messages"] = static_cast<double>(backend.handled()) / static_cast<double>(state.iterations());
}

void BM_Synchronous(benchmark::State& state)
{
    const std::string search = tree() + "/" + kPattern;
    CpuCounter cpu(state, RUSAGE_SELF);
    for (auto _ : state) {
        CZelFileList list(search.c_str(), 1, 0, 1);
        if (list.Size() != 50000)
            state.SkipWithError("wrong count");
    }
}

// Warm the cache once before either is measured.
void BM_Warm(benchmark::State& state)
{
    for (auto _ : state) {
        CZelFileList list((tree() + "/" + kPattern).c_str(), 1, 0, 1);
        benchmark::DoNotOptimize(list.Size());
    }
}

} // namespace

BENCHMARK(BM_Warm)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GnuFind)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CZelFileListRecursive)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Synchronous)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ThreadedWithWindow)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
