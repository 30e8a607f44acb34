#pragma once

// The arc length's SIMD lanes: pairs of doubles (one SSE2 register where there is one) and N pairs side by
// side, with the few operations the quadrature and its planning need. The packed and the scalar form apply
// the same IEEE operations lane by lane.

#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
// Where the compiler can build a function for a wider instruction set than the rest of the library, the
// quadrature also has an AVX version, chosen at run time when the processor has AVX.
#if defined(__SSE2__) && defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define SIMPLEPATH_LENGTH_AVX 1
#include <immintrin.h>
#endif

namespace simplepath_detail {

// Two doubles processed together: one SSE2 register where available (every x86-64), else two scalars.
// The arc-length quadrature is bound by square roots, and a packed square root costs about as much as one;
// its planning runs two curves side by side, one per lane, without branches.
struct Lanes {
#if defined(__SSE2__)
    __m128d v;
    Lanes() = default;
    Lanes(__m128d w) : v(w) {}
    Lanes(double a, double b) : v(_mm_set_pd(b, a)) {}
    explicit Lanes(double a) : v(_mm_set1_pd(a)) {}
    static Lanes load(double const* p) {
        return _mm_loadu_pd(p);
    }
    double lo() const {
        return _mm_cvtsd_f64(v);
    }
    double hi() const {
        return _mm_cvtsd_f64(_mm_unpackhi_pd(v, v));
    }
    friend Lanes operator+(Lanes a, Lanes b) {
        return _mm_add_pd(a.v, b.v);
    }
    friend Lanes operator-(Lanes a, Lanes b) {
        return _mm_sub_pd(a.v, b.v);
    }
    friend Lanes operator*(Lanes a, Lanes b) {
        return _mm_mul_pd(a.v, b.v);
    }
    friend Lanes operator/(Lanes a, Lanes b) {
        return _mm_div_pd(a.v, b.v);
    }
    friend Lanes sqrt(Lanes a) {
        return _mm_sqrt_pd(a.v);
    }
    friend Lanes min(Lanes a, Lanes b) {
        return _mm_min_pd(a.v, b.v);
    }
    friend Lanes max(Lanes a, Lanes b) {
        return _mm_max_pd(a.v, b.v);
    }
    friend Lanes abs(Lanes a) {
        return _mm_andnot_pd(_mm_set1_pd(-0.0), a.v);
    }
    // a with its sign flipped where s is negative (or -0.0)
    friend Lanes flipBySign(Lanes a, Lanes s) {
        return _mm_xor_pd(a.v, _mm_and_pd(s.v, _mm_set1_pd(-0.0)));
    }
    // per lane: c ? a : b, for the conditions below
    friend Lanes select(Lanes c, Lanes a, Lanes b) {
        return _mm_or_pd(_mm_and_pd(c.v, a.v), _mm_andnot_pd(c.v, b.v));
    }
    friend Lanes operator<(Lanes a, Lanes b) {
        return _mm_cmplt_pd(a.v, b.v);
    }
    friend Lanes operator>=(Lanes a, Lanes b) {
        return _mm_cmpge_pd(a.v, b.v);
    }
    friend Lanes operator>(Lanes a, Lanes b) {
        return _mm_cmpgt_pd(a.v, b.v);
    }
    friend Lanes operator&(Lanes a, Lanes b) {
        return _mm_and_pd(a.v, b.v);
    }
    // 2^-e for the power of two 2^e <= a < 2^(e+1), by the exponent bits alone (exact, no division); 2^1023
    // for zero and subnormal a, and 0.0 from a >= 2^1023 on
    friend Lanes reciprocalPowerOfTwo(Lanes a) {
        __m128i const exponent =
            _mm_castpd_si128(_mm_and_pd(a.v, _mm_set1_pd(std::numeric_limits<double>::infinity())));
        return _mm_castsi128_pd(_mm_sub_epi64(_mm_set1_epi64x(0x7FE0000000000000), exponent));
    }
    // 1.0 where the condition holds, else 0.0
    friend Lanes ones(Lanes c) {
        return _mm_and_pd(c.v, _mm_set1_pd(1.0));
    }
#else
    // Conditions are 1.0 (true) and 0.0 (false).
    double l, h;
    Lanes() = default;
    Lanes(double a, double b) : l(a), h(b) {}
    explicit Lanes(double a) : l(a), h(a) {}
    static Lanes load(double const* p) {
        return {p[0], p[1]};
    }
    double lo() const {
        return l;
    }
    double hi() const {
        return h;
    }
    template <class F> friend Lanes each(Lanes a, Lanes b, F f) {
        return {f(a.l, b.l), f(a.h, b.h)};
    }
    friend Lanes operator+(Lanes a, Lanes b) {
        return each(a, b, [](double x, double y) { return x + y; });
    }
    friend Lanes operator-(Lanes a, Lanes b) {
        return each(a, b, [](double x, double y) { return x - y; });
    }
    friend Lanes operator*(Lanes a, Lanes b) {
        return each(a, b, [](double x, double y) { return x * y; });
    }
    friend Lanes operator/(Lanes a, Lanes b) {
        return each(a, b, [](double x, double y) { return x / y; });
    }
    friend Lanes sqrt(Lanes a) {
        return {std::sqrt(a.l), std::sqrt(a.h)};
    }
    friend Lanes min(Lanes a, Lanes b) { // as minpd: b unless a < b
        return each(a, b, [](double x, double y) { return x < y ? x : y; });
    }
    friend Lanes max(Lanes a, Lanes b) {
        return each(a, b, [](double x, double y) { return x > y ? x : y; });
    }
    friend Lanes abs(Lanes a) {
        return {std::fabs(a.l), std::fabs(a.h)};
    }
    friend Lanes flipBySign(Lanes a, Lanes s) {
        return each(a, s, [](double x, double y) { return std::signbit(y) ? -x : x; });
    }
    friend Lanes select(Lanes c, Lanes a, Lanes b) {
        return {c.l != 0.0 ? a.l : b.l, c.h != 0.0 ? a.h : b.h};
    }
    friend Lanes operator<(Lanes a, Lanes b) {
        return each(a, b, [](double x, double y) { return x < y ? 1.0 : 0.0; });
    }
    friend Lanes operator>=(Lanes a, Lanes b) {
        return each(a, b, [](double x, double y) { return x >= y ? 1.0 : 0.0; });
    }
    friend Lanes operator>(Lanes a, Lanes b) {
        return each(a, b, [](double x, double y) { return x > y ? 1.0 : 0.0; });
    }
    friend Lanes operator&(Lanes a, Lanes b) {
        return a * b;
    }
    friend Lanes reciprocalPowerOfTwo(Lanes a) {
        auto one = [](double x) {
            return x < std::numeric_limits<double>::min()
                       ? 0x1p1023
                       : (x < 0x1p1023 ? std::ldexp(1.0, -std::ilogb(x)) : 0.0);
        };
        return {one(a.l), one(a.h)};
    }
    friend Lanes ones(Lanes c) {
        return c;
    }
#endif
};

// N Lanes side by side, 2N curves: the planning below is one long chain of dependent square roots and
// divisions per curve, and running N pairs through it in step gives the processor N independent chains to
// interleave (the reorder window holds less than one pair's whole chain).
template <int N> struct Wide {
    Lanes p[N];
    Wide() = default;
    explicit Wide(double a) {
        for (Lanes& l : p) {
            l = Lanes(a);
        }
    }
    template <class F> friend Wide map(Wide const& a, Wide const& b, F f) {
        Wide r;
        for (int i = 0; i < N; ++i) {
            r.p[i] = f(a.p[i], b.p[i]);
        }
        return r;
    }
    friend Wide operator+(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return x + y; });
    }
    friend Wide operator-(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return x - y; });
    }
    friend Wide operator*(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return x * y; });
    }
    friend Wide operator/(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return x / y; });
    }
    friend Wide operator<(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return x < y; });
    }
    friend Wide operator>=(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return x >= y; });
    }
    friend Wide operator>(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return x > y; });
    }
    friend Wide operator&(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return x & y; });
    }
    friend Wide min(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return min(x, y); });
    }
    friend Wide max(Wide const& a, Wide const& b) {
        return map(a, b, [](Lanes x, Lanes y) { return max(x, y); });
    }
    friend Wide flipBySign(Wide const& a, Wide const& s) {
        return map(a, s, [](Lanes x, Lanes y) { return flipBySign(x, y); });
    }
    friend Wide sqrt(Wide const& a) {
        return map(a, a, [](Lanes x, Lanes) { return sqrt(x); });
    }
    friend Wide abs(Wide const& a) {
        return map(a, a, [](Lanes x, Lanes) { return abs(x); });
    }
    friend Wide ones(Wide const& c) {
        return map(c, c, [](Lanes x, Lanes) { return ones(x); });
    }
    friend Wide reciprocalPowerOfTwo(Wide const& a) {
        return map(a, a, [](Lanes x, Lanes) { return reciprocalPowerOfTwo(x); });
    }
    friend Wide select(Wide const& c, Wide const& a, Wide const& b) {
        Wide r;
        for (int i = 0; i < N; ++i) {
            r.p[i] = select(c.p[i], a.p[i], b.p[i]);
        }
        return r;
    }
};

} // namespace simplepath_detail
