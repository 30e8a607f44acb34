#include "simplepath/legacy/CBezier.h"

#include "simplepath/interfaces/detail/Tolerances.h"

#include <algorithm>
#include <cmath>

namespace {

// Two doubles count as equal when they differ by less than this.
constexpr double kFuzz = simplepath_tolerance::kLegacyFuzz;

// How far the Simpson length at the found parameter may miss the asked length (the bracketing stops
// there): a billionth of a drawing unit, far below anything a host can show.
constexpr double kLengthMiss = 1e-9;

// Subdivision depth at which the recursive flattening stops whatever the tolerance: a zero, negative or
// NaN tolerance, NaN coordinates or a wildly long control polygon then yield at most 3 * 2^16 + 1 points
// instead of running away. Ordinary segments (control polygon under 2^16 tolerances) never reach it.
constexpr int kMaxFlattenDepth = 16;

// The Bernstein weights of t, in the expanded form the family has always used.
struct BernsteinWeights {
    double b0, b1, b2, b3;
    explicit BernsteinWeights(double t) {
        double const t2 = t * t;
        b0 = t2 * (3.0 - t) - 3.0 * t + 1.0;
        b1 = 3.0 * (t2 * (t - 2.0) + t);
        b2 = 3.0 * t2 * (1.0 - t);
        b3 = t2 * t;
    }
};

// |B'(t)|^2 as a quartic in t, from the power form B(t) = a t^3 + b t^2 + c t + P0.
struct SquaredSpeed {
    double k4, k3, k2, k1, k0;
    SquaredSpeed(DPoint const& p0, DPoint const& p1, DPoint const& p2, DPoint const& p3) {
        DVector const c = (p1 - p0) * 3.0;
        DVector const b = (p2 - p1) * 3.0 - c;
        DVector const a = (p3 - p0) - c - b;
        k4 = 9.0 * a.dot(a);
        k3 = 12.0 * a.dot(b);
        k2 = 6.0 * a.dot(c) + 4.0 * b.dot(b);
        k1 = 4.0 * b.dot(c);
        k0 = c.dot(c);
    }
    // The speed at t; rounding can push the quartic just below zero, which counts as standing still,
    // and a speed that is zero within the fuzz is taken as exactly zero.
    double speed(double t) const {
        double const sq = (((k4 * t + k3) * t + k2) * t + k1) * t + k0;
        double f = sq > 0.0 ? std::sqrt(sq) : 0.0;
        if (std::fabs(f - 1e-20) < kFuzz) {
            f = 0.0;
        }
        return f;
    }
    // Composite Simpson's rule over [t0, t1] with 10 intervals.
    double simpson(double t0, double t1) const {
        double const h = (t1 - t0) / 10.0;
        double f[11];
        for (int i = 0; i <= 10; ++i) {
            f[i] = speed(t0 + i * h);
        }
        double sum = 0.0;
        for (int i = 0; i <= 8; i += 2) {
            sum += (h / 3.0) * (f[i] + 4.0 * f[i + 1] + f[i + 2]);
        }
        return sum;
    }
};

void appendPoint(CArray<DPoint, DPoint>& out, double x, double y) {
    out.Add(DPoint(x, y));
}

// Halves the cubic held in b until every leg of its control polygon is within the tolerance. The
// record is reused in place: it holds the left half during the first recursion and is reloaded with
// the right half afterwards.
void flatten(BEZIER& b, int depth) {
    bool const flatEnough = std::hypot(b.x1 - b.x0, b.y1 - b.y0) <= b.tolerance &&
                            std::hypot(b.x2 - b.x1, b.y2 - b.y1) <= b.tolerance &&
                            std::hypot(b.x3 - b.x2, b.y3 - b.y2) <= b.tolerance;
    if (flatEnough || depth >= kMaxFlattenDepth) {
        // P0 is the previous piece's last point, already in the output.
        appendPoint(*b.out, b.x1, b.y1);
        appendPoint(*b.out, b.x2, b.y2);
        appendPoint(*b.out, b.x3, b.y3);
        return;
    }
    double const m01x = (b.x0 + b.x1) / 2, m01y = (b.y0 + b.y1) / 2;
    double const m12x = (b.x1 + b.x2) / 2, m12y = (b.y1 + b.y2) / 2;
    double const m23x = (b.x2 + b.x3) / 2, m23y = (b.y2 + b.y3) / 2;
    double const m012x = (m01x + m12x) / 2, m012y = (m01y + m12y) / 2;
    double const m123x = (m12x + m23x) / 2, m123y = (m12y + m23y) / 2;
    double const midx = (m012x + m123x) / 2, midy = (m012y + m123y) / 2;
    double const x3 = b.x3, y3 = b.y3;

    b.x1 = m01x, b.y1 = m01y;
    b.x2 = m012x, b.y2 = m012y;
    b.x3 = midx, b.y3 = midy;
    flatten(b, depth + 1);

    b.x0 = midx, b.y0 = midy;
    b.x1 = m123x, b.y1 = m123y;
    b.x2 = m23x, b.y2 = m23y;
    b.x3 = x3, b.y3 = y3;
    flatten(b, depth + 1);
}

} // namespace

CBezier::CBezier(BPOINT const& a, BPOINT const& b)
    : p0_(a.anchor), p1_(a.after), p2_(b.before), p3_(b.anchor) {}

CBezier::CBezier(DPoint const& p0, DPoint const& p1, DPoint const& p2, DPoint const& p3)
    : p0_(p0), p1_(p1), p2_(p2), p3_(p3) {}

DPoint CBezier::GetCurvePoint(double t) const {
    if (t == 0.0) {
        return p0_;
    }
    if (t == 1.0) {
        return p3_;
    }
    BernsteinWeights const w(t);
    return DPoint(w.b0 * p0_.x + w.b1 * p1_.x + w.b2 * p2_.x + w.b3 * p3_.x,
                  w.b0 * p0_.y + w.b1 * p1_.y + w.b2 * p2_.y + w.b3 * p3_.y);
}

double CBezier::GetL(int n) const {
    n = std::max(n, 1);
    double length = 0.0;
    DPoint previous = p0_;
    for (int i = 1; i < n; ++i) {
        DPoint const p = GetCurvePoint(static_cast<double>(i) / n);
        length += distance(previous, p);
        previous = p;
    }
    return length + distance(previous, p3_);
}

double CBezier::GetLength(double t0, double t1) const {
    return SquaredSpeed(p0_, p1_, p2_, p3_).simpson(t0, t1);
}

double CBezier::GetTFromLength(double length) const {
    if (!(length > 0.0)) {
        return 0.0;
    }
    SquaredSpeed const speed(p0_, p1_, p2_, p3_);
    double const total = speed.simpson(0.0, 1.0);
    if (!(length < total)) {
        return 1.0;
    }
    // Invariant: simpson(0, lo) < length < simpson(0, hi). Newton steps use the speed as the slope of
    // the length; a step that leaves the bracket is replaced by bisection.
    double lo = 0.0;
    double hi = 1.0;
    double t = length / total;
    for (int iteration = 0; iteration < 200; ++iteration) {
        double const miss = speed.simpson(0.0, t) - length;
        if (std::fabs(miss) <= kLengthMiss) {
            return t;
        }
        (miss < 0.0 ? lo : hi) = t;
        double next = t - miss / speed.speed(t);
        if (!(next > lo && next < hi)) {
            next = lo + (hi - lo) / 2;
        }
        if (next <= lo || next >= hi) {
            break; // the bracket is one double wide
        }
        t = next;
    }
    return t;
}

void CBezier::GetPolyline(CArray<DPoint, DPoint>& out) const {
    if (out.IsEmpty()) {
        out.Add(p0_);
    }
    if (!expandStraightLines_ && distance(p0_, p1_) < kFuzz && distance(p2_, p3_) < kFuzz) {
        out.Add(p3_);
        return;
    }
    // Long segments are flattened more coarsely, in steps of the chord length.
    double tolerance = resolution_;
    double const chord = distance(p0_, p3_);
    if (chord > 100000.0) {
        tolerance = std::max(tolerance, 100.0);
    } else if (chord > 10000.0) {
        tolerance = std::max(tolerance, 10.0);
    } else if (chord > 5000.0) {
        tolerance = std::max(tolerance, 5.0);
    } else if (chord > 2000.0) {
        tolerance = std::max(tolerance, 3.0);
    }
    BEZIER record;
    record.x0 = p0_.x, record.y0 = p0_.y;
    record.x1 = p1_.x, record.y1 = p1_.y;
    record.x2 = p2_.x, record.y2 = p2_.y;
    record.x3 = p3_.x, record.y3 = p3_.y;
    record.tolerance = tolerance;
    record.out = &out;
    GetBArray(&record);
}

void CBezier::GetBArray(BEZIER* b) const {
    if (b == nullptr || b->out == nullptr) {
        return;
    }
    flatten(*b, 0);
}

void CBezier::GetPolylineEx(CArray<DPoint, DPoint>& out) const {
    // Every refinement is compared with the 10-piece length, never with the previous refinement.
    double const tenPieces = GetL(10);
    int n = 20;
    double refined = GetL(n);
    int doublings = 0;
    while (std::fabs(tenPieces - refined) > resolution_) {
        if (doublings >= 10) {
            break;
        }
        n *= 2;
        refined = GetL(n);
        ++doublings;
    }
    out.RemoveAll();
    out.SetSize(n + 1);
    out[0] = p0_;
    for (int i = 1; i < n; ++i) {
        out[i] = GetCurvePoint(static_cast<double>(i) / n);
    }
    out[n] = p3_;
}

void CBezier::DragToPoint(double t, DPoint const& target) {
    if (std::isnan(t) || !std::isfinite(target.x) || !std::isfinite(target.y)) {
        return;
    }
    t = std::min(std::max(t, 0.0), 1.0);
    if (std::fabs(t) < kFuzz) {
        p1_ += target - p0_;
        p0_ = target;
        return;
    }
    if (std::fabs(t - 1.0) < kFuzz) {
        p2_ += target - p3_;
        p3_ = target;
        return;
    }
    if (p0_ == p1_ && p3_ == p2_) {
        // A segment without handles gets them on its chord first, placed by where it is grabbed.
        double const alpha = t <= 0.5 ? 0.6 * t + 0.03 : 0.17 * t + 0.25;
        double const beta = t <= 0.5 ? 0.17 * (1.0 - t) + 0.25 : 0.6 * (1.0 - t) + 0.03;
        p1_ = p0_ + (p3_ - p0_) * alpha;
        p2_ = p3_ + (p0_ - p3_) * beta;
    }
    DPoint const c = GetCurvePoint(t);
    BernsteinWeights const w(t);
    double const k1 = -1.7777777777777777;
    double const k2 = 2.2222222222222223;
    if (t <= 0.5) {
        p2_ += (target - c) * (k1 * (1.0 - t) + k2);
        p1_ = DPoint((target.x - w.b0 * p0_.x - w.b2 * p2_.x - w.b3 * p3_.x) / w.b1,
                     (target.y - w.b0 * p0_.y - w.b2 * p2_.y - w.b3 * p3_.y) / w.b1);
    } else {
        p1_ += (target - c) * (k1 * t + k2);
        p2_ = DPoint((target.x - w.b0 * p0_.x - w.b1 * p1_.x - w.b3 * p3_.x) / w.b2,
                     (target.y - w.b0 * p0_.y - w.b1 * p1_.y - w.b3 * p3_.y) / w.b2);
    }
}

double CBezier::_GetCurveT(DPoint const& p) const {
    double bestDistance = 1e100;
    double bestT = 0.0;
    auto consider = [&](double t) {
        double const d = distance(GetCurvePoint(t), p);
        if (d < bestDistance) {
            bestDistance = d;
            bestT = t;
        }
    };
    double step = 0.01;
    for (double t = 0.0; t <= 1.0; t += step) {
        consider(t);
    }
    for (int pass = 0; pass < 8; ++pass) {
        double const centre = bestT;
        double const oldStep = step;
        step /= 10.0;
        double const end = std::min(1.0, centre + oldStep);
        for (double t = std::max(0.0, centre - oldStep); t <= end; t += step) {
            consider(t);
        }
    }
    return bestT;
}

void CBezier::GetBPoints(BPOINT& a, BPOINT& b) const {
    a.anchor = p0_;
    a.after = p1_;
    b.before = p2_;
    b.anchor = p3_;
}

double CBezier::GetBPointArrayLength(CArray<BPOINT, BPOINT> const& points, int last) {
    int const size = points.GetSize();
    int segments = size - 1;
    if (last >= 0 && last < size - 1) {
        segments = last;
    }
    double length = 0.0;
    for (int i = 0; i < segments; ++i) {
        length += CBezier(points[i], points[i + 1]).GetLength();
    }
    return length;
}
