#pragma once

#include "simplepath/operations/SimplePathOperation.h"

namespace sptool {

// What an edit's result means to the person who asked for it, as one short phrase ("" for success). The
// tool and the editor both say it.
char const* operationResultText(SimplePathOperation::Result result);

} // namespace sptool
