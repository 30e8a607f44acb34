#include "toolkit/PathDataParser.h"
#include "toolkit/PathDataWriter.h"
#include "tools/ChainSampling.h"

#include <gtest/gtest.h>

using namespace sptool;
using sptool::testing::sampledDistance;

namespace {

std::vector<CubicChain> parsed(std::string const& data) {
    PathDataResult result = parsePathData(data);
    EXPECT_TRUE(result.ok()) << data << ": " << (result.error ? result.error->message() : "");
    return result.chains;
}

// The anchors of a chain: its start and every segment end.
std::vector<DPoint> anchors(CubicChain const& chain) {
    std::vector<DPoint> points{chain.start};
    for (CubicSegment const& s : chain.segments) {
        points.push_back(s[2]);
    }
    return points;
}

} // namespace

TEST(PathData, NumberGrammarAndSeparators) {
    // Every spelling below draws the same three lines.
    std::vector<DPoint> const expected = {{0.5, 1.5}, {-1, -2}, {0.001, 1000}, {1.5, 0.5}};
    for (char const* data :
         {"M.5 1.5L-1-2L1e-3 1E3L1.5.5", "M 0.5,1.5 L -1,-2 L 0.001,1000 L 1.5,0.5",
          "M.5,1.5-1-2 1e-3,1e+3 1.5 .5", "\n\tM0.5 1.5\r\nl-1.5-3.5 1.001 1002 1.499-999.5"}) {
        std::vector<CubicChain> const chains = parsed(data);
        ASSERT_EQ(chains.size(), 1u) << data;
        std::vector<DPoint> const got = anchors(chains[0]);
        ASSERT_EQ(got.size(), expected.size()) << data;
        for (std::size_t i = 0; i < got.size(); ++i) {
            EXPECT_NEAR(got[i].x, expected[i].x, 1e-12) << data << " anchor " << i;
            EXPECT_NEAR(got[i].y, expected[i].y, 1e-12) << data << " anchor " << i;
        }
    }
}

TEST(PathData, LinesHaveTheirControlsOnTheirEnds) {
    std::vector<CubicChain> const chains = parsed("M1 2H5V7h-2v-1L0 0");
    ASSERT_EQ(chains.size(), 1u);
    std::vector<DPoint> const want = {{1, 2}, {5, 2}, {5, 7}, {3, 7}, {3, 6}, {0, 0}};
    EXPECT_EQ(anchors(chains[0]), want);
    for (std::size_t i = 0; i < chains[0].segments.size(); ++i) {
        EXPECT_TRUE(isStraight(segmentStart(chains[0], i), chains[0].segments[i]));
    }
}

TEST(PathData, QuadraticsAreRaisedExactly) {
    // The cubic must trace the quadratic at every parameter, not merely pass through its ends.
    DPoint const p0(3, -1), q(10, 8), p2(-4, 5);
    CubicSegment const c = raiseQuadratic(p0, q, p2);
    for (int k = 0; k <= 64; ++k) {
        double const t = k / 64.0;
        double const u = 1 - t;
        DPoint const expected(u * u * p0.x + 2 * u * t * q.x + t * t * p2.x,
                              u * u * p0.y + 2 * u * t * q.y + t * t * p2.y);
        EXPECT_LT(distance(cubicPoint(p0, c, t), expected), 1e-13);
    }
    // Q and q agree, and T reflects the previous quadratic control, not the raised cubic's.
    std::vector<CubicChain> const abs = parsed("M3 -1Q10 8 -4 5T0 0");
    std::vector<CubicChain> const rel = parsed("m3-1q7 9-7 6t4-5");
    EXPECT_LT(sampledDistance(abs, rel), 1e-12);
    ASSERT_EQ(abs[0].segments.size(), 2u);
    CubicSegment const reflected = raiseQuadratic({-4, 5}, {-18, 2}, {0, 0});
    EXPECT_LT(sampledDistance(CubicChain{{-4, 5}, {abs[0].segments[1]}, false},
                              CubicChain{{-4, 5}, {reflected}, false}),
              1e-12);
}

TEST(PathData, SmoothCommandsReflectOnlyAfterTheirOwnKind) {
    // S after C reflects C's second control; S after a line (or T after a cubic) uses the current point.
    std::vector<CubicChain> const chains = parsed("M0 0C0 10 10 10 10 0S20-10 20 0L30 0S40 10 40 0T50 0");
    ASSERT_EQ(chains.size(), 1u);
    auto const& s = chains[0].segments;
    ASSERT_EQ(s.size(), 5u);
    EXPECT_EQ(s[1][0], DPoint(10, -10));
    EXPECT_EQ(s[3][0], DPoint(30, 0));
    // A T without a quadratic before it has its control on the current point: a straight line.
    EXPECT_EQ(s[4][0], DPoint(40, 0));
    EXPECT_EQ(s[4][1].y, 0.0);
    EXPECT_EQ(s[4][2], DPoint(50, 0));
}

TEST(PathData, SubpathsBecomeChains) {
    // Z closes with a line where needed; a command after Z starts a new subpath at the closed one's start;
    // moves without segments vanish.
    std::vector<CubicChain> const chains =
        parsed("M0 0L10 0L10 10Z L5 -5 m1 1 h2 M7 7 M8 8 z M0 0 L1 0 L0 0 z");
    ASSERT_EQ(chains.size(), 4u);
    EXPECT_TRUE(chains[0].closed);
    EXPECT_EQ(chains[0].segments.size(), 3u);
    EXPECT_EQ(chains[0].segments.back()[2], DPoint(0, 0));
    EXPECT_FALSE(chains[1].closed);
    EXPECT_EQ(chains[1].start, DPoint(0, 0));
    EXPECT_EQ(anchors(chains[1]).back(), DPoint(5, -5));
    EXPECT_EQ(chains[2].start, DPoint(6, -4));
    EXPECT_TRUE(chains[3].closed);
    EXPECT_EQ(chains[3].segments.size(), 2u); // already back at the start: no extra closing line
    EXPECT_TRUE(parsePathData("").chains.empty());
    EXPECT_TRUE(parsePathData("  \n ").ok());
}

TEST(PathData, ArcFlagsWithoutSeparators) {
    std::vector<CubicChain> const packed = parsed("M0 0a1 1 0 00 1 1");
    std::vector<CubicChain> const spaced = parsed("M0 0 a 1,1 0 0,0 1,1");
    EXPECT_EQ(sampledDistance(packed, spaced), 0.0);
    ASSERT_EQ(packed.size(), 1u);
    EXPECT_EQ(anchors(packed[0]).back(), DPoint(1, 1));
    // A zero radius is a straight line; equal end points draw nothing.
    EXPECT_EQ(parsed("M0 0A0 5 0 0 1 4 4")[0].segments.size(), 1u);
    EXPECT_TRUE(parsed("M2 2A5 5 0 0 1 2 2").empty());
}

TEST(PathData, MalformedDataNamesOffsetAndExpectation) {
    struct Case {
        char const* data;
        std::size_t offset;
        char const* expected;
    };
    Case const cases[] = {
        {"L0 0", 0, "a moveto command (M or m)"},
        {"M0 0 L1 x", 8, "a number"},
        {"M0 0 X", 5, "a path command"},
        {"M0 0 L1", 7, "a number"},
        {"M0 0 L1 1,", 10, "a number"},
        {"M0 0 A1 1 0 2 0 3 3", 12, "an arc flag (0 or 1)"},
        {"M0 0 L1e 2", 8, "the digits of an exponent"},
        {"M0 0 L1e999 0", 6, "a number within the range of double precision"},
        {"M0 0 L- 2", 6, "a number"},
        {"M0 0 L1 1 Z 3", 12, "a path command"},
    };
    for (Case const& c : cases) {
        PathDataResult const result = parsePathData(c.data);
        ASSERT_FALSE(result.ok()) << c.data;
        EXPECT_EQ(result.error->offset, c.offset) << c.data;
        EXPECT_EQ(result.error->expected, c.expected) << c.data;
    }
    EXPECT_EQ(parsePathData("M0 0 L1").error->message(),
              "at offset 7: expected a number, found the end of the data");
    EXPECT_EQ(parsePathData("M0 0 L\x01").error->found, "byte 0x01");
    // Tiny exponents underflow to zero rather than fail.
    EXPECT_TRUE(parsePathData("M0 0L1e-400 1").ok());
}

TEST(PathData, WrittenDataReadsBackToTheSameCurves) {
    std::string const source =
        "M10 20C15 5 25 5 30 20S45 35 50 20Q60 0 70 20T90 20A15 10 30 1 1 60 60L40 70H20V50Z"
        "m100 0l10-5 3 7 -0.25 1e-3 a4 4 0 0 0 5 5";
    std::vector<CubicChain> const chains = parsed(source);
    std::string const written = writePathData(chains);
    // Shortest round-trip numbers give back the very same doubles.
    std::vector<CubicChain> const reread = parsed(written);
    EXPECT_EQ(sampledDistance(chains, reread), 0.0) << written;
    // Rounded numbers stay within half a unit of the last decimal.
    std::vector<CubicChain> const rounded = parsed(writePathData(chains, NumberFormat{3}));
    EXPECT_LT(sampledDistance(chains, rounded), 0.0005 * std::sqrt(2.0) + 1e-12);
    // The writer keeps to M, L, C and Z, drops the closing line that Z draws, and needs no space before '-'.
    EXPECT_EQ(written.find_first_not_of("MLCZ0123456789.e- "), std::string::npos);
    EXPECT_EQ(writePathData(parsed("M0 0L10 0L10-10Z")), "M0 0L10 0 10-10Z");
    EXPECT_EQ(writePathData(parsed("M0 0L-0.5 0")), "M0 0L-0.5 0");
    EXPECT_EQ(writePathData(CubicChain{{-0.0, 1}, {{DPoint(-0.0001, 1), DPoint(2, 2), DPoint(2, 2)}}, false},
                            NumberFormat{2}),
              "M0 1C0 1 2 2 2 2");
}
