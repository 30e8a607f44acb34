#pragma once

// Internal to the operations: the steps every operation repeats (mementos, reading locations for
// records, resolving records through the host's pick function). Not part of the public interface.

#include <cmath>
#include <list>
#include <new>
#include <vector>

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathMemento.h"
#include "simplepath/path/SimplePathVertexTriple.h"

namespace operation_support {

// The tolerance with which every record is resolved.
constexpr double kPickTolerance = 1.0;

inline bool isFinite(DPoint const& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

// Takes a memento of `path` into `memento`, dropping one left by an earlier failed attempt. False for a
// null path or when the memento cannot be made.
inline bool takeMemento(PHashablePointer<SimplePath> const& path, SimplePathMemento*& memento) {
    delete memento;
    memento = nullptr;
    if (path == nullptr) {
        return false;
    }
    return path->createMemento(&memento) == SimplePath::Success && memento != nullptr;
}

// Puts the path back to the memento and releases it; nothing held, nothing done.
inline void restoreMemento(PHashablePointer<SimplePath> const& path, SimplePathMemento*& memento) {
    if (memento == nullptr) {
        return;
    }
    if (path != nullptr) {
        // Restoring fails only for a null memento (excluded above) or when memory runs out; the path is
        // then left as it is and the memento is dropped all the same, as undo cannot report anything.
        (void)path->undo(memento);
    }
    delete memento;
    memento = nullptr;
}

// Takes a memento of `path` and keeps it at the end of `mementos`. False for a null path or when the
// memento cannot be made or kept; the mementos kept before stay, so that undo restores their paths.
inline bool keepMemento(PHashablePointer<SimplePath> const& path, std::list<SimplePathMemento*>& mementos) {
    SimplePathMemento* memento = nullptr;
    if (!takeMemento(path, memento)) {
        return false;
    }
    try {
        mementos.push_back(memento);
    } catch (std::bad_alloc const&) {
        delete memento;
        return false;
    }
    return true;
}

inline void releaseMementos(std::list<SimplePathMemento*>& mementos) {
    for (SimplePathMemento* m : mementos) {
        delete m;
    }
    mementos.clear();
}

// Puts the paths back to their mementos side by side from the front (as many as there are mementos),
// then releases the mementos.
inline void restoreMementos(std::list<PHashablePointer<SimplePath>> const& paths,
                            std::list<SimplePathMemento*>& mementos) {
    auto memento = mementos.begin();
    for (auto path = paths.begin(); path != paths.end() && memento != mementos.end(); ++path, ++memento) {
        if (*path != nullptr) {
            (void)(*path)->undo(*memento); // fails only without memory: the path stays as it is
        }
    }
    releaseMementos(mementos);
}

// Removes from `vertices` those the memento names: an undo has handed them back to the path.
inline void dropNamed(std::vector<SimplePathVertex*>& vertices, SimplePathMemento const* memento) {
    if (vertices.empty() || memento == nullptr) {
        return;
    }
    for (MementoTriple const& t : memento->getTriples()) {
        for (auto it = vertices.begin(); it != vertices.end();) {
            if (*it == t.first || *it == t.anchor || *it == t.last) {
                it = vertices.erase(it);
            } else {
                ++it;
            }
        }
    }
}

inline void deleteAll(std::vector<SimplePathVertex*>& vertices) {
    for (SimplePathVertex* v : vertices) {
        delete v;
    }
    vertices.clear();
}

inline DPoint locationOf(SimplePathVertex const* vertex) {
    return vertex != nullptr ? vertex->getLocation() : DPoint();
}

// The location of the path's reference position (its arbitrary position), or the default point.
inline DPoint referenceLocation(SimplePath const* path) {
    SimplePathPosition reference;
    DPoint out;
    if (path != nullptr && path->getArbitraryPosition(reference) == SimplePath::Success) {
        (void)path->locatePosition(reference, out); // the begin position of a non-empty path is found
    }
    return out;
}

// Resolves one stored location through the record's pick function with fresh outputs.
inline bool pick(SimplePathOperation::SegmentIndependentInformation const& info, DPoint const& location,
                 PHashablePointer<SimplePath>& path, SimplePathVertex*& vertex) {
    path = PHashablePointer<SimplePath>();
    vertex = nullptr;
    int index = -1;
    int const found =
        info.AquireSimplePathPickInfo(info.pathSeg, location, kPickTolerance, path, vertex, index);
    return found == 1 && path != nullptr;
}

// The opening steps of an edit of one path: a second execution without an undo in between is refused
// (EditFailed), then the memento is taken (MementoFailed). Success: go on with the edit.
inline SimplePathOperation::Result beginEdit(bool applied, PHashablePointer<SimplePath> const& path,
                                             SimplePathMemento*& memento) {
    if (applied) {
        return SimplePathOperation::EditFailed;
    }
    if (!takeMemento(path, memento)) {
        return SimplePathOperation::MementoFailed;
    }
    return SimplePathOperation::Success;
}

// beginEdit, then reads the triple that holds `vertex` (EditFailed for a null vertex or one the path
// does not hold). Success leaves `triple` filled.
inline SimplePathOperation::Result beginTripleEdit(bool applied, PHashablePointer<SimplePath> const& path,
                                                   SimplePathMemento*& memento, SimplePathVertex* vertex,
                                                   SimplePathVertexTriple& triple) {
    SimplePathOperation::Result const begun = beginEdit(applied, path, memento);
    if (begun != SimplePathOperation::Success) {
        return begun;
    }
    if (vertex == nullptr || path->getVertexInfo(vertex, triple.first, triple.anchor, triple.last,
                                                 triple.mode) != SimplePath::Success) {
        return SimplePathOperation::EditFailed;
    }
    return SimplePathOperation::Success;
}

// Gives a triple of the path the locations and mode of `to`. False, with nothing changed, when a location
// is not finite or the path refuses the change.
inline bool writeTriple(SimplePath& path, SimplePathVertexTriple const& triple,
                        SimplePathLocationTriple const& to, SimplePathChangeInstruction& change) {
    return isFinite(to.first) && isFinite(to.anchor) && isFinite(to.last) &&
           path.changeTriple(triple.first, to.first, triple.anchor, to.anchor, triple.last, to.last, to.mode,
                             change) == SimplePath::Success;
}

// Re-aims an operation of one vertex at the vertex its record names at `location`, found through the
// record's pick function. False, with `path` and `vertex` left alone, when nothing is found there or
// when the operation holds a memento: it is then bound to its path, and re-aiming it would break its
// undo.
inline bool retarget(SimplePathOperation::SegmentIndependentInformation const& record, DPoint const& location,
                     SimplePathMemento const* memento, PHashablePointer<SimplePath>& path,
                     SimplePathVertex*& vertex) {
    PHashablePointer<SimplePath> foundPath;
    SimplePathVertex* foundVertex = nullptr;
    if (memento != nullptr || !pick(record, location, foundPath, foundVertex) || foundVertex == nullptr) {
        return false;
    }
    path = foundPath;
    vertex = foundVertex;
    return true;
}

} // namespace operation_support

namespace operation_support {

// The shared protocol of RetreiveSegIndependentInfo: 0 for a record of another type (or of the right
// tag but not this library's class), 1 after filling the caller's record, 2 after allocating one.
template <class Record, class Fill>
int retrieve(SimplePathOperation::SegmentIndependentInformation*& info, Fill const& fill) {
    Record* record = nullptr;
    int result = 1;
    if (info != nullptr) {
        record = info->getType() == Record().getType() ? dynamic_cast<Record*>(info) : nullptr;
        if (record == nullptr) {
            return 0;
        }
    } else {
        record = new (std::nothrow) Record();
        if (record == nullptr) {
            return 0;
        }
        info = record;
        result = 2;
    }
    fill(*record);
    return result;
}

// The record as `Record` when ApplySegIndependentInfo may use it, else null.
template <class Record>
Record const* applicableRecord(SimplePathOperation::SegmentIndependentInformation const* info) {
    if (info == nullptr || info->pathSeg == nullptr || info->getType() != Record().getType()) {
        return nullptr;
    }
    return dynamic_cast<Record const*>(info);
}

} // namespace operation_support
