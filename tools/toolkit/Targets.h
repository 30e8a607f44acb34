#pragma once

#include "toolkit/CommandLine.h"
#include "toolkit/Session.h"

#include "simplepath/path/SimplePath.h"

#include <string>
#include <vector>

namespace sptool {

// The number of segments of a path: one fewer than its vertices when open, as many when closed.
int segmentCount(SimplePath const& path);

// The indices of the paths a command looks at: just `path` when given (failing with a message when it is
// out of range), else every path, last first, so that what is drawn on top is found first.
int pathsToSearch(Session& session, std::optional<int> path, std::vector<std::size_t>& out);

// As pathsToSearch, for a search around `point`, which must be finite.
int pathsNear(Session& session, std::optional<int> path, DPoint const& point, std::vector<std::size_t>& out);
// Fails with "no <what> within <tolerance> of (x, y)".
int nothingWithin(Session& session, std::string const& what, double tolerance, DPoint const& point);

// A vertex an edit acts on: its path, its index there and its anchor.
struct VertexTarget {
    std::size_t path = 0;
    int index = 0;
    SimplePathVertex* anchor = nullptr;
};
// --vertex I on --path P (default 0), or the vertex with an anchor or handle within --tolerance of --near.
int resolveVertex(Session& session, Target const& target, VertexTarget& out);

// A curve position an edit acts on. A position at the very end of an open path is given as parameter 1.0
// of its last segment, so it always names a segment that exists.
struct PositionTarget {
    std::size_t path = 0;
    SimplePathPosition position;
};
// --at SEG:T on --path P (default 0), or the curve point within --tolerance of --near.
int resolvePosition(Session& session, Target const& target, PositionTarget& out);

// "(x, y)" for messages.
std::string describePoint(Session const& session, DPoint const& point);
// Fails unless both coordinates are finite.
int checkFinite(Session& session, DPoint const& point);

} // namespace sptool
