#include "toolkit/Tool.h"

#include "toolkit/Hooks.h"
#include "toolkit/OutputFile.h"
#include "toolkit/PathDataParser.h"
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
    std::string const& target = path.empty() ? options.output : path;
    if (target.empty() || target == "-") {
        out << text;
        out.flush();
        return out ? kExitOk : fail("cannot write to standard output");
    }
    std::string const error = writeFileAtomically(target, text);
    return error.empty() ? kExitOk : fail(error);
}

namespace {

bool endsWith(std::string const& text, std::string const& suffix) {
    return text.size() >= suffix.size() &&
           text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

int loadPathData(Session& session, std::string const& data) {
    PathDataResult parsed = parsePathData(data);
    if (!parsed.ok()) {
        return session.fail(session.source + ": path data " + parsed.error->message());
    }
    session.chains = std::move(parsed.chains);
    return kExitOk;
}

// Reads the input named on the command line: inline path data, an SVG document, a .spath stream, or a file
// of path data (anything that does not start like XML).
int loadInput(Session& session) {
    GlobalOptions const& options = session.options;
    if (options.inlineData) {
        session.source = "--d";
        return loadPathData(session, *options.inlineData);
    }
    std::string text;
    if (options.input == "-") {
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
    if (endsWith(options.input, ".spath")) {
        return readSpathInput(session, text);
    }
    if (!looksLikeXml(text)) {
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
    if (options.json) {
        nlohmann::json paths = nlohmann::json::array();
        for (CubicChain const& chain : chains) {
            paths.push_back({{"d", writePathData(chain, session.numberFormat())},
                             {"closed", chain.closed},
                             {"segments", chain.segments.size()}});
        }
        nlohmann::json const report = {{"source", session.source}, {"paths", paths}};
        return session.emit(step.output, report.dump(2) + "\n");
    }
    std::string text;
    for (CubicChain const& chain : chains) {
        text += writePathData(chain, session.numberFormat()) + "\n";
    }
    return session.emit(step.output, text);
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
                          [&](InsertStep const& s) { return runInsert(session, s); },
                          [&](DeleteStep const& s) { return runDelete(session, s); },
                          [&](ModeStep const& s) { return runMode(session, s); },
                          [&](SplitStep const& s) { return runSplit(session, s); },
                          [&](JoinStep const& s) { return runJoin(session, s); },
                          [&](DragStep const& s) { return runDrag(session, s); },
                          [&](TransformStep const& s) { return runTransform(session, s); },
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
    int code = loadInput(session);
    if (code == kExitOk) {
        code = adoptChains(session);
    }
    for (std::size_t i = 0; code == kExitOk && i < invocation.steps.size(); ++i) {
        code = runStep(session, invocation.steps[i]);
    }
    // A call that ends on an edit, or has no command at all, writes the drawing it arrived at.
    if (code == kExitOk && (invocation.steps.empty() || isEdit(invocation.steps.back()))) {
        code = runConvert(session, ConvertStep{});
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
