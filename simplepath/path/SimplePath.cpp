// SimplePath members: life cycle, reading the model, positions and the closed flag.

#include "simplepath/path/SimplePath.h"

#include <new>
#include <typeinfo>
#include <utility>

#include "simplepath/path/SimplePathDPointVertex.h"

namespace {

// Vertices of exactly the library's own class can be copied in one block per triple without going
// through their virtual copy(); anything else (a host's own vertex class) is copied by copy().
bool isPlainVertex(SimplePathVertex const* vertex) {
    return vertex != nullptr && typeid(*vertex) == typeid(SimplePathDPointVertex);
}

SimplePathVertex* copyOrNull(SimplePathVertex const* vertex) {
    if (vertex == nullptr) {
        return nullptr;
    }
    SimplePathVertex* const copy = vertex->copy();
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    return copy;
}

} // namespace

SimplePath::SimplePath(SimplePath const& other) : closed(other.closed) {
    appendCopiesOf(other.tripleList);
}

SimplePath& SimplePath::operator=(SimplePath const& other) {
    if (this != &other) {
        deleteAllTriples();
        appendCopiesOf(other.tripleList);
        closed = other.closed;
    }
    return *this;
}

SimplePath::SimplePath(SimplePath&& other) noexcept
    : tripleList(std::move(other.tripleList)), closed(other.closed) {
    other.closed = 0;
    vertexStorage.swap(other.vertexStorage);
}

SimplePath& SimplePath::operator=(SimplePath&& other) noexcept {
    if (this != &other) {
        deleteAllTriples();
        tripleList = std::move(other.tripleList);
        closed = other.closed;
        other.closed = 0;
        vertexStorage.swap(other.vertexStorage);
    }
    return *this;
}

void SimplePath::appendCopiesOf(SimplePathTripleList const& source) {
    // Reserving first means the appends below cannot throw; only making vertices can. The vertices of
    // the copy are reserved in one run too, so that the copy is laid out in path order.
    tripleList.reserve(tripleList.length() + source.length());
    vertexStorage.reserve(source.length());
    auto const location = [](SimplePathVertex const* v) {
        return static_cast<SimplePathDPointVertex const*>(v)->location;
    };
    bool const allPlain = source.holdsPlainVertices();
    for (SimplePathVertexTriple const& triple : source) {
        SimplePathVertexTriple copy(nullptr, nullptr, nullptr, triple.mode);
        if (allPlain ||
            (isPlainVertex(triple.first) && isPlainVertex(triple.anchor) && isPlainVertex(triple.last))) {
            if (!vertexStorage.createTriple(location(triple.first), location(triple.anchor),
                                            location(triple.last), copy)) {
                throw std::bad_alloc();
            }
            tripleList.appendMade(copy);
            continue;
        }
        // Anchor first, then the handles, each only if present.
        try {
            copy.anchor = copyOrNull(triple.anchor);
            copy.first = copyOrNull(triple.first);
            copy.last = copyOrNull(triple.last);
        } catch (...) {
            deleteTripleVertices(copy);
            throw;
        }
        tripleList.push_back(copy);
    }
}

void SimplePath::deleteAllTriples() {
    SimplePathVertexStorage::deleteVertices(tripleList.data(), tripleList.data() + tripleList.length());
    tripleList.removeAll();
}

int SimplePath::findTriple(SimplePathVertex const* vertex) const {
    if (vertex == nullptr) {
        return -1;
    }
    int index = 0;
    for (SimplePathVertexTriple const& triple : tripleList) {
        if (triple.first == vertex || triple.anchor == vertex || triple.last == vertex) {
            return index;
        }
        ++index;
    }
    return -1;
}

SimplePath::Result SimplePath::getTriple(int index, SimplePathVertexTriple& out) const {
    if (index < 0 || index >= numTriples()) {
        return Failure;
    }
    out = tripleList[index];
    return Success;
}

SimplePath::Result SimplePath::getVertexInfo(SimplePathVertex* vertex, SimplePathVertex*& first,
                                             SimplePathVertex*& anchor, SimplePathVertex*& last,
                                             SimplePathVertexTriple::VertexTripleMode& mode) const {
    int const index = findTriple(vertex);
    if (index < 0) {
        return Failure;
    }
    SimplePathVertexTriple const& triple = tripleList[index];
    first = triple.first;
    anchor = triple.anchor;
    last = triple.last;
    mode = triple.mode;
    return Success;
}

SimplePath::Result SimplePath::getVertexInfo(SimplePathVertex* vertex, SimplePathVertexTriple& triple,
                                             int& index) const {
    int const found = findTriple(vertex);
    if (found < 0) {
        return Failure;
    }
    triple = tripleList[found];
    index = found;
    return Success;
}

SimplePath::Result SimplePath::getVertexInfo(SimplePathVertex* vertex, SimplePathVertexTriple& triple,
                                             int& isFirst, int& isLast) const {
    int const found = findTriple(vertex);
    if (found < 0) {
        return Failure;
    }
    triple = tripleList[found];
    isFirst = closed == 0 && found == 0 ? 1 : 0;
    isLast = closed == 0 && found == numTriples() - 1 ? 1 : 0;
    return Success;
}

SimplePath::Result SimplePath::getLocationTripleList(std::list<SimplePathLocationTriple>& out) const {
    for (SimplePathVertexTriple const& triple : tripleList) {
        out.emplace_back(triple.first->getLocation(), triple.anchor->getLocation(),
                         triple.last->getLocation(), triple.mode);
    }
    return Success;
}

SimplePath::Result SimplePath::getBeginPosition(SimplePathPosition& out) const {
    if (numTriples() == 0) {
        out = SimplePathPosition();
        return Failure;
    }
    out = SimplePathPosition(0, 0.0);
    return Success;
}

SimplePath::Result SimplePath::getArbitraryPosition(SimplePathPosition& out) const {
    return getBeginPosition(out);
}

SimplePath::Result SimplePath::getEndPosition(SimplePathPosition& out) const {
    int const n = numTriples();
    if (n == 0) {
        out = SimplePathPosition();
        return Failure;
    }
    out = SimplePathPosition(closed != 0 ? n : n - 1, 0.0);
    return Success;
}

SimplePath::Result SimplePath::getLastTriplePosition(SimplePathPosition& out) const {
    int const n = numTriples();
    if (n == 0) {
        out = SimplePathPosition();
        return Failure;
    }
    out = SimplePathPosition(n - 1, 0.0);
    return Success;
}

SimplePath::Result SimplePath::getAnchorPosition(SimplePathVertex* vertex, SimplePathPosition& out) const {
    if (vertex == nullptr) {
        return Failure;
    }
    int index = 0;
    for (SimplePathVertexTriple const& triple : tripleList) {
        if (triple.anchor == vertex) {
            out = SimplePathPosition(index, 0.0);
            return Success;
        }
        ++index;
    }
    return Failure;
}

SimplePath::Result SimplePath::getAnchorPositions(std::list<SimplePathPosition>& out) const {
    int const n = numTriples();
    for (int i = 0; i < n; ++i) {
        out.push_back(SimplePathPosition(i, 0.0));
    }
    return Success;
}

SimplePath::Result SimplePath::getAnchorPositionsEx(std::list<SimplePathPosition>& out) const {
    // Always succeeds.
    (void)getAnchorPositions(out);
    if (closed != 0 && numTriples() > 0) {
        out.push_back(SimplePathPosition(numTriples(), 0.0));
    }
    return Success;
}

SimplePath::Result SimplePath::getNearestAnchor(SimplePathPosition const& position, SimplePathVertex*& anchor,
                                                int& index) const {
    int const n = numTriples();
    if (n == 0) {
        return Failure;
    }
    // Wide arithmetic so that the step to the next anchor cannot overflow at INT_MAX.
    long long i = position.index;
    if (position.parameter >= 0.5) {
        ++i;
    }
    if (closed != 0 && i == n) {
        i = 0;
    }
    // An open path's step past its last anchor lands on the first anchor as well.
    if (i < 0 || i >= n) {
        i = 0;
    }
    index = static_cast<int>(i);
    anchor = tripleList[index].anchor;
    return Success;
}

SimplePath::Result SimplePath::getNearestAnchor(SimplePathPosition const& position,
                                                SimplePathVertex*& anchor) const {
    int index = 0;
    return getNearestAnchor(position, anchor, index);
}

int SimplePath::areCompatible(PHashablePointer<SimplePath> const&, PHashablePointer<SimplePath> const&) {
    return 1;
}

SimplePath::Result SimplePath::setClosed(SimplePathChangeInstruction&) {
    closed = 1;
    return Success;
}
