#pragma once

#include "simplepath/operations/SimplePathOperation.h"

#include <memory>
#include <string>
#include <vector>

namespace sptool {

using Record = SimplePathOperation::SegmentIndependentInformation;

// The tool's file of recorded edits: a JSON object {"records": [...]} holding one group record (type 2,
// with "count" and its own "records" list) whose entries are the edits in the order made, each holding the
// record's type tag as "type" and every field of the record under its own name. Reading flattens groups.
// Points and offsets are [x, y] pairs, curve positions {"index", "parameter"}, triples {"first",
// "anchor", "last", "mode"}. Numbers are written with every digit that matters, so a replay reads back
// exactly the coordinates that were recorded.
std::string writeRecordFile(std::vector<Record const*> const& records);

// Reads a record file. On failure, `error` holds one line saying what is wrong and where ("not valid
// JSON at byte 12", "record 3 has the unknown type 8") and nothing is returned.
std::vector<std::unique_ptr<Record>> readRecordFile(std::string const& text, std::string& error);

// A short name of a record type for messages ("delete", "split"), "type N" for a tag without one.
std::string recordTypeName(int type);

} // namespace sptool
