#include "CanvasDrawer.h"

#include "simplepath/interaction/TransformedCurveRep.h"

namespace {

// The triples as the library hands them over, already in canvas pixels.
class CanvasCurveRep : public SimplePathDrawer::CurveRep {
  public:
    char const* getType() const override { return "CanvasCurveRep"; }
    void addTriple(DPoint const& before, DPoint const& anchor, DPoint const& after) override {
        points.insert(points.end(), {before.x, before.y, anchor.x, anchor.y, after.x, after.y});
    }
    void popBackTriple() override {
        if (points.size() >= 6) {
            points.resize(points.size() - 6);
        }
    }
    void setOpen() override { closed = false; }
    void setClosed() override { closed = true; }

    std::vector<double> points;
    bool closed = false;
};

// The plain rep at the bottom of any wrapping the library or the drawer put around it.
CanvasCurveRep* finalRep(SimplePathDrawer::CurveRep* rep) {
    while (rep != nullptr && rep->getFinalRep() != nullptr) {
        rep = rep->getFinalRep();
    }
    return dynamic_cast<CanvasCurveRep*>(rep);
}

} // namespace

SimplePathDrawer::CurveRep* CanvasDrawer::makeCurveRep() {
    auto* plain = new CanvasCurveRep;
    if (mapping_ == nullptr) {
        return plain;
    }
    return new TransformedCurveRep(plain, *mapping_);
}

void CanvasDrawer::curve(CurveRep* rep, int style) {
    CanvasCurveRep const* canvasRep = finalRep(rep);
    if (canvasRep == nullptr || canvasRep->points.empty()) {
        return;
    }
    records_.insert(records_.end(), {double(CurveRecord), double(style), canvasRep->closed ? 1.0 : 0.0,
                                     double(canvasRep->points.size() / 6)});
    records_.insert(records_.end(), canvasRep->points.begin(), canvasRep->points.end());
}

void CanvasDrawer::drawCurve(CurveRep* rep) {
    curve(rep, style_);
}

void CanvasDrawer::drawPermanentCurve(CurveRep* rep) {
    curve(rep, Permanent);
}

void CanvasDrawer::drawCurveVertices(CurveRep* rep, VertexTripleMode* modes, int, int) {
    CanvasCurveRep const* canvasRep = finalRep(rep);
    if (canvasRep == nullptr) {
        return;
    }
    std::size_t const n = canvasRep->points.size() / 6;
    records_.insert(records_.end(), {double(VerticesRecord), double(style_), double(n)});
    for (std::size_t i = 0; i < n; ++i) {
        double mode = -1.0;
        if (modes != nullptr) {
            mode = modesPerTriple_ ? double(modes[i]) : double(modes[0]);
        }
        records_.push_back(mode);
        records_.insert(records_.end(), canvasRep->points.begin() + std::ptrdiff_t(6 * i),
                        canvasRep->points.begin() + std::ptrdiff_t(6 * i + 6));
    }
}

void CanvasDrawer::drawEditedTriple(DPoint const& before, DPoint const& anchor, DPoint const& after,
                                    VertexTripleMode* mode) {
    DPoint const b = mapped(before);
    DPoint const a = mapped(anchor);
    DPoint const c = mapped(after);
    records_.insert(records_.end(), {double(EditedRecord), mode != nullptr ? double(*mode) : -1.0, b.x, b.y,
                                     a.x, a.y, c.x, c.y});
}

void CanvasDrawer::drawHighlightedVertex(DPoint const& point) {
    DPoint const p = mapped(point);
    records_.insert(records_.end(), {double(HighlightRecord), p.x, p.y});
}

void CanvasDrawer::marker(int kind, DPoint const& p) {
    records_.insert(records_.end(), {double(MarkerRecord), double(kind), p.x, p.y});
}

void CanvasDrawer::box(DPoint const& a, DPoint const& b) {
    records_.insert(records_.end(), {double(BoxRecord), a.x, a.y, b.x, b.y});
}
