// The page's view of the editor session, through embind. Only plain values cross: numbers, booleans,
// strings, and the address and length of the drawer's record list, which the page reads in place.
#include "EditorSession.h"

#include <emscripten/bind.h>

using namespace emscripten;

namespace {

// A screen point as a two-number array, or null when the session found none.
val pointOrNull(std::vector<double> const& xy) {
    if (xy.size() != 2) {
        return val::null();
    }
    val out = val::array();
    out.call<void>("push", xy[0]);
    out.call<void>("push", xy[1]);
    return out;
}

val vertexScreen(EditorSession const& session, int element, int path, int triple, int role) {
    return pointOrNull(session.vertexScreen(element, path, triple, role));
}

val curveScreen(EditorSession const& session, int element, int path, int segment, double t) {
    return pointOrNull(session.curveScreen(element, path, segment, t));
}

double recordsAddress(EditorSession const& session) {
    return double(session.recordsAddress());
}
double recordsLength(EditorSession const& session) {
    return double(session.recordsLength());
}

} // namespace

EMSCRIPTEN_BINDINGS(simplepath_editor) {
    class_<EditorSession>("EditorSession")
        .constructor<>()
        .function("addElement", &EditorSession::addElement)
        .function("elementCount", &EditorSession::elementCount)
        .function("vertexCount", &EditorSession::vertexCount)
        .function("elementPathData", &EditorSession::elementPathData)
        .function("elementChanged", &EditorSession::elementChanged)
        .function("setViewport", &EditorSession::setViewport)
        .function("fitView", &EditorSession::fitView)
        .function("zoomAt", &EditorSession::zoomAt)
        .function("panBy", &EditorSession::panBy)
        .function("viewScale", &EditorSession::viewScale)
        .function("viewX", &EditorSession::viewX)
        .function("viewY", &EditorSession::viewY)
        .function("renderAll", &EditorSession::renderAll)
        .function("renderBackground", &EditorSession::renderBackground)
        .function("renderDrag", &EditorSession::renderDrag)
        .function("recordsAddress", &recordsAddress)
        .function("recordsLength", &recordsLength)
        .function("pointerDown", &EditorSession::pointerDown)
        .function("pointerMove", &EditorSession::pointerMove)
        .function("pointerUp", &EditorSession::pointerUp)
        .function("hover", &EditorSession::hover)
        .function("dragKind", &EditorSession::dragKind)
        .function("hoverX", &EditorSession::hoverX)
        .function("hoverY", &EditorSession::hoverY)
        .function("insertAt", &EditorSession::insertAt)
        .function("deleteSelected", &EditorSession::deleteSelected)
        .function("setModeSelected", &EditorSession::setModeSelected)
        .function("splitSelected", &EditorSession::splitSelected)
        .function("joinSelected", &EditorSession::joinSelected)
        .function("closeSelected", &EditorSession::closeSelected)
        .function("slicePoint", &EditorSession::slicePoint)
        .function("cancelSlice", &EditorSession::cancelSlice)
        .function("slicePending", &EditorSession::slicePending)
        .function("undo", &EditorSession::undo)
        .function("redo", &EditorSession::redo)
        .function("undoDepth", &EditorSession::undoDepth)
        .function("redoDepth", &EditorSession::redoDepth)
        .function("selectionSize", &EditorSession::selectionSize)
        .function("selectAnchor", &EditorSession::selectAnchor)
        .function("vertexScreen", &vertexScreen)
        .function("curveScreen", &curveScreen)
        .function("libraryDragAnswer", &EditorSession::libraryDragAnswer)
        .function("message", &EditorSession::message);
}
