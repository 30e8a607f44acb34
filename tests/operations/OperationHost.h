#pragma once

// A small host for the operation tests: a design object holding paths, the pick function that finds a
// path and vertex by coordinates in it, and exact snapshots of paths (serialized bytes plus the vertex
// objects in order) to compare states bit for bit and object for object.

#include <algorithm>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathSerializer.h"
#include "support/PathQueryHelpers.h"

// The host's design object: the paths of one drawing, in the host's order.
class PathSeg {
  public:
    std::vector<SimplePath*> paths;
};

namespace ops_test {

using support::positionOf;

// Finds, within the tolerance of the location, an anchor of any path, else a handle, else a point of a
// path's curve (the path with a null vertex). Paths are searched in the drawing's order.
inline int pickInDrawing(PathSeg const* drawing, DPoint const& location, double tolerance,
                         PHashablePointer<SimplePath>& path, SimplePathVertex*& vertex, int& index) {
    if (drawing == nullptr) {
        return 0;
    }
    IdTrans<DPoint> const identity;
    for (int pass = 0; pass < 3; ++pass) {
        for (SimplePath* p : drawing->paths) {
            SimplePathVertex* found = nullptr;
            SimplePathPosition at;
            bool const hit =
                pass == 0
                    ? p->pretransformPickAnchor(location, tolerance, identity, found) == SimplePath::Success
                : pass == 1
                    ? p->pickVertex(location, tolerance, found) == SimplePath::Success
                    : p->numTriples() > 1 && p->pickPosition(location, tolerance, at) == SimplePath::Success;
            if (hit && (pass == 2 || found != nullptr)) {
                path = p;
                vertex = found;
                index = pass == 2 ? at.getIndex() : index;
                return 1;
            }
        }
    }
    return 0;
}

// One execution: its result, the paths it reported affected and its change instruction.
struct Outcome {
    SimplePathOperation::Result result;
    std::list<PHashablePointer<SimplePath>> affected;
    std::unique_ptr<SimplePathChangeInstruction> change = std::make_unique<SimplePathChangeInstruction>();
};

inline Outcome execute(SimplePathOperation& op) {
    Outcome run;
    run.result = op.executeOperation(run.affected, *run.change);
    return run;
}

inline std::string bytesOf(SimplePath const& path) {
    std::ostringstream out;
    BinarySerializer writer(out);
    EXPECT_EQ(
        SimplePathSerializer::Success,
        SimplePathSerializer::write(PHashablePointer<SimplePath>(const_cast<SimplePath*>(&path)), writer));
    return out.str();
}

// One path exactly: its serialized form and its vertex objects in order.
struct PathState {
    std::string bytes;
    std::vector<SimplePathVertex*> vertices;
    bool operator==(PathState const& other) const {
        return bytes == other.bytes && vertices == other.vertices;
    }
};

inline PathState stateOf(SimplePath const& path) {
    PathState state{bytesOf(path), {}};
    for (SimplePathVertexTriple const& t : path.getTripleList()) {
        state.vertices.insert(state.vertices.end(), {t.first, t.anchor, t.last});
    }
    return state;
}

// A drawing's state: every path that holds triples (an emptied path counts as gone).
using DrawingState = std::map<SimplePath const*, PathState>;

template <class Paths> DrawingState drawingState(Paths const& paths) {
    DrawingState out;
    for (auto const& p : paths) {
        if (p->numTriples() > 0) {
            out[&*p] = stateOf(*p);
        }
    }
    return out;
}

// Every vertex object sits in exactly one place of one path.
template <class Paths> bool eachVertexOnce(Paths const& paths) {
    std::set<SimplePathVertex*> seen;
    std::size_t slots = 0;
    for (auto const& p : paths) {
        for (SimplePathVertexTriple const& t : p->getTripleList()) {
            seen.insert({t.first, t.anchor, t.last});
            slots += 3;
        }
    }
    return seen.size() == slots && seen.count(nullptr) == 0;
}

inline SimplePath* addPath(std::vector<std::unique_ptr<SimplePath>>& pool,
                           std::vector<SimplePathLocationTriple> const& triples, int closed) {
    pool.push_back(std::make_unique<SimplePath>());
    SimplePath* const path = pool.back().get();
    for (SimplePathLocationTriple const& t : triples) {
        SimplePathVertex* f = nullptr;
        SimplePathVertex* a = nullptr;
        SimplePathVertex* l = nullptr;
        EXPECT_EQ(SimplePath::Success, path->addTriple(t.first, f, t.anchor, a, t.last, l, t.mode));
    }
    path->setStrictClosed(closed);
    return path;
}

// A curved triple at `anchor`, its handles leaning so that no two segments are alike.
inline SimplePathLocationTriple
curved(DPoint const& anchor, double lean,
       SimplePathVertexTriple::VertexTripleMode mode = SimplePathVertexTriple::Cusp) {
    return SimplePathLocationTriple(anchor + DVector(-3.0, 1.0 + lean), anchor,
                                    anchor + DVector(3.0, -1.0 - 2.0 * lean), mode);
}

inline SimplePathVertexTriple tripleAt(SimplePath const& path, int index) {
    return path.getTripleList()[index];
}

// Two open paths and a closed one, built the same way every time, so that a record taken on one
// drawing can be replayed on a fresh copy.
struct Drawing {
    std::vector<std::unique_ptr<SimplePath>> pool;
    PathSeg seg;

    Drawing() {
        using Mode = SimplePathVertexTriple::VertexTripleMode;
        std::vector<SimplePathLocationTriple> a, b, c;
        for (int i = 0; i < 5; ++i) {
            a.push_back(curved(DPoint(20.0 * i, 0.0), 0.1 * i, i == 1 ? Mode::Smooth : Mode::Cusp));
        }
        for (int i = 0; i < 3; ++i) {
            b.push_back(curved(DPoint(120.0 + 20.0 * i, 40.0), 0.3 * i));
        }
        for (int i = 0; i < 4; ++i) {
            c.push_back(curved(DPoint(20.0 * (i % 2), 100.0 + 20.0 * (i / 2)), 0.2 * i, Mode::Symmetric));
        }
        for (auto const* triples : {&a, &b, &c}) {
            seg.paths.push_back(addPath(pool, *triples, triples == &c ? 1 : 0));
        }
    }
    SimplePath* path(int i) const { return seg.paths[static_cast<std::size_t>(i)]; }
    SimplePathVertexTriple triple(int p, int i) const { return tripleAt(*path(p), i); }
    std::vector<std::string> bytes() const {
        std::vector<std::string> out;
        for (SimplePath* p : seg.paths) {
            out.push_back(bytesOf(*p));
        }
        return out;
    }
};

} // namespace ops_test
