// Narrow (UTF-8) text with the operations of MFC's CStringA. Positions and lengths
// are in bytes, as they were in the active code page. A null `const char*` is read
// as the empty text everywhere.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <cstdarg>
#include <string>
#include <string_view>

class CString {
public:
    CString() = default;
    CString(const char* text);                    // null gives the empty text
    CString(const char* text, int length);        // first `length` bytes (clamped at 0)
    CString(char ch, int repeat = 1);
    CString(std::string_view text) : m_s(text) {}
    CString(const std::string& text) : m_s(text) {}
    CString(std::string&& text) : m_s(std::move(text)) {}
    CString(const CString&) = default;
    CString(CString&&) noexcept = default;
    CString& operator=(const CString&) = default;
    CString& operator=(CString&&) noexcept = default;
    CString& operator=(const char* text);
    CString& operator=(char ch);

    int GetLength() const { return static_cast<int>(m_s.size()); }
    bool IsEmpty() const { return m_s.empty(); }
    void Empty() { m_s.clear(); }
    const char* GetString() const { return m_s.c_str(); }
    operator const char*() const { return m_s.c_str(); }
    const std::string& str() const { return m_s; }

    // Out-of-range indices read as '\0' and writes to them are ignored.
    char GetAt(int index) const;
    void SetAt(int index, char ch);
    char operator[](int index) const { return GetAt(index); }

    CString& operator+=(const CString& text) { m_s += text.m_s; return *this; }
    CString& operator+=(const char* text);
    CString& operator+=(char ch) { m_s += ch; return *this; }

    // Ordinal (byte) comparison: <0, 0, >0 like strcmp.
    int Compare(const char* text) const;
    int CompareNoCase(const char* text) const;

    // -1 when not found; `start` past the end finds nothing.
    int Find(char ch, int start = 0) const;
    int Find(const char* text, int start = 0) const;
    int ReverseFind(char ch) const;
    int FindOneOf(const char* chars) const;

    // Counts are clamped to the text, as MFC does.
    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;
    CString SpanIncluding(const char* chars) const;
    CString SpanExcluding(const char* chars) const;
    // Next token after `start` separated by any of `delims`; `start` becomes -1 at the end.
    CString Tokenize(const char* delims, int& start) const;

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();
    CString& Trim();
    CString& Trim(char ch);
    CString& Trim(const char* chars);
    CString& TrimLeft();
    CString& TrimLeft(char ch);
    CString& TrimLeft(const char* chars);
    CString& TrimRight();
    CString& TrimRight(char ch);
    CString& TrimRight(const char* chars);

    // Each returns the number of replacements or removals made.
    int Replace(char oldCh, char newCh);
    int Replace(const char* oldText, const char* newText);
    int Remove(char ch);
    // Each returns the new length; an index past the end appends.
    int Insert(int index, char ch);
    int Insert(int index, const char* text);
    int Delete(int index, int count = 1);

    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void AppendFormat(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char* format, va_list args);
    void AppendFormatV(const char* format, va_list args);

    // Direct buffer access: the buffer holds at least `minLength` bytes plus a
    // terminator. ReleaseBuffer(-1) takes the length up to the first '\0'.
    char* GetBuffer(int minLength = 0);
    char* GetBufferSetLength(int length);
    void ReleaseBuffer(int newLength = -1);

    // Loads text `id` from the current resource module; false when it has none.
    BOOL LoadString(UINT id);

    friend CString operator+(const CString& a, const CString& b) { return CString(a.m_s + b.m_s); }
    friend CString operator+(const CString& a, const char* b);
    friend CString operator+(const char* a, const CString& b);
    friend CString operator+(const CString& a, char b) { return CString(a.m_s + b); }
    friend CString operator+(char a, const CString& b) { return CString(std::string(1, a) + b.m_s); }

    friend bool operator==(const CString& a, const CString& b) { return a.m_s == b.m_s; }
    friend bool operator==(const CString& a, const char* b) { return a.Compare(b) == 0; }
    friend bool operator==(const char* a, const CString& b) { return b.Compare(a) == 0; }
    friend bool operator!=(const CString& a, const CString& b) { return !(a == b); }
    friend bool operator!=(const CString& a, const char* b) { return !(a == b); }
    friend bool operator!=(const char* a, const CString& b) { return !(a == b); }
    friend bool operator<(const CString& a, const CString& b) { return a.m_s < b.m_s; }
    friend bool operator<(const CString& a, const char* b) { return a.Compare(b) < 0; }
    friend bool operator<(const char* a, const CString& b) { return b.Compare(a) > 0; }
    friend bool operator>(const CString& a, const CString& b) { return b < a; }
    friend bool operator>(const CString& a, const char* b) { return a.Compare(b) > 0; }
    friend bool operator>(const char* a, const CString& b) { return b.Compare(a) < 0; }
    friend bool operator<=(const CString& a, const CString& b) { return !(b < a); }
    friend bool operator<=(const CString& a, const char* b) { return a.Compare(b) <= 0; }
    friend bool operator<=(const char* a, const CString& b) { return b.Compare(a) >= 0; }
    friend bool operator>=(const CString& a, const CString& b) { return !(a < b); }
    friend bool operator>=(const CString& a, const char* b) { return a.Compare(b) >= 0; }
    friend bool operator>=(const char* a, const CString& b) { return b.Compare(a) <= 0; }

private:
    std::string m_s;
    bool m_bufferOut = false;
};

using CStringA = CString;
