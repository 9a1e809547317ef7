#include <Zel260/platform/CString.h>
#include <Zel260/platform/ResourceModule.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <strings.h>

namespace {

const char* nz(const char* s) { return s ? s : ""; }

bool isWhite(unsigned char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

int clampCount(int count, int available) { return std::clamp(count, 0, std::max(available, 0)); }

} // namespace

CString::CString(const char* text) : m_s(nz(text)) {}

CString::CString(const char* text, int length)
{
    if (text && length > 0)
        m_s.assign(text, static_cast<size_t>(length));
}

CString::CString(char ch, int repeat)
{
    if (repeat > 0)
        m_s.assign(static_cast<size_t>(repeat), ch);
}

CString& CString::operator=(const char* text)
{
    m_s = nz(text);
    return *this;
}

CString& CString::operator=(char ch)
{
    m_s.assign(1, ch);
    return *this;
}

char CString::GetAt(int index) const
{
    return (index >= 0 && index < GetLength()) ? m_s[static_cast<size_t>(index)] : '\0';
}

void CString::SetAt(int index, char ch)
{
    if (index >= 0 && index < GetLength())
        m_s[static_cast<size_t>(index)] = ch;
}

CString& CString::operator+=(const char* text)
{
    m_s += nz(text);
    return *this;
}

CString operator+(const CString& a, const char* b) { return CString(a.m_s + nz(b)); }
CString operator+(const char* a, const CString& b) { return CString(nz(a) + b.m_s); }

int CString::Compare(const char* text) const { return std::strcmp(m_s.c_str(), nz(text)); }
int CString::CompareNoCase(const char* text) const { return ::strcasecmp(m_s.c_str(), nz(text)); }

int CString::Find(char ch, int start) const
{
    if (start < 0 || start >= GetLength())
        return -1;
    auto p = m_s.find(ch, static_cast<size_t>(start));
    return p == std::string::npos ? -1 : static_cast<int>(p);
}

int CString::Find(const char* text, int start) const
{
    if (start < 0 || start > GetLength())
        return -1;
    auto p = m_s.find(nz(text), static_cast<size_t>(start));
    return p == std::string::npos ? -1 : static_cast<int>(p);
}

int CString::ReverseFind(char ch) const
{
    auto p = m_s.rfind(ch);
    return p == std::string::npos ? -1 : static_cast<int>(p);
}

int CString::FindOneOf(const char* chars) const
{
    auto p = m_s.find_first_of(nz(chars));
    return p == std::string::npos ? -1 : static_cast<int>(p);
}

CString CString::Left(int count) const { return CString(m_s.substr(0, static_cast<size_t>(clampCount(count, GetLength())))); }

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const
{
    first = clampCount(first, GetLength());
    count = clampCount(count, GetLength() - first);
    return CString(m_s.substr(static_cast<size_t>(first), static_cast<size_t>(count)));
}

CString CString::Right(int count) const
{
    count = clampCount(count, GetLength());
    return CString(m_s.substr(m_s.size() - static_cast<size_t>(count)));
}

CString CString::SpanIncluding(const char* chars) const
{
    auto p = m_s.find_first_not_of(nz(chars));
    return p == std::string::npos ? *this : Left(static_cast<int>(p));
}

CString CString::SpanExcluding(const char* chars) const
{
    auto p = m_s.find_first_of(nz(chars));
    return p == std::string::npos ? *this : Left(static_cast<int>(p));
}

CString CString::Tokenize(const char* delims, int& start) const
{
    if (start < 0 || start >= GetLength()) {
        start = -1;
        return CString();
    }
    const char* d = nz(delims);
    auto from = m_s.find_first_not_of(d, static_cast<size_t>(start));
    if (from == std::string::npos) {
        start = -1;
        return CString();
    }
    auto to = m_s.find_first_of(d, from);
    if (to == std::string::npos)
        to = m_s.size();
    start = static_cast<int>(to) + 1;
    return CString(m_s.substr(from, to - from));
}

CString& CString::MakeUpper()
{
    for (auto& c : m_s)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return *this;
}

CString& CString::MakeLower()
{
    for (auto& c : m_s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return *this;
}

CString& CString::MakeReverse()
{
    std::reverse(m_s.begin(), m_s.end());
    return *this;
}

CString& CString::TrimLeft()
{
    size_t i = 0;
    while (i < m_s.size() && isWhite(static_cast<unsigned char>(m_s[i])))
        ++i;
    m_s.erase(0, i);
    return *this;
}

CString& CString::TrimRight()
{
    size_t n = m_s.size();
    while (n > 0 && isWhite(static_cast<unsigned char>(m_s[n - 1])))
        --n;
    m_s.resize(n);
    return *this;
}

CString& CString::TrimLeft(char ch)
{
    const char set[2] = {ch, '\0'};
    return ch ? TrimLeft(set) : *this;
}

CString& CString::TrimRight(char ch)
{
    const char set[2] = {ch, '\0'};
    return ch ? TrimRight(set) : *this;
}

CString& CString::TrimLeft(const char* chars)
{
    auto p = m_s.find_first_not_of(nz(chars));
    m_s.erase(0, p == std::string::npos ? m_s.size() : p);
    return *this;
}

CString& CString::TrimRight(const char* chars)
{
    auto p = m_s.find_last_not_of(nz(chars));
    m_s.resize(p == std::string::npos ? 0 : p + 1);
    return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(char ch) { return TrimRight(ch).TrimLeft(ch); }
CString& CString::Trim(const char* chars) { return TrimRight(chars).TrimLeft(chars); }

int CString::Replace(char oldCh, char newCh)
{
    int n = 0;
    for (auto& c : m_s)
        if (c == oldCh) {
            c = newCh;
            ++n;
        }
    return n;
}

int CString::Replace(const char* oldText, const char* newText)
{
    const std::string from = nz(oldText);
    if (from.empty())
        return 0;
    const std::string to = nz(newText);
    int n = 0;
    std::string out;
    size_t pos = 0;
    for (size_t hit; (hit = m_s.find(from, pos)) != std::string::npos; pos = hit + from.size(), ++n)
        out.append(m_s, pos, hit - pos).append(to);
    if (n) {
        out.append(m_s, pos, std::string::npos);
        m_s.swap(out);
    }
    return n;
}

int CString::Remove(char ch)
{
    auto before = m_s.size();
    m_s.erase(std::remove(m_s.begin(), m_s.end(), ch), m_s.end());
    return static_cast<int>(before - m_s.size());
}

int CString::Insert(int index, char ch)
{
    m_s.insert(static_cast<size_t>(clampCount(index, GetLength())), 1, ch);
    return GetLength();
}

int CString::Insert(int index, const char* text)
{
    m_s.insert(static_cast<size_t>(clampCount(index, GetLength())), nz(text));
    return GetLength();
}

int CString::Delete(int index, int count)
{
    if (index < 0)
        index = 0;
    if (index < GetLength() && count > 0)
        m_s.erase(static_cast<size_t>(index), static_cast<size_t>(clampCount(count, GetLength() - index)));
    return GetLength();
}

void CString::FormatV(const char* format, va_list args)
{
    m_s.clear();
    AppendFormatV(format, args);
}

void CString::AppendFormatV(const char* format, va_list args)
{
    if (!format)
        return;
    char small[256];
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(small, sizeof small, format, copy);
    va_end(copy);
    if (n < 0)
        return;
    if (static_cast<size_t>(n) < sizeof small) {
        m_s.append(small, static_cast<size_t>(n));
        return;
    }
    const size_t old = m_s.size();
    m_s.resize(old + static_cast<size_t>(n) + 1);
    std::vsnprintf(m_s.data() + old, static_cast<size_t>(n) + 1, format, args);
    m_s.resize(old + static_cast<size_t>(n));
}

void CString::Format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatV(format, args);
    va_end(args);
}

void CString::AppendFormat(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    AppendFormatV(format, args);
    va_end(args);
}

char* CString::GetBuffer(int minLength)
{
    if (minLength > GetLength())
        m_s.resize(static_cast<size_t>(minLength));
    m_bufferOut = true;
    return m_s.data();
}

char* CString::GetBufferSetLength(int length)
{
    m_s.resize(static_cast<size_t>(std::max(length, 0)));
    m_bufferOut = true;
    return m_s.data();
}

void CString::ReleaseBuffer(int newLength)
{
    if (newLength < 0)
        newLength = static_cast<int>(std::strlen(m_s.c_str()));
    m_s.resize(static_cast<size_t>(std::min(newLength, GetLength())));
    m_bufferOut = false;
}

BOOL CString::LoadString(UINT id)
{
    const char* text = ZelFindResourceString(AfxGetResourceHandle(), id);
    if (!text)
        return FALSE;
    m_s = text;
    return TRUE;
}
