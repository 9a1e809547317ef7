// Recursive file search of a generated tree (100,000 files in 10,000 folders)
// against GNU find on the same tree, warm cache, in one run; and the threaded search
// with a window that receives every progress message against the synchronous one.
#include <Zel260/platform/WindowMessages.h>
#include <Zel260/frame/ZelMessages.h>
#include <Zel260/shell/CZelFileList.h>
#ifdef ZEL260_BENCH_QT
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QApplication>
#include <QEventLoop>
#include <QWidget>
#endif

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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
// matching the pattern. Made once per process and removed at exit; a tree of that
// shape named by ZEL260_BENCH_TREE is used as it is and kept, which spares the
// making of 110,000 inodes when runs are repeated (or profiled).
const std::string& tree()
{
    static std::string root = [] {
        if (const char* given = std::getenv("ZEL260_BENCH_TREE"); given && *given)
            return std::string(given);
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

// GNU find with the pattern alone, and with what each record holds (size, times,
// mode), which makes it examine every match as the list does.
void BM_GnuFind(benchmark::State& state, const char* details)
{
    const std::string cmd = "find '" + tree() + "' -name '" + kPattern + "'" + details;
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

#ifdef ZEL260_BENCH_QT
// The application's case: a window on the benchmark's own thread, which runs its
// event loop while the worker searches, copies the directory text of every
// progress message as a receiver must, and leaves the loop at the terminate
// message.
void BM_ThreadedWithWindow(benchmark::State& state)
{
    const std::string search = tree() + "/" + kPattern;
    QWidget window;
    QEventLoop loop;
    std::string lastText;
    size_t handled = 0;
    int cookie = ZelAddMessageHandler(&window, [&](UINT message, WPARAM, LPARAM lParam, LRESULT&) {
        if (message == WM_ZEL_FILESEARCHTHREAD_FILESEARCHINDIRECTORY)
            lastText.assign(reinterpret_cast<const char*>(lParam));
        else if (message == WM_ZEL_FILESEARCHTHREAD_TERMINATE)
            loop.quit();
        ++handled;
        return true;
    });
    const HWND hwnd = ZelHwndFromWidget(&window);
    CpuCounter cpu(state, RUSAGE_SELF);
    for (auto _ : state) {
        CZelFileList list(search.c_str(), 1, 1, 0);
        list.Search(hwnd);
        loop.exec();
        if (list.Size() != 50000)
            state.SkipWithError("wrong count");
    }
    ZelRemoveMessageHandler(&window, cookie);
    state.counters["messages"] = static_cast<double>(handled) / static_cast<double>(state.iterations());
}
#endif

void BM_ThreadedNoWindow(benchmark::State& state)
{
    const std::string search = tree() + "/" + kPattern;
    for (auto _ : state) {
        CZelFileList list(search.c_str(), 1, 1, 0);
        list.Search(nullptr);
        if (list.Size() != 50000)
            state.SkipWithError("wrong count");
    }
}
BENCHMARK(BM_ThreadedNoWindow)->Unit(benchmark::kMillisecond)->UseRealTime();

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
BENCHMARK_CAPTURE(BM_GnuFind, names, "")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(BM_GnuFind, details, " -printf '%s %A@ %T@ %C@ %m %y %p\\n'")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_CZelFileListRecursive)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Synchronous)->Unit(benchmark::kMillisecond)->UseRealTime();
#ifdef ZEL260_BENCH_QT
BENCHMARK(BM_ThreadedWithWindow)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif

int main(int argc, char** argv)
{
#ifdef ZEL260_BENCH_QT
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
#endif
    return zelbench::runBenchmarks(argc, argv);
}
