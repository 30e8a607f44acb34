#pragma once

#include "simplepath/interfaces/DPoint.h"

#include <array>
#include <iosfwd>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sptool {

enum class OutputFormat { PathData, Svg, Spath };

// Options that apply to the whole call; they may be given before the first command or among the commands.
struct GlobalOptions {
    std::string input;                     // a file, "-" for standard input; empty when --d is given
    std::optional<std::string> inlineData; // --d "M0 0 C..."
    OutputFormat format = OutputFormat::PathData;
    bool json = false;
    std::string output; // -o FILE; empty: standard output
    int decimals = -1;  // --decimals N; -1 writes every digit that matters
    std::string record; // --record FILE: the edits of this call as records, in JSON
};

// A place on a path: segment index and curve parameter, written "SEG:T" ("2:0.5").
struct PathPosition {
    int segment = 0;
    double t = 0.0;
};

// What an edit acts on, named either by index (--vertex I, --at SEG:T, on --path P, which defaults to 0)
// or by a point (--near X Y) within --tolerance of the drawing (on --path P only, if given).
struct Target {
    std::optional<int> path;
    std::optional<int> vertex;
    std::optional<PathPosition> position;
    std::optional<DPoint> near;
    double tolerance = 1.0;
};

// One end of an open path, written "P:start" or "P:end".
struct PathEnd {
    int path = 0;
    bool atStart = false;
};

enum class VertexMode { Smooth, Cusp, Symmetric, Straight };
enum class TransformKind { Translate, Scale, Rotate, Matrix };

// Queries: they print a report and leave the drawing as it is.
struct InfoStep {};
struct NearestStep {
    DPoint point;
    std::optional<int> path;
};
struct IntersectStep {
    DPoint from;
    DPoint to;
    std::optional<int> path;
};
struct PickStep {
    DPoint point;
    double tolerance = 1.0;
    std::optional<int> path;
};
// Output: they write the drawing as it stands to their own -o, else the global one, else standard output.
struct ConvertStep {
    std::string output;
};
struct RenderStep {
    std::string output;
};
// What an interactive drag of one vertex (or of a selection, with several vertices) would draw, as SVG.
enum class PreviewHandle { None, In, Out };
enum class PreviewSnap { None, Angle, Horizontal, Vertical };
struct PreviewStep {
    int path = 0;
    std::vector<int> vertices; // the first is the one under the pointer
    PreviewHandle handle = PreviewHandle::None;
    DPoint to;
    PreviewSnap snap = PreviewSnap::None;
    std::string output;
};
// Edits: they change the drawing for the steps after them.
struct InsertStep {
    Target at; // a position: --at or --near
};
struct DeleteStep {
    Target vertex; // --vertex or --near
};
struct ModeStep {
    VertexMode mode = VertexMode::Cusp;
    Target vertex;
};
struct SplitStep {
    Target vertex;
};
struct JoinStep {
    std::optional<std::array<PathEnd, 2>> ends; // join 0:end 1:start
    std::optional<std::array<DPoint, 2>> near;  // join --near X1 Y1 X2 Y2
    double tolerance = 1.0;
};
struct DragStep {
    Target from; // the curve point that is dragged: --at or --near
    DPoint to;
};
// Drags one vertex (or one of its handles) to a point as the pointer would, and commits the drag.
struct MoveStep {
    int path = 0;
    int vertex = 0;
    PreviewHandle handle = PreviewHandle::None;
    DPoint to;
    PreviewSnap snap = PreviewSnap::None;
};
// Runs the edits recorded in a file (written by --record) on the drawing.
struct ReplayStep {
    std::string file;
};
// Cuts one path at two positions, or two paths at one position each, each written "P:SEG:T".
struct SlicePoint {
    int path = 0;
    int segment = 0;
    double t = 0.0;
};
struct SliceStep {
    std::array<SlicePoint, 2> at{};
};
// Closes an open path; deletes a whole path.
struct CloseStep {
    int path = 0;
};
struct DeletePathStep {
    int path = 0;
};
// Takes back the edit step before it.
struct UndoStep {};
struct TransformStep {
    TransformKind kind = TransformKind::Translate;
    // translate: dx dy; scale: sx sy (sy = sx when one is given); rotate: degrees; matrix: a b c d e f,
    // mapping (x, y) to (a x + c y + e, b x + d y + f) as in SVG.
    std::vector<double> values;
    std::optional<DPoint> center; // --center X Y; without it, the centre of the paths' bounds
    std::optional<int> path;      // --path P; without it, every path
};

using Step =
    std::variant<InfoStep, NearestStep, IntersectStep, PickStep, ConvertStep, RenderStep, PreviewStep,
                 InsertStep, DeleteStep, ModeStep, SplitStep, JoinStep, DragStep, TransformStep, MoveStep,
                 ReplayStep, UndoStep, SliceStep, CloseStep, DeletePathStep>;

// True for the steps that change the drawing.
bool isEdit(Step const& step);

struct Invocation {
    GlobalOptions options;
    std::vector<Step> steps;
};

// The exit code of a call without arguments, which prints the usage to standard error.
constexpr int kUsageExitCode = 2;

struct CommandLineResult {
    Invocation invocation;
    // -1 when the call should go ahead; otherwise the exit code, after help was printed to `out` or an
    // error line to `err`.
    int exitCode = -1;
};

// Reads `simplepath [OPTIONS] [INPUT] [COMMAND [ARGS...]]...` (arguments without the program name).
CommandLineResult parseCommandLine(std::vector<std::string> const& args, std::ostream& out,
                                   std::ostream& err);

// The names of the commands, in the order the help lists them.
std::vector<std::string> const& commandNames();

} // namespace sptool
