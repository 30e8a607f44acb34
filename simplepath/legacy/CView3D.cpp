#include "simplepath/legacy/CView3D.h"

#include "simplepath/interfaces/detail/Tolerances.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace {

using Matrix = CView3D::Matrix;

constexpr double kAngleTolerance = simplepath_tolerance::kLegacyFuzz;

void setIdentity(Matrix& m) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            m[r][c] = r == c ? 1.0 : 0.0;
        }
    }
}

void copyMatrix(Matrix const& from, Matrix& to) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            to[r][c] = from[r][c];
        }
    }
}

// out = a * b; out may not alias a or b.
void multiply(Matrix const& a, Matrix const& b, Matrix& out) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k) {
                sum += a[r][k] * b[k][c];
            }
            out[r][c] = sum;
        }
    }
}

// Rotation about axis 1 (x), 2 (y) or 3 (z) for row vectors.
void setRotation(int axis, double angle, Matrix& m) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            m[r][c] = 0.0;
        }
    }
    m[axis - 1][axis - 1] = 1.0;
    m[3][3] = 1.0;
    int const i = axis % 3;
    int const j = (i + 1) % 3;
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    m[i][i] = c;
    m[i][j] = s;
    m[j][j] = c;
    m[j][i] = -s;
}

// (x, y, z, 1) * m in its first three components, w = 1.
void transform(Matrix const& m, double x, double y, double z, CView3D::Vector& out) {
    for (int c = 0; c < 3; ++c) {
        out[c] = x * m[0][c] + y * m[1][c] + z * m[2][c] + m[3][c];
    }
    out[3] = 1.0;
}

// Half away from zero, saturating at the 32-bit range.
std::int32_t roundHalfAway(double v) {
    double r = 0.0;
    if (v > 0.0) {
        r = std::trunc(v + 0.5);
    } else if (v < 0.0) {
        r = std::trunc(v - 0.5);
    } else {
        return 0; // zero, and NaN
    }
    if (r >= static_cast<double>(std::numeric_limits<std::int32_t>::max())) {
        return std::numeric_limits<std::int32_t>::max();
    }
    if (r <= static_cast<double>(std::numeric_limits<std::int32_t>::min())) {
        return std::numeric_limits<std::int32_t>::min();
    }
    return static_cast<std::int32_t>(r);
}

} // namespace

CView3D::CView3D() {
    Reset();
}

CView3D::CView3D(CView3D const& other) {
    Reset();
    SetMat(other.mat_);
}

CView3D& CView3D::operator=(CView3D const& other) {
    SetMat(other.mat_);
    return *this;
}

void CView3D::Reset() {
    vector_[0] = vector_[1] = vector_[2] = 0.0;
    vector_[3] = 1.0;
    setIdentity(mat_);
    setIdentity(imat_);
    inverseValid_ = true;
    invertible_ = true;
}

void CView3D::SetMat(Matrix const& m) {
    if (&m != &mat_) {
        copyMatrix(m, mat_);
    }
    inverseValid_ = false;
}

CView3D::Matrix& CView3D::mat() {
    inverseValid_ = false;
    return mat_;
}

CView3D::Matrix& CView3D::imat() {
    if (!inverseValid_) {
        Invert();
    }
    return imat_;
}

bool CView3D::IsInvertible() {
    imat();
    return invertible_;
}

// Gauss-Jordan elimination on [mat | identity] with partial pivoting (the largest remaining entry of
// each column becomes the pivot), which keeps the multipliers at most 1 in magnitude. For the
// well-conditioned matrices a view is made of, mat * imat is the identity to within a few units of
// rounding times the condition number. A column with no non-zero pivot, a non-finite entry or an
// overflowing result marks the matrix singular, and the identity stands in for the inverse.
void CView3D::Invert() {
    double a[4][8];
    bool finite = true;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            a[r][c] = mat_[r][c];
            a[r][c + 4] = r == c ? 1.0 : 0.0;
            finite = finite && std::isfinite(mat_[r][c]);
        }
    }
    invertible_ = finite;
    for (int col = 0; col < 4 && invertible_; ++col) {
        int pivot = col;
        for (int r = col + 1; r < 4; ++r) {
            if (std::fabs(a[r][col]) > std::fabs(a[pivot][col])) {
                pivot = r;
            }
        }
        if (a[pivot][col] == 0.0) {
            invertible_ = false;
            break;
        }
        if (pivot != col) {
            for (int c = 0; c < 8; ++c) {
                std::swap(a[pivot][c], a[col][c]);
            }
        }
        double const p = a[col][col];
        for (int c = 0; c < 8; ++c) {
            a[col][c] /= p;
        }
        for (int r = 0; r < 4; ++r) {
            double const factor = a[r][col];
            if (r == col || factor == 0.0) {
                continue;
            }
            for (int c = 0; c < 8; ++c) {
                a[r][c] -= factor * a[col][c];
            }
        }
    }
    for (int r = 0; r < 4 && invertible_; ++r) {
        for (int c = 0; c < 4; ++c) {
            invertible_ = invertible_ && std::isfinite(a[r][c + 4]);
        }
    }
    if (invertible_) {
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c) {
                imat_[r][c] = a[r][c + 4];
            }
        }
    } else {
        setIdentity(imat_);
    }
    inverseValid_ = true;
}

tagPOINT CView3D::point() const {
    tagPOINT p;
    p.x = roundHalfAway(vector_[0]);
    p.y = roundHalfAway(vector_[1]);
    return p;
}

void CView3D::Transfer(double x, double y, double z) {
    transform(mat_, x, y, z, vector_);
}

void CView3D::Return(double x, double y, double z) {
    transform(imat(), x, y, z, vector_);
}

void CView3D::Premultiply(Matrix const& n) {
    Matrix product;
    multiply(n, mat_, product);
    SetMat(product);
}

void CView3D::Translate(double tx, double ty, double tz) {
    Matrix n;
    setIdentity(n);
    n[3][0] = -tx;
    n[3][1] = -ty;
    n[3][2] = -tz;
    Premultiply(n);
}

void CView3D::Scale(double sx, double sy, double sz) {
    Matrix n;
    setIdentity(n);
    n[0][0] = sx;
    n[1][1] = sy;
    n[2][2] = sz;
    Premultiply(n);
}

void CView3D::Rotate(double angle) {
    Matrix n;
    setRotation(3, angle, n);
    Premultiply(n);
}

void CView3D::Rotate(double ax, double ay, double az) {
    Matrix n;
    setIdentity(n);
    double const angles[3] = {ax, ay, az};
    for (int axis = 1; axis <= 3; ++axis) {
        if (std::fabs(angles[axis - 1]) < kAngleTolerance) {
            continue;
        }
        Matrix r;
        Matrix product;
        setRotation(axis, angles[axis - 1], r);
        multiply(r, n, product);
        copyMatrix(product, n);
    }
    Premultiply(n);
}

CView3D& CView3D::operator*=(CView3D const& other) {
    Matrix product;
    multiply(mat_, other.mat_, product);
    SetMat(product);
    return *this;
}

double CView3D::GetXOffset() {
    Transfer(0.0, 0.0, 0.0);
    return vector_[0];
}

double CView3D::GetYOffset() {
    Transfer(0.0, 0.0, 0.0);
    return vector_[1];
}

DVector CView3D::ImageOfStep(double x, double y) {
    Transfer(0.0, 0.0, 0.0);
    double const x0 = vector_[0];
    double const y0 = vector_[1];
    Transfer(x, y, 0.0);
    return DVector(vector_[0] - x0, vector_[1] - y0);
}

double CView3D::GetXScale() {
    return ImageOfStep(1.0, 0.0).length();
}

double CView3D::GetYScale() {
    return ImageOfStep(0.0, 1.0).length();
}

double CView3D::GetAngle() {
    DVector const image = ImageOfStep(1.0, 0.0);
    return std::atan2(image.y, image.x);
}

void CView3D::MakeTransform(DRECT const& from, DRECT const& to) {
    Reset();
    double const sx = std::fabs(to.right - to.left) / std::fabs(from.right - from.left);
    double const sy = std::fabs(to.bottom - to.top) / std::fabs(from.bottom - from.top);
    double const fromX = (from.left + from.right) / 2;
    double const fromY = (from.top + from.bottom) / 2;
    double const toX = (to.left + to.right) / 2;
    double const toY = (to.top + to.bottom) / 2;
    CView3D toOrigin;
    toOrigin.Translate(fromX, fromY, 0.0); // moves by -centre of from
    CView3D scale;
    scale.Scale(sx, sy, 1.0);
    CView3D toTarget;
    toTarget.Translate(-toX, -toY, 0.0); // moves by +centre of to
    *this *= toOrigin;
    *this *= scale;
    *this *= toTarget;
}
