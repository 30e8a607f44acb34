#include "simplepath/edit/NullTransform.h"

NullTransform::PathPosition NullTransform::map(PathPosition const& pair) const {
    return pair;
}
