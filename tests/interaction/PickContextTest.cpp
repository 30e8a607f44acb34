#include <gtest/gtest.h>

#include "RecordingDrawer.h"
#include "support/PathHelpers.h"

#include "simplepath/interaction/SimplePathVertexPickContext.h"
#include "simplepath/interaction/XYOffsetSimplePathTransform.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/path/SimplePathSerializer.h"

#include <limits>
#include <memory>
#include <sstream>

namespace {

using recording::Drawer;
using recording::Triple;
using Mode = SimplePathVertexTriple::VertexTripleMode;
using Context = SimplePathVertexPickContext;

constexpr Mode kSmooth = SimplePathVertexTriple::Smooth;
constexpr Mode kCusp = SimplePathVertexTriple::Cusp;
constexpr Mode kSymmetric = SimplePathVertexTriple::Symmetric;

// Triple i: anchor (10 i, 0), incoming handle (10 i - 2, 0), outgoing handle (10 i + 3, 0), so that the
// two handle lengths differ (2 and 3).
Triple tripleAt(int i) {
    double const x = 10.0 * i;
    return {DPoint(x - 2, 0), DPoint(x, 0), DPoint(x + 3, 0)};
}

SimplePath makePath(int n, int closed, Mode middleMode = kSmooth) {
    SimplePath path;
    for (int i = 0; i < n; ++i) {
        Triple const t = tripleAt(i);
        EXPECT_EQ(appendTriple(path, t[0], t[1], t[2], i == 1 ? middleMode : kCusp), SimplePath::Success);
    }
    path.setStrictClosed(closed);
    return path;
}

SimplePathVertexTriple tripleOf(SimplePath const& path, int i) {
    SimplePathVertexTriple t;
    EXPECT_EQ(path.getTriple(i, t), SimplePath::Success);
    return t;
}

std::string bytesOf(SimplePath& path) {
    std::ostringstream out;
    BinarySerializer stream(out);
    EXPECT_EQ(SimplePathSerializer::write(&path, stream), SimplePathSerializer::Success);
    return out.str();
}

// Exposes the protected curve rep for the unmapped case.
struct OpenContext : Context {
    using Context::Context;
    using Context::createCurveRep;
};

SimplePathLocationTriple editing(Context& context) {
    return context.commit().getLocationTriple();
}

TEST(VertexPickContext, AnchorDragMovesTheTripleFromItsStartNeverAccumulating) {
    SimplePath path = makePath(3, 0);
    Context context(&path, tripleOf(path, 1).anchor, DPoint(10, 0));
    context.offset(DVector(1, 2));
    context.offset(DVector(1, 2));
    EXPECT_EQ(editing(context),
              SimplePathLocationTriple(DPoint(9, 2), DPoint(11, 2), DPoint(14, 2), kSmooth));
    context.move(DPoint(13, -1));
    EXPECT_EQ(editing(context),
              SimplePathLocationTriple(DPoint(11, -1), DPoint(13, -1), DPoint(16, -1), kSmooth));
}

TEST(VertexPickContext, SmoothHandleTurnsTheOtherInLineKeepingItsLength) {
    SimplePath path = makePath(3, 0, kSmooth);
    Context context(&path, tripleOf(path, 1).first, DPoint(8, 0));
    context.offset(DVector(2, -3)); // incoming handle to (10, -3): straight below the anchor
    SimplePathLocationTriple const t = editing(context);
    EXPECT_EQ(t.first, DPoint(10, -3));
    EXPECT_NEAR(t.last.x, 10.0, 1e-12);
    EXPECT_NEAR(t.last.y, 3.0, 1e-12); // the outgoing handle keeps its length 3, on the far side

    // Within 0.001 of the anchor the dragged handle gives no direction: the other one stays put.
    context.offset(DVector(2, 0.001));
    EXPECT_EQ(editing(context).first, DPoint(10, 0.001));
    EXPECT_EQ(editing(context).last, t.last);
    context.offset(DVector(2, 0.0011));
    EXPECT_NEAR(editing(context).last.y, -3.0, 1e-12);
}

TEST(VertexPickContext, SymmetricHandleMirrorsTheOtherExactly) {
    SimplePath path = makePath(3, 0, kSymmetric);
    Context context(&path, tripleOf(path, 1).last, DPoint(13, 0));
    context.offset(DVector(-1.5, 4.25)); // outgoing handle to (11.5, 4.25)
    SimplePathLocationTriple const t = editing(context);
    EXPECT_EQ(t.last, DPoint(11.5, 4.25));
    EXPECT_EQ(t.first, DPoint(8.5, -4.25));
    EXPECT_EQ(t.mode, kSymmetric);
}

TEST(VertexPickContext, CuspHandleMovesAloneAndSetCuspModeBreaksOnlyHandles) {
    SimplePath path = makePath(3, 0, kCusp);
    Context cusp(&path, tripleOf(path, 1).first, DPoint(8, 0));
    cusp.offset(DVector(0, 5));
    EXPECT_EQ(editing(cusp), SimplePathLocationTriple(DPoint(8, 5), DPoint(10, 0), DPoint(13, 0), kCusp));

    SimplePath smoothPath = makePath(3, 0, kSmooth);
    Context handle(&smoothPath, tripleOf(smoothPath, 1).last, DPoint(13, 0));
    handle.offset(DVector(-3, 3)); // smooth: the incoming handle turns to (10, -2)
    handle.setCuspMode();
    handle.offset(DVector(-3, 6)); // cusp now: the incoming handle stays where the smooth rule left it
    SimplePathVertexPickAction const action = handle.commit();
    EXPECT_EQ(action.getLocationTriple().last, DPoint(10, 6));
    EXPECT_NEAR(action.getLocationTriple().first.x, 10.0, 1e-12);
    EXPECT_NEAR(action.getLocationTriple().first.y, -2.0, 1e-12);
    EXPECT_EQ(action.getLocationTriple().mode, kCusp);
    EXPECT_EQ(action.getVertexTriple(), tripleOf(smoothPath, 1)); // the mode as picked: Smooth

    Context anchor(&smoothPath, tripleOf(smoothPath, 1).anchor, DPoint(10, 0));
    anchor.setCuspMode();
    EXPECT_EQ(editing(anchor).mode, kSmooth);
}

TEST(VertexPickContext, SnapKitOriginsAndSnappedMoves) {
    SimplePath path = makePath(3, 0);
    Context middle(&path, tripleOf(path, 1).anchor, DPoint(10, 0));
    EXPECT_EQ(middle.isSnapKitActive(), 0);
    middle.createSnapKit();
    EXPECT_EQ(middle.isSnapKitActive(), 1);
    EXPECT_EQ(middle.getSnapKit().getPO(), DPoint(0, 0)); // the previous anchor
    middle.move(DPoint(20, 0.5));                         // snapped onto the horizontal through (0, 0)
    EXPECT_EQ(editing(middle).anchor, DPoint(20, 0));
    middle.deleteSnapKit();
    EXPECT_EQ(middle.isSnapKitActive(), 0);
    middle.move(DPoint(20, 0.5));
    EXPECT_EQ(editing(middle).anchor, DPoint(20, 0.5));

    Context first(&path, tripleOf(path, 0).anchor, DPoint(0, 0));
    first.createSnapKit();
    EXPECT_EQ(first.getSnapKit().getPO(), DPoint(20, 0)); // open path, yet the last anchor

    Context handle(&path, tripleOf(path, 2).first, DPoint(18, 0));
    handle.createSnapKit();
    EXPECT_EQ(handle.getSnapKit().getPO(), DPoint(20, 0)); // its own anchor
    EXPECT_EQ(handle.getSnapKit().getSnapMode(), SnapKit::AngleSnap);
}

TEST(VertexPickContext, CreateSimilarOnlyAfterAMoveAndWithoutTransformOrSnap) {
    SimplePath path = makePath(3, 0);
    XYOffsetSimplePathTransform shift(100, 0);
    Context context(&path, tripleOf(path, 1).anchor, DPoint(10, 0), &shift);
    context.createSnapKit();
    EXPECT_EQ(context.createSimilar(), nullptr);
    context.offset(DVector(0, 0));
    EXPECT_EQ(context.createSimilar(), nullptr);
    context.offset(DVector(1, 0));
    std::unique_ptr<Context const> similar(context.createSimilar());
    ASSERT_NE(similar, nullptr);
    EXPECT_EQ(similar->isSnapKitActive(), 0);
    DPoint b, a, c;
    similar->getEditingTriple(b, a, c);
    EXPECT_EQ(a, DPoint(10, 0)); // read afresh from the path, not mapped
    context.getEditingTriple(b, a, c);
    EXPECT_EQ(a, DPoint(111, 0)); // mapped
}

TEST(VertexPickContext, GetPickedTripleReportsVerticesAndUnmappedEditingLocations) {
    SimplePath path = makePath(3, 0, kSmooth);
    XYOffsetSimplePathTransform shift(100, 0);
    SimplePathVertexTriple const picked = tripleOf(path, 1);
    Context context(&path, picked.last, DPoint(13, 0), &shift);
    context.offset(DVector(0, 1));
    context.setCuspMode();
    PHashablePointer<SimplePath> p;
    SimplePathVertex *b = nullptr, *a = nullptr, *c = nullptr;
    DPoint bAt, aAt, cAt;
    EXPECT_EQ(context.getPickedTriple(p, b, a, c, bAt, aAt, cAt), kCusp);
    EXPECT_EQ(p, &path);
    EXPECT_EQ(SimplePathVertexTriple(b, a, c, kSmooth), picked);
    EXPECT_EQ(cAt, DPoint(13, 1));
    EXPECT_EQ(aAt, DPoint(10, 0));
}

// The changed segments: the previous neighbour with its incoming handle collapsed, the triple, the next
// neighbour with its outgoing handle collapsed, each present only where the drag changes that segment.
struct AffectedCase {
    int closed;
    int index;
    int role; // 0 incoming handle, 1 anchor, 2 outgoing handle
    Mode mode;
    bool breakMode;
    bool previous;
    bool next;
};

TEST(VertexPickContext, OnlyTheSegmentsTheDragChangesAreDrawn) {
    AffectedCase const cases[] = {
        {0, 1, 1, kCusp, false, true, true},     {0, 1, 2, kCusp, false, false, true},
        {0, 1, 0, kCusp, false, true, false},    {0, 1, 2, kSmooth, false, true, true},
        {0, 1, 2, kSmooth, true, true, true},    {0, 0, 1, kCusp, false, false, true},
        {0, 2, 1, kCusp, false, true, false},    {1, 0, 1, kCusp, false, true, true},
        {1, 2, 0, kSymmetric, true, true, true},
    };
    for (AffectedCase const& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << "closed " << c.closed << " index " << c.index << " role " << c.role);
        SimplePath path;
        for (int i = 0; i < 3; ++i) {
            Triple const t = tripleAt(i);
            EXPECT_EQ(appendTriple(path, t[0], t[1], t[2], i == c.index ? c.mode : kCusp),
                      SimplePath::Success);
        }
        path.setStrictClosed(c.closed);
        SimplePathVertexTriple const picked = tripleOf(path, c.index);
        SimplePathVertex* const vertex = c.role == 0   ? picked.first
                                         : c.role == 1 ? picked.anchor
                                                       : picked.last;
        OpenContext context(&path, vertex, vertex->getLocation());
        if (c.breakMode) {
            context.setCuspMode();
        }
        context.offset(DVector(0, 1));
        Triple const edited = {editing(context).first, editing(context).anchor, editing(context).last};
        int const prev = (c.index + 2) % 3, next = (c.index + 1) % 3;
        std::vector<Triple> want;
        if (c.previous) {
            want.push_back({tripleAt(prev)[1], tripleAt(prev)[1], tripleAt(prev)[2]});
        }
        want.push_back(edited);
        if (c.next) {
            want.push_back({tripleAt(next)[0], tripleAt(next)[1], tripleAt(next)[1]});
        }
        Drawer drawer;
        context.xorDraw(drawer, 0);
        ASSERT_EQ(drawer.callNames(), (std::vector<std::string>{"drawCurve", "drawCurveVertices"}));
        EXPECT_EQ(drawer.calls[0].triples, want);
        EXPECT_EQ(drawer.calls[0].closed, 0);
        EXPECT_EQ(drawer.calls[1].modeValues, std::vector<Mode>{c.mode}); // the mode as picked
        EXPECT_EQ(drawer.calls[1].first, 1);
        EXPECT_EQ(drawer.calls[1].second, 0);

        std::unique_ptr<SimplePathDrawer::CurveRep> rep(context.createCurveRep(drawer, 0));
        EXPECT_EQ(static_cast<recording::Rep&>(*rep).triples, want);
        // The original shape: the same parts from the start locations.
        std::unique_ptr<SimplePathDrawer::CurveRep> original(context.createOriginalCurveRep(drawer));
        std::vector<Triple> start = want;
        start[c.previous ? 1 : 0] = tripleAt(c.index);
        EXPECT_EQ(static_cast<recording::Rep&>(*original).triples, start);
    }
}

TEST(VertexPickContext, XorDrawWithHandlesMapsThroughTheTransform) {
    int const live = recording::liveReps();
    SimplePath path = makePath(3, 0, kSmooth);
    XYOffsetSimplePathTransform shift(100, 0);
    Context context(&path, tripleOf(path, 1).anchor, DPoint(10, 0), &shift);
    context.offset(DVector(0, 1));
    Drawer drawer;
    context.xorDraw(drawer, 1);
    EXPECT_EQ(drawer.log, (std::vector<std::string>{
                              "make",
                              "rep0 add (100 0) (100 0) (103 0)",
                              "rep0 add (108 1) (110 1) (113 1)",
                              "rep0 add (118 0) (120 0) (120 0)",
                              "rep0 open",
                              "drawCurve",
                              "drawEditedTriple (108 1) (110 1) (113 1)",
                              "rep0 delete",
                          }));
    EXPECT_TRUE(drawer.calls[0].wrapped);
    EXPECT_EQ(drawer.calls[1].modeValues, std::vector<Mode>{kSmooth});
    // The original shape is never mapped.
    std::unique_ptr<SimplePathDrawer::CurveRep> original(context.createOriginalCurveRep(drawer));
    EXPECT_EQ(original->getFinalRep(), nullptr);
    EXPECT_EQ(static_cast<recording::Rep&>(*original).triples[1], tripleAt(1));
    original.reset();

    // Asked without the transform, the rubber band is built in path coordinates and not wrapped.
    OpenContext open(&path, tripleOf(path, 1).anchor, DPoint(10, 0), &shift);
    std::unique_ptr<SimplePathDrawer::CurveRep> plain(open.createCurveRep(drawer, 0));
    EXPECT_EQ(plain->getFinalRep(), nullptr);
    EXPECT_EQ(static_cast<recording::Rep&>(*plain).triples[1], tripleAt(1));
    std::unique_ptr<SimplePathDrawer::CurveRep> mapped(open.createCurveRep(drawer, 1));
    ASSERT_NE(mapped->getFinalRep(), nullptr);
    EXPECT_EQ(static_cast<recording::Rep&>(*mapped->getFinalRep()).triples[1][1], DPoint(110, 0));
    plain.reset();
    mapped.reset();
    EXPECT_EQ(recording::liveReps(), live);
}

TEST(VertexPickContext, PermDrawDrawsThePathUpToThePickedTripleAndStops) {
    struct Case {
        int role;
        Mode mode;
        std::vector<std::string> log;
    };
    std::string const t0 = "add (-2 0) (0 0) (3 0)";
    Case const cases[] = {
        // An anchor drag changes both segments: the first curve holds triple 0, the second nothing.
        {1,
         kSmooth,
         {"make", "rep0 " + t0, "rep0 open", "drawCurveVertices", "drawCurve", "rep0 delete", "make",
          "rep1 open", "rep1 delete"}},
        // A cusp's outgoing handle leaves the previous segment: the picked triple's incoming side joins
        // the first curve.
        {2,
         kCusp,
         {"make", "rep0 " + t0, "rep0 add (8 0) (10 0) (10 0)", "rep0 open", "drawCurveVertices", "drawCurve",
          "rep0 delete", "make", "rep1 open", "rep1 delete"}},
        // A cusp's incoming handle leaves the next segment: the second curve is the outgoing side only;
        // triples 2 and 3 are not drawn again.
        {0,
         kCusp,
         {"make", "rep0 " + t0, "rep0 open", "drawCurveVertices", "drawCurve", "rep0 delete", "make",
          "rep1 add (10 0) (10 0) (13 0)", "rep1 open", "drawCurveVertices", "drawCurve", "rep1 delete"}},
    };
    for (Case const& c : cases) {
        SimplePath path = makePath(4, 1, c.mode);
        SimplePathVertexTriple const picked = tripleOf(path, 1);
        SimplePathVertex* const vertex = c.role == 0   ? picked.first
                                         : c.role == 1 ? picked.anchor
                                                       : picked.last;
        Context context(&path, vertex, vertex->getLocation());
        context.offset(DVector(5, 5)); // the permanent part does not follow the drag
        Drawer drawer;
        context.permDraw(drawer);
        EXPECT_EQ(drawer.log, c.log) << c.role;
        for (recording::Call const& call : drawer.calls) {
            if (call.what == "drawCurveVertices") {
                EXPECT_EQ(call.modeValues, std::vector<Mode>{c.mode});
            }
        }
    }
}

TEST(VertexPickContext, InertOnBadInputDrawsNothingAndNeverCrashes) {
    SimplePath path = makePath(3, 0);
    SimplePath other = makePath(3, 0);
    SimplePath empty;
    std::vector<std::unique_ptr<Context>> contexts;
    contexts.push_back(std::make_unique<Context>(&path, tripleOf(other, 1).anchor, DPoint()));
    contexts.push_back(std::make_unique<Context>(&path, nullptr, DPoint()));
    contexts.push_back(std::make_unique<Context>(&empty, tripleOf(other, 1).anchor, DPoint()));
    contexts.push_back(
        std::make_unique<Context>(PHashablePointer<SimplePath>(), tripleOf(other, 1).anchor, DPoint()));
    for (auto const& context : contexts) {
        context->offset(DVector(1, 1));
        context->move(DPoint(5, 5));
        context->createSnapKit();
        context->setCuspMode();
        EXPECT_EQ(context->isSnapKitActive(), 0);
        Drawer drawer;
        context->xorDraw(drawer, 1);
        context->xorDraw(drawer, 0);
        context->permDraw(drawer);
        EXPECT_EQ(context->createOriginalCurveRep(drawer), nullptr);
        EXPECT_TRUE(drawer.log.empty());
        EXPECT_EQ(context->createSimilar(), nullptr);
        SimplePathVertexPickAction const action = context->commit();
        EXPECT_EQ(action.getVertexTriple().anchor, nullptr);
        EXPECT_EQ(action.getLocationTriple().anchor, DPoint());
    }
}

TEST(VertexPickContext, OneVertexPathHasNeighboursOnlyWhenClosed) {
    for (int closed : {0, 1}) {
        SimplePath path;
        EXPECT_EQ(appendTriple(path, DPoint(-1, 0), DPoint(0, 0), DPoint(1, 0), kCusp), SimplePath::Success);
        path.setStrictClosed(closed);
        Context context(&path, tripleOf(path, 0).anchor, DPoint());
        context.createSnapKit(); // its own anchor is the "previous" one
        EXPECT_EQ(context.getSnapKit().getPO(), DPoint(0, 0));
        context.deleteSnapKit();
        context.move(DPoint(0, 2));
        Drawer drawer;
        context.xorDraw(drawer, 0);
        ASSERT_EQ(drawer.calls.size(), 2u);
        // Closed, the vertex is its own neighbour on both sides, seen where it started.
        EXPECT_EQ(drawer.calls[0].triples.size(), closed ? 3u : 1u);
        context.permDraw(drawer);
    }
}

TEST(VertexPickContext, AWholeDragLeavesThePathAndTheRepCountAlone) {
    SimplePath path = makePath(5, 1, kSmooth);
    std::string const before = bytesOf(path);
    int const live = recording::liveReps();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const inf = std::numeric_limits<double>::infinity();
    for (int role = 0; role < 3; ++role) {
        SimplePathVertexTriple const picked = tripleOf(path, 1);
        SimplePathVertex* const vertex = role == 0 ? picked.first : role == 1 ? picked.anchor : picked.last;
        XYOffsetSimplePathTransform shift(3, 4);
        Context context(&path, vertex, vertex->getLocation(), &shift);
        context.createSnapKit();
        Drawer drawer;
        context.permDraw(drawer);
        for (int step = 0; step < 20; ++step) {
            context.move(DPoint(10 + step, step * 0.5));
            std::size_t const callsBefore = drawer.calls.size();
            context.xorDraw(drawer, step % 2);
            // Every redraw: both changed segments (the picked vertex is smooth), mapped, around the
            // triple where the drag has put it.
            ASSERT_EQ(drawer.calls.size(), callsBefore + 2);
            recording::Call const& curve = drawer.calls[callsBefore];
            SimplePathLocationTriple const t = context.commit().getLocationTriple();
            ASSERT_EQ(curve.triples.size(), 3u);
            EXPECT_EQ(curve.triples[1][1], shift.transform(t.anchor));
            EXPECT_EQ(curve.triples[1][2], shift.transform(t.last));
        }
        for (DPoint const& p : {DPoint(nan, 1), DPoint(inf, -inf), DPoint(0, nan)}) {
            context.move(p);
            context.xorDraw(drawer, 1);
        }
        context.setCuspMode();
        context.offset(DVector(1, 1));
        context.xorDraw(drawer, 0);
        SimplePathVertexPickAction const action = context.commit();
        EXPECT_EQ(action.getLocationTriple().anchor, role == 1 ? DPoint(11, 1) : DPoint(10, 0));
        std::unique_ptr<Context const> similar(context.createSimilar());
        EXPECT_NE(similar, nullptr);
        EXPECT_EQ(recording::liveReps(), live);
        Context copy(context);
        copy.xorDraw(drawer, 1);
        EXPECT_EQ(recording::liveReps(), live);
    }
    EXPECT_EQ(bytesOf(path), before);
}

TEST(VertexPickContext, ARefusingDrawerGetsNothingDrawn) {
    SimplePath path = makePath(3, 0);
    XYOffsetSimplePathTransform shift(1, 1);
    Context context(&path, tripleOf(path, 1).anchor, DPoint(10, 0), &shift);
    Drawer drawer;
    drawer.refuseReps = true;
    context.xorDraw(drawer, 1);
    context.permDraw(drawer);
    EXPECT_EQ(context.createOriginalCurveRep(drawer), nullptr);
    EXPECT_TRUE(drawer.calls.empty());
}

} // namespace
