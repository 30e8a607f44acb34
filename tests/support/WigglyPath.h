#pragma once

// Deterministic random test paths: closed, wiggly blobs of cubic segments, used by the path tests and
// the query benchmarks. Header-only; the random numbers come from std::mt19937_64 turned into doubles by
// hand, so the same seed gives the same path on every standard library.

#include <cmath>
#include <cstdint>
#include <random>

#include "simplepath/path/SimplePath.h"

namespace support {

class UnitRandom {
  public:
    explicit UnitRandom(std::uint64_t seed) : engine(seed) {}
    // Uniform in [0, 1).
    double next() { return static_cast<double>(engine() >> 11) * 0x1.0p-53; }
    double between(double lo, double hi) { return lo + (hi - lo) * next(); }

  private:
    std::mt19937_64 engine;
};

// A closed path of `segments` cubic segments about `size` units across, centred on the origin: anchors
// walk once round a lobed ring, jittered in radius, with handles of random length and direction, so the
// outline wiggles at the scale of a segment while the blob stays roughly round.
inline void buildWigglyBlob(SimplePath& path, int segments, std::uint64_t seed, double size = 2000.0) {
    UnitRandom random(seed);
    double const radius = size / 2.0;
    double const pi = 3.14159265358979323846;
    double const spacing = 2.0 * pi * radius * 0.85 / segments;
    double const phase = random.between(0.0, 2.0 * pi);
    for (int i = 0; i < segments; ++i) {
        double const angle = 2.0 * pi * i / segments;
        double const r =
            radius * (0.85 + 0.1 * std::sin(5.0 * angle + phase)) + random.between(-1.5, 1.5) * spacing;
        DPoint const anchor(r * std::cos(angle), r * std::sin(angle));
        double const turn = angle + pi / 2.0 + random.between(-1.2, 1.2);
        DVector const tangent(std::cos(turn), std::sin(turn));
        double const in = random.between(0.1, 0.8) * spacing;
        double const out = random.between(0.1, 0.8) * spacing;
        SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
        // Shared with the benchmarks, so no test assertion: an append fails only on an exhausted heap.
        (void)path.addTriple(anchor - tangent * in, f, anchor, a, anchor + tangent * out, l,
                             SimplePathVertexTriple::Cusp);
    }
    path.setStrictClosed(1);
}

// An open or closed path through the given triples, each (first, anchor, last).
struct TriplePoints {
    DPoint first, anchor, last;
};
template <class Triples> void buildPath(SimplePath& path, Triples const& triples, int closedFlag) {
    for (TriplePoints const& t : triples) {
        SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
        // Shared with the benchmarks, so no test assertion: an append fails only on an exhausted heap.
        (void)path.addTriple(t.first, f, t.anchor, a, t.last, l, SimplePathVertexTriple::Cusp);
    }
    path.setStrictClosed(closedFlag);
}

} // namespace support
