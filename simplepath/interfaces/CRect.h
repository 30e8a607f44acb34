#pragma once

#include <cstdint>

// The application framework's point and rectangle records (32-bit integer coordinates).
struct tagPOINT {
    std::int32_t x = 0;
    std::int32_t y = 0;
};
using POINT = tagPOINT;

struct tagRECT {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};
using RECT = tagRECT;

class CRect : public tagRECT {
  public:
    CRect() = default;
    CRect(std::int32_t l, std::int32_t t, std::int32_t r, std::int32_t b) : tagRECT{l, t, r, b} {}
    explicit CRect(tagRECT const& r) : tagRECT(r) {}

    // Computed in 64 bits so that extreme rectangles do not overflow before the narrowing.
    std::int32_t Width() const { return static_cast<std::int32_t>(std::int64_t(right) - left); }
    std::int32_t Height() const { return static_cast<std::int32_t>(std::int64_t(bottom) - top); }
    bool IsRectEmpty() const { return Width() <= 0 || Height() <= 0; }
    bool operator==(CRect const& r) const {
        return left == r.left && top == r.top && right == r.right && bottom == r.bottom;
    }
    bool operator!=(CRect const& r) const { return !(*this == r); }
};
