#include "simplepath/edit/SimplePathRemap.h"

void SimplePathRemap::insert(PHashablePointer<SimplePath> const& old,
                             PHashablePointer<SimplePath> const& replacement) {
    entries.emplace(old, replacement);
}

bool SimplePathRemap::find(PHashablePointer<SimplePath> const& old,
                           PHashablePointer<SimplePath>& replacement) const {
    // lower_bound, not multimap::find: find may return any of the equal keys.
    auto const first = entries.lower_bound(old);
    if (first == entries.end() || first->first != old) {
        return false;
    }
    replacement = first->second;
    return true;
}

bool SimplePathRemap::findAll(PHashablePointer<SimplePath> const& old,
                              std::list<PHashablePointer<SimplePath>>& out) const {
    auto const range = entries.equal_range(old);
    for (auto it = range.first; it != range.second; ++it) {
        out.push_back(it->second);
    }
    return range.first != range.second;
}
