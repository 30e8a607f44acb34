// Records: an operation described by coordinates, rebuilt by the factory through the host's pick
// function against a fresh copy of the drawing, must make the same edit there, also for a group of
// edits. Bad records give null.

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/JoinSimplePathVerticesOperation.h"
#include "simplepath/operations/MoveSelectedVerticesOperation.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/operations/setCuspModeOperation.h"

using namespace ops_test;

namespace {

using F = SimplePathOperationFactory;
using Op = std::unique_ptr<SimplePathOperation>;
using Info = SimplePathOperation::SegmentIndependentInformation;
using Mode = SimplePathVertexTriple::VertexTripleMode;
using Paths = std::list<PHashablePointer<SimplePath>>;

// Every path of the drawing, then every path the edit added, serialized.
std::vector<std::string> outcome(Drawing const& drawing, SimplePathChangeInstruction const& change) {
    std::vector<std::string> out = drawing.bytes();
    Paths added;
    change.simplePathsAdded(added);
    for (auto const& p : added) {
        out.push_back(bytesOf(*p));
    }
    return out;
}

TEST(OperationRecords, EveryRecordTypeRebuildsIntoTheSameEditOnACopy) {
    using Make = std::function<SimplePathOperation*(Drawing&)>;
    auto position = [](Drawing& d, int path, int index, double t) {
        SimplePathPosition at;
        EXPECT_EQ(SimplePath::Success, d.path(path)->makePosition(index, t, at));
        return at;
    };
    // A session of vertex edits gathered into one group, replayed as one step.
    Make const session = [&](Drawing& d) {
        auto* group = new SimplePathMetaOperation;
        group->addOperationList({
            F::createSetCuspModeOperation(d.path(2), d.triple(2, 0).anchor, false),
            F::createMoveSelectedVerticesOperation(d.path(0), d.triple(0, 1).last, DVector(3, 4), false),
            F::createChangeVertexOperation(
                d.path(2), d.triple(2, 1),
                SimplePathLocationTriple(DPoint(1, 90), DPoint(5, 95), DPoint(9, 90), Mode::Cusp), false),
            F::createAddVertexAtPositionOperation(d.path(1), position(d, 1, 1, 0.4), false),
            F::createSetSmoothModeOperation(d.path(0), d.triple(0, 3).last, false),
            F::createDeleteVertexOperation(d.path(0), d.triple(0, 2).anchor, false),
        });
        EXPECT_EQ(6u, group->getOperations().size());
        return group;
    };
    std::pair<char const*, Make> const cases[] = {
        {"pick",
         [](Drawing& d) {
             SimplePathLocationTriple const to(DPoint(30, 9), DPoint(41, 7), DPoint(50, 2), Mode::Smooth);
             return F::createVertexPickOperation(d.path(0), SimplePathVertexPickAction(d.triple(0, 2), to),
                                                 false);
         }},
        {"move",
         [](Drawing& d) {
             return F::createMoveSelectedVerticesOperation(d.path(0), d.triple(0, 1).last, DVector(3, 4),
                                                           false);
         }},
        {"add",
         [&](Drawing& d) {
             return F::createAddVertexAtPositionOperation(d.path(0), position(d, 0, 1, 0.4), false);
         }},
        // The identity box form maps the unit box's corners exactly onto themselves, so the points the
        // record carries (mapped once, deliberately) rebuild into the same edit.
        {"average",
         [](Drawing& d) {
             return F::createAverageVertexOperation(d.path(0), d.triple(0, 3).anchor, DPoint(0, 0),
                                                    DPoint(1, 1), DPoint(0, 1), 0x40 | 0x800, PBoxForm(),
                                                    false);
         }},
        {"change",
         [](Drawing& d) {
             SimplePathLocationTriple const to(DPoint(1, 90), DPoint(5, 95), DPoint(9, 90), Mode::Cusp);
             return F::createChangeVertexOperation(d.path(2), d.triple(2, 1), to, false);
         }},
        {"insert at the front",
         [](Drawing& d) {
             std::list<SimplePathLocationTriple> run{curved(DPoint(100, 60), 0.4),
                                                     curved(DPoint(110, 70), 0.6)};
             return F::createInsertVerticesOperation(d.path(1), run, 0, false);
         }},
        {"delete anchor",
         [](Drawing& d) { return F::createDeleteVertexOperation(d.path(0), d.triple(0, 2).anchor, false); }},
        {"delete handle",
         [](Drawing& d) { return F::createDeleteVertexOperation(d.path(1), d.triple(1, 2).first, false); }},
        {"join",
         [](Drawing& d) {
             return F::createJoinVerticesOperation(d.path(0), d.triple(0, 4).anchor, d.triple(1, 0).anchor,
                                                   d.path(1), false);
         }},
        {"cusp",
         [](Drawing& d) { return F::createSetCuspModeOperation(d.path(2), d.triple(2, 0).anchor, false); }},
        {"smooth through a handle",
         [](Drawing& d) { return F::createSetSmoothModeOperation(d.path(0), d.triple(0, 3).last, false); }},
        {"symmetric",
         [](Drawing& d) {
             return F::createSetSymmetricModeOperation(d.path(0), d.triple(0, 2).first, false);
         }},
        {"straight",
         [](Drawing& d) { return F::createSetStraightModeOperation(d.path(2), d.triple(2, 3).last, false); }},
        {"split open on the curve",
         [&](Drawing& d) {
             return F::createSplitVertexOperation(d.path(0), position(d, 0, 2, 0.3), nullptr, nullptr, false);
         }},
        {"split closed",
         [](Drawing& d) { return F::createSplitVertexOperation(d.path(2), d.triple(2, 2).anchor); }},
        {"group", session},
    };
    for (auto const& [name, make] : cases) {
        SCOPED_TRACE(name);
        Drawing original, copy;
        Op op(make(original));
        ASSERT_NE(nullptr, op);
        Paths affected, copyAffected;
        SimplePathChangeInstruction change, copyChange;
        ASSERT_EQ(SimplePathOperation::Success, op->executeOperation(affected, change));
        Info* info = nullptr;
        ASSERT_EQ(2, op->RetreiveSegIndependentInfo(info)); // taken after the edit
        std::unique_ptr<Info> record(info);
        record->pathSeg = &copy.seg;
        record->pickCallback = &pickInDrawing;
        Op rebuilt(F::createOperationFromSII(record.get()));
        ASSERT_NE(nullptr, rebuilt);
        ASSERT_EQ(SimplePathOperation::Success, rebuilt->executeOperation(copyAffected, copyChange));
        EXPECT_EQ(outcome(original, change), outcome(copy, copyChange));
        EXPECT_EQ(affected.size(), copyAffected.size());
        // Paths the edits made are the hosts' now.
        for (Drawing* d : {&original, &copy}) {
            Paths added;
            (d == &original ? change : copyChange).simplePathsAdded(added);
            for (auto const& p : added) {
                d->pool.emplace_back(p.pointer);
            }
        }
        op.reset();
        rebuilt.reset();
    }
}

// A record of the right tag that is not the library's class of that tag.
class ForeignRecord : public Info {
  public:
    explicit ForeignRecord(int t) : tag(t) {}
    int getType() const override { return tag; }
    int tag;
};

int findsNothing(PathSeg const*, DPoint const&, double, PHashablePointer<SimplePath>&, SimplePathVertex*&,
                 int&) {
    return 0;
}

TEST(OperationRecords, BadRecordsRebuildIntoNothing) {
    Drawing d;
    EXPECT_EQ(nullptr, Op(F::createOperationFromSII(nullptr)));
    for (int tag : {0, 2, 8, 16, -1, 11}) {
        ForeignRecord foreign(tag);
        foreign.pathSeg = &d.seg;
        foreign.pickCallback = &pickInDrawing;
        EXPECT_EQ(nullptr, Op(F::createOperationFromSII(&foreign))) << tag;
    }
    Info base;
    EXPECT_EQ(0, base.getType());
    EXPECT_EQ(nullptr, Op(F::createOperationFromSII(&base)));

    Op move(F::createMoveSelectedVerticesOperation(d.path(0), d.triple(0, 1).anchor, DVector(1, 1), false));
    Info* info = nullptr;
    ASSERT_EQ(2, move->RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    EXPECT_EQ(nullptr, Op(F::createOperationFromSII(record.get()))); // no design object
    record->pathSeg = &d.seg;
    EXPECT_EQ(nullptr, Op(F::createOperationFromSII(record.get()))); // no pick function
    record->pickCallback = &findsNothing;
    EXPECT_EQ(nullptr, Op(F::createOperationFromSII(record.get())));
    record->pickCallback = &pickInDrawing;
    // A location on a curve but at no vertex finds a path without a vertex: a move needs a vertex.
    auto& moveRecord = dynamic_cast<MoveSelectedVerticesOperation::MoveSelVertsOpInformation&>(*record);
    DPoint const vertexAt = moveRecord.vertexLocation;
    SimplePathPosition onCurve;
    EXPECT_EQ(SimplePath::Success, d.path(0)->makePosition(2, 0.5, onCurve));
    EXPECT_EQ(SimplePath::Success, d.path(0)->locatePosition(onCurve, moveRecord.vertexLocation));
    EXPECT_EQ(nullptr, Op(F::createOperationFromSII(record.get())));
    moveRecord.vertexLocation = vertexAt;
    EXPECT_NE(nullptr, Op(F::createOperationFromSII(record.get())));

    // Another operation's record is left alone; an operation holding a memento is not re-aimed.
    Op cusp(F::createSetCuspModeOperation(d.path(0), d.triple(0, 1).anchor, false));
    Info* same = record.get();
    EXPECT_EQ(0, cusp->RetreiveSegIndependentInfo(same));
    EXPECT_EQ(record.get(), same);
    EXPECT_EQ(vertexAt, moveRecord.vertexLocation);
    ForeignRecord lookalike(3);
    Info* foreign = &lookalike;
    EXPECT_EQ(0, move->RetreiveSegIndependentInfo(foreign));
    EXPECT_EQ(0, cusp->ApplySegIndependentInfo(same));
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePathOperation::Success, move->executeOperation(affected, change));
    moveRecord.vertexLocation = vertexAt + DVector(1, 1); // names the moved vertex where it stands now
    EXPECT_EQ(0, move->ApplySegIndependentInfo(same));
    EXPECT_EQ(1, move->RetreiveSegIndependentInfo(same)); // fills the caller's record
    EXPECT_EQ(vertexAt, moveRecord.vertexLocation);       // where the vertex stood before the move
    Info* none = nullptr;
    EXPECT_EQ(0, move->ApplySegIndependentInfo(none));
}

TEST(OperationRecords, JoinedEndsAtOnePlaceCannotBeToldApartByLocation) {
    Drawing d;
    // Move path 1's first anchor (with its handles) onto path 0's last anchor.
    SimplePathVertexTriple const b0 = d.triple(1, 0);
    DVector const onto = d.triple(0, 4).anchor->getLocation() - b0.anchor->getLocation();
    Op move(F::createMoveSelectedVerticesOperation(d.path(1), b0.anchor, onto, false));
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePathOperation::Success, move->executeOperation(affected, change));
    auto join = std::make_unique<JoinSimplePathVerticesOperation>(d.path(0), d.triple(0, 4).anchor, b0.anchor,
                                                                  d.path(1));
    Info* info = nullptr;
    ASSERT_EQ(2, join->RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    record->pathSeg = &d.seg;
    record->pickCallback = &pickInDrawing;
    Op rebuilt(F::createOperationFromSII(record.get()));
    ASSERT_NE(nullptr, rebuilt);
    SimplePathChangeInstruction again;
    EXPECT_EQ(SimplePathOperation::SameVertex, rebuilt->executeOperation(affected, again));
}

} // namespace
