#pragma once

#include "toolkit/RecordFile.h"
#include "toolkit/Session.h"

#include "simplepath/operations/SimplePathOperation.h"

#include <memory>
#include <string>
#include <vector>

namespace sptool {

// The edits of one call as operations, newest last, for undo and for --record. Each step remembers the
// drawing's path order before it, so that undo can put the paths back where they stood.
class EditHistory {
  public:
    struct Step {
        std::string name;                               // the command, for messages
        std::unique_ptr<SimplePathOperation> operation; // null: an edit made without an operation
        std::vector<std::unique_ptr<Record>> records;   // the records of its edits, in order
        std::vector<SimplePath*> orderBefore;           // the drawing's paths before the edit
    };

    // Paths an edit took out of the drawing (or made and undo took out again). Operations still point to
    // them, so they live as long as the history. Declared before the steps: operations go first.
    std::vector<std::unique_ptr<SimplePath>> spare;
    std::vector<Step> steps;
};

// The session's history, made on first use.
EditHistory& historyOf(Session& session);

} // namespace sptool
