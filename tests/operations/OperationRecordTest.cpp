// Records: an operation described by coordinates, rebuilt by the factory through the host's pick
// function against a fresh copy of the drawing, must make the same edit there, also for a group of
// edits. Bad records give null.

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

// One edit of each record type on a fresh drawing; null past the last.
SimplePathOperation* edit(int which, Drawing& d) {
    auto position = [&d](int path, int index, double t) { return positionOf(*d.path(path), index, t); };
    SimplePathLocationTriple const to(DPoint(1, 90), DPoint(5, 95), DPoint(9, 90), Mode::Cusp);
    switch (which) {
    case 0:
        return F::createVertexPickOperation(d.path(0), SimplePathVertexPickAction(d.triple(0, 2), to), false);
    case 1:
        return F::createMoveSelectedVerticesOperation(d.path(0), d.triple(0, 1).last, DVector(3, 4), false);
    case 2:
        return F::createAddVertexAtPositionOperation(d.path(0), position(0, 1, 0.4), false);
    case 3: // the identity box form maps the unit box's corners exactly onto themselves
        return F::createAverageVertexOperation(d.path(0), d.triple(0, 3).anchor, DPoint(0, 0), DPoint(1, 1),
                                               DPoint(0, 1), 0x40 | 0x800, PBoxForm(), false);
    case 4:
        return F::createChangeVertexOperation(d.path(2), d.triple(2, 1), to, false);
    case 5:
        return F::createInsertVerticesOperation(
            d.path(1), {curved(DPoint(100, 60), 0.4), curved(DPoint(110, 70), 0.6)}, 0, false);
    case 6:
        return F::createDeleteVertexOperation(d.path(0), d.triple(0, 2).anchor, false);
    case 7:
        return F::createDeleteVertexOperation(d.path(1), d.triple(1, 2).first, false);
    case 8:
        return F::createJoinVerticesOperation(d.path(0), d.triple(0, 4).anchor, d.triple(1, 0).anchor,
                                              d.path(1), false);
    case 9:
        return F::createSetCuspModeOperation(d.path(2), d.triple(2, 0).anchor, false);
    case 10:
        return F::createSetSmoothModeOperation(d.path(0), d.triple(0, 3).last, false);
    case 11:
        return F::createSetSymmetricModeOperation(d.path(0), d.triple(0, 2).first, false);
    case 12:
        return F::createSetStraightModeOperation(d.path(2), d.triple(2, 3).last, false);
    case 13:
        return F::createSplitVertexOperation(d.path(0), position(0, 2, 0.3), nullptr, nullptr, false);
    case 14:
        return F::createSplitVertexOperation(d.path(2), d.triple(2, 2).anchor);
    case 15: { // a session of edits gathered into one group
        auto* group = new SimplePathMetaOperation;
        for (int member : {9, 1, 4, 10, 6}) {
            group->addOperation(edit(member, d));
        }
        group->addOperation(F::createAddVertexAtPositionOperation(d.path(1), position(1, 1, 0.4), false));
        return group;
    }
    default:
        return nullptr;
    }
}

Op rebuild(Info& record, Drawing& on) {
    record.pathSeg = &on.seg;
    record.pickCallback = &pickInDrawing;
    return Op(F::createOperationFromSII(&record));
}

TEST(OperationRecords, EveryRecordTypeRebuildsIntoTheSameEditOnACopy) {
    for (int which = 0; which < 16; ++which) {
        SCOPED_TRACE(which);
        Drawing original, copy;
        Op op(edit(which, original));
        ASSERT_NE(nullptr, op);
        Paths affected, copyAffected;
        SimplePathChangeInstruction change, copyChange;
        ASSERT_EQ(SimplePathOperation::Success, op->executeOperation(affected, change));
        Info* info = nullptr;
        ASSERT_EQ(2, op->RetreiveSegIndependentInfo(info)); // taken after the edit
        std::unique_ptr<Info> record(info);
        Op rebuilt = rebuild(*record, copy);
        ASSERT_NE(nullptr, rebuilt);
        ASSERT_EQ(SimplePathOperation::Success, rebuilt->executeOperation(copyAffected, copyChange));
        EXPECT_EQ(outcome(original, change), outcome(copy, copyChange));
        EXPECT_EQ(affected.size(), copyAffected.size());
        for (Drawing* d : {&original, &copy}) { // paths the edits made are the hosts' now
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
    EXPECT_EQ(SimplePath::Success,
              d.path(0)->locatePosition(positionOf(*d.path(0), 2, 0.5), moveRecord.vertexLocation));
    EXPECT_EQ(nullptr, Op(F::createOperationFromSII(record.get())));
    moveRecord.vertexLocation = vertexAt;
    EXPECT_NE(nullptr, Op(F::createOperationFromSII(record.get())));

    // Another operation's record is left alone; an operation holding a memento is not re-aimed.
    Info* same = record.get();
    EXPECT_EQ(0, Op(F::createSetCuspModeOperation(d.path(0), d.triple(0, 1).anchor, false))
                     ->RetreiveSegIndependentInfo(same));
    EXPECT_EQ(record.get(), same);
    EXPECT_EQ(vertexAt, moveRecord.vertexLocation);
    ForeignRecord lookalike(3);
    Info* foreign = &lookalike;
    EXPECT_EQ(0, move->RetreiveSegIndependentInfo(foreign));
    Paths affected;
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
    SimplePathVertexTriple const b0 = d.triple(1, 0);
    // Path 1 moved so that its first anchor lies on path 0's last.
    ASSERT_EQ(SimplePath::Success,
              d.path(1)->translate(d.triple(0, 4).anchor->getLocation() - b0.anchor->getLocation()));
    auto join = std::make_unique<JoinSimplePathVerticesOperation>(d.path(0), d.triple(0, 4).anchor, b0.anchor,
                                                                  d.path(1));
    Info* info = nullptr;
    ASSERT_EQ(2, join->RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    Op rebuilt = rebuild(*record, d);
    ASSERT_NE(nullptr, rebuilt);
    Paths affected;
    SimplePathChangeInstruction change;
    EXPECT_EQ(SimplePathOperation::SameVertex, rebuilt->executeOperation(affected, change));
}

} // namespace
