// SimplePath members: the point at a position (locatePosition, its pretransformed and fast-session
// forms) and the fast session itself.

#include <cmath>
#include <cstdint>
#include <new>

#include "simplepath/interfaces/Tolerance.h"
#include "simplepath/interfaces/detail/Tolerances.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathFastSession.h"
#include "simplepath/path/detail/SimplePathSegmentReader.h"

namespace {

// The strict locate on the mapped curve, reading triples through `tripleAt(i)` so that the plain and
// the fast-session forms share it. No tolerance and no carrying: a position must name a place on the
// path exactly. A one-triple path is its anchor whatever the position says.
template <class TripleAt>
SimplePath::Result locateOnMappedCurve(SimplePathSegmentReader const& reader, TripleAt const& tripleAt,
                                       SimplePathPosition const& position, DPoint& out) {
    int const n = reader.numTriples();
    if (n == 0) {
        return SimplePath::Failure;
    }
    if (n == 1) {
        out = reader.mapped(SimplePathSegmentReader::anchorLocation(tripleAt(0)));
        return SimplePath::Success;
    }
    int const segments = reader.segmentCount();
    int const index = position.getIndex();
    double const t = position.getParameter();
    if (index < 0 || index > segments || !(t >= 0.0 && t <= 1.0)) { // the negated form rejects NaN
        return SimplePath::Failure;
    }
    if (t == 0.0) {
        out = reader.mapped(SimplePathSegmentReader::anchorLocation(tripleAt(index % n)));
        return SimplePath::Success;
    }
    if (index == segments) {
        return SimplePath::Failure;
    }
    out = reader.segment(tripleAt(index), tripleAt(reader.nextTriple(index))).bValue(t);
    return SimplePath::Success;
}

} // namespace

// Normalisation, in order: an index beyond the segment count fails; a parameter outside [0, 1) is taken
// as 1.0 when within 1e-9 of it, carried once into the next segment when above 1.0, and fails when
// negative; at the end index only a parameter within 1e-9 of zero is accepted (as zero). Parameter 0.0
// is the anchor of triple index mod n, so the end of a closed path is triple 0's anchor; anything else is
// evaluated on its segment, parameter 1.0 included (it is not carried).
SimplePath::Result SimplePath::locateElsewhere(SimplePathPosition const& position, DPoint& out) const {
    SimplePathSegmentReader const reader(tripleList, closed);
    int const n = reader.numTriples();
    int const segments = reader.segmentCount();
    int index = position.getIndex();
    double t = position.getParameter();
    if (n == 0 || index > segments || !std::isfinite(t)) {
        return Failure;
    }
    if (t >= 1.0 || t < 0.0) {
        if (IS_EQUAL(t, 1.0, simplepath_tolerance::kParameterSnap)) {
            t = 1.0;
        } else if (IS_ZERO(t, 0.0)) {
            t = 0.0;
        } else if (t > 1.0) {
            ++index;
            t -= 1.0;
            if (index > segments) {
                return Failure;
            }
        } else {
            return Failure;
        }
    }
    if (index == segments) {
        if (!IS_ZERO(t, simplepath_tolerance::kParameterSnap)) {
            return Failure;
        }
        t = 0.0;
    }
    if (index < 0) {
        return Failure; // no such triple
    }
    if (t == 0.0) {
        out = reader.anchor(index % n);
        return Success;
    }
    out = reader.segment(index).bValue(t);
    return Success;
}

SimplePath::Result SimplePath::getSimplePathPositionLocation(SimplePathPosition const& position,
                                                             DPoint& out) const {
    return locatePosition(position, out);
}

SimplePath::Result SimplePath::pretransformLocatePosition(ArbTrans<DPoint> const& transform,
                                                          SimplePathPosition const& position,
                                                          DPoint& out) const {
    SimplePathSegmentReader const reader(tripleList, closed, &transform);
    return locateOnMappedCurve(
        reader, [this](int i) -> SimplePathVertexTriple const& { return tripleList[i]; }, position, out);
}

// ---- Fast session ----

namespace {

// A session is usable while the path has as many triples as the session has iterators and still keeps
// them in the storage the iterators point into (a triple list that grew and shrank back may have moved).
bool isUsable(SimplePathFastSession const* session, SimplePathTripleList const& list) {
    if (session == nullptr) {
        return false;
    }
    auto const& iterators = session->tripleIterators;
    if (iterators.length() != static_cast<std::uint64_t>(list.length())) {
        return false;
    }
    return iterators.length() == 0 || SimplePathTripleList::ConstIterator(iterators[0]) == list.begin();
}

} // namespace

SimplePathFastSession* SimplePath::startFastSession() {
    auto* const session = new (std::nothrow) SimplePathFastSession;
    if (session == nullptr) {
        return nullptr;
    }
    int const n = numTriples();
    auto& iterators = session->tripleIterators;
    iterators.setAllocSize(static_cast<std::uint64_t>(n));
    SimplePathTripleList::Iterator it = tripleList.begin();
    for (int i = 0; i < n; ++i, ++it) {
        iterators.add(it);
    }
    if (iterators.length() != static_cast<std::uint64_t>(n)) {
        delete session; // storage for the iterators could not be had
        return nullptr;
    }
    return session;
}

void SimplePath::stopFastSession(SimplePathFastSession* session) {
    delete session;
}

SimplePath::Result SimplePath::fastGetTriple(SimplePathFastSession* session, int index,
                                             SimplePathVertexTriple& out) const {
    if (!isUsable(session, tripleList)) {
        return getTriple(index, out);
    }
    if (index < 0 || index >= numTriples()) {
        return Failure;
    }
    out = *session->tripleIterators[index];
    return Success;
}

SimplePath::Result SimplePath::fastPretransformLocatePosition(SimplePathFastSession* session,
                                                              ArbTrans<DPoint> const& transform,
                                                              SimplePathPosition const& position,
                                                              DPoint& out) const {
    if (!isUsable(session, tripleList)) {
        return pretransformLocatePosition(transform, position, out);
    }
    SimplePathSegmentReader const reader(tripleList, closed, &transform);
    auto const& iterators = session->tripleIterators;
    return locateOnMappedCurve(
        reader, [&iterators](int i) -> SimplePathVertexTriple const& { return *iterators[i]; }, position,
        out);
}
