// SimplePath members: deleting a whole path

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"

SimplePath::Result SimplePath::deleteSimplePath(PHashablePointer<SimplePath> const& path,
                                                SimplePathChangeInstruction& change) {
    SimplePath* const target = path;
    if (target == nullptr) {
        return Failure;
    }
    for (SimplePathVertexTriple const& triple : target->tripleList) {
        change.insertRemoved(triple.first);
        change.insertRemoved(triple.anchor);
        change.insertRemoved(triple.last);
    }
    // Unlinked, not deleted: whoever holds the change instruction (or a memento naming them) decides.
    target->tripleList.removeAll();
    change.insertRemoved(path);
    return Success;
}
