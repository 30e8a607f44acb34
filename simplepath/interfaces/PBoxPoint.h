#pragma once

#include "simplepath/interfaces/DPoint.h"

// A point handed to a box form's mappings, which rewrite it in place.
class PBoxPoint {
  public:
    double x = 0.0;
    double y = 0.0;

    PBoxPoint() = default;
    PBoxPoint(double xValue, double yValue) : x(xValue), y(yValue) {}
    explicit PBoxPoint(DPoint const& p) : x(p.x), y(p.y) {}
};
