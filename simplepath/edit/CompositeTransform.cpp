#include "simplepath/edit/CompositeTransform.h"

#include <algorithm>

CompositeTransform::CompositeTransform(std::list<SimplePathPositionTransform*> const& members) {
    sequence.reserve(members.size());
    owned.reserve(members.size());
    for (SimplePathPositionTransform* member : members) {
        if (member == nullptr) {
            continue;
        }
        if (std::find(sequence.begin(), sequence.end(), member) == sequence.end()) {
            owned.emplace_back(member);
        }
        sequence.push_back(member);
    }
}

CompositeTransform::PathPosition CompositeTransform::map(PathPosition const& pair) const {
    return mapThrough(sequence.begin(), sequence.end(), pair);
}
