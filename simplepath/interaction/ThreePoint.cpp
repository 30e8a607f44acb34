#include "simplepath/interaction/ThreePoint.h"

#include <tuple>

bool ThreePoint::operator==(ThreePoint const& other) const {
    return before == other.before && anchor == other.anchor && after == other.after && fixed == other.fixed;
}

bool ThreePoint::operator<(ThreePoint const& other) const {
    auto key = [](ThreePoint const& t) {
        return std::make_tuple(t.before.x, t.before.y, t.anchor.x, t.anchor.y, t.after.x, t.after.y, t.fixed);
    };
    return key(*this) < key(other);
}
