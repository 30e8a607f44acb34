#include "toolkit/SvgDrawer.h"

#include "toolkit/PathDataWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <new>

namespace sptool {

namespace {

SvgCurveRep* svgRep(SimplePathDrawer::CurveRep* rep) {
    return dynamic_cast<SvgCurveRep*>(rep);
}

std::string pathElement(RenderPath const& path) {
    return "<path d=\"" + writePathData(chainOfVertices(path), NumberFormat{6}) + "\"/>\n";
}

// Handles as thin lines from the anchor with a dot at the end; a retracted handle is not drawn. `unit` is
// the size of the dot and the marker, in drawing units per unit of their design below.
std::string handles(RenderVertex const& v, double unit) {
    std::string out;
    for (DPoint const& handle : {v.in, v.out}) {
        if (handle == v.anchor) {
            continue;
        }
        out += "<line x1=\"" + number(v.anchor.x) + "\" y1=\"" + number(v.anchor.y) + "\" x2=\"" +
               number(handle.x) + "\" y2=\"" + number(handle.y) + "\"/>";
        out += "<circle cx=\"" + number(handle.x) + "\" cy=\"" + number(handle.y) + "\" r=\"" +
               number(1.5 * unit) + "\"/>\n";
    }
    return out;
}

// The anchor's marker: its shape tells the mode.
std::string marker(RenderVertex const& v, double unit) {
    std::string const x = number(v.anchor.x);
    std::string const y = number(v.anchor.y);
    if (v.mode == SimplePathVertexTriple::Smooth) {
        return "<circle class=\"smooth\" cx=\"" + x + "\" cy=\"" + y + "\" r=\"" + number(3.0 * unit) +
               "\"/>\n";
    }
    if (v.mode == SimplePathVertexTriple::Symmetric) {
        double const d = 4.0 * unit;
        return "<path class=\"symmetric\" d=\"M" + x + " " + number(v.anchor.y - d) + "L" +
               number(v.anchor.x + d) + " " + y + "L" + x + " " + number(v.anchor.y + d) + "L" +
               number(v.anchor.x - d) + " " + y + "Z\"/>\n";
    }
    if (v.mode == SimplePathVertexTriple::Cusp) {
        std::string const side = number(6.0 * unit);
        return "<rect class=\"cusp\" x=\"" + number(v.anchor.x - 3.0 * unit) + "\" y=\"" +
               number(v.anchor.y - 3.0 * unit) + "\" width=\"" + side + "\" height=\"" + side + "\"/>\n";
    }
    return "<circle class=\"vertex\" cx=\"" + x + "\" cy=\"" + y + "\" r=\"" + number(1.5 * unit) + "\"/>\n";
}

struct StyleLook {
    char const* name;
    char const* stroke;
    double width;
    char const* extra;
};

StyleLook lookOf(SvgDrawer::Style style) {
    switch (style) {
    case SvgDrawer::Style::Kept:
        return {"kept", "#1a1a1a", 1.5, ""};
    case SvgDrawer::Style::Original:
        return {"original", "#9a9a9a", 1.0, " stroke-dasharray=\"4 3\""};
    case SvgDrawer::Style::RubberBand:
        break;
    }
    return {"rubber-band", "#e8590c", 1.5, ""};
}

} // namespace

SimplePathDrawer::CurveRep* SvgDrawer::makeCurveRep() {
    return new (std::nothrow) SvgCurveRep;
}

void SvgDrawer::drawCurve(CurveRep* rep) {
    if (SvgCurveRep const* r = svgRep(rep)) {
        curves_.push_back({style_, r->path});
    }
}

void SvgDrawer::drawCurveVertices(CurveRep* rep, VertexTripleMode* modes, int, int) {
    SvgCurveRep const* r = svgRep(rep);
    if (r == nullptr) {
        return;
    }
    std::vector<RenderVertex> const& all = r->path.vertices;
    std::size_t const n = all.size();
    auto const gap = [&all](std::size_t i, std::size_t j) {
        return std::hypot(all[i].anchor.x - all[j].anchor.x, all[i].anchor.y - all[j].anchor.y);
    };
    for (std::size_t i = 0; i < n; ++i) {
        RenderVertex v = all[i];
        v.mode = modes != nullptr && modes_ == Modes::PerTriple ? static_cast<int>(modes[i]) : -1;
        double room = std::numeric_limits<double>::infinity();
        if (i > 0 || (r->path.closed && n > 1)) {
            room = std::min(room, gap(i, i > 0 ? i - 1 : n - 1));
        }
        if (i + 1 < n || (r->path.closed && n > 1)) {
            room = std::min(room, gap(i, i + 1 < n ? i + 1 : 0));
        }
        vertices_.push_back({v, room});
    }
}

void SvgDrawer::drawEditedTriple(DPoint const& before, DPoint const& anchor, DPoint const& after,
                                 VertexTripleMode* mode) {
    edited_.push_back({anchor, before, after, mode != nullptr ? static_cast<int>(*mode) : -1});
}

void SvgDrawer::drawPermanentCurve(CurveRep* rep) {
    if (SvgCurveRep const* r = svgRep(rep)) {
        permanent_.push_back(r->path);
    }
}

void SvgDrawer::drawHighlightedVertex(DPoint const& point) {
    highlighted_.push_back(point);
}

std::string SvgDrawer::document(SvgFrame const& frame) const {
    DrawingBox box;
    std::for_each(permanent_.begin(), permanent_.end(), [&](RenderPath const& p) { box.add(p); });
    std::for_each(curves_.begin(), curves_.end(), [&](StyledPath const& p) { box.add(p.path); });
    std::for_each(vertices_.begin(), vertices_.end(), [&](SpacedVertex const& v) { box.add(v.vertex); });
    std::for_each(edited_.begin(), edited_.end(), [&](RenderVertex const& v) { box.add(v); });
    std::for_each(highlighted_.begin(), highlighted_.end(), [&](DPoint const& p) { box.add(p); });
    std::array<double, 4> const viewBox = drawingBox(frame, box);
    // One unit is a 400th of the drawing's larger side: strokes are one unit wide, markers a few.
    double const unit = std::max(viewBox[2], viewBox[3]) / 400.0;

    std::string out = documentStart(frame, viewBox);
    out += "<g fill=\"none\" stroke=\"#1a1a1a\" stroke-width=\"" + number(1.5 * unit) + "\">\n";
    for (RenderPath const& path : permanent_) {
        out += pathElement(path);
    }
    out += "</g>\n";
    for (Style style : {Style::Kept, Style::Original, Style::RubberBand}) {
        StyleLook const look = lookOf(style);
        std::string group;
        for (StyledPath const& p : curves_) {
            if (p.style == style) {
                group += pathElement(p.path);
            }
        }
        if (!group.empty()) {
            out += std::string("<g class=\"") + look.name + "\" fill=\"none\" stroke=\"" + look.stroke +
                   "\" stroke-width=\"" + number(look.width * unit) + "\"" + look.extra + ">\n" + group +
                   "</g>\n";
        }
    }
    out += "<g stroke=\"#3478f6\" stroke-width=\"" + number(0.75 * unit) + "\" fill=\"#3478f6\">\n";
    // A marker is 6 units wide; where the next anchor is nearer than that, it shrinks to 40% of the gap
    // (down to a quarter of its size, so that markers on one spot still show).
    auto const markerUnit = [unit](SpacedVertex const& v) {
        return unit * std::max(0.25, std::min(1.0, 0.4 * v.room / (6.0 * unit)));
    };
    for (SpacedVertex const& v : vertices_) {
        out += handles(v.vertex, markerUnit(v));
    }
    out += "</g>\n<g stroke=\"#d0342c\" stroke-width=\"" + number(0.75 * unit) + "\" fill=\"#fff\">\n";
    for (SpacedVertex const& v : vertices_) {
        out += marker(v.vertex, markerUnit(v));
    }
    out += "</g>\n";
    if (!edited_.empty()) {
        out += "<g class=\"edited\" stroke=\"#e8590c\" stroke-width=\"" + number(0.75 * unit) +
               "\" fill=\"#e8590c\">\n";
        for (RenderVertex const& v : edited_) {
            out += handles(v, unit) + marker(v, unit);
        }
        out += "</g>\n";
    }
    if (!highlighted_.empty()) {
        out += "<g class=\"snap-origin\" stroke=\"#2b8a3e\" stroke-width=\"" + number(0.75 * unit) +
               "\" fill=\"none\">\n";
        double const d = 5.0 * unit;
        for (DPoint const& p : highlighted_) {
            out += "<circle cx=\"" + number(p.x) + "\" cy=\"" + number(p.y) + "\" r=\"" + number(d) + "\"/>";
            out += "<line x1=\"" + number(p.x - d) + "\" y1=\"" + number(p.y) + "\" x2=\"" + number(p.x + d) +
                   "\" y2=\"" + number(p.y) + "\"/>";
            out += "<line x1=\"" + number(p.x) + "\" y1=\"" + number(p.y - d) + "\" x2=\"" + number(p.x) +
                   "\" y2=\"" + number(p.y + d) + "\"/>\n";
        }
        out += "</g>\n";
    }
    return out + "</svg>\n";
}

std::string renderDrawing(SvgFrame const& frame, std::vector<std::unique_ptr<SimplePath>> const& paths) {
    SvgDrawer drawer;
    drawer.setModes(SvgDrawer::Modes::PerTriple);
    for (std::unique_ptr<SimplePath> const& path : paths) {
        path->permanentDrawCurve(drawer);
    }
    for (std::unique_ptr<SimplePath> const& path : paths) {
        std::unique_ptr<SimplePathDrawer::CurveRep> rep(drawer.makeCurveRep());
        if (!rep) {
            continue;
        }
        SimplePathVertexTriple::VertexTripleMode* modes = nullptr;
        path->initializeDrawerCurveRep(*rep, &modes);
        if (modes != nullptr) {
            drawer.drawCurveVertices(rep.get(), modes, 1, 0);
        }
        delete[] modes;
    }
    return drawer.document(frame);
}

} // namespace sptool
