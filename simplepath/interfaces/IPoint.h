#pragma once

// An integer point, as the host's device coordinates use.
class IPoint {
  public:
    int x = 0;
    int y = 0;

    constexpr IPoint() = default;
    constexpr IPoint(int xValue, int yValue) : x(xValue), y(yValue) {}
    constexpr bool operator==(IPoint const& p) const { return x == p.x && y == p.y; }
    constexpr bool operator!=(IPoint const& p) const { return !(*this == p); }
};
