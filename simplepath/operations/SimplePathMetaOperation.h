#pragma once

#include <list>
#include <vector>

#include "simplepath/operations/SimplePathOperation.h"

// Several operations made one undoable step: executed front to back, undone back to front, described
// by one record that holds the records of its members.
//
// Ownership. The group owns its members and deletes them, from the back, when it dies. Operations
// cannot be duplicated, so a copy of a group starts empty.
class SimplePathMetaOperation : public SimplePathOperation {
  public:
    // Tag 2: one record per member, in member order; an entry is null where its member gave none (the
    // path-level operations). A new record has count -1 and no array.
    //
    // The record owns its array and the records in it. Refilling a record replaces its count before it
    // releases the old entries and walks the old array only up to the new count, so a record is meant
    // to be refilled only for a group with no more members than before; entries beyond the new count
    // are kept aside, unreleased, and freed with the record.
    class MetaOpInformation : public SegmentIndependentInformation {
      public:
        MetaOpInformation() = default;
        MetaOpInformation(MetaOpInformation const&) = delete;
        MetaOpInformation& operator=(MetaOpInformation const&) = delete;
        ~MetaOpInformation() override;
        int getType() const override;

        int count = -1;
        SegmentIndependentInformation** records = nullptr;

      private:
        friend class SimplePathMetaOperation;
        // The length of `records`: as allocated here, or `count` for an array the host put in.
        int length() const;
        SegmentIndependentInformation** ownArray = nullptr;
        int allocated = 0;
        std::vector<SegmentIndependentInformation*> setAside;
    };

    SimplePathMetaOperation() = default;
    SimplePathMetaOperation(SimplePathMetaOperation const& other);
    SimplePathMetaOperation& operator=(SimplePathMetaOperation const& other);
    ~SimplePathMetaOperation() override;

    // Appends the operation and takes it over; null is ignored.
    void addOperation(SimplePathOperation* operation);
    // Appends the operations in order and takes them over, stopping at the first null (the operations
    // after it are not added and stay the caller's).
    void addOperationList(std::list<SimplePathOperation*> const& operations);
    std::list<SimplePathOperation*> const& getOperations() const { return operations; }

    // Each member runs with a fresh list of paths and the same change instruction; its paths are
    // appended to `affectedPaths` after it succeeds. The first member result that is not Success is
    // returned at once, the members before it staying executed: whether to undo them is the caller's
    // choice.
    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    // Rebuilds every entry with the factory, after giving it the outer record's design object and pick
    // function, and appends what could be rebuilt. 0 for a null record, another tag or a count below 1;
    // otherwise 1, also when some entries were skipped.
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;
    void undoOperation() override;

  private:
    void deleteMembers();

    std::list<SimplePathOperation*> operations;
};
