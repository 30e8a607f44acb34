// SimplePath members: taking a caller's triple into the path

#include <new>

#include "simplepath/path/SimplePath.h"

SimplePath::Result SimplePath::adoptTriple(SimplePathVertexTriple const& triple, int index) {
    if (triple.first == nullptr || triple.anchor == nullptr || triple.last == nullptr ||
        index > numTriples() || triple.first == triple.anchor || triple.first == triple.last ||
        triple.anchor == triple.last) {
        return Failure;
    }
    // Each vertex belongs to one triple of one path: a vertex already held here would get two owners.
    for (SimplePathVertex* vertex : {triple.first, triple.anchor, triple.last}) {
        if (findTriple(vertex) >= 0) {
            return Failure;
        }
    }
    int const at = index < 0 ? 0 : index;
    try {
        tripleList.insert(tripleList.iteratorAt(at), triple);
    } catch (std::bad_alloc const&) {
        return Failure;
    }
    return Success;
}
