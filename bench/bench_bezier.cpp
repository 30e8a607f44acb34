// Per-call cost of the Bezier and box-form kernel on random curves of size about 1000.

#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/PBoxForm.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

constexpr int kCurves = 1024; // a pool larger than one call, so branch history does not flatter

struct Pool {
    std::vector<PBezier> curves;
    std::vector<DPoint> points;
    std::vector<double> ts;
    Pool() {
        std::mt19937_64 rng(42);
        std::uniform_real_distribution<double> u(-500.0, 500.0), t(0.0, 1.0);
        for (int i = 0; i < kCurves; ++i) {
            curves.emplace_back(DPoint(u(rng), u(rng)), DPoint(u(rng), u(rng)), DPoint(u(rng), u(rng)),
                                DPoint(u(rng), u(rng)));
            points.emplace_back(u(rng), u(rng));
            ts.push_back(t(rng));
        }
    }
};

Pool const& pool() {
    static Pool const p;
    return p;
}

void BM_bValue(benchmark::State& state) {
    Pool const& p = pool();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(p.curves[i].bValue(p.ts[i]));
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_bValue);

void BM_split(benchmark::State& state) {
    Pool const& p = pool();
    int i = 0;
    PBezier l, r;
    for (auto _ : state) {
        p.curves[i].split(p.ts[i], l, r);
        benchmark::DoNotOptimize(l);
        benchmark::DoNotOptimize(r);
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_split);

void BM_localMinMax(benchmark::State& state) {
    Pool const& p = pool();
    int i = 0;
    for (auto _ : state) {
        double a = 1e300, b = 1e300, c = -1e300, d = -1e300;
        p.curves[i].localMinMax(a, b, c, d);
        benchmark::DoNotOptimize(a + b + c + d);
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_localMinMax);

void BM_intersectBezierWithXAxis(benchmark::State& state) {
    Pool const& p = pool();
    std::vector<double> out;
    out.reserve(8);
    int i = 0;
    for (auto _ : state) {
        out.clear();
        intersectBezierWithXAxis(p.curves[i], out);
        benchmark::DoNotOptimize(out.data());
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_intersectBezierWithXAxis);

void BM_length(benchmark::State& state) {
    Pool const& p = pool();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(p.curves[i].length());
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_length);

void BM_findNearestPointTValue(benchmark::State& state) {
    Pool const& p = pool();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(p.curves[i].findNearestPointTValue(p.points[i]));
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_findNearestPointTValue);

void BM_getPolyline(benchmark::State& state) {
    Pool const& p = pool();
    std::vector<DPoint> out;
    out.reserve(1024);
    int i = 0;
    for (auto _ : state) {
        out.clear();
        p.curves[i].getPolyline(1.0, out);
        benchmark::DoNotOptimize(out.data());
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_getPolyline);

PBoxForm const& envelope() {
    static PBoxForm const f({100, 50}, {400, 250}, PBezier({0, 0}, {300, -120}, {700, 180}, {1000, 100}),
                            PBezier({-50, 800}, {300, 950}, {800, 700}, {1100, 900}),
                            PBezier({0, 0}, {-150, 250}, {60, 550}, {-50, 800}),
                            PBezier({1000, 100}, {1150, 400}, {950, 600}, {1100, 900}));
    return f;
}

void BM_xform(benchmark::State& state) {
    PBoxForm const& f = envelope();
    Pool const& p = pool();
    int i = 0;
    for (auto _ : state) {
        DPoint const q(100 + 300 * p.ts[i], 50 + 200 * p.ts[(i + 7) & (kCurves - 1)]);
        benchmark::DoNotOptimize(f.xform(q));
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_xform);

void BM_xforminv(benchmark::State& state) {
    PBoxForm const& f = envelope();
    Pool const& p = pool();
    std::vector<DPoint> targets;
    for (int i = 0; i < kCurves; ++i) {
        targets.push_back(f.xform(DPoint(100 + 300 * p.ts[i], 50 + 200 * p.ts[(i + 7) & (kCurves - 1)])));
    }
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f.xforminv(targets[i]));
        i = (i + 1) & (kCurves - 1);
    }
}
BENCHMARK(BM_xforminv);

} // namespace
