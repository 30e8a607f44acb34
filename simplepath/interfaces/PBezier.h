#pragma once

#include "simplepath/interfaces/DPoint.h"

#include <vector>

// One cubic Bezier segment: P0 and P3 are its ends, P1 and P2 its control points.
// A plain value type; copying is four point copies. Every query is allocation-free except where an output
// vector grows.
class PBezier {
  public:
    PBezier() = default;
    PBezier(DPoint const& p0, DPoint const& p1, DPoint const& p2, DPoint const& p3) : p_{p0, p1, p2, p3} {}

    // Control point i, 0 to 3. An index out of range is clamped to the nearest end rather than read past.
    DPoint& operator[](int i) { return p_[clampIndex(i)]; }
    DPoint const& operator[](int i) const { return p_[clampIndex(i)]; }

    bool operator==(PBezier const& b) const {
        return p_[0] == b.p_[0] && p_[1] == b.p_[1] && p_[2] == b.p_[2] && p_[3] == b.p_[3];
    }
    bool operator!=(PBezier const& b) const { return !(*this == b); }

    // The point at t, by the Bernstein form. The weights of P1 and P2 vanish exactly at t = 0 and t = 1,
    // so bValue(0) is P0 and bValue(1) is P3 bit for bit (for finite control points).
    DPoint bValue(double t) const {
        double const s = 1.0 - t;
        double const b0 = s * s * s;
        double const b1 = 3.0 * s * s * t;
        double const b2 = 3.0 * s * t * t;
        double const b3 = t * t * t;
        return {b0 * p_[0].x + b1 * p_[1].x + b2 * p_[2].x + b3 * p_[3].x,
                b0 * p_[0].y + b1 * p_[1].y + b2 * p_[2].y + b3 * p_[3].y};
    }

    // dB/dt at t: three times the quadratic Bezier of the control polygon's differences.
    DVector derivative(double t) const {
        double const s = 1.0 - t;
        double const w0 = 3.0 * s * s;
        double const w1 = 6.0 * s * t;
        double const w2 = 3.0 * t * t;
        DVector const d0 = p_[1] - p_[0];
        DVector const d1 = p_[2] - p_[1];
        DVector const d2 = p_[3] - p_[2];
        return {w0 * d0.x + w1 * d1.x + w2 * d2.x, w0 * d0.y + w1 * d1.y + w2 * d2.y};
    }

    // de Casteljau subdivision at t. left runs P0 -> C(t), right runs C(t) -> P3; both hold the very same
    // C(t). Each interpolation is (1-t)*a + t*b, exact at both ends, so t = 0 and t = 1 reproduce the ends.
    // left and right may alias *this.
    void split(double t, PBezier& left, PBezier& right) const {
        double const s = 1.0 - t;
        DPoint const p0 = p_[0], p1 = p_[1], p2 = p_[2], p3 = p_[3];
        DPoint const a = lerp(p0, p1, s, t);
        DPoint const b = lerp(p1, p2, s, t);
        DPoint const c = lerp(p2, p3, s, t);
        DPoint const d = lerp(a, b, s, t);
        DPoint const e = lerp(b, c, s, t);
        DPoint const m = lerp(d, e, s, t);
        left.p_[0] = p0;
        left.p_[1] = a;
        left.p_[2] = d;
        left.p_[3] = m;
        right.p_[0] = m;
        right.p_[1] = e;
        right.p_[2] = c;
        right.p_[3] = p3;
    }

    // Arc length, relative error at most 1e-12 (Gauss-Legendre on pieces sized from the zeros of B'(t)
    // continued to complex t).
    double length() const;

    // Appends a flattening from P0 to P3 inclusive whose distance from the curve never exceeds tolerance,
    // with a point count from an analytic bound (see the definition for the derivation).
    void getPolyline(double tolerance, std::vector<DPoint>& out) const;

    // Folds the curve's exact extent (ends and the derivative's zeros) into the four values.
    void localMinMax(double& minX, double& minY, double& maxX, double& maxY) const;

    // top: the curve point of greatest y, bottom: of least y; ties go to the smaller t.
    void localTopBottom(DPoint& top, DPoint& bottom) const;

    // The t of the curve point nearest p when it lies strictly closer than tolerance, else -1.0.
    // start is accepted for callers that track a previous answer; the result does not depend on it.
    double findParameter(DPoint const& p, double start, double tolerance) const;

    // The t in [0, 1] of the globally nearest curve point to p.
    double findNearestPointTValue(DPoint const& p) const;

  private:
    static int clampIndex(int i) { return i < 0 ? 0 : (i > 3 ? 3 : i); }
    static DPoint lerp(DPoint const& a, DPoint const& b, double s, double t) {
        return {s * a.x + t * b.x, s * a.y + t * b.y};
    }

    DPoint p_[4];
};

// Appends, ascending and each once, the t in [0, 1] where b meets the x-axis (y(t) = 0), tangencies
// included. A curve lying wholly on the axis appends 0.0 and 1.0.
void intersectBezierWithXAxis(PBezier const& b, std::vector<double>& params);
