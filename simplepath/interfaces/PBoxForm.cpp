#include "simplepath/interfaces/PBoxForm.h"

#include <algorithm>
#include <cmath>

namespace {

// Position of x in [lo, hi] as a fraction; a zero-width range maps everything to 0.
double fraction(double x, double lo, double hi) {
    double const w = hi - lo;
    return w != 0.0 ? (x - lo) / w : 0.0;
}

PBezier straight(DPoint const& a, DPoint const& b) {
    DVector const third = (b - a) / 3.0;
    return {a, a + third, b - third, b};
}

} // namespace

PBoxForm::PBoxForm()
    : PBoxForm(DPoint(0, 0), DPoint(1, 1), DPoint(0, 0), DPoint(1, 0), DPoint(0, 1), DPoint(1, 1)) {}

PBoxForm::PBoxForm(DPoint const& min, DPoint const& max, DPoint const& c00, DPoint const& c10,
                   DPoint const& c01, DPoint const& c11)
    : min_(min), max_(max), c00_(c00), c10_(c10), c01_(c01), c11_(c11), bottom_(straight(c00, c10)),
      top_(straight(c01, c11)), left_(straight(c00, c01)), right_(straight(c10, c11)), curved_(false) {}

PBoxForm::PBoxForm(DPoint const& min, DPoint const& max, PBezier const& bottom, PBezier const& top,
                   PBezier const& left, PBezier const& right)
    : min_(min), max_(max), c00_(bottom[0]), c10_(bottom[3]), c01_(top[0]), c11_(top[3]), bottom_(bottom),
      top_(top), left_(left), right_(right), curved_(true) {}

DPoint PBoxForm::bilinear(double u, double v, DVector* du, DVector* dv) const {
    DVector const e = c10_ - c00_;
    DVector const f = c01_ - c00_;
    DVector const g = (c11_ - c01_) - e; // twist
    if (du != nullptr) {
        *du = e + v * g;
        *dv = f + u * g;
    }
    return c00_ + (u * e + v * (f + u * g));
}

DPoint PBoxForm::patch(double u, double v, DVector* du, DVector* dv) const {
    if (!curved_) {
        return bilinear(u, v, du, dv);
    }
    // Coons patch: the ruled surfaces between opposite sides, less the bilinear blend of the corners.
    // Everything is taken relative to c00 to keep precision for envelopes far from the origin.
    DPoint const b = bottom_.bValue(u);
    DPoint const t = top_.bValue(u);
    DPoint const l = left_.bValue(v);
    DPoint const r = right_.bValue(v);
    DVector bl;
    DVector bv;
    DPoint const corner = bilinear(u, v, &bl, &bv);
    DVector const sum = (1.0 - v) * (b - c00_) + v * (t - c00_) + (1.0 - u) * (l - c00_) + u * (r - c00_);
    if (du != nullptr) {
        *du = (1.0 - v) * bottom_.derivative(u) + v * top_.derivative(u) + (r - l) - bl;
        *dv = (t - b) + (1.0 - u) * left_.derivative(v) + u * right_.derivative(v) - bv;
    }
    return c00_ + (sum - (corner - c00_));
}

void PBoxForm::xform(PBoxPoint& p) const {
    DPoint const q = patch(fraction(p.x, min_.x, max_.x), fraction(p.y, min_.y, max_.y), nullptr, nullptr);
    p.x = q.x;
    p.y = q.y;
}

DPoint PBoxForm::xform(DPoint const& p) const {
    PBoxPoint q(p);
    xform(q);
    return {q.x, q.y};
}

// Newton's method on S(u, v) = target with the exact Jacobian. A step that does not reduce the residual is
// halved (up to 30 times), so the iteration cannot run away; it stops when the residual is within 1e-14 of
// the envelope's size, when a step no longer moves (u, v) measurably, or after 60 steps, and leaves the best
// (u, v) it met. Where the envelope does not fold, the residual converges quadratically and (u, v) is exact
// to far better than 1e-9; where it folds (singular Jacobian) the best estimate stays.
template <class Map> void PBoxForm::newton(Map const& map, DPoint const& target, double& u, double& v) const {
    double const size = std::max(std::max(std::fabs(c10_.x - c00_.x) + std::fabs(c10_.y - c00_.y),
                                          std::fabs(c01_.x - c00_.x) + std::fabs(c01_.y - c00_.y)),
                                 std::fabs(c11_.x - c00_.x) + std::fabs(c11_.y - c00_.y));
    double const goal = 1e-14 * size;
    DVector du;
    DVector dv;
    DVector r = map(u, v, &du, &dv) - target;
    double res = r.squaredLength();
    for (int k = 0; k < 60 && res > goal * goal; ++k) {
        double const det = du.cross(dv);
        if (!(std::fabs(det) > 0.0) || !std::isfinite(det)) {
            return;
        }
        double const su = r.cross(dv) / det;
        double const sv = du.cross(r) / det;
        double step = 1.0;
        bool improved = false;
        DVector ndu;
        DVector ndv;
        for (int h = 0; h < 30; ++h, step *= 0.5) {
            double const nu = u - step * su;
            double const nv = v - step * sv;
            DVector const nr = map(nu, nv, &ndu, &ndv) - target;
            double const nres = nr.squaredLength();
            if (nres < res) {
                improved = true;
                double const moved = std::fabs(nu - u) + std::fabs(nv - v);
                u = nu;
                v = nv;
                r = nr;
                res = nres;
                du = ndu;
                dv = ndv;
                if (moved <= 1e-16 * (1.0 + std::fabs(u) + std::fabs(v))) {
                    return;
                }
                break;
            }
        }
        if (!improved) {
            return;
        }
    }
}

// Method: a good start from the corners' bilinear map (itself solved by Newton from the box's centre), then
// Newton on the full patch. Non-finite input is left as it is.
void PBoxForm::xforminv(PBoxPoint& p) const {
    DPoint const target(p.x, p.y);
    if (!std::isfinite(target.x) || !std::isfinite(target.y)) {
        return;
    }
    double u = 0.5;
    double v = 0.5;
    newton([this](double a, double b, DVector* du, DVector* dv) { return bilinear(a, b, du, dv); }, target, u,
           v);
    if (curved_) {
        newton([this](double a, double b, DVector* du, DVector* dv) { return patch(a, b, du, dv); }, target,
               u, v);
    }
    double const w = max_.x - min_.x;
    double const h = max_.y - min_.y;
    p.x = w != 0.0 ? min_.x + u * w : min_.x;
    p.y = h != 0.0 ? min_.y + v * h : min_.y;
}

DPoint PBoxForm::xforminv(DPoint const& p) const {
    PBoxPoint q(p);
    xforminv(q);
    return {q.x, q.y};
}
