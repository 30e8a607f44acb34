// The arc length's quadrature table against exact integrals: a Gauss-Legendre rule of n points on [0, 1]
// integrates t^d exactly, to 1 / (d + 1), for every degree d below 2n. A wrong digit in any node or weight
// breaks this for some degree.

#include "simplepath/interfaces/detail/GaussLegendreRules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using simplepath_detail::GaussNodeQuad;
using simplepath_detail::kGaussNodes;
using simplepath_detail::kGaussRuleCount;

// Rule k (4k points) applied to t^degree, summed in long double.
long double integrateMonomial(int k, int degree) {
    long double sum = 0.0L;
    for (GaussNodeQuad const *q = kGaussNodes + k * (k - 1) / 2, *end = q + k; q != end; ++q) {
        for (int i = 0; i < 4; ++i) {
            sum += static_cast<long double>(q->w[i]) * std::pow(static_cast<long double>(q->t[i]), degree);
        }
    }
    return sum;
}

TEST(GaussLegendreRules, EachRuleIntegratesEveryDegreeBelowTwiceItsPointsExactly) {
    ASSERT_EQ(kGaussRuleCount * (kGaussRuleCount + 1) / 2,
              static_cast<int>(sizeof(kGaussNodes) / sizeof(kGaussNodes[0])));
    for (int k = 1; k <= kGaussRuleCount; ++k) {
        int const n = 4 * k;
        for (int degree = 0; degree < 2 * n; ++degree) {
            long double const exact = 1.0L / (degree + 1);
            long double const relative = std::fabs(integrateMonomial(k, degree) - exact) / exact;
            // Every term is positive, so the sum errs relatively by the rounding of the stored values: a
            // node's half-ulp error grows to about degree half-ulps in t^degree, the weight adds one more.
            EXPECT_LE(relative, (degree + 4) * std::numeric_limits<double>::epsilon())
                << n << " points, degree " << degree;
        }
    }
    // Degree 2n is the first a rule gets wrong: four points miss t^8 by (4!)^4 / (9 (8!)^2) = 2.3e-5.
    EXPECT_GT(std::fabs(integrateMonomial(1, 8) - 1.0L / 9) * 9, 1e-6L);
}

} // namespace
