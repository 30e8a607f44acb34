#include "toolkit/PathDataParser.h"
#include "toolkit/PathDataWriter.h"

#include <gtest/gtest.h>

using namespace sptool;

namespace {

std::vector<CubicChain> parsed(std::string const& data) {
    PathDataResult result = parsePathData(data);
    EXPECT_TRUE(result.ok()) << data;
    return result.chains;
}

// Every segment the data parses into, closing lines included (written open, then "Z" when closed), with
// six decimals: the exact controls of each segment show, and the rounding hides the last bits.
std::string segmentsOf(std::string const& data) {
    std::string out;
    for (CubicChain chain : parsed(data)) {
        bool const closed = chain.closed;
        chain.closed = false;
        out += writePathData(chain, NumberFormat{6}) + (closed ? "Z" : "");
    }
    return out;
}

} // namespace

TEST(PathData, CommandsAndNumberGrammarGiveTheirCubics) {
    struct Case {
        char const* data;
        char const* segments;
    } const cases[] = {
        // Number spellings, separators, implicit lineto after a moveto, relative coordinates.
        {"M.5 1.5L-1-2L1e-3 1E3L1.5.5", "M0.5 1.5L-1-2 0.001 1000 1.5 0.5"},
        {"\n\tM1 2H5V7h-2v-1l-3-6", "M1 2L5 2 5 7 3 7 3 6 0 0"},
        // Quadratics raised exactly (controls 2/3 of the way to the quadratic control); T reflects the
        // previous quadratic control, not the raised cubic's.
        {"M0 0Q3 3 6 0T12 0", "M0 0C2 2 4 2 6 0 8-2 10-2 12 0"},
        // S after C reflects C's second control; S after a line and T after a cubic use the current point.
        {"M0 0C0 10 10 10 10 0S20-10 20 0L30 0S40 10 40 0T50 0",
         "M0 0C0 10 10 10 10 0 10-10 20-10 20 0L30 0C30 0 40 10 40 0 40 0 43.333333 0 50 0"},
        // Z adds the closing line only where needed; a command after Z starts at the closed subpath's
        // start; moves without segments vanish.
        {"M0 0L10 0L10 10Z L5 -5 m1 1 h2 M7 7 M8 8 z M0 0 L1 0 L0 0 z",
         "M0 0L10 0 10 10 0 0ZM0 0L5-5M6-4L8-4M0 0L1 0 0 0Z"},
        // Arc flags need no separators; a zero radius draws a line; equal end points draw nothing.
        {"M0 0A0 5 0 0 1 4 4", "M0 0L4 4"},
        // Guards "Arcs whose radii overflow when grown to span the chord become their chord instead of
        // vanishing".
        {"M0 0A1e-300 1e300 45 1 1 10 10", "M0 0L10 10"},
        {"M2 2A5 5 0 0 1 2 2", ""},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(segmentsOf(c.data), c.segments) << c.data;
    }
    EXPECT_EQ(segmentsOf("M0 0a1 1 0 00 1 1"), segmentsOf("M0 0 a 1,1 0 0,0 1,1"));
}

TEST(PathData, MalformedDataNamesOffsetAndExpectation) {
    struct Case {
        char const* data;
        std::size_t offset;
        char const* expected;
    } const cases[] = {
        {"L0 0", 0, "a moveto command (M or m)"},
        {"M0 0 A1 1 0 2 0 3 3", 12, "an arc flag (0 or 1)"},
        {"M0 0 L1e 2", 8, "the digits of an exponent"},
    };
    for (Case const& c : cases) {
        PathDataResult const result = parsePathData(c.data);
        ASSERT_FALSE(result.ok()) << c.data;
        EXPECT_EQ(result.error->offset, c.offset) << c.data;
        EXPECT_EQ(result.error->expected, c.expected) << c.data;
    }
    EXPECT_EQ(parsePathData("M0 0 L\x01").error->found, "byte 0x01");
}
