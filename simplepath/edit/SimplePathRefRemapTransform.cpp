#include "simplepath/edit/SimplePathRefRemapTransform.h"

SimplePathRefRemapTransform::SimplePathRefRemapTransform(SimplePathRemap const& remap) : remap(remap) {}

SimplePathRefRemapTransform::PathPosition SimplePathRefRemapTransform::map(PathPosition const& pair) const {
    PathPosition result = pair;
    remap.find(pair.first, result.first);
    return result;
}
