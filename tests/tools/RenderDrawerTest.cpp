// `render` draws through the library's drawer interface: one outline per path and one marker per vertex,
// each mode by its own shape, and the drawer's feedback styles in elements of their own.
#include "toolkit/Hooks.h"
#include "toolkit/OutputFile.h"
#include "toolkit/Session.h"
#include "toolkit/SvgDocument.h"
#include "toolkit/SvgDrawer.h"
#include "toolkit/SvgWriter.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <sstream>

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

TEST(RenderThroughDrawer, SamplesShowOneOutlinePerPathAndOneMarkerPerVertexByItsMode) {
    for (char const* name :
         {"exported-drawing.svg", "exported-logo.svg", "icon.svg", "minified-icons.svg", "open-paths.svg"}) {
        SCOPED_TRACE(name);
        std::string error;
        std::string const text = readWholeFile(std::string(SIMPLEPATH_SAMPLE_DATA) + "/" + name, error);
        ASSERT_EQ(error, "");
        SvgReadResult read = readSvgDocument(text);
        ASSERT_TRUE(read.ok()) << read.error;
        GlobalOptions options;
        std::istringstream in;
        std::ostringstream out, err;
        Session session(options, in, out, err);
        session.frame = read.document.frame;
        session.chains = read.document.chains;
        ASSERT_EQ(adoptChains(session), kExitOk);
        ASSERT_FALSE(session.paths.empty());

        std::vector<std::string> const after = elements(renderDrawing(session.frame, session.paths));
        int vertices = 0;
        for (auto const& path : session.paths) {
            vertices += path->numTriples();
        }
        EXPECT_EQ(count(after, "path d="), static_cast<int>(session.paths.size()));
        EXPECT_EQ(count(after, "circle class=smooth") + count(after, "rect class=cusp") +
                      count(after, "path class=symmetric"),
                  vertices);
    }
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
