#include "simplepath/operations/DeleteSimplePathOperation.h"

#include <new>

#include "simplepath/path/SimplePath.h"

DeleteSimplePathOperation::DeleteSimplePathOperation(PHashablePointer<SimplePath> path)
    : SimplePathWholePathOperation(path) {}

bool DeleteSimplePathOperation::edit(SimplePath& target, SimplePathChangeInstruction& change) {
    std::size_t const before = unlinked.size();
    try {
        unlinked.reserve(before + 3 * static_cast<std::size_t>(target.numTriples()));
    } catch (std::bad_alloc const&) {
        return false;
    }
    for (SimplePathVertexTriple const& t : target.getTripleList()) {
        unlinked.insert(unlinked.end(), {t.first, t.anchor, t.last});
    }
    if (SimplePath::deleteSimplePath(PHashablePointer<SimplePath>(&target), change) != SimplePath::Success) {
        unlinked.resize(before);
        return false;
    }
    return true;
}
