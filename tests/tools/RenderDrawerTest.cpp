// The drawer behind `render` and `preview` puts each feedback style in elements of its own.
#include "toolkit/SvgDrawer.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

using namespace sptool;

namespace {

// Every element of the document in order, as "name attr=value ...".
std::vector<std::string> elements(std::string const& svg) {
    pugi::xml_document doc;
    EXPECT_TRUE(doc.load_string(svg.c_str()));
    std::vector<std::string> out;
    struct Walker : pugi::xml_tree_walker {
        std::vector<std::string>* out;
        bool for_each(pugi::xml_node& node) override {
            if (node.type() == pugi::node_element) {
                std::string line = node.name();
                for (pugi::xml_attribute a : node.attributes()) {
                    line += std::string(" ") + a.name() + "=" + a.value();
                }
                out->push_back(line);
            }
            return true;
        }
    } walker;
    walker.out = &out;
    doc.traverse(walker);
    return out;
}

int count(std::vector<std::string> const& lines, std::string const& prefix) {
    int n = 0;
    for (std::string const& line : lines) {
        n += line.rfind(prefix, 0) == 0;
    }
    return n;
}

TEST(RenderThroughDrawer, FeedbackStylesAndUnknownModesGetTheirOwnElements) {
    SvgDrawer drawer;
    auto* rep = drawer.makeCurveRep();
    rep->addTriple(DPoint(0, 0), DPoint(0, 0), DPoint(5, 5));
    rep->addTriple(DPoint(5, 10), DPoint(10, 10), DPoint(10, 10));
    rep->setOpen();
    drawer.setStyle(SvgDrawer::Style::RubberBand);
    drawer.drawCurve(rep);
    drawer.setStyle(SvgDrawer::Style::Original);
    drawer.drawCurve(rep);
    SimplePathVertexTriple::VertexTripleMode mode = SimplePathVertexTriple::Symmetric;
    drawer.setModes(SvgDrawer::Modes::Single);
    drawer.drawCurveVertices(rep, &mode, 1, 0);
    drawer.drawEditedTriple(DPoint(5, 10), DPoint(10, 10), DPoint(15, 10), &mode);
    drawer.drawHighlightedVertex(DPoint(0, 0));
    delete rep;
    std::vector<std::string> const e = elements(drawer.document(SvgFrame{}));
    EXPECT_EQ(count(e, "g class=original"), 1);
    EXPECT_EQ(count(e, "g class=rubber-band"), 1);
    EXPECT_EQ(count(e, "circle class=vertex"), 2); // a single mode marks neither vertex
    EXPECT_EQ(count(e, "g class=edited"), 1);
    EXPECT_EQ(count(e, "path class=symmetric"), 1); // the edited triple
    EXPECT_EQ(count(e, "g class=snap-origin"), 1);
}

} // namespace
