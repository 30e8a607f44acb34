#include <gtest/gtest.h>

#include "EditingHelpers.h"
#include "simplepath/path/SimplePathDPointVertex.h"

using namespace editing;

namespace {

TEST(AdoptTriple, TakesTheVerticesAsTheyStandAndRefusesWhatWouldHaveTwoOwners) {
    SimplePath path = wiggly(3);
    SimplePathVertexTriple const made(new SimplePathDPointVertex(DPoint(1, 2)),
                                      new SimplePathDPointVertex(DPoint(3, 4)),
                                      new SimplePathDPointVertex(DPoint(5, 6)), Mode::Symmetric);
    SimplePathVertexTriple const held = path.getTripleList()[1];
    EXPECT_EQ(SimplePath::Failure, path.adoptTriple(made, 4));
    for (SimplePathVertex* anchor : {held.anchor, static_cast<SimplePathVertex*>(nullptr), made.first}) {
        EXPECT_EQ(SimplePath::Failure,
                  path.adoptTriple(SimplePathVertexTriple(made.first, anchor, made.last, Mode::Cusp), 0));
    }
    ASSERT_EQ(3, path.numTriples());

    ASSERT_EQ(SimplePath::Success, path.adoptTriple(made, -5)); // the front
    EXPECT_EQ(made, path.getTripleList()[0]);
    EXPECT_EQ(DPoint(3, 4), path.getTripleList()[0].anchor->getLocation());
    EXPECT_EQ(SimplePath::Failure, path.adoptTriple(made, 2)); // already held
    EXPECT_EQ(4, path.numTriples());
}

} // namespace
