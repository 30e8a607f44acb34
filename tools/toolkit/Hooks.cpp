// Where the tool's drawing enters and leaves the library: chains to paths and back, .spath streams, and the
// render drawing of the paths' vertices.
#include "toolkit/Hooks.h"

#include "toolkit/SvgDrawer.h"
#include "toolkit/SvgWriter.h"

#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/interfaces/BinaryDeserializer.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathSerializer.h"

#include <cmath>
#include <limits>
#include <list>
#include <sstream>

namespace sptool {

namespace {

// The conversion infers a vertex's mode from its handle directions alone, and a retracted handle has no
// direction, so a polyline's corners would come out smooth. In a drawing a retracted handle means a
// corner: such a vertex is a cusp. Only the mode changes; the handles stay where they are.
void markRetractedVerticesCusp(SimplePath& path) {
    std::unique_ptr<SimplePathChangeInstruction> change; // made only when a vertex changes
    for (int i = 0; i < path.numTriples(); ++i) {
        SimplePathVertexTriple t;
        if (path.getTriple(i, t) != SimplePath::Success || t.mode != SimplePathVertexTriple::Smooth) {
            continue;
        }
        DPoint const first = t.first->getLocation(), anchor = t.anchor->getLocation(),
                     last = t.last->getLocation();
        if (first == anchor || last == anchor) {
            if (!change) {
                change = std::make_unique<SimplePathChangeInstruction>();
            }
            // The triple is the path's own, so only its mode changes and nothing can fail.
            (void)path.changeTriple(t.first, first, t.anchor, anchor, t.last, last,
                                    SimplePathVertexTriple::Cusp, *change);
        }
    }
}

bool allFinite(SimplePath const& path) {
    std::list<SimplePathLocationTriple> triples;
    // Reading the locations always succeeds.
    (void)path.getLocationTripleList(triples);
    for (SimplePathLocationTriple const& t : triples) {
        for (DPoint const& p : {t.first, t.anchor, t.last}) {
            if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

std::unique_ptr<SimplePath> pathOfChain(CubicChain const& chain) {
    std::unique_ptr<SimplePath> path = pathOfChainInferringModes(chain);
    if (path != nullptr) {
        markRetractedVerticesCusp(*path);
    }
    return path;
}

int checkDrawingFinite(Session& session, char const* command) {
    for (std::size_t i = 0; i < session.paths.size(); ++i) {
        if (!allFinite(*session.paths[i])) {
            return session.fail(std::string(command) + ": path " + std::to_string(i) +
                                " would get coordinates beyond the range of double precision (about "
                                "1.8e308)");
        }
    }
    return kExitOk;
}

int adoptChains(Session& session) {
    for (CubicChain const& chain : session.chains) {
        std::unique_ptr<SimplePath> path = pathOfChain(chain);
        if (!path) {
            return session.fail(session.source + ": out of memory");
        }
        session.paths.push_back(std::move(path));
    }
    session.chains.clear();
    return kExitOk;
}

std::vector<CubicChain> currentChains(Session& session) {
    std::vector<CubicChain> chains;
    for (std::unique_ptr<SimplePath> const& path : session.paths) {
        if (path->numTriples() > 0) {
            chains.push_back(chainOfPath(*path));
        }
    }
    return chains;
}

// A .spath file holds any number of paths:
//   int32    the number of paths, m
//   m path streams, one after another, each exactly as SimplePathSerializer writes one path
// and nothing after the last path. Integers and doubles are little-endian (BinarySerializer's layout), so a
// file means the same on every machine, and writing what was read gives back the same bytes.
int readSpathInput(Session& session, std::string const& bytes) {
    std::istringstream in(bytes);
    BinaryDeserializer stream(in);
    std::string const unreadable = session.source + ": not a readable .spath stream: ";
    std::int32_t count = 0;
    if (stream.readInt(count) != 0 || count < 0) {
        return session.fail(unreadable + "no path count at its start");
    }
    // Every path takes more than four bytes, so a count beyond that is text or some other file's bytes.
    if (static_cast<std::size_t>(count) > bytes.size() / 4) {
        return session.fail(unreadable + "its start claims " + std::to_string(count) + " paths in only " +
                            std::to_string(bytes.size()) + " bytes");
    }
    // The count is not trusted for an allocation: paths are made only as their streams are read.
    for (std::int32_t i = 0; i < count; ++i) {
        PHashablePointer<SimplePath> read;
        SimplePathSerializer::Result const result = SimplePathSerializer::readNew(stream, read);
        std::unique_ptr<SimplePath> path(read.pointer);
        if (result != SimplePathSerializer::Success) {
            return session.fail(unreadable + "path " + std::to_string(i) + " of " + std::to_string(count) +
                                " is cut short or damaged");
        }
        if (!allFinite(*path)) {
            return session.fail(unreadable + "path " + std::to_string(i) +
                                " has a coordinate that is not a finite number");
        }
        session.paths.push_back(std::move(path));
    }
    if (in.peek() != std::char_traits<char>::eof()) {
        return session.fail(unreadable + "unexpected bytes after path " + std::to_string(count - 1));
    }
    return kExitOk;
}

int writeSpathOutput(Session& session, std::string const& outputPath) {
    std::ostringstream out;
    BinarySerializer stream(out);
    bool ok = stream.writeInt(static_cast<std::int32_t>(session.paths.size())) == 0;
    for (std::unique_ptr<SimplePath> const& path : session.paths) {
        ok = ok && SimplePathSerializer::write(path.get(), stream) == SimplePathSerializer::Success;
    }
    if (!ok || session.paths.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return session.fail("cannot write the .spath stream");
    }
    return session.emit(outputPath, out.str());
}

int runRender(Session& session, RenderStep const& step) {
    return session.emit(step.output, renderDrawing(session.frame, session.paths));
}

} // namespace sptool
