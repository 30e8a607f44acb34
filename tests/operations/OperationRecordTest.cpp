// Records: an operation described by coordinates, rebuilt by the factory through the host's pick
// function on a fresh copy of the drawing, must make the same edit there. Bad records give null.

#include <list>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"

using namespace ops_test;

namespace {

using Meta = SimplePathMetaOperation;

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

// One edit of each record type on a fresh drawing.
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
        return F::createJoinVerticesOperation(d.path(0), d.triple(0, 4).anchor, d.triple(1, 0).anchor,
                                              d.path(1), false);
    case 8:
        return F::createSetCuspModeOperation(d.path(2), d.triple(2, 0).anchor, false);
    case 9:
        return F::createSetSmoothModeOperation(d.path(0), d.triple(0, 3).last, false);
    case 10:
        return F::createSetSymmetricModeOperation(d.path(0), d.triple(0, 2).first, false);
    case 11:
        return F::createSetStraightModeOperation(d.path(2), d.triple(2, 3).last, false);
    case 12:
        return F::createSplitVertexOperation(d.path(0), position(0, 2, 0.3), nullptr, nullptr, false);
    case 13: { // a session of edits gathered into one group; a member without a record is left out
        auto* group = new SimplePathMetaOperation;
        for (int member : {8, 1, 4, 9, 6}) {
            group->addOperation(edit(member, d));
        }
        group->addOperation(F::createTranslateOperation(d.path(2), DVector(0.0, 0.0)));
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
    for (int which = 0; which < 14; ++which) {
        SCOPED_TRACE(which);
        Drawing original, copy;
        Op op(edit(which, original));
        ASSERT_NE(nullptr, op);
        Outcome const done = execute(*op);
        ASSERT_EQ(SimplePathOperation::Success, done.result);
        Info* info = nullptr;
        ASSERT_EQ(2, op->RetreiveSegIndependentInfo(info)); // taken after the edit
        std::unique_ptr<Info> record(info);
        EXPECT_EQ(1, op->RetreiveSegIndependentInfo(info)); // handed back: refilled in place
        EXPECT_EQ(record.get(), info);
        Op rebuilt = rebuild(*record, copy);
        ASSERT_NE(nullptr, rebuilt);
        Outcome const redone = execute(*rebuilt);
        ASSERT_EQ(SimplePathOperation::Success, redone.result);
        EXPECT_EQ(outcome(original, *done.change), outcome(copy, *redone.change));
        EXPECT_EQ(done.affected.size(), redone.affected.size() + (which == 13 ? 1 : 0)); // less the translate
        for (auto const* run : {&done, &redone}) { // paths the edits made are the hosts' now
            Paths added;
            run->change->simplePathsAdded(added);
            for (auto const& p : added) {
                (run == &done ? original : copy).pool.emplace_back(p.pointer);
            }
        }
        op.reset();
    }
}

// A record of the right tag that is not the library's class of that tag.
class ForeignRecord : public Info {
  public:
    explicit ForeignRecord(int t) : tag(t) {}
    int getType() const override { return tag; }
    int tag;
};

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
    record->pickCallback = [](PathSeg const*, DPoint const&, double, PHashablePointer<SimplePath>&,
                              SimplePathVertex*&, int&) { return 0; }; // finds nothing
    EXPECT_EQ(nullptr, Op(F::createOperationFromSII(record.get())));
    record->pickCallback = &pickInDrawing;
    EXPECT_NE(nullptr, Op(F::createOperationFromSII(record.get())));
}

// Handed back for a larger group, a group's record is refilled in place, reading nothing past its old
// array.
TEST(MetaOperation, ARecordHandedBackIsRefilledForALargerGroup) {
    Drawing d;
    auto cusp = [&](int i) { return F::createSetCuspModeOperation(d.path(0), d.triple(0, i).anchor, false); };
    Meta one, four;
    one.addOperation(cusp(0));
    for (int i = 0; i < 4; ++i) {
        four.addOperation(cusp(i));
    }
    Info* info = nullptr;
    ASSERT_EQ(2, one.RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    EXPECT_EQ(1, four.RetreiveSegIndependentInfo(info));
    EXPECT_EQ(record.get(), info);
    EXPECT_EQ(4, dynamic_cast<Meta::MetaOpInformation&>(*record).count);
}

} // namespace
