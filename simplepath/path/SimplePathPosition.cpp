#include "simplepath/path/SimplePathPosition.h"

bool SimplePathPosition::operator<(SimplePathPosition const& other) const {
    return index != other.index ? index < other.index : parameter < other.parameter;
}

bool SimplePathPosition::operator>(SimplePathPosition const& other) const {
    return index != other.index ? index > other.index : parameter > other.parameter;
}
