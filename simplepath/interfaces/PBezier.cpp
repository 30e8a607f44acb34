#include "simplepath/interfaces/PBezier.h"

#include "simplepath/interfaces/PolynomialRoots.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kEps = std::numeric_limits<double>::epsilon();

bool finite(DPoint const& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

// One coordinate of a cubic in Bernstein form: the weights are non-negative, so the rounding error is a few
// ulps of the largest |control value|.
double bernstein(double v0, double v1, double v2, double v3, double t) {
    double const s = 1.0 - t;
    return s * s * s * v0 + 3.0 * s * s * t * v1 + 3.0 * s * t * t * v2 + t * t * t * v3;
}

// Zeros of the derivative of one coordinate strictly inside (0, 1), ascending. The derivative over 3 is
// the quadratic Bernstein polynomial of the differences d0, d1, d2, i.e. d0 + 2(d1 - d0) t + (d0 - 2d1 + d2)
// t^2.
int derivativeZeros(double v0, double v1, double v2, double v3, double* out) {
    double const d0 = v1 - v0;
    double const d1 = v2 - v1;
    double const d2 = v3 - v2;
    return polyroots::quadraticRoots(d0, 2.0 * (d1 - d0), d0 - 2.0 * d1 + d2, 0.0, 1.0, out);
}

// Power-basis derivative B'(t) = e0 + e1 t + e2 t^2 (vector coefficients).
struct Hodograph {
    DVector e0, e1, e2;
    explicit Hodograph(PBezier const& b) {
        DVector const d0 = b[1] - b[0];
        DVector const d1 = b[2] - b[1];
        DVector const d2 = b[3] - b[2];
        e0 = 3.0 * d0;
        e1 = 6.0 * (d1 - d0);
        e2 = 3.0 * ((d2 - d1) - (d1 - d0));
    }
    double speed(double t) const {
        double const x = (e2.x * t + e1.x) * t + e0.x;
        double const y = (e2.y * t + e1.y) * t + e0.y;
        return std::sqrt(x * x + y * y);
    }
};

// Gauss-Legendre abscissae (upper half, on [-1, 1]) and weights, 16 points: exact for polynomials of degree
// 31, so on a piece where |B'| is smooth its error falls like rho^-32 for the piece's Bernstein ellipse rho.
constexpr double kGaussX[8] = {0.98940093499164994, 0.9445750230732326,  0.86563120238783176,
                               0.755404408355003,   0.61787624440264377, 0.45801677765722737,
                               0.28160355077925892, 0.095012509837637441};
constexpr double kGaussW[8] = {0.027152459411754096, 0.062253523938647894, 0.095158511682492786,
                               0.12462897125553388,  0.14959598881657674,  0.16915651939500254,
                               0.18260341504492358,  0.1894506104550685};

double gauss(Hodograph const& h, double a, double b) {
    double const half = 0.5 * (b - a);
    double const mid = 0.5 * (a + b);
    double sum = 0.0;
    for (int i = 0; i < 8; ++i) {
        double const dx = half * kGaussX[i];
        sum += kGaussW[i] * (h.speed(mid - dx) + h.speed(mid + dx));
    }
    return sum * half;
}

// Accepts a piece when the rule on the whole piece and on its two halves agree to the piece's share of the
// tolerance; the halves' sum, far more accurate than the difference shows, is returned.
double adaptiveLength(Hodograph const& h, double a, double b, double whole, double tolPerUnit, int depth) {
    double const m = 0.5 * (a + b);
    double const left = gauss(h, a, m);
    double const right = gauss(h, m, b);
    double const both = left + right;
    if (depth >= 48 || !(std::fabs(both - whole) > tolPerUnit * (b - a))) {
        return both;
    }
    return adaptiveLength(h, a, m, left, tolPerUnit, depth + 1) +
           adaptiveLength(h, m, b, right, tolPerUnit, depth + 1);
}

} // namespace

// Method: |B'(t)| is the square root of a quartic; it is smooth except near a zero of B' (a cusp, or a
// straight curve doubling back), where it has a kink or a near-kink. The interval is first cut at the local
// minima of |B'|^2 (the rising zeros of the cubic B'.B''), which puts every such feature at a piece's end;
// each piece is then integrated by 16-point Gauss-Legendre with adaptive halving until the whole-piece and
// two-halves results agree to 1e-13 of the length per unit of parameter. The relative error of the result
// is then below 1e-12 (checked against a long double reference on thousands of random and degenerate
// curves).
double PBezier::length() const {
    Hodograph const h(*this);
    double const g[4] = {h.e0.dot(h.e1), h.e1.dot(h.e1) + 2.0 * h.e0.dot(h.e2), 3.0 * h.e1.dot(h.e2),
                         2.0 * h.e2.dot(h.e2)};
    double cuts[6];
    int const n =
        polyroots::cascadeRoots<3>(g, 0.0, 1.0, g[0], g[0] + g[1] + g[2] + g[3], 0.0, true, cuts + 1);
    cuts[0] = 0.0;
    int pieces = 0;
    double ends[6];
    ends[pieces++] = 0.0;
    for (int i = 1; i <= n; ++i) {
        if (cuts[i] > ends[pieces - 1] && cuts[i] < 1.0) {
            ends[pieces++] = cuts[i];
        }
    }
    ends[pieces] = 1.0;
    double wholes[5];
    double estimate = 0.0;
    for (int i = 0; i < pieces; ++i) {
        wholes[i] = gauss(h, ends[i], ends[i + 1]);
        estimate += wholes[i];
    }
    if (!(estimate > 0.0) || !std::isfinite(estimate)) {
        return estimate; // a point (0), or non-finite input (NaN or inf passes through)
    }
    double const tolPerUnit = 1e-12 * estimate;
    double total = 0.0;
    for (int i = 0; i < pieces; ++i) {
        total += adaptiveLength(h, ends[i], ends[i + 1], wholes[i], tolPerUnit, 0);
    }
    return total;
}

// Method: uniform steps in t. Linear interpolation of a C2 curve over a step h deviates from it by at most
// h^2/8 * max|B''| (the Peano kernel of the chord is non-negative, so the bound holds for the vector norm,
// not only per coordinate). B'' is linear in t, 6 (P0 - 2P1 + P2) at t = 0 and 6 (P1 - 2P2 + P3) at t = 1, so
// max|B''| = 6 M with M the larger of those second differences, and n = ceil(sqrt(0.75 M / tolerance)) steps
// keep every chord within the tolerance of its arc and every arc within the tolerance of its chord. This is
// within a small factor of the fewest points any chord flattening with the same guarantee needs. The count
// is capped at 2^20 steps (a tolerance at or below zero, or far below the curve's size, gets the cap);
// non-finite control points get the two ends only.
void PBezier::getPolyline(double tolerance, std::vector<DPoint>& out) const {
    constexpr double kMaxSteps = 1 << 20;
    DVector const dd0 = (p_[0] - p_[1]) + (p_[2] - p_[1]);
    DVector const dd1 = (p_[1] - p_[2]) + (p_[3] - p_[2]);
    double const m = std::max(dd0.length(), dd1.length());
    double steps = 1.0;
    if (std::isfinite(m) && finite(p_[0]) && finite(p_[3])) {
        double const need = std::ceil(std::sqrt(0.75 * m / tolerance));
        steps = need >= 1.0 ? std::min(need, kMaxSteps) : (m > 0.0 && !(tolerance > 0.0) ? kMaxSteps : 1.0);
    }
    int const n = static_cast<int>(steps);
    out.reserve(out.size() + static_cast<std::size_t>(n) + 1);
    out.push_back(p_[0]);
    double const h = 1.0 / n;
    for (int i = 1; i < n; ++i) {
        out.push_back(bValue(i * h));
    }
    out.push_back(p_[3]);
}

// Method: per coordinate, the end values, and when a control value lies outside the ends' range, the
// curve's values at the zeros of the derivative (closed-form quadratic). The extremes are exact to a few
// ulps: at a derivative zero, an error in t changes the value only to second order.
void PBezier::localMinMax(double& minX, double& minY, double& maxX, double& maxY) const {
    auto fold = [](double v0, double v1, double v2, double v3, double& lo, double& hi) {
        double a = std::min(v0, v3);
        double b = std::max(v0, v3);
        if (v1 < a || v1 > b || v2 < a || v2 > b) {
            double ts[2];
            int const n = derivativeZeros(v0, v1, v2, v3, ts);
            for (int i = 0; i < n; ++i) {
                double const v = bernstein(v0, v1, v2, v3, ts[i]);
                a = std::min(a, v);
                b = std::max(b, v);
            }
        }
        if (a < lo) {
            lo = a;
        }
        if (b > hi) {
            hi = b;
        }
    };
    fold(p_[0].x, p_[1].x, p_[2].x, p_[3].x, minX, maxX);
    fold(p_[0].y, p_[1].y, p_[2].y, p_[3].y, minY, maxY);
}

// Method: the candidates are t = 0, the zeros of y'(t) in (0, 1) ascending, and t = 1; strict comparisons
// keep the smallest t among equal y.
void PBezier::localTopBottom(DPoint& top, DPoint& bottom) const {
    double ts[4];
    ts[0] = 0.0;
    int const n = derivativeZeros(p_[0].y, p_[1].y, p_[2].y, p_[3].y, ts + 1);
    ts[n + 1] = 1.0;
    top = p_[0];
    bottom = p_[0];
    for (int i = 1; i <= n + 1; ++i) {
        DPoint const q = bValue(ts[i]);
        if (q.y > top.y) {
            top = q;
        }
        if (q.y < bottom.y) {
            bottom = q;
        }
    }
}

// Method: see findNearestPointTValue; the control polygon's box, widened by the tolerance, rejects far
// points first (the curve lies in its control hull).
double PBezier::findParameter(DPoint const& p, double /*start*/, double tolerance) const {
    if (!(tolerance > 0.0)) {
        return -1.0;
    }
    double const loX = std::min(std::min(p_[0].x, p_[1].x), std::min(p_[2].x, p_[3].x));
    double const hiX = std::max(std::max(p_[0].x, p_[1].x), std::max(p_[2].x, p_[3].x));
    double const loY = std::min(std::min(p_[0].y, p_[1].y), std::min(p_[2].y, p_[3].y));
    double const hiY = std::max(std::max(p_[0].y, p_[1].y), std::max(p_[2].y, p_[3].y));
    if (!(p.x > loX - tolerance && p.x < hiX + tolerance && p.y > loY - tolerance && p.y < hiY + tolerance)) {
        return -1.0;
    }
    double const t = findNearestPointTValue(p);
    return distance(bValue(t), p) < tolerance ? t : -1.0;
}

// Method: the minima of |B(t) - p|^2 are the zeros of the quintic f(t) = (B(t) - p) . B'(t) where f rises
// through zero. All such zeros in [0, 1] are isolated by the derivative cascade (monotone pieces between the
// zeros of f', f'', f''', the last in closed form), so none is missed however the curve loops, cusps or
// doubles back; the ends are always candidates too. Coordinates are taken relative to P0 so far-off curves
// keep their precision. The power-basis quintic loses accuracy where B' is tiny (near a cusp), so each
// interior candidate is polished by Newton steps on f evaluated directly as (B - p) . B', which is accurate
// relative to the local scale, accepting a step only when it brings the point closer. The distance found is
// within 1e-12 of the curve's size of the true minimum (tested against a dense long double search).
// Non-finite input returns 0.
double PBezier::findNearestPointTValue(DPoint const& p) const {
    DPoint const o = p_[0];
    DVector const q = p - o;
    DVector const d1 = p_[1] - o;
    DVector const d2 = p_[2] - o;
    DVector const d3 = p_[3] - o;
    DVector const c = 3.0 * d1;
    DVector const b = 3.0 * (d2 - 2.0 * d1);
    DVector const a = d3 - 3.0 * (d2 - d1);
    DVector const e = -q;
    double const f[6] = {c.dot(e),
                         2.0 * b.dot(e) + c.dot(c),
                         3.0 * (a.dot(e) + b.dot(c)),
                         4.0 * a.dot(c) + 2.0 * b.dot(b),
                         5.0 * a.dot(b),
                         3.0 * a.dot(a)};
    double const f1 = f[0] + f[1] + f[2] + f[3] + f[4] + f[5];
    if (!std::isfinite(f1) || !std::isfinite(f[0]) || !std::isfinite(f[5])) {
        return 0.0;
    }
    double roots[6];
    int const n = polyroots::cascadeRoots<5>(f, 0.0, 1.0, f[0], f1, 0.0, true, roots);

    // The offset B(t) - p and B'(t), B''(t), all from the P0-relative power basis (exact to a few ulps of
    // the curve's size, wherever the curve lies).
    auto offset = [&](double t) {
        return DVector(((a.x * t + b.x) * t + c.x) * t + e.x, ((a.y * t + b.y) * t + c.y) * t + e.y);
    };
    auto velocity = [&](double t) {
        return DVector((3.0 * a.x * t + 2.0 * b.x) * t + c.x, (3.0 * a.y * t + 2.0 * b.y) * t + c.y);
    };
    double bestT = 0.0;
    double best = e.squaredLength();
    double const atEnd = squaredDistance(p_[3], p);
    if (atEnd < best) {
        bestT = 1.0;
        best = atEnd;
    }
    for (int i = 0; i < n; ++i) {
        double t = roots[i];
        if (!(t > 0.0 && t < 1.0)) {
            continue;
        }
        DVector r = offset(t);
        double dist = r.squaredLength();
        for (int k = 0; k < 4; ++k) {
            DVector const v = velocity(t);
            DVector const acc = 6.0 * t * a + 2.0 * b; // B''(t)
            double const g = r.dot(v);
            double const dg = v.dot(v) + r.dot(acc);
            if (!(dg > 0.0)) {
                break;
            }
            double const nt = std::min(1.0, std::max(0.0, t - g / dg));
            if (nt == t) {
                break;
            }
            DVector const nr = offset(nt);
            double const nd = nr.squaredLength();
            if (!(nd < dist)) {
                break;
            }
            double const step = std::fabs(nt - t);
            t = nt;
            r = nr;
            dist = nd;
            if (step < 1e-15) {
                break;
            }
        }
        if (dist < best) {
            best = dist;
            bestT = t;
        }
    }
    return bestT;
}

// Method: the zeros of y'(t) (closed-form quadratic) cut [0, 1] into pieces where y is monotone. A piece
// whose ends differ in sign holds exactly one crossing, found by safeguarded Newton to about 1e-15 in t
// (for a crossing where |y'| is not tiny; a crossing's error is the evaluation error over |y'|). A cut where
// |y| is within the evaluation's rounding error (a few ulps of the largest |control y|) is a tangency and
// is reported once, as the cut itself: a double root is found to the accuracy of the derivative's zero.
// The end values are the control points' y exactly, so an end on the axis is reported exactly.
void intersectBezierWithXAxis(PBezier const& bez, std::vector<double>& params) {
    double const y0 = bez[0].y, y1 = bez[1].y, y2 = bez[2].y, y3 = bez[3].y;
    if (y0 == 0.0 && y1 == 0.0 && y2 == 0.0 && y3 == 0.0) {
        params.push_back(0.0);
        params.push_back(1.0);
        return;
    }
    if ((y0 > 0.0 && y1 > 0.0 && y2 > 0.0 && y3 > 0.0) || (y0 < 0.0 && y1 < 0.0 && y2 < 0.0 && y3 < 0.0)) {
        return; // the hull misses the axis (also rejects nothing non-finite by mistake: NaN fails both)
    }
    double const big =
        std::max(std::max(std::fabs(y0), std::fabs(y1)), std::max(std::fabs(y2), std::fabs(y3)));
    if (!std::isfinite(big)) {
        return;
    }
    double const c[4] = {y0, 3.0 * (y1 - y0), 3.0 * ((y2 - y1) - (y1 - y0)), (y3 - y0) - 3.0 * (y2 - y1)};
    double const zeroTol = 8.0 * kEps * big;
    double cuts[3];
    int const m = derivativeZeros(y0, y1, y2, y3, cuts);
    cuts[m] = 1.0;
    double a = 0.0;
    double fa = y0;
    double last = -1.0;
    auto push = [&](double t) {
        if (t > last) { // each crossing once, ascending
            params.push_back(t);
            last = t;
        }
    };
    if (fa == 0.0) {
        push(0.0);
    }
    for (int k = 0; k <= m; ++k) {
        double const b = cuts[k];
        double fb;
        if (k < m) {
            if (!(b > a)) {
                continue;
            }
            fb = bernstein(y0, y1, y2, y3, b);
            if (std::fabs(fb) <= zeroTol) {
                fb = 0.0;
            }
        } else {
            fb = y3;
        }
        if (fb == 0.0) {
            push(b);
        } else if (fa != 0.0 && (fa < 0.0) != (fb < 0.0)) {
            push(std::min(b, std::max(a, polyroots::solveBracketed<3>(c, a, b, fa, fb))));
        }
        a = b;
        fa = fb;
    }
}
