#pragma once

#include "simplepath/interaction/SimplePathDrawer.h"
#include "simplepath/path/SimplePath.h"
#include "support/PathHelpers.h"

#include <array>
#include <string>
#include <vector>

// Paths of known triples, and a drawer and curve rep that record every call, for tests of what is drawn and
// in which order. Reps count themselves while alive, so a leaked rep shows in liveReps() (a double delete in
// the sanitizer build).
namespace recording {

using Mode = SimplePathVertexTriple::VertexTripleMode;
using Triple = std::array<DPoint, 3>;

inline int& liveReps() {
    static int count = 0;
    return count;
}

class Rep : public SimplePathDrawer::CurveRep {
  public:
    Rep() { ++liveReps(); }
    ~Rep() override { --liveReps(); }
    char const* getType() const override { return "Rep"; }
    void addTriple(DPoint const& before, DPoint const& anchor, DPoint const& after) override {
        triples.push_back({before, anchor, after});
        events += 'a';
    }
    void popBackTriple() override { events += 'p'; }
    void setOpen() override { events += 'o', closed = 0; }
    void setClosed() override { events += 'c', closed = 1; }

    std::vector<Triple> triples;
    std::string events; // 'a'dded, 'p'opped, set 'o'pen or 'c'losed, in order
    int closed = -1;    // until setOpen or setClosed is called
};

// One drawing call with a snapshot of the (innermost) rep it was given.
struct Call {
    std::vector<Triple> triples;
    int closed = -1;
    std::vector<Mode> modeValues; // as many modes as the drawer was told to read
};

class Drawer : public SimplePathDrawer {
  public:
    bool modesPerTriple = false; // drawCurveVertices reads a mode per triple of the rep, else only one
    bool refuseReps = false;
    int made = 0;
    std::vector<Call> calls;

    CurveRep* makeCurveRep() override {
        ++made;
        return refuseReps ? nullptr : new Rep;
    }
    void drawCurve(CurveRep* rep) override { record(rep); }
    void drawPermanentCurve(CurveRep* rep) override { record(rep); }
    void drawCurveVertices(CurveRep* rep, Mode* modes, int, int) override {
        Call& call = record(rep);
        for (std::size_t i = 0; modes != nullptr && i < (modesPerTriple ? call.triples.size() : 1); ++i) {
            call.modeValues.push_back(modes[i]);
        }
    }
    void drawEditedTriple(DPoint const& before, DPoint const& anchor, DPoint const& after,
                          Mode* mode) override {
        calls.push_back({{{before, anchor, after}}, -1, {}});
        if (mode != nullptr) {
            calls.back().modeValues.push_back(*mode);
        }
    }

  private:
    Call& record(CurveRep* rep) {
        CurveRep* target = rep != nullptr && rep->getFinalRep() != nullptr ? rep->getFinalRep() : rep;
        calls.push_back({{}, -1, {}});
        if (auto* r = dynamic_cast<Rep*>(target)) {
            calls.back().triples = r->triples;
            calls.back().closed = r->closed;
        }
        return calls.back();
    }
};

// Triple i of path `p`: anchor (10 i, 100 p), handles 2 before and 3 after, so the lengths differ.
inline Triple tripleAt(int i, int p = 0) {
    return {DPoint(10.0 * i - 2, 100.0 * p), DPoint(10.0 * i, 100.0 * p), DPoint(10.0 * i + 3, 100.0 * p)};
}

template <class ModeOf> SimplePath pathOf(int n, int closed, ModeOf const& modeOf, int p = 0) {
    SimplePath path;
    for (int i = 0; i < n; ++i) {
        Triple const t = tripleAt(i, p);
        EXPECT_EQ(appendTriple(path, t[0], t[1], t[2], modeOf(i)), SimplePath::Success);
    }
    path.setStrictClosed(closed);
    return path;
}

inline SimplePathVertexTriple tripleOf(SimplePath const& path, int i) {
    SimplePathVertexTriple t;
    EXPECT_EQ(path.getTriple(i, t), SimplePath::Success);
    return t;
}

} // namespace recording
