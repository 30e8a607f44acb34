#include "toolkit/SvgWriter.h"

#include "toolkit/PathDataWriter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sptool {

CubicChain chainOfVertices(RenderPath const& path) {
    CubicChain chain;
    if (path.vertices.empty()) {
        return chain;
    }
    std::size_t const n = path.vertices.size();
    chain.start = path.vertices[0].anchor;
    chain.closed = path.closed;
    std::size_t const segments = path.closed ? n : n - 1;
    for (std::size_t i = 0; i < segments; ++i) {
        RenderVertex const& a = path.vertices[i];
        RenderVertex const& b = path.vertices[(i + 1) % n];
        chain.segments.push_back({a.out, b.in, b.anchor});
    }
    return chain;
}

void DrawingBox::add(DPoint const& p) {
    minX = std::min(minX, p.x);
    minY = std::min(minY, p.y);
    maxX = std::max(maxX, p.x);
    maxY = std::max(maxY, p.y);
}

void DrawingBox::add(CubicChain const& chain) {
    add(chain.start);
    for (CubicSegment const& segment : chain.segments) {
        std::for_each(segment.begin(), segment.end(), [&](DPoint const& p) { add(p); });
    }
}

void DrawingBox::add(RenderVertex const& v) {
    add(v.anchor);
    add(v.in);
    add(v.out);
}

void DrawingBox::add(RenderPath const& path) {
    std::for_each(path.vertices.begin(), path.vertices.end(), [&](RenderVertex const& v) { add(v); });
}

// The viewBox to draw in: the input's, or the box with a margin of 5% of its larger side (at least 1).
std::array<double, 4> drawingBox(SvgFrame const& frame, DrawingBox const& box) {
    if (frame.hasViewBox) {
        return frame.viewBox;
    }
    if (box.empty()) {
        return {0.0, 0.0, 100.0, 100.0};
    }
    // Sizes are taken from half coordinates, which cannot overflow, and the frame is clamped to the
    // largest double, so a drawing that spans most of the double range still gets finite numbers.
    double const halfWidth = box.maxX / 2 - box.minX / 2, halfHeight = box.maxY / 2 - box.minY / 2;
    double const margin = std::max(1.0, 0.1 * std::max(halfWidth, halfHeight));
    static constexpr double largest = std::numeric_limits<double>::max();
    auto const clamp = [](double v) { return std::clamp(v, -largest, largest); };
    return {clamp(box.minX - margin), clamp(box.minY - margin), clamp(2 * (halfWidth + margin)),
            clamp(2 * (halfHeight + margin))};
}

std::string number(double value) {
    std::string out;
    appendNumber(out, value, NumberFormat{4});
    return out;
}

namespace {

std::string escapeAttribute(std::string const& text) {
    std::string out;
    for (char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out.push_back(c);
        }
    }
    return out;
}

} // namespace

std::string documentStart(SvgFrame const& frame, std::array<double, 4> const& viewBox) {
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"";
    if (!frame.width.empty() && !frame.height.empty()) {
        out += " width=\"" + escapeAttribute(frame.width) + "\" height=\"" + escapeAttribute(frame.height) +
               "\"";
    }
    out += " viewBox=\"";
    for (std::size_t i = 0; i < 4; ++i) {
        out += (i > 0 ? " " : "") + number(viewBox[i]);
    }
    return out + "\">\n";
}

std::string writeSvgDocument(SvgFrame const& frame, std::vector<CubicChain> const& chains,
                             NumberFormat format) {
    DrawingBox box;
    std::for_each(chains.begin(), chains.end(), [&](CubicChain const& chain) { box.add(chain); });
    std::array<double, 4> const viewBox = drawingBox(frame, box);
    double const unit = std::max(viewBox[2], viewBox[3]) / 400.0;
    std::string out = documentStart(frame, viewBox);
    out += "<g fill=\"none\" stroke=\"#000\" stroke-width=\"" + number(unit) + "\">\n";
    for (CubicChain const& chain : chains) {
        out += "<path d=\"" + writePathData(chain, format) + "\"/>\n";
    }
    return out + "</g>\n</svg>\n";
}

} // namespace sptool
