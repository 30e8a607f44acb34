#include "EditorSession.h"

#include "toolkit/ChainConversion.h"
#include "toolkit/OperationResultText.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/PathDataWriter.h"
#include "toolkit/SvgTransform.h"

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/interaction/SnapKit.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathPosition.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <list>

using sptool::chainOfPath;
using sptool::CubicChain;
using sptool::CubicSegment;

namespace {

bool finite(DPoint const& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

std::string pathDataOf(std::vector<SimplePath*> const& paths) {
    std::vector<CubicChain> chains;
    for (SimplePath const* path : paths) {
        if (path->numTriples() > 0) {
            chains.push_back(chainOfPath(*path));
        }
    }
    return sptool::writePathData(chains);
}

} // namespace

EditorSession::EditorSession() = default;

EditorSession::~EditorSession() {
    // Operations hold vertices and refer to paths: they go first, the paths last.
    clearGesture();
    undo_.clear();
    redo_.clear();
    elements_.clear();
    pool_.clear();
}

// ---- The drawing ----

std::string EditorSession::addElement(std::string const& pathData, std::string const& transformList) {
    sptool::PathDataResult parsed = sptool::parsePathData(pathData);
    if (!parsed.ok()) {
        return "path data " + parsed.error->message();
    }
    sptool::TransformResult placement = sptool::parseTransformList(transformList);
    if (!placement.error.empty()) {
        return "transform " + placement.error;
    }
    Element element;
    for (CubicChain const& chain : parsed.chains) {
        bool ok = finite(chain.start);
        for (CubicSegment const& s : chain.segments) {
            ok = ok && finite(s[0]) && finite(s[1]) && finite(s[2]);
        }
        if (!ok) {
            return "path data holds a number too large to draw";
        }
    }
    for (CubicChain const& chain : parsed.chains) {
        std::unique_ptr<SimplePath> path = sptool::pathOfChainInferringModes(chain);
        if (!path) {
            return "path data could not be converted";
        }
        element.paths.push_back(path.get());
        pool_.push_back(std::move(path));
    }
    element.placed = std::make_unique<PlacedTrans>(placement.transform, view_);
    elements_.push_back(std::move(element));
    return "";
}

int EditorSession::vertexCount() const {
    int n = 0;
    for (Element const& e : elements_) {
        for (SimplePath const* p : e.paths) {
            n += p->numTriples();
        }
    }
    return n;
}

std::string EditorSession::elementPathData(int element) const {
    if (element < 0 || element >= elementCount()) {
        return "";
    }
    return pathDataOf(elements_[std::size_t(element)].paths);
}

bool EditorSession::elementChanged(int element) const {
    if (element < 0 || element >= elementCount()) {
        return false;
    }
    return elements_[std::size_t(element)].edits != 0;
}

SimplePath* EditorSession::livePath(int element, int path) const {
    if (element < 0 || element >= elementCount()) {
        return nullptr;
    }
    int k = 0;
    for (SimplePath* p : elements_[std::size_t(element)].paths) {
        if (p->numTriples() > 0 && k++ == path) {
            return p;
        }
    }
    return nullptr;
}

// ---- The view ----

void EditorSession::setViewport(double width, double height) {
    if (width > 0 && height > 0 && std::isfinite(width) && std::isfinite(height)) {
        width_ = width;
        height_ = height;
    }
}

void EditorSession::fitView() {
    double minX = std::numeric_limits<double>::infinity();
    double minY = minX;
    double maxX = -minX;
    double maxY = -minX;
    IdTrans<DPoint> id;
    for (Element const& e : elements_) {
        for (SimplePath const* p : e.paths) {
            if (p->numTriples() == 0) {
                continue;
            }
            std::list<SimplePathLocationTriple> triples;
            (void)p->getLocationTripleList(triples); // never fails on a path with triples
            for (SimplePathLocationTriple const& t : triples) {
                for (DPoint const& q : {t.first, t.anchor, t.last}) {
                    DPoint const d = e.placed->toDocument(q);
                    minX = std::min(minX, d.x);
                    minY = std::min(minY, d.y);
                    maxX = std::max(maxX, d.x);
                    maxY = std::max(maxY, d.y);
                }
            }
        }
    }
    if (!(minX <= maxX)) {
        view_ = ViewTrans();
        return;
    }
    double const w = std::max(maxX - minX, 1e-9);
    double const h = std::max(maxY - minY, 1e-9);
    double const margin = 40.0;
    double s = std::min((width_ - 2 * margin) / w, (height_ - 2 * margin) / h);
    if (!(s > 0) || !std::isfinite(s)) {
        s = 1.0;
    }
    view_.scale = s;
    view_.x = (width_ - w * s) / 2 - minX * s;
    view_.y = (height_ - h * s) / 2 - minY * s;
}

void EditorSession::zoomAt(double factor, double sx, double sy) {
    double const s = view_.scale * factor;
    if (!(factor > 0) || !std::isfinite(s) || s < 1e-6 || s > 1e6) {
        return;
    }
    // The document point under the pointer stays under it.
    DPoint const d = view_.reverseTransform(DPoint(sx, sy));
    view_.scale = s;
    view_.x = sx - d.x * s;
    view_.y = sy - d.y * s;
}

void EditorSession::panBy(double dx, double dy) {
    if (std::isfinite(dx) && std::isfinite(dy)) {
        view_.x += dx;
        view_.y += dy;
    }
}

// ---- Drawing ----

void EditorSession::drawElement(int element, SimplePath const* ghost) {
    Element const& e = elements_[std::size_t(element)];
    drawer_.setMapping(e.placed.get());
    for (SimplePath const* p : e.paths) {
        if (p->numTriples() == 0) {
            continue;
        }
        if (p == ghost) {
            // The dragged path as it was: faint, under the pick context's own drawing.
            drawer_.setStyle(CanvasDrawer::Ghost);
            SimplePathDrawer::CurveRep* rep = drawer_.makeCurveRep();
            p->initializeDrawerCurveRep(*rep, nullptr);
            drawer_.drawCurve(rep);
            delete rep;
            continue;
        }
        p->permanentDrawCurve(drawer_);
        SimplePathDrawer::CurveRep* rep = drawer_.makeCurveRep();
        SimplePathVertexTriple::VertexTripleMode* modes = nullptr;
        p->initializeDrawerCurveRep(*rep, &modes);
        drawer_.setStyle(CanvasDrawer::Permanent);
        drawer_.setModesPerTriple(true);
        drawer_.drawCurveVertices(rep, modes, 1, 0);
        delete[] modes;
        delete rep;
    }
    drawer_.setMapping(nullptr);
}

void EditorSession::drawSelection() {
    for (Selected const& s : selection_) {
        drawer_.marker(1, elements_[std::size_t(s.element)].placed->transform(s.anchor->getLocation()));
    }
}

void EditorSession::renderAll() {
    drawer_.clear();
    for (int e = 0; e < elementCount(); ++e) {
        drawElement(e, nullptr);
    }
    drawSelection();
    if (sliceFirst_) {
        DPoint at;
        if (sliceFirst_->path->locatePosition(sliceFirst_->position, at) == SimplePath::Success) {
            drawer_.marker(2, elements_[std::size_t(sliceFirst_->element)].placed->transform(at));
        }
    }
    if (hoverShown_) {
        drawer_.marker(0, hoverScreen_);
    }
}

void EditorSession::renderBackground() {
    drawer_.clear();
    SimplePath const* ghost = gesture_ == Single ? gesturePath_ : nullptr;
    for (int e = 0; e < elementCount(); ++e) {
        drawElement(e, ghost);
    }
    if (gesture_ == Single && single_) {
        drawer_.setMapping(elements_[std::size_t(gestureElement_)].placed.get());
        drawer_.setStyle(CanvasDrawer::Kept);
        drawer_.setModesPerTriple(false);
        single_->permDraw(drawer_);
        drawer_.setMapping(nullptr);
    }
}

void EditorSession::renderDrag() {
    drawer_.clear();
    drawer_.setStyle(CanvasDrawer::RubberBand);
    if (gesture_ == Single && single_) {
        // The context maps through the element's placement itself.
        drawer_.setMapping(nullptr);
        drawer_.setModesPerTriple(false);
        single_->xorDraw(drawer_, 1);
    } else if (gesture_ == Multiple && multiple_) {
        drawer_.setMapping(elements_[std::size_t(gestureElement_)].placed.get());
        drawer_.setModesPerTriple(true);
        multiple_->xorDraw(drawer_);
        drawer_.setMapping(nullptr);
    } else if (gesture_ == Box) {
        drawer_.box(pressScreen_, boxEnd_);
    }
}

std::size_t EditorSession::recordsAddress() const {
    return reinterpret_cast<std::size_t>(drawer_.records().data());
}

std::size_t EditorSession::recordsLength() const {
    return drawer_.records().size();
}

// ---- Gestures ----

bool EditorSession::pickVertex(DPoint const& screen, int& element, SimplePath*& path,
                               SimplePathVertex*& vertex) const {
    // Topmost first: the last element drawn is the one the user sees over the others.
    for (int e = elementCount() - 1; e >= 0; --e) {
        Element const& el = elements_[std::size_t(e)];
        for (auto it = el.paths.rbegin(); it != el.paths.rend(); ++it) {
            SimplePathVertex* v = nullptr;
            if ((*it)->numTriples() > 0 &&
                (*it)->pretransformPickVertex(screen, kPickTolerance, *el.placed, v) == SimplePath::Success &&
                v != nullptr) {
                element = e;
                path = *it;
                vertex = v;
                return true;
            }
        }
    }
    return false;
}

bool EditorSession::isSelected(SimplePathVertex* anchor) const {
    return std::any_of(selection_.begin(), selection_.end(),
                       [&](Selected const& s) { return s.anchor == anchor; });
}

void EditorSession::toggleSelected(int element, SimplePath* path, SimplePathVertex* anchor) {
    // A selection stays within one element, whose paths share one placement on the canvas.
    if (!selection_.empty() && selection_.front().element != element) {
        selection_.clear();
    }
    auto it = std::find_if(selection_.begin(), selection_.end(),
                           [&](Selected const& s) { return s.anchor == anchor; });
    if (it != selection_.end()) {
        selection_.erase(it);
    } else {
        selection_.push_back({element, path, anchor});
    }
}

void EditorSession::clearGesture() {
    pendingToggle_ = false;
    single_.reset();
    multiple_.reset();
    gesture_ = None;
    gestureElement_ = -1;
    gesturePath_ = nullptr;
    snap_ = 0;
}

int EditorSession::pointerDown(double sx, double sy, bool shift) {
    clearGesture();
    hoverShown_ = false;
    message_.clear();
    DPoint const screen(sx, sy);
    if (!finite(screen)) {
        return None;
    }
    pressScreen_ = screen;
    boxEnd_ = screen;
    int element = -1;
    SimplePath* path = nullptr;
    SimplePathVertex* vertex = nullptr;
    if (!pickVertex(screen, element, path, vertex)) {
        if (!shift) {
            selection_.clear();
        }
        gesture_ = Box;
        return Box;
    }
    SimplePathVertex* first = nullptr;
    SimplePathVertex* anchor = nullptr;
    SimplePathVertex* last = nullptr;
    SimplePathVertexTriple::VertexTripleMode mode = SimplePathVertexTriple::Cusp;
    if (path->getVertexInfo(vertex, first, anchor, last, mode) != SimplePath::Success) {
        return None;
    }
    // With Shift the press may still become a drag (snapped); only a press without movement toggles.
    pendingToggle_ = shift && vertex == anchor;
    Element& el = elements_[std::size_t(element)];
    pressLocal_ = el.placed->reverseTransform(screen);
    gestureElement_ = element;
    gesturePath_ = path;
    if (vertex == anchor && isSelected(anchor) && selection_.size() > 1) {
        SimplePathMultipleVertexPickContext::Selection selection;
        for (Selected const& s : selection_) {
            selection.emplace_back(s.anchor, PHashablePointer<SimplePath>(s.path));
        }
        multiple_ =
            std::make_unique<SimplePathMultipleVertexPickContext>(path, vertex, pressLocal_, selection);
        gesture_ = Multiple;
        return Multiple;
    }
    if (vertex == anchor && !isSelected(anchor) && !shift) {
        selection_.clear();
        selection_.push_back({element, path, anchor});
    }
    single_ = std::make_unique<SimplePathVertexPickContext>(path, vertex, pressLocal_, el.placed.get());
    gesture_ = Single;
    return Single;
}

void EditorSession::pointerMove(double sx, double sy, int snap) {
    DPoint const screen(sx, sy);
    if (!finite(screen)) {
        return;
    }
    if (gesture_ == Box) {
        boxEnd_ = screen;
        return;
    }
    if (gesture_ != Single && gesture_ != Multiple) {
        return;
    }
    DPoint p = elements_[std::size_t(gestureElement_)].placed->reverseTransform(screen);
    if (snap == 1 && snap_ != 1) {
        if (single_) {
            single_->createSnapKit();
        } else {
            multiple_->createSnapKit();
        }
    } else if (snap != 1 && snap_ == 1) {
        if (single_) {
            single_->deleteSnapKit();
        } else {
            multiple_->deleteSnapKit();
        }
    }
    snap_ = snap;
    if (snap == 2) {
        // The axis the pointer has moved along most, through the point where the drag started.
        DVector const d = p - pressLocal_;
        SnapKit const axis(pressLocal_, std::fabs(d.x) >= std::fabs(d.y) ? SnapKit::HorizontalSnap
                                                                         : SnapKit::VerticalSnap);
        p = axis.dragging(p);
    }
    if (single_) {
        single_->move(p);
    } else {
        multiple_->move(p);
    }
}

void EditorSession::pointerUp(double sx, double sy, bool shift) {
    if (gesture_ == Box) {
        DPoint const a = pressScreen_;
        DPoint const b = finite(DPoint(sx, sy)) ? DPoint(sx, sy) : boxEnd_;
        DPoint const lo(std::min(a.x, b.x), std::min(a.y, b.y));
        DPoint const hi(std::max(a.x, b.x), std::max(a.y, b.y));
        if (!shift) {
            selection_.clear();
        }
        if (hi.x - lo.x >= 2 || hi.y - lo.y >= 2) {
            for (int e = 0; e < elementCount(); ++e) {
                Element const& el = elements_[std::size_t(e)];
                for (SimplePath* p : el.paths) {
                    // The curve test first: a path that does not reach into the box has no anchor there.
                    if (p->numTriples() == 0 ||
                        (p->numTriples() > 1 && !p->pretransformInBox(*el.placed, lo, hi))) {
                        continue;
                    }
                    SimplePathTripleList const& triples = p->getTripleList();
                    for (int i = 0; i < triples.length(); ++i) {
                        DPoint const q = el.placed->transform(triples[i].anchor->getLocation());
                        if (q.x > lo.x && q.x < hi.x && q.y > lo.y && q.y < hi.y &&
                            !isSelected(triples[i].anchor)) {
                            if (!selection_.empty() && selection_.front().element != e) {
                                continue;
                            }
                            selection_.push_back({e, p, triples[i].anchor});
                        }
                    }
                }
            }
        }
        clearGesture();
        return;
    }
    if (gesture_ == Single && single_) {
        SimplePathVertexPickAction const action = single_->commit();
        SimplePathLocationTriple const& to = action.getLocationTriple();
        SimplePathVertexTriple const& from = action.getVertexTriple();
        bool const moved =
            from.anchor != nullptr &&
            (to.first != from.first->getLocation() || to.anchor != from.anchor->getLocation() ||
             to.last != from.last->getLocation() || to.mode != from.mode);
        if (moved) {
            Group group;
            group.emplace_back(
                SimplePathOperationFactory::createVertexPickOperation(gesturePath_, action, false));
            run(std::move(group), gestureElement_);
        } else if (pendingToggle_) {
            SimplePathVertex* anchor = from.anchor;
            toggleSelected(gestureElement_, gesturePath_, anchor);
        }
    } else if (gesture_ == Multiple && multiple_) {
        SimplePathVertexPickAction const action = multiple_->commit();
        SimplePathVertexTriple const& from = action.getVertexTriple();
        if (from.anchor != nullptr) {
            DVector const d = action.getLocationTriple().anchor - from.anchor->getLocation();
            if (d.x != 0.0 || d.y != 0.0) {
                Group group;
                for (Selected const& s : selection_) {
                    group.emplace_back(SimplePathOperationFactory::createMoveSelectedVerticesOperation(
                        s.path, s.anchor, d, false));
                }
                run(std::move(group), gestureElement_);
            } else if (pendingToggle_) {
                toggleSelected(gestureElement_, gesturePath_, from.anchor);
            }
        }
    }
    clearGesture();
}

bool EditorSession::curveAt(DPoint const& screen, double tolerance, int& element, SimplePath*& path,
                            SimplePathPosition& position, DPoint& local) const {
    // The exact closest position in each path's own coordinates, judged by its distance on the canvas.
    // (The library's pretransformed search samples eleven points a segment, too coarse to follow a long
    // curve on a zoomed view; under the editor's views, which keep shapes, the closest point of the
    // path is the closest point on the canvas.)
    double best = tolerance * tolerance;
    bool found = false;
    for (int e = elementCount() - 1; e >= 0; --e) {
        Element const& el = elements_[std::size_t(e)];
        DPoint const target = el.placed->reverseTransform(screen);
        for (auto it = el.paths.rbegin(); it != el.paths.rend(); ++it) {
            SimplePathPosition at;
            DPoint point;
            if ((*it)->numTriples() < 2 || (*it)->findClosestPosition(target, at) != SimplePath::Success ||
                (*it)->locatePosition(at, point) != SimplePath::Success) {
                continue;
            }
            DPoint const shown = el.placed->transform(point);
            double const d2 =
                (shown.x - screen.x) * (shown.x - screen.x) + (shown.y - screen.y) * (shown.y - screen.y);
            if (d2 < best) {
                best = d2;
                element = e;
                path = *it;
                position = at;
                local = point;
                found = true;
            }
        }
    }
    return found;
}

std::string EditorSession::hover(double sx, double sy) {
    hoverShown_ = false;
    DPoint const screen(sx, sy);
    if (!finite(screen) || gesture_ != None) {
        return "";
    }
    int element = -1;
    SimplePath* path = nullptr;
    SimplePathPosition position;
    DPoint local;
    // Farther than 20 canvas pixels the pointer is not near any curve.
    if (!curveAt(screen, 20.0, element, path, position, local)) {
        return "";
    }
    PlacedTrans const& placed = *elements_[std::size_t(element)].placed;
    DPoint const doc = placed.toDocument(local);
    hoverScreen_ = placed.transform(local);
    hoverShown_ = true;
    char text[64];
    std::snprintf(text, sizeof text, "%.2f, %.2f", doc.x, doc.y);
    return text;
}

double EditorSession::hoverX() const {
    return hoverShown_ ? hoverScreen_.x : std::nan("");
}
double EditorSession::hoverY() const {
    return hoverShown_ ? hoverScreen_.y : std::nan("");
}

// ---- Edits ----

bool EditorSession::run(Group group, int element) {
    sliceFirst_.reset(); // its position would no longer name the same place
    if (group.empty() ||
        std::any_of(group.begin(), group.end(), [](auto const& op) { return op == nullptr; })) {
        message_ = "nothing to change there";
        return false;
    }
    // One gesture is one undoable step: several edits travel together in a meta operation.
    std::unique_ptr<SimplePathOperation> step;
    if (group.size() == 1) {
        step = std::move(group.front());
    } else {
        auto meta = std::make_unique<SimplePathMetaOperation>();
        for (std::unique_ptr<SimplePathOperation>& op : group) {
            meta->addOperation(op.release());
        }
        step = std::move(meta);
    }
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    SimplePathOperation::Result const result = step->executeOperation(affected, change);
    std::list<PHashablePointer<SimplePath>> added;
    change.simplePathsAdded(added);
    adoptAdded(added, element);
    if (result != SimplePathOperation::Success) {
        // Whatever part of the gesture was made is taken back: the drawing stays as it was.
        step->undoOperation();
        message_ = sptool::operationResultText(result);
        return false;
    }
    undo_.push_back(std::move(step));
    undoElements_.push_back(element);
    ++elements_[std::size_t(element)].edits;
    redo_.clear();
    redoElements_.clear();
    return true;
}

void EditorSession::adoptAdded(std::list<PHashablePointer<SimplePath>> const& added, int element) {
    for (PHashablePointer<SimplePath> const& p : added) {
        bool known = std::any_of(pool_.begin(), pool_.end(),
                                 [&](std::unique_ptr<SimplePath> const& q) { return q.get() == p.pointer; });
        if (!known && p.pointer != nullptr) {
            pool_.emplace_back(p.pointer);
            elements_[std::size_t(element)].paths.push_back(p.pointer);
        }
    }
}

bool EditorSession::insertAt(double sx, double sy) {
    DPoint const screen(sx, sy);
    int element = -1;
    SimplePath* path = nullptr;
    SimplePathPosition position;
    DPoint local;
    if (!finite(screen) || !curveAt(screen, kPickTolerance, element, path, position, local)) {
        return false;
    }
    Group group;
    group.emplace_back(SimplePathOperationFactory::createAddVertexAtPositionOperation(path, position, false));
    selection_.clear();
    return run(std::move(group), element);
}

int EditorSession::deleteSelected() {
    if (selection_.empty()) {
        message_ = "select a vertex first";
        return 0;
    }
    Group group;
    for (Selected const& s : selection_) {
        group.emplace_back(SimplePathOperationFactory::createDeleteVertexOperation(s.path, s.anchor, false));
    }
    int const element = selection_.front().element;
    selection_.clear();
    return run(std::move(group), element) ? 1 : 0;
}

int EditorSession::setModeSelected(int mode) {
    if (selection_.empty()) {
        message_ = "select a vertex first";
        return 0;
    }
    Group group;
    for (Selected const& s : selection_) {
        SimplePathOperation* op = nullptr;
        switch (mode) {
        case 0:
            op = SimplePathOperationFactory::createSetSmoothModeOperation(s.path, s.anchor, false);
            break;
        case 1:
            op = SimplePathOperationFactory::createSetCuspModeOperation(s.path, s.anchor, false);
            break;
        case 2:
            op = SimplePathOperationFactory::createSetSymmetricModeOperation(s.path, s.anchor, false);
            break;
        case 3:
            op = SimplePathOperationFactory::createSetStraightModeOperation(s.path, s.anchor, false);
            break;
        default:
            break;
        }
        group.emplace_back(op);
    }
    return run(std::move(group), selection_.front().element) ? 1 : 0;
}

bool EditorSession::splitSelected() {
    if (selection_.size() != 1) {
        message_ = "select one anchor to split at";
        return false;
    }
    Selected const s = selection_.front();
    SimplePathOperation* op = SimplePathOperationFactory::createSplitVertexOperation(s.path, s.anchor);
    if (op == nullptr) {
        message_ = "an open path cannot be split at its end";
        return false;
    }
    Group group;
    group.emplace_back(op);
    selection_.clear();
    return run(std::move(group), s.element);
}

bool EditorSession::joinSelected() {
    if (selection_.size() != 2 || selection_[0].path == selection_[1].path) {
        message_ = "select two end anchors of two open paths";
        return false;
    }
    Selected const a = selection_[0];
    Selected const b = selection_[1];
    Group group;
    group.emplace_back(
        SimplePathOperationFactory::createJoinVerticesOperation(a.path, a.anchor, b.anchor, b.path, false));
    selection_.clear();
    bool const ok = run(std::move(group), a.element);
    if (!ok) {
        message_ = "only the end anchors of two open paths can be joined";
    }
    return ok;
}

bool EditorSession::takeStep(std::vector<std::unique_ptr<SimplePathOperation>>& history,
                             std::vector<int>& elements, std::unique_ptr<SimplePathOperation>& step,
                             int& element) {
    clearGesture();
    if (history.empty()) {
        return false;
    }
    // Vertices an undo or redo takes out would dangle in the selection.
    selection_.clear();
    sliceFirst_.reset();
    step = std::move(history.back());
    element = elements.back();
    history.pop_back();
    elements.pop_back();
    return true;
}

bool EditorSession::undo() {
    std::unique_ptr<SimplePathOperation> step;
    int element = 0;
    if (!takeStep(undo_, undoElements_, step, element)) {
        return false;
    }
    step->undoOperation();
    redo_.push_back(std::move(step));
    redoElements_.push_back(element);
    --elements_[std::size_t(element)].edits;
    return true;
}

bool EditorSession::redo() {
    std::unique_ptr<SimplePathOperation> step;
    int element = 0;
    if (!takeStep(redo_, redoElements_, step, element)) {
        return false;
    }
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    SimplePathOperation::Result const result = step->executeOperation(affected, change);
    std::list<PHashablePointer<SimplePath>> added;
    change.simplePathsAdded(added);
    adoptAdded(added, element);
    if (result != SimplePathOperation::Success) {
        message_ = sptool::operationResultText(result);
    }
    undo_.push_back(std::move(step));
    undoElements_.push_back(element);
    ++elements_[std::size_t(element)].edits;
    return true;
}

bool EditorSession::closeSelected() {
    std::list<PHashablePointer<SimplePath>> paths;
    for (Selected const& s : selection_) {
        if (s.path->isClosedSimplePath() == 0 &&
            std::find(paths.begin(), paths.end(), PHashablePointer<SimplePath>(s.path)) == paths.end()) {
            paths.emplace_back(s.path);
        }
    }
    if (paths.empty()) {
        message_ = "select an anchor of an open path to close it";
        return false;
    }
    Group group;
    group.emplace_back(SimplePathOperationFactory::createClosePathsOperation(paths));
    int const element = selection_.front().element;
    return run(std::move(group), element);
}

bool EditorSession::slicePoint(double sx, double sy) {
    message_.clear();
    DPoint const screen(sx, sy);
    if (!finite(screen)) {
        return false;
    }
    int element = -1;
    SimplePath* path = nullptr;
    SimplePathPosition position;
    DPoint local;
    if (!curveAt(screen, kPickTolerance, element, path, position, local)) {
        message_ = "click on a curve to slice there";
        return false;
    }
    if (!sliceFirst_) {
        sliceFirst_ = std::make_unique<SliceEnd>(SliceEnd{element, path, position});
        message_ = "slice: now click the second point";
        return true;
    }
    SliceEnd const first = *sliceFirst_;
    sliceFirst_.reset();
    if (first.element != element) {
        message_ = "a slice stays within one path element";
        return false;
    }
    return slice(first, SliceEnd{element, path, position});
}

bool EditorSession::slice(SliceEnd a, SliceEnd b) {
    // The slice cuts at anchors, so a point inside a segment first gets a vertex of its own. Positions
    // are planned before anything runs: on one path the later point is added first, which leaves the
    // earlier one's segment index alone, and a point on the same segment before it is rescaled onto
    // the first half that the insertion leaves there.
    constexpr double kAtAnchor = 1e-6;
    auto onAnchor = [&](SliceEnd const& end, int& anchor) {
        int const n = end.path->numTriples();
        double const t = end.position.getParameter();
        int const i = end.position.getIndex();
        if (t <= kAtAnchor) {
            anchor = i;
            return true;
        }
        if (t >= 1.0 - kAtAnchor) {
            anchor = (i + 1) % n;
            return true;
        }
        return false;
    };
    auto later = [](SimplePathPosition const& p, SimplePathPosition const& q) {
        return p.getIndex() != q.getIndex() ? p.getIndex() > q.getIndex()
                                            : p.getParameter() > q.getParameter();
    };
    if (a.path == b.path && later(a.position, b.position)) {
        std::swap(a, b);
    }
    bool const samePath = a.path == b.path;
    int anchorA = 0;
    int anchorB = 0;
    bool const firstOnAnchor = onAnchor(a, anchorA);
    bool const secondOnAnchor = onAnchor(b, anchorB);
    Group group;
    SimplePathPosition firstAt = a.position;
    if (!secondOnAnchor) {
        group.emplace_back(
            SimplePathOperationFactory::createAddVertexAtPositionOperation(b.path, b.position, false));
        anchorB = b.position.getIndex() + 1;
        if (samePath && !firstOnAnchor && a.position.getIndex() == b.position.getIndex()) {
            // makePosition only stores its arguments.
            (void)a.path->makePosition(a.position.getIndex(),
                                       a.position.getParameter() / b.position.getParameter(), firstAt);
        }
    }
    if (!firstOnAnchor) {
        group.emplace_back(
            SimplePathOperationFactory::createAddVertexAtPositionOperation(a.path, firstAt, false));
        anchorA = a.position.getIndex() + 1;
        if (samePath && anchorB >= anchorA) {
            ++anchorB;
        }
    }
    SimplePathPosition at;
    SimplePathPosition bt;
    (void)a.path->makePosition(anchorA, 0.0, at);
    (void)b.path->makePosition(anchorB, 0.0, bt);
    group.emplace_back(SimplePathOperationFactory::createSlicePathOperation(a.path, at, b.path, bt));
    selection_.clear();
    return run(std::move(group), a.element);
}

bool EditorSession::selectAnchor(int element, int path, int triple, bool add) {
    SimplePath* p = livePath(element, path);
    if (p == nullptr || triple < 0 || triple >= p->numTriples()) {
        return false;
    }
    if (!add) {
        selection_.clear();
    }
    SimplePathVertex* anchor = p->getTripleList()[triple].anchor;
    if (!isSelected(anchor)) {
        toggleSelected(element, p, anchor);
    }
    return true;
}

std::vector<double> EditorSession::vertexScreen(int element, int path, int triple, int role) const {
    SimplePath const* p = livePath(element, path);
    if (p == nullptr || triple < 0 || triple >= p->numTriples() || role < 0 || role > 2) {
        return {};
    }
    SimplePathVertexTriple const& t = p->getTripleList()[triple];
    SimplePathVertex const* v = role == 0 ? t.first : role == 1 ? t.anchor : t.last;
    DPoint const q = elements_[std::size_t(element)].placed->transform(v->getLocation());
    return {q.x, q.y};
}

std::vector<double> EditorSession::curveScreen(int element, int path, int segment, double t) const {
    SimplePath const* p = livePath(element, path);
    SimplePathPosition position;
    DPoint at;
    if (p == nullptr || segment < 0 || segment >= p->numTriples() || !(t >= 0.0 && t <= 1.0) ||
        p->makePosition(segment, t, position) != SimplePath::Success ||
        p->locatePosition(position, at) != SimplePath::Success) {
        return {};
    }
    DPoint const q = elements_[std::size_t(element)].placed->transform(at);
    return {q.x, q.y};
}

std::string EditorSession::libraryDragAnswer(int element, int path, int triple, int role, double pressX,
                                             double pressY, double releaseX, double releaseY,
                                             bool angleSnap) const {
    SimplePath const* p = livePath(element, path);
    if (p == nullptr || triple < 0 || triple >= p->numTriples() || role < 0 || role > 2) {
        return "";
    }
    // A private copy of the element: the drag is made and applied there, by the library alone.
    std::vector<std::unique_ptr<SimplePath>> copies;
    std::vector<SimplePath*> paths;
    SimplePath* copy = nullptr;
    for (SimplePath const* q : elements_[std::size_t(element)].paths) {
        copies.push_back(std::make_unique<SimplePath>(*q));
        paths.push_back(copies.back().get());
        if (q == p) {
            copy = copies.back().get();
        }
    }
    SimplePathVertexTriple const& t = copy->getTripleList()[triple];
    SimplePathVertex* v = role == 0 ? t.first : role == 1 ? t.anchor : t.last;
    PlacedTrans const& placed = *elements_[std::size_t(element)].placed;
    SimplePathVertexPickContext context(copy, v, placed.reverseTransform(DPoint(pressX, pressY)));
    if (angleSnap) {
        context.createSnapKit();
    }
    context.move(placed.reverseTransform(DPoint(releaseX, releaseY)));
    std::unique_ptr<SimplePathOperation> op(
        SimplePathOperationFactory::createVertexPickOperation(copy, context.commit(), false));
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    if (!op || op->executeOperation(affected, change) != SimplePathOperation::Success) {
        return "";
    }
    return pathDataOf(paths);
}
