// A point in plain coordinates (image, logical or map units).
#pragma once

template <class T> class CZelPoint {
public:
    CZelPoint() = default;
    CZelPoint(T x_, T y_) : x(x_), y(y_) {}
    bool operator==(const CZelPoint& o) const { return x == o.x && y == o.y; }
    bool operator!=(const CZelPoint& o) const { return !(*this == o); }

    T x{};
    T y{};
};
