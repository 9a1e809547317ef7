// Reading one key from a profile of 1,000 keys (10 sections of 100), against a plain
// std::ifstream/std::getline scan that finds the same key the simplest way, in the
// same run. Compare the Zel rows' time with BM_IfstreamLineScan: the first key of the
// first section is the best case for both, the last key of the last section the worst.
#include <Zel260/platform/PrivateProfile.h>
#include <Zel260/services/CZelProfileEntries.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <fstream>
#include <string>

#include <unistd.h>

namespace {

const std::string& profileFile()
{
    static const std::string path = [] {
        std::string p = "/tmp/zel260-profilebench-" + std::to_string(::getpid()) + ".ini";
        std::ofstream out(p);
        for (int s = 0; s < 10; ++s) {
            out << "[Section" << s << "]\n";
            for (int k = 0; k < 100; ++k)
                out << "Key" << k << "=value of key " << k << " in section " << s << "\n";
            out << "\n";
        }
        return p;
    }();
    return path;
}

struct Removal {
    ~Removal() { std::remove(profileFile().c_str()); }
} removal;

const char* sectionOf(int64_t which) { return which ? "Section9" : "Section0"; }
const char* keyOf(int64_t which) { return which ? "Key99" : "Key0"; }

void BM_ZelReadProfileString(benchmark::State& state)
{
    const std::string& file = profileFile();
    for (auto _ : state) {
        CString v = CZelProfileEntries::ReadProfileString(file.c_str(), sectionOf(state.range(0)),
                                                          keyOf(state.range(0)), "");
        benchmark::DoNotOptimize(v.GetString());
    }
}
BENCHMARK(BM_ZelReadProfileString)->Arg(0)->Arg(1);

void BM_ZelReadProfileInt(benchmark::State& state)
{
    const std::string& file = profileFile();
    for (auto _ : state) {
        unsigned v = CZelProfileEntries::ReadProfileInt(file.c_str(), sectionOf(state.range(0)),
                                                        keyOf(state.range(0)), 0);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_ZelReadProfileInt)->Arg(0)->Arg(1);

// The peer: open, read line by line, exact section header, then "key=" prefix.
void BM_IfstreamLineScan(benchmark::State& state)
{
    const std::string& file = profileFile();
    const std::string header = std::string("[") + sectionOf(state.range(0)) + "]";
    const std::string prefix = std::string(keyOf(state.range(0))) + "=";
    for (auto _ : state) {
        std::ifstream in(file);
        std::string line, value;
        bool inSection = false;
        while (std::getline(in, line)) {
            if (!line.empty() && line[0] == '[') {
                if (inSection)
                    break;
                inSection = line == header;
            } else if (inSection && line.compare(0, prefix.size(), prefix) == 0) {
                value = line.substr(prefix.size());
                break;
            }
        }
        benchmark::DoNotOptimize(value.data());
    }
}
BENCHMARK(BM_IfstreamLineScan)->Arg(0)->Arg(1);

} // namespace

BENCHMARK_MAIN();
