#include "simplepath/legacy/IsPointInPolygon.h"

#include <algorithm>
#include <cstdint>

namespace {

struct U128 {
    std::uint64_t hi;
    std::uint64_t lo;
};

// Full 128-bit product of two 64-bit magnitudes, by 32-bit limbs.
U128 multiply(std::uint64_t a, std::uint64_t b) {
    std::uint64_t const mask = 0xffffffffu;
    std::uint64_t const p00 = (a & mask) * (b & mask);
    std::uint64_t const p01 = (a & mask) * (b >> 32);
    std::uint64_t const p10 = (a >> 32) * (b & mask);
    std::uint64_t const p11 = (a >> 32) * (b >> 32);
    std::uint64_t const mid = (p00 >> 32) + (p01 & mask) + (p10 & mask);
    return {p11 + (p01 >> 32) + (p10 >> 32) + (mid >> 32), (p00 & mask) | (mid << 32)};
}

int sign(std::int64_t v) {
    return (v > 0) - (v < 0);
}

std::uint64_t magnitude(std::int64_t v) {
    return v < 0 ? std::uint64_t(0) - static_cast<std::uint64_t>(v) : static_cast<std::uint64_t>(v);
}

// The exact sign of a*b - c*d. Differences of 32-bit coordinates have at most 33 bits, so their
// products need up to 66: too many for 64-bit integers or for doubles.
int compareProducts(std::int64_t a, std::int64_t b, std::int64_t c, std::int64_t d) {
    std::uint64_t const small = std::uint64_t(1) << 31;
    if (magnitude(a) < small && magnitude(b) < small && magnitude(c) < small && magnitude(d) < small) {
        return sign(a * b - c * d); // each product below 2^62: exact in 64 bits
    }
    int const left = sign(a) * sign(b);
    int const right = sign(c) * sign(d);
    if (left != right) {
        return left > right ? 1 : -1;
    }
    if (left == 0) {
        return 0;
    }
    U128 const l = multiply(magnitude(a), magnitude(b));
    U128 const r = multiply(magnitude(c), magnitude(d));
    int const bigger = l.hi != r.hi ? (l.hi > r.hi ? 1 : -1) : (l.lo != r.lo ? (l.lo > r.lo ? 1 : -1) : 0);
    return left > 0 ? bigger : -bigger;
}

} // namespace

int IsPointInPolygon(tagPOINT const* points, int count, tagPOINT const& point, tagRECT const* bounds) {
    if (points == nullptr || count < 3) {
        return 0;
    }
    if (bounds != nullptr && (point.x < bounds->left || point.x > bounds->right || point.y < bounds->top ||
                              point.y > bounds->bottom)) {
        return 0;
    }
    // Casts a ray from the point towards +x and counts the edges it crosses. An edge counts when its two
    // ends lie on different sides of the ray's line (one end strictly above, the other on or below), so
    // a vertex on the ray is counted once, by one of its two edges.
    bool inside = false;
    for (int i = 0, j = count - 1; i < count; j = i++) {
        tagPOINT const& a = points[j];
        tagPOINT const& b = points[i];
        std::int64_t const abx = std::int64_t(b.x) - a.x;
        std::int64_t const aby = std::int64_t(b.y) - a.y;
        std::int64_t const apx = std::int64_t(point.x) - a.x;
        std::int64_t const apy = std::int64_t(point.y) - a.y;
        bool const inBox = point.x >= std::min(a.x, b.x) && point.x <= std::max(a.x, b.x) &&
                           point.y >= std::min(a.y, b.y) && point.y <= std::max(a.y, b.y);
        bool const straddles = (a.y > point.y) != (b.y > point.y);
        if (!inBox && !straddles) {
            continue; // neither on this edge nor crossed by the ray's line
        }
        int const side = compareProducts(abx, apy, aby, apx); // sign of cross(b - a, point - a)
        if (side == 0 && inBox) {
            return 1;
        }
        if (straddles) {
            // The edge crosses the ray's line; it crosses the ray itself when the point lies on the
            // edge's left as the edge rises, or on its right as it falls.
            if (aby > 0 ? side > 0 : side < 0) {
                inside = !inside;
            }
        }
    }
    return inside ? 1 : 0;
}
