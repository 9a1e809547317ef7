// Base64 of 16 MiB: the library's encoder and in-place decoder against OpenSSL's
// EVP_EncodeBlock / EVP_DecodeBlock in the same run. Compare bytes_per_second of
// each Zel row with its OpenSSL row (the goal is at least 0.7 of OpenSSL's rate).
// OpenSSL writes no line breaks, so the fair pair is lineLength 0; the 76-column
// row shows what mail's line breaks cost.
#include <Zel260/mail/ZelEncode.h>

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr size_t kSize = 16u << 20;

const std::vector<unsigned char>& input()
{
    static const std::vector<unsigned char> data = [] {
        std::vector<unsigned char> d(kSize);
        std::mt19937 rng(1);
        for (auto& b : d)
            b = static_cast<unsigned char>(rng());
        return d;
    }();
    return data;
}

void BM_ZelEncodeBase64(benchmark::State& state)
{
    auto data = input();
    const unsigned line = static_cast<unsigned>(state.range(0));
    for (auto _ : state) {
        CString text = ZelEncodeBase64(data.data(), data.size(), line);
        benchmark::DoNotOptimize(text.GetString());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kSize);
}
BENCHMARK(BM_ZelEncodeBase64)->Arg(0)->Arg(76)->Unit(benchmark::kMillisecond);

void BM_OpenSSL_EVP_EncodeBlock(benchmark::State& state)
{
    const auto& data = input();
    for (auto _ : state) {
        // Allocated per round like the library's result, so both pay for their output.
        std::vector<unsigned char> out(kSize / 3 * 4 + 8);
        int n = EVP_EncodeBlock(out.data(), data.data(), static_cast<int>(data.size()));
        benchmark::DoNotOptimize(n);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kSize);
}
BENCHMARK(BM_OpenSSL_EVP_EncodeBlock)->Unit(benchmark::kMillisecond);

std::vector<unsigned char> encodedText()
{
    auto data = input();
    CString text = ZelEncodeBase64(data.data(), data.size(), 0);
    std::vector<unsigned char> t(text.GetString(), text.GetString() + text.GetLength() + 1);
    return t;
}

void BM_ZelDecodeBase64(benchmark::State& state)
{
    const auto text = encodedText();
    std::vector<unsigned char> work(text.size());
    for (auto _ : state) {
        state.PauseTiming(); // the decoder works in place: give it a fresh copy
        std::memcpy(work.data(), text.data(), text.size());
        state.ResumeTiming();
        unsigned long n = ZelDecodeBase64(work.data());
        benchmark::DoNotOptimize(n);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kSize);
}
BENCHMARK(BM_ZelDecodeBase64)->Unit(benchmark::kMillisecond);

void BM_OpenSSL_EVP_DecodeBlock(benchmark::State& state)
{
    const auto text = encodedText();
    std::vector<unsigned char> out(text.size());
    for (auto _ : state) {
        int n = EVP_DecodeBlock(out.data(), text.data(), static_cast<int>(text.size() - 1));
        benchmark::DoNotOptimize(n);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kSize);
}
BENCHMARK(BM_OpenSSL_EVP_DecodeBlock)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
