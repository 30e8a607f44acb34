// The spatial index answers every query exactly as the path's linear member does (same result, same
// position bit for bit, same vertex, same crossings in the same order), on seeded random paths of many
// kinds, and notices when the path has been edited.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathMemento.h"
#include "simplepath/path/SimplePathSpatialIndex.h"
#include "support/PathQueryHelpers.h"
#include "support/WigglyPath.h"

namespace {

using support::UnitRandom;

bool sameDouble(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

bool samePosition(SimplePathPosition const& a, SimplePathPosition const& b) {
    return a.getIndex() == b.getIndex() && sameDouble(a.getParameter(), b.getParameter());
}

std::string describe(SimplePathPosition const& p) {
    return "(" + std::to_string(p.getIndex()) + ", " + std::to_string(p.getParameter()) + ")";
}

enum class Shape {
    Blob,       // a wiggly ring: segments as long as the wiggles
    Scribble,   // a random walk that now and then jumps across the whole drawing
    Degenerate, // retracted handles, repeated anchors, whole triples repeated, zero-length segments
};

// A path of `n` triples in a square of side `scale` centred on `centre`.
SimplePath randomPath(std::uint64_t seed, int n, int closedFlag, Shape shape, double scale, DPoint centre) {
    UnitRandom random(seed);
    SimplePath path;
    DPoint at(0.0, 0.0);
    double const step = 1.0 / (n > 1 ? n : 1);
    support::TriplePoints previous{};
    std::vector<support::TriplePoints> triples;
    for (int i = 0; i < n; ++i) {
        support::TriplePoints t;
        if (shape == Shape::Blob) {
            double const angle = 6.283185307179586 * i / (n > 0 ? n : 1);
            double const r = 0.4 + random.between(-2.0, 2.0) * step;
            at = DPoint(r * std::cos(angle), r * std::sin(angle));
        } else if (shape == Shape::Scribble && random.next() < 0.05) {
            at = DPoint(random.between(-0.5, 0.5), random.between(-0.5, 0.5));
        } else {
            at = at + DVector(random.between(-3.0, 3.0) * step, random.between(-3.0, 3.0) * step);
        }
        double const reach = 2.0 * step;
        t.anchor = at;
        t.first = at + DVector(random.between(-reach, reach), random.between(-reach, reach));
        t.last = at + DVector(random.between(-reach, reach), random.between(-reach, reach));
        if (shape == Shape::Degenerate && i > 0) {
            double const u = random.next();
            if (u < 0.2) {
                t.first = t.last = t.anchor; // straight
            } else if (u < 0.35) {
                t.anchor = previous.anchor; // a zero-length segment, handles apart
                at = t.anchor;
            } else if (u < 0.45) {
                t = previous; // the whole triple again
            } else if (u < 0.5) {
                t.first = t.last = t.anchor = previous.anchor; // a point segment
            }
        }
        previous = t;
        triples.push_back(t);
    }
    for (support::TriplePoints& t : triples) {
        for (DPoint* p : {&t.first, &t.anchor, &t.last}) {
            *p = DPoint(centre.x + scale * p->x, centre.y + scale * p->y);
        }
    }
    support::buildPath(path, triples, closedFlag);
    return path;
}

std::vector<DPoint> vertexLocations(SimplePath const& path) {
    std::vector<DPoint> out;
    for (int i = 0; i < path.numTriples(); ++i) {
        SimplePathVertexTriple t;
        EXPECT_EQ(SimplePath::Success, path.getTriple(i, t));
        out.push_back(t.first->getLocation());
        out.push_back(t.anchor->getLocation());
        out.push_back(t.last->getLocation());
    }
    return out;
}

// Query points: vertices exactly, points on the curve, points near it and anywhere around it.
std::vector<DPoint> queryPoints(SimplePath const& path, UnitRandom& random, double scale, DPoint centre) {
    std::vector<DPoint> points;
    std::vector<DPoint> const vertices = vertexLocations(path);
    for (int k = 0; k < 12 && !vertices.empty(); ++k) {
        points.push_back(vertices[static_cast<std::size_t>(random.next() * vertices.size())]);
    }
    int const segments = support::segmentCount(path);
    for (int k = 0; k < 12 && segments > 0; ++k) {
        PBezier const b = support::segmentOf(path, static_cast<int>(random.next() * segments));
        DPoint const on = b.bValue(random.next());
        points.push_back(on);
        double const nudge = scale * 1e-3;
        points.push_back(on + DVector(random.between(-nudge, nudge), random.between(-nudge, nudge)));
    }
    for (int k = 0; k < 12; ++k) {
        points.emplace_back(centre.x + scale * random.between(-0.7, 0.7),
                            centre.y + scale * random.between(-0.7, 0.7));
    }
    return points;
}

// Runs every query both ways and expects identical answers.
void expectSameAnswers(SimplePathSpatialIndex const& index, SimplePath const& path, UnitRandom& random,
                       double scale, DPoint centre, std::string const& what) {
    std::vector<DPoint> const points = queryPoints(path, random, scale, centre);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> const tolerances = {0.0, scale * 1e-3, scale * 0.02, scale * 0.3, -scale * 0.02, nan};
    for (std::size_t k = 0; k < points.size(); ++k) {
        DPoint const q = points[k];
        SCOPED_TRACE(what + " query " + std::to_string(k));

        SimplePathPosition linear, indexed;
        double linearDistance = -1.0, indexedDistance = -1.0;
        ASSERT_EQ(path.findClosestPosition(q, linear, linearDistance),
                  index.findClosestPosition(q, indexed, indexedDistance));
        EXPECT_TRUE(samePosition(linear, indexed)) << describe(linear) << " vs " << describe(indexed);
        EXPECT_TRUE(sameDouble(linearDistance, indexedDistance))
            << linearDistance << " vs " << indexedDistance;

        double const tolerance = tolerances[k % tolerances.size()];
        SimplePathVertex* linearVertex = nullptr;
        SimplePathVertex* indexedVertex = nullptr;
        EXPECT_EQ(path.pickVertex(q, tolerance, linearVertex), index.pickVertex(q, tolerance, indexedVertex));
        EXPECT_EQ(linearVertex, indexedVertex);

        SimplePathPosition linearPick, indexedPick;
        EXPECT_EQ(path.pickPosition(q, tolerance, linearPick), index.pickPosition(q, tolerance, indexedPick));
        EXPECT_TRUE(samePosition(linearPick, indexedPick))
            << describe(linearPick) << " vs " << describe(indexedPick);

        // Lines through the point: at a random angle, horizontal, and through another query point.
        DPoint const other = points[(k * 7 + 3) % points.size()];
        double const angle = random.between(0.0, 3.14159);
        for (DPoint const b :
             {q + DVector(std::cos(angle), std::sin(angle)) * scale, q + DVector(scale, 0.0), other}) {
            std::list<SimplePathPosition> linearCrossings, indexedCrossings;
            EXPECT_EQ(path.pretransformFindIntersections(q, b, IdTrans<DPoint>(), linearCrossings),
                      index.findIntersections(q, b, indexedCrossings));
            ASSERT_EQ(linearCrossings.size(), indexedCrossings.size());
            auto at = indexedCrossings.begin();
            for (SimplePathPosition const& c : linearCrossings) {
                EXPECT_TRUE(samePosition(c, *at)) << describe(c) << " vs " << describe(*at);
                ++at;
            }
        }

        double const half = scale * std::pow(10.0, random.between(-3.0, -0.5));
        DPoint const lo(q.x - half, q.y - half * random.between(0.2, 1.0));
        DPoint const hi(q.x + half * random.between(0.2, 1.0), q.y + half);
        // The box test flattens at a tolerance of 1.0 unit, so on drawings far larger than device units
        // it is millions of points per segment: compared on moderate scales only.
        if (scale < 1e5) {
            EXPECT_EQ(path.pretransformInBox(IdTrans<DPoint>(), lo, hi), index.inBox(lo, hi));
        }
    }
}

struct Scale {
    double size;
    DPoint centre;
};

TEST(SpatialIndex, AnswersAsTheLinearMembersOnRandomPaths) {
    std::vector<Scale> const scales = {
        {2000.0, {0.0, 0.0}}, {1e150, {-3e150, 1e149}}, {1e-150, {2e-150, 0.0}}, {1.0, {1e9, -1e9}}};
    std::vector<int> const sizes = {0, 1, 2, 3, 4, 5, 17, 64, 333};
    std::uint64_t seed = 1;
    for (Shape shape : {Shape::Blob, Shape::Scribble, Shape::Degenerate}) {
        for (int n : sizes) {
            for (int closedFlag : {0, 1}) {
                Scale const s = scales[seed % scales.size()];
                SimplePath const path = randomPath(seed, n, closedFlag, shape, s.size, s.centre);
                SimplePathSpatialIndex index;
                ASSERT_EQ(SimplePath::Success, index.build(path));
                ASSERT_TRUE(index.isCurrent());
                UnitRandom random(seed * 7919);
                expectSameAnswers(index, path, random, s.size, s.centre,
                                  "shape " + std::to_string(static_cast<int>(shape)) + " n " +
                                      std::to_string(n) + " closed " + std::to_string(closedFlag) + " seed " +
                                      std::to_string(seed));
                ++seed;
            }
        }
    }
}

TEST(SpatialIndex, AnswersAsTheLinearMembersOnALongPath) {
    SimplePath path;
    support::buildWigglyBlob(path, 5000, 99);
    SimplePathSpatialIndex index;
    ASSERT_EQ(SimplePath::Success, index.build(path));
    UnitRandom random(5);
    SimplePathSpatialIndex const copied(index); // a copy describes the same path
    ASSERT_TRUE(copied.isCurrent());
    expectSameAnswers(copied, path, random, 2000.0, DPoint(0.0, 0.0), "blob");
}

// Bad coordinates are never pruned away: the index answers as the member does, whatever that is.
TEST(SpatialIndex, NonFiniteCoordinatesGiveTheMembersAnswers) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const inf = std::numeric_limits<double>::infinity();
    for (int closedFlag : {0, 1}) {
        SimplePath path = randomPath(3, 40, closedFlag, Shape::Blob, 100.0, DPoint(0.0, 0.0));
        std::list<SimplePathLocationTriple> triples;
        EXPECT_EQ(SimplePath::Success, path.getLocationTripleList(triples));
        int i = 0;
        for (SimplePathLocationTriple& t : triples) {
            if (i == 5) {
                t.last = DPoint(nan, 1.0); // a NaN handle
            } else if (i == 17) {
                t.anchor = DPoint(3.0, nan); // a NaN anchor
            } else if (i == 30) {
                t.first = DPoint(inf, -inf);
            }
            ++i;
        }
        ASSERT_EQ(SimplePath::Success, path.setLocationTripleList(triples));
        SimplePathSpatialIndex index;
        ASSERT_EQ(SimplePath::Success, index.build(path));
        UnitRandom random(11);
        expectSameAnswers(index, path, random, 100.0, DPoint(0.0, 0.0), "non-finite");
        // Non-finite query points and boxes too.
        SimplePathPosition linear, indexed;
        double d1 = 0.0, d2 = 0.0;
        for (DPoint const q : {DPoint(nan, 0.0), DPoint(inf, 3.0), DPoint(-inf, inf)}) {
            EXPECT_EQ(path.findClosestPosition(q, linear, d1), index.findClosestPosition(q, indexed, d2));
            EXPECT_TRUE(samePosition(linear, indexed));
            EXPECT_TRUE(sameDouble(d1, d2));
            EXPECT_EQ(path.pretransformInBox(IdTrans<DPoint>(), q, DPoint(50.0, 50.0)),
                      index.inBox(q, DPoint(50.0, 50.0)));
        }
    }
}

TEST(SpatialIndex, NeverBuiltOrEmpty) {
    SimplePathSpatialIndex index;
    SimplePathPosition position;
    SimplePathVertex* vertex = nullptr;
    std::list<SimplePathPosition> crossings;
    EXPECT_FALSE(index.isCurrent());
    EXPECT_EQ(nullptr, index.getPath());
    EXPECT_EQ(SimplePath::Failure, index.refit());
    EXPECT_EQ(SimplePath::Failure, index.findClosestPosition({0, 0}, position));
    EXPECT_EQ(SimplePath::Failure, index.findIntersections({0, 0}, {1, 1}, crossings));
    EXPECT_EQ(SimplePath::Failure, index.pickVertex({0, 0}, 1.0, vertex));
    EXPECT_EQ(SimplePath::Failure, index.pickPosition({0, 0}, 1.0, position));
    EXPECT_EQ(0, index.inBox({-1, -1}, {1, 1}));

    SimplePath empty;
    ASSERT_EQ(SimplePath::Success, index.build(empty));
    EXPECT_TRUE(index.isCurrent());
    EXPECT_EQ(&empty, index.getPath());
    EXPECT_EQ(SimplePath::Failure, index.findClosestPosition({0, 0}, position));
    index.clear();
    EXPECT_FALSE(index.isCurrent());
}

// Every kind of edit through the library's members makes the index stale; a stale index answers through
// the member, so its answers stay right. A refit brings it back when the count of triples is unchanged.
TEST(SpatialIndex, StaleAfterEditsAndRefitAfterMoves) {
    struct Edit {
        char const* name;
        bool keepsCount;
        void (*apply)(SimplePath&);
    };
    static SimplePath other = randomPath(77, 30, 1, Shape::Blob, 50.0, DPoint(10.0, 0.0));
    std::vector<Edit> const edits = {
        {"translate", true,
         [](SimplePath& p) { EXPECT_EQ(SimplePath::Success, p.translate(DVector(3.0, -1.0))); }},
        {"change triple", true,
         [](SimplePath& p) {
             SimplePathVertexTriple t;
             EXPECT_EQ(SimplePath::Success, p.getTriple(7, t));
             SimplePathChangeInstruction change;
             EXPECT_EQ(SimplePath::Success,
                       p.changeTriple(t.first, DPoint(500, 500), t.anchor, DPoint(510, 500), t.last,
                                      DPoint(520, 500), SimplePathVertexTriple::Cusp, change));
         }},
        {"location list", true,
         [](SimplePath& p) {
             std::list<SimplePathLocationTriple> triples;
             EXPECT_EQ(SimplePath::Success, p.getLocationTripleList(triples));
             triples.front().anchor = DPoint(-900.0, 900.0);
             EXPECT_EQ(SimplePath::Success, p.setLocationTripleList(triples));
         }},
        {"open", true, [](SimplePath& p) { p.setStrictClosed(0); }},
        {"delete vertex", false,
         [](SimplePath& p) {
             SimplePathVertexTriple t;
             EXPECT_EQ(SimplePath::Success, p.getTriple(3, t));
             SimplePathChangeInstruction change;
             EXPECT_EQ(SimplePath::Success, p.deleteVertex(t.anchor, change));
             // The removed triple's vertices are the caller's to free.
             delete t.first;
             delete t.anchor;
             delete t.last;
         }},
        {"add vertex", false,
         [](SimplePath& p) {
             SimplePathPosition at;
             EXPECT_EQ(SimplePath::Success, p.makePosition(2, 0.5, at));
             SimplePathChangeInstruction change;
             EXPECT_EQ(SimplePath::Success, p.addVertexAtPosition(at, change));
         }},
        {"assign", true, [](SimplePath& p) { p = other; }},
        {"undo", true,
         [](SimplePath& p) {
             SimplePathMemento* memento = nullptr;
             EXPECT_EQ(SimplePath::Success, p.createMemento(&memento));
             std::unique_ptr<SimplePathMemento> owned(memento);
             EXPECT_EQ(SimplePath::Success, p.translate(DVector(1.0, 1.0)));
             EXPECT_EQ(SimplePath::Success, p.undo(memento));
         }},
    };
    for (Edit const& edit : edits) {
        SCOPED_TRACE(edit.name);
        SimplePath path = randomPath(21, 30, 1, Shape::Blob, 50.0, DPoint(0.0, 0.0));
        SimplePathSpatialIndex index;
        ASSERT_EQ(SimplePath::Success, index.build(path));
        ASSERT_TRUE(index.isCurrent());
        edit.apply(path);
        EXPECT_FALSE(index.isCurrent());
        UnitRandom random(3);
        expectSameAnswers(index, path, random, 50.0, DPoint(0.0, 0.0), edit.name);
        bool const sameShape = edit.keepsCount && path.isClosedSimplePath() != 0;
        EXPECT_EQ(sameShape ? SimplePath::Success : SimplePath::Failure, index.refit());
        EXPECT_EQ(sameShape, index.isCurrent());
        if (!sameShape) {
            ASSERT_EQ(SimplePath::Success, index.build(path));
            EXPECT_TRUE(index.isCurrent());
        }
        expectSameAnswers(index, path, random, 50.0, DPoint(0.0, 0.0), edit.name);
    }
}

} // namespace
