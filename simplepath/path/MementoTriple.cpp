#include "simplepath/path/MementoTriple.h"

#include <cstdint>
#include <tuple>

namespace {

std::uintptr_t address(SimplePathVertex const* vertex) {
    return reinterpret_cast<std::uintptr_t>(vertex);
}

auto key(MementoTriple const& t) {
    return std::make_tuple(address(t.first), address(t.anchor), address(t.last), t.firstLocation.x,
                           t.firstLocation.y, t.anchorLocation.x, t.anchorLocation.y, t.lastLocation.x,
                           t.lastLocation.y, static_cast<std::int32_t>(t.mode));
}

} // namespace

bool MementoTriple::operator==(MementoTriple const& other) const {
    return first == other.first && anchor == other.anchor && last == other.last &&
           firstLocation == other.firstLocation && anchorLocation == other.anchorLocation &&
           lastLocation == other.lastLocation && mode == other.mode;
}

bool MementoTriple::operator<(MementoTriple const& other) const {
    return key(*this) < key(other);
}
