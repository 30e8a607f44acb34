// The edits that run as undoable operations, the history that undo walks back, and the record file that
// --record writes and replay reads.
#include "toolkit/OperationCommands.h"

#include "toolkit/EditHistory.h"
#include "toolkit/OperationResultText.h"
#include "toolkit/OutputFile.h"
#include "toolkit/RecordFile.h"
#include "toolkit/Targets.h"

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/interaction/SimplePathVertexPickContext.h"
#include "simplepath/interaction/SnapKit.h"
#include "simplepath/operations/SimplePathMetaOperation.h"
#include "simplepath/operations/SimplePathOperationFactory.h"

#include <algorithm>
#include <limits>
#include <list>

// The tool's design object for replay: the drawing's paths in their order, for the pick function.
class PathSeg {
  public:
    std::vector<SimplePath*> paths;
};

namespace sptool {

EditHistory& historyOf(Session& session) {
    if (!session.history) {
        session.history = std::make_shared<EditHistory>();
    }
    return *session.history;
}

namespace {

using Operation = std::unique_ptr<SimplePathOperation>;

std::vector<SimplePath*> orderOf(Session const& session) {
    std::vector<SimplePath*> order;
    for (auto const& p : session.paths) {
        order.push_back(p.get());
    }
    return order;
}

// Takes the path object out of the drawing or the spare pool; null when neither holds it.
std::unique_ptr<SimplePath> takePath(Session& session, SimplePath* path) {
    for (auto* pool : {&session.paths, &historyOf(session).spare}) {
        auto const it =
            std::find_if(pool->begin(), pool->end(), [&](auto const& p) { return p.get() == path; });
        if (it != pool->end()) {
            std::unique_ptr<SimplePath> taken = std::move(*it);
            pool->erase(it);
            return taken;
        }
    }
    return nullptr;
}

// Sets the drawing to the paths of `order`, in that order; the paths it leaves out go to the spare pool.
void setOrder(Session& session, std::vector<SimplePath*> const& order) {
    std::vector<std::unique_ptr<SimplePath>> next;
    for (SimplePath* path : order) {
        std::unique_ptr<SimplePath> taken = takePath(session, path);
        if (taken) {
            next.push_back(std::move(taken));
        }
    }
    auto& spare = historyOf(session).spare;
    for (auto& left : session.paths) {
        spare.push_back(std::move(left));
    }
    session.paths = std::move(next);
}

bool holds(std::list<PHashablePointer<SimplePath>> const& paths, SimplePath const* path) {
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

// The drawing after an edit: the paths it removed are gone, those it added stand where the first removed
// one stood (at the end when none was), and paths left without vertices are dropped, so that the indices
// of later commands and of the written drawing count only what is drawn. Paths an operation made are the
// host's from here on: the drawing takes ownership of them.
void applyChange(Session& session, SimplePathChangeInstruction const& change) {
    std::list<PHashablePointer<SimplePath>> removed;
    std::list<PHashablePointer<SimplePath>> added;
    change.simplePathsRemoved(removed);
    change.simplePathsAdded(added);
    std::vector<SimplePath*> order;
    std::size_t at = std::numeric_limits<std::size_t>::max();
    for (SimplePath* path : orderOf(session)) {
        if (holds(removed, path)) {
            at = std::min(at, order.size());
        } else {
            order.push_back(path);
        }
    }
    at = std::min(at, order.size());
    for (PHashablePointer<SimplePath> const& p : added) {
        if (std::find(order.begin(), order.end(), p.pointer) == order.end()) {
            order.insert(order.begin() + static_cast<std::ptrdiff_t>(at++), p.pointer);
            // A path the operation made is new to the drawing; one it refills is held already.
            std::unique_ptr<SimplePath> held = takePath(session, p.pointer);
            historyOf(session).spare.push_back(held ? std::move(held)
                                                    : std::unique_ptr<SimplePath>(p.pointer));
        }
    }
    order.erase(
        std::remove_if(order.begin(), order.end(), [](SimplePath* p) { return p->numTriples() == 0; }),
        order.end());
    setOrder(session, order);
}

// Executes an operation as one step of the history and keeps its record.
int perform(Session& session, Operation operation, std::string const& name) {
    if (!operation) {
        return session.fail(name + ": cannot make that edit here");
    }
    std::vector<SimplePath*> before = orderOf(session);
    std::list<PHashablePointer<SimplePath>> affected;
    SimplePathChangeInstruction change;
    SimplePathOperation::Result const result = operation->executeOperation(affected, change);
    if (result != SimplePathOperation::Success) {
        // A failed edit may have changed the path after its memento; the memento puts it back.
        operation->undoOperation();
        return session.fail(name + ": " + operationResultText(result));
    }
    applyChange(session, change);
    Record* info = nullptr;
    int const kind = operation->RetreiveSegIndependentInfo(info);
    EditHistory::Step step{name, std::move(operation), {}, std::move(before)};
    if (kind == 2 && info != nullptr) {
        step.records.emplace_back(info);
    }
    historyOf(session).steps.push_back(std::move(step));
    return kExitOk;
}

PHashablePointer<SimplePath> handleOf(Session& session, std::size_t index) {
    return PHashablePointer<SimplePath>(session.paths[index].get());
}

} // namespace

int runDragOperation(Session& session, std::size_t path, SimplePathPosition const& position,
                     DPoint const& to) {
    SimplePath const& original = *session.paths[path];
    SimplePath dragged(original);
    if (dragged.dragToPoint(position, to) != SimplePath::Success) {
        return session.fail("drag: cannot drag that point");
    }
    std::list<SimplePathLocationTriple> before;
    std::list<SimplePathLocationTriple> after;
    if (original.getLocationTripleList(before) != SimplePath::Success ||
        dragged.getLocationTripleList(after) != SimplePath::Success || before.size() != after.size()) {
        return session.fail("drag: cannot drag that point");
    }
    auto group = std::make_unique<SimplePathMetaOperation>();
    std::vector<SimplePathOperation*> changes;
    std::size_t index = 0;
    for (auto was = before.begin(), will = after.begin(); was != before.end(); ++was, ++will, ++index) {
        SimplePathVertexTriple triple;
        if (*was == *will || original.getTriple(static_cast<int>(index), triple) != SimplePath::Success) {
            continue;
        }
        changes.push_back(SimplePathOperationFactory::createChangeVertexOperation(handleOf(session, path),
                                                                                  triple, *will, false));
        group->addOperation(changes.back());
    }
    if (int const code = perform(session, std::move(group), "drag"); code != kExitOk) {
        return code;
    }
    // The record file holds one flat list of edits, so the drag is recorded as its changes, one record each.
    auto& records = historyOf(session).steps.back().records;
    records.clear();
    for (SimplePathOperation* change : changes) {
        Record* info = nullptr;
        if (change != nullptr && change->RetreiveSegIndependentInfo(info) == 2 && info != nullptr) {
            records.emplace_back(info);
        }
    }
    return kExitOk;
}

int runInsertOperation(Session& session, InsertStep const& step) {
    PositionTarget target;
    if (int const code = resolvePosition(session, step.at, target); code != kExitOk) {
        return code;
    }
    return perform(session,
                   Operation(SimplePathOperationFactory::createAddVertexAtPositionOperation(
                       handleOf(session, target.path), target.position, false)),
                   "insert");
}

int runDeleteOperation(Session& session, DeleteStep const& step) {
    VertexTarget target;
    if (int const code = resolveVertex(session, step.vertex, target); code != kExitOk) {
        return code;
    }
    return perform(session,
                   Operation(SimplePathOperationFactory::createDeleteVertexOperation(
                       handleOf(session, target.path), target.anchor, false)),
                   "delete");
}

int runModeOperation(Session& session, ModeStep const& step) {
    VertexTarget target;
    if (int const code = resolveVertex(session, step.vertex, target); code != kExitOk) {
        return code;
    }
    PHashablePointer<SimplePath> const path = handleOf(session, target.path);
    SimplePathOperation* operation = nullptr;
    switch (step.mode) {
    case VertexMode::Smooth:
        operation = SimplePathOperationFactory::createSetSmoothModeOperation(path, target.anchor, false);
        break;
    case VertexMode::Cusp:
        operation = SimplePathOperationFactory::createSetCuspModeOperation(path, target.anchor, false);
        break;
    case VertexMode::Symmetric:
        operation = SimplePathOperationFactory::createSetSymmetricModeOperation(path, target.anchor, false);
        break;
    case VertexMode::Straight:
        operation = SimplePathOperationFactory::createSetStraightModeOperation(path, target.anchor, false);
        break;
    }
    return perform(session, Operation(operation), "mode");
}

int runSplitOperation(Session& session, SplitStep const& step) {
    VertexTarget target;
    if (int const code = resolveVertex(session, step.vertex, target); code != kExitOk) {
        return code;
    }
    // An open path falls apart into two new paths; a closed one is opened in place. The end of an open
    // path has nothing to cut off.
    Operation operation(SimplePathOperationFactory::createSplitVertexOperation(handleOf(session, target.path),
                                                                               target.anchor));
    if (!operation) {
        return session.fail("split: cannot split at that vertex (an end of an open path)");
    }
    return perform(session, std::move(operation), "split");
}

namespace {

struct EndTarget {
    std::size_t path = 0;
    SimplePathVertex* anchor = nullptr;
};

SimplePathVertex* endAnchor(SimplePath const& path, bool atStart) {
    SimplePathVertexTriple triple;
    // Fails only for an empty path, whose end anchor is then null.
    (void)path.getTriple(atStart ? 0 : path.numTriples() - 1, triple);
    return triple.anchor;
}

int resolveEnd(Session& session, PathEnd const& end, EndTarget& out) {
    std::vector<std::size_t> paths;
    if (int const code = pathsToSearch(session, end.path, paths); code != kExitOk) {
        return code;
    }
    SimplePath const& path = *session.paths[paths.front()];
    if (path.isClosedSimplePath() != 0) {
        return session.fail("join: path " + std::to_string(end.path) + " is closed, so it has no ends");
    }
    out = {paths.front(), endAnchor(path, end.atStart)};
    return kExitOk;
}

// The end anchor of an open path nearest to `point`, strictly within `tolerance`.
int findEnd(Session& session, DPoint const& point, double tolerance, EndTarget& out) {
    if (int const code = checkFinite(session, point); code != kExitOk) {
        return code;
    }
    double best = std::numeric_limits<double>::infinity();
    for (std::size_t p = 0; p < session.paths.size(); ++p) {
        SimplePath const& path = *session.paths[p];
        if (path.isClosedSimplePath() != 0 || path.numTriples() == 0) {
            continue;
        }
        for (bool atStart : {true, false}) {
            SimplePathVertex* const anchor = endAnchor(path, atStart);
            double const d = distance(anchor->getLocation(), point);
            if (d < tolerance && d < best) {
                best = d;
                out = {p, anchor};
            }
        }
    }
    if (best == std::numeric_limits<double>::infinity()) {
        return nothingWithin(session, "end of an open path", tolerance, point);
    }
    return kExitOk;
}

} // namespace

int runJoinOperation(Session& session, JoinStep const& step) {
    EndTarget ends[2];
    for (std::size_t i = 0; i < 2; ++i) {
        int const code = step.ends ? resolveEnd(session, (*step.ends)[i], ends[i])
                                   : findEnd(session, (*step.near)[i], step.tolerance, ends[i]);
        if (code != kExitOk) {
            return code;
        }
    }
    if (ends[0].path == ends[1].path) {
        return session.fail("join: both ends are on path " + std::to_string(ends[0].path) +
                            "; join takes the ends of two different paths");
    }
    // The first path of a join needs two vertices; a lone vertex is joined on as the second instead.
    if (session.paths[ends[0].path]->numTriples() < 2) {
        std::swap(ends[0], ends[1]);
    }
    return perform(session,
                   Operation(SimplePathOperationFactory::createJoinVerticesOperation(
                       handleOf(session, ends[0].path), ends[0].anchor, ends[1].anchor,
                       handleOf(session, ends[1].path), false)),
                   "join");
}

int runMove(Session& session, MoveStep const& step) {
    if (int const code = checkFinite(session, step.to); code != kExitOk) {
        return code;
    }
    Target target;
    target.path = step.path;
    target.vertex = step.vertex;
    VertexTarget found;
    if (int const code = resolveVertex(session, target, found); code != kExitOk) {
        return code;
    }
    SimplePath& path = *session.paths[found.path];
    SimplePathVertexTriple triple;
    // The index was just resolved on this path, so reading its triple succeeds.
    (void)path.getTriple(found.index, triple);
    SimplePathVertex* const picked = step.handle == PreviewHandle::In    ? triple.first
                                     : step.handle == PreviewHandle::Out ? triple.last
                                                                         : triple.anchor;
    DPoint const start = picked->getLocation();
    // The drag runs as the pointer would: pressed on the vertex, moved to the target, released.
    SimplePathVertexPickContext context(&path, picked, start);
    DPoint to = step.to;
    if (step.snap == PreviewSnap::Angle) {
        context.createSnapKit();
    } else if (step.snap != PreviewSnap::None) {
        // An axis snap constrains the pointer itself, about where the drag started.
        to = SnapKit(start,
                     step.snap == PreviewSnap::Horizontal ? SnapKit::HorizontalSnap : SnapKit::VerticalSnap)
                 .dragging(to);
    }
    context.move(to);
    return perform(session,
                   Operation(SimplePathOperationFactory::createVertexPickOperation(
                       handleOf(session, found.path), context.commit(), false)),
                   "move");
}

namespace {

// Path-level edits leave no record, so a call that records refuses them rather than write a file that
// would replay to another drawing.
int refuseRecording(Session& session, char const* name) {
    if (!session.options.record.empty()) {
        return session.fail(std::string(name) + " cannot be recorded: path-level edits keep no record");
    }
    return kExitOk;
}

SimplePathPosition positionAt(int segment, double t) {
    SimplePathPosition position;
    position.setValues(segment, t);
    return position;
}

int singlePath(Session& session, int path, std::size_t& out) {
    std::vector<std::size_t> paths;
    if (int const code = pathsToSearch(session, path, paths); code != kExitOk) {
        return code;
    }
    out = paths.front();
    return kExitOk;
}

} // namespace

int runSlice(Session& session, SliceStep const& step) {
    if (int const code = refuseRecording(session, "slice"); code != kExitOk) {
        return code;
    }
    std::size_t paths[2] = {0, 0};
    SimplePathPosition cuts[2];
    for (int i = 0; i < 2; ++i) {
        SlicePoint const& at = step.at[i];
        if (int const code = singlePath(session, at.path, paths[i]); code != kExitOk) {
            return code;
        }
        int const segments = segmentCount(*session.paths[paths[i]]);
        if (at.segment < 0 || at.segment >= segments) {
            return session.fail("slice: segment " + std::to_string(at.segment) + " is out of range: path " +
                                std::to_string(at.path) + " has " + std::to_string(segments) + " segments");
        }
    }
    if (paths[0] == paths[1] && step.at[0].segment == step.at[1].segment && step.at[0].t == step.at[1].t) {
        return session.fail("slice: both positions are the same; a slice needs two places to cut between");
    }
    // The cut lands on anchors. A position inside a segment first gets a vertex of its own, the later one
    // on a path first, so that adding it leaves the index of the earlier one as it is.
    auto group = std::make_unique<SimplePathMetaOperation>();
    int order[2] = {0, 1};
    if (paths[0] == paths[1] && (step.at[0].segment < step.at[1].segment ||
                                 (step.at[0].segment == step.at[1].segment && step.at[0].t < step.at[1].t))) {
        std::swap(order[0], order[1]);
    }
    int anchors[2] = {0, 0};
    bool added[2] = {false, false};
    for (int i : order) {
        SlicePoint const& at = step.at[i];
        anchors[i] = at.t >= 1.0 ? at.segment + 1 : at.segment;
        if (at.t > 0.0 && at.t < 1.0) {
            group->addOperation(SimplePathOperationFactory::createAddVertexAtPositionOperation(
                handleOf(session, paths[i]), positionAt(at.segment, at.t), false));
            anchors[i] = at.segment + 1;
            added[i] = true;
        }
    }
    // A vertex added before the later cut on the same path moves that cut one place on.
    if (paths[0] == paths[1] && added[order[1]]) {
        anchors[order[0]] += 1;
    }
    for (int i = 0; i < 2; ++i) {
        int const count = session.paths[paths[i]]->numTriples() + (added[i] ? 1 : 0) +
                          (paths[0] == paths[1] && added[1 - i] ? 1 : 0);
        cuts[i] = positionAt(anchors[i] % count, 0.0);
    }
    group->addOperation(SimplePathOperationFactory::createSlicePathOperation(
        handleOf(session, paths[0]), cuts[0], handleOf(session, paths[1]), cuts[1]));
    return perform(session, std::move(group), "slice");
}

int runClose(Session& session, CloseStep const& step) {
    std::size_t path = 0;
    int code = refuseRecording(session, "close");
    if (code != kExitOk || (code = singlePath(session, step.path, path)) != kExitOk) {
        return code;
    }
    std::list<PHashablePointer<SimplePath>> paths{handleOf(session, path)};
    return perform(session, Operation(SimplePathOperationFactory::createClosePathsOperation(paths)), "close");
}

int runDeletePath(Session& session, DeletePathStep const& step) {
    std::size_t path = 0;
    int code = refuseRecording(session, "delete-path");
    if (code != kExitOk || (code = singlePath(session, step.path, path)) != kExitOk) {
        return code;
    }
    return perform(session,
                   Operation(SimplePathOperationFactory::createDeleteOperation(handleOf(session, path))),
                   "delete-path");
}

int runTransformOperation(Session& session, std::vector<std::size_t> const& paths, P2DTrans const& linear,
                          DPoint const& center, DVector const& shift, bool translateOnly) {
    if (int const code = refuseRecording(session, "transform"); code != kExitOk) {
        return code;
    }
    auto group = std::make_unique<SimplePathMetaOperation>();
    for (std::size_t p : paths) {
        if (!translateOnly) {
            group->addOperation(
                SimplePathOperationFactory::createTransformOperation(handleOf(session, p), linear, center));
        }
        if (shift != DVector()) {
            group->addOperation(
                SimplePathOperationFactory::createTranslateOperation(handleOf(session, p), shift));
        }
    }
    return perform(session, std::move(group), "transform");
}

int runUndo(Session& session, UndoStep const&) {
    EditHistory& history = historyOf(session);
    if (history.steps.empty()) {
        return session.fail("undo: there is no edit before it to take back");
    }
    EditHistory::Step& last = history.steps.back();
    last.operation->undoOperation();
    setOrder(session, last.orderBefore);
    history.steps.pop_back();
    return kExitOk;
}

namespace {

// Finds, within the tolerance of the location, the nearest anchor of any path, else the nearest handle,
// else a point of a path's curve (the path with a null vertex): a record names a vertex by where it stood,
// and a split by a place on the curve. The nearest wins, not the first within reach, because a finely
// drawn outline has many anchors closer together than the tolerance; ties go to the earlier path.
int pickInDrawing(PathSeg const* drawing, DPoint const& location, double tolerance,
                  PHashablePointer<SimplePath>& path, SimplePathVertex*& vertex, int& index) {
    if (drawing == nullptr) {
        return 0;
    }
    for (bool anchors : {true, false}) {
        double best = tolerance;
        SimplePath* bestPath = nullptr;
        SimplePathVertex* bestVertex = nullptr;
        for (SimplePath* p : drawing->paths) {
            for (SimplePathVertexTriple const& t : p->getTripleList()) {
                for (SimplePathVertex* v : {t.first, t.anchor, t.last}) {
                    if ((v == t.anchor) != anchors) {
                        continue;
                    }
                    double const d = distance(v->getLocation(), location);
                    if (d < best || (d == best && bestVertex == nullptr)) {
                        best = d;
                        bestPath = p;
                        bestVertex = v;
                    }
                }
            }
        }
        if (bestVertex != nullptr) {
            path = bestPath;
            vertex = bestVertex;
            return 1;
        }
    }
    for (SimplePath* p : drawing->paths) {
        SimplePathPosition at;
        if (p->numTriples() > 1 && p->pickPosition(location, tolerance, at) == SimplePath::Success) {
            path = p;
            vertex = nullptr;
            index = at.getIndex();
            return 1;
        }
    }
    return 0;
}

} // namespace

int runReplay(Session& session, ReplayStep const& step) {
    std::string error;
    std::string const text = readWholeFile(step.file, error);
    if (!error.empty()) {
        return session.fail("replay: " + error);
    }
    std::vector<std::unique_ptr<Record>> records = readRecordFile(text, error);
    if (!error.empty()) {
        return session.fail("replay: " + step.file + ": " + error);
    }
    // Each record is rebuilt against the drawing as the records before it left it, and made at once, so
    // that an edit of a vertex an earlier edit made finds it. The edits then become one group operation,
    // one step for undo.
    EditHistory& history = historyOf(session);
    std::size_t const first = history.steps.size();
    for (std::size_t i = 0; i < records.size(); ++i) {
        Record& record = *records[i];
        std::string const which =
            "replay: record " + std::to_string(i + 1) + " (" + recordTypeName(record.getType()) + ")";
        // The drawing as it stands now: earlier records may have added or removed paths.
        PathSeg drawing;
        drawing.paths = orderOf(session);
        record.pathSeg = &drawing;
        record.pickCallback = &pickInDrawing;
        Operation operation(SimplePathOperationFactory::createOperationFromSII(&record));
        record.pathSeg = nullptr;
        if (!operation) {
            return session.fail(which + " finds nothing at its locations in the drawing");
        }
        if (int const code = perform(session, std::move(operation), which); code != kExitOk) {
            return code;
        }
    }
    if (history.steps.size() > first) {
        auto group = std::make_unique<SimplePathMetaOperation>();
        EditHistory::Step step{"replay", nullptr, {}, history.steps[first].orderBefore};
        for (std::size_t i = first; i < history.steps.size(); ++i) {
            group->addOperation(history.steps[i].operation.release());
            for (auto& record : history.steps[i].records) {
                step.records.push_back(std::move(record));
            }
        }
        step.operation = std::move(group);
        history.steps.resize(first);
        history.steps.push_back(std::move(step));
    }
    return kExitOk;
}

int writeRecords(Session& session) {
    if (session.options.record.empty()) {
        return kExitOk;
    }
    std::vector<Record const*> records;
    if (session.history) {
        for (EditHistory::Step const& step : session.history->steps) {
            for (auto const& record : step.records) {
                records.push_back(record.get());
            }
        }
    }
    return session.emit(session.options.record, writeRecordFile(records));
}

} // namespace sptool
