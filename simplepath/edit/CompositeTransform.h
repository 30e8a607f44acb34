#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <vector>

#include "simplepath/edit/SimplePathPositionTransform.h"

// Several transforms applied as one, in list order, each to the previous one's result. The composite
// takes ownership of its members and deletes each exactly once, also one that appears twice in the list
// (it is then applied twice). Null members are skipped.
class CompositeTransform : public SimplePathPositionTransform {
  public:
    explicit CompositeTransform(std::list<SimplePathPositionTransform*> const& members);

    PathPosition map(PathPosition const& pair) const override;

    // The number of members applied.
    std::size_t size() const { return sequence.size(); }

  private:
    std::vector<SimplePathPositionTransform const*> sequence;
    std::vector<std::unique_ptr<SimplePathPositionTransform const>> owned;
};
