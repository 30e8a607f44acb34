#pragma once

// Real roots of small polynomials on an interval, for the Bezier and box-form kernels.
// Coefficients are in the power basis, c[i] multiplying t^i. Nothing here allocates.

#include <cmath>
#include <cstddef>

namespace polyroots {

template <int N> inline double eval(double const* c, double t) {
    double v = c[N];
    for (int i = N - 1; i >= 0; --i) {
        v = v * t + c[i];
    }
    return v;
}

// Value and first derivative together (Horner on both).
template <int N> inline void evalWithDerivative(double const* c, double t, double& v, double& d) {
    v = c[N];
    d = 0.0;
    for (int i = N - 1; i >= 0; --i) {
        d = d * t + v;
        v = v * t + c[i];
    }
}

// Roots of c0 + c1 t + c2 t^2 strictly inside (lo, hi), ascending; returns their count (0 to 2).
// The cancellation-free form q = -(c1 + sign(c1) sqrt(disc)) / 2, roots q/c2 and c0/q, keeps both roots
// to a few ulps of relative error however small c2 is; a vanishing c2 falls back to the linear root.
// A negative discriminant gives none (a double root perturbed into a complex pair is not a sign change).
int quadraticRoots(double c0, double c1, double c2, double lo, double hi, double* out);

// Safeguarded Newton on [a, b] where the polynomial is monotone and changes sign (fa = p(a), fb = p(b)):
// each step keeps the bracket, falls back to bisection when Newton leaves it, and stops once a Newton step
// is below 1e-8 (Newton converges quadratically at a simple root, so the error after that step is of the
// order of its square, about 1e-16) or the bracket is one ulp wide. At most 80 steps, so non-finite input
// cannot hang it.
template <int N> double solveBracketed(double const* c, double a, double b, double fa, double fb) {
    bool const fallsAtA = fa > 0.0;
    double t = a + (b - a) * (fa / (fa - fb)); // regula falsi start
    if (!(t > a && t < b)) {
        t = 0.5 * (a + b);
    }
    for (int k = 0; k < 80; ++k) {
        double f, d;
        evalWithDerivative<N>(c, t, f, d);
        if (f == 0.0) {
            return t;
        }
        if ((f > 0.0) == fallsAtA) {
            a = t;
        } else {
            b = t;
        }
        double next = t - f / d;
        bool const newton = next > a && next < b;
        if (!newton) {
            next = 0.5 * (a + b);
        }
        double const step = std::fabs(next - t);
        t = next;
        if ((newton && step <= 1e-8) || !(b - a > 2.3e-16 * std::fabs(t) + 1e-300)) {
            break;
        }
    }
    return t;
}

// Roots of a degree-N polynomial in [lo, hi], ascending, each once, by the derivative cascade: the roots
// of p' (found the same way, down to the closed-form quadratic) cut [lo, hi] into pieces where p is
// monotone; a piece whose ends differ in sign holds exactly one simple root, found by solveBracketed.
// flo and fhi are p(lo) and p(hi) (the caller may know them exactly). An interior cut point where
// |p| <= zeroTol is itself reported as a (multiple) root. With risingOnly, only roots where p goes from
// negative to positive are reported (the minima of p's antiderivative). out must hold N + 1 values.
template <int N>
int cascadeRoots(double const* c, double lo, double hi, double flo, double fhi, double zeroTol,
                 bool risingOnly, double* out) {
    double d[N];
    for (int i = 0; i < N; ++i) {
        d[i] = (i + 1) * c[i + 1];
    }
    double cut[N];
    int m;
    if constexpr (N == 3) {
        m = quadraticRoots(d[0], d[1], d[2], lo, hi, cut);
    } else {
        m = cascadeRoots<N - 1>(d, lo, hi, eval<N - 1>(d, lo), eval<N - 1>(d, hi), 0.0, false, cut);
    }
    int count = 0;
    double a = lo;
    double fa = flo;
    if (fa == 0.0) {
        out[count++] = lo;
    }
    for (int k = 0; k <= m; ++k) {
        double b;
        double fb;
        if (k < m) {
            b = cut[k];
            if (!(b > a && b < hi)) {
                continue;
            }
            fb = eval<N>(c, b);
            if (std::fabs(fb) <= zeroTol) {
                fb = 0.0;
            }
        } else {
            b = hi;
            fb = fhi;
        }
        if (fb == 0.0) {
            if (count == 0 || out[count - 1] != b) {
                out[count++] = b;
            }
        } else if (fa != 0.0 && ((fa < 0.0) != (fb < 0.0)) && (!risingOnly || fa < 0.0)) {
            double const r = solveBracketed<N>(c, a, b, fa, fb);
            if (r == r && (count == 0 || out[count - 1] != r)) {
                out[count++] = r;
            }
        }
        a = b;
        fa = fb;
    }
    return count;
}

} // namespace polyroots
