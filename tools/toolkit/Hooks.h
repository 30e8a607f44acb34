#pragma once

#include "toolkit/ChainConversion.h"
#include "toolkit/CommandLine.h"
#include "toolkit/Session.h"

#include <memory>
#include <string>
#include <vector>

namespace sptool {

// The places where the tool meets the library's path model. Each returns an exit code: kExitOk lets the
// call go on with the next command; anything else ends it with that code (after the hook has printed one
// line through Session::fail).
//
// The drawing enters as cubic chains (Session::chains, one per subpath, closed chains ending on their
// start) and leaves through currentChains(); everything between is the library's business.

// One chain as a library path (null when it cannot be made), a vertex with a retracted handle made a cusp
// (chainOfPath, in ChainConversion.h, turns a path into a chain again).
std::unique_ptr<SimplePath> pathOfChain(CubicChain const& chain);

// Called once after the input is read, before the first command: turn the chains into library paths.
int adoptChains(Session& session);
// The drawing as it stands after the edits so far, as chains, for convert and the SVG outputs.
std::vector<CubicChain> currentChains(Session& session);

// Refuses a drawing that an edit carried beyond the range of doubles (a coordinate that overflowed to
// infinity), naming the command, so that nothing is written or measured through infinity.
int checkDrawingFinite(Session& session, char const* command);

// Reads a .spath stream (the library's binary path layout) into the session.
int readSpathInput(Session& session, std::string const& bytes);
// Writes the drawing as a .spath stream, through Session::emit.
int writeSpathOutput(Session& session, std::string const& outputPath);

int runInfo(Session& session, InfoStep const& step);
int runNearest(Session& session, NearestStep const& step);
int runIntersect(Session& session, IntersectStep const& step);
int runPick(Session& session, PickStep const& step);
int runRender(Session& session, RenderStep const& step);
int runPreview(Session& session, PreviewStep const& step);
int runDrag(Session& session, DragStep const& step);
int runTransform(Session& session, TransformStep const& step);

} // namespace sptool
