// The preview command: what an interactive drag would draw, through the library's pick contexts and the
// SVG drawer.
#include "toolkit/Hooks.h"
#include "toolkit/SvgDrawer.h"
#include "toolkit/Targets.h"

#include "simplepath/interaction/SimplePathMultipleVertexPickContext.h"
#include "simplepath/interaction/SimplePathVertexPickContext.h"

#include <memory>

namespace sptool {

namespace {

// An axis snap constrains the pointer itself, about where the drag started; the contexts make only the
// angle snap of their own.
DPoint axisSnapped(PreviewSnap snap, DPoint const& origin, DPoint const& to, SimplePathDrawer& drawer) {
    if (snap != PreviewSnap::Horizontal && snap != PreviewSnap::Vertical) {
        return to;
    }
    drawer.drawHighlightedVertex(origin);
    SnapKit const kit(origin,
                      snap == PreviewSnap::Horizontal ? SnapKit::HorizontalSnap : SnapKit::VerticalSnap);
    return kit.dragging(to);
}

void previewOne(SimplePath& path, SimplePathVertexTriple const& triple, PreviewStep const& step,
                SvgDrawer& drawer) {
    SimplePathVertex* const picked = step.handle == PreviewHandle::In    ? triple.first
                                     : step.handle == PreviewHandle::Out ? triple.last
                                                                         : triple.anchor;
    DPoint const start = picked->getLocation();
    SimplePathVertexPickContext context(&path, picked, start);
    if (step.snap == PreviewSnap::Angle) {
        context.createSnapKit();
        drawer.drawHighlightedVertex(context.getSnapKit().getPO());
    }
    context.move(axisSnapped(step.snap, start, step.to, drawer));

    // The untouched part carries one mode for all its vertices: it marks none of them.
    drawer.setModes(SvgDrawer::Modes::Single);
    drawer.setStyle(SvgDrawer::Style::Kept);
    context.permDraw(drawer);
    drawer.setStyle(SvgDrawer::Style::Original);
    std::unique_ptr<SimplePathDrawer::CurveRep> const original(context.createOriginalCurveRep(drawer));
    if (original) {
        drawer.drawCurve(original.get());
    }
    drawer.setStyle(SvgDrawer::Style::RubberBand);
    context.xorDraw(drawer, 1);
}

void previewSelection(SimplePath& path, std::vector<SimplePathVertex*> const& anchors,
                      PreviewStep const& step, SvgDrawer& drawer) {
    SimplePathMultipleVertexPickContext::Selection selection;
    for (SimplePathVertex* anchor : anchors) {
        selection.emplace_back(anchor, &path);
    }
    DPoint const start = anchors.front()->getLocation();
    SimplePathMultipleVertexPickContext context(&path, anchors.front(), start, selection);
    if (step.snap == PreviewSnap::Angle && context.createSnapKit() != 0) {
        drawer.drawHighlightedVertex(context.getSnapKit().getPO());
    }
    context.move(axisSnapped(step.snap, start, step.to, drawer));
    // The selection's context draws only the runs; the path as it stands is shown beneath them.
    path.permanentDrawCurve(drawer);
    drawer.setModes(SvgDrawer::Modes::PerTriple);
    drawer.setStyle(SvgDrawer::Style::RubberBand);
    context.xorDraw(drawer);
}

} // namespace

int runPreview(Session& session, PreviewStep const& step) {
    if (int const code = checkFinite(session, step.to); code != kExitOk) {
        return code;
    }
    std::vector<SimplePathVertex*> anchors;
    SimplePathVertexTriple first;
    VertexTarget found;
    for (int vertex : step.vertices) {
        Target target;
        target.path = step.path;
        target.vertex = vertex;
        if (int const code = resolveVertex(session, target, found); code != kExitOk) {
            return code;
        }
        // The index was just resolved on this path, so reading its triple succeeds.
        if (anchors.empty()) {
            (void)session.paths[found.path]->getTriple(found.index, first);
        }
        anchors.push_back(found.anchor);
    }
    SimplePath& path = *session.paths[found.path];
    SvgDrawer drawer;
    if (anchors.size() == 1) {
        previewOne(path, first, step, drawer);
    } else {
        previewSelection(path, anchors, step, drawer);
    }
    return session.emit(step.output, drawer.document(session.frame));
}

} // namespace sptool
