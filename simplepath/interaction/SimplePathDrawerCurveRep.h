#pragma once

#include "simplepath/interfaces/DPoint.h"

// A curve as the host's drawer wants it, filled by the library one vertex triple at a time (incoming
// handle, anchor, outgoing handle) and then handed back to the drawer. Hosts implement it next to their
// SimplePathDrawer, which makes it; the library code that asked for a curve rep deletes it through the
// virtual destructor. Known to the drawer as SimplePathDrawer::CurveRep.
class SimplePathDrawerCurveRep {
  public:
    SimplePathDrawerCurveRep() = default;
    SimplePathDrawerCurveRep(SimplePathDrawerCurveRep const&) = default;
    SimplePathDrawerCurveRep& operator=(SimplePathDrawerCurveRep const&) = default;

    // The name of the concrete type, for hosts that keep several kinds of rep.
    virtual char const* getType() const = 0;
    virtual void addTriple(DPoint const& before, DPoint const& anchor, DPoint const& after) = 0;
    virtual void popBackTriple() = 0;
    // Whether the last triple is joined back to the first.
    virtual void setOpen() = 0;
    virtual void setClosed() = 0;
    // The rep that finally receives the points, for wrappers; a plain rep has none.
    virtual SimplePathDrawerCurveRep* getFinalRep() const { return nullptr; }
    // Declared last on purpose: hosts built against the slot order find the destructor after the rest.
    virtual ~SimplePathDrawerCurveRep() = default;
};
