// Chains to library paths and back, shared by the command-line tool and the browser editor.
#include "toolkit/ChainConversion.h"

#include "simplepath/interfaces/PBezierCurve.h"
#include "simplepath/path/SimplePathConversion.h"
#include "simplepath/path/SimplePathLocationTriple.h"

#include <list>

namespace sptool {

std::unique_ptr<SimplePath> pathOfChainInferringModes(CubicChain const& chain) {
    if (chain.segments.empty()) {
        auto path = std::make_unique<SimplePath>();
        SimplePathVertex* anchor = nullptr;
        if (path->addSingle(chain.start, anchor) != SimplePath::Success) {
            return nullptr;
        }
        path->setStrictClosed(chain.closed ? 1 : 0);
        return path;
    }
    PBezierCurve curve;
    for (std::size_t i = 0; i < chain.segments.size(); ++i) {
        CubicSegment const& s = chain.segments[i];
        curve.getSegments().add(PBezier(segmentStart(chain, i), s[0], s[1], s[2]));
    }
    curve.setStrictIsClosed(chain.closed ? 1 : 0);
    PList<PBezierCurve> curves;
    curves.add(curve);
    std::list<PHashablePointer<SimplePath>> made;
    if (createSimplePaths(curves, made, chain.closed ? 1 : 0) != 0 || made.size() != 1) {
        for (PHashablePointer<SimplePath> const& p : made) {
            delete p.pointer;
        }
        return nullptr;
    }
    std::unique_ptr<SimplePath> path(made.front().pointer);
    // Without forcing, the conversion takes an open chain whose last inner control lies on its start for a
    // closed one (an open outline that returns to its start in a straight line). Open it again and give it
    // back its final vertex.
    if (!chain.closed && path->isClosedSimplePath() != 0) {
        path->setStrictClosed(0);
        CubicSegment const& last = chain.segments.back();
        SimplePathVertex* first = nullptr;
        SimplePathVertex* anchor = nullptr;
        SimplePathVertex* out = nullptr;
        if (path->addTriple(last[1], first, last[2], anchor, last[2], out,
                            SimplePathVertexTriple::inferTripleMode(last[1], last[2], last[2])) !=
            SimplePath::Success) {
            return nullptr;
        }
    }
    return path;
}

CubicChain chainOfPath(SimplePath const& path) {
    CubicChain chain;
    chain.closed = path.isClosedSimplePath() != 0;
    if (path.numTriples() == 1) {
        std::list<SimplePathLocationTriple> triples;
        // Reading the locations of a path that has a triple always succeeds.
        (void)path.getLocationTripleList(triples);
        SimplePathLocationTriple const& t = triples.front();
        chain.start = t.anchor;
        if (chain.closed) {
            chain.segments.push_back({t.last, t.first, t.anchor});
        }
        return chain;
    }
    PBezierCurve curve;
    createBezierCurve(path, curve);
    PList<PBezier> const& segments = curve.getSegments();
    chain.start = segments[0][0];
    for (PBezier const& b : segments) {
        chain.segments.push_back({b[1], b[2], b[3]});
    }
    return chain;
}

} // namespace sptool
