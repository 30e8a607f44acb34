#include "simplepath/simplepath.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace {

CBezier arch() {
    return CBezier(DPoint(0, 0), DPoint(0, 100), DPoint(100, 100), DPoint(100, 0));
}

void BM_LegacyCurvePoint(benchmark::State& state) {
    CBezier const curve = arch();
    double t = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(curve.GetCurvePoint(t));
        t = t < 0.99 ? t + 0.01 : 0.0;
    }
}
BENCHMARK(BM_LegacyCurvePoint);

void BM_LegacyLength(benchmark::State& state) {
    CBezier const curve = arch();
    for (auto _ : state) {
        benchmark::DoNotOptimize(curve.GetLength());
    }
}
BENCHMARK(BM_LegacyLength);

void BM_LegacyTFromLength(benchmark::State& state) {
    CBezier const curve = arch();
    double const half = curve.GetLength() / 2;
    for (auto _ : state) {
        benchmark::DoNotOptimize(curve.GetTFromLength(half));
    }
}
BENCHMARK(BM_LegacyTFromLength);

// Adaptive flattening at the default resolution; the output array keeps its capacity between runs.
void BM_LegacyPolyline(benchmark::State& state) {
    CBezier const curve = arch();
    CArray<DPoint, DPoint> out;
    for (auto _ : state) {
        out.RemoveAll();
        curve.GetPolyline(out);
        benchmark::DoNotOptimize(out.GetData());
    }
    state.counters["points"] = out.GetSize();
}
BENCHMARK(BM_LegacyPolyline);

// Uniform flattening: range(0) = 1 stops at 20 pieces, 0 runs all ten doublings (20480 pieces).
void BM_LegacyPolylineEx(benchmark::State& state) {
    CBezier curve = arch();
    curve.SetResolution(state.range(0) ? 1.0 : 1e-9);
    CArray<DPoint, DPoint> out;
    for (auto _ : state) {
        curve.GetPolylineEx(out);
        benchmark::DoNotOptimize(out.GetData());
    }
    state.counters["points"] = out.GetSize();
}
BENCHMARK(BM_LegacyPolylineEx)->Arg(1)->Arg(0);

void BM_LegacyNearestT(benchmark::State& state) {
    CBezier const curve = arch();
    DPoint const p(30, 60);
    for (auto _ : state) {
        benchmark::DoNotOptimize(curve._GetCurveT(p));
    }
}
BENCHMARK(BM_LegacyNearestT);

void BM_LegacyDragToPoint(benchmark::State& state) {
    for (auto _ : state) {
        CBezier curve = arch();
        curve.DragToPoint(0.3, DPoint(20, 90));
        benchmark::DoNotOptimize(curve.GetP1());
    }
}
BENCHMARK(BM_LegacyDragToPoint);

// Even-odd test against a 1000-vertex star-shaped polygon.
void BM_LegacyPointInPolygon(benchmark::State& state) {
    std::vector<tagPOINT> polygon;
    for (int i = 0; i < 1000; ++i) {
        double const a = 2 * 3.14159265358979323846 * i / 1000;
        double const r = i % 2 ? 1000 : 600;
        polygon.push_back(
            tagPOINT{static_cast<std::int32_t>(r * std::cos(a)), static_cast<std::int32_t>(r * std::sin(a))});
    }
    tagPOINT const p{123, -45};
    for (auto _ : state) {
        benchmark::DoNotOptimize(IsPointInPolygon(polygon.data(), 1000, p, nullptr));
    }
}
BENCHMARK(BM_LegacyPointInPolygon);

void BM_LegacyViewTransfer(benchmark::State& state) {
    CView3D v;
    v.Rotate(0.3, 0.2, 0.1);
    v.Translate(5, 6, 7);
    for (auto _ : state) {
        v.Transfer(1.5, 2.5, 3.5);
        benchmark::DoNotOptimize(v.vector());
    }
}
BENCHMARK(BM_LegacyViewTransfer);

// Return after every change of the matrix: the Gauss-Jordan inversion each time.
void BM_LegacyViewReturnAfterChange(benchmark::State& state) {
    CView3D v;
    v.Rotate(0.3, 0.2, 0.1);
    for (auto _ : state) {
        v.Scale(1.0, 1.0, 1.0);
        v.Return(1.5, 2.5, 3.5);
        benchmark::DoNotOptimize(v.vector());
    }
}
BENCHMARK(BM_LegacyViewReturnAfterChange);

} // namespace
