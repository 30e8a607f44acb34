#include "toolkit/SvgDocument.h"

#include "toolkit/EllipticalArc.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgScanner.h"
#include "toolkit/SvgTransform.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <vector>

namespace sptool {
namespace {

std::string_view localName(pugi::xml_node const& node) {
    std::string_view name = node.name();
    std::size_t const colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

bool isSkippedSubtree(std::string_view name) {
    static char const* const skipped[] = {"defs",  "symbol",   "marker",        "pattern", "clipPath", "mask",
                                          "style", "metadata", "foreignObject", "text",    "script"};
    return std::any_of(std::begin(skipped), std::end(skipped), [&](char const* s) { return name == s; });
}

// A length attribute's number; units (px, mm, %) are ignored, as the tool works in user units.
std::optional<double> lengthAttribute(pugi::xml_node const& node, char const* name) {
    pugi::xml_attribute const attribute = node.attribute(name);
    if (!attribute) {
        return std::nullopt;
    }
    SvgScanner in(attribute.value());
    try {
        in.skipWhitespace();
        return in.number();
    } catch (ScanFailure const&) {
        return std::nullopt;
    }
}

class DataText {
  public:
    DataText& command(char c) {
        text_.push_back(c);
        return *this;
    }
    DataText& operator<<(double value) {
        text_.push_back(' ');
        appendNumber(text_, value);
        return *this;
    }
    std::string const& str() const { return text_; }

  private:
    std::string text_;
};

// The path data a basic shape stands for, following the shape's definition in SVG; empty when the shape
// draws nothing (zero size, missing attributes). `offsetShift` receives how far an offset into the
// returned data lies from the same character of the shape's own `points` attribute.
std::string shapeData(pugi::xml_node const& node, std::string_view name, long& offsetShift) {
    offsetShift = 0;
    auto get = [&](char const* attribute) { return lengthAttribute(node, attribute).value_or(0.0); };
    DataText d;
    if (name == "rect") {
        double const x = get("x");
        double const y = get("y");
        double const w = get("width");
        double const h = get("height");
        if (!(w > 0.0 && h > 0.0)) {
            return {};
        }
        auto rxAttr = lengthAttribute(node, "rx");
        auto ryAttr = lengthAttribute(node, "ry");
        double rx = rxAttr ? *rxAttr : ryAttr.value_or(0.0);
        double ry = ryAttr ? *ryAttr : rx;
        rx = std::clamp(rx, 0.0, w / 2.0);
        ry = std::clamp(ry, 0.0, h / 2.0);
        if (rx > 0.0 && ry > 0.0) {
            d.command('M') << x + rx << y;
            d.command('H') << x + w - rx;
            d.command('A') << rx << ry << 0 << 0 << 1 << x + w << y + ry;
            d.command('V') << y + h - ry;
            d.command('A') << rx << ry << 0 << 0 << 1 << x + w - rx << y + h;
            d.command('H') << x + rx;
            d.command('A') << rx << ry << 0 << 0 << 1 << x << y + h - ry;
            d.command('V') << y + ry;
            d.command('A') << rx << ry << 0 << 0 << 1 << x + rx << y;
        } else {
            d.command('M') << x << y;
            d.command('H') << x + w;
            d.command('V') << y + h;
            d.command('H') << x;
        }
        d.command('Z');
        return d.str();
    }
    if (name == "circle" || name == "ellipse") {
        double const cx = get("cx");
        double const cy = get("cy");
        double const rx = name == "circle" ? get("r") : get("rx");
        double const ry = name == "circle" ? rx : get("ry");
        if (!(rx > 0.0 && ry > 0.0)) {
            return {};
        }
        d.command('M') << cx + rx << cy;
        d.command('A') << rx << ry << 0 << 0 << 1 << cx - rx << cy;
        d.command('A') << rx << ry << 0 << 0 << 1 << cx + rx << cy;
        d.command('Z');
        return d.str();
    }
    if (name == "line") {
        d.command('M') << get("x1") << get("y1");
        d.command('L') << get("x2") << get("y2");
        return d.str();
    }
    if (name == "polyline" || name == "polygon") {
        // The points list is the argument list of a moveto with implicit linetos.
        offsetShift = 1;
        std::string data = "M" + std::string(node.attribute("points").value());
        if (name == "polygon") {
            data += "Z";
        }
        return data;
    }
    return {};
}

std::string elementLabel(pugi::xml_node const& node) {
    std::string label = "<" + std::string(node.name());
    if (pugi::xml_attribute const id = node.attribute("id")) {
        label += " id=\"" + std::string(id.value()) + "\"";
    }
    // offset_debug() points at the element's name; the element starts one byte before, at its '<'.
    return label + "> at byte " + std::to_string(std::max<std::ptrdiff_t>(0, node.offset_debug() - 1));
}

bool isFinite(DPoint const& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

class Reader {
  public:
    explicit Reader(SvgReadResult& result) : result_(result) {}

    // Walks the element and its descendants in document order; false once an error has been recorded.
    // The walk keeps its own stack of open elements (each with the transform it passes to its children)
    // instead of recursing, so that a document nested a million groups deep cannot overflow the call
    // stack.
    bool walk(pugi::xml_node const& root) {
        struct Open {
            pugi::xml_node node;
            P2DTrans transform;
        };
        std::vector<Open> open;
        pugi::xml_node node = root;
        P2DTrans outer;
        while (node) {
            std::string_view const name = localName(node);
            bool descend = false;
            P2DTrans transform = outer;
            if (!isSkippedSubtree(name)) {
                if (pugi::xml_attribute const attribute = node.attribute("transform")) {
                    TransformResult const parsed = parseTransformList(attribute.value());
                    if (!parsed.error.empty()) {
                        return fail(elementLabel(node) + ": transform " + parsed.error);
                    }
                    transform = outer * parsed.transform;
                }
                if (!readShape(node, name, transform)) {
                    return false;
                }
                descend = true;
            }
            pugi::xml_node const child = descend ? firstElement(node.first_child()) : pugi::xml_node();
            if (child) {
                open.push_back({node, outer});
                outer = transform;
                node = child;
                continue;
            }
            // No children to visit: go on with the next sibling, climbing out of finished elements.
            node = node == root ? pugi::xml_node() : firstElement(node.next_sibling());
            while (!node && !open.empty()) {
                pugi::xml_node const parent = open.back().node;
                outer = open.back().transform;
                open.pop_back();
                node = parent == root ? pugi::xml_node() : firstElement(parent.next_sibling());
            }
        }
        return true;
    }

  private:
    static pugi::xml_node firstElement(pugi::xml_node node) {
        while (node && node.type() != pugi::node_element) {
            node = node.next_sibling();
        }
        return node;
    }

    bool fail(std::string message) {
        result_.error = std::move(message);
        return false;
    }

    bool readShape(pugi::xml_node const& node, std::string_view name, P2DTrans const& transform) {
        std::string generated;
        std::string_view data;
        char const* attribute = "d";
        long offsetShift = 0;
        if (name == "path") {
            data = node.attribute("d").value();
        } else {
            generated = shapeData(node, name, offsetShift);
            data = generated;
            attribute = name == "polyline" || name == "polygon" ? "points" : "shape";
        }
        if (data.empty()) {
            return true;
        }
        // The arc tolerance is relative to each arc's size, which an affine transform scales alike.
        PathDataResult parsed = parsePathData(data, kArcTolerance);
        if (!parsed.ok()) {
            PathDataError error = *parsed.error;
            if (offsetShift > 0) {
                // Name the offset and character in the attribute as written, not in the data made from it.
                std::string_view const written = node.attribute(attribute).value();
                error.offset -= std::min(error.offset, static_cast<std::size_t>(offsetShift));
                error.found = describeCharacterAt(written, error.offset);
            }
            return fail(elementLabel(node) + ": " + attribute + " " + error.message());
        }
        for (CubicChain& chain : parsed.chains) {
            bool finite = true;
            auto map = [&](DPoint& p) {
                p = transform * p;
                finite = finite && isFinite(p);
            };
            map(chain.start);
            for (CubicSegment& segment : chain.segments) {
                std::for_each(segment.begin(), segment.end(), map);
            }
            if (!finite) {
                return fail(elementLabel(node) +
                            ": the transform carries coordinates beyond the range of doubles");
            }
            result_.document.chains.push_back(std::move(chain));
        }
        return true;
    }

    SvgReadResult& result_;
};

// viewBox="min-x min-y width height"; a list that does not read as four numbers with a positive size is
// ignored, as renderers do.
void readFrame(pugi::xml_node const& root, SvgFrame& frame) {
    frame.width = root.attribute("width").value();
    frame.height = root.attribute("height").value();
    pugi::xml_attribute const viewBox = root.attribute("viewBox");
    if (!viewBox) {
        return;
    }
    SvgScanner in(viewBox.value());
    try {
        in.skipWhitespace();
        for (std::size_t i = 0; i < 4; ++i) {
            if (i > 0) {
                in.skipSeparator();
            }
            frame.viewBox[i] = in.number();
        }
        in.skipWhitespace();
        frame.hasViewBox = in.atEnd() && frame.viewBox[2] > 0.0 && frame.viewBox[3] > 0.0;
    } catch (ScanFailure const&) {
        frame.hasViewBox = false;
    }
}

} // namespace

bool looksLikeXml(std::string_view text) {
    if (text.substr(0, 3) == "\xEF\xBB\xBF") {
        text.remove_prefix(3);
    }
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '<';
}

SvgReadResult readSvgDocument(std::string_view xml) {
    SvgReadResult result;
    pugi::xml_document document;
    pugi::xml_parse_result const parsed = document.load_buffer(xml.data(), xml.size());
    if (!parsed) {
        result.error =
            std::string("XML ") + parsed.description() + " at byte " + std::to_string(parsed.offset);
        return result;
    }
    pugi::xml_node const root = document.document_element();
    if (!root) {
        result.error = "the document has no root element";
        return result;
    }
    if (localName(root) != "svg") {
        result.error = "the root element is <" + std::string(root.name()) + ">, not <svg>";
        return result;
    }
    readFrame(root, result.document.frame);
    Reader(result).walk(root);
    if (!result.ok()) {
        result.document.chains.clear();
    }
    return result;
}

} // namespace sptool
