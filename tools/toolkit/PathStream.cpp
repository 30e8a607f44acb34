// Path data read, measured and written one subpath at a time, for documents of a million subpaths.
#include "toolkit/PathStream.h"

#include "toolkit/Hooks.h"
#include "toolkit/PathDataParser.h"
#include "toolkit/PathDataWriter.h"

#include <nlohmann/json.hpp>

#include <memory>
#include <variant>

namespace sptool {

DataWriter::DataWriter(Session& session, std::string const& outputPath)
    : session_(session), out_(session, outputPath) {
    if (session.options.json) {
        out_.write("{\n  \"source\": " + nlohmann::json(session.source).dump() + ",\n  \"paths\": [");
    }
}

DataWriter::~DataWriter() = default;

void DataWriter::add(CubicChain const& chain) {
    std::string const data = writePathData(chain, session_.numberFormat());
    if (session_.options.json) {
        // Path data holds no character that JSON escapes, so the entry is written by hand.
        out_.write(count_ == 0 ? "\n    {\"d\": \"" : ",\n    {\"d\": \"");
        out_.write(data);
        out_.write(std::string("\", \"closed\": ") + (chain.closed ? "true" : "false") +
                   ", \"segments\": " + std::to_string(chain.segments.size()) + "}");
    } else {
        out_.write(data);
        out_.write("\n");
    }
    ++count_;
}

int DataWriter::finish() {
    if (session_.options.json) {
        out_.write(count_ == 0 ? "]\n}\n" : "\n  ]\n}\n");
    }
    return out_.finish();
}

bool canStream(Invocation const& invocation) {
    if (invocation.steps.size() > 1) {
        return false;
    }
    if (invocation.options.format != OutputFormat::PathData) {
        return invocation.steps.size() == 1 && std::holds_alternative<InfoStep>(invocation.steps[0]);
    }
    return invocation.steps.empty() || std::holds_alternative<InfoStep>(invocation.steps[0]) ||
           std::holds_alternative<ConvertStep>(invocation.steps[0]);
}

int runPathStream(Session& session, std::string_view data, Step const* step) {
    bool const info = step != nullptr && std::holds_alternative<InfoStep>(*step);
    std::unique_ptr<InfoWriter> infoWriter;
    std::unique_ptr<DataWriter> dataWriter;
    if (info) {
        infoWriter = std::make_unique<InfoWriter>(session);
    } else {
        ConvertStep const* convert = step == nullptr ? nullptr : std::get_if<ConvertStep>(step);
        dataWriter =
            std::make_unique<DataWriter>(session, convert == nullptr ? std::string() : convert->output);
    }
    int code = kExitOk;
    std::optional<PathDataError> const error = parsePathData(data, [&](CubicChain&& chain) {
        if (code != kExitOk) {
            return;
        }
        std::unique_ptr<SimplePath> const path = pathOfChain(chain);
        if (!path) {
            code = session.fail(session.source + ": out of memory");
        } else if (info) {
            code = infoWriter->add(*path);
        } else if (path->numTriples() > 0) {
            dataWriter->add(chainOfPath(*path));
        }
    });
    if (code != kExitOk) {
        return code;
    }
    if (error) {
        return session.fail(session.source + ": path data " + error->message());
    }
    return info ? infoWriter->finish() : dataWriter->finish();
}

} // namespace sptool
