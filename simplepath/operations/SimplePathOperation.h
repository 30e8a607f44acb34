#pragma once

#include <list>

#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/PathSeg.h"

class SimplePath;
class SimplePathVertex;
class SimplePathChangeInstruction;

// The base of every undoable edit. An operation is made by SimplePathOperationFactory, executed against
// the paths it names, undone from the memento it took just before its edit, and redone by executing it
// again. It can describe itself in a record that names vertices and positions by coordinates, from
// which the factory rebuilds an equal operation later, against paths the host may have rebuilt.
//
// Ownership. The caller owns the operation and deletes it through the virtual destructor. Paths are
// the host's: the host keeps every path an operation points to alive for as long as the operation.
// Vertex objects an edit takes out of the paths stay the operation's while the edit is in effect, so
// that undo can put them back; the operation frees them when it dies. The host must therefore not free
// the vertices that an operation's change instruction reports removed. Paths an operation creates
// become the host's once a change instruction has reported them added; the operation keeps its handle
// to refill the same object on redo, and undo only empties it.
class SimplePathOperation {
  public:
    // The numbers are part of the interface: hosts compare them.
    // [[nodiscard]]: an edit whose result is ignored may have failed unseen.
    enum [[nodiscard]] Result{
        Success = 0,        // the edit was made; the affected paths were appended
        SameVertex = 1,     // a join was asked to join a vertex with itself
        NotJoinable = 2,    // a join found a closed path, or a vertex that is not an end of its path
        VertexMismatch = 3, // a split's nearest anchor is not the anchor of the triple found for it
        DegenerateSlice = 4,
        EditFailed = 5,   // the editing primitive or a vertex query failed
        MementoFailed = 6 // no memento could be taken; also a failed join and a split's failed query
    };

    // The host's pick function: finds, in the design object, the path and the vertex lying within the
    // tolerance of the location; returns 1 when it found them. A location on a path's curve where no
    // vertex lies should give the path and a null vertex (records of splits name such places).
    using PickCallback = int (*)(PathSeg const*, DPoint const&, double, PHashablePointer<SimplePath>&,
                                 SimplePathVertex*&, int&);

    // A segment-independent record: an edit described by coordinates and a type tag. Derived records
    // add their own fields; each is released whole through this base.
    class SegmentIndependentInformation {
      public:
        SegmentIndependentInformation() = default;
        SegmentIndependentInformation(SegmentIndependentInformation const&) = default;
        SegmentIndependentInformation& operator=(SegmentIndependentInformation const&) = default;
        virtual ~SegmentIndependentInformation();

        // The record's type tag; 0 for the base.
        virtual int getType() const;

        // 0 without a pick function; otherwise whatever the pick function returns (1: found).
        int AquireSimplePathPickInfo(PathSeg const* segment, DPoint const& location, double tolerance,
                                     PHashablePointer<SimplePath>& path, SimplePathVertex*& vertex,
                                     int& index) const;

        // The host's design object the record's paths live in; the host sets it before rebuilding.
        PathSeg const* pathSeg = nullptr;
        PickCallback pickCallback = nullptr;
    };

    SimplePathOperation() = default;
    SimplePathOperation(SimplePathOperation const&) = default;
    SimplePathOperation& operator=(SimplePathOperation const&) = default;
    virtual ~SimplePathOperation();

    // Makes the edit. `affectedPaths` is appended to, on Success only; `change` receives what the
    // editing primitive records.
    virtual Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                                    SimplePathChangeInstruction& change) = 0;
    // With a null `info`: allocates a record for the caller and returns 2. With a record of this
    // operation's type: fills it and returns 1. With a record of another type: 0, record untouched.
    // Operations without a record set `info` to null and return -1.
    virtual int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) = 0;
    // Resolves the record's locations through its pick function and takes its values over: 1 on success,
    // 0 (operation unchanged) otherwise.
    virtual int ApplySegIndependentInfo(SegmentIndependentInformation*& info) = 0;
    // Restores the memento and releases it; without one, nothing happens.
    virtual void undoOperation() = 0;
};
