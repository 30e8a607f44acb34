#include <gtest/gtest.h>

#include "RecordingDrawer.h"

#include "simplepath/interaction/SimplePathVertexPickContext.h"
#include "simplepath/interaction/XYOffsetSimplePathTransform.h"

#include <cmath>
#include <limits>
#include <memory>

namespace {

using namespace recording;
using Context = SimplePathVertexPickContext;
using Loc = SimplePathLocationTriple;

constexpr Mode kSmooth = SimplePathVertexTriple::Smooth;
constexpr Mode kCusp = SimplePathVertexTriple::Cusp;
constexpr Mode kSymmetric = SimplePathVertexTriple::Symmetric;

// Triple `picked` has mode `mode`, the others are cusps.
SimplePath makePath(int n, int closed, Mode mode = kSmooth, int picked = 1) {
    return pathOf(n, closed, [&](int i) { return i == picked ? mode : kCusp; });
}

Loc editing(Context& context) {
    return context.commit().getLocationTriple();
}

// Role 0 is the incoming handle, 1 the anchor, 2 the outgoing handle.
SimplePathVertex* vertexOf(SimplePathVertexTriple const& t, int role) {
    return role == 0 ? t.first : role == 1 ? t.anchor : t.last;
}

// Offsets are taken from where the drag started, never accumulated. A smooth handle turns the other in
// line keeping its length (not while within 0.001 of the anchor), a symmetric one mirrors it, a cusp
// handle moves alone; after setCuspMode handles move alone, but the anchor keeps its mode.
TEST(VertexPickContext, DragRules) {
    struct Row {
        Mode mode;
        int role;
        DVector first;
        bool breakMode;
        DVector second;
        Loc want;
    } const rows[] = {
        {kSmooth, 0, {2, 0.0011}, false, {2, 0.0011}, {{10, 0.0011}, {10, 0}, {10, -3}, kSmooth}},
        {kSymmetric, 2, {-1.5, 4.25}, false, {-1.5, 4.25}, {{8.5, -4.25}, {10, 0}, {11.5, 4.25}, kSymmetric}},
        {kCusp, 0, {0, 5}, false, {0, 5}, {{8, 5}, {10, 0}, {13, 0}, kCusp}},
        {kSmooth, 2, {-3, 3}, true, {-3, 6}, {{10, -2}, {10, 0}, {10, 6}, kCusp}},
        {kSmooth, 1, {0, 0}, true, {0, 0}, {{8, 0}, {10, 0}, {13, 0}, kSmooth}},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(&row - rows);
        SimplePath path = makePath(3, 0, row.mode);
        SimplePathVertex* const vertex = vertexOf(tripleOf(path, 1), row.role);
        Context context(&path, vertex, vertex->getLocation());
        context.offset(row.first);
        if (row.breakMode) {
            context.setCuspMode();
        }
        context.offset(row.second);
        Loc const got = editing(context);
        EXPECT_NEAR(distance(got.first, row.want.first) + distance(got.last, row.want.last), 0.0, 1e-12);
        EXPECT_EQ(got.anchor, row.want.anchor);
        EXPECT_EQ(got.mode, row.want.mode);
        EXPECT_EQ(context.commit().getVertexTriple(), tripleOf(path, 1)); // with the mode as picked
    }
}

// The changed segments: the previous neighbour with its incoming handle collapsed, the triple, the next
// neighbour with its outgoing handle collapsed, each present only where the drag changes that segment.
// The original shape is the same parts from the start locations. A one-vertex path has neighbours only
// when closed: itself on both sides, where it started.
TEST(VertexPickContext, OnlyTheSegmentsTheDragChangesAreDrawn) {
    struct Case {
        int n, closed, index, role;
        Mode mode;
        bool previous, next;
    } const cases[] = {
        {3, 0, 1, 2, kCusp, false, true}, {3, 0, 1, 0, kCusp, true, false}, {3, 0, 1, 2, kSmooth, true, true},
        {3, 0, 0, 1, kCusp, false, true}, {3, 1, 0, 1, kCusp, true, true},  {1, 1, 0, 1, kCusp, true, true},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(&c - cases);
        SimplePath path = makePath(c.n, c.closed, c.mode, c.index);
        SimplePathVertex* const vertex = vertexOf(tripleOf(path, c.index), c.role);
        Context context(&path, vertex, vertex->getLocation());
        context.offset(DVector(0, 1));
        Triple const prev = tripleAt((c.index + c.n - 1) % c.n), next = tripleAt((c.index + 1) % c.n);
        std::vector<Triple> want{{editing(context).first, editing(context).anchor, editing(context).last}};
        if (c.previous) {
            want.insert(want.begin(), {prev[1], prev[1], prev[2]});
        }
        if (c.next) {
            want.push_back({next[0], next[1], next[1]});
        }
        Drawer drawer;
        context.xorDraw(drawer, 0);
        ASSERT_EQ(drawer.calls.size(), 2u);
        EXPECT_EQ(drawer.calls[0].triples, want);
        EXPECT_EQ(drawer.calls[0].closed, 0);
        EXPECT_EQ(drawer.calls[1].modeValues, std::vector<Mode>{c.mode}); // the mode as picked
        std::unique_ptr<SimplePathDrawer::CurveRep> original(context.createOriginalCurveRep(drawer));
        want[c.previous ? 1 : 0] = tripleAt(c.index);
        EXPECT_EQ(static_cast<Rep&>(*original).triples, want);
        context.permDraw(drawer);
    }
}

// A vertex of another path, none, an empty path or no path: the context does nothing. A drawer that
// refuses reps gets nothing drawn.
TEST(VertexPickContext, InertOnBadInputDrawsNothingAndNeverCrashes) {
    SimplePath path = makePath(3, 0), other = makePath(3, 0), empty;
    SimplePathVertex* const foreign = tripleOf(other, 1).anchor;
    XYOffsetSimplePathTransform shift(1, 1);
    Context contexts[] = {{&path, foreign, DPoint()},
                          {&path, nullptr, DPoint()},
                          {&empty, foreign, DPoint()},
                          {PHashablePointer<SimplePath>(), foreign, DPoint()},
                          {&path, tripleOf(path, 1).anchor, DPoint(10, 0), &shift}};
    for (Context& context : contexts) {
        bool const valid = &context == &contexts[4];
        Drawer drawer;
        drawer.refuseReps = valid;
        context.offset(DVector(1, 1));
        context.move(DPoint(5, 5));
        context.createSnapKit();
        context.setCuspMode();
        context.xorDraw(drawer, 1);
        context.xorDraw(drawer, 0);
        context.permDraw(drawer);
        EXPECT_EQ(context.createOriginalCurveRep(drawer), nullptr);
        EXPECT_TRUE(drawer.calls.empty());
        EXPECT_TRUE(valid || (context.isSnapKitActive() == 0 && context.createSimilar() == nullptr &&
                              context.commit().getVertexTriple().anchor == nullptr &&
                              context.commit().getLocationTriple().anchor == DPoint()));
    }
}

// A long drag of each vertex kind with snapping, a transform, points that are not numbers and a mode
// change: every redraw shows the triple where the drag put it, no rep leaks, the path never changes.
TEST(VertexPickContext, AWholeDragLeavesThePathAndTheRepCountAlone) {
    SimplePath path = makePath(5, 1);
    std::vector<Loc> const before = locationsOf(path);
    int const live = liveReps();
    double const inf = std::numeric_limits<double>::infinity();
    for (int role = 0; role < 3; ++role) {
        SimplePathVertex* const vertex = vertexOf(tripleOf(path, 1), role);
        XYOffsetSimplePathTransform shift(3, 4);
        Context context(&path, vertex, vertex->getLocation(), &shift);
        context.createSnapKit(); // about the previous anchor for an anchor, about its own for a handle
        EXPECT_EQ(context.getSnapKit().getPO(), role == 1 ? DPoint(0, 0) : DPoint(10, 0));
        context.offset(DVector(0, 0));
        EXPECT_EQ(context.createSimilar(), nullptr) << "a similar context needs a real move";
        Drawer drawer;
        context.permDraw(drawer);
        for (int step = 0; step < 20; ++step) {
            context.move(DPoint(10 + step, step * 0.5));
            context.xorDraw(drawer, step % 2);
            Triple const& drawn = drawer.calls[drawer.calls.size() - 2].triples.at(1);
            Loc const t = editing(context);
            EXPECT_EQ(drawn,
                      (Triple{shift.transform(t.first), shift.transform(t.anchor), shift.transform(t.last)}));
        }
        for (DPoint const& p : {DPoint(std::nan(""), 1), DPoint(inf, -inf)}) {
            context.move(p);
            context.xorDraw(drawer, 1);
        }
        context.setCuspMode();
        context.offset(DVector(1, 1));
        context.xorDraw(drawer, 0);
        EXPECT_EQ(editing(context).anchor, role == 1 ? DPoint(11, 1) : DPoint(10, 0));
        std::unique_ptr<Context const> similar(context.createSimilar());
        EXPECT_NE(similar, nullptr);
        Context(context).xorDraw(drawer, 1);
        EXPECT_EQ(liveReps(), live);
    }
    EXPECT_EQ(locationsOf(path), before);
}

} // namespace
