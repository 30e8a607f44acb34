#include <gtest/gtest.h>

#include "RecordingDrawer.h"

namespace {

using namespace recording;

// Modes cycling Smooth, Cusp, Symmetric.
SimplePath makePath(int n, int closed) {
    return pathOf(n, closed, [](int i) { return static_cast<Mode>(i % 3); });
}

// Fills a rep from triples first..last and checks the points and modes; returns the rep's events.
std::string expectFilled(SimplePath const& path, int from, int to, int first, int last) {
    Rep rep;
    Mode* modes = nullptr;
    from < 0 && to < 0 ? path.initializeDrawerCurveRep(rep, &modes)
                       : path.initializeDrawerCurveRep(rep, from, to, &modes);
    EXPECT_EQ(rep.triples.size(), static_cast<std::size_t>(last - first + 1)) << from << ".." << to;
    for (int i = first; i <= last && i - first < static_cast<int>(rep.triples.size()); ++i) {
        EXPECT_EQ(rep.triples[i - first], tripleAt(i));
        EXPECT_EQ(modes[i - first], static_cast<Mode>(i % 3));
    }
    delete[] modes;
    return rep.events;
}

// The whole path sets its open or closed flag once, after the last triple, even when empty; a range
// clamps, never wraps, leaves the flag alone, and when empty allocates no modes.
TEST(DrawerCurveRep, WholePathAndRangesFillTheirTriples) {
    for (int closed : {0, 1}) {
        EXPECT_EQ(expectFilled(makePath(4, closed), -1, -1, 0, 3), closed ? "aaaac" : "aaaao");
        SimplePath empty;
        empty.setStrictClosed(closed);
        EXPECT_EQ(expectFilled(empty, -1, -1, 0, -1), closed ? "c" : "o");
    }
    SimplePath const path = makePath(5, 1);
    struct Case {
        int from, to, first, last;
    } const cases[] = {{-3, 2, 0, 2}, {3, 99, 3, 4}, {9, 9, 4, 4}};
    for (Case const c : cases) {
        EXPECT_EQ(expectFilled(path, c.from, c.to, c.first, c.last), std::string(c.last - c.first + 1u, 'a'));
    }
    Mode dummy = SimplePathVertexTriple::Cusp;
    Mode *modes = &dummy, *none = &dummy;
    Rep rep;
    path.initializeDrawerCurveRep(rep, 4, 1, &modes);
    SimplePath().initializeDrawerCurveRep(rep, 0, 3, &none);
    EXPECT_TRUE(modes == nullptr && none == nullptr && rep.events.empty());
}

} // namespace
