#pragma once

#include <cmath>

// A displacement in the plane. Plain value type; every operation is exact IEEE arithmetic.
class DVector {
  public:
    double x = 0.0;
    double y = 0.0;

    constexpr DVector() = default;
    constexpr DVector(double xValue, double yValue) : x(xValue), y(yValue) {}

    constexpr DVector operator+(DVector const& v) const { return {x + v.x, y + v.y}; }
    constexpr DVector operator-(DVector const& v) const { return {x - v.x, y - v.y}; }
    constexpr DVector operator-() const { return {-x, -y}; }
    constexpr DVector operator*(double s) const { return {x * s, y * s}; }
    constexpr DVector operator/(double s) const { return {x / s, y / s}; }
    DVector& operator+=(DVector const& v) {
        x += v.x;
        y += v.y;
        return *this;
    }
    DVector& operator-=(DVector const& v) {
        x -= v.x;
        y -= v.y;
        return *this;
    }
    DVector& operator*=(double s) {
        x *= s;
        y *= s;
        return *this;
    }
    constexpr bool operator==(DVector const& v) const { return x == v.x && y == v.y; }
    constexpr bool operator!=(DVector const& v) const { return !(*this == v); }

    // hypot avoids the overflow and underflow of the naive square root for extreme coordinates.
    double length() const { return std::hypot(x, y); }
    constexpr double squaredLength() const { return x * x + y * y; }
    // The unit vector in the same direction; a zero (or non-finite length) vector stays as it is.
    DVector normalized() const {
        double const len = length();
        if (!(len > 0.0) || !std::isfinite(len)) {
            return *this;
        }
        return {x / len, y / len};
    }
    constexpr double dot(DVector const& v) const { return x * v.x + y * v.y; }
    constexpr double cross(DVector const& v) const { return x * v.y - y * v.x; }
    // Turned by +90 degrees.
    constexpr DVector ortho() const { return {-y, x}; }
};

constexpr DVector operator*(double s, DVector const& v) {
    return v * s;
}
