#include "toolkit/RecordFile.h"

#include "simplepath/operations/AddSimplePathVertexOperation.h"
#include "simplepath/operations/ChangeSimplePathVertexOperation.h"
#include "simplepath/operations/DeleteSimplePathVertexOperation.h"
#include "simplepath/operations/InsertVerticesSimplePathOperation.h"
#include "simplepath/operations/JoinSimplePathVerticesOperation.h"
#include "simplepath/operations/MoveSelectedVerticesOperation.h"
#include "simplepath/operations/SimplePathVertexPickOperation.h"
#include "simplepath/operations/SplitSimplePathVertexOperation.h"
#include "simplepath/operations/setCuspModeOperation.h"
#include "simplepath/operations/setSmoothModeOperation.h"
#include "simplepath/operations/setStraightModeOperation.h"
#include "simplepath/operations/setSymmetricModeOperation.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace sptool {

namespace {

// Fields keep the order they are written in, the type tag first.
using json = nlohmann::ordered_json;

// A field that is missing or has the wrong shape; caught where the record's number is known.
struct BadField {
    std::string name;
};

// Each field kind both ways: to JSON, and from JSON (throwing BadField).
json put(DPoint const& p) {
    return json::array({p.x, p.y});
}
json put(DVector const& v) {
    return json::array({v.x, v.y});
}
json put(int v) {
    return v;
}
json put(SimplePathPosition const& p) {
    return json{{"index", p.getIndex()}, {"parameter", p.getParameter()}};
}
json put(SimplePathLocationTriple const& t) {
    return json{{"first", put(t.first)}, {"anchor", put(t.anchor)}, {"last", put(t.last)}, {"mode", t.mode}};
}
json put(std::list<SimplePathLocationTriple> const& list) {
    json out = json::array();
    for (SimplePathLocationTriple const& t : list) {
        out.push_back(put(t));
    }
    return out;
}

double number(json const& j, std::string const& name) {
    if (!j.is_number()) {
        throw BadField{name};
    }
    double const v = j.get<double>();
    if (!std::isfinite(v)) {
        throw BadField{name};
    }
    return v;
}
int integer(json const& j, std::string const& name) {
    if (!j.is_number_integer()) {
        throw BadField{name};
    }
    return j.get<int>();
}
void get(json const& j, std::string const& name, DPoint& p) {
    if (!j.is_array() || j.size() != 2) {
        throw BadField{name};
    }
    p = DPoint(number(j[0], name), number(j[1], name));
}
void get(json const& j, std::string const& name, DVector& v) {
    DPoint p;
    get(j, name, p);
    v = DVector(p.x, p.y);
}
void get(json const& j, std::string const& name, int& v) {
    v = integer(j, name);
}
json const& member(json const& j, std::string const& name, char const* key) {
    if (!j.is_object() || !j.contains(key)) {
        throw BadField{name};
    }
    return j[key];
}
void get(json const& j, std::string const& name, SimplePathPosition& p) {
    p.setValues(integer(member(j, name, "index"), name), number(member(j, name, "parameter"), name));
}
void get(json const& j, std::string const& name, SimplePathLocationTriple& t) {
    get(member(j, name, "first"), name, t.first);
    get(member(j, name, "anchor"), name, t.anchor);
    get(member(j, name, "last"), name, t.last);
    int const mode = integer(member(j, name, "mode"), name);
    if (mode < SimplePathVertexTriple::Smooth || mode > SimplePathVertexTriple::Symmetric) {
        throw BadField{name};
    }
    t.mode = static_cast<SimplePathVertexTriple::VertexTripleMode>(mode);
}
void get(json const& j, std::string const& name, std::list<SimplePathLocationTriple>& list) {
    if (!j.is_array()) {
        throw BadField{name};
    }
    list.clear();
    for (json const& item : j) {
        list.emplace_back();
        get(item, name, list.back());
    }
}

// Writes each field of a record into a JSON object.
struct Writer {
    json& out;
    template <class T> void operator()(char const* name, T const& value) { out[name] = put(value); }
};
// Reads each field of a record from a JSON object.
struct Reader {
    json const& in;
    template <class T> void operator()(char const* name, T& value) {
        if (!in.contains(name)) {
            throw BadField{name};
        }
        get(in[name], name, value);
    }
};

using PickInfo = SimplePathVertexPickOperation::PickOpInformation;
using MoveInfo = MoveSelectedVerticesOperation::MoveSelVertsOpInformation;
using AddInfo = AddSimplePathVertexOperation::AddVertInformation;
using ChangeInfo = ChangeSimplePathVertexOperation::ChangeVOpInformation;
using InsertInfo = InsertVerticesSimplePathOperation::InsertOpInformation;
using DeleteInfo = DeleteSimplePathVertexOperation::DeleteVOpInformation;
using JoinInfo = JoinSimplePathVerticesOperation::JoinOpInformation;
using SplitInfo = SplitSimplePathVertexOperation::SplitVOpInformation;
using ModeInfo = SimplePathModeOperation::ModeOpInformation;

// The fields of each record type, in one place for both directions.
template <class F> void fields(PickInfo& r, F&& f) {
    f("firstLocation", r.firstLocation);
    f("anchorLocation", r.anchorLocation);
    f("lastLocation", r.lastLocation);
    f("target", r.target);
}
template <class F> void fields(MoveInfo& r, F&& f) {
    f("vertexLocation", r.vertexLocation);
    f("offset", r.offset);
}
template <class F> void fields(AddInfo& r, F&& f) {
    f("positionLocation", r.positionLocation);
    f("referenceLocation", r.referenceLocation);
    f("position", r.position);
}
template <class F> void fields(ChangeInfo& r, F&& f) {
    f("vertexLocation", r.vertexLocation);
    f("target", r.target);
}
template <class F> void fields(InsertInfo& r, F&& f) {
    f("referenceLocation", r.referenceLocation);
    f("index", r.index);
    f("triples", r.triples);
}
template <class F> void fields(DeleteInfo& r, F&& f) {
    f("vertexLocation", r.vertexLocation);
}
template <class F> void fields(JoinInfo& r, F&& f) {
    f("firstLocation", r.firstLocation);
    f("secondLocation", r.secondLocation);
}
template <class F> void fields(SplitInfo& r, F&& f) {
    f("positionLocation", r.positionLocation);
    f("firstPieceLocation", r.firstPieceLocation);
    f("secondPieceLocation", r.secondPieceLocation);
    f("pieces", r.pieces);
    f("position", r.position);
}
template <class F> void fields(ModeInfo& r, F&& f) {
    f("vertexLocation", r.vertexLocation);
}

// Calls `f` with the record cast to its class, by type tag; false for a tag the tool does not read.
template <class F> bool withType(int type, Record* record, F&& f) {
    switch (type) {
    case 1:
        f(static_cast<PickInfo*>(record));
        return true;
    case 3:
        f(static_cast<MoveInfo*>(record));
        return true;
    case 4:
        f(static_cast<AddInfo*>(record));
        return true;
    case 6:
        f(static_cast<ChangeInfo*>(record));
        return true;
    case 7:
        f(static_cast<InsertInfo*>(record));
        return true;
    case 9:
        f(static_cast<DeleteInfo*>(record));
        return true;
    case 10:
        f(static_cast<JoinInfo*>(record));
        return true;
    case 11:
    case 12:
    case 13:
    case 14:
        f(static_cast<ModeInfo*>(record));
        return true;
    case 15:
        f(static_cast<SplitInfo*>(record));
        return true;
    default:
        return false;
    }
}

std::unique_ptr<Record> newRecord(int type) {
    switch (type) {
    case 1:
        return std::make_unique<PickInfo>();
    case 3:
        return std::make_unique<MoveInfo>();
    case 4:
        return std::make_unique<AddInfo>();
    case 6:
        return std::make_unique<ChangeInfo>();
    case 7:
        return std::make_unique<InsertInfo>();
    case 9:
        return std::make_unique<DeleteInfo>();
    case 10:
        return std::make_unique<JoinInfo>();
    case 11:
        return std::make_unique<setCuspModeOperation::ModeCOpInformation>();
    case 12:
        return std::make_unique<setSmoothModeOperation::ModeSmoOpInformation>();
    case 13:
        return std::make_unique<setSymmetricModeOperation::ModeSymOpInformation>();
    case 14:
        return std::make_unique<setStraightModeOperation::ModeStrOpInformation>();
    case 15:
        return std::make_unique<SplitInfo>();
    default:
        return nullptr;
    }
}

} // namespace

std::string recordTypeName(int type) {
    switch (type) {
    case 1:
        return "move";
    case 3:
        return "move selected";
    case 4:
        return "insert";
    case 6:
        return "change";
    case 7:
        return "insert vertices";
    case 9:
        return "delete";
    case 10:
        return "join";
    case 11:
        return "mode cusp";
    case 12:
        return "mode smooth";
    case 13:
        return "mode symmetric";
    case 14:
        return "mode straight";
    case 15:
        return "split";
    default:
        return "type " + std::to_string(type);
    }
}

std::string writeRecordFile(std::vector<Record const*> const& records) {
    // The chain is one group record (type 2) holding one entry per edit, one entry a line: a file of many
    // edits stays readable and compares well line by line.
    std::string text =
        "{\"records\": [\n  {\"type\": 2, \"count\": " + std::to_string(records.size()) + ", \"records\": [";
    for (std::size_t i = 0; i < records.size(); ++i) {
        Record const* record = records[i];
        json item{{"type", record->getType()}};
        // The fields are only read here; the visitor takes them by reference for both directions.
        withType(record->getType(), const_cast<Record*>(record),
                 [&](auto* typed) { fields(*typed, Writer{item}); });
        text += (i == 0 ? "\n    " : ",\n    ") + item.dump();
    }
    return text + "\n  ]}\n]}\n";
}

namespace {

// Reads a list of records into `records`, numbering them on from `number`; a group record (type 2) adds
// its entries in their order, so that the edits of a chain are numbered as they were made.
bool readRecords(json const& list, std::vector<std::unique_ptr<Record>>& records, std::size_t& number,
                 std::string& error) {
    for (json const& item : list) {
        std::string const which = "record " + std::to_string(number + 1);
        if (!item.is_object() || !item.contains("type") || !item["type"].is_number_integer()) {
            error = which + " has no type";
            return false;
        }
        int const type = item["type"].get<int>();
        if (type == 2) {
            if (!item.contains("records") || !item["records"].is_array()) {
                error = which + " (a group of edits) has no \"records\" list";
                return false;
            }
            if (!readRecords(item["records"], records, number, error)) {
                return false;
            }
            continue;
        }
        ++number;
        std::unique_ptr<Record> record = newRecord(type);
        if (!record) {
            error = which + " has the unknown type " + std::to_string(type);
            return false;
        }
        try {
            withType(type, record.get(), [&](auto* typed) { fields(*typed, Reader{item}); });
        } catch (BadField const& bad) {
            error = which + " (" + recordTypeName(type) + "): its field \"" + bad.name +
                    "\" is missing or not what it should be";
            return false;
        }
        records.push_back(std::move(record));
    }
    return true;
}

} // namespace

std::vector<std::unique_ptr<Record>> readRecordFile(std::string const& text, std::string& error) {
    json document;
    try {
        document = json::parse(text);
    } catch (json::parse_error const& e) {
        error = "not valid JSON (at byte " + std::to_string(e.byte) + ")";
        return {};
    }
    if (!document.is_object() || !document.contains("records") || !document["records"].is_array()) {
        error = "not a record file: it has no \"records\" list";
        return {};
    }
    std::vector<std::unique_ptr<Record>> records;
    std::size_t number = 0;
    if (!readRecords(document["records"], records, number, error)) {
        return {};
    }
    return records;
}

} // namespace sptool
