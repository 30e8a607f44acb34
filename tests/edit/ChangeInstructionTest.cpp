#include <gtest/gtest.h>

#include <list>
#include <set>
#include <utility>
#include <vector>

#include "simplepath/edit/AbsorbSegmentTransform.h"
#include "simplepath/edit/ShiftPositionTransform.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathDPointVertex.h"
#include "support/PositionPairs.h"

namespace {

using support::CountedTransform;
using support::pairOn;
using Paths = std::list<PHashablePointer<SimplePath>>;

SimplePath a, b, c, d;

std::pair<SimplePath*, std::pair<int, double>> flat(support::PathPosition const& pair) {
    return {pair.first.pointer, {pair.second.getIndex(), pair.second.getParameter()}};
}

Paths translated(SimplePathChangeInstruction const& change, SimplePath* path) {
    Paths out{&d}; // emptied by translate
    change.translate(PHashablePointer<SimplePath>(path), out);
    return out;
}

} // namespace

TEST(ChangeInstruction, EmptyInstructionMovesNothing) {
    SimplePathChangeInstruction const change;
    EXPECT_EQ(flat(pairOn(&a, 2, 0.5)), flat(change.translate(pairOn(&a, 2, 0.5))));
    EXPECT_EQ(Paths{&a}, translated(change, &a));
    EXPECT_EQ(0u, change.numPositionTransforms());
}

TEST(ChangeInstruction, TransformsApplyInRecordingOrder) {
    SimplePathChangeInstruction shiftFirst;
    shiftFirst.insertPositionTransform(new ShiftPositionTransform(&a, &a, 1));
    shiftFirst.insertPositionTransform(new AbsorbSegmentTransform(&a, 1, 5));
    SimplePathChangeInstruction absorbFirst;
    absorbFirst.insertPositionTransform(new AbsorbSegmentTransform(&a, 1, 5));
    absorbFirst.insertPositionTransform(new ShiftPositionTransform(&a, &a, 1));

    EXPECT_EQ(flat(pairOn(&a, 5, 0.0)), flat(shiftFirst.translate(pairOn(&a, 0, 0.5))));
    EXPECT_EQ(flat(pairOn(&a, 1, 0.5)), flat(absorbFirst.translate(pairOn(&a, 0, 0.5))));

    // A longer chain where each step only matches the path the previous step produced.
    SimplePathChangeInstruction hops;
    hops.insertPositionTransform(new ShiftPositionTransform(&a, &b, 1));
    hops.insertPositionTransform(new ShiftPositionTransform(&b, &c, 1));
    hops.insertPositionTransform(new AbsorbSegmentTransform(&c, 2, 7));
    hops.insertPositionTransform(new ShiftPositionTransform(&c, &a, 1));
    hops.insertPositionTransform(new ShiftPositionTransform(&a, &d, 1));
    EXPECT_EQ(flat(pairOn(&d, 9, 0.0)), flat(hops.translate(pairOn(&a, 0, 0.5))));
    EXPECT_EQ(flat(pairOn(&d, 2, 0.5)), flat(hops.translate(pairOn(&c, 0, 0.5))));

    // The list form translates every pair in place, each through the whole chain.
    std::list<support::PathPosition> pairs{pairOn(&a, 0, 0.5), pairOn(&b, 0, 0.5), pairOn(&a, 1, 0.25)};
    shiftFirst.translate(pairs);
    std::vector<std::pair<SimplePath*, std::pair<int, double>>> got;
    for (auto const& pair : pairs) {
        got.push_back(flat(pair));
    }
    EXPECT_EQ((std::vector<std::pair<SimplePath*, std::pair<int, double>>>{
                  flat(pairOn(&a, 5, 0.0)), flat(pairOn(&b, 0, 0.5)), flat(pairOn(&a, 2, 0.25))}),
              got);
}

TEST(ChangeInstruction, PathsFollowTheirReplacements) {
    SimplePathChangeInstruction split; // an open path cut in two
    split.insertRemoved(PHashablePointer<SimplePath>(&a));
    split.insertAdded(PHashablePointer<SimplePath>(&c));
    split.insertAdded(PHashablePointer<SimplePath>(&b));
    split.insertRefMap(&a, &c);
    split.insertRefMap(&a, &b);
    EXPECT_EQ((Paths{&c, &b}), translated(split, &a));
    EXPECT_EQ(Paths{&b}, translated(split, &b));

    SimplePathChangeInstruction join; // two paths into one
    join.insertRemoved(PHashablePointer<SimplePath>(&a));
    join.insertRemoved(PHashablePointer<SimplePath>(&b));
    join.insertRefMap(&a, &c);
    join.insertRefMap(&b, &c);
    EXPECT_EQ(Paths{&c}, translated(join, &a));
    EXPECT_EQ(Paths{&c}, translated(join, &b));
    EXPECT_EQ(2u, join.getRefMap().size());

    SimplePathChangeInstruction removed;
    removed.insertRemoved(PHashablePointer<SimplePath>(&a));
    EXPECT_TRUE(translated(removed, &a).empty());
    EXPECT_EQ(Paths{&b}, translated(removed, &b));
}

TEST(ChangeInstruction, RefusesNullTransforms) {
    SimplePathChangeInstruction change;
    EXPECT_FALSE(change.insertPositionTransform(nullptr));
    EXPECT_EQ(0u, change.numPositionTransforms());
    EXPECT_EQ(flat(pairOn(&a, 1, 0.5)), flat(change.translate(pairOn(&a, 1, 0.5))));
}

TEST(ChangeInstruction, FreesEachTransformOnceAcrossCopies) {
    int deleted = 0;
    auto* twice = new CountedTransform(&deleted, 1);
    auto original = std::make_unique<SimplePathChangeInstruction>();
    EXPECT_TRUE(original->insertPositionTransform(twice));
    EXPECT_TRUE(original->insertPositionTransform(new CountedTransform(&deleted, 10)));
    EXPECT_TRUE(original->insertPositionTransform(twice)); // applied again, owned once
    EXPECT_EQ(3u, original->numPositionTransforms());

    auto copy = std::make_unique<SimplePathChangeInstruction>(*original);
    original.reset();
    EXPECT_EQ(0, deleted); // the copy still holds all three
    EXPECT_EQ(12, copy->translate(pairOn(&a, 0, 0.5)).second.getIndex());
    {
        SimplePathChangeInstruction const copyOfCopy(*copy);
        copy.reset();
        EXPECT_EQ(0, deleted);
    }
    EXPECT_EQ(2, deleted);
}

TEST(ChangeInstruction, RecordingIntoACopyLeavesTheOriginalAlone) {
    SimplePathChangeInstruction original;
    original.insertPositionTransform(new ShiftPositionTransform(&a, &b, 1));
    original.insertRefMap(&a, &b);
    SimplePathDPointVertex vertex;
    original.insertRemoved(&vertex);

    SimplePathChangeInstruction copy(original);
    copy.insertPositionTransform(new ShiftPositionTransform(&b, &c, 1));
    copy.insertRefMap(&b, &c);
    copy.insertRemoved(PHashablePointer<SimplePath>(&b));
    copy.insertAdded(&vertex);

    EXPECT_EQ(flat(pairOn(&b, 1, 0.5)), flat(original.translate(pairOn(&a, 0, 0.5))));
    EXPECT_EQ(flat(pairOn(&c, 2, 0.5)), flat(copy.translate(pairOn(&a, 0, 0.5))));
    EXPECT_EQ(Paths{&b}, translated(original, &b));
    EXPECT_EQ(Paths{&c}, translated(copy, &b));
    std::set<SimplePathVertex*> added;
    original.simplePathVerticesAdded(added);
    EXPECT_TRUE(added.empty());
    copy.simplePathVerticesRemoved(added);
    EXPECT_EQ(std::set<SimplePathVertex*>{&vertex}, added);
}
