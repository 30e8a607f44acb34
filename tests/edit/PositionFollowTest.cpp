// Positions held elsewhere follow an edit: each (path, position) pair recorded before the edit and
// carried through the change instruction must name the same drawn point afterwards, wherever the edit
// kept that point.

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "EditingHelpers.h"

using namespace editing;

namespace {

using Pair = SimplePathChangeInstruction::PathPosition;

struct Held {
    Pair pair;
    DPoint point;
};

// Positions at quarter steps on every segment of each path, and the end anchor.
std::vector<Held> holdPositions(std::vector<SimplePath*> const& paths) {
    std::vector<Held> out;
    for (SimplePath* path : paths) {
        int const segments = path->numTriples() - (path->isClosedSimplePath() != 0 ? 0 : 1);
        for (int i = 0; i <= segments; ++i) {
            for (double t : {0.0, 0.25, 0.5, 0.75}) {
                if (i == segments && t != 0.0) {
                    break;
                }
                SimplePathPosition p;
                path->makePosition(i, t, p);
                out.push_back({{path, p}, pointAt(*path, i, t)});
            }
        }
    }
    return out;
}

// `kept` says which held pairs the edit is meant to keep on the drawn curve; nullptr keeps them all.
void expectFollow(std::vector<Held> const& held, SimplePathChangeInstruction const& change,
                  std::function<bool(Pair const&)> const& kept = nullptr) {
    int checked = 0;
    for (Held const& h : held) {
        if (kept && !kept(h.pair)) {
            continue;
        }
        Pair const moved = change.translate(h.pair);
        SimplePath const& path = *moved.first;
        SCOPED_TRACE(testing::Message()
                     << "(" << h.pair.second.getIndex() << ", " << h.pair.second.getParameter() << ") -> ("
                     << moved.second.getIndex() << ", " << moved.second.getParameter() << ")");
        int const segments = path.numTriples() - (path.isClosedSimplePath() != 0 ? 0 : 1);
        ASSERT_GE(segments, moved.second.getIndex()); // (segments, 0.0) is the end anchor
        expectNear(h.point, pointAt(path, moved.second.getIndex(), moved.second.getParameter()), 1e-9);
        ++checked;
    }
    EXPECT_GT(checked, 0);
}

} // namespace

TEST(PositionFollow, Insertion) {
    struct Row {
        int closed, index;
        double t;
    } const rows[] = {{0, 1, 0.3}, {0, 0, 0.9}, {1, 3, 0.6}, {1, 0, 0.5}};
    for (Row const& row : rows) {
        SCOPED_TRACE(row.index * 10 + row.closed);
        SimplePath path = wiggly(4, row.closed);
        auto const held = holdPositions({&path});
        SimplePathPosition p;
        path.makePosition(row.index, row.t, p);
        SimplePathChangeInstruction change;
        ASSERT_EQ(SimplePath::Success, path.addVertexAtPosition(p, change));
        expectFollow(held, change);
    }
}

// Splitting an open path moves every position onto one of the pieces; opening a closed path rotates
// its positions.
TEST(PositionFollow, SplitAndRotation) {
    for (int closed : {0, 1}) {
        for (int k : {0, 2, 3}) {
            SCOPED_TRACE(k * 10 + closed);
            SimplePath path = wiggly(4, closed);
            SimplePath first;
            SimplePath second;
            PHashablePointer<SimplePath> firstPath(&first), secondPath(&second);
            auto const held = holdPositions({&path});
            SimplePathChangeInstruction change;
            ASSERT_EQ(SimplePath::Success,
                      path.splitVertex(path.getTripleList()[k].anchor, change, firstPath, secondPath));
            expectFollow(held, change);
            freeRemoved(change);
        }
    }
}

TEST(PositionFollow, Join) {
    for (bool oneAtEnd : {true, false}) {
        for (bool twoAtStart : {true, false}) {
            for (bool touching : {false, true}) {
                SCOPED_TRACE(oneAtEnd * 4 + twoAtStart * 2 + touching);
                SimplePath a = wiggly(3);
                SimplePath b = wiggly(3);
                SimplePathVertex* const v1 = a.getTripleList()[oneAtEnd ? 2 : 0].anchor;
                SimplePathVertex* const v2 = b.getTripleList()[twoAtStart ? 0 : 2].anchor;
                b.translate(touching ? v1->getLocation() - v2->getLocation() : DVector(5, 40));
                SimplePath joined;
                PHashablePointer<SimplePath> p1(&a), p2(&b), result(&joined);
                auto const held = holdPositions({&a, &b});
                SimplePathChangeInstruction change;
                ASSERT_EQ(SimplePath::Success, SimplePath::join(p1, v1, p2, v2, change, result));
                // A merge folds the segment of path2 next to vertex2 into the (empty) connecting one, at
                // half the parameter range each: points of that segment, and vertex2's, move. When path1 was
                // reversed the merged anchor's incoming handle changes too (see join), moving path1's segment
                // next to it.
                int const twoSegmentAtJoint = twoAtStart ? 0 : 1;
                expectFollow(held, change, [&](Pair const& pair) {
                    if (!touching) {
                        return true;
                    }
                    int const i = pair.second.getIndex();
                    bool const inside = pair.second.getParameter() != 0.0;
                    if (pair.first == &b) {
                        // vertex2's own position goes with the folded segment as well.
                        int const twoAnchor = twoAtStart ? 0 : 2;
                        return !(i == twoSegmentAtJoint && inside) && !(i == twoAnchor && !inside);
                    }
                    return oneAtEnd || !(i == 0 && inside);
                });
                freeRemoved(change);
            }
        }
    }
}
