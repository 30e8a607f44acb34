// Arc length of cubic Bezier segments: Gauss-Legendre quadrature of the speed |B'(t)| on pieces sized by
// the singularities of its continuation to complex t.

#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/detail/GaussLegendreRules.h"
#include "simplepath/interfaces/detail/Lanes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using simplepath_detail::Lanes;
using simplepath_detail::Wide;

// Power-basis derivative B'(t) = e0 + e1 t + e2 t^2 (vector coefficients).
struct Hodograph {
    DVector e0, e1, e2;
    Hodograph() = default;
    explicit Hodograph(PBezier const& b) {
        DVector const d0 = b[1] - b[0];
        DVector const d1 = b[2] - b[1];
        DVector const d2 = b[3] - b[2];
        e0 = 3.0 * d0;
        e1 = 6.0 * (d1 - d0);
        e2 = 3.0 * ((d2 - d1) - (d1 - d0));
    }
    bool finite() const { return std::isfinite(e0.x + e0.y + e1.x + e1.y + e2.x + e2.y); }
};

// The rules and their thresholds (detail/GaussLegendreRules.h, generated with its sources named). Measured
// with one or two singularities placed anywhere on a rule's threshold ellipse, the error is at most about
// 0.75 rho^-2n / n (less for the wider rules), so about 7e-14 for every rule.
using NodeQuad = simplepath_detail::GaussNodeQuad;
constexpr auto const& kNodes = simplepath_detail::kGaussNodes;
constexpr auto const& kRuleMinA = simplepath_detail::kGaussRuleMinA;
constexpr int kRuleCount = simplepath_detail::kGaussRuleCount;

// Rule k on [a, a + width], two node pairs per step with separate sums (the square roots are independent).
double gauss(Hodograph const& h, int k, double a, double width) {
    Lanes const e0x(h.e0.x), e0y(h.e0.y), e1x(h.e1.x), e1y(h.e1.y), e2x(h.e2.x), e2y(h.e2.y);
    Lanes const origin(a), scale(width);
    Lanes s0(0.0), s1(0.0);
    for (NodeQuad const *q = kNodes + k * (k - 1) / 2, *end = q + k; q != end; ++q) {
        Lanes const t0 = origin + scale * Lanes::load(q->t);
        Lanes const t1 = origin + scale * Lanes::load(q->t + 2);
        Lanes const x0 = (e2x * t0 + e1x) * t0 + e0x;
        Lanes const y0 = (e2y * t0 + e1y) * t0 + e0y;
        Lanes const x1 = (e2x * t1 + e1x) * t1 + e0x;
        Lanes const y1 = (e2y * t1 + e1y) * t1 + e0y;
        s0 = s0 + Lanes::load(q->w) * sqrt(x0 * x0 + y0 * y0);
        s1 = s1 + Lanes::load(q->w + 2) * sqrt(x1 * x1 + y1 * y1);
    }
    Lanes const s = s0 + s1;
    return (s.lo() + s.hi()) * width;
}

// The fewest-point rule for a piece whose singularities give (|z - a| + |z - b|) >= sum with b - a =
// width: 1 + the number of rules it is too narrow for, so kRuleCount + 1 when even the widest falls short.
// Squared: sum and width are the squares of those.
template <bool Squared = false, class V> V ruleFor(V const& sum, V const& width) {
    V k[4] = {V(1.0), V(0.0), V(0.0), V(0.0)}; // four short chains instead of one long
    for (int j = 0; j < kRuleCount; ++j) {
        double const limit = Squared ? kRuleMinA[j] * kRuleMinA[j] : kRuleMinA[j];
        k[j % 4] = k[j % 4] + ones(sum < V(limit) * width);
    }
    return (k[0] + k[1]) + (k[2] + k[3]);
}

// What the quadrature needs to know of one curve: the two zeros of its hodograph continued to complex t
// as singularities of |B'| (real part, squared distance from the axis; a missing or ignorable one at
// (0.5, 1e200)), zeros on the axis inside (0, 1) where |B'| has a kink (else -1), and the rule that takes
// [0, 1] as one piece (0 when the curve needs several).
struct LengthPlan {
    double zx[2], zy2[2], kink[2];
    int rule;
};

// Plans the 2N curves of h into plans, two per Lanes; the code is the same for every curve, so there are no
// branches to mispredict.
//
// The zeros of h(t) = E0 + E1 t + E2 t^2 (complex coefficients; x' is the real and y' the imaginary part)
// come from the cancellation-free quadratic formula in complex arithmetic, z1 = q / E2 and z2 = E0 / q with
// q = -(E1 + s) / 2, s the square root of the discriminant that adds to E1 without cancelling. The
// coefficients are first scaled by a power of two to magnitude about 1 (zeros do not depend on the scale),
// so nothing overflows or underflows. A degenerate hodograph (E2 = 0, or E2 = E1 = 0) divides by zero and
// yields NaN or infinite zeros, which are ignored like the zeros they stand for (there are fewer). A zero at
// most kCuspDistance from the real axis is a real double zero of |B'|^2: |B'| is then |t - x| times an
// analytic function, so it is no singularity at all; inside (0, 1) it is a kink, where the interval must be
// cut.
template <int N> void planLengths(Hodograph const* h, LengthPlan* plans) {
    using V = Wide<N>;
    constexpr double kCuspDistance = 1e-8;
    V e0x, e0y, e1x, e1y, e2x, e2y;
    for (int i = 0; i < N; ++i) {
        Hodograph const &ha = h[2 * i], &hb = h[2 * i + 1];
        e0x.p[i] = Lanes(ha.e0.x, hb.e0.x), e0y.p[i] = Lanes(ha.e0.y, hb.e0.y);
        e1x.p[i] = Lanes(ha.e1.x, hb.e1.x), e1y.p[i] = Lanes(ha.e1.y, hb.e1.y);
        e2x.p[i] = Lanes(ha.e2.x, hb.e2.x), e2y.p[i] = Lanes(ha.e2.y, hb.e2.y);
    }
    V const m = max(max(max(abs(e0x), abs(e0y)), max(abs(e1x), abs(e1y))), max(abs(e2x), abs(e2y)));
    V const scale = reciprocalPowerOfTwo(m);
    V const a0 = e0x * scale, b0 = e0y * scale, a1 = e1x * scale, b1 = e1y * scale, a2 = e2x * scale,
            b2 = e2y * scale;
    // The discriminant D = E1^2 - 4 E2 E0 has the square roots +-s / 2u, s = (2u^2, Im D) when Re D >= 0,
    // else (Im D, 2u^2), with u = sqrt((|D| + |Re D|) / 2) computed without cancellation; s is turned to add
    // to E1. Then Q = -(2u E1 + s) = 4u q, so z1 = Q / (4u E2) and z2 = 4u E0 / Q, with no division
    // before the two last ones. D = 0 gives Q = 0 and NaN zeros: a double zero, so |B'| = |E2| |t - z|^2
    // is a polynomial and has no singularity at all.
    V const dr = a1 * a1 - b1 * b1 - V(4.0) * (a2 * a0 - b2 * b0);
    V const di = V(2.0) * a1 * b1 - V(4.0) * (a2 * b0 + b2 * a0);
    V const u = sqrt(V(0.5) * (sqrt(dr * dr + di * di) + abs(dr)));
    V const twoU = V(2.0) * u, twoUU = twoU * u;
    V const realFirst = dr >= V(0.0);
    V const align = a1 * select(realFirst, twoUU, di) + b1 * select(realFirst, di, twoUU);
    V const sr = flipBySign(select(realFirst, twoUU, di), align);
    V const si = flipBySign(select(realFirst, di, twoUU), align);
    V const qr = V(0.0) - (twoU * a1 + sr), qi = V(0.0) - (twoU * b1 + si);
    V const inv1 = V(1.0) / (V(2.0) * twoU * (a2 * a2 + b2 * b2));
    V const inv2 = V(1.0) / (qr * qr + qi * qi);
    V const fourU = V(2.0) * twoU;
    V const zx[2] = {(qr * a2 + qi * b2) * inv1, fourU * (a0 * qr + b0 * qi) * inv2};
    V const zy[2] = {abs(qi * a2 - qr * b2) * inv1, fourU * abs(b0 * qr - a0 * qi) * inv2};
    // A^2 = min over the singularities of (|z| + |z - 1|)^2 = |z|^2 + |z - 1|^2 + 2 |z| |z - 1|: the
    // ellipse parameter of [0, 1] as one piece, with one square root per singularity
    V sum(1e300);
    for (int j = 0; j < 2; ++j) {
        V const off = (zy[j] > V(kCuspDistance)) & (V(1e300) > abs(zx[j])); // NaN: ignored
        V const x = select(off, zx[j], V(0.5));
        V const y2 = select(off, zy[j] * zy[j], V(1e200));
        V const kink = select(off, V(-1.0), select((zx[j] > V(0.0)) & (V(1.0) > zx[j]), zx[j], V(-1.0)));
        V const x1 = x - V(1.0);
        V const near = x * x + y2, far = x1 * x1 + y2;
        sum = min(near + far + V(2.0) * sqrt(near * far), sum); // a NaN candidate leaves sum as it was
        for (int i = 0; i < N; ++i) {
            LengthPlan &pa = plans[2 * i], &pb = plans[2 * i + 1];
            pa.zx[j] = x.p[i].lo(), pb.zx[j] = x.p[i].hi();
            pa.zy2[j] = y2.p[i].lo(), pb.zy2[j] = y2.p[i].hi();
            pa.kink[j] = kink.p[i].lo(), pb.kink[j] = kink.p[i].hi();
        }
    }
    V const rule = ruleFor<true>(sum, V(1.0));
    for (int i = 0; i < 2 * N; ++i) {
        LengthPlan& plan = plans[i];
        double const k = i % 2 == 0 ? rule.p[i / 2].lo() : rule.p[i / 2].hi();
        plan.rule = plan.kink[0] < 0.0 && plan.kink[1] < 0.0 && k <= kRuleCount ? int(k) : 0;
    }
}

#if SIMPLEPATH_LENGTH_AVX
// The same sums as gauss, in the same order (lanes 0-1 hold the pair that gauss adds into s0, lanes 2-3
// the one it adds into s1), four nodes per vector: the same result bit for bit, at twice the square roots
// per instruction.
__attribute__((target("avx"))) double gaussAvx(Hodograph const& h, int k, double a, double width) {
    __m256d const e0x = _mm256_set1_pd(h.e0.x), e0y = _mm256_set1_pd(h.e0.y), e1x = _mm256_set1_pd(h.e1.x),
                  e1y = _mm256_set1_pd(h.e1.y), e2x = _mm256_set1_pd(h.e2.x), e2y = _mm256_set1_pd(h.e2.y);
    __m256d const origin = _mm256_set1_pd(a), scale = _mm256_set1_pd(width);
    __m256d s = _mm256_setzero_pd();
    for (NodeQuad const *q = kNodes + k * (k - 1) / 2, *end = q + k; q != end; ++q) {
        __m256d const node = _mm256_loadu_pd(q->t);
        __m256d const weight = _mm256_loadu_pd(q->w);
        __m256d const t = _mm256_add_pd(origin, _mm256_mul_pd(scale, node));
        __m256d const x = _mm256_add_pd(_mm256_mul_pd(_mm256_add_pd(_mm256_mul_pd(e2x, t), e1x), t), e0x);
        __m256d const y = _mm256_add_pd(_mm256_mul_pd(_mm256_add_pd(_mm256_mul_pd(e2y, t), e1y), t), e0y);
        s = _mm256_add_pd(s, _mm256_mul_pd(weight, _mm256_sqrt_pd(_mm256_add_pd(_mm256_mul_pd(x, x),
                                                                                _mm256_mul_pd(y, y)))));
    }
    __m128d const pair = _mm_add_pd(_mm256_castpd256_pd128(s), _mm256_extractf128_pd(s, 1));
    return (_mm_cvtsd_f64(pair) + _mm_cvtsd_f64(_mm_unpackhi_pd(pair, pair))) * width;
}

bool hasAvx() {
    static bool const avx = (__builtin_cpu_init(), __builtin_cpu_supports("avx"));
    return avx;
}
#endif

double integrate(Hodograph const& h, int k, double a, double width) {
#if SIMPLEPATH_LENGTH_AVX
    if (hasAvx()) {
        return gaussAvx(h, k, a, width);
    }
#endif
    return gauss(h, k, a, width);
}

// A curve that needs more than one piece: [0, 1] is cut at its kinks, and each stretch greedily from the
// left into the widest pieces the widest rule can take (A = kRuleMinA of that rule for the nearest
// singularity); the last piece of a stretch gets the fewest points that suffice.
double piecewiseLength(Hodograph const& h, LengthPlan const& plan) {
    constexpr int kWidestRule = 8; // 32 points
    constexpr double kWidestA = kRuleMinA[kWidestRule - 1];
    constexpr double kWidthFactor = 2.0 / (kWidestA * kWidestA - 1.0);
    constexpr int kMaxPieces = 256; // never reached: a singularity 1e-8 away needs about 40
    double cuts[4] = {0.0, 1.0, 1.0, 1.0};
    int cutCount = 1;
    for (double const kink : plan.kink) {
        if (kink > 0.0) {
            cuts[cutCount++] = kink;
        }
    }
    if (cutCount == 3 && cuts[2] < cuts[1]) {
        std::swap(cuts[1], cuts[2]);
    }
    cuts[cutCount] = 1.0;
    Lanes const zx = Lanes::load(plan.zx), zy2 = Lanes::load(plan.zy2);
    auto distances = [&](double t) { // |z - t| for both singularities
        Lanes const p = zx - Lanes(t);
        return sqrt(p * p + zy2);
    };
    double total = 0.0;
    int pieces = 0;
    for (int c = 0; c < cutCount; ++c) {
        double a = cuts[c];
        double const end = cuts[c + 1];
        Lanes da = distances(a);
        while (a < end) {
            // the widest piece from a that keeps A >= kWidestA: |z - a| + |z - a - w| = A w solved for w
            Lanes const wz = (Lanes(kWidestA) * da - (zx - Lanes(a))) * Lanes(kWidthFactor);
            double const w = std::min(wz.lo(), wz.hi());
            bool const full = a + w < end && ++pieces < kMaxPieces;
            double const b = full ? a + w : end;
            Lanes const db = distances(b);
            int rule = kWidestRule; // a full piece has A = kWidestA and needs the widest rule
            if (!full) {
                Lanes const sum = da + db;
                rule = std::min(int(ruleFor(Lanes(std::min(sum.lo(), sum.hi())), Lanes(b - a)).lo()),
                                kWidestRule);
            }
            total += integrate(h, rule, a, b - a);
            a = b;
            da = db;
        }
    }
    return total;
}

// Whether b runs along the straight line from P0 to P3 without turning back: both handles on the line,
// and the Bernstein coefficients of B' . (P3 - P0) (the control differences projected on the chord) not
// negative, so the curve only advances. Its length is then the chord's, which quadrature would only
// approach within rounding: a drawn straight segment measures what its ends say.
bool runsStraight(PBezier const& b) {
    DVector const chord = b[3] - b[0];
    DVector const d0 = b[1] - b[0], d1 = b[2] - b[1], d2 = b[3] - b[2];
    return (b[1] - b[0]).cross(chord) == 0.0 && (b[2] - b[0]).cross(chord) == 0.0 && d0.dot(chord) >= 0.0 &&
           d1.dot(chord) >= 0.0 && d2.dot(chord) >= 0.0 && (chord.x != 0.0 || chord.y != 0.0);
}

double lengthByPlan(PBezier const& b, Hodograph const& h, LengthPlan const& plan) {
    if (!h.finite()) {
        return distance(b[0], b[1]) + distance(b[1], b[2]) + distance(b[2], b[3]);
    }
    if (runsStraight(b)) {
        return distance(b[0], b[3]);
    }
    return plan.rule > 0 ? integrate(h, plan.rule, 0.0, 1.0) : piecewiseLength(h, plan);
}

} // namespace

// Method: |B'(t)| = |E2| |t - z1| |t - z2| for the complex zeros z1, z2 of the hodograph continued to
// complex t (see planLengths), so |B'| is analytic except at z1, z2 and their conjugates. n-point
// Gauss-Legendre on a piece [a, b] then errs by about rho^-2n, where rho is the parameter of the Bernstein
// ellipse (foci a and b) through the nearest singularity: the ellipse's semi-major axis over the half-width,
// A = (|z - a| + |z - b|) / (b - a), gives rho = A + sqrt(A^2 - 1) = exp(acosh A). A rule of n points (a
// multiple of 4 up to 64) is used only on a piece where rho^-2n <= n e^-30 (kRuleMinA). A curve whose rule
// for [0, 1] has at most 64 points is one piece; otherwise (a singularity close to [0, 1]) the interval is
// cut greedily from the left into the widest pieces the 32-point rule can take, and the last piece of a
// stretch gets the fewest points that suffice, so pieces shrink geometrically towards a near-cusp (for such
// curves, cutting costs fewer evaluations than more points on wider pieces). The short segments of a wiggly
// outline take 35 evaluations of |B'| on average, 93% of them as one piece; random curves about 59, half as
// one. A singularity at a distance q <= 1e-8 from the real axis is treated as a real double zero of |B'|^2 (a
// cusp, or a straight curve turning back): |B'| is then |t - x| times an analytic function, so the interval
// is only cut at x; what this neglects is O(q^2 log(1/q)) of the length, below 1e-14. Against a long double
// reference on thousands of random curves, near-cusp families and singularities placed at the limit of every
// rule the relative error stays below 1e-13, a margin of more than ten below the promised 1e-12. Non-finite
// input passes NaN or inf through.
//
// Speed: the quadrature is bound by square roots, evaluated two (SSE2) or four (AVX) at a time; the
// planning (zeros, ellipse parameter, rule) is straight-line code for two curves at once, so arcLengths over
// many curves overlaps the planning of one pair with the quadrature of the previous ones.
double PBezier::length() const {
    double result;
    arcLengths(this, 1, &result);
    return result;
}

void arcLengths(PBezier const* curves, int count, double* lengths) {
    constexpr int kBatch = 16; // eight pairs: two steps of four
    Hodograph h[kBatch];
    LengthPlan plans[kBatch];
    for (int start = 0; start < count; start += kBatch) {
        int const n = std::min(kBatch, count - start);
        int const planned = n <= 2 ? 2 : (n + 7) / 8 * 8;
        for (int i = 0; i < planned; ++i) { // a short batch repeats its last curve
            h[i] = Hodograph(curves[start + std::min(i, n - 1)]);
        }
        if (planned == 2) {
            planLengths<1>(h, plans);
        }
        for (int i = 0; i + 8 <= planned; i += 8) {
            planLengths<4>(h + i, plans + i);
        }
        for (int i = 0; i < n; ++i) {
            lengths[start + i] = lengthByPlan(curves[start + i], h[i], plans[i]);
        }
    }
}
