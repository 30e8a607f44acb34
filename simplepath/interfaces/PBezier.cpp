#include "simplepath/interfaces/PBezier.h"

#include "simplepath/interfaces/detail/PolynomialRoots.h"
#include "simplepath/interfaces/detail/Tolerances.h"

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

} // namespace

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

// Method: per coordinate, the end values and the curve's values at the zeros of the derivative, both
// roots of the quadratic always computed by the cancellation-free closed form and clamped into [0, 1]
// without branches (the hull test and root counting were data-dependent branches that mispredicted on
// arbitrary curves). A clamped or spurious root is harmless: the curve's value at any t in [0, 1] lies
// within its extent, so only true extremes can widen the result. A complex pair (negative discriminant)
// gives the real part, a vanishing leading coefficient an infinite root that clamps to an end. The extremes
// are exact to a few ulps: at a derivative zero, an error in t changes the value only to second order.
void PBezier::localMinMax(double& minX, double& minY, double& maxX, double& maxY) const {
    auto fold = [](double v0, double v1, double v2, double v3, double& lo, double& hi) {
        double const d0 = v1 - v0;
        double const d1 = v2 - v1;
        double const d2 = v3 - v2;
        double const c1 = 2.0 * (d1 - d0);
        double const c2 = d0 - 2.0 * d1 + d2;
        double const disc = c1 * c1 - 4.0 * c2 * d0;
        double const q = -0.5 * (c1 + std::copysign(std::sqrt(disc > 0.0 ? disc : 0.0), c1));
        auto clamp = [](double t) { return t > 0.0 ? (t < 1.0 ? t : 1.0) : 0.0; }; // NaN goes to 0
        double const e1 = bernstein(v0, v1, v2, v3, clamp(q / c2));
        double const e2 = bernstein(v0, v1, v2, v3, clamp(d0 / q));
        lo = std::min(std::min(lo, std::min(v0, v3)), std::min(e1, e2));
        hi = std::max(std::max(hi, std::max(v0, v3)), std::max(e1, e2));
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

namespace {

// The squared distance to p along the curve and its slope's zeros, relative to P0 so far-off curves keep
// their precision: B(t) - p = ((a t + b) t + c) t + e in the power basis, f(t) = (B(t) - p) . B'(t).
class DistanceToPoint {
  public:
    DistanceToPoint(PBezier const& bez, DPoint const& p) {
        DPoint const o = bez[0];
        DVector const d1 = bez[1] - o;
        DVector const d2 = bez[2] - o;
        DVector const d3 = bez[3] - o;
        c_ = 3.0 * d1;
        b_ = 3.0 * (d2 - 2.0 * d1);
        a_ = d3 - 3.0 * (d2 - d1);
        e_ = o - p;
    }

    DVector offset(double t) const {
        return {((a_.x * t + b_.x) * t + c_.x) * t + e_.x, ((a_.y * t + b_.y) * t + c_.y) * t + e_.y};
    }
    DVector velocity(double t) const {
        return {(3.0 * a_.x * t + 2.0 * b_.x) * t + c_.x, (3.0 * a_.y * t + 2.0 * b_.y) * t + c_.y};
    }
    DVector acceleration(double t) const { return 6.0 * t * a_ + 2.0 * b_; }

    // f in the power basis (for the cascade).
    void quintic(double* f) const {
        f[0] = c_.dot(e_);
        f[1] = 2.0 * b_.dot(e_) + c_.dot(c_);
        f[2] = 3.0 * (a_.dot(e_) + b_.dot(c_));
        f[3] = 4.0 * a_.dot(c_) + 2.0 * b_.dot(b_);
        f[4] = 5.0 * a_.dot(b_);
        f[5] = 3.0 * a_.dot(a_);
    }

    // The zero of f in [lo, hi], where f(lo) < 0 < f(hi), from start: Halley steps on f evaluated directly as
    // (B - p) . B' (accurate relative to the local scale, also near a cusp), falling back to bisection when
    // a step leaves the bracket. Halley converges cubically, so once a step is below 1e-6 the error after it
    // is far below the 1e-13 that a point on the curve needs. At most 100 steps.
    double risingZero(double lo, double hi, double start) const {
        double t = start;
        for (int k = 0; k < 100; ++k) {
            DVector const r = offset(t);
            DVector const v = velocity(t);
            DVector const acc = acceleration(t);
            double const g = r.dot(v);
            if (g < 0.0) {
                lo = t;
            } else if (g > 0.0) {
                hi = t;
            } else {
                break;
            }
            double const dg = v.dot(v) + r.dot(acc);
            double const ddg = 3.0 * v.dot(acc) + 6.0 * r.dot(a_);
            double const step = 2.0 * g * dg / (2.0 * dg * dg - g * ddg);
            double next = t - step;
            if (std::fabs(step) <= 1e-6) { // converged (the step may round onto the bracket's end)
                if (next > lo && next < hi) {
                    t = next;
                }
                break;
            }
            if (!(next > lo && next < hi)) {
                next = 0.5 * (lo + hi);
            }
            t = next;
        }
        return t;
    }

    // The minima of the squared distance inside [lo, hi] by the derivative cascade on the power-basis
    // quintic, each polished by Newton steps that must bring the point closer; folds them into best/bestT.
    void cascadeMinima(double lo, double hi, double& best, double& bestT) const {
        double f[6];
        quintic(f);
        double roots[6];
        int const n = polyroots::cascadeRoots<5>(f, lo, hi, polyroots::eval<5>(f, lo),
                                                 polyroots::eval<5>(f, hi), 0.0, true, roots);
        for (int i = 0; i < n; ++i) {
            double t = roots[i];
            if (!(t > 0.0 && t < 1.0)) {
                continue;
            }
            DVector r = offset(t);
            double dist = r.squaredLength();
            for (int k = 0; k < 4; ++k) {
                DVector const v = velocity(t);
                double const g = r.dot(v);
                double const dg = v.dot(v) + r.dot(acceleration(t));
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
    }

  private:
    DVector a_, b_, c_, e_;
};

} // namespace

// Method: the minima of |B(t) - p|^2 inside (0, 1) are the zeros of the quintic f(t) = (B(t) - p) . B'(t)
// where f rises through zero; the ends are always candidates too. f's Bernstein coefficients are the
// products of those of B - p (cubic) and B' (quadratic). By Descartes' rule for the Bernstein basis, an
// interval whose coefficients change sign once holds exactly one zero, none when they do not change sign;
// intervals with more sign changes are halved (de Casteljau on the coefficients) until each has at most
// one, and a single rising zero is solved by safeguarded Halley steps from the control polygon's crossing. So
// no minimum is missed however the curve loops, cusps or doubles back. A coefficient within its rounding
// error of zero (64 ulps of the largest product) leaves its sign open and the interval is halved too; one
// still open at 1/4096 of the parameter range (zeros of f packed that closely: a point near a cusp or a
// centre of curvature) goes to the derivative cascade on the power-basis quintic with Newton polish, which
// is slower but resolves them. The distance found is within 1e-12 of the curve's size of the true minimum
// (tested against a dense long double search). Non-finite input returns 0.
double PBezier::findNearestPointTValue(DPoint const& p) const {
    constexpr int kMaxDepth = 12;
    DistanceToPoint const dist(*this, p);
    DVector q[4], d[3];
    double qm = 0.0, dm = 0.0;
    for (int i = 0; i < 4; ++i) {
        q[i] = p_[i] - p;
        qm = std::max(qm, std::fabs(q[i].x) + std::fabs(q[i].y));
    }
    for (int j = 0; j < 3; ++j) {
        d[j] = 3.0 * (p_[j + 1] - p_[j]);
        dm = std::max(dm, std::fabs(d[j].x) + std::fabs(d[j].y));
    }
    double const tol = simplepath_tolerance::kRoundingGuard * qm * dm;
    if (!std::isfinite(tol)) {
        return 0.0;
    }
    double bestT = 0.0;
    double best = dist.offset(0.0).squaredLength();
    double const atEnd = dist.offset(1.0).squaredLength();
    if (atEnd < best) {
        bestT = 1.0;
        best = atEnd;
    }

    struct Piece {
        double c[6];
        double a, b;
        int depth;
    };
    Piece stack[kMaxDepth + 2];
    int top = 0;
    Piece& whole = stack[top++];
    whole.c[0] = q[0].dot(d[0]);
    whole.c[1] = (2.0 * q[0].dot(d[1]) + 3.0 * q[1].dot(d[0])) / 5.0;
    whole.c[2] = (q[0].dot(d[2]) + 6.0 * q[1].dot(d[1]) + 3.0 * q[2].dot(d[0])) / 10.0;
    whole.c[3] = (3.0 * q[1].dot(d[2]) + 6.0 * q[2].dot(d[1]) + q[3].dot(d[0])) / 10.0;
    whole.c[4] = (3.0 * q[2].dot(d[2]) + 2.0 * q[3].dot(d[1])) / 5.0;
    whole.c[5] = q[3].dot(d[2]);
    whole.a = 0.0;
    whole.b = 1.0;
    whole.depth = 0;
    while (top > 0) {
        Piece const piece = stack[--top];
        double const* c = piece.c;
        int changes = 0;
        int crossing = 0;
        bool open = false;
        for (int k = 0; k < 6; ++k) {
            open = open || std::fabs(c[k]) <= tol;
            if (k > 0 && (c[k] < 0.0) != (c[k - 1] < 0.0)) {
                ++changes;
                crossing = k - 1;
            }
        }
        if (!open && changes == 0) {
            continue;
        }
        if (!open && changes == 1) {
            if (c[0] < 0.0) { // a rising zero: a minimum
                double const w = piece.b - piece.a;
                double const start =
                    piece.a + w * (crossing + c[crossing] / (c[crossing] - c[crossing + 1])) / 5.0;
                double const t = dist.risingZero(piece.a, piece.b, start);
                double const dd = dist.offset(t).squaredLength();
                if (dd < best) {
                    best = dd;
                    bestT = t;
                }
            }
            continue;
        }
        if (piece.depth >= kMaxDepth) {
            dist.cascadeMinima(piece.a, piece.b, best, bestT);
            continue;
        }
        // halve: de Casteljau at 1/2 gives the left coefficients on the diagonal, the right on the last row
        Piece& right = stack[top++];
        Piece& left = stack[top++];
        double w[6];
        for (int k = 0; k < 6; ++k) {
            w[k] = c[k];
        }
        left.c[0] = w[0];
        right.c[5] = w[5];
        for (int level = 1; level < 6; ++level) {
            for (int k = 0; k < 6 - level; ++k) {
                w[k] = 0.5 * (w[k] + w[k + 1]);
            }
            left.c[level] = w[0];
            right.c[5 - level] = w[5 - level];
        }
        double const mid = 0.5 * (piece.a + piece.b);
        left.a = piece.a;
        left.b = mid;
        right.a = mid;
        right.b = piece.b;
        left.depth = right.depth = piece.depth + 1;
    }
    return bestT;
}

namespace {

// The zero of the cubic c0 + c1 t + c2 t^2 + c3 t^3 in [lo, hi], where it changes sign once (rising: from
// negative to positive), from start: Halley steps, bisection when a step leaves the bracket. Halley
// converges cubically: a step s leaves an error of about C s^3 with C = (f''/f')^2 / 4 - f'''/(6 f'), so the
// iteration stops once that estimate is below 1e-14 (a crossing where f' is tiny, next to a tangency, takes
// the steps it needs). At most 100 steps.
double cubicZero(double const* c, double lo, double hi, bool rising, double t) {
    for (int k = 0; k < 100; ++k) {
        double const f = ((c[3] * t + c[2]) * t + c[1]) * t + c[0];
        if (f == 0.0) {
            return t;
        }
        if ((f < 0.0) == rising) {
            lo = t;
        } else {
            hi = t;
        }
        double const d = (3.0 * c[3] * t + 2.0 * c[2]) * t + c[1];
        double const dd = 6.0 * c[3] * t + 2.0 * c[2];
        double const step = 2.0 * f * d / (2.0 * d * d - f * dd);
        double next = t - step;
        double const s3 = step * step * std::fabs(step);
        if ((0.25 * dd * dd + std::fabs(c[3] * d)) * s3 <= 1e-14 * d * d) {
            return next > lo && next < hi ? next : t;
        }
        if (!(next > lo && next < hi)) {
            next = 0.5 * (lo + hi);
        }
        t = next;
    }
    return t;
}

} // namespace

// Method: when the control values change sign once, the crossing is single and simple (Descartes' rule for
// the Bernstein basis) and is solved directly on [0, 1] (cubicZero, from the control polygon's crossing).
// Otherwise the zeros of y'(t) (closed-form quadratic) cut [0, 1] into pieces where y is monotone. A piece
// whose ends differ in sign holds exactly one crossing, found by cubicZero to about 1e-15 in t (for a
// crossing where |y'| is not tiny; a crossing's error is the evaluation error over |y'|). A cut where |y| is
// within the evaluation's rounding error (a few ulps of the largest |control y|) is a tangency and is
// reported once, as the cut itself: a double root is found to the accuracy of the derivative's zero. The
// end values are the control points' y exactly, so an end on the axis is reported exactly.
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
    bool const n0 = y0 < 0.0, n1 = y1 < 0.0, n2 = y2 < 0.0, n3 = y3 < 0.0;
    if (y0 != 0.0 && y1 != 0.0 && y2 != 0.0 && y3 != 0.0 && (n0 != n1) + (n1 != n2) + (n2 != n3) == 1) {
        // One sign change of the control values: exactly one crossing, a simple one (Descartes' rule for the
        // Bernstein basis), started from the control polygon's crossing.
        double const ys[4] = {y0, y1, y2, y3};
        int const k = n0 != n1 ? 0 : (n1 != n2 ? 1 : 2);
        params.push_back(cubicZero(c, 0.0, 1.0, n0, (k + ys[k] / (ys[k] - ys[k + 1])) / 3.0));
        return;
    }
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
            push(cubicZero(c, a, b, fa < 0.0, a + (b - a) * (fa / (fa - fb))));
        }
        a = b;
        fa = fb;
    }
}
