#pragma once

#include "toolkit/CommandLine.h"
#include "toolkit/Session.h"

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/DVector.h"
#include "simplepath/interfaces/P2DTrans.h"
#include "simplepath/path/SimplePathPosition.h"

#include <cstddef>
#include <vector>

namespace sptool {

// The edits that run as the library's undoable operations. Each is one step of the session's history.
int runInsertOperation(Session& session, InsertStep const& step);
int runDeleteOperation(Session& session, DeleteStep const& step);
int runModeOperation(Session& session, ModeStep const& step);
int runSplitOperation(Session& session, SplitStep const& step);
int runJoinOperation(Session& session, JoinStep const& step);
int runMove(Session& session, MoveStep const& step);
int runReplay(Session& session, ReplayStep const& step);
int runUndo(Session& session, UndoStep const& step);
int runSlice(Session& session, SliceStep const& step);
int runClose(Session& session, CloseStep const& step);
int runDeletePath(Session& session, DeletePathStep const& step);

// Maps the given paths by `linear` about `center` (unless `translateOnly`), then shifts them by `shift`, as
// one step: one group of the path-level transform and translate operations.
int runTransformOperation(Session& session, std::vector<std::size_t> const& paths, P2DTrans const& linear,
                          DPoint const& center, DVector const& shift, bool translateOnly);

// Drags the point at `position` of a path to `to` as the path's own drag would, as one step: the drag is
// worked out on a copy of the path, and every triple whose locations or mode it changed is changed by a
// change operation, so the step can be undone and recorded.
int runDragOperation(Session& session, std::size_t path, SimplePathPosition const& position,
                     DPoint const& to);

// Writes the records of the edits made to the --record file, if one was asked for.
int writeRecords(Session& session);

} // namespace sptool
