// The preview command, run as a process on a sample drawing: the parts of a drag's feedback each land
// in their own group, and snapping puts the dragged point where the snap says.
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
    pugi::xml_node group(char const* name) const {
        return doc.child("svg").find_child_by_attribute("g", "class", name);
    }
    int paths(char const* name) const {
        auto const children = group(name).children("path");
        return static_cast<int>(std::distance(children.begin(), children.end()));
    }
    // The anchor marker of the edited triple, and the point the snap measures from.
    pugi::xml_node anchor() const { return group("edited").find_child_by_attribute("class", "smooth"); }
    pugi::xml_node origin() const { return group("snap-origin").child("circle"); }
};

double x(pugi::xml_node n) {
    return n.attribute("cx").as_double();
}
double y(pugi::xml_node n) {
    return n.attribute("cy").as_double();
}

TEST_F(ToolProcess, PreviewDrawsEachPartOfTheFeedbackWhereTheSnapSays) {
    Preview const plain({"--vertex", "2", "--to", "110", "20"});
    EXPECT_EQ(plain.paths("kept"), 1);
    EXPECT_EQ(plain.paths("original"), 1);
    EXPECT_EQ(plain.paths("rubber-band"), 1);
    EXPECT_FALSE(plain.group("snap-origin"));
    EXPECT_EQ(x(plain.anchor()), 110);
    EXPECT_EQ(y(plain.anchor()), 20);

    // The angle snap lands on a 15 degree step from the origin; the horizontal one keeps its y.
    Preview const angle({"--vertex", "2", "--to", "123", "37", "--snap", "angle"});
    ASSERT_TRUE(angle.origin());
    double const steps =
        std::atan2(y(angle.anchor()) - y(angle.origin()), x(angle.anchor()) - x(angle.origin())) * 12 /
        3.14159265358979323846;
    EXPECT_NEAR(steps, std::round(steps), 1e-3);
    EXPECT_GT(std::hypot(x(angle.anchor()) - x(angle.origin()), y(angle.anchor()) - y(angle.origin())), 1.0);
    Preview const horizontal({"--vertex", "2", "--to", "123", "37", "--snap", "horizontal"});
    EXPECT_EQ(x(horizontal.anchor()), 123);
    EXPECT_EQ(y(horizontal.anchor()), y(horizontal.origin()));

    // A selection draws its runs over the path, with no single edited triple.
    Preview const selection({"--path", "2", "--vertex", "1", "--vertex", "2", "--vertex", "3", "--to", "140",
                             "70", "--snap", "angle"});
    EXPECT_EQ(selection.paths("rubber-band"), 1);
    EXPECT_TRUE(selection.group("snap-origin"));
    EXPECT_FALSE(selection.group("edited"));
}

} // namespace
