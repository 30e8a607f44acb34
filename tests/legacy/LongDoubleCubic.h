#pragma once

// An independent long-double model of one cubic, for checking the legacy curve's numbers: points by
// de Casteljau (not the Bernstein form the library uses), lengths by dense polylines and by a Simpson
// rule on the derivative's own control points, nearest points by dense sampling refined by golden
// section.

#include "simplepath/interfaces/DPoint.h"

#include <cmath>

namespace legacytest {

struct LPoint {
    long double x;
    long double y;
};

inline long double ldistance(LPoint a, LPoint b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

class LongDoubleCubic {
  public:
    LongDoubleCubic(DPoint p0, DPoint p1, DPoint p2, DPoint p3)
        : p_{{p0.x, p0.y}, {p1.x, p1.y}, {p2.x, p2.y}, {p3.x, p3.y}} {}

    LPoint at(long double t) const {
        LPoint q[4] = {p_[0], p_[1], p_[2], p_[3]};
        for (int level = 3; level > 0; --level) {
            for (int i = 0; i < level; ++i) {
                q[i] = {q[i].x + (q[i + 1].x - q[i].x) * t, q[i].y + (q[i + 1].y - q[i].y) * t};
            }
        }
        return q[0];
    }

    // |B'(t)| from the quadratic hodograph 3 (d0 (1-t)^2 + 2 d1 t (1-t) + d2 t^2), di = P(i+1) - Pi.
    long double speed(long double t) const {
        long double const u = 1 - t;
        long double sx = 0;
        long double sy = 0;
        long double const w[3] = {u * u, 2 * t * u, t * t};
        for (int i = 0; i < 3; ++i) {
            sx += w[i] * (p_[i + 1].x - p_[i].x);
            sy += w[i] * (p_[i + 1].y - p_[i].y);
        }
        return 3 * std::hypot(sx, sy);
    }

    // Composite Simpson over [t0, t1] with the given (even) number of intervals.
    long double simpson(long double t0, long double t1, int intervals) const {
        long double const h = (t1 - t0) / intervals;
        long double sum = speed(t0) + speed(t1);
        for (int i = 1; i < intervals; ++i) {
            sum += (i % 2 ? 4 : 2) * speed(t0 + i * h);
        }
        return sum * h / 3;
    }

    // Length of the polyline through the curve at t = i / n, i = 0..n.
    long double polyline(int n) const {
        long double length = 0;
        LPoint previous = p_[0];
        for (int i = 1; i <= n; ++i) {
            LPoint const q = i == n ? p_[3] : at(static_cast<long double>(i) / n);
            length += ldistance(previous, q);
            previous = q;
        }
        return length;
    }

    // True arc length over [0, 1]: Richardson extrapolation of two dense polylines (error O(n^-4)).
    long double arcLength() const {
        long double const coarse = polyline(20000);
        long double const fine = polyline(40000);
        return fine + (fine - coarse) / 3;
    }

    struct Nearest {
        long double t;
        long double distance;
    };

    // Globally nearest point: dense samples, then golden section on the best sample's neighbourhood.
    Nearest nearest(DPoint p, int samples = 20000) const {
        LPoint const target{p.x, p.y};
        Nearest best{0, ldistance(at(0), target)};
        for (int i = 1; i <= samples; ++i) {
            long double const t = static_cast<long double>(i) / samples;
            long double const d = ldistance(at(t), target);
            if (d < best.distance) {
                best = {t, d};
            }
        }
        long double lo = std::fmax(0.0L, best.t - 1.0L / samples);
        long double hi = std::fmin(1.0L, best.t + 1.0L / samples);
        long double const g = (std::sqrt(5.0L) - 1) / 2;
        for (int i = 0; i < 200; ++i) {
            long double const a = hi - g * (hi - lo);
            long double const b = lo + g * (hi - lo);
            if (ldistance(at(a), target) < ldistance(at(b), target)) {
                hi = b;
            } else {
                lo = a;
            }
        }
        long double const t = (lo + hi) / 2;
        long double const d = ldistance(at(t), target);
        return d < best.distance ? Nearest{t, d} : best;
    }

  private:
    LPoint p_[4];
};

} // namespace legacytest
