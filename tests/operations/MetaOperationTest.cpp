// Groups of operations: execution front to back with the first failure returned at once, undo back to
// front, ownership of members, the group's record with its deliberate refill rule, and a whole session
// of vertex edits replayed from one record on a fresh copy of the drawing.

#include <list>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "OperationHost.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/operations/setCuspModeOperation.h"

using namespace ops_test;

namespace {

using F = SimplePathOperationFactory;
using Info = SimplePathOperation::SegmentIndependentInformation;
using Meta = SimplePathMetaOperation;
using Mode = SimplePathVertexTriple::VertexTripleMode;

// A member that writes what happens to it into a shared log and answers with a set result.
class Probe : public SimplePathOperation {
  public:
    Probe(std::vector<std::string>& log, std::string name, SimplePath* path = nullptr,
          Result answer = Success)
        : log(log), name(std::move(name)), path(path), answer(answer) {}
    ~Probe() override { log.push_back("~" + name); }
    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affected,
                            SimplePathChangeInstruction&) override {
        log.push_back("do " + name);
        if (answer == Success && path != nullptr) {
            affected.push_back(path);
        }
        return answer;
    }
    int RetreiveSegIndependentInfo(Info*& info) override {
        info = nullptr;
        return -1;
    }
    int ApplySegIndependentInfo(Info*&) override { return 0; }
    void undoOperation() override { log.push_back("undo " + name); }

  private:
    std::vector<std::string>& log;
    std::string name;
    SimplePath* path;
    Result answer;
};

TEST(MetaOperation, MembersRunFrontToBackUndoBackToFrontAndDieFromTheBack) {
    std::vector<std::string> log;
    SimplePath a, b;
    {
        Meta group;
        group.addOperation(new Probe(log, "1", &a));
        group.addOperation(nullptr);
        group.addOperation(new Probe(log, "2", &b));
        EXPECT_EQ(2u, group.getOperations().size());
        std::list<PHashablePointer<SimplePath>> affected{PHashablePointer<SimplePath>(&b)};
        SimplePathChangeInstruction change;
        EXPECT_EQ(SimplePathOperation::Success, group.executeOperation(affected, change));
        // Appended, in member order, after what the list held.
        EXPECT_EQ((std::list<PHashablePointer<SimplePath>>{&b, &a, &b}), affected);
        group.undoOperation();
    }
    EXPECT_EQ((std::vector<std::string>{"do 1", "do 2", "undo 2", "undo 1", "~2", "~1"}), log);
}

TEST(MetaOperation, TheFirstFailureIsReturnedAtOnceAndItsPathsAreDropped) {
    std::vector<std::string> log;
    SimplePath a, b, c;
    Meta group;
    group.addOperation(new Probe(log, "1", &a));
    group.addOperation(new Probe(log, "2", &b, SimplePathOperation::NotJoinable));
    group.addOperation(new Probe(log, "3", &c));
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    EXPECT_EQ(SimplePathOperation::NotJoinable, group.executeOperation(affected, change));
    EXPECT_EQ((std::list<PHashablePointer<SimplePath>>{&a}), affected);
    EXPECT_EQ((std::vector<std::string>{"do 1", "do 2"}), log);
}

TEST(MetaOperation, AListIsTakenUpToItsFirstNull) {
    std::vector<std::string> log;
    auto* after = new Probe(log, "after");
    {
        Meta group;
        group.addOperationList({new Probe(log, "1"), new Probe(log, "2"), nullptr, after});
        EXPECT_EQ(2u, group.getOperations().size());
    }
    EXPECT_EQ((std::vector<std::string>{"~2", "~1"}), log);
    delete after; // never taken: still the caller's
}

TEST(MetaOperation, AnEmptyGroupDoesNothingAndItsRecordRebuildsIntoNothing) {
    Meta group;
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    EXPECT_EQ(SimplePathOperation::Success, group.executeOperation(affected, change));
    EXPECT_TRUE(affected.empty());
    Info* info = nullptr;
    ASSERT_EQ(2, group.RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    auto* meta = dynamic_cast<Meta::MetaOpInformation*>(info);
    ASSERT_NE(nullptr, meta);
    EXPECT_EQ(2, meta->getType());
    EXPECT_EQ(0, meta->count);
    Meta shell;
    EXPECT_EQ(0, shell.ApplySegIndependentInfo(info));
    EXPECT_EQ(nullptr, F::createOperationFromSII(info));
    EXPECT_EQ(-1, Meta::MetaOpInformation().count);
    EXPECT_EQ(nullptr, Meta::MetaOpInformation().records);
}

// A session of vertex edits, each executed as the user makes it and gathered into one group.
std::unique_ptr<Meta> session(Drawing& d) {
    auto group = std::make_unique<Meta>();
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    SimplePathPosition position;
    EXPECT_EQ(SimplePath::Success, d.path(1)->makePosition(1, 0.4, position));
    std::vector<SimplePathOperation*> edits{
        F::createSetCuspModeOperation(d.path(2), d.triple(2, 0).anchor, false),
        F::createMoveSelectedVerticesOperation(d.path(0), d.triple(0, 1).last, DVector(3, 4), false),
        F::createChangeVertexOperation(
            d.path(2), d.triple(2, 1),
            SimplePathLocationTriple(DPoint(1, 90), DPoint(5, 95), DPoint(9, 90), Mode::Cusp), false),
        F::createAddVertexAtPositionOperation(d.path(1), position, false),
        F::createSetSmoothModeOperation(d.path(0), d.triple(0, 3).last, false),
        F::createDeleteVertexOperation(d.path(0), d.triple(0, 2).anchor, false),
    };
    for (SimplePathOperation* op : edits) {
        EXPECT_NE(nullptr, op);
        EXPECT_EQ(SimplePathOperation::Success, op->executeOperation(affected, change));
        group->addOperation(op);
    }
    return group;
}

TEST(MetaOperation, ASessionOfVertexEditsReplaysOnAFreshCopyBitForBit) {
    Drawing original;
    Drawing copy;
    std::vector<std::string> const untouched = copy.bytes();
    std::unique_ptr<Meta> group = session(original);
    ASSERT_EQ(6u, group->getOperations().size());

    Info* info = nullptr;
    ASSERT_EQ(2, group->RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    auto* meta = static_cast<Meta::MetaOpInformation*>(info);
    ASSERT_EQ(6, meta->count);
    for (int i = 0; i < meta->count; ++i) {
        ASSERT_NE(nullptr, meta->records[i]);
        EXPECT_EQ(nullptr, meta->records[i]->pathSeg); // the host sets it once, on the outer record
    }
    record->pathSeg = &copy.seg;
    record->pickCallback = &pickInDrawing;
    std::unique_ptr<SimplePathOperation> replay(F::createOperationFromSII(info));
    ASSERT_NE(nullptr, replay);
    EXPECT_EQ(&copy.seg, meta->records[0]->pathSeg);
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    ASSERT_EQ(SimplePathOperation::Success, replay->executeOperation(affected, change));
    EXPECT_EQ(original.bytes(), copy.bytes());

    // One undoable step on the copy, and the session's own undo on the original.
    replay->undoOperation();
    EXPECT_EQ(untouched, copy.bytes());
    group->undoOperation();
    EXPECT_EQ(untouched, original.bytes());
}

TEST(MetaOperation, MembersWithoutARecordLeaveAnEmptyEntryAndAreSkippedOnRebuild) {
    Drawing d;
    Meta group;
    group.addOperation(F::createSetCuspModeOperation(d.path(2), d.triple(2, 0).anchor, false));
    group.addOperation(F::createTranslateOperation(d.path(1), DVector(1, 1)));
    Info* info = nullptr;
    ASSERT_EQ(2, group.RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    auto* meta = static_cast<Meta::MetaOpInformation*>(info);
    ASSERT_EQ(2, meta->count);
    EXPECT_NE(nullptr, meta->records[0]);
    EXPECT_EQ(nullptr, meta->records[1]);
    record->pathSeg = &d.seg;
    record->pickCallback = &pickInDrawing;
    std::unique_ptr<SimplePathOperation> rebuilt(F::createOperationFromSII(info));
    ASSERT_NE(nullptr, rebuilt);
    EXPECT_EQ(1u, static_cast<Meta*>(rebuilt.get())->getOperations().size());

    // A group whose every member fails to resolve is still handed out, empty.
    Drawing far;
    EXPECT_EQ(SimplePath::Success, far.path(2)->translate(DVector(500, 500)));
    record->pathSeg = &far.seg;
    std::unique_ptr<SimplePathOperation> none(F::createOperationFromSII(info));
    ASSERT_NE(nullptr, none);
    EXPECT_TRUE(static_cast<Meta*>(none.get())->getOperations().empty());

    // A record of another tag is refused and left alone.
    Info* other = nullptr;
    std::unique_ptr<SimplePathOperation> cusp(
        F::createSetCuspModeOperation(d.path(2), d.triple(2, 1).anchor, false));
    ASSERT_EQ(2, cusp->RetreiveSegIndependentInfo(other));
    std::unique_ptr<Info> otherRecord(other);
    EXPECT_EQ(0, group.RetreiveSegIndependentInfo(other));
    EXPECT_EQ(otherRecord.get(), other);
}

TEST(MetaOperation, ARecordIsRefilledInPlaceWithTheNewCount) {
    Drawing d;
    Meta three;
    for (int i = 0; i < 3; ++i) {
        three.addOperation(F::createSetCuspModeOperation(d.path(0), d.triple(0, i).anchor, false));
    }
    Info* info = nullptr;
    ASSERT_EQ(2, three.RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    auto* meta = static_cast<Meta::MetaOpInformation*>(info);
    ASSERT_EQ(3, meta->count);

    Meta one;
    one.addOperation(F::createSetCuspModeOperation(d.path(1), d.triple(1, 0).anchor, false));
    EXPECT_EQ(1, one.RetreiveSegIndependentInfo(info));
    EXPECT_EQ(record.get(), info);
    EXPECT_EQ(1, meta->count);
    ASSERT_NE(nullptr, meta->records[0]);

    // Refilled for a larger group: the count and entries follow, nothing is read past the old array.
    Meta four;
    for (int i = 0; i < 4; ++i) {
        four.addOperation(F::createSetCuspModeOperation(d.path(0), d.triple(0, i).anchor, false));
    }
    EXPECT_EQ(1, four.RetreiveSegIndependentInfo(info));
    EXPECT_EQ(4, meta->count);
    for (int i = 0; i < 4; ++i) {
        EXPECT_NE(nullptr, meta->records[i]);
    }
}

TEST(MetaOperation, ACopyOfAGroupStartsEmpty) {
    std::vector<std::string> log;
    Meta group;
    group.addOperation(new Probe(log, "1"));
    Meta copy(group);
    EXPECT_TRUE(copy.getOperations().empty());
    Meta assigned;
    assigned.addOperation(new Probe(log, "2"));
    assigned = group;
    EXPECT_TRUE(assigned.getOperations().empty());
    EXPECT_EQ((std::vector<std::string>{"~2"}), log);
}

} // namespace
