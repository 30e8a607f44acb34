#pragma once

// An independent long-double model of one cubic, for checking the legacy curve's numbers: points by de
// Casteljau (not the Bernstein form the library uses), lengths by polylines and by Simpson's rule on the
// hodograph, nearest points by dense sampling refined by zooming in.

#include "simplepath/legacy/CBezier.h"

#include <gtest/gtest.h>

#include <cmath>

namespace legacytest {

using LD = long double;

// Both coordinates of anything with x and y within tolerance of expected.
template <class Point>
void expectNear(Point const& actual, DPoint const& expected, double tolerance = 1e-12) {
    EXPECT_NEAR(static_cast<double>(actual.x), expected.x, tolerance);
    EXPECT_NEAR(static_cast<double>(actual.y), expected.y, tolerance);
}

class LongDoubleCubic {
  public:
    struct Point {
        LD x, y;
        DPoint rounded() const { return DPoint(double(x), double(y)); }
    };
    explicit LongDoubleCubic(CBezier const& c)
        : p_{{c.GetP0().x, c.GetP0().y},
             {c.GetP1().x, c.GetP1().y},
             {c.GetP2().x, c.GetP2().y},
             {c.GetP3().x, c.GetP3().y}} {}

    Point at(LD t) const {
        Point q[4] = {p_[0], p_[1], p_[2], p_[3]};
        for (int level = 3; level > 0; --level) {
            for (int i = 0; i < level; ++i) {
                q[i] = {q[i].x + (q[i + 1].x - q[i].x) * t, q[i].y + (q[i + 1].y - q[i].y) * t};
            }
        }
        return q[0];
    }
    // |B'(t)| from the quadratic hodograph 3 (d0 (1-t)^2 + 2 d1 t (1-t) + d2 t^2), di = P(i+1) - Pi.
    LD speed(LD t) const {
        LD const w[3] = {(1 - t) * (1 - t), 2 * t * (1 - t), t * t};
        LD sx = 0, sy = 0;
        for (int i = 0; i < 3; ++i) {
            sx += w[i] * (p_[i + 1].x - p_[i].x);
            sy += w[i] * (p_[i + 1].y - p_[i].y);
        }
        return 3 * std::hypot(sx, sy);
    }
    LD simpson(LD t0, LD t1, int intervals) const {
        LD const h = (t1 - t0) / intervals;
        LD sum = speed(t0) + speed(t1);
        for (int i = 1; i < intervals; ++i) {
            sum += (i % 2 ? 4 : 2) * speed(t0 + i * h);
        }
        return sum * h / 3;
    }
    // Length of the polyline through the curve at t = i / n, i = 0..n.
    LD polyline(int n) const {
        LD length = 0;
        for (int i = 1; i <= n; ++i) {
            length += distance(at(LD(i - 1) / n), at(LD(i) / n));
        }
        return length;
    }
    struct Nearest {
        LD t, distance;
    };
    // Globally nearest point: a dense scan, then five more scans, each of the two steps about the best
    // parameter so far.
    Nearest nearest(DPoint p, int samples = 2000) const {
        Point const target{p.x, p.y};
        LD lo = 0, hi = 1, best = 0;
        for (int pass = 0; pass < 6; ++pass) {
            LD const step = (hi - lo) / samples;
            for (int i = 0; i <= samples; ++i) {
                if (distance(at(lo + i * step), target) < distance(at(best), target)) {
                    best = lo + i * step;
                }
            }
            lo = std::fmax(0.0L, best - step), hi = std::fmin(1.0L, best + step);
        }
        return {best, distance(at(best), target)};
    }

  private:
    static LD distance(Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y); }
    Point p_[4];
};

} // namespace legacytest
