#pragma once

#include "simplepath/interfaces/DPoint.h"

// A 2-D affine matrix in frame form: p' = origin + p.x * xAxis + p.y * yAxis.
// As a 3x3 matrix: row 0 = (xAxis.x, yAxis.x, origin.x), row 1 = (xAxis.y, yAxis.y, origin.y), row 2 = (0, 0,
// 1).
template <class T> class P2DMatrix {
  public:
    P2DMatrix() = default;
    P2DMatrix(DPoint const& originPoint, DVector const& xAxisVector, DVector const& yAxisVector)
        : origin_(originPoint), xAxis_(xAxisVector), yAxis_(yAxisVector) {}

    DPoint operator*(DPoint const& p) const {
        return {origin_.x + p.x * xAxis_.x + p.y * yAxis_.x, origin_.y + p.x * xAxis_.y + p.y * yAxis_.y};
    }
    DVector operator*(DVector const& v) const {
        return {v.x * xAxis_.x + v.y * yAxis_.x, v.x * xAxis_.y + v.y * yAxis_.y};
    }
    // The right operand applies first: (A * B) * p == A * (B * p).
    P2DMatrix operator*(P2DMatrix const& m) const {
        return {*this * m.origin_, *this * m.xAxis_, *this * m.yAxis_};
    }
    bool operator==(P2DMatrix const& m) const {
        return origin_ == m.origin_ && xAxis_ == m.xAxis_ && yAxis_ == m.yAxis_;
    }
    bool operator!=(P2DMatrix const& m) const { return !(*this == m); }

    T determinant() const { return xAxis_.cross(yAxis_); }

    // The inverse map. A singular (or non-finite) matrix has none; it then gives the identity.
    P2DMatrix inverse() const {
        T const det = determinant();
        if (det == 0.0 || !std::isfinite(det)) {
            return P2DMatrix();
        }
        DVector const ix(yAxis_.y / det, -xAxis_.y / det);
        DVector const iy(-yAxis_.x / det, xAxis_.x / det);
        P2DMatrix const linear(DPoint(), ix, iy);
        DVector const o = linear * DVector(origin_.x, origin_.y);
        return {DPoint(-o.x, -o.y), ix, iy};
    }

    // Element (row, col) of the 3x3 form; out-of-range indices read the homogeneous row/column.
    T element(int row, int col) const {
        if (row == 0) {
            return col == 0 ? xAxis_.x : col == 1 ? yAxis_.x : origin_.x;
        }
        if (row == 1) {
            return col == 0 ? xAxis_.y : col == 1 ? yAxis_.y : origin_.y;
        }
        return col == 2 ? 1.0 : 0.0;
    }
    DPoint const& origin() const { return origin_; }
    DVector const& xAxis() const { return xAxis_; }
    DVector const& yAxis() const { return yAxis_; }

  private:
    DPoint origin_{0.0, 0.0};
    DVector xAxis_{1.0, 0.0};
    DVector yAxis_{0.0, 1.0};
};
