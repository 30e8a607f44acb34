#pragma once

#include "simplepath/interaction/SimplePathDrawer.h"

#include <array>
#include <cstdio>
#include <string>
#include <vector>

// A drawer and curve rep that record every call with its arguments, for tests that check what the library
// draws and in which order. Every rep counts itself while alive, so a leaked rep or one deleted twice
// shows in liveReps() (and a double delete is reported by the sanitizer build).
namespace recording {

using Mode = SimplePathVertexTriple::VertexTripleMode;
using Triple = std::array<DPoint, 3>;

inline std::string text(DPoint const& p) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "(%.17g %.17g)", p.x, p.y);
    return buffer;
}

inline int& liveReps() {
    static int count = 0;
    return count;
}

class Rep : public SimplePathDrawer::CurveRep {
  public:
    Rep(std::vector<std::string>* log, int id) : log_(log), id_(id) { ++liveReps(); }
    ~Rep() override {
        --liveReps();
        say("delete");
    }
    char const* getType() const override { return "Rep"; }
    void addTriple(DPoint const& before, DPoint const& anchor, DPoint const& after) override {
        triples.push_back({before, anchor, after});
        say("add " + text(before) + " " + text(anchor) + " " + text(after));
    }
    void popBackTriple() override {
        if (!triples.empty()) {
            triples.pop_back();
        }
        say("pop");
    }
    void setOpen() override {
        closed = 0;
        say("open");
    }
    void setClosed() override {
        closed = 1;
        say("closed");
    }

    std::vector<Triple> triples;
    int closed = -1; // -1 until setOpen or setClosed is called
    int id() const { return id_; }

  private:
    void say(std::string const& what) {
        if (log_ != nullptr) {
            log_->push_back("rep" + std::to_string(id_) + " " + what);
        }
    }
    std::vector<std::string>* log_;
    int id_;
};

// One drawing call with a snapshot of the rep it was given.
struct Call {
    std::string what;
    int rep = -1;
    std::vector<Triple> triples;
    int closed = -1;
    Mode const* modes = nullptr;
    std::vector<Mode> modeValues; // modes[0 .. modeCount-1], as many as the drawer was told to read
    int first = 0;
    int second = 0;
    Triple points{};
    bool wrapped = false; // the rep was a wrapper around a recording rep
};

class Drawer : public SimplePathDrawer {
  public:
    // How many modes drawCurveVertices may read: per triple of the rep (arrays), or only the first.
    bool modesPerTriple = false;
    bool refuseReps = false;
    std::vector<std::string> log;
    std::vector<Call> calls;

    CurveRep* makeCurveRep() override {
        log.push_back("make");
        if (refuseReps) {
            return nullptr;
        }
        return new Rep(&log, nextId_++);
    }
    void drawCurve(CurveRep* rep) override { record("drawCurve", rep); }
    void drawPermanentCurve(CurveRep* rep) override { record("drawPermanentCurve", rep); }
    void drawCurveVertices(CurveRep* rep, Mode* modes, int first, int second) override {
        Call& call = record("drawCurveVertices", rep);
        call.modes = modes;
        call.first = first;
        call.second = second;
        std::size_t const count = modesPerTriple ? call.triples.size() : 1;
        for (std::size_t i = 0; modes != nullptr && i < count; ++i) {
            call.modeValues.push_back(modes[i]);
        }
    }
    void drawEditedTriple(DPoint const& before, DPoint const& anchor, DPoint const& after,
                          Mode* mode) override {
        log.push_back("drawEditedTriple " + text(before) + " " + text(anchor) + " " + text(after));
        Call call;
        call.what = "drawEditedTriple";
        call.points = {before, anchor, after};
        call.modes = mode;
        if (mode != nullptr) {
            call.modeValues.push_back(*mode);
        }
        calls.push_back(call);
    }
    void drawHighlightedVertex(DPoint const& p) override { log.push_back("highlight " + text(p)); }

    // The names of the drawing calls, in order.
    std::vector<std::string> callNames() const {
        std::vector<std::string> names;
        for (Call const& c : calls) {
            names.push_back(c.what);
        }
        return names;
    }

  private:
    Call& record(char const* what, CurveRep* rep) {
        log.push_back(what);
        Call call;
        call.what = what;
        // A wrapped rep is recorded by what it wrapped: that is where the points arrived.
        CurveRep* target = rep != nullptr && rep->getFinalRep() != nullptr ? rep->getFinalRep() : rep;
        call.wrapped = target != rep;
        if (auto* r = dynamic_cast<Rep*>(target)) {
            call.rep = r->id();
            call.triples = r->triples;
            call.closed = r->closed;
        }
        calls.push_back(call);
        return calls.back();
    }
    int nextId_ = 0;
};

} // namespace recording
