#pragma once

#include "simplepath/interfaces/DVector.h"

// A point in the plane. Equality is exact; ordering is lexicographic (x first, then y).
class DPoint {
  public:
    double x = 0.0;
    double y = 0.0;

    constexpr DPoint() = default;
    constexpr DPoint(double xValue, double yValue) : x(xValue), y(yValue) {}

    constexpr bool operator==(DPoint const& p) const { return x == p.x && y == p.y; }
    constexpr bool operator!=(DPoint const& p) const { return !(*this == p); }
    constexpr bool operator<(DPoint const& p) const { return x < p.x || (x == p.x && y < p.y); }
    constexpr bool operator>(DPoint const& p) const { return p < *this; }

    constexpr DPoint operator+(DVector const& v) const { return {x + v.x, y + v.y}; }
    constexpr DPoint operator-(DVector const& v) const { return {x - v.x, y - v.y}; }
    constexpr DVector operator-(DPoint const& p) const { return {x - p.x, y - p.y}; }
    DPoint& operator+=(DVector const& v) {
        x += v.x;
        y += v.y;
        return *this;
    }
    DPoint& operator-=(DVector const& v) {
        x -= v.x;
        y -= v.y;
        return *this;
    }
};

inline double distance(DPoint const& a, DPoint const& b) {
    return (b - a).length();
}
constexpr double squaredDistance(DPoint const& a, DPoint const& b) {
    return (b - a).squaredLength();
}
