#include "simplepath/path/SimplePathLocationTriple.h"

bool SimplePathLocationTriple::operator==(SimplePathLocationTriple const& other) const {
    return first == other.first && anchor == other.anchor && last == other.last && mode == other.mode;
}

bool SimplePathLocationTriple::operator<(SimplePathLocationTriple const& other) const {
    if (first != other.first) {
        return first < other.first;
    }
    return mode < other.mode;
}

bool SimplePathLocationTriple::operator>(SimplePathLocationTriple const& other) const {
    if (first != other.first) {
        return first > other.first;
    }
    return mode > other.mode;
}
