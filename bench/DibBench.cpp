// CZelDib's pixel loops against pixman (the 2D compositing library of X and cairo)
// on 4096 by 4096 images, and its plain copy against memcpy, the physical limit.
// pixman is loaded at run time from libpixman-1.so.0 so that only its run-time
// package is needed; without it the peers report an error and the library's own
// numbers still run. Blend is measured against a straightforward scalar loop.
#include <Zel260/graphics/CZelDib.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <vector>

namespace {

constexpr int kSize = 4096;

// --- pixman, declared as its ABI publishes it -----------------------------------
struct pixman_image;
using pixman_fixed_t = std::int32_t;
struct pixman_transform {
    pixman_fixed_t matrix[3][3];
};
constexpr std::uint32_t PIXMAN_x8r8g8b8 = 0x20020888u; // PIXMAN_FORMAT(32, ARGB, 0, 8, 8, 8)
enum : int {
    PIXMAN_OP_SRC = 0x01,
    PIXMAN_OP_ADD = 0x0c,
    PIXMAN_OP_MULTIPLY = 0x30,
    PIXMAN_OP_SCREEN = 0x31,
    PIXMAN_OP_DARKEN = 0x33,
    PIXMAN_OP_LIGHTEN = 0x34,
    PIXMAN_OP_DIFFERENCE = 0x39,
};
constexpr int PIXMAN_FILTER_NEAREST = 3;

struct Pixman {
    pixman_image* (*create)(std::uint32_t, int, int, std::uint32_t*, int) = nullptr;
    int (*unref)(pixman_image*) = nullptr;
    void (*composite)(int, pixman_image*, pixman_image*, pixman_image*, std::int32_t, std::int32_t, std::int32_t,
                      std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t) = nullptr;
    int (*fill)(std::uint32_t*, int, int, int, int, int, int, std::uint32_t) = nullptr;
    int (*setTransform)(pixman_image*, const pixman_transform*) = nullptr;
    int (*setFilter)(pixman_image*, int, const pixman_fixed_t*, int) = nullptr;
    bool ok = false;

    Pixman()
    {
        void* lib = dlopen("libpixman-1.so.0", RTLD_NOW | RTLD_LOCAL);
        if (!lib)
            return;
        create = reinterpret_cast<decltype(create)>(dlsym(lib, "pixman_image_create_bits"));
        unref = reinterpret_cast<decltype(unref)>(dlsym(lib, "pixman_image_unref"));
        composite = reinterpret_cast<decltype(composite)>(dlsym(lib, "pixman_image_composite32"));
        fill = reinterpret_cast<decltype(fill)>(dlsym(lib, "pixman_fill"));
        setTransform = reinterpret_cast<decltype(setTransform)>(dlsym(lib, "pixman_image_set_transform"));
        setFilter = reinterpret_cast<decltype(setFilter)>(dlsym(lib, "pixman_image_set_filter"));
        ok = create && unref && composite && fill && setTransform && setFilter;
    }
};

const Pixman& pixman()
{
    static Pixman p;
    return p;
}

// Two pictures with varied content, made once.
struct Images {
    CZelDib dst, src;
    Images()
    {
        dst.Create(kSize, kSize);
        src.Create(kSize, kSize);
        DWORD* d = dst.GetCrBits();
        DWORD* s = src.GetCrBits();
        std::uint32_t seed = 12345;
        for (std::size_t i = 0; i < static_cast<std::size_t>(kSize) * kSize; ++i) {
            seed = seed * 1664525u + 1013904223u;
            d[i] = seed | 0xFF000000u;
            s[i] = (seed >> 7) | 0xFF000000u;
        }
    }
};

Images& images()
{
    static Images i;
    return i;
}

void setBytes(benchmark::State& state)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * kSize * kSize * 4);
}

// --- the library ------------------------------------------------------------------

template <BOOL (CZelDib::*Op)(const CZelDib*)> void BM_Zel(benchmark::State& state)
{
    Images& im = images();
    for (auto _ : state) {
        (im.dst.*Op)(&im.src);
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

void BM_Zel_Fill(benchmark::State& state)
{
    Images& im = images();
    for (auto _ : state) {
        im.dst.Fill(RGB(10, 20, 30));
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

void BM_Zel_CopyFromDib(benchmark::State& state)
{
    Images& im = images();
    for (auto _ : state) {
        im.dst.CopyFromDib(&im.src);
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

void BM_Memcpy(benchmark::State& state)
{
    Images& im = images();
    for (auto _ : state) {
        std::memcpy(im.dst.GetCrBits(), im.src.GetCrBits(), static_cast<std::size_t>(kSize) * kSize * 4);
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

constexpr float kAngle = 0.3f, kZoom = 1.1f;

void BM_Zel_RotateZoom(benchmark::State& state)
{
    Images& im = images();
    for (auto _ : state) {
        im.dst.CopyFromDibStretch(&im.src, kAngle, kZoom, FALSE, FALSE, 0, nullptr);
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

void BM_Zel_Blend(benchmark::State& state)
{
    Images& im = images();
    for (auto _ : state) {
        im.dst.Blend(&im.src, 100);
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

// The peer of Blend: the documented formula written as the obvious byte loop.
void BM_ScalarLoop_Blend(benchmark::State& state)
{
    Images& im = images();
    auto* d = reinterpret_cast<std::uint8_t*>(im.dst.GetCrBits());
    const auto* s = reinterpret_cast<const std::uint8_t*>(im.src.GetCrBits());
    const std::uint32_t a = 100;
    for (auto _ : state) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(kSize) * kSize * 4; ++i) {
            if ((i & 3) == 3)
                continue;
            const std::uint32_t dv = d[i], sv = s[i];
            d[i] = static_cast<std::uint8_t>((((sv - dv) * a) + (dv << 8)) >> 8);
        }
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

// --- pixman -----------------------------------------------------------------------

struct PixmanImages {
    pixman_image* dst = nullptr;
    pixman_image* src = nullptr;
    explicit PixmanImages(Images& im)
    {
        const Pixman& p = pixman();
        dst = p.create(PIXMAN_x8r8g8b8, kSize, kSize, im.dst.GetCrBits(), kSize * 4);
        src = p.create(PIXMAN_x8r8g8b8, kSize, kSize, im.src.GetCrBits(), kSize * 4);
    }
    ~PixmanImages()
    {
        pixman().unref(dst);
        pixman().unref(src);
    }
};

template <int Op> void BM_Pixman(benchmark::State& state)
{
    if (!pixman().ok) {
        state.SkipWithError("libpixman-1.so.0 not found");
        return;
    }
    PixmanImages pi(images());
    for (auto _ : state) {
        pixman().composite(Op, pi.src, nullptr, pi.dst, 0, 0, 0, 0, 0, 0, kSize, kSize);
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

void BM_Pixman_Fill(benchmark::State& state)
{
    if (!pixman().ok) {
        state.SkipWithError("libpixman-1.so.0 not found");
        return;
    }
    Images& im = images();
    for (auto _ : state) {
        pixman().fill(im.dst.GetCrBits(), kSize, 32, 0, 0, kSize, kSize, 0x001E140Au);
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

void BM_Pixman_RotateZoom(benchmark::State& state)
{
    if (!pixman().ok) {
        state.SkipWithError("libpixman-1.so.0 not found");
        return;
    }
    PixmanImages pi(images());
    // The same mapping as the library's: destination centre to source centre,
    // turned by the angle and scaled by 1 / zoom.
    const double q = 1.0 / kZoom, c = std::cos(-kAngle) * q, s = std::sin(-kAngle) * q;
    const double half = 0.5 * kSize;
    const double tx = half - (c * half + s * half), ty = half - (-s * half + c * half);
    auto fx = [](double v) { return static_cast<pixman_fixed_t>(std::lround(v * 65536.0)); };
    pixman_transform t = {{{fx(c), fx(s), fx(tx)}, {fx(-s), fx(c), fx(ty)}, {0, 0, fx(1.0)}}};
    pixman().setTransform(pi.src, &t);
    pixman().setFilter(pi.src, PIXMAN_FILTER_NEAREST, nullptr, 0);
    for (auto _ : state) {
        pixman().composite(PIXMAN_OP_SRC, pi.src, nullptr, pi.dst, 0, 0, 0, 0, 0, 0, kSize, kSize);
        benchmark::ClobberMemory();
    }
    setBytes(state);
}

} // namespace

BENCHMARK(BM_Zel_Fill)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pixman_Fill)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel<&CZelDib::Multiply>)->Name("BM_Zel_Multiply")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pixman<PIXMAN_OP_MULTIPLY>)->Name("BM_Pixman_Multiply")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel<&CZelDib::Screen>)->Name("BM_Zel_Screen")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pixman<PIXMAN_OP_SCREEN>)->Name("BM_Pixman_Screen")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel<&CZelDib::Darken>)->Name("BM_Zel_Darken")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pixman<PIXMAN_OP_DARKEN>)->Name("BM_Pixman_Darken")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel<&CZelDib::Lighten>)->Name("BM_Zel_Lighten")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pixman<PIXMAN_OP_LIGHTEN>)->Name("BM_Pixman_Lighten")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel<&CZelDib::Difference>)->Name("BM_Zel_Difference")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pixman<PIXMAN_OP_DIFFERENCE>)->Name("BM_Pixman_Difference")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel<&CZelDib::Add>)->Name("BM_Zel_Add")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pixman<PIXMAN_OP_ADD>)->Name("BM_Pixman_Add")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel_RotateZoom)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pixman_RotateZoom)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel_Blend)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScalarLoop_Blend)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Zel_CopyFromDib)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Memcpy)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
