// Each query and edit command, run as a process on small drawings whose answers are known by hand.
#include "toolkit/PathDataParser.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgDocument.h"
#include "tools/RunTool.h"

#include <pugixml.hpp>

using namespace sptool;
using namespace sptool::testing;

namespace {

char const* const kShapes = "M0 0L10 0L10 10Z M20 0C20 10 30 10 30 0"; // a triangle and an arch
char const* const kCurve = "M0 0 C10 0 20 10 30 10 C40 10 50 0 60 0";

} // namespace

TEST_F(ToolProcess, EachCommandGivesItsAnswer) {
    struct Case {
        char const* data;
        char const* commands;
        char const* out;
    } const cases[] = {
        // The vertical line x = 5 crosses the triangle's base and its hypotenuse, and nothing of the arch.
        {kShapes, "intersect 5 -5 5 20",
         "2 crossings\npath 0 at 0:0.5, point 5 0\npath 0 at 2:0.5, point 5 5\n"},
        // Anchors win over handles and handles over the curve; nothing near is an answer, not an error.
        {kShapes, "pick 20 9.5", "path 1 vertex 0 outgoing handle, point 20 10\n"},
        {kShapes, "pick 50 50 --tolerance 2", "nothing within 2 of 50 50\n"},
        // Edits: a call that ends on an edit writes the drawing.
        // Straight pulls the handles onto the anchor.
        {"M0 0C0 5 10 5 10 0S20 -5 20 0", "mode straight --vertex 1", "M0 0C0 5 10 0 10 0 10 0 20-5 20 0\n"},
        // Dragging the middle of a straight segment bends it through the target.
        {"M0 0L10 0", "drag --at 0:0.5 --to 5 4 nearest 5 4 --decimals 6",
         "path 0 at 0:0.5, point 5 4, distance 0\n"},
        {"M0 0L10 0L10 10Z", "split --vertex 1", "M10 0L10 10 0 0 10 0\n"},
        // Ends that meet merge into one vertex; ends apart get a straight segment between them.
        {"M0 0L5 0M5 0L10 0", "join 0:end 1:start", "M0 0L5 0 10 0\n"},
        // Transforms turn and scale about the centre of the bounds unless told otherwise.
        {"M0 0L10 0L10 10", "transform scale 2", "M-5-5L15-5 15 15\n"},
        // Options after a command that takes any number of values, and a number written -.5.
        {"M0 0L1 1", "transform translate -.5 1 --format d --decimals 1", "M-0.5 1L0.5 2\n"},
        // Move drags one handle, snapped to the line it started on.
        {kCurve, "move --vertex 1 --handle out --to 45 30 --snap horizontal",
         "M0 0C10 0 20 10 30 10 45 10 50 0 60 0\n"},
        // A slice inside two segments adds a vertex at each cut; the piece between them is closed by the
        // cut. Two closed outlines cut once each join into one.
        {"M0 0L10 0L20 0L30 0", "slice 0:0:0.5 0:2:0.5", "M5 0L10 0 20 0 25 0Z\nM0 0L5 0 25 0 30 0\n"},
        {"M0 0L10 0L10 10L0 10Z M20 0L30 0L30 10Z", "slice 0:1:0.5 1:2:0.5",
         "M10 5L10 10 0 10 0 0 10 0 10 5 25 5 20 0 30 0 30 10 25 5Z\n"},
    };
    for (Case const& c : cases) {
        Outcome const r = run(with({"--d", c.data}, words(c.commands)));
        EXPECT_EQ(r.code, 0) << c.commands << ": " << r.err;
        EXPECT_EQ(r.out, c.out) << c.commands;
    }
}

TEST_F(ToolProcess, RenderDrawsEveryVertexWithTheShapeOfItsMode) {
    // The kink at (20 0) is a cusp, the middle vertex is made symmetric, and the ends, whose outer
    // handles are retracted, are cusps too, as are the corners of the second path.
    std::string const data = "M0 0C0 5 10 5 10 0S20 -5 20 0C25 0 30 5 30 10M40 0L50 10";
    Outcome const r = run({"--d", data, "mode", "symmetric", "--vertex", "1", "render"});
    pugi::xml_document doc;
    ASSERT_TRUE(doc.load_string(r.out.c_str())) << r.err;
    EXPECT_EQ(doc.select_nodes("//circle[@class='smooth']").size(), 0u);
    EXPECT_EQ(doc.select_nodes("//path[@class='symmetric']").size(), 1u);
    EXPECT_EQ(doc.select_nodes("//path[not(@class)]").size(), 2u); // an outline per path
    EXPECT_EQ(doc.select_nodes("//rect[@class='cusp']").size(), 5u);
    EXPECT_EQ(doc.select_nodes("//line").size(), 6u); // the handles that stand off their anchors
    EXPECT_EQ(writePathData(readSvgDocument(r.out).document.chains.front()),
              writePathData(parsePathData(data).chains[0]));
}
