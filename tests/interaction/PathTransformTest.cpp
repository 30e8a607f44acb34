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
#include <vector>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// Counts live instances and logs each call, to check order and ownership in composites.
struct Probe : ArbTrans<DPoint> {
    Probe(std::vector<int>& log, int id) : log_(log), id_(id) { ++live(); }
    ~Probe() override { --live(); }
    DPoint transform(DPoint const& p) const override {
        log_.push_back(id_);
        return DPoint(p.x * 10 + id_, p.y);
    }
    DPoint reverseTransform(DPoint const& p) const override {
        log_.push_back(-id_);
        return DPoint((p.x - id_) / 10, p.y);
    }
    static int& live() {
        static int count = 0;
        return count;
    }
    std::vector<int>& log_;
    int id_;
};

TEST(PathTransform, OffsetShiftsAndShiftsBack) {
    XYOffsetSimplePathTransform const t(3.0, -2.0);
    EXPECT_EQ(t.transform(DPoint(1, 1)), DPoint(4, -1));
    EXPECT_EQ(t.reverseTransform(DPoint(4, -1)), DPoint(1, 1));
}

TEST(PathTransform, ScaleIsNotInvertedAtAllWhenEitherFactorIsZero) {
    XYScaleSimplePathTransform const flat(2, 0);
    EXPECT_EQ(flat.transform(DPoint(4, 4)), DPoint(8, 0));
    EXPECT_EQ(flat.reverseTransform(DPoint(4, 4)), DPoint(4, 4)); // not even x is divided
    // 1e-10 counts as zero, on either axis; 1e-8 does not.
    EXPECT_EQ(XYScaleSimplePathTransform(1e-10, 2).reverseTransform(DPoint(4, 4)), DPoint(4, 4));
    EXPECT_EQ(XYScaleSimplePathTransform(2, -1e-9).reverseTransform(DPoint(4, 4)), DPoint(4, 4));
    EXPECT_EQ(XYScaleSimplePathTransform(1e-8, 2).reverseTransform(DPoint(1e-8, 4)), DPoint(1, 2));
    EXPECT_EQ(XYScaleSimplePathTransform(-2, 4).reverseTransform(DPoint(4, 4)), DPoint(-2, 1));
}

TEST(PathTransform, NonFiniteInputGivesNonFiniteOutputWithoutTrapping) {
    XYScaleSimplePathTransform const scale(kNaN, 1);
    EXPECT_TRUE(std::isnan(scale.transform(DPoint(1, 1)).x));
    EXPECT_TRUE(std::isnan(scale.reverseTransform(DPoint(1, 1)).x)); // NaN is not "zero"
    XYOffsetSimplePathTransform const offset(kInf, 0);
    EXPECT_TRUE(std::isnan(offset.reverseTransform(DPoint(kInf, 0)).x));
    PBoxForm const box;
    XFSimplePathTransform const xf(box);
    DPoint const q = xf.reverseTransform(DPoint(kNaN, kInf));
    (void)q; // whatever comes out, it must come out
}

TEST(PathTransform, CompositeCallsEachMemberOnceForwardInOrderAndReverseBackwards) {
    std::vector<int> log;
    CompositeSimplePathTransform composite;
    composite.append(*new Probe(log, 2));
    composite.append(*new Probe(log, 3));
    composite.prepend(*new Probe(log, 1));
    EXPECT_EQ(composite.transform(DPoint(0, 0)), DPoint(123, 0));
    EXPECT_EQ(log, (std::vector<int>{1, 2, 3}));
    log.clear();
    EXPECT_EQ(composite.reverseTransform(DPoint(123, 0)), DPoint(0, 0));
    EXPECT_EQ(log, (std::vector<int>{-3, -2, -1}));

    CompositeSimplePathTransform const empty;
    EXPECT_EQ(empty.transform(DPoint(5, 6)), DPoint(5, 6));
    EXPECT_EQ(empty.reverseTransform(DPoint(5, 6)), DPoint(5, 6));
}

TEST(PathTransform, CompositeCopiesShareMembersAndTheLastFreesThem) {
    std::vector<int> log;
    int const before = Probe::live();
    {
        auto* original = new CompositeSimplePathTransform;
        original->append(*new Probe(log, 1));
        CompositeSimplePathTransform copy(*original);
        CompositeSimplePathTransform assigned;
        assigned.append(*new Probe(log, 2)); // freed by the assignment below
        assigned = copy;
        EXPECT_EQ(Probe::live(), before + 1);
        EXPECT_EQ(&*copy.getMembers().front(), &*original->getMembers().front());
        delete original;
        EXPECT_EQ(Probe::live(), before + 1);
        EXPECT_EQ(copy.transform(DPoint(0, 0)), DPoint(1, 0));
        EXPECT_EQ(assigned.transform(DPoint(0, 0)), DPoint(1, 0));
    }
    EXPECT_EQ(Probe::live(), before);

    // The list constructor takes handles that already own their members.
    std::list<CompositeSimplePathTransform::Member> members;
    members.emplace_back(new XYOffsetSimplePathTransform(0, 1));
    members.emplace_back(new XYScaleSimplePathTransform(1, 3));
    CompositeSimplePathTransform const fromList(members);
    EXPECT_EQ(fromList.transform(DPoint(0, 0)), DPoint(0, 3));
}

TEST(PathTransform, EnvelopeTransformsMirrorEachOther) {
    PBoxForm const box(DPoint(0, 0), DPoint(10, 10), DPoint(0, 0), DPoint(20, 0), DPoint(0, 10),
                       DPoint(30, 20));
    XFSimplePathTransform const forward(box);
    XFSimplePathInverseTransform const inverse(box);
    for (DPoint const& p : {DPoint(0, 0), DPoint(5, 5), DPoint(10, 2.5), DPoint(-3, 12)}) {
        DPoint const onEnvelope = box.xform(p);
        EXPECT_EQ(forward.transform(p), onEnvelope);
        EXPECT_EQ(inverse.reverseTransform(p), onEnvelope);
        EXPECT_EQ(inverse.transform(onEnvelope), box.xforminv(onEnvelope));
        EXPECT_EQ(forward.reverseTransform(onEnvelope), box.xforminv(onEnvelope));
        EXPECT_TRUE(isEqual(forward.reverseTransform(onEnvelope), p, 1e-8));
    }
    // Known value, independent of the box form's code: the centre of the box goes to the mean corner.
    EXPECT_TRUE(isEqual(forward.transform(DPoint(5, 5)), DPoint(12.5, 7.5), 1e-12));
}

TEST(PathTransform, EnvelopeWithoutBoxFormIsTheIdentity) {
    XFSimplePathTransform const forward(static_cast<PBoxForm const*>(nullptr));
    XFSimplePathInverseTransform const inverse(static_cast<PBoxForm const*>(nullptr));
    for (DPoint const& p : {DPoint(1, 2), DPoint(-1e300, 7), DPoint(kNaN, 0)}) {
        for (DPoint const& q : {forward.transform(p), forward.reverseTransform(p), inverse.transform(p),
                                inverse.reverseTransform(p)}) {
            EXPECT_TRUE(q == p || (std::isnan(q.x) && std::isnan(p.x)));
        }
    }
}

} // namespace
