// The preview command, run as a process on a sample drawing: the parts of a drag's feedback each land
// in their own group, and snapping puts the dragged point where the snap says.
#include "simplepath/simplepath.h"
#include "tools/RunTool.h"

#include <pugixml.hpp>

#include <cmath>

using namespace sptool::testing;

namespace {

struct Preview {
    pugi::xml_document doc;
    explicit Preview(std::vector<std::string> const& args) {
        Outcome const r = run(with({sample("open-paths.svg"), "preview"}, args));
        EXPECT_EQ(r.code, 0) << r.err;
        EXPECT_TRUE(doc.load_string(r.out.c_str()));
    }
    std::size_t count(char const* xpath) const { return doc.select_nodes(xpath).size(); }
    // The centre of the first circle the path names.
    DPoint at(char const* xpath) const {
        pugi::xml_node const n = doc.select_node(xpath).node();
        return DPoint(n.attribute("cx").as_double(), n.attribute("cy").as_double());
    }
};

TEST_F(ToolProcess, PreviewDrawsEachPartOfTheFeedbackWhereTheSnapSays) {
    char const* const anchor = "//g[@class='edited']/circle[@class='smooth']";
    Preview const plain({"--vertex", "2", "--to", "110", "20"});
    for (std::string group : {"kept", "original", "rubber-band"}) {
        EXPECT_EQ(plain.count(("//g[@class='" + group + "']/path").c_str()), 1u) << group;
    }
    EXPECT_EQ(plain.count("//g[@class='snap-origin']"), 0u);
    EXPECT_EQ(plain.at(anchor), DPoint(110, 20));

    // The angle snap lands on a 15 degree step from the origin.
    Preview const angle({"--vertex", "2", "--to", "123", "37", "--snap", "angle"});
    DVector const step = angle.at(anchor) - angle.at("//g[@class='snap-origin']/circle");
    double const steps = std::atan2(step.y, step.x) * 12 / 3.14159265358979323846;
    EXPECT_NEAR(steps, std::round(steps), 1e-3);
    EXPECT_GT(step.length(), 1.0);

    // A selection draws its runs over the path, with no single edited triple.
    Preview const selection({"--path", "2", "--vertex", "1", "--vertex", "2", "--vertex", "3", "--to", "140",
                             "70", "--snap", "angle"});
    EXPECT_EQ(selection.count("//g[@class='rubber-band']/path"), 1u);
    EXPECT_EQ(selection.count("//g[@class='snap-origin']") - selection.count("//g[@class='edited']"), 1u);
}

} // namespace
