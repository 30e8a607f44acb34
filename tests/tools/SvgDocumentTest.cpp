#include "toolkit/SvgDocument.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgTransform.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace sptool;

namespace {

SvgDocument read(std::string const& xml) {
    SvgReadResult result = readSvgDocument(xml);
    EXPECT_TRUE(result.ok()) << result.error;
    return result.document;
}

// Path data in the writer's exact form, for comparing curves.
std::string canonical(std::string const& data) {
    return writePathData(parsePathData(data).chains);
}

} // namespace

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
    EXPECT_EQ(writePathData(doc.chains[0]), canonical("M100 10L120 10"));
    EXPECT_EQ(doc.chains[2].start, DPoint(5, 5));
    // Rotations about a point and skews, which the drawing above does not use.
    EXPECT_LT(distance(parseTransformList("rotate(90 10 10)").transform * DPoint(20, 10), DPoint(10, 20)),
              1e-12);
    EXPECT_LT(distance(parseTransformList("skewX(45)").transform * DPoint(0, 2), DPoint(2, 2)), 1e-12);
}

TEST(SvgDocument, BasicShapesBecomeTheirOutlines) {
    struct Case {
        char const* element;
        char const* data;
    } const cases[] = {
        {R"(<rect x="1" y="2" width="10" height="4"/>)", "M1 2H11V6H1Z"},
        // Corner radii clamp to half the sides: a stadium.
        {R"(<rect width="10" height="4" rx="20"/>)",
         "M5 0H5A5 2 0 0 1 10 2V2A5 2 0 0 1 5 4H5A5 2 0 0 1 0 2V2A5 2 0 0 1 5 0Z"},
        {R"(<rect width="0" height="4"/><circle r="0"/><ellipse rx="2"/>)", ""},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(writePathData(read(std::string("<svg>") + c.element + "</svg>").chains), canonical(c.data));
    }
}

TEST(SvgDocument, ErrorsNameTheElementAndTheOffset) {
    auto error = [](std::string const& xml) { return readSvgDocument(xml).error; };
    EXPECT_EQ(error(R"x(<svg><polygon points="0 0 1 ,"/></svg>)x"),
              "<polygon> at byte 5: points at offset 7: expected a number, found the end of the data");
    EXPECT_EQ(error(R"x(<svg><path transform="rotate(1 2)" d="M0 0L1 1"/></svg>)x"),
              "<path> at byte 5: transform at offset 6: expected 1 or 3 numbers in rotate(), found '('");
    EXPECT_EQ(error(R"x(<svg><path d="M1e300 0L1 1" transform="scale(1e10)"/></svg>)x"),
              "<path> at byte 5: the transform carries coordinates beyond the range of doubles");
    EXPECT_EQ(error("<html/>"), "the root element is <html>, not <svg>");
    EXPECT_EQ(parseTransformList("scale(2").error, "at offset 7: expected ')', found the end of the data");
    // A viewBox that does not read is ignored, not an error.
    EXPECT_FALSE(read(R"x(<svg viewBox="0 0 -5 x"><path d="M0 0L1 1"/></svg>)x").frame.hasViewBox);
}
