#pragma once

// Independent long double references for cubic Bezier geometry: evaluation from the Bernstein form,
// and the minimum of a function over [0, 1] by dense sampling refined by golden-section search around
// every sampled local minimum. Slow and simple on purpose; for checking the library, never for use in it.

#include <algorithm>
#include <cmath>
#include <vector>

#include "simplepath/interfaces/PBezier.h"

namespace support {

using LD = long double;

struct LPoint {
    LD x, y;
};

inline LPoint evaluate(PBezier const& b, LD t) {
    LD const s = 1 - t;
    LD const w[4] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
    LPoint p{0, 0};
    for (int i = 0; i < 4; ++i) {
        p.x += w[i] * b[i].x;
        p.y += w[i] * b[i].y;
    }
    return p;
}

inline LD speed(PBezier const& b, LD t) {
    LD const s = 1 - t;
    LD const w[3] = {3 * s * s, 6 * s * t, 3 * t * t};
    LD x = 0, y = 0;
    for (int i = 0; i < 3; ++i) {
        x += w[i] * (LD(b[i + 1].x) - b[i].x);
        y += w[i] * (LD(b[i + 1].y) - b[i].y);
    }
    return std::sqrt(x * x + y * y);
}

inline LD squaredDistanceTo(PBezier const& b, LD t, DPoint const& p) {
    LPoint const q = evaluate(b, t);
    return (q.x - p.x) * (q.x - p.x) + (q.y - p.y) * (q.y - p.y);
}

// The minimum of f over [0, 1].
template <class F> LD minimumOver(F const& f, int samples = 1000) {
    std::vector<LD> v(samples + 1);
    for (int i = 0; i <= samples; ++i) {
        v[i] = f(LD(i) / samples);
    }
    LD best = std::min(v[0], v[samples]);
    LD const g = (std::sqrt(LD(5)) - 1) / 2;
    for (int i = 0; i <= samples; ++i) {
        if ((i > 0 && v[i - 1] < v[i]) || (i < samples && v[i + 1] < v[i])) {
            continue;
        }
        LD a = LD(std::max(0, i - 1)) / samples, c = LD(std::min(samples, i + 1)) / samples;
        LD x1 = c - g * (c - a), x2 = a + g * (c - a), f1 = f(x1), f2 = f(x2);
        for (int k = 0; k < 90; ++k) {
            if (f1 < f2) {
                c = x2, x2 = x1, f2 = f1, x1 = c - g * (c - a), f1 = f(x1);
            } else {
                a = x1, x1 = x2, f1 = f2, x2 = a + g * (c - a), f2 = f(x2);
            }
        }
        best = std::min({best, v[i], f1, f2});
    }
    return best;
}

// Arc length by composite Simpson's rule on |B'| in long double; `pieces` even. For curves without a cusp
// the error falls like pieces^-4, far below 1e-12 of the length at the default.
inline LD arcLength(PBezier const& b, int pieces = 20000) {
    LD sum = speed(b, 0) + speed(b, 1);
    for (int i = 1; i < pieces; ++i) {
        sum += (i % 2 == 1 ? 4 : 2) * speed(b, LD(i) / pieces);
    }
    return sum / (3 * LD(pieces));
}

} // namespace support
