// MFC's CPoint, CSize and CRect over the Win32 records, with the arithmetic the
// library uses. Coordinates are 32-bit LONG; a CRect may be unnormalised on purpose.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <algorithm>
#include <cstdint>

class CSize : public SIZE {
public:
    CSize() : SIZE{0, 0} {}
    CSize(int x, int y) : SIZE{x, y} {}
    CSize(SIZE s) : SIZE(s) {}
    bool operator==(const SIZE& o) const { return cx == o.cx && cy == o.cy; }
    bool operator!=(const SIZE& o) const { return !(*this == o); }
    CSize operator+(SIZE o) const { return CSize(cx + o.cx, cy + o.cy); }
    CSize operator-(SIZE o) const { return CSize(cx - o.cx, cy - o.cy); }
};

class CPoint : public POINT {
public:
    CPoint() : POINT{0, 0} {}
    CPoint(int x, int y) : POINT{x, y} {}
    CPoint(POINT p) : POINT(p) {}
    void Offset(int dx, int dy) { x += dx; y += dy; }
    bool operator==(const POINT& o) const { return x == o.x && y == o.y; }
    bool operator!=(const POINT& o) const { return !(*this == o); }
    CPoint operator+(SIZE s) const { return CPoint(x + s.cx, y + s.cy); }
    CPoint operator-(SIZE s) const { return CPoint(x - s.cx, y - s.cy); }
    CSize operator-(POINT p) const { return CSize(x - p.x, y - p.y); }
    CPoint& operator+=(SIZE s) { x += s.cx; y += s.cy; return *this; }
    CPoint& operator-=(SIZE s) { x -= s.cx; y -= s.cy; return *this; }
};

class CRect : public RECT {
public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& r) : RECT(r) {}
    CRect(POINT p, SIZE s) : RECT{p.x, p.y, p.x + s.cx, p.y + s.cy} {}

    // Wrap modulo 2^32 like Win32 for rectangles whose extent passes int.
    int Width() const { return static_cast<int>(static_cast<std::int64_t>(right) - left); }
    int Height() const { return static_cast<int>(static_cast<std::int64_t>(bottom) - top); }
    CSize Size() const { return CSize(Width(), Height()); }
    CPoint TopLeft() const { return CPoint(left, top); }
    CPoint BottomRight() const { return CPoint(right, bottom); }
    CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }
    // Empty when width or height is not positive, as Win32's IsRectEmpty.
    bool IsRectEmpty() const { return right <= left || bottom <= top; }
    bool IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    // Right and bottom edges are outside, as in Win32.
    bool PtInRect(POINT p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
    void SetRect(int l, int t, int r, int b) { left = l; top = t; right = r; bottom = b; }
    void SetRectEmpty() { SetRect(0, 0, 0, 0); }
    void OffsetRect(int dx, int dy) { left += dx; right += dx; top += dy; bottom += dy; }
    void OffsetRect(POINT p) { OffsetRect(p.x, p.y); }
    void InflateRect(int dx, int dy) { left -= dx; right += dx; top -= dy; bottom += dy; }
    void DeflateRect(int dx, int dy) { InflateRect(-dx, -dy); }
    void NormalizeRect()
    {
        if (left > right) std::swap(left, right);
        if (top > bottom) std::swap(top, bottom);
    }
    // Intersection; an empty result is set to all zeros and returns false, as Win32.
    bool IntersectRect(const RECT& a, const RECT& b)
    {
        SetRect(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom));
        if (IsRectEmpty()) {
            SetRectEmpty();
            return false;
        }
        return true;
    }
    // Union of the non-empty ones; both empty gives an empty rectangle.
    bool UnionRect(const RECT& a, const RECT& b)
    {
        CRect ra(a), rb(b);
        if (ra.IsRectEmpty()) { *this = rb.IsRectEmpty() ? CRect() : rb; return !IsRectEmpty(); }
        if (rb.IsRectEmpty()) { *this = ra; return true; }
        SetRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom));
        return true;
    }
    bool operator==(const RECT& o) const { return left == o.left && top == o.top && right == o.right && bottom == o.bottom; }
    bool operator!=(const RECT& o) const { return !(*this == o); }
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }
};
