#include "simplepath/interaction/CompositeSimplePathTransform.h"
#include "simplepath/interaction/XFSimplePathTransform.h"
#include "simplepath/interaction/XYOffsetSimplePathTransform.h"
#include "simplepath/interaction/XYScaleSimplePathTransform.h"
#include "simplepath/interaction/detail/XFSimplePathInverseTransform.h"
#include "simplepath/interfaces/PBoxForm.h"
#include "simplepath/interfaces/Tolerance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Counts live instances; its mapping shows the order members run in.
int liveProbes = 0;
struct Probe : ArbTrans<DPoint> {
    explicit Probe(int id) : id_(id) { ++liveProbes; }
    ~Probe() override { --liveProbes; }
    DPoint transform(DPoint const& p) const override { return DPoint(p.x * 10 + id_, p.y); }
    DPoint reverseTransform(DPoint const& p) const override { return DPoint((p.x - id_) / 10, p.y); }
    int id_;
};

// A scale with either factor within 1e-10 of zero is not inverted at all, not even on the other axis;
// not-a-number is not "zero", and non-finite input comes out non-finite, without trapping.
TEST(PathTransform, InversesOfOffsetScaleAndEnvelope) {
    EXPECT_EQ(XYOffsetSimplePathTransform(3, -2).reverseTransform(DPoint(4, -1)), DPoint(1, 1));
    EXPECT_EQ(XYScaleSimplePathTransform(1e-10, 2).reverseTransform(DPoint(4, 4)), DPoint(4, 4));
    EXPECT_EQ(XYScaleSimplePathTransform(1e-8, 2).reverseTransform(DPoint(1e-8, 4)), DPoint(1, 2));
    EXPECT_TRUE(std::isnan(XYScaleSimplePathTransform(kNaN, 1).reverseTransform(DPoint(1, 1)).x));
    (void)XFSimplePathTransform(PBoxForm()).reverseTransform(DPoint(kNaN, HUGE_VAL));
    // The inverse envelope transform is the forward one with its directions swapped; forward and back is
    // the identity, and so is either direction without a box form. The box centre goes to the mean corner.
    PBoxForm const box(DPoint(0, 0), DPoint(10, 10), DPoint(0, 0), DPoint(20, 0), DPoint(0, 10),
                       DPoint(30, 20));
    XFSimplePathTransform const forward(box), none(static_cast<PBoxForm const*>(nullptr));
    XFSimplePathInverseTransform const inverse(box);
    DPoint const p(-3, 12), onEnvelope = forward.transform(p);
    EXPECT_EQ(inverse.reverseTransform(p), onEnvelope);
    EXPECT_EQ(inverse.transform(onEnvelope), forward.reverseTransform(onEnvelope));
    EXPECT_TRUE(isEqual(forward.reverseTransform(onEnvelope), p, 1e-8));
    EXPECT_TRUE(none.transform(p) == p && none.reverseTransform(p) == p);
    EXPECT_TRUE(isEqual(forward.transform(DPoint(5, 5)), DPoint(12.5, 7.5), 1e-12));
}

// Members run forward in order and backwards in reverse; copies share them and the last copy frees them.
TEST(PathTransform, CompositeOrderAndSharedOwnership) {
    int const before = liveProbes;
    {
        auto* original = new CompositeSimplePathTransform;
        original->append(*new Probe(2));
        original->append(*new Probe(3));
        original->prepend(*new Probe(1));
        CompositeSimplePathTransform copy(*original), assigned;
        assigned.append(*new Probe(9)); // freed by the assignment below
        assigned = copy;
        delete original;
        EXPECT_EQ(liveProbes, before + 3);
        EXPECT_EQ(assigned.transform(DPoint(0, 0)), DPoint(123, 0));
        EXPECT_EQ(assigned.reverseTransform(DPoint(123, 0)), DPoint(0, 0));
    }
    EXPECT_EQ(liveProbes, before);
}

} // namespace
