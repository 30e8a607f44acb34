#include "simplepath/interaction/SimplePathMultipleVertexPickContext.h"

#include "simplepath/path/SimplePath.h"

#include <unordered_map>
#include <unordered_set>

SimplePathMultipleVertexPickContext::SimplePathMultipleVertexPickContext(PHashablePointer<SimplePath> path,
                                                                         SimplePathVertex* picked,
                                                                         DPoint const& pickPoint,
                                                                         Selection const& selection)
    : path_(path), picked_(picked), pickPoint_(pickPoint) {
    if (path_ != nullptr && picked_ != nullptr) {
        int const n = path_->numTriples();
        SimplePathVertexTriple triple;
        for (int i = 0; i < n && found_ == 0; ++i) {
            if (path_->getTriple(i, triple) == SimplePath::Success &&
                (triple.first == picked_ || triple.anchor == picked_ || triple.last == picked_)) {
                beforeVertex_ = triple.first;
                anchorVertex_ = triple.anchor;
                afterVertex_ = triple.last;
                startBefore_ = editBefore_ = beforeVertex_->getLocation();
                startAnchor_ = editAnchor_ = anchorVertex_->getLocation();
                startAfter_ = editAfter_ = afterVertex_->getLocation();
                found_ = 1;
            }
        }
    }
    // The selection path by path, in the order the paths first appear in it.
    std::vector<std::pair<PHashablePointer<SimplePath>, std::vector<SimplePathVertex*>>> byPath;
    std::unordered_map<SimplePath const*, std::size_t> slotOf;
    for (auto const& entry : selection) {
        SimplePathVertex* const vertex = entry.first;
        PHashablePointer<SimplePath> const& onPath = entry.second;
        if (onPath == nullptr || vertex == nullptr) {
            continue;
        }
        auto const slot = slotOf.emplace(onPath.getPointer(), byPath.size());
        if (slot.second) {
            byPath.emplace_back(onPath, std::vector<SimplePathVertex*>());
        }
        byPath[slot.first->second].second.push_back(vertex);
    }
    for (auto const& [onPath, vertices] : byPath) {
        addRunsOf(onPath, vertices);
    }
}

void SimplePathMultipleVertexPickContext::addRunsOf(PHashablePointer<SimplePath> const& path,
                                                    std::vector<SimplePathVertex*> const& selected) {
    SimplePathTripleList const& triples = path->getTripleList();
    int const n = triples.length();
    bool const closed = path->isClosedSimplePath() != 0;
    std::unordered_set<SimplePathVertex const*> const chosen(selected.begin(), selected.end());
    std::vector<char> moves(static_cast<std::size_t>(n), 0);
    int count = 0;
    for (int i = 0; i < n; ++i) {
        SimplePathVertexTriple const& t = triples[i];
        moves[i] = chosen.count(t.first) + chosen.count(t.anchor) + chosen.count(t.last) > 0;
        count += moves[i];
    }
    if (count == 0) {
        return;
    }
    auto moved = [&](int i) {
        SimplePathVertexTriple const& t = triples[i];
        modes_.push_back(t.mode);
        return ThreePoint(t.first->getLocation(), t.anchor->getLocation(), t.last->getLocation(), 0);
    };
    if (closed && count == n) {
        std::vector<ThreePoint> run;
        run.reserve(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i) {
            run.push_back(moved(i));
        }
        runs_.emplace_back(std::move(run), 1);
        return;
    }
    for (int start = 0; start < n; ++start) {
        int const before = start > 0 ? start - 1 : (closed ? n - 1 : -1);
        // A run starts at a moved triple whose predecessor stays; on a closed path a run through the end
        // is found where it starts, near the end, and carries on from triple 0.
        if (!moves[start] || (before >= 0 && moves[before])) {
            continue;
        }
        std::vector<ThreePoint> run;
        if (before >= 0) {
            SimplePathVertexTriple const& t = triples[before];
            modes_.push_back(t.mode);
            DPoint const anchor = t.anchor->getLocation();
            run.emplace_back(anchor, anchor, t.last->getLocation(), 1);
        }
        int end = start;
        run.push_back(moved(end));
        for (;;) {
            int const next = end + 1 < n ? end + 1 : (closed ? 0 : -1);
            if (next < 0 || !moves[next]) {
                break;
            }
            end = next;
            run.push_back(moved(end));
        }
        int const after = end + 1 < n ? end + 1 : (closed ? 0 : -1);
        if (after >= 0) {
            SimplePathVertexTriple const& t = triples[after];
            modes_.push_back(t.mode);
            DPoint const anchor = t.anchor->getLocation();
            run.emplace_back(t.first->getLocation(), anchor, anchor, 1);
        }
        runs_.emplace_back(std::move(run), 0);
    }
}

void SimplePathMultipleVertexPickContext::move(DPoint const& p) {
    if (found_ != 0) {
        offset(snapKit_.dragging(p) - pickPoint_);
    }
}

void SimplePathMultipleVertexPickContext::offset(DVector const& d) {
    if (found_ == 0) {
        return;
    }
    editBefore_ = startBefore_ + d;
    editAnchor_ = startAnchor_ + d;
    editAfter_ = startAfter_ + d;
}

int SimplePathMultipleVertexPickContext::createSnapKit() {
    if (path_ == nullptr || picked_ == nullptr) {
        return 0;
    }
    int const n = path_->numTriples();
    SimplePathVertexTriple triple;
    for (int i = 0; i < n; ++i) {
        if (path_->getTriple(i, triple) == SimplePath::Success && triple.anchor == picked_) {
            snapKit_ = SnapKit(triple.anchor->getLocation(), SnapKit::AngleSnap);
            return 1;
        }
    }
    return 0;
}

SimplePathVertexPickAction SimplePathMultipleVertexPickContext::commit() {
    // Reported as Cusp on both sides: a selection moves triples whole and never sets a mode.
    return SimplePathVertexPickAction(
        SimplePathVertexTriple(beforeVertex_, anchorVertex_, afterVertex_, SimplePathVertexTriple::Cusp),
        SimplePathLocationTriple(editBefore_, editAnchor_, editAfter_, SimplePathVertexTriple::Cusp));
}

void SimplePathMultipleVertexPickContext::xorDraw(SimplePathDrawer& drawer) {
    if (found_ == 0) {
        return;
    }
    DVector const delta = editAnchor_ - startAnchor_;
    // The modes of each run lie one to one with its entries, so the run's share of the modes is passed
    // as it stands: nothing is copied or allocated per redraw.
    VertexTripleMode* modes = modes_.data();
    for (auto const& [points, closedRun] : runs_) {
        VertexTripleMode* const runModes = modes;
        modes += points.size();
        SimplePathDrawer::CurveRep* const rep = drawer.makeCurveRep();
        if (rep == nullptr) {
            continue;
        }
        for (ThreePoint const& p : points) {
            if (p.fixed != 0) {
                rep->addTriple(p.before, p.anchor, p.after);
            } else {
                rep->addTriple(p.before + delta, p.anchor + delta, p.after + delta);
            }
        }
        if (closedRun != 0) {
            rep->setClosed();
        } else {
            rep->setOpen();
        }
        // Curve first, then vertices: the reverse of the single context's permanent drawing.
        drawer.drawCurve(rep);
        drawer.drawCurveVertices(rep, runModes, 1, 0);
        delete rep;
    }
}
