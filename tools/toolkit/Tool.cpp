#include "toolkit/Tool.h"

#include "toolkit/Hooks.h"
#include "toolkit/OperationCommands.h"
#include "toolkit/OutputFile.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/PathStream.h"
#include "toolkit/SvgWriter.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <istream>
#include <iterator>
#include <ostream>

namespace sptool {

int Session::fail(std::string const& message) {
    err << "simplepath: error: " << message << '\n';
    return kExitError;
}

int Session::emit(std::string const& path, std::string const& text) {
    OutputWriter writer(*this, path);
    writer.write(text);
    return writer.finish();
}

namespace {
constexpr std::size_t kOutputBlock = 1 << 20;
} // namespace

OutputWriter::OutputWriter(Session& session, std::string const& path) : session_(session) {
    std::string const& target = path.empty() ? session.options.output : path;
    if (!target.empty() && target != "-") {
        file_ = std::make_unique<AtomicFile>(target);
        failed_ = !file_->error().empty();
    }
}

OutputWriter::~OutputWriter() = default;

void OutputWriter::write(std::string_view piece) {
    buffer_.append(piece);
    if (buffer_.size() >= kOutputBlock) {
        flush();
    }
}

void OutputWriter::flush() {
    if (!failed_) {
        if (file_) {
            failed_ = !file_->write(buffer_);
        } else {
            session_.out.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
            failed_ = !session_.out;
        }
    }
    buffer_.clear();
}

int OutputWriter::finish() {
    flush();
    if (!file_) {
        session_.out.flush();
        return failed_ || !session_.out ? session_.fail("cannot write to standard output") : kExitOk;
    }
    std::string const error = failed_ ? file_->error() : file_->commit();
    return error.empty() ? kExitOk : session_.fail(error);
}

namespace {

int loadPathData(Session& session, std::string const& data) {
    PathDataResult parsed = parsePathData(data);
    if (!parsed.ok()) {
        return session.fail(session.source + ": path data " + parsed.error->message());
    }
    session.chains = std::move(parsed.chains);
    return kExitOk;
}

// The lower-case extension of a file name ("svg" for "a/Drawing.SVG"), empty when it has none.
std::string extensionOf(std::string const& name) {
    std::size_t const slash = name.find_last_of('/');
    std::size_t const dot = name.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash) || dot + 1 == name.size() ||
        dot == (slash == std::string::npos ? 0 : slash + 1)) {
        return {};
    }
    std::string extension = name.substr(dot + 1);
    for (char& c : extension) {
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
    return extension;
}

bool isBlank(std::string const& text) {
    return text.find_first_not_of(" \t\r\n\f") == std::string::npos;
}

enum class InputKind { PathData, Svg, Spath };

// Reads the input named on the command line: inline path data, or a file whose extension says what it
// holds (.svg an SVG document, .spath a .spath stream, anything else path data). Standard input has no
// name, so its format is sniffed: a document starting like XML is SVG, anything else path data. Empty
// input is refused: it is nearly always a mistake (a failed download, the wrong file).
int readInput(Session& session, std::string& text, InputKind& kind) {
    GlobalOptions const& options = session.options;
    kind = InputKind::PathData;
    if (options.inlineData) {
        session.source = "--d";
        text = *options.inlineData;
        return kExitOk;
    }
    bool const standardInput = options.input == "-";
    if (standardInput) {
        session.source = "standard input";
        text.assign(std::istreambuf_iterator<char>(session.in), std::istreambuf_iterator<char>());
    } else {
        session.source = options.input;
        std::string error;
        text = readWholeFile(options.input, error);
        if (!error.empty()) {
            return session.fail(error);
        }
    }
    std::string const extension = standardInput ? std::string() : extensionOf(options.input);
    if (extension == "spath") {
        kind = InputKind::Spath;
        return text.empty() ? session.fail(session.source + ": the file is empty, not a .spath stream")
                            : kExitOk;
    }
    if (isBlank(text)) {
        return session.fail(session.source + (standardInput ? ": nothing was read" : ": the file is empty"));
    }
    if (standardInput ? looksLikeXml(text) : extension == "svg") {
        kind = InputKind::Svg;
        if (!looksLikeXml(text)) {
            return session.fail(session.source + ": not an SVG document (it does not start with '<')");
        }
    }
    return kExitOk;
}

// Turns the input into the session's drawing.
int loadInput(Session& session, std::string const& text, InputKind kind) {
    if (kind == InputKind::Spath) {
        return readSpathInput(session, text);
    }
    if (kind == InputKind::PathData) {
        return loadPathData(session, text);
    }
    SvgReadResult read = readSvgDocument(text);
    if (!read.ok()) {
        return session.fail(session.source + ": " + read.error);
    }
    session.frame = read.document.frame;
    session.chains = std::move(read.document.chains);
    return kExitOk;
}

int runConvert(Session& session, ConvertStep const& step) {
    GlobalOptions const& options = session.options;
    if (options.format == OutputFormat::Spath) {
        return writeSpathOutput(session, step.output);
    }
    std::vector<CubicChain> const chains = currentChains(session);
    if (options.format == OutputFormat::Svg) {
        return session.emit(step.output, writeSvgDocument(session.frame, chains, session.numberFormat()));
    }
    DataWriter writer(session, step.output);
    for (CubicChain const& chain : chains) {
        writer.add(chain);
    }
    return writer.finish();
}

template <class... F> struct Overloaded : F... { using F::operator()...; };
template <class... F> Overloaded(F...) -> Overloaded<F...>;

int runStep(Session& session, Step const& step) {
    return std::visit(Overloaded{
                          [&](InfoStep const& s) { return runInfo(session, s); },
                          [&](NearestStep const& s) { return runNearest(session, s); },
                          [&](IntersectStep const& s) { return runIntersect(session, s); },
                          [&](PickStep const& s) { return runPick(session, s); },
                          [&](ConvertStep const& s) { return runConvert(session, s); },
                          [&](RenderStep const& s) { return runRender(session, s); },
                          [&](PreviewStep const& s) { return runPreview(session, s); },
                          [&](InsertStep const& s) { return runInsertOperation(session, s); },
                          [&](DeleteStep const& s) { return runDeleteOperation(session, s); },
                          [&](ModeStep const& s) { return runModeOperation(session, s); },
                          [&](SplitStep const& s) { return runSplitOperation(session, s); },
                          [&](JoinStep const& s) { return runJoinOperation(session, s); },
                          [&](DragStep const& s) { return runDrag(session, s); },
                          [&](TransformStep const& s) { return runTransform(session, s); },
                          [&](MoveStep const& s) { return runMove(session, s); },
                          [&](ReplayStep const& s) { return runReplay(session, s); },
                          [&](UndoStep const& s) { return runUndo(session, s); },
                          [&](SliceStep const& s) { return runSlice(session, s); },
                          [&](CloseStep const& s) { return runClose(session, s); },
                          [&](DeletePathStep const& s) { return runDeletePath(session, s); },
                      },
                      step);
}

char const* editName(Step const& step) {
    return std::visit(Overloaded{
                          [](InsertStep const&) { return "insert"; },
                          [](DeleteStep const&) { return "delete"; },
                          [](ModeStep const&) { return "mode"; },
                          [](SplitStep const&) { return "split"; },
                          [](JoinStep const&) { return "join"; },
                          [](DragStep const&) { return "drag"; },
                          [](TransformStep const&) { return "transform"; },
                          [](MoveStep const&) { return "move"; },
                          [](ReplayStep const&) { return "replay"; },
                          [](UndoStep const&) { return "undo"; },
                          [](SliceStep const&) { return "slice"; },
                          [](CloseStep const&) { return "close"; },
                          [](DeletePathStep const&) { return "delete-path"; },
                          [](auto const&) { return "edit"; },
                      },
                      step);
}

} // namespace

int runTool(std::vector<std::string> const& args, std::istream& in, std::ostream& out, std::ostream& err) {
    CommandLineResult const parsed = parseCommandLine(args, out, err);
    if (parsed.exitCode >= 0) {
        return parsed.exitCode;
    }
    Invocation const& invocation = parsed.invocation;
    Session session(invocation.options, in, out, err);
    std::string text;
    InputKind kind = InputKind::PathData;
    int code = readInput(session, text, kind);
    if (code != kExitOk) {
        return code;
    }
    // A query or conversion of path data alone runs one subpath at a time (big documents stay small).
    if (kind == InputKind::PathData && canStream(invocation)) {
        return runPathStream(session, text, invocation.steps.empty() ? nullptr : &invocation.steps[0]);
    }
    code = loadInput(session, text, kind);
    std::string().swap(text);
    if (code == kExitOk) {
        code = adoptChains(session);
    }
    for (std::size_t i = 0; code == kExitOk && i < invocation.steps.size(); ++i) {
        code = runStep(session, invocation.steps[i]);
        if (code == kExitOk && isEdit(invocation.steps[i])) {
            code = checkDrawingFinite(session, editName(invocation.steps[i]));
        }
    }
    // A call that ends on an edit, or has no command at all, writes the drawing it arrived at.
    if (code == kExitOk && (invocation.steps.empty() || isEdit(invocation.steps.back()))) {
        code = runConvert(session, ConvertStep{});
    }
    // The records are written last, so that a call that failed leaves no record file behind.
    if (code == kExitOk) {
        code = writeRecords(session);
    }
    return code;
}

int runTool(int argc, char** argv, std::ostream& out, std::ostream& err) {
    std::vector<std::string> args;
    for (int i = 1; i < argc; ++i) {
        args.emplace_back(argv[i]);
    }
    return runTool(args, std::cin, out, err);
}

} // namespace sptool
