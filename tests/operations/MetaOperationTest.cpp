// Groups of operations: members run front to back and the first failure is returned at once, undo runs
// back to front, the group owns its members, and its record holds one entry per member (refilled in
// place, deliberately, when the caller hands an old one back).

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

using F = SimplePathOperationFactory;
using Info = SimplePathOperation::SegmentIndependentInformation;
using Meta = SimplePathMetaOperation;
using Paths = std::list<PHashablePointer<SimplePath>>;
using Log = std::vector<std::string>;

// A member that writes what happens to it into a shared log and answers with a set result.
class Probe : public SimplePathOperation {
  public:
    Probe(Log& log, std::string name, SimplePath* path = nullptr, Result answer = Success)
        : log(log), name(std::move(name)), path(path), answer(answer) {}
    ~Probe() override { log.push_back("~" + name); }
    Result executeOperation(Paths& affected, SimplePathChangeInstruction&) override {
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
    Log& log;
    std::string name;
    SimplePath* path;
    Result answer;
};

TEST(MetaOperation, RunsInOrderStopsAtTheFirstFailureAndOwnsItsMembers) {
    Log log;
    SimplePath a, b, c;
    SimplePathChangeInstruction change;
    {
        Meta group;
        group.addOperation(new Probe(log, "1", &a));
        group.addOperation(nullptr);
        group.addOperation(new Probe(log, "2", &b));
        EXPECT_EQ(2u, group.getOperations().size());
        Paths affected{&b};
        EXPECT_EQ(SimplePathOperation::Success, group.executeOperation(affected, change));
        EXPECT_EQ((Paths{&b, &a, &b}), affected); // appended in member order
        group.undoOperation();
    }
    EXPECT_EQ((Log{"do 1", "do 2", "undo 2", "undo 1", "~2", "~1"}), log);

    log.clear();
    {
        Meta group;
        group.addOperation(new Probe(log, "1", &a));
        group.addOperation(new Probe(log, "2", &b, SimplePathOperation::NotJoinable));
        group.addOperation(new Probe(log, "3", &c));
        Paths affected;
        EXPECT_EQ(SimplePathOperation::NotJoinable, group.executeOperation(affected, change));
        EXPECT_EQ(Paths{&a}, affected);
    }
    EXPECT_EQ((Log{"do 1", "do 2", "~3", "~2", "~1"}), log);

    // A list is taken up to its first null; a copy of a group starts empty and frees what it held.
    log.clear();
    auto* after = new Probe(log, "after");
    {
        Meta group;
        group.addOperationList({new Probe(log, "1"), new Probe(log, "2"), nullptr, after});
        EXPECT_EQ(2u, group.getOperations().size());
        EXPECT_TRUE(Meta(group).getOperations().empty());
        Meta assigned;
        assigned.addOperation(new Probe(log, "3"));
        assigned = group;
        EXPECT_TRUE(assigned.getOperations().empty());
    }
    EXPECT_EQ((Log{"~3", "~2", "~1"}), log);
    delete after; // never taken: still the caller's
}

TEST(MetaOperation, TheRecordHasAnEntryPerMemberAndIsRefilledInPlace) {
    Drawing d;
    auto cusp = [&](int p, int i) {
        return F::createSetCuspModeOperation(d.path(p), d.triple(p, i).anchor, false);
    };
    Info* info = nullptr;
    Meta empty;
    EXPECT_EQ(SimplePathOperation::Success, execute(empty).result);
    ASSERT_EQ(2, empty.RetreiveSegIndependentInfo(info));
    std::unique_ptr<Info> record(info);
    auto* meta = dynamic_cast<Meta::MetaOpInformation*>(info);
    ASSERT_NE(nullptr, meta);
    EXPECT_EQ(0, meta->count);
    EXPECT_EQ(nullptr, F::createOperationFromSII(info));

    // Refilled for a larger group (nothing is read past the old array), then a smaller one.
    Meta four;
    for (int i = 0; i < 4; ++i) {
        four.addOperation(cusp(0, i));
    }
    EXPECT_EQ(1, four.RetreiveSegIndependentInfo(info));
    ASSERT_EQ(4, meta->count);
    for (int i = 0; i < 4; ++i) {
        EXPECT_NE(nullptr, meta->records[i]);
    }

    // A member without a record leaves an empty entry and is skipped on rebuild.
    Meta group;
    group.addOperation(cusp(2, 0));
    group.addOperation(F::createTranslateOperation(d.path(1), DVector(1, 1)));
    EXPECT_EQ(1, group.RetreiveSegIndependentInfo(info));
    EXPECT_EQ(record.get(), info);
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
}

} // namespace
