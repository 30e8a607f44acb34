#pragma once

#include "simplepath/foundation/PHandle.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"

#include <list>

// A chain of transforms applied one after another: forward from the first member to the last, reverse
// from the last to the first, each member by its own reverse. The members are held by owning,
// reference-counted handles, so copies of a composite share them and the last holder frees each one.
class CompositeSimplePathTransform : public ArbTrans<DPoint> {
  public:
    using Member = PHandle<ArbTrans<DPoint>>;

    CompositeSimplePathTransform() = default;
    explicit CompositeSimplePathTransform(std::list<Member> members) : members_(std::move(members)) {}
    CompositeSimplePathTransform(CompositeSimplePathTransform const&) = default;
    CompositeSimplePathTransform& operator=(CompositeSimplePathTransform const&) = default;
    ~CompositeSimplePathTransform() override = default;

    // Both take over `member`, which must be a heap object: the composite (and its copies) delete it
    // when the last of them lets go. Passing an object that is already held by a handle elsewhere would
    // give it two owners.
    void append(ArbTrans<DPoint>& member);
    void prepend(ArbTrans<DPoint>& member);

    // An empty composite maps every point to itself both ways.
    DPoint transform(DPoint const& p) const override;
    DPoint reverseTransform(DPoint const& p) const override;

    std::list<Member> const& getMembers() const { return members_; }

  private:
    std::list<Member> members_;
};
