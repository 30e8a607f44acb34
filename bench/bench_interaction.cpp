// Interactive dragging: one pointer move plus the rubber-band redraw, as a host does at pointer rate. The
// contexts work on their own copies of the locations, so the cost must not grow with the path. The drawer
// records every call's arguments into fixed storage; the only allocation per redraw is the curve rep the
// drawer itself hands out (and the library deletes).

#include <benchmark/benchmark.h>

#include "simplepath/interaction/SimplePathMultipleVertexPickContext.h"
#include "simplepath/interaction/SimplePathVertexPickContext.h"
#include "simplepath/interaction/XYOffsetSimplePathTransform.h"
#include "simplepath/path/SimplePath.h"

#include "bench/ZigzagPath.h"

#include <array>

namespace {

using Mode = SimplePathVertexTriple::VertexTripleMode;

// Keeps the last points and modes it was given and counts the calls, so that nothing is optimised away.
struct Log {
    long calls = 0;
    long triples = 0;
    std::array<DPoint, 3> last{};
    int mode = 0;
};

class RecordingRep : public SimplePathDrawer::CurveRep {
  public:
    explicit RecordingRep(Log& log) : log_(log) {}
    char const* getType() const override { return "RecordingRep"; }
    void addTriple(DPoint const& before, DPoint const& anchor, DPoint const& after) override {
        ++log_.triples;
        log_.last = {before, anchor, after};
    }
    void popBackTriple() override { ++log_.calls; }
    void setOpen() override { ++log_.calls; }
    void setClosed() override { ++log_.calls; }

  private:
    Log& log_;
};

class RecordingDrawer : public SimplePathDrawer {
  public:
    CurveRep* makeCurveRep() override { return new RecordingRep(log); }
    void drawCurve(CurveRep*) override { ++log.calls; }
    void drawCurveVertices(CurveRep*, Mode* modes, int, int) override {
        ++log.calls;
        log.mode += modes[0];
    }
    void drawEditedTriple(DPoint const& before, DPoint const& anchor, DPoint const& after,
                          Mode* mode) override {
        ++log.calls;
        log.last = {before, anchor, after};
        log.mode += *mode;
    }
    void drawPermanentCurve(CurveRep*) override { ++log.calls; }
    Log log;
};

// The pointer wanders over a small circle of positions.
DPoint pointer(long step, DPoint const& around) {
    static constexpr std::array<DVector, 8> offsets = {DVector(1, 0),  DVector(2, 1),  DVector(1, 3),
                                                       DVector(-1, 2), DVector(-2, 0), DVector(-1, -2),
                                                       DVector(1, -3), DVector(3, -1)};
    return around + offsets[static_cast<std::size_t>(step & 7)];
}

// range(0): triples; range(1): 0 drags the anchor, 1 the outgoing handle (the smooth rule runs);
// range(2): 1 with a view transform and angle snapping.
void BM_SingleMoveAndXorDraw(benchmark::State& state) {
    int const n = static_cast<int>(state.range(0));
    SimplePath path;
    fillZigzag(path, n);
    SimplePathVertexTriple const t = path.getTripleList()[n / 2];
    SimplePathVertex* const picked = state.range(1) == 0 ? t.anchor : t.last;
    DPoint const start = picked->getLocation();
    XYOffsetSimplePathTransform view(5, 5);
    bool const dressed = state.range(2) != 0;
    SimplePathVertexPickContext context(&path, picked, start, dressed ? &view : nullptr);
    if (dressed) {
        context.createSnapKit();
    }
    RecordingDrawer drawer;
    long step = 0;
    for (auto _ : state) {
        context.move(pointer(step++, start));
        context.xorDraw(drawer, 1);
    }
    benchmark::DoNotOptimize(drawer.log);
}
BENCHMARK(BM_SingleMoveAndXorDraw)
    ->ArgsProduct({{100, 10000, 1000000}, {0, 1}, {0, 1}})
    ->ArgNames({"triples", "handle", "view+snap"});

// A selection of 1,000 vertices: range(1) 0 is one run of 1,000 consecutive triples, 1 is every other
// triple of 2,000 (1,000 runs of one moved triple between two fixed neighbours).
void BM_MultipleMoveAndXorDraw(benchmark::State& state) {
    int const selected = static_cast<int>(state.range(0));
    bool const scattered = state.range(1) != 0;
    int const n = scattered ? 2 * selected : selected + 2;
    SimplePath path;
    fillZigzag(path, n);
    SimplePathMultipleVertexPickContext::Selection selection;
    for (int i = 0; i < selected; ++i) {
        selection.emplace_back(path.getTripleList()[scattered ? 2 * i : i + 1].anchor, &path);
    }
    SimplePathVertex* const picked = selection.front().first;
    DPoint const start = picked->getLocation();
    SimplePathMultipleVertexPickContext context(&path, picked, start, selection);
    RecordingDrawer drawer;
    long step = 0;
    for (auto _ : state) {
        context.move(pointer(step++, start));
        context.xorDraw(drawer);
    }
    benchmark::DoNotOptimize(drawer.log);
}
BENCHMARK(BM_MultipleMoveAndXorDraw)->ArgsProduct({{1000}, {0, 1}})->ArgNames({"selected", "scattered"});

} // namespace
