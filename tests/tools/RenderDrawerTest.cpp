// The drawer behind `render` and `preview` puts each feedback style in elements of its own.
#include "toolkit/SvgDrawer.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

using namespace sptool;

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
    pugi::xml_document doc;
    ASSERT_TRUE(doc.load_string(drawer.document(SvgFrame{}).c_str()));
    auto const count = [&](char const* xpath) { return doc.select_nodes(xpath).size(); };
    EXPECT_EQ(count("//g[@class='original']"), 1u);
    EXPECT_EQ(count("//g[@class='rubber-band']"), 1u);
    EXPECT_EQ(count("//circle[@class='vertex']"), 2u); // a single mode marks neither vertex
    EXPECT_EQ(count("//g[@class='edited']"), 1u);
    EXPECT_EQ(count("//path[@class='symmetric']"), 1u); // the edited triple
    EXPECT_EQ(count("//g[@class='snap-origin']"), 1u);
}
