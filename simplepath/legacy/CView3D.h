#pragma once

#include "simplepath/interfaces/CRect.h"
#include "simplepath/interfaces/DVector.h"
#include "simplepath/legacy/DRECT.h"

// The legacy family's homogeneous 4x4 view transform. Points are row vectors (x, y, z, 1) multiplied on
// the left of the matrix. Translations, scalings and rotations accumulate into one matrix; each new step
// is applied to a point before the steps accumulated so far. Points map forward with Transfer and back
// with Return, whose inverse matrix is computed on demand and cached until the matrix changes.
//
// Translate(tx, ty, tz) moves every point by (-tx, -ty, -tz): the view is shifted to the given origin.
// Every caller in the family relies on that sign.
class CView3D {
  public:
    using Matrix = double[4][4];
    using Vector = double[4];

    CView3D();
    // A copy takes the matrix only: its inverse is recomputed when first needed, and its vector starts
    // at (0, 0, 0, 1) rather than repeating the source's last result.
    CView3D(CView3D const& other);
    CView3D& operator=(CView3D const& other);

    // vector = (0, 0, 0, 1); matrix and inverse = identity.
    void Reset();
    void SetMat(Matrix const& m);

    // The forward matrix. Writing through the non-const reference counts as a change of the matrix: the
    // cached inverse is dropped.
    Matrix& mat();
    Matrix const& mat() const { return mat_; }
    // The inverse matrix, recomputed first when the matrix changed since. A singular matrix (or one with
    // a NaN or infinite entry) has no inverse; the identity stands in for it, so Return then hands
    // points back unchanged. IsInvertible tells the two cases apart.
    Matrix& imat();
    bool IsInvertible();

    // The result of the last Transfer or Return.
    Vector& vector() { return vector_; }
    Vector const& vector() const { return vector_; }
    double x() const { return vector_[0]; }
    double y() const { return vector_[1]; }
    double z() const { return vector_[2]; }
    double w() const { return vector_[3]; }
    // (x, y) rounded half away from zero: v becomes the truncation of v + 0.5 (v > 0) or v - 0.5 (v < 0).
    // Values beyond the 32-bit range saturate; NaN gives 0.
    tagPOINT point() const;

    // vector = (x, y, z, 1) * matrix in its first three components; w is set to 1 (no perspective
    // division).
    void Transfer(double x, double y, double z);
    // The same through the inverse matrix: maps a transferred point back.
    void Return(double x, double y, double z);

    // Each builds the step's matrix N and sets matrix = N * matrix.
    void Translate(double tx, double ty, double tz);
    void Scale(double sx, double sy, double sz);
    // About the z axis: (x, y) -> (x cos a - y sin a, x sin a + y cos a).
    void Rotate(double angle);
    // About x, then y, then z; an angle below 1e-8 in magnitude is no rotation at all.
    void Rotate(double ax, double ay, double az);
    // matrix = matrix * other.matrix: other's transform applies after this one.
    CView3D& operator*=(CView3D const& other);

    // The 2-D reading of the transform. Each works through Transfer and so overwrites vector.
    double GetXOffset();
    double GetYOffset();
    double GetXScale();
    double GetYScale();
    double GetAngle(); // radians, of the image of the x axis

    // Fits from onto to without mirroring: from's centre lands on to's centre and its width and height
    // become to's (a DRECT read as left, top, right, bottom). A from of zero width or height makes the
    // scale infinite and the matrix singular.
    void MakeTransform(DRECT const& from, DRECT const& to);

  private:
    void Premultiply(Matrix const& n);
    // Transfer(x, y, 0) - Transfer(0, 0, 0), leaving the vector at Transfer(x, y, 0).
    DVector ImageOfStep(double x, double y);
    void Invert();

    Vector vector_;
    Matrix mat_;
    Matrix imat_;
    bool inverseValid_ = true;
    bool invertible_ = true;
};
