#include <Zel260/graphics/CZelBitmap.h>
#include <Zel260/graphics/CZelDib.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#define ZEL_DIB_SSE2 1
#endif

namespace {

// Colour references hold red in byte 0; pixels hold blue there.
inline DWORD swapRB(DWORD c)
{
    return (c & 0xFF00FF00u) | ((c & 0xFFu) << 16) | ((c >> 16) & 0xFFu);
}

template <class F> inline DWORD perChannel(DWORD d, DWORD s, F f)
{
    return (d & 0xFF000000u) | f(d & 0xFFu, s & 0xFFu) | (f((d >> 8) & 0xFFu, (s >> 8) & 0xFFu) << 8) |
           (f((d >> 16) & 0xFFu, (s >> 16) & 0xFFu) << 16);
}

#if ZEL_DIB_SSE2
// Four pixels at a time. The byte formulas are the scalar ones, term for term; the
// alpha byte of the destination is put back afterwards.
inline __m128i keepAlpha(__m128i d, __m128i r)
{
    const __m128i alpha = _mm_set1_epi32(static_cast<int>(0xFF000000u));
    return _mm_or_si128(_mm_and_si128(d, alpha), _mm_andnot_si128(alpha, r));
}

// (a * b) >> 8 for each byte, through 16-bit lanes.
inline __m128i mulBytes(__m128i a, __m128i b)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i lo = _mm_srli_epi16(_mm_mullo_epi16(_mm_unpacklo_epi8(a, zero), _mm_unpacklo_epi8(b, zero)), 8);
    const __m128i hi = _mm_srli_epi16(_mm_mullo_epi16(_mm_unpackhi_epi8(a, zero), _mm_unpackhi_epi8(b, zero)), 8);
    return _mm_packus_epi16(lo, hi);
}
#endif

inline DWORD blendByte(DWORD d, DWORD s, DWORD a)
{
    return ((((s - d) * a) + (d << 8)) >> 8) & 0xFFu;
}

struct OpDarken {
    DWORD operator()(DWORD d, DWORD s) const { return perChannel(d, s, [](DWORD a, DWORD b) { return a < b ? a : b; }); }
#if ZEL_DIB_SSE2
    __m128i vec(__m128i d, __m128i s) const { return keepAlpha(d, _mm_min_epu8(d, s)); }
#endif
};
struct OpLighten {
    DWORD operator()(DWORD d, DWORD s) const { return perChannel(d, s, [](DWORD a, DWORD b) { return a > b ? a : b; }); }
#if ZEL_DIB_SSE2
    __m128i vec(__m128i d, __m128i s) const { return keepAlpha(d, _mm_max_epu8(d, s)); }
#endif
};
struct OpScreen {
    DWORD operator()(DWORD d, DWORD s) const
    {
        return perChannel(d, s, [](DWORD a, DWORD b) { return ~(((255 - a) * (255 - b)) >> 8) & 0xFFu; });
    }
#if ZEL_DIB_SSE2
    __m128i vec(__m128i d, __m128i s) const { return keepAlpha(d, _mm_xor_si128(mulBytes(_mm_xor_si128(d, _mm_set1_epi32(-1)), _mm_xor_si128(s, _mm_set1_epi32(-1))), _mm_set1_epi32(-1))); }
#endif
};
struct OpAdd {
    DWORD operator()(DWORD d, DWORD s) const
    {
        return perChannel(d, s, [](DWORD a, DWORD b) { return a + b > 255 ? DWORD{255} : a + b; });
    }
#if ZEL_DIB_SSE2
    __m128i vec(__m128i d, __m128i s) const { return keepAlpha(d, _mm_adds_epu8(d, s)); }
#endif
};
struct OpDifference {
    DWORD operator()(DWORD d, DWORD s) const
    {
        return perChannel(d, s, [](DWORD a, DWORD b) { return a > b ? a - b : b - a; });
    }
#if ZEL_DIB_SSE2
    __m128i vec(__m128i d, __m128i s) const { return keepAlpha(d, _mm_or_si128(_mm_subs_epu8(d, s), _mm_subs_epu8(s, d))); }
#endif
};
struct OpMultiply {
    DWORD operator()(DWORD d, DWORD s) const { return perChannel(d, s, [](DWORD a, DWORD b) { return (a * b) >> 8; }); }
#if ZEL_DIB_SSE2
    __m128i vec(__m128i d, __m128i s) const { return keepAlpha(d, mulBytes(d, s)); }
#endif
};
struct OpBlend {
    DWORD a;
    DWORD operator()(DWORD d, DWORD s) const
    {
        const DWORD f = a;
        return perChannel(d, s, [f](DWORD x, DWORD y) { return blendByte(x, y, f); });
    }
#if ZEL_DIB_SSE2
    // d * (256 - a) + s * a is the same sum as (s - d) * a + (d << 8) and stays
    // below 65536, so 16-bit lanes hold it exactly.
    __m128i vec(__m128i d, __m128i s) const
    {
        const __m128i zero = _mm_setzero_si128();
        const __m128i fa = _mm_set1_epi16(static_cast<short>(a)), fd = _mm_set1_epi16(static_cast<short>(256 - a));
        auto half = [&](__m128i dd, __m128i ss) {
            return _mm_srli_epi16(_mm_add_epi16(_mm_mullo_epi16(dd, fd), _mm_mullo_epi16(ss, fa)), 8);
        };
        const __m128i r = _mm_packus_epi16(half(_mm_unpacklo_epi8(d, zero), _mm_unpacklo_epi8(s, zero)),
                                           half(_mm_unpackhi_epi8(d, zero), _mm_unpackhi_epi8(s, zero)));
        return keepAlpha(d, r);
    }
#endif
};
struct OpBlend50 {
    DWORD operator()(DWORD d, DWORD s) const { return ((d >> 1) & 0x7F7F7Fu) + ((s >> 1) & 0x7F7F7Fu); }
#if ZEL_DIB_SSE2
    __m128i vec(__m128i d, __m128i s) const
    {
        const __m128i m = _mm_set1_epi32(0x7F7F7F);
        return _mm_add_epi32(_mm_and_si128(_mm_srli_epi32(d, 1), m), _mm_and_si128(_mm_srli_epi32(s, 1), m));
    }
#endif
};
struct OpCopy {
    DWORD operator()(DWORD, DWORD s) const { return s; }
};
struct OpKey {
    DWORD key;
    DWORD operator()(DWORD d, DWORD s) const { return s == key ? d : s; }
};
struct OpAlpha {
    DWORD operator()(DWORD d, DWORD s) const
    {
        const DWORD f = s >> 24;
        return perChannel(d, s, [f](DWORD x, DWORD y) { return blendByte(x, y, f); });
    }
};

#if ZEL_DIB_SSE2
template <class Op> constexpr bool hasVec = requires(const Op& op, __m128i v) { op.vec(v, v); };
#endif

template <class Op> inline void runSpan(DWORD* d, const DWORD* s, std::size_t n, Op op)
{
    std::size_t i = 0;
#if ZEL_DIB_SSE2
    if constexpr (hasVec<Op>) {
        for (; i + 4 <= n; i += 4) {
            const __m128i dv = _mm_loadu_si128(reinterpret_cast<const __m128i*>(d + i));
            const __m128i sv = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(d + i), op.vec(dv, sv));
        }
    }
#endif
    for (; i < n; ++i)
        d[i] = op(d[i], s[i]);
}

template <class Op> inline void runRows(DWORD* d, int dSkip, const DWORD* s, int sSkip, int w, int h, Op op)
{
    for (int y = 0; y < h; ++y) {
        if constexpr (std::is_same_v<Op, OpCopy>)
            std::memmove(d, s, static_cast<std::size_t>(w) * sizeof(DWORD));
        else
            runSpan(d, s, static_cast<std::size_t>(w), op);
        d += w + dSkip;
        s += w + sSkip;
    }
}

template <class Op> inline void runColour(DWORD* d, std::size_t n, DWORD s, Op op)
{
    std::size_t i = 0;
#if ZEL_DIB_SSE2
    if constexpr (hasVec<Op>) {
        const __m128i sv = _mm_set1_epi32(static_cast<int>(s));
        for (; i + 4 <= n; i += 4) {
            const __m128i dv = _mm_loadu_si128(reinterpret_cast<const __m128i*>(d + i));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(d + i), op.vec(dv, sv));
        }
    }
#endif
    for (; i < n; ++i)
        d[i] = op(d[i], s);
}

// Large fills bypass the cache: the pixels are written once and not read back
// soon, and skipping the read-for-ownership of each line nearly halves the traffic.
inline void fillPixels(DWORD* d, std::size_t n, DWORD v)
{
#if ZEL_DIB_SSE2
    if (n >= (std::size_t{1} << 18)) {
        while (reinterpret_cast<std::uintptr_t>(d) & 15) {
            *d++ = v;
            --n;
        }
        const __m128i vv = _mm_set1_epi32(static_cast<int>(v));
        std::size_t i = 0;
        for (; i + 4 <= n; i += 4)
            _mm_stream_si128(reinterpret_cast<__m128i*>(d + i), vv);
        _mm_sfence();
        std::fill(d + i, d + n, v);
        return;
    }
#endif
    std::fill_n(d, n, v);
}

inline std::size_t pixelCount(int w, int h)
{
    return static_cast<std::size_t>(w) * static_cast<std::size_t>(h);
}

} // namespace

// --- Life -----------------------------------------------------------------------

CZelDib::CZelDib()
{
    std::memset(&m_info, 0, sizeof m_info);
}

CZelDib::CZelDib(const CZelDib& other) : CZelDib()
{
    Create(&other);
}

CZelDib& CZelDib::operator=(const CZelDib& other)
{
    // Shares the section on purpose: callers rely on the cheap hand-over.
    m_info = other.m_info;
    m_width = other.m_width;
    m_height = other.m_height;
    m_bitmap = other.m_bitmap;
    m_bits = other.m_bits;
    return *this;
}

CZelDib::~CZelDib()
{
    Destroy();
}

BOOL CZelDib::Create(int width, int height)
{
    if (width < 1 || height == 0)
        return FALSE;
    Destroy();
    // A height without an absolute value can't be had, like any other size the
    // memory can't hold; the old image is gone all the same.
    if (height == INT32_MIN)
        return FALSE;
    BITMAPINFOHEADER& h = m_info.bmiHeader;
    h.biSize = 40;
    h.biWidth = width;
    h.biHeight = height;
    h.biPlanes = 1;
    h.biBitCount = 32;
    h.biCompression = BI_RGB;
    // Negative for a top-down image, kept so as the header has always carried it.
    h.biSizeImage = static_cast<DWORD>(static_cast<std::int64_t>(width) * height * 4);
    void* bits = nullptr;
    m_bitmap = CreateDIBSection(nullptr, &m_info, DIB_RGB_COLORS, &bits, nullptr, 0);
    m_bits = static_cast<DWORD*>(bits);
    if (!m_bitmap || !m_bits) {
        Destroy();
        return FALSE;
    }
    m_width = width;
    m_height = height < 0 ? -height : height;
    return TRUE;
}

BOOL CZelDib::Create(const SIZE& size)
{
    return Create(size.cx, size.cy);
}

BOOL CZelDib::Create(const CZelDib* src)
{
    return Resize(src) && CopyFromDib(src);
}

BOOL CZelDib::Create(CDC* dc, CBitmap* bitmap, int topDown)
{
    BITMAP bm;
    if (!dc || !bitmap || !bitmap->GetBitmap(&bm))
        return FALSE;
    if (!Create(bm.bmWidth, topDown ? -bm.bmHeight : bm.bmHeight))
        return FALSE;
    return CopyFromBitmap(dc, bitmap);
}

BOOL CZelDib::Create(CDC* dc, HINSTANCE module, UINT id, int topDown)
{
    if (!dc || !module)
        return FALSE;
    CZelBitmap bitmap;
    return bitmap.LoadBitmap(module, id) && Create(dc, &bitmap, topDown);
}

BOOL CZelDib::Create(CDC* dc, const char* fileName, int topDown)
{
    if (!dc || !fileName || !*fileName)
        return FALSE;
    CZelBitmap bitmap;
    return bitmap.LoadBitmap(fileName) && Create(dc, &bitmap, topDown);
}

void CZelDib::Destroy()
{
    m_bits = nullptr;
    if (m_bitmap)
        DeleteObject(m_bitmap);
    m_bitmap = nullptr;
    m_width = 0;
    m_height = 0;
    std::memset(&m_info, 0, sizeof m_info);
}

BOOL CZelDib::Resize(int width, int height)
{
    if (width == m_width && height == m_height)
        return TRUE;
    return Create(width, height);
}

BOOL CZelDib::Resize(const CZelDib* src)
{
    if (!src)
        return FALSE;
    if (IsEqualSize(src))
        return TRUE;
    return Create(src->m_width, src->IsTopDown() ? -src->m_height : src->m_height);
}

// --- Clipping -------------------------------------------------------------------

void CZelDib::ClipX(int& x) const
{
    x = std::clamp(x, 0, std::max(m_width - 1, 0));
}

void CZelDib::ClipY(int& y) const
{
    y = std::clamp(y, 0, std::max(m_height - 1, 0));
}

BOOL CZelDib::ClipXYWH(int& x, int& y, int& w, int& h) const
{
    // Sums in 64 bits: callers pass any rectangle.
    if (static_cast<std::int64_t>(x) + w >= m_width)
        w = static_cast<int>(std::clamp<std::int64_t>(static_cast<std::int64_t>(m_width) - x, INT32_MIN, INT32_MAX));
    if (x < 0) {
        w = static_cast<int>(std::max<std::int64_t>(static_cast<std::int64_t>(w) + x, INT32_MIN));
        x = 0;
    }
    if (static_cast<std::int64_t>(y) + h >= m_height)
        h = static_cast<int>(std::clamp<std::int64_t>(static_cast<std::int64_t>(m_height) - y, INT32_MIN, INT32_MAX));
    if (y < 0) {
        h = static_cast<int>(std::max<std::int64_t>(static_cast<std::int64_t>(h) + y, INT32_MIN));
        y = 0;
    }
    return w >= 1 && h >= 1;
}

BOOL CZelDib::ClipX1YX2(int& x1, int& y, int& x2) const
{
    if (x2 > m_width)
        x2 = m_width - 1;
    if (x1 < 0)
        x1 = 0;
    if (x1 == x2)
        return FALSE;
    return IsValidY(y);
}

BOOL CZelDib::ClipXY1Y2(int& x, int& y1, int& y2) const
{
    if (y2 > m_height)
        y2 = m_height - 1;
    if (y1 < 0)
        y1 = 0;
    if (y1 == y2)
        return FALSE;
    return IsValidX(x);
}

// --- Checks ---------------------------------------------------------------------

BOOL CZelDib::ChkDstSizeRect(int& x, int& y, int& w, int& h, int exact) const
{
    if (!m_bits)
        return FALSE;
    if (!exact)
        return ClipXYWH(x, y, w, h);
    return static_cast<std::int64_t>(x) + w == m_width && static_cast<std::int64_t>(y) + h == m_height;
}

BOOL CZelDib::ChkDstSizeRect(int& x, int& y, int& w, int& h, int exact)
{
    if (!m_bits) {
        const std::int64_t nw = static_cast<std::int64_t>(x) + w, nh = static_cast<std::int64_t>(y) + h;
        if (nw < 1 || nh < 1 || nw > INT32_MAX || nh > INT32_MAX || !Resize(static_cast<int>(nw), static_cast<int>(nh)))
            return FALSE;
        // A negative origin would reach before the new image; cutting it keeps every
        // write inside and changes nothing for the origins that make sense.
        return std::as_const(*this).ChkDstSizeRect(x, y, w, h, 0);
    }
    return std::as_const(*this).ChkDstSizeRect(x, y, w, h, exact);
}

BOOL CZelDib::ChkDstSize(int w, int h, int exact) const
{
    int x = 0, y = 0;
    return ChkDstSizeRect(x, y, w, h, exact);
}

BOOL CZelDib::ChkDstSize(int w, int h, int exact)
{
    int x = 0, y = 0;
    return ChkDstSizeRect(x, y, w, h, exact);
}

BOOL CZelDib::ChkDstSize(const CZelDib* src) const
{
    return src && ChkDstSize(src->m_width, src->m_height, 1);
}

BOOL CZelDib::ChkDstSize(const CZelDib* src)
{
    return src && ChkDstSize(src->m_width, src->m_height, 1);
}

BOOL CZelDib::ChkSrcSizeRect(const CZelDib* src, int& x, int& y, int& w, int& h) const
{
    return src && src->ChkDstSizeRect(x, y, w, h, 0);
}

BOOL CZelDib::ChkSrcSize(const CZelDib* src) const
{
    return src && src->m_bits;
}

BOOL CZelDib::PrepDst(int& x, int& y, int& w, int& h, DWORD*& dst, int& dstSkip) const
{
    if (!ChkDstSizeRect(x, y, w, h, 0))
        return FALSE;
    dst = m_bits + static_cast<std::size_t>(y) * m_width + x;
    dstSkip = m_width - w;
    return TRUE;
}

BOOL CZelDib::PrepDstSrc(const CZelDib* src, int sx, int sy, int& w, int& h, int dx, int dy, DWORD*& dst,
                         int& dstSkip, const DWORD*& srcBits, int& srcSkip) const
{
    const int dx0 = dx, dy0 = dy;
    if (!ChkSrcSizeRect(src, sx, sy, w, h) || !ChkDstSizeRect(dx, dy, w, h, 0))
        return FALSE;
    if (dx != dx0 || dy != dy0) {
        sx += dx - dx0;
        sy += dy - dy0;
        if (!ChkSrcSizeRect(src, sx, sy, w, h))
            return FALSE;
    }
    dst = m_bits + static_cast<std::size_t>(dy) * m_width + dx;
    dstSkip = m_width - w;
    srcBits = src->m_bits + static_cast<std::size_t>(sy) * src->m_width + sx;
    srcSkip = src->m_width - w;
    return TRUE;
}

// --- Operation frames -----------------------------------------------------------

template <class Op> BOOL CZelDib::WholeOp(const CZelDib* src, Op op)
{
    if (!ChkSrcSize(src) || !ChkDstSize(src))
        return FALSE;
    runSpan(m_bits, src->m_bits, pixelCount(m_width, m_height), op);
    return TRUE;
}

template <class Op> BOOL CZelDib::RectOp(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy, Op op)
{
    DWORD* d;
    const DWORD* s;
    int dSkip, sSkip;
    if (!PrepDstSrc(src, sx, sy, w, h, dx, dy, d, dSkip, s, sSkip))
        return FALSE;
    runRows(d, dSkip, s, sSkip, w, h, op);
    return TRUE;
}

template <class Op> BOOL CZelDib::ColourOp(DWORD colour, Op op)
{
    if (!m_bits)
        return FALSE;
    runColour(m_bits, pixelCount(m_width, m_height), swapRB(colour), op);
    return TRUE;
}

template <class Op> BOOL CZelDib::ColourRectOp(DWORD colour, int x, int y, int w, int h, Op op)
{
    DWORD* d;
    int skip;
    if (!PrepDst(x, y, w, h, d, skip))
        return FALSE;
    const DWORD s = swapRB(colour);
    for (int r = 0; r < h; ++r, d += m_width)
        runColour(d, static_cast<std::size_t>(w), s, op);
    return TRUE;
}

#define ZEL_DIB_BLEND_MODE(Name, Op)                                                                            \
    BOOL CZelDib::Name(const CZelDib* src) { return WholeOp(src, Op{}); }                                       \
    BOOL CZelDib::Name##Rect(const CZelDib* src, int x, int y, int w, int h)                                    \
    {                                                                                                           \
        return RectOp(src, x, y, w, h, 0, 0, Op{});                                                             \
    }                                                                                                           \
    BOOL CZelDib::Name##Rect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy)                  \
    {                                                                                                           \
        return RectOp(src, sx, sy, w, h, dx, dy, Op{});                                                         \
    }                                                                                                           \
    BOOL CZelDib::Name##Rect(const CZelDib* src, const CRect& r)                                                \
    {                                                                                                           \
        return RectOp(src, r.left, r.top, r.Width(), r.Height(), 0, 0, Op{});                                  \
    }                                                                                                           \
    BOOL CZelDib::Name##Rect(const CZelDib* src, const CRect& r, const CPoint& p)                               \
    {                                                                                                           \
        return RectOp(src, r.left, r.top, r.Width(), r.Height(), p.x, p.y, Op{});                               \
    }                                                                                                           \
    BOOL CZelDib::Name(DWORD colour) { return ColourOp(colour, Op{}); }                                         \
    BOOL CZelDib::Name##Rect(DWORD colour, int x, int y, int w, int h)                                          \
    {                                                                                                           \
        return ColourRectOp(colour, x, y, w, h, Op{});                                                          \
    }                                                                                                           \
    BOOL CZelDib::Name##Rect(DWORD colour, const CRect& r)                                                      \
    {                                                                                                           \
        return ColourRectOp(colour, r.left, r.top, r.Width(), r.Height(), Op{});                                \
    }

ZEL_DIB_BLEND_MODE(Darken, OpDarken)
ZEL_DIB_BLEND_MODE(Lighten, OpLighten)
ZEL_DIB_BLEND_MODE(Screen, OpScreen)
ZEL_DIB_BLEND_MODE(Add, OpAdd)
ZEL_DIB_BLEND_MODE(Difference, OpDifference)
ZEL_DIB_BLEND_MODE(Multiply, OpMultiply)
#undef ZEL_DIB_BLEND_MODE

BOOL CZelDib::Blend(const CZelDib* src, BYTE a)
{
    return WholeOp(src, OpBlend{a});
}
BOOL CZelDib::BlendRect(const CZelDib* src, int x, int y, int w, int h, BYTE a)
{
    return RectOp(src, x, y, w, h, 0, 0, OpBlend{a});
}
BOOL CZelDib::BlendRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy, BYTE a)
{
    return RectOp(src, sx, sy, w, h, dx, dy, OpBlend{a});
}
BOOL CZelDib::BlendRect(const CZelDib* src, const CRect& r, BYTE a)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), 0, 0, OpBlend{a});
}
BOOL CZelDib::BlendRect(const CZelDib* src, const CRect& r, const CPoint& p, BYTE a)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), p.x, p.y, OpBlend{a});
}
BOOL CZelDib::Blend50(const CZelDib* src)
{
    return WholeOp(src, OpBlend50{});
}
BOOL CZelDib::Blend50Rect(const CZelDib* src, int x, int y, int w, int h)
{
    return RectOp(src, x, y, w, h, 0, 0, OpBlend50{});
}
BOOL CZelDib::Blend50Rect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy)
{
    return RectOp(src, sx, sy, w, h, dx, dy, OpBlend50{});
}
BOOL CZelDib::Blend50Rect(const CZelDib* src, const CRect& r)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), 0, 0, OpBlend50{});
}
BOOL CZelDib::Blend50Rect(const CZelDib* src, const CRect& r, const CPoint& p)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), p.x, p.y, OpBlend50{});
}

// --- Copies and keys ------------------------------------------------------------

BOOL CZelDib::CopyFromDib(const CZelDib* src)
{
    if (!ChkSrcSize(src) || !ChkDstSize(src))
        return FALSE;
    if (src->m_bits != m_bits)
        std::memcpy(m_bits, src->m_bits, pixelCount(m_width, m_height) * sizeof(DWORD));
    return TRUE;
}

namespace {

// The whole source placed at x, y: the source is read from its first pixel, so
// clipping at a negative origin cuts the far side of the picture.
template <class Op>
void placeAt(DWORD* bits, int width, const DWORD* srcBits, int srcWidth, int x, int y, int w, int h, Op op)
{
    runRows(bits + static_cast<std::size_t>(y) * width + x, width - w, srcBits, srcWidth - w, w, h, op);
}

} // namespace

BOOL CZelDib::CopyFromDib(const CZelDib* src, int x, int y)
{
    if (!ChkSrcSize(src))
        return FALSE;
    int w = src->m_width, h = src->m_height;
    if (!ChkDstSizeRect(x, y, w, h, 0))
        return FALSE;
    placeAt(m_bits, m_width, src->m_bits, src->m_width, x, y, w, h, OpCopy{});
    return TRUE;
}
BOOL CZelDib::CopyFromDib(const CZelDib* src, const CPoint& p)
{
    return CopyFromDib(src, p.x, p.y);
}
BOOL CZelDib::CopyFromDibRect(const CZelDib* src, int x, int y, int w, int h)
{
    return RectOp(src, x, y, w, h, 0, 0, OpCopy{});
}
BOOL CZelDib::CopyFromDibRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy)
{
    return RectOp(src, sx, sy, w, h, dx, dy, OpCopy{});
}
BOOL CZelDib::CopyFromDibRect(const CZelDib* src, const CRect& r)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), 0, 0, OpCopy{});
}
BOOL CZelDib::CopyFromDibRect(const CZelDib* src, const CRect& r, const CPoint& p)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), p.x, p.y, OpCopy{});
}

BOOL CZelDib::CopyFromDibTransparent(const CZelDib* src, DWORD key)
{
    return WholeOp(src, OpKey{swapRB(key) & 0xFFFFFFu});
}
BOOL CZelDib::CopyFromDibTransparent(const CZelDib* src, int x, int y, DWORD key)
{
    if (!ChkSrcSize(src))
        return FALSE;
    int w = src->m_width, h = src->m_height;
    if (!ChkDstSizeRect(x, y, w, h, 0))
        return FALSE;
    placeAt(m_bits, m_width, src->m_bits, src->m_width, x, y, w, h, OpKey{swapRB(key) & 0xFFFFFFu});
    return TRUE;
}
BOOL CZelDib::CopyFromDibTransparent(const CZelDib* src, const CPoint& p, DWORD key)
{
    return CopyFromDibTransparent(src, p.x, p.y, key);
}
BOOL CZelDib::CopyFromDibTransparentRect(const CZelDib* src, int x, int y, int w, int h, DWORD key)
{
    return RectOp(src, x, y, w, h, 0, 0, OpKey{swapRB(key) & 0xFFFFFFu});
}
BOOL CZelDib::CopyFromDibTransparentRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy, DWORD key)
{
    return RectOp(src, sx, sy, w, h, dx, dy, OpKey{swapRB(key) & 0xFFFFFFu});
}
BOOL CZelDib::CopyFromDibTransparentRect(const CZelDib* src, const CRect& r, DWORD key)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), 0, 0, OpKey{swapRB(key) & 0xFFFFFFu});
}
BOOL CZelDib::CopyFromDibTransparentRect(const CZelDib* src, const CRect& r, const CPoint& p, DWORD key)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), p.x, p.y, OpKey{swapRB(key) & 0xFFFFFFu});
}

BOOL CZelDib::CopyFromDibAlpha(const CZelDib* src)
{
    if (!ChkSrcSize(src) || !std::as_const(*this).ChkDstSize(src))
        return FALSE;
    runSpan(m_bits, src->m_bits, pixelCount(m_width, m_height), OpAlpha{});
    return TRUE;
}
BOOL CZelDib::CopyFromDibAlpha(const CZelDib* src, int x, int y)
{
    if (!ChkSrcSize(src))
        return FALSE;
    int w = src->m_width, h = src->m_height;
    if (!std::as_const(*this).ChkDstSizeRect(x, y, w, h, 0))
        return FALSE;
    placeAt(m_bits, m_width, src->m_bits, src->m_width, x, y, w, h, OpAlpha{});
    return TRUE;
}
BOOL CZelDib::CopyFromDibAlpha(const CZelDib* src, const CPoint& p)
{
    return CopyFromDibAlpha(src, p.x, p.y);
}
BOOL CZelDib::CopyFromDibAlphaRect(const CZelDib* src, int x, int y, int w, int h)
{
    return RectOp(src, x, y, w, h, 0, 0, OpAlpha{});
}
BOOL CZelDib::CopyFromDibAlphaRect(const CZelDib* src, int sx, int sy, int w, int h, int dx, int dy)
{
    return RectOp(src, sx, sy, w, h, dx, dy, OpAlpha{});
}
BOOL CZelDib::CopyFromDibAlphaRect(const CZelDib* src, const CRect& r)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), 0, 0, OpAlpha{});
}
BOOL CZelDib::CopyFromDibAlphaRect(const CZelDib* src, const CRect& r, const CPoint& p)
{
    return RectOp(src, r.left, r.top, r.Width(), r.Height(), p.x, p.y, OpAlpha{});
}

// --- Fills ----------------------------------------------------------------------

namespace {

struct OpSet {
    DWORD operator()(DWORD, DWORD s) const { return s; }
};
struct OpSetAlpha {
    DWORD operator()(DWORD d, DWORD s) const { return (d & 0x00FFFFFFu) | s; }
};

inline DWORD grey(DWORD p)
{
    const double v = 0.3 * ((p >> 16) & 0xFF) + 0.59 * ((p >> 8) & 0xFF) + 0.11 * (p & 0xFF);
    const DWORD g = static_cast<DWORD>(std::clamp(v, 0.0, 255.0));
    return (p & 0xFF000000u) | (g << 16) | (g << 8) | g;
}

} // namespace

void CZelDib::Fill(DWORD colour)
{
    if (m_bits)
        fillPixels(m_bits, pixelCount(m_width, m_height), swapRB(colour) & 0x00FFFFFFu);
}

void CZelDib::Fill(DWORD colour, BYTE alpha)
{
    if (m_bits)
        fillPixels(m_bits, pixelCount(m_width, m_height),
                   (swapRB(colour) & 0x00FFFFFFu) | (static_cast<DWORD>(alpha) << 24));
}

BOOL CZelDib::FillRect(int x, int y, int w, int h, DWORD colour)
{
    return ColourRectOp(colour, x, y, w, h, OpSet{});
}
BOOL CZelDib::FillRect(const CRect& r, DWORD colour)
{
    return FillRect(r.left, r.top, r.Width(), r.Height(), colour);
}
BOOL CZelDib::FillRect(int x, int y, int w, int h, DWORD colour, BYTE alpha)
{
    // The colour passes through the same exchange, so put alpha in after it.
    return ColourRectOp((colour & 0x00FFFFFFu) | (static_cast<DWORD>(alpha) << 24), x, y, w, h, OpSet{});
}
BOOL CZelDib::FillRect(const CRect& r, DWORD colour, BYTE alpha)
{
    return FillRect(r.left, r.top, r.Width(), r.Height(), colour, alpha);
}

void CZelDib::FillAlpha(BYTE alpha)
{
    if (m_bits)
        runColour(m_bits, pixelCount(m_width, m_height), static_cast<DWORD>(alpha) << 24, OpSetAlpha{});
}
BOOL CZelDib::FillAlphaRect(int x, int y, int w, int h, BYTE alpha)
{
    return ColourRectOp(static_cast<DWORD>(alpha) << 24, x, y, w, h, OpSetAlpha{});
}
BOOL CZelDib::FillAlphaRect(const CRect& r, BYTE alpha)
{
    return FillAlphaRect(r.left, r.top, r.Width(), r.Height(), alpha);
}

void CZelDib::FillAlphaGradient(BYTE a, BYTE b, int horizontal)
{
    if (m_bits)
        FillAlphaGradientRect(0, 0, m_width, m_height, a, b, horizontal);
}

BOOL CZelDib::FillAlphaGradientRect(int x, int y, int w, int h, BYTE a, BYTE b, int horizontal)
{
    DWORD* d;
    int skip;
    if (!PrepDst(x, y, w, h, d, skip))
        return FALSE;
    auto alphaOf = [](float v) { return static_cast<DWORD>(std::clamp(static_cast<int>(v), 0, 255)) << 24; };
    if (horizontal) {
        const float step = static_cast<float>(static_cast<int>(b) - static_cast<int>(a)) / static_cast<float>(w);
        for (int r = 0; r < h; ++r, d += m_width) {
            float v = a;
            for (int c = 0; c < w; ++c, v += step)
                d[c] = (d[c] & 0x00FFFFFFu) | alphaOf(v);
        }
    } else {
        const float step = static_cast<float>(static_cast<int>(a) - static_cast<int>(b)) / static_cast<float>(h);
        float v = b;
        for (int r = 0; r < h; ++r, d += m_width, v += step) {
            const DWORD al = alphaOf(v);
            for (int c = 0; c < w; ++c)
                d[c] = (d[c] & 0x00FFFFFFu) | al;
        }
    }
    return TRUE;
}

BOOL CZelDib::FillAlphaGradientRect(const CRect& r, BYTE a, BYTE b, int horizontal)
{
    return FillAlphaGradientRect(r.left, r.top, r.Width(), r.Height(), a, b, horizontal);
}

void CZelDib::FillBlend(DWORD colour, BYTE a)
{
    ColourOp(colour, OpBlend{a});
}
BOOL CZelDib::FillBlendRect(int x, int y, int w, int h, DWORD colour, BYTE a)
{
    return ColourRectOp(colour, x, y, w, h, OpBlend{a});
}
BOOL CZelDib::FillBlendRect(const CRect& r, DWORD colour, BYTE a)
{
    return FillBlendRect(r.left, r.top, r.Width(), r.Height(), colour, a);
}
void CZelDib::FillBlend50(DWORD colour)
{
    ColourOp(colour, OpBlend50{});
}
BOOL CZelDib::FillBlend50Rect(int x, int y, int w, int h, DWORD colour)
{
    return ColourRectOp(colour, x, y, w, h, OpBlend50{});
}
BOOL CZelDib::FillBlend50Rect(const CRect& r, DWORD colour)
{
    return FillBlend50Rect(r.left, r.top, r.Width(), r.Height(), colour);
}

void CZelDib::FillStippled(DWORD colour)
{
    if (m_bits)
        FillStippledRect(0, 0, m_width, m_height, colour);
}
BOOL CZelDib::FillStippledRect(int x, int y, int w, int h, DWORD colour)
{
    DWORD* d;
    int skip;
    if (!PrepDst(x, y, w, h, d, skip))
        return FALSE;
    const DWORD c = swapRB(colour);
    for (int r = 0; r < h; ++r, d += m_width)
        for (int col = (r & 1) ? 0 : 1; col < w; col += 2)
            d[col] = c;
    return TRUE;
}
BOOL CZelDib::FillStippledRect(const CRect& r, DWORD colour)
{
    return FillStippledRect(r.left, r.top, r.Width(), r.Height(), colour);
}

void CZelDib::GreyScale()
{
    if (!m_bits)
        return;
    const std::size_t n = pixelCount(m_width, m_height);
    for (std::size_t i = 0; i < n; ++i)
        m_bits[i] = grey(m_bits[i]);
}
BOOL CZelDib::GreyScaleRect(int x, int y, int w, int h)
{
    DWORD* d;
    int skip;
    if (!PrepDst(x, y, w, h, d, skip))
        return FALSE;
    for (int r = 0; r < h; ++r, d += m_width)
        for (int c = 0; c < w; ++c)
            d[c] = grey(d[c]);
    return TRUE;
}
BOOL CZelDib::GreyScaleRect(const CRect& r)
{
    return GreyScaleRect(r.left, r.top, r.Width(), r.Height());
}
void CZelDib::GreyScaleTransparent(DWORD colour)
{
    if (!m_bits)
        return;
    const DWORD key = swapRB(colour) & 0xFFFFFFu;
    const std::size_t n = pixelCount(m_width, m_height);
    for (std::size_t i = 0; i < n; ++i)
        if ((m_bits[i] & 0xFFFFFFu) != key)
            m_bits[i] = grey(m_bits[i]);
}

BOOL CZelDib::ExchangeColor(DWORD oldColour, DWORD newColour)
{
    return ExchangeColorRect(0, 0, m_width, m_height, oldColour, newColour);
}
BOOL CZelDib::ExchangeColorRect(int x, int y, int w, int h, DWORD oldColour, DWORD newColour)
{
    DWORD* d;
    int skip;
    if (!PrepDst(x, y, w, h, d, skip))
        return FALSE;
    const DWORD o = swapRB(oldColour) & 0xFFFFFFu, n = swapRB(newColour) & 0xFFFFFFu;
    for (int r = 0; r < h; ++r, d += m_width)
        for (int c = 0; c < w; ++c)
            if ((d[c] & 0xFFFFFFu) == o)
                d[c] = (d[c] & 0xFF000000u) | n;
    return TRUE;
}
BOOL CZelDib::ExchangeColorRect(const CRect& r, DWORD oldColour, DWORD newColour)
{
    return ExchangeColorRect(r.left, r.top, r.Width(), r.Height(), oldColour, newColour);
}
BOOL CZelDib::ExchangeColor(DWORD oldColour, DWORD newColour, BYTE alpha)
{
    return ExchangeColorRect(0, 0, m_width, m_height, oldColour, newColour, alpha);
}
BOOL CZelDib::ExchangeColorRect(int x, int y, int w, int h, DWORD oldColour, DWORD newColour, BYTE alpha)
{
    DWORD* d;
    int skip;
    if (!PrepDst(x, y, w, h, d, skip))
        return FALSE;
    const DWORD o = swapRB(oldColour) & 0xFFFFFFu;
    const DWORD n = (swapRB(newColour) & 0xFFFFFFu) | (static_cast<DWORD>(alpha) << 24);
    for (int r = 0; r < h; ++r, d += m_width)
        for (int c = 0; c < w; ++c)
            if ((d[c] & 0xFFFFFFu) == o)
                d[c] = n;
    return TRUE;
}
BOOL CZelDib::ExchangeColorRect(const CRect& r, DWORD oldColour, DWORD newColour, BYTE alpha)
{
    return ExchangeColorRect(r.left, r.top, r.Width(), r.Height(), oldColour, newColour, alpha);
}

// --- Rotate and scale -----------------------------------------------------------

template <class Sample>
BOOL CZelDib::Stretch(const CZelDib* src, float angle, float zoom, float dstX, float dstY, float srcX, float srcY,
                      int fill, DWORD fillColour, Sample sample)
{
    if (!ChkSrcSize(src) || !m_bits)
        return FALSE;
    const DWORD fc = swapRB(fillColour);
    const float q = 1.0f / zoom;
    const float c = static_cast<float>(std::cos(-static_cast<double>(angle)) * q);
    const float s = static_cast<float>(std::sin(-static_cast<double>(angle)) * q);
    float rowX = srcX - (c * dstX + s * dstY);
    float rowY = srcY - (-s * dstX + c * dstY);
    const float sw = static_cast<float>(src->m_width), sh = static_cast<float>(src->m_height);
    const DWORD* sBits = src->m_bits;
    const int sWidth = src->m_width;
    DWORD* d = m_bits;
    for (int r = 0; r < m_height; ++r, d += m_width) {
        float x = rowX, y = rowY;
        for (int col = 0; col < m_width; ++col) {
            // Strict on both sides: NaN from a zero zoom lands outside too.
            if (x > 0.0f && x < sw && y > 0.0f && y < sh)
                sample(d[col], sBits[static_cast<std::size_t>(static_cast<int>(y)) * sWidth + static_cast<int>(x)]);
            else if (fill)
                d[col] = fc;
            x += c;
            y -= s;
        }
        rowX += s;
        rowY += c;
    }
    return TRUE;
}

BOOL CZelDib::CopyFromDibStretch(const CZelDib* src, float angle, float zoom, float dstX, float dstY, float srcX,
                                 float srcY, int fill, DWORD fillColour)
{
    return Stretch(src, angle, zoom, dstX, dstY, srcX, srcY, fill, fillColour, [](DWORD& d, DWORD s) { d = s; });
}

BOOL CZelDib::CopyFromDibStretchTransparent(const CZelDib* src, float angle, float zoom, float dstX, float dstY,
                                            float srcX, float srcY, DWORD key, int fill, DWORD fillColour)
{
    const DWORD k = swapRB(key) & 0xFFFFFFu;
    return Stretch(src, angle, zoom, dstX, dstY, srcX, srcY, fill, fillColour, [k](DWORD& d, DWORD s) {
        if ((s & 0xFFFFFFu) != k)
            d = s;
    });
}

BOOL CZelDib::CopyFromDibStretchAlpha(const CZelDib* src, float angle, float zoom, float dstX, float dstY,
                                      float srcX, float srcY, int fill, DWORD fillColour)
{
    return Stretch(src, angle, zoom, dstX, dstY, srcX, srcY, fill, fillColour,
                   [](DWORD& d, DWORD s) { d = OpAlpha{}(d, s); });
}

BOOL CZelDib::CopyFromDibStretch(const CZelDib* src, float angle, float zoom, int adjust, int fill,
                                 DWORD fillColour, CZelPoint<double>* const corners)
{
    if (adjust && !AdjustSize(src, angle, zoom, corners))
        return FALSE;
    return CopyFromDibStretch(src, angle, zoom, static_cast<float>(0.5 * m_width), static_cast<float>(0.5 * m_height),
                              src ? static_cast<float>(0.5 * src->m_width) : 0.0f,
                              src ? static_cast<float>(0.5 * src->m_height) : 0.0f, fill, fillColour);
}

BOOL CZelDib::CopyFromDibStretchTransparent(const CZelDib* src, float angle, float zoom, DWORD key, int adjust,
                                            int fill, DWORD fillColour, CZelPoint<double>* const corners)
{
    if (adjust && !AdjustSize(src, angle, zoom, corners))
        return FALSE;
    return CopyFromDibStretchTransparent(src, angle, zoom, static_cast<float>(0.5 * m_width),
                                         static_cast<float>(0.5 * m_height),
                                         src ? static_cast<float>(0.5 * src->m_width) : 0.0f,
                                         src ? static_cast<float>(0.5 * src->m_height) : 0.0f, key, fill, fillColour);
}

BOOL CZelDib::CopyFromDibStretchAlpha(const CZelDib* src, float angle, float zoom, int adjust, int fill,
                                      DWORD fillColour, CZelPoint<double>* const corners)
{
    if (adjust && !AdjustSize(src, angle, zoom, corners))
        return FALSE;
    return CopyFromDibStretchAlpha(src, angle, zoom, static_cast<float>(0.5 * m_width),
                                   static_cast<float>(0.5 * m_height),
                                   src ? static_cast<float>(0.5 * src->m_width) : 0.0f,
                                   src ? static_cast<float>(0.5 * src->m_height) : 0.0f, fill, fillColour);
}

BOOL CZelDib::AdjustSize(const CZelDib* src, float angle, float zoom, CZelPoint<double>* const corners)
{
    if (!src || src->m_width == 0 || src->m_height == 0)
        return FALSE;
    const double hw = 0.5 * src->m_width, hh = 0.5 * src->m_height;
    const double c = std::cos(-static_cast<double>(angle)) * zoom;
    const double s = std::sin(-static_cast<double>(angle)) * zoom;
    const double xs[4] = {-hw, hw, -hw, hw}, ys[4] = {-hh, -hh, hh, hh};
    double X[4], Y[4];
    for (int i = 0; i < 4; ++i) {
        X[i] = c * xs[i] + s * ys[i];
        Y[i] = -s * xs[i] + c * ys[i];
    }
    const double W = *std::max_element(X, X + 4) - *std::min_element(X, X + 4);
    const double H = *std::max_element(Y, Y + 4) - *std::min_element(Y, Y + 4);
    // Sizes beyond int or NaN (a zero or infinite zoom) can't be an image.
    if (!(W >= 0.5 && H >= 0.5 && W < 2147483647.0 && H < 2147483647.0))
        return FALSE;
    if (!Resize(static_cast<int>(std::nearbyint(W)), static_cast<int>(std::nearbyint(H))))
        return FALSE;
    if (corners)
        for (int i = 0; i < 4; ++i) {
            corners[i].x = std::clamp(X[i] + W / 2, 0.0, static_cast<double>(m_width));
            corners[i].y = std::clamp(Y[i] + H / 2, 0.0, static_cast<double>(m_height));
        }
    return TRUE;
}

// --- Device ---------------------------------------------------------------------

BOOL CZelDib::CopyToDC(CDC* dc, int x, int y) const
{
    if (!dc || x < 0 || y < 0 || !m_bits)
        return FALSE;
    return dc->SetDIBitsToDevice(x, y, m_width, m_height, 0, 0, 0, m_height, m_bits, &m_info, DIB_RGB_COLORS) != 0;
}

BOOL CZelDib::CopyToDC(CDC* dc, int x, int y, int w, int h) const
{
    if (!dc || x < 0 || y < 0 || !m_bits || w < 1 || h < 1)
        return FALSE;
    return dc->SetDIBitsToDevice(x, y, w, h, 0, 0, 0, m_height, m_bits, &m_info, DIB_RGB_COLORS) != 0;
}

BOOL CZelDib::CopyToDC(CDC* dc, const CRect& r) const
{
    return CopyToDC(dc, r.left, r.top, r.Width(), r.Height());
}

BOOL CZelDib::CopyToDCStretch(CDC* dc, int x, int y, int w, int h, DWORD rop) const
{
    if (!dc || !m_bits)
        return FALSE;
    return dc->StretchDIBits(x, y, w, h, 0, 0, m_width, m_height, m_bits, &m_info, DIB_RGB_COLORS, rop) != 0;
}

BOOL CZelDib::CopyToDCStretch(CDC* dc, const CRect& r, DWORD rop) const
{
    return CopyToDCStretch(dc, r.left, r.top, r.Width(), r.Height(), rop);
}

BOOL CZelDib::CopyToDCStretchRect(CDC* dc, int dx, int dy, int dw, int dh, int sx, int sy, int sw, int sh,
                                  DWORD rop) const
{
    if (!dc || !m_bits || dw < 1 || dh < 1 || !ClipXYWH(sx, sy, sw, sh))
        return FALSE;
    // A bottom-up DIB counts its source rows from the bottom.
    if (!IsTopDown())
        sy = m_height - sy - sh;
    return dc->StretchDIBits(dx, dy, dw, dh, sx, sy, sw, sh, m_bits, &m_info, DIB_RGB_COLORS, rop) != 0;
}

BOOL CZelDib::CopyToDCStretchRect(CDC* dc, const CRect& d, const CRect& s, DWORD rop) const
{
    return CopyToDCStretchRect(dc, d.left, d.top, d.Width(), d.Height(), s.left, s.top, s.Width(), s.Height(), rop);
}

BOOL CZelDib::CopyToBitmap(CDC* dc, CBitmap* bitmap) const
{
    BITMAP bm;
    if (!dc || !bitmap || !m_bits || !bitmap->GetBitmap(&bm) || !ChkDstSize(bm.bmWidth, bm.bmHeight, 1))
        return FALSE;
    return SetDIBits(dc, bitmap->GetSafeHandle(), 0, m_height, m_bits, &m_info, DIB_RGB_COLORS) != 0;
}

BOOL CZelDib::CopyFromBitmap(CDC* dc, CBitmap* bitmap)
{
    BITMAP bm;
    if (!dc || !bitmap || !bitmap->GetBitmap(&bm) || !ChkDstSize(bm.bmWidth, bm.bmHeight, 1))
        return FALSE;
    return GetDIBits(dc, bitmap->GetSafeHandle(), 0, m_height, m_bits, &m_info, DIB_RGB_COLORS) != 0;
}

BOOL CZelDib::CopyFromDC(CDC* dc, int x, int y, int w, int h)
{
    if (!dc || !ChkDstSize(w, h, 1))
        return FALSE;
    std::unique_ptr<CDC> memory = dc->CreateCompatibleDC();
    CBitmap bitmap;
    if (!memory || !bitmap.CreateCompatibleBitmap(dc, w, h))
        return FALSE;
    HBITMAP old = memory->SelectObject(bitmap.GetSafeHandle());
    memory->PatBlt(0, 0, w, h, BLACKNESS);
    const BOOL copied = memory->BitBlt(0, 0, w, h, dc, x, y, SRCCOPY);
    memory->SelectObject(old);
    memory.reset();
    return copied && GetDIBits(dc, bitmap.GetSafeHandle(), 0, m_height, m_bits, &m_info, DIB_RGB_COLORS) != 0;
}

BOOL CZelDib::Invert(CDC* dc)
{
    if (!dc || !m_bits)
        return FALSE;
    CBitmap bitmap;
    if (!bitmap.CreateCompatibleBitmap(dc, m_width, m_height) || !CopyToBitmap(dc, &bitmap))
        return FALSE;
    return Create(dc, &bitmap, !IsTopDown());
}
