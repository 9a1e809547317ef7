// Recursive file search of a generated tree (100,000 files in 10,000 folders)
// against GNU find on the same tree, warm cache, in one run.
#include <Zel260/shell/CZelFileList.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const char* const kPattern = "*.txt";

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
        std::atexit([] {
            std::error_code ec;
            std::filesystem::remove_all(tree(), ec);
        });
        return base;
    }();
    return root;
}

void BM_CZelFileListRecursive(benchmark::State& state)
{
    const std::string search = tree() + "/" + kPattern;
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

BENCHMARK_MAIN();
