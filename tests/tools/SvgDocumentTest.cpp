#include "toolkit/SvgDocument.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/SvgTransform.h"
#include "toolkit/SvgWriter.h"
#include "tools/ChainSampling.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <cmath>

using namespace sptool;
using sptool::testing::sampledDistance;

namespace {

SvgDocument read(std::string const& xml) {
    SvgReadResult result = readSvgDocument(xml);
    EXPECT_TRUE(result.ok()) << result.error;
    return result.document;
}

std::vector<CubicChain> chainsOf(std::string const& data) {
    return parsePathData(data).chains;
}

} // namespace

TEST(SvgTransform, FunctionsComposeRightToLeft) {
    auto apply = [](char const* text, DPoint p) {
        TransformResult const r = parseTransformList(text);
        EXPECT_TRUE(r.error.empty()) << text << ": " << r.error;
        return r.transform * p;
    };
    auto near = [](DPoint a, DPoint b) { return distance(a, b) < 1e-12; };
    EXPECT_TRUE(near(apply("translate(10) scale(2)", {1, 1}), {12, 2}));
    EXPECT_TRUE(near(apply("scale(2),translate(10)", {1, 1}), {22, 2}));
    EXPECT_TRUE(near(apply("matrix(1 2 3 4 5 6)", {1, 1}), {9, 12}));
    EXPECT_TRUE(near(apply("rotate(90 10 10)", {20, 10}), {10, 20}));
    EXPECT_TRUE(near(apply("rotate(-90)", {1, 0}), {0, -1}));
    EXPECT_TRUE(near(apply("skewX(45)", {0, 2}), {2, 2}));
    EXPECT_TRUE(near(apply("skewY(45)", {2, 0}), {2, 2}));
    EXPECT_TRUE(near(apply("  ", {3, 4}), {3, 4}));

    EXPECT_EQ(parseTransformList("rotate(1 2)").error,
              "at offset 6: expected 1 or 3 numbers in rotate(), found '('");
    EXPECT_EQ(parseTransformList("scale(2").error, "at offset 7: expected ')', found the end of the data");
    EXPECT_EQ(parseTransformList("shear(2)").error.substr(0, 42),
              "at offset 0: expected a transform function");
}

TEST(SvgDocument, ReadsPathsThroughGroupsAndTransforms) {
    SvgDocument const doc = read(R"x(<?xml version="1.0"?>
        <svg:svg xmlns:svg="http://www.w3.org/2000/svg" viewBox="0,0 , 200 100" width="20cm" height="10cm">
          <svg:defs><svg:path d="M0 0L1 1"/></svg:defs>
          <svg:g transform="translate(100 0)">
            <svg:g transform="scale(2)">
              <svg:path d="M0 0L10 0" transform="translate(0 5)"/>
            </svg:g>
            <svg:text><svg:path d="M9 9L1 1"/></svg:text>
          </svg:g>
          <svg:path d="M0 0h1M5 5v1"/>
        </svg:svg>)x");
    EXPECT_TRUE(doc.frame.hasViewBox);
    EXPECT_EQ(doc.frame.viewBox, (std::array<double, 4>{0, 0, 200, 100}));
    EXPECT_EQ(doc.frame.width, "20cm");
    ASSERT_EQ(doc.chains.size(), 3u);
    EXPECT_EQ(sampledDistance(doc.chains[0], chainsOf("M100 10L120 10")[0]), 0.0);
    EXPECT_EQ(doc.chains[2].start, DPoint(5, 5));
}

TEST(SvgDocument, ArcsUnderAScaleStayWithinToleranceAfterIt) {
    // A unit circle scaled by 1000: the pieces must be chosen for the scaled size.
    SvgDocument const doc = read(R"x(<svg xmlns="http://www.w3.org/2000/svg"><path transform="scale(1000)"
        d="M1 0A1 1 0 0 1 -1 0A1 1 0 0 1 1 0Z"/></svg>)x");
    ASSERT_EQ(doc.chains.size(), 1u);
    long double worst = 0.0L;
    DPoint p0 = doc.chains[0].start;
    for (CubicSegment const& s : doc.chains[0].segments) {
        for (int k = 0; k <= 32; ++k) {
            DPoint const p = cubicPoint(p0, s, k / 32.0);
            long double const radius =
                std::hypot(static_cast<long double>(p.x), static_cast<long double>(p.y));
            worst = std::max(worst, std::fabs(radius - 1000.0L));
        }
        p0 = s[2];
    }
    EXPECT_LE(worst, 1e-6L);
}

TEST(SvgDocument, BasicShapesBecomeTheirOutlines) {
    SvgDocument const doc = read(R"x(<svg xmlns="http://www.w3.org/2000/svg">
        <rect x="1" y="2" width="10" height="4"/>
        <rect width="10" height="4" rx="20"/>
        <circle cx="5" cy="5" r="2"/>
        <ellipse cx="0" cy="0" rx="3" ry="1"/>
        <line x1="0" y1="0" x2="3" y2="4"/>
        <polyline points="0,0 1,1 2,0"/>
        <polygon points="0 0 4 0 4 4"/>
        <rect width="0" height="4"/><circle r="0"/>
    </svg>)x");
    ASSERT_EQ(doc.chains.size(), 7u);
    EXPECT_EQ(sampledDistance(doc.chains[0], chainsOf("M1 2H11V6H1Z")[0]), 0.0);
    EXPECT_TRUE(doc.chains[1].closed); // corner radii clamp to half the sides: a stadium
    EXPECT_LT(sampledDistance(
                  doc.chains[1],
                  chainsOf("M5 0H5A5 2 0 0 1 10 2V2A5 2 0 0 1 5 4H5A5 2 0 0 1 0 2V2A5 2 0 0 1 5 0Z")[0]),
              1e-12);
    for (std::size_t i : {2u, 3u}) {
        EXPECT_TRUE(doc.chains[i].closed);
        EXPECT_GE(doc.chains[i].segments.size(), 4u);
    }
    EXPECT_FALSE(doc.chains[4].closed);
    EXPECT_EQ(doc.chains[5].segments.size(), 2u);
    EXPECT_TRUE(doc.chains[6].closed);
    EXPECT_EQ(doc.chains[6].segments.size(), 3u);
}

TEST(SvgDocument, ErrorsNameTheElementAndTheOffset) {
    auto error = [](std::string const& xml) { return readSvgDocument(xml).error; };
    EXPECT_EQ(error(R"x(<svg><g><path id="p1" d="M0 0 L1 x"/></g></svg>)x"),
              "<path id=\"p1\"> at byte 8: d at offset 8: expected a number, found 'x'");
    EXPECT_EQ(error(R"x(<svg><polygon points="0 0 1 ,"/></svg>)x"),
              "<polygon> at byte 5: points at offset 7: expected a number, found the end of the data");
    EXPECT_EQ(error(R"x(<svg><path transform="rotate(1 2)" d="M0 0L1 1"/></svg>)x"),
              "<path> at byte 5: transform at offset 6: expected 1 or 3 numbers in rotate(), found '('");
    EXPECT_EQ(error(R"x(<svg><path d="M1e300 0L1 1" transform="scale(1e10)"/></svg>)x"),
              "<path> at byte 5: the transform carries coordinates beyond the range of doubles");
    EXPECT_EQ(error("<html/>"), "the root element is <html>, not <svg>");
    EXPECT_EQ(error("<svg><path d='M0 0'></svg>").substr(0, 4), "XML ");
    EXPECT_EQ(error(""), "XML No document element found at byte 0");
    // A viewBox that does not read is ignored, not an error.
    SvgReadResult const loose = readSvgDocument(R"x(<svg viewBox="0 0 -5 x"><path d="M0 0L1 1"/></svg>)x");
    EXPECT_TRUE(loose.ok());
    EXPECT_FALSE(loose.document.frame.hasViewBox);
}

TEST(SvgWriter, DocumentReadsBackToTheSameCurves) {
    std::vector<CubicChain> const chains =
        chainsOf("M0 0C10 20 30 20 40 0ZM50 50Q60 70 70 50A10 10 0 0 1 90 50");
    SvgFrame frame;
    frame.hasViewBox = true;
    frame.viewBox = {-10, -20, 130, 110};
    frame.width = "13cm";
    frame.height = "11cm";
    SvgDocument const back = read(writeSvgDocument(frame, chains));
    EXPECT_EQ(sampledDistance(back.chains, chains), 0.0);
    EXPECT_EQ(back.frame.viewBox, frame.viewBox);
    EXPECT_EQ(back.frame.width, "13cm");
    // Without a frame of its own the document gets one around the drawing.
    SvgDocument const framed = read(writeSvgDocument(SvgFrame{}, chains));
    ASSERT_TRUE(framed.frame.hasViewBox);
    EXPECT_LT(framed.frame.viewBox[0], 0.0);
    EXPECT_GT(framed.frame.viewBox[0] + framed.frame.viewBox[2], 90.0);
}

TEST(SvgWriter, RenderTellsModesApartByShapeAndDrawsExtendedHandles) {
    RenderPath path;
    path.closed = true;
    path.vertices = {{{0, 0}, {0, 0}, {10, 0}, 1},
                     {{50, 0}, {40, 0}, {60, 0}, 0},
                     {{50, 50}, {60, 50}, {40, 50}, 2},
                     {{0, 50}, {0, 50}, {0, 50}, 1}};
    std::string const svg = writeRenderDrawing(SvgFrame{}, {path});
    pugi::xml_document doc;
    ASSERT_TRUE(doc.load_string(svg.c_str()));
    EXPECT_EQ(doc.select_nodes("//circle[@class='smooth']").size(), 1u);
    EXPECT_EQ(doc.select_nodes("//rect[@class='cusp']").size(), 2u);
    EXPECT_EQ(doc.select_nodes("//path[@class='symmetric']").size(), 1u);
    EXPECT_EQ(doc.select_nodes("//line").size(), 5u); // one extended handle, two, two, none
    // The outline is the chain the vertices describe.
    SvgDocument const back = read(svg);
    ASSERT_FALSE(back.chains.empty());
    EXPECT_LT(sampledDistance(back.chains[0], chainOfVertices(path)), 1e-9);
    EXPECT_EQ(chainOfVertices(path).segments.size(), 4u);
    EXPECT_EQ(chainOfVertices(path).segments[1],
              (CubicSegment{DPoint(60, 0), DPoint(60, 50), DPoint(50, 50)}));
}
