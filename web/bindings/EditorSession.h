#pragma once

#include "CanvasDrawer.h"

#include "simplepath/interaction/SimplePathMultipleVertexPickContext.h"
#include "simplepath/interaction/SimplePathVertexPickContext.h"
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/P2DTrans.h"
#include "simplepath/operations/SimplePathOperation.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathPosition.h"

#include <memory>
#include <string>
#include <vector>

// The view: document coordinates to canvas pixels, a uniform zoom and a pan. The editor only ever talks to
// it as an ArbTrans, so a non-affine view (a fisheye, a perspective) would need no other change.
class ViewTrans : public ArbTrans<DPoint> {
  public:
    DPoint transform(DPoint const& p) const override { return DPoint(p.x * scale + x, p.y * scale + y); }
    DPoint reverseTransform(DPoint const& p) const override {
        return DPoint((p.x - x) / scale, (p.y - y) / scale);
    }
    double scale = 1.0;
    double x = 0.0;
    double y = 0.0;
};

// A path element's own coordinates to canvas pixels: the element's transform (with its ancestors'), then
// the view.
class PlacedTrans : public ArbTrans<DPoint> {
  public:
    PlacedTrans(P2DTrans const& placement, ArbTrans<DPoint> const& view)
        : placement_(placement), inverse_(placement.inverse()), view_(&view) {}
    DPoint transform(DPoint const& p) const override { return view_->transform(placement_ * p); }
    DPoint reverseTransform(DPoint const& p) const override { return inverse_ * view_->reverseTransform(p); }
    DPoint toDocument(DPoint const& p) const { return placement_ * p; }

  private:
    P2DTrans placement_;
    P2DTrans inverse_;
    ArbTrans<DPoint> const* view_;
};

// Everything the page edits: the paths of one opened drawing, the view, the selection, the gesture in
// progress and the undo stack. The page hands pointer positions in canvas pixels; every edit goes through
// the library's pick contexts and operations, and the page only draws what the drawer recorded.
class EditorSession {
  public:
    EditorSession();
    ~EditorSession();
    EditorSession(EditorSession const&) = delete;
    EditorSession& operator=(EditorSession const&) = delete;

    // ---- The drawing ----
    // Adds one path element from its path data and its transform list (the element's own last, its
    // ancestors' in front). Returns "" or what is wrong with the data; a failed element adds nothing.
    std::string addElement(std::string const& pathData, std::string const& transformList);
    int elementCount() const { return static_cast<int>(elements_.size()); }
    int vertexCount() const;
    // The element's path data as it stands now, and whether edits are in effect on it (an element whose
    // edits were all undone counts as unchanged, so that saving leaves its text exactly as it was read).
    std::string elementPathData(int element) const;
    bool elementChanged(int element) const;

    // ---- The view ----
    void setViewport(double width, double height);
    // Zooms and pans so that every path fits the viewport with a margin.
    void fitView();
    void zoomAt(double factor, double sx, double sy);
    void panBy(double dx, double dy);
    double viewScale() const { return view_.scale; }
    double viewX() const { return view_.x; }
    double viewY() const { return view_.y; }

    // ---- Drawing into the record list the page replays ----
    // The whole drawing at rest, with the selection and the hover point.
    void renderAll();
    // What stays put during the current drag (drawn once, when the drag starts).
    void renderBackground();
    // One frame of the current drag: the rubber band only.
    void renderDrag();
    // The record list of the last render, as an address into the module's memory and a length.
    std::size_t recordsAddress() const;
    std::size_t recordsLength() const;

    // ---- Gestures, in canvas pixels ----
    // Pointer down. A vertex or handle within the tolerance starts a drag (1); Shift toggles the anchor's
    // selection instead (3); on empty canvas a box selection starts (2).
    int pointerDown(double sx, double sy, bool shift);
    // Pointer moved while down. snap: 0 none, 1 15-degree steps, 2 the horizontal or vertical axis.
    void pointerMove(double sx, double sy, int snap);
    // Pointer up: commits the drag as an operation, or selects what the box encloses.
    void pointerUp(double sx, double sy, bool shift);
    // Pointer moved while up: the closest point of the curves. Returns "x, y" in document units, or "".
    std::string hover(double sx, double sy);
    int dragKind() const { return gesture_; }
    // Where the last hover found the closest point, in canvas pixels (NaN when none).
    double hoverX() const;
    double hoverY() const;

    // ---- Edits ----
    // Inserts a vertex where the pointer is on a segment; false when it is on none.
    bool insertAt(double sx, double sy);
    int deleteSelected();
    // 0 smooth, 1 cusp, 2 symmetric, 3 straight; applied to every selected anchor.
    int setModeSelected(int mode);
    // Cuts the path at the selected anchor.
    bool splitSelected();
    // Joins the two selected end anchors of two open paths of one element.
    bool joinSelected();
    // Closes the open paths that hold a selected anchor.
    bool closeSelected();
    // One click of a slice: the first marks a point on a curve, the second cuts from there to here
    // (through one path, or across two of one element) as one undoable step.
    bool slicePoint(double sx, double sy);
    void cancelSlice() { sliceFirst_.reset(); }
    bool slicePending() const { return sliceFirst_ != nullptr; }
    bool undo();
    bool redo();
    int undoDepth() const { return static_cast<int>(undo_.size()); }
    int redoDepth() const { return static_cast<int>(redo_.size()); }
    int selectionSize() const { return static_cast<int>(selection_.size()); }
    // Selects the anchor of triple `triple` of subpath `path` of an element (for scripts and tests).
    bool selectAnchor(int element, int path, int triple, bool add);
    // Canvas position of a vertex: role 0 incoming handle, 1 anchor, 2 outgoing handle.
    std::vector<double> vertexScreen(int element, int path, int triple, int role) const;
    // Canvas position of the curve point at parameter t of segment `segment`.
    std::vector<double> curveScreen(int element, int path, int segment, double t) const;
    // The element's path data after the library alone drags one vertex from the press to the release
    // point (canvas pixels), optionally with the angle snap: made on a copy, without the editor's gesture
    // code, so that the page's answer can be checked against it.
    std::string libraryDragAnswer(int element, int path, int triple, int role, double pressX, double pressY,
                                  double releaseX, double releaseY, bool angleSnap) const;
    std::string message() const { return message_; }

  private:
    struct Element {
        std::vector<SimplePath*> paths; // in drawing order; paths emptied by edits stay, drawn as nothing
        std::unique_ptr<PlacedTrans> placed;
        int edits = 0; // edits in effect: done and redone count up, undone count down
    };
    using Group = std::vector<std::unique_ptr<SimplePathOperation>>;
    // One point of a slice: the path element, the path and the position clicked on it.
    struct SliceEnd {
        int element;
        SimplePath* path;
        SimplePathPosition position;
    };
    bool slice(SliceEnd a, SliceEnd b);

    SimplePath* livePath(int element, int path) const;
    bool pickVertex(DPoint const& screen, int& element, SimplePath*& path, SimplePathVertex*& vertex) const;
    // The curve point nearest the pointer within `tolerance` canvas pixels, topmost element first.
    bool curveAt(DPoint const& screen, double tolerance, int& element, SimplePath*& path,
                 SimplePathPosition& position, DPoint& local) const;
    bool isSelected(SimplePathVertex* anchor) const;
    void toggleSelected(int element, SimplePath* path, SimplePathVertex* anchor);
    // Runs the operations as one undoable step; false (nothing kept) when none succeeded.
    bool run(Group group, int element);
    void adoptAdded(std::list<PHashablePointer<SimplePath>> const& added, int element);
    void drawElement(int element, SimplePath const* skip);
    void drawSelection();
    void clearGesture();
    // Ends any gesture and pending slice, clears the selection and takes the newest step off a history
    // with the element it edits; false when the history is empty.
    bool takeStep(std::vector<std::unique_ptr<SimplePathOperation>>& history, std::vector<int>& elements,
                  std::unique_ptr<SimplePathOperation>& step, int& element);

    std::vector<std::unique_ptr<SimplePath>> pool_; // every path the session ever held; freed last
    std::vector<Element> elements_;
    ViewTrans view_;
    double width_ = 800.0;
    double height_ = 600.0;
    CanvasDrawer drawer_;

    struct Selected {
        int element;
        SimplePath* path;
        SimplePathVertex* anchor;
    };
    std::vector<Selected> selection_;

    enum Gesture { None = 0, Single = 1, Multiple = 2, Box = 3 };
    int gesture_ = None;
    int gestureElement_ = -1;
    SimplePath* gesturePath_ = nullptr;
    std::unique_ptr<SimplePathVertexPickContext> single_;
    std::unique_ptr<SimplePathMultipleVertexPickContext> multiple_;
    DPoint pressScreen_;
    DPoint pressLocal_;
    DPoint boxEnd_;
    int snap_ = 0;
    bool hoverShown_ = false;
    bool pendingToggle_ = false; // a Shift press on an anchor: toggles it unless the press becomes a drag
    DPoint hoverScreen_;

    std::vector<std::unique_ptr<SimplePathOperation>> undo_; // one operation a gesture, meta when several
    std::vector<int> undoElements_;
    std::vector<std::unique_ptr<SimplePathOperation>> redo_;
    std::unique_ptr<SliceEnd> sliceFirst_; // the first click of a slice, until the second
    std::vector<int> redoElements_;
    std::string message_;

    static constexpr double kPickTolerance = 6.0; // canvas pixels
};
