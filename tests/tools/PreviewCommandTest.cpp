// The preview command, run as a process on a sample drawing: the parts of a drag's feedback each land
// in their own group, and snapping puts the dragged point where the snap says.
#include "tools/RunTool.h"

#include <pugixml.hpp>

#include <cmath>

using namespace sptool::testing;

namespace {

struct Drawing {
    pugi::xml_document doc;
    pugi::xml_node group(char const* name) const {
        return doc.child("svg").find_child_by_attribute("g", "class", name);
    }
    int count(char const* name, char const* element) const {
        int n = 0;
        for (pugi::xml_node child : group(name).children(element)) {
            (void)child;
            ++n;
        }
        return n;
    }
};

void load(Drawing& drawing, Outcome const& r) {
    ASSERT_EQ(r.code, 0) << r.err;
    ASSERT_TRUE(drawing.doc.load_string(r.out.c_str()));
}

// The anchor marker of the edited triple.
std::pair<double, double> editedAnchor(Drawing const& d) {
    pugi::xml_node const marker = d.group("edited").find_child_by_attribute("class", "smooth");
    return {marker.attribute("cx").as_double(), marker.attribute("cy").as_double()};
}

TEST_F(ToolProcess, PreviewDrawsKeptOriginalAndRubberBandApart) {
    Drawing d;
    load(d, run({sample("open-paths.svg"), "preview", "--vertex", "2", "--to", "110", "20"}));
    EXPECT_EQ(d.count("kept", "path"), 1);
    EXPECT_EQ(d.count("original", "path"), 1);
    EXPECT_EQ(d.count("rubber-band", "path"), 1);
    EXPECT_FALSE(d.group("snap-origin"));
    auto const [x, y] = editedAnchor(d);
    EXPECT_EQ(x, 110);
    EXPECT_EQ(y, 20);
}

TEST_F(ToolProcess, PreviewSnapsToFifteenDegreeSteps) {
    Drawing d;
    load(d,
         run({sample("open-paths.svg"), "preview", "--vertex", "2", "--to", "123", "37", "--snap", "angle"}));
    pugi::xml_node const origin = d.group("snap-origin").child("circle");
    ASSERT_TRUE(origin);
    double const ox = origin.attribute("cx").as_double(), oy = origin.attribute("cy").as_double();
    auto const [x, y] = editedAnchor(d);
    double const degrees = std::atan2(y - oy, x - ox) * 180.0 / 3.14159265358979323846;
    double const steps = degrees / 15.0;
    EXPECT_NEAR(steps, std::round(steps), 1e-3) << degrees;
    EXPECT_GT(std::hypot(x - ox, y - oy), 1.0);

    Drawing h;
    load(h, run({sample("open-paths.svg"), "preview", "--vertex", "2", "--to", "123", "37", "--snap",
                 "horizontal"}));
    auto const [hx, hy] = editedAnchor(h);
    EXPECT_EQ(hx, 123);
    EXPECT_EQ(hy, h.group("snap-origin").child("circle").attribute("cy").as_double());
}

TEST_F(ToolProcess, PreviewOfASelectionDrawsItsRunsOverThePath) {
    Drawing d;
    load(d, run({sample("open-paths.svg"), "preview", "--path", "2", "--vertex", "1", "--vertex", "2",
                 "--vertex", "3", "--to", "140", "70", "--snap", "angle"}));
    EXPECT_EQ(d.count("rubber-band", "path"), 1);
    EXPECT_TRUE(d.group("snap-origin"));
    EXPECT_FALSE(d.group("edited"));
}

TEST_F(ToolProcess, PreviewRefusesWhatItCannotDraw) {
    EXPECT_EQ(run({sample("open-paths.svg"), "preview", "--vertex", "99", "--to", "1", "1"}).code, 1);
    EXPECT_EQ(
        run({sample("open-paths.svg"), "preview", "--path", "7", "--vertex", "0", "--to", "1", "1"}).code, 1);
    EXPECT_NE(run({sample("open-paths.svg"), "preview", "--vertex", "1", "--vertex", "2", "--handle", "in",
                   "--to", "1", "1"})
                  .code,
              0);
    EXPECT_EQ(run({sample("open-paths.svg"), "preview", "--vertex", "1", "--to", "nan", "1"}).code, 1);
}

} // namespace
