#include "toolkit/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <fstream>
#include <functional>
#include <optional>
#include <ostream>
#include <utility>

namespace sptool {

bool isEdit(Step const& step) {
    return std::holds_alternative<InsertStep>(step) || std::holds_alternative<DeleteStep>(step) ||
           std::holds_alternative<ModeStep>(step) || std::holds_alternative<SplitStep>(step) ||
           std::holds_alternative<JoinStep>(step) || std::holds_alternative<DragStep>(step) ||
           std::holds_alternative<TransformStep>(step) || std::holds_alternative<MoveStep>(step) ||
           std::holds_alternative<ReplayStep>(step) || std::holds_alternative<UndoStep>(step) ||
           std::holds_alternative<SliceStep>(step) || std::holds_alternative<CloseStep>(step) ||
           std::holds_alternative<DeletePathStep>(step);
}

namespace {

// A usage problem found after CLI11 has read the arguments, reported like CLI11's own errors.
struct UsageError {
    std::string message;
};

// The options every target-taking edit shares; `finish` checks that exactly one way of naming the target
// was used and turns them into a Target.
struct TargetOptions {
    bool namesVertex = true; // --vertex I, else --at SEG:T
    int path = 0;
    int vertex = 0;
    std::string at;
    std::vector<double> near;
    double tolerance = 1.0;
    CLI::Option* pathOption = nullptr;
    CLI::Option* indexOption = nullptr;
    CLI::Option* nearOption = nullptr;

    void add(CLI::App& app, bool vertexTarget) {
        namesVertex = vertexTarget;
        pathOption = app.add_option("--path", path, "the path, by index (default 0, or all with --near)");
        indexOption = vertexTarget
                          ? app.add_option("--vertex", vertex, "the vertex, by index on the path")
                          : app.add_option("--at", at, "the position SEG:T (segment index : parameter)");
        nearOption = app.add_option("--near", near, "the point closest to X Y")->expected(2);
        app.add_option("--tolerance", tolerance, "how far from --near a hit may lie (default 1)");
    }

    Target finish() const {
        char const* const indexName = namesVertex ? "--vertex" : "--at";
        if ((indexOption->count() > 0) == (nearOption->count() > 0)) {
            throw UsageError{std::string("name the target with either ") + indexName + " or --near"};
        }
        Target target;
        if (pathOption->count() > 0 || indexOption->count() > 0) {
            target.path = path;
        }
        if (nearOption->count() > 0) {
            target.near = DPoint(near[0], near[1]);
        } else if (namesVertex) {
            target.vertex = vertex;
        } else {
            target.position = parsePosition(at);
        }
        if (!(tolerance >= 0.0)) {
            throw UsageError{"--tolerance must not be negative"};
        }
        target.tolerance = tolerance;
        return target;
    }

    static PathPosition parsePosition(std::string const& text) {
        std::size_t const colon = text.find(':');
        PathPosition position;
        try {
            std::size_t used = 0;
            position.segment = std::stoi(text.substr(0, colon), &used);
            bool ok = used == colon;
            std::string const t = colon == std::string::npos ? std::string() : text.substr(colon + 1);
            position.t = std::stod(t, &used);
            ok = ok && used == t.size() && position.t >= 0.0 && position.t <= 1.0;
            if (ok) {
                return position;
            }
        } catch (std::exception const&) {
        }
        throw UsageError{"--at takes SEG:T, a segment index and a parameter in [0, 1], not '" + text + "'"};
    }
};

struct PathOption {
    int value = 0;
    CLI::Option* option = nullptr;

    void add(CLI::App& app, char const* help) { option = app.add_option("--path", value, help); }
    std::optional<int> get() const { return option->count() > 0 ? std::optional<int>(value) : std::nullopt; }
};

// The pointer of a vertex drag (preview and move): where it goes, which handle it pulls instead of the
// anchor, and what constrains it.
struct PointerOptions {
    std::vector<double> to;
    std::string handle;
    std::string snap;

    void add(CLI::App& app) {
        app.add_option("--to", to, "where the pointer goes")->expected(2)->required();
        app.add_option("--handle", handle, "drag a handle instead of the anchor")
            ->check(CLI::IsMember({"in", "out"}));
        app.add_option("--snap", snap, "constrain the pointer")
            ->check(CLI::IsMember({"angle", "horizontal", "vertical"}));
    }

    template <class DragStep> void finish(DragStep& step) const {
        step.to = DPoint(to[0], to[1]);
        step.handle = handle == "in"    ? PreviewHandle::In
                      : handle == "out" ? PreviewHandle::Out
                                        : PreviewHandle::None;
        step.snap = snap == "angle"        ? PreviewSnap::Angle
                    : snap == "horizontal" ? PreviewSnap::Horizontal
                    : snap == "vertical"   ? PreviewSnap::Vertical
                                           : PreviewSnap::None;
    }
};

// The path index P that opens a `P:...` argument; false when the text does not begin with a number and a
// colon.
bool pathBeforeColon(std::string const& text, int& path) {
    std::size_t const colon = text.find(':');
    std::size_t used = 0;
    try {
        path = std::stoi(text.substr(0, colon), &used);
    } catch (std::exception const&) {
        return false;
    }
    return colon != std::string::npos && used == colon;
}

using Finisher = std::function<Step()>;

struct CommandEntry {
    char const* name;
    char const* usage;
    char const* summary;
    std::function<Finisher(CLI::App&)> define;
};

template <class T> std::shared_ptr<T> keep(T value = T()) {
    return std::make_shared<T>(std::move(value));
}

// The commands whose step takes only an output file, or only a path.
template <class OutputStep> Finisher outputOnly(CLI::App& app) {
    auto step = keep<OutputStep>();
    app.add_option("-o,--output", step->output, "write here instead of the global -o");
    return [step] { return Step(*step); };
}

template <class PathStep> Finisher pathOnly(CLI::App& app) {
    auto step = keep<PathStep>();
    app.add_option("--path", step->path, "the path, by index (default 0)");
    return [step] { return Step(*step); };
}

std::vector<CommandEntry> const& commandTable() {
    static std::vector<CommandEntry> const table = {
        {"info", "info", "per path: vertices, closed, modes, bounds, top and bottom points, length",
         [](CLI::App&) -> Finisher { return [] { return Step(InfoStep{}); }; }},
        {"nearest", "nearest X Y [--path P]",
         "the closest position on the paths to a point, its point and distance",
         [](CLI::App& app) -> Finisher {
             auto p = keep<std::array<double, 2>>();
             auto path = keep<PathOption>();
             app.add_option("x", (*p)[0], "x of the point")->required();
             app.add_option("y", (*p)[1], "y of the point")->required();
             path->add(app, "only this path");
             return [p, path] { return Step(NearestStep{DPoint((*p)[0], (*p)[1]), path->get()}); };
         }},
        {"intersect", "intersect X1 Y1 X2 Y2 [--path P]",
         "positions and points where the line through two points crosses the paths",
         [](CLI::App& app) -> Finisher {
             auto v = keep<std::array<double, 4>>();
             auto path = keep<PathOption>();
             char const* const names[] = {"x1", "y1", "x2", "y2"};
             for (std::size_t i = 0; i < 4; ++i) {
                 app.add_option(names[i], (*v)[i])->required();
             }
             path->add(app, "only this path");
             return [v, path] {
                 auto const& a = *v;
                 return Step(IntersectStep{DPoint(a[0], a[1]), DPoint(a[2], a[3]), path->get()});
             };
         }},
        {"pick", "pick X Y [--tolerance T] [--path P]", "the vertex or curve position under a point",
         [](CLI::App& app) -> Finisher {
             auto step = keep<PickStep>();
             auto path = keep<PathOption>();
             app.add_option("x", step->point.x)->required();
             app.add_option("y", step->point.y)->required();
             app.add_option("--tolerance", step->tolerance,
                            "how far from the point a hit may lie (default 1)");
             path->add(app, "only this path");
             return [step, path] {
                 if (!(step->tolerance >= 0.0)) {
                     throw UsageError{"--tolerance must not be negative"};
                 }
                 PickStep result = *step;
                 result.path = path->get();
                 return Step(result);
             };
         }},
        {"convert", "convert [-o FILE]", "write the paths as they stand (--format d, svg or spath; --json)",
         outputOnly<ConvertStep>},
        {"render", "render [-o FILE]", "an SVG drawing of the paths with their anchors and handles",
         outputOnly<RenderStep>},
        {"preview",
         "preview --vertex I [--vertex J...] --to X Y [--path P] [--handle in|out] "
         "[--snap angle|horizontal|vertical] [-o FILE]",
         "an SVG of what dragging a vertex (or several) to a point would draw",
         [](CLI::App& app) -> Finisher {
             auto step = keep<PreviewStep>();
             auto pointer = keep<PointerOptions>();
             app.add_option("--path", step->path, "the path, by index (default 0)");
             app.add_option("--vertex", step->vertices, "the dragged vertex; more for a selection")
                 ->required()
                 ->expected(1, 1 << 20)
                 ->take_all();
             pointer->add(app);
             app.add_option("-o,--output", step->output, "write here instead of the global -o");
             return [step, pointer] {
                 PreviewStep result = *step;
                 pointer->finish(result);
                 if (result.handle != PreviewHandle::None && result.vertices.size() > 1) {
                     throw UsageError{"--handle drags one vertex: give a single --vertex"};
                 }
                 return Step(result);
             };
         }},
        {"insert", "insert (--at SEG:T | --near X Y) [--path P] [--tolerance T]",
         "a vertex at a curve position",
         [](CLI::App& app) -> Finisher {
             auto target = keep<TargetOptions>();
             target->add(app, false);
             return [target] { return Step(InsertStep{target->finish()}); };
         }},
        {"delete", "delete (--vertex I | --near X Y) [--path P] [--tolerance T]", "a vertex",
         [](CLI::App& app) -> Finisher {
             auto target = keep<TargetOptions>();
             target->add(app, true);
             return [target] { return Step(DeleteStep{target->finish()}); };
         }},
        {"mode", "mode smooth|cusp|symmetric|straight (--vertex I | --near X Y) [--path P]",
         "set a vertex's mode",
         [](CLI::App& app) -> Finisher {
             auto target = keep<TargetOptions>();
             auto mode = keep<std::string>();
             app.add_option("mode", *mode, "smooth, cusp, symmetric or straight")
                 ->required()
                 ->check(CLI::IsMember({"smooth", "cusp", "symmetric", "straight"}));
             target->add(app, true);
             return [target, mode] {
                 VertexMode const m = *mode == "smooth"      ? VertexMode::Smooth
                                      : *mode == "symmetric" ? VertexMode::Symmetric
                                      : *mode == "straight"  ? VertexMode::Straight
                                                             : VertexMode::Cusp;
                 return Step(ModeStep{m, target->finish()});
             };
         }},
        {"split", "split (--vertex I | --near X Y) [--path P]", "cut a path at a vertex",
         [](CLI::App& app) -> Finisher {
             auto target = keep<TargetOptions>();
             target->add(app, true);
             return [target] { return Step(SplitStep{target->finish()}); };
         }},
        {"join", "join (P:start|P:end Q:start|Q:end | --near X1 Y1 X2 Y2 [--tolerance T])",
         "join two path ends",
         [](CLI::App& app) -> Finisher {
             auto ends = keep<std::vector<std::string>>();
             auto near = keep<std::vector<double>>();
             auto tolerance = keep<double>(1.0);
             app.add_option("ends", *ends, "two ends, each P:start or P:end")->expected(0, 2);
             app.add_option("--near", *near, "two points, each near one end")->expected(4);
             app.add_option("--tolerance", *tolerance, "how far from an end a point may lie (default 1)");
             return [ends, near, tolerance] {
                 JoinStep step;
                 step.tolerance = *tolerance;
                 if (ends->size() == 2 && near->empty()) {
                     std::array<PathEnd, 2> parsed{};
                     for (std::size_t i = 0; i < 2; ++i) {
                         std::string const& e = (*ends)[i];
                         std::size_t const colon = e.find(':');
                         std::string const side =
                             colon == std::string::npos ? std::string() : e.substr(colon + 1);
                         if (!pathBeforeColon(e, parsed[i].path) || (side != "start" && side != "end")) {
                             throw UsageError{"a path end is P:start or P:end, not '" + e + "'"};
                         }
                         parsed[i].atStart = side == "start";
                     }
                     step.ends = parsed;
                 } else if (ends->empty() && near->size() == 4) {
                     auto const& n = *near;
                     step.near = std::array<DPoint, 2>{DPoint(n[0], n[1]), DPoint(n[2], n[3])};
                 } else {
                     throw UsageError{
                         "name two path ends, either as P:start|P:end or with --near X1 Y1 X2 Y2"};
                 }
                 if (!(step.tolerance >= 0.0)) {
                     throw UsageError{"--tolerance must not be negative"};
                 }
                 return Step(step);
             };
         }},
        {"drag", "drag (--at SEG:T | --near X Y) --to X Y [--path P] [--tolerance T]",
         "drag a curve point to a target",
         [](CLI::App& app) -> Finisher {
             auto target = keep<TargetOptions>();
             auto to = keep<std::vector<double>>();
             target->add(app, false);
             app.add_option("--to", *to, "where the point goes")->expected(2)->required();
             return [target, to] { return Step(DragStep{target->finish(), DPoint((*to)[0], (*to)[1])}); };
         }},
        {"move", "move --vertex I --to X Y [--path P] [--handle in|out] [--snap angle|horizontal|vertical]",
         "drag a vertex or one of its handles to a point",
         [](CLI::App& app) -> Finisher {
             auto step = keep<MoveStep>();
             auto pointer = keep<PointerOptions>();
             app.add_option("--path", step->path, "the path, by index (default 0)");
             app.add_option("--vertex", step->vertex, "the vertex, by index on the path")->required();
             pointer->add(app);
             return [step, pointer] {
                 MoveStep result = *step;
                 pointer->finish(result);
                 return Step(result);
             };
         }},
        {"replay", "replay FILE.json", "run the edits recorded with --record",
         [](CLI::App& app) -> Finisher {
             auto step = keep<ReplayStep>();
             app.add_option("file", step->file, "a file written by --record")->required();
             return [step] { return Step(*step); };
         }},
        {"slice", "slice P:SEG:T Q:SEG:T", "cut one path at two positions, or two paths at one each",
         [](CLI::App& app) -> Finisher {
             auto at = keep<std::vector<std::string>>();
             app.add_option("positions", *at, "two positions, each P:SEG:T")->expected(2)->required();
             return [at] {
                 SliceStep step;
                 for (std::size_t i = 0; i < 2; ++i) {
                     std::string const& text = (*at)[i];
                     int path = -1;
                     if (!pathBeforeColon(text, path)) {
                         throw UsageError{"a slice position is P:SEG:T, not '" + text + "'"};
                     }
                     PathPosition const p = TargetOptions::parsePosition(text.substr(text.find(':') + 1));
                     step.at[i] = SlicePoint{path, p.segment, p.t};
                 }
                 return Step(step);
             };
         }},
        {"close", "close [--path P]", "close an open path", pathOnly<CloseStep>},
        {"delete-path", "delete-path [--path P]", "delete a whole path", pathOnly<DeletePathStep>},
        {"undo", "undo", "take back the edit before it",
         [](CLI::App&) -> Finisher { return [] { return Step(UndoStep{}); }; }},
        {"transform",
         "transform translate DX DY | scale SX [SY] | rotate DEG | matrix A B C D E F [--center X Y] [--path "
         "P]",
         "move, scale, rotate or map the paths about a centre",
         [](CLI::App& app) -> Finisher {
             auto kind = keep<std::string>();
             auto values = keep<std::vector<double>>();
             auto center = keep<std::vector<double>>();
             auto path = keep<PathOption>();
             app.add_option("kind", *kind, "translate, scale, rotate or matrix")
                 ->required()
                 ->check(CLI::IsMember({"translate", "scale", "rotate", "matrix"}));
             app.add_option("values", *values, "the numbers the kind takes")->expected(0, 6);
             app.add_option("--center", *center, "the fixed point of scale, rotate and matrix")->expected(2);
             path->add(app, "only this path (default: every path)");
             return [kind, values, center, path] {
                 TransformStep step;
                 std::size_t const n = values->size();
                 bool ok = false;
                 if (*kind == "translate") {
                     step.kind = TransformKind::Translate;
                     ok = n == 2;
                 } else if (*kind == "scale") {
                     step.kind = TransformKind::Scale;
                     ok = n == 1 || n == 2;
                 } else if (*kind == "rotate") {
                     step.kind = TransformKind::Rotate;
                     ok = n == 1;
                 } else {
                     step.kind = TransformKind::Matrix;
                     ok = n == 6;
                 }
                 if (!ok) {
                     throw UsageError{*kind + " does not take " + std::to_string(n) + " numbers"};
                 }
                 step.values = *values;
                 if (step.kind == TransformKind::Scale && n == 1) {
                     step.values.push_back(step.values[0]);
                 }
                 if (!center->empty()) {
                     step.center = DPoint((*center)[0], (*center)[1]);
                 }
                 step.path = path->get();
                 return Step(step);
             };
         }},
    };
    return table;
}

CommandEntry const* findCommand(std::string const& word) {
    auto const& table = commandTable();
    auto const it =
        std::find_if(table.begin(), table.end(), [&](CommandEntry const& e) { return word == e.name; });
    return it == table.end() ? nullptr : &*it;
}

void printError(std::ostream& err, std::string const& where, std::string message) {
    std::replace(message.begin(), message.end(), '\n', ' ');
    while (!message.empty() && message.back() == ' ') {
        message.pop_back();
    }
    // A message that already begins with the command's name (an option named like its command) keeps it once.
    std::string const prefix = where.empty() ? "" : where + ": ";
    bool const named = !prefix.empty() && message.compare(0, prefix.size(), prefix) == 0;
    err << "simplepath: error: " << (named ? "" : prefix) << message << '\n';
}

std::string commandsFooter() {
    std::string footer =
        "Commands (run in the order given; edits change the drawing for the commands after "
        "them;\nwhen the last command is an edit, or there is none, the drawing is written as by "
        "convert):\n";
    for (CommandEntry const& entry : commandTable()) {
        footer += "  " + std::string(entry.usage) + "\n      " + entry.summary + "\n";
    }
    footer += "Run 'simplepath COMMAND --help' for a command's options.\n";
    return footer;
}

// CLI11 takes its arguments in reverse order.
void parseArguments(CLI::App& app, std::vector<std::string> const& args) {
    std::vector<std::string> reversed(args.rbegin(), args.rend());
    app.parse(reversed);
}

bool isGlobalValueOption(std::string const& token) {
    return token == "-o" || token == "--output" || token == "--format" || token == "--d" ||
           token == "--decimals" || token == "--record";
}

bool isGlobalOption(std::string const& token) {
    std::string const name = token.substr(0, token.find('='));
    return isGlobalValueOption(name) || name == "--json" || name == "--version";
}

// "-.5" and "+.5" are numbers, but a leading '-' followed by something other than a digit reads as an
// option to the parser; they are written "-0.5" and "+0.5" before parsing.
std::string asParsed(std::string const& token) {
    if (token.size() >= 3 && (token[0] == '-' || token[0] == '+') && token[1] == '.' && token[2] >= '0' &&
        token[2] <= '9') {
        return token.substr(0, 1) + "0" + token.substr(1);
    }
    return token;
}

// The option name of a token ("--format" of "--format=svg"), for asking a command whether it has one.
std::string optionName(std::string const& token) {
    return token.substr(0, token.find('='));
}

} // namespace

std::vector<std::string> const& commandNames() {
    static std::vector<std::string> const names = [] {
        std::vector<std::string> list;
        for (CommandEntry const& entry : commandTable()) {
            list.emplace_back(entry.name);
        }
        return list;
    }();
    return names;
}

CommandLineResult parseCommandLine(std::vector<std::string> const& args, std::ostream& out,
                                   std::ostream& err) {
    CommandLineResult result;
    GlobalOptions& options = result.invocation.options;

    CLI::App global(
        "Reads outlines from SVG files, path data or .spath streams, queries and edits them, and writes "
        "them out again.",
        "simplepath");
    global.allow_extras();
    global.footer(commandsFooter());
    std::string format = "d";
    std::string inlineData;
    global.add_option("input", options.input,
                      "an SVG file, a .spath file, a file of path data, or - for standard input");
    CLI::Option* inlineOption =
        global.add_option("--d", inlineData, "path data given inline instead of a file");
    global.add_option("--format", format, "output format of convert: d (path data), svg or spath")
        ->check(CLI::IsMember({"d", "svg", "spath"}));
    global.add_flag("--json", options.json, "print reports and path data as JSON");
    global.add_option("-o,--output", options.output,
                      "write output and reports to this file (replaced whole) instead of standard output");
    global
        .add_option(
            "--decimals", options.decimals,
            "round numbers to this many decimals (reports default to 6, path data and JSON to every digit)")
        ->check(CLI::Range(0, 17));
    global.add_option("--record", options.record,
                      "write the edits of this call to this file as records (JSON), for replay");

    global.add_flag("--version", "print the tool's version and stop");

    // No arguments at all is a usage mistake: show how the tool is called.
    if (args.empty()) {
        err << global.help();
        result.exitCode = kUsageExitCode;
        return result;
    }
    if (std::find(args.begin(), args.end(), "--version") != args.end()) {
        out << "simplepath " << SIMPLEPATH_TOOL_VERSION << '\n';
        result.exitCode = 0;
        return result;
    }

    // Cut the arguments at every command name: what comes before the first belongs to the whole call.
    std::vector<std::string> globalArgs;
    std::vector<std::string> commandsGiven;
    std::optional<std::pair<std::string, std::string>> stray; // a command's unexpected word, and the command
    std::size_t i = 0;
    for (; i < args.size() && !findCommand(args[i]); ++i) {
        globalArgs.push_back(args[i]);
    }
    while (i < args.size()) {
        CommandEntry const& entry = *findCommand(args[i]);
        commandsGiven.emplace_back(entry.name);
        CLI::App app(entry.summary, std::string("simplepath ") + entry.name);
        app.allow_extras();
        Finisher const finish = entry.define(app);
        // Whole-call options may stand anywhere, also after a command that takes any number of values:
        // those the command does not define itself are taken out before the command sees its arguments.
        std::vector<std::string> commandArgs;
        for (++i; i < args.size() && !findCommand(args[i]); ++i) {
            std::string const& token = args[i];
            if (isGlobalOption(token) && app.get_option_no_throw(optionName(token)) == nullptr) {
                globalArgs.push_back(token);
                if (isGlobalValueOption(token) && i + 1 < args.size()) {
                    globalArgs.push_back(args[++i]);
                }
                continue;
            }
            commandArgs.push_back(asParsed(token));
        }
        try {
            parseArguments(app, commandArgs);
            result.invocation.steps.push_back(finish());
        } catch (CLI::CallForHelp const& help) {
            result.exitCode = app.exit(help, out, err);
            return result;
        } catch (CLI::ParseError const& e) {
            printError(err, entry.name, e.what());
            result.exitCode = 1;
            return result;
        } catch (UsageError const& e) {
            printError(err, entry.name, e.message);
            result.exitCode = 1;
            return result;
        }
        // Anything left over is a mistake: an unknown option is reported by the whole call's parser, a
        // stray word after the whole call is parsed (it may be an input given after the command).
        for (std::string const& extra : app.remaining()) {
            if (!extra.empty() && extra[0] == '-') {
                globalArgs.push_back(extra);
            } else if (!stray) {
                stray = std::make_pair(std::string(entry.name), extra);
            }
        }
    }

    try {
        parseArguments(global, globalArgs);
    } catch (CLI::CallForHelp const& help) {
        result.exitCode = global.exit(help, out, err);
        return result;
    } catch (CLI::ParseError const& e) {
        printError(err, "", e.what());
        result.exitCode = 1;
        return result;
    }
    if (stray) {
        if (options.input.empty() && inlineOption->count() == 0) {
            // Most likely the input, put after the command as other tools take it.
            printError(err, "",
                       "the input comes before the commands: simplepath " + stray->second + " " +
                           commandsGiven.front() + (commandsGiven.size() > 1 ? " ..." : ""));
        } else {
            printError(err, stray->first, "unexpected argument '" + stray->second + "'");
        }
        result.exitCode = 1;
        return result;
    }
    std::vector<std::string> const extras = global.remaining();
    if (!extras.empty()) {
        std::string const& word = extras.front();
        printError(err, "",
                   word.rfind('-', 0) == 0
                       ? "unknown option '" + word + "'"
                       : "unknown command '" + word + "' (run simplepath --help for the list)");
        result.exitCode = 1;
        return result;
    }
    if (!options.input.empty() && inlineOption->count() > 0 && !std::ifstream(options.input)) {
        printError(err, "", "unknown command '" + options.input + "' (run simplepath --help for the list)");
        result.exitCode = 1;
        return result;
    }
    if (options.input.empty() == (inlineOption->count() == 0)) {
        printError(err, "",
                   options.input.empty() ? "no input: give an SVG, .spath or path data file, or --d DATA"
                                         : "give either an input file or --d, not both");
        result.exitCode = 1;
        return result;
    }
    if (inlineOption->count() > 0) {
        options.inlineData = inlineData;
    }
    options.format = format == "svg"     ? OutputFormat::Svg
                     : format == "spath" ? OutputFormat::Spath
                                         : OutputFormat::PathData;
    return result;
}

} // namespace sptool
