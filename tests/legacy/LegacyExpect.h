#pragma once

#include "simplepath/interfaces/DPoint.h"

#include <gtest/gtest.h>

namespace legacytest {

// Both coordinates of anything with x and y within tolerance of expected.
template <class Point>
void expectNear(Point const& actual, DPoint const& expected, double tolerance = 1e-12) {
    EXPECT_NEAR(static_cast<double>(actual.x), expected.x, tolerance);
    EXPECT_NEAR(static_cast<double>(actual.y), expected.y, tolerance);
}

} // namespace legacytest
