#pragma once

#include "simplepath/interfaces/DPoint.h"

// Anything that has a location in the plane. Vertices implement it so that code that only needs a
// point can take one without knowing about paths.
class GenericPoint {
  public:
    GenericPoint() = default;
    GenericPoint(GenericPoint const&) = default;
    GenericPoint& operator=(GenericPoint const&) = default;
    virtual ~GenericPoint();

    virtual DPoint getLocation() const = 0;
};
