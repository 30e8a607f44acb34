#pragma once

#include "simplepath/interfaces/P2DMatrix.h"

#include <cmath>

// An affine transform built step by step. Each step composes after what the transform already does.
class P2DTrans {
  public:
    P2DTrans() = default;
    // Maps (x, y) to (a*x + b*y + tx, c*x + d*y + ty).
    P2DTrans(double a, double b, double c, double d, double tx = 0.0, double ty = 0.0)
        : matrix_(DPoint(tx, ty), DVector(a, c), DVector(b, d)) {}
    explicit P2DTrans(P2DMatrix<double> const& m) : matrix_(m) {}

    P2DTrans& xScale(double s) {
        return then(P2DMatrix<double>(DPoint(), DVector(s, 0.0), DVector(0.0, 1.0)));
    }
    P2DTrans& yScale(double s) {
        return then(P2DMatrix<double>(DPoint(), DVector(1.0, 0.0), DVector(0.0, s)));
    }
    P2DTrans& rotate(double radians) {
        double const c = std::cos(radians);
        double const s = std::sin(radians);
        return then(P2DMatrix<double>(DPoint(), DVector(c, s), DVector(-s, c)));
    }
    P2DTrans& translate(DVector const& v) {
        return then(P2DMatrix<double>(DPoint(v.x, v.y), DVector(1.0, 0.0), DVector(0.0, 1.0)));
    }

    DVector operator*(DVector const& v) const { return matrix_ * v; }
    DPoint operator*(DPoint const& p) const { return matrix_ * p; }
    // The right operand applies first, as for matrices.
    P2DTrans operator*(P2DTrans const& t) const { return P2DTrans(matrix_ * t.matrix_); }
    bool operator==(P2DTrans const& t) const { return matrix_ == t.matrix_; }
    bool operator!=(P2DTrans const& t) const { return matrix_ != t.matrix_; }

    // The inverse transform; a singular transform gives the identity.
    P2DTrans inverse() const { return P2DTrans(matrix_.inverse()); }
    P2DMatrix<double> const& matrix() const { return matrix_; }

  private:
    P2DTrans& then(P2DMatrix<double> const& step) {
        matrix_ = step * matrix_;
        return *this;
    }

    P2DMatrix<double> matrix_;
};
