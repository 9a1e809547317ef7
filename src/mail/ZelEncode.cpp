#include <Zel260/mail/ZelEncode.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Two output characters per 12 bits of input: one table look-up per half group
// keeps the encoder well ahead of a character-at-a-time loop.
struct PairTable {
    std::array<std::uint16_t, 4096> v{};
    constexpr PairTable()
    {
        for (unsigned i = 0; i < 4096; ++i) {
            // Stored so that a memcpy puts the first character first in memory.
            unsigned a = static_cast<unsigned char>(kAlphabet[i >> 6]);
            unsigned b = static_cast<unsigned char>(kAlphabet[i & 63]);
            v[i] = static_cast<std::uint16_t>(std::endian::native == std::endian::little ? a | (b << 8) : (a << 8) | b);
        }
    }
};
constexpr PairTable kPairs;

constexpr unsigned char kSkip = 0x80;  // outside the alphabet: ignored
constexpr unsigned char kReset = 0x81; // line break: a new group starts
constexpr unsigned char kStop = 0x82;  // "=" or the terminator

struct DecodeTable {
    std::array<unsigned char, 256> v{};
    constexpr DecodeTable()
    {
        for (auto& x : v)
            x = kSkip;
        for (unsigned i = 0; i < 64; ++i)
            v[static_cast<unsigned char>(kAlphabet[i])] = static_cast<unsigned char>(i);
        v['\r'] = kReset;
        v['\n'] = kReset;
        v['='] = kStop;
        v[0] = kStop;
    }
};
constexpr DecodeTable kDecode;

inline void putGroup(char* out, const unsigned char* in)
{
    std::uint32_t g = (std::uint32_t(in[0]) << 16) | (std::uint32_t(in[1]) << 8) | in[2];
    std::uint16_t hi = kPairs.v[g >> 12];
    std::uint16_t lo = kPairs.v[g & 0xFFF];
    std::memcpy(out, &hi, 2);
    std::memcpy(out + 2, &lo, 2);
}

// Encodes whole groups of `in` without breaks; returns the characters written.
// The tail of 1 or 2 bytes is encoded as if followed by zero bytes, giving 2 or 3
// characters.
size_t encodeRun(const unsigned char* in, size_t size, char* out)
{
    const size_t whole = size / 3;
    for (size_t i = 0; i < whole; ++i)
        putGroup(out + 4 * i, in + 3 * i);
    size_t n = whole * 4;
    const size_t rest = size - whole * 3;
    if (rest) {
        unsigned char tail[3] = {in[whole * 3], rest > 1 ? in[whole * 3 + 1] : static_cast<unsigned char>(0), 0};
        char four[4];
        putGroup(four, tail);
        std::memcpy(out + n, four, rest + 1);
        n += rest + 1;
    }
    return n;
}

} // namespace

CString ZelEncodeIso8859(const char* text)
{
    if (!text)
        return CString();
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(std::strlen(text));
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(text); *p; ++p) {
        if (*p > 0x99 || *p == '=') {
            out += '=';
            out += kHex[*p >> 4];
            out += kHex[*p & 15];
        } else {
            out += static_cast<char>(*p);
        }
    }
    return CString(std::move(out));
}

CString ZelEncodeBase64(unsigned char* data, unsigned long size, unsigned int lineLength)
{
    if (!data)
        return CString();
    const size_t codeChars = (size / 3) * 4 + (size % 3 ? size % 3 + 1 : 0);
    const size_t breaks = lineLength ? codeChars / lineLength : 0;
    const size_t written = codeChars + 2 * breaks;
    const size_t padding = (4 - written % 4) % 4;

    std::string out;
    out.resize(written + padding);
    char* o = out.data();
    if (!lineLength) {
        o += encodeRun(data, size, o);
    } else if (lineLength % 4 == 0) {
        // Lines hold whole groups: encode line by line straight into place.
        const size_t lineBytes = lineLength / 4 * 3;
        size_t left = size;
        const unsigned char* in = data;
        while (left >= lineBytes) {
            o += encodeRun(in, lineBytes, o);
            *o++ = '\r';
            *o++ = '\n';
            in += lineBytes;
            left -= lineBytes;
        }
        o += encodeRun(in, left, o);
    } else {
        // Lines cut groups: encode in one run, then spread it over the lines from
        // the back, so that each piece moves only once and never over unread code.
        encodeRun(data, size, o);
        const size_t lastLen = codeChars - breaks * lineLength;
        size_t src = codeChars - lastLen;
        size_t dst = written - lastLen;
        std::memmove(o + dst, o + src, lastLen);
        for (size_t line = breaks; line > 0; --line) {
            dst -= 2;
            o[dst] = '\r';
            o[dst + 1] = '\n';
            src -= lineLength;
            dst -= lineLength;
            std::memmove(o + dst, o + src, lineLength);
        }
        o += written;
    }
    std::memset(o, '=', padding);
    return CString(std::move(out));
}

unsigned long ZelDecodeBase64(unsigned char* text)
{
    if (!text)
        return 0;
    const size_t len = std::strlen(reinterpret_cast<const char*>(text));
    const unsigned char* in = text;
    const unsigned char* const end = text + len;
    unsigned char* out = text;
    unsigned state = 0;
    unsigned carry = 0;
    while (in < end) {
        if (state == 0) {
            // Whole groups of alphabet characters: the common case of a long text.
            while (end - in >= 4) {
                unsigned a = kDecode.v[in[0]], b = kDecode.v[in[1]], c = kDecode.v[in[2]], d = kDecode.v[in[3]];
                if ((a | b | c | d) & 0x80)
                    break;
                std::uint32_t g = (a << 18) | (b << 12) | (c << 6) | d;
                // Writing behind the read position: three bytes out for four in.
                out[0] = static_cast<unsigned char>(g >> 16);
                out[1] = static_cast<unsigned char>(g >> 8);
                out[2] = static_cast<unsigned char>(g);
                out += 3;
                in += 4;
            }
            if (in >= end)
                break;
        }
        unsigned v = kDecode.v[*in++];
        if (v == kStop)
            break;
        if (v == kSkip)
            continue;
        if (v == kReset) {
            state = 0;
            carry = 0;
            continue;
        }
        switch (state) {
        case 0:
            carry = v;
            state = 1;
            break;
        case 1:
            *out++ = static_cast<unsigned char>((carry << 2) | (v >> 4));
            carry = v & 0x0F;
            state = 2;
            break;
        case 2:
            *out++ = static_cast<unsigned char>((carry << 4) | (v >> 2));
            carry = v & 0x03;
            state = 3;
            break;
        default:
            *out++ = static_cast<unsigned char>((carry << 6) | v);
            carry = 0;
            state = 0;
            break;
        }
    }
    *out = 0;
    return static_cast<unsigned long>(out - text);
}
