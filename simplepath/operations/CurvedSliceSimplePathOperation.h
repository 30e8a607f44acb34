#pragma once

#include <list>

#include "simplepath/operations/SimplePathUnrecordedOperation.h"

class SimplePathMemento;

// Records, undoably, a cut that the host has made itself (along a curve): some paths are replaced by
// new pieces. No geometry is done here. Execution reports the replaced paths removed and the pieces
// added, maps the first replaced path onto every piece (a position held on it follows to the first
// piece), and takes a memento of each replaced path so that undo gives it back.
class CurvedSliceSimplePathOperation : public SimplePathUnrecordedOperation {
  public:
    CurvedSliceSimplePathOperation(std::list<PHashablePointer<SimplePath>> replaced,
                                   std::list<PHashablePointer<SimplePath>> pieces);
    // A copy starts un-executed with the same lists.
    CurvedSliceSimplePathOperation(CurvedSliceSimplePathOperation const& other);
    CurvedSliceSimplePathOperation& operator=(CurvedSliceSimplePathOperation const&) = delete;
    ~CurvedSliceSimplePathOperation() override;

    // Either list empty: EditFailed, before any memento is taken.
    Result executeOperation(std::list<PHashablePointer<SimplePath>>& affectedPaths,
                            SimplePathChangeInstruction& change) override;
    void undoOperation() override;

  private:
    std::list<PHashablePointer<SimplePath>> replaced;
    std::list<PHashablePointer<SimplePath>> pieces;
    std::list<SimplePathMemento*> mementos;
};
