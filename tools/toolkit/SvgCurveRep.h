#pragma once

#include "toolkit/SvgWriter.h"

#include "simplepath/interaction/SimplePathDrawer.h"

namespace sptool {

// The curve rep of the SVG drawer: the triples as the library hands them over, kept as render vertices
// (their mode unknown until the drawer is told), and whether the curve closes.
class SvgCurveRep : public SimplePathDrawer::CurveRep {
  public:
    char const* getType() const override { return "SvgCurveRep"; }
    void addTriple(DPoint const& before, DPoint const& anchor, DPoint const& after) override {
        path.vertices.push_back({anchor, before, after, -1});
    }
    void popBackTriple() override {
        if (!path.vertices.empty()) {
            path.vertices.pop_back();
        }
    }
    void setOpen() override { path.closed = false; }
    void setClosed() override { path.closed = true; }

    RenderPath path;
};

} // namespace sptool
