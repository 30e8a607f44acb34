#include "toolkit/OperationResultText.h"

namespace sptool {

char const* operationResultText(SimplePathOperation::Result result) {
    switch (result) {
    case SimplePathOperation::Success:
        return "";
    case SimplePathOperation::SameVertex:
        return "a vertex cannot be joined with itself";
    case SimplePathOperation::NotJoinable:
        return "only the end anchors of open paths can be joined";
    case SimplePathOperation::VertexMismatch:
        return "there is no anchor to split at there";
    case SimplePathOperation::DegenerateSlice:
        return "a slice needs two different anchors";
    case SimplePathOperation::EditFailed:
        return "the edit could not be made there";
    case SimplePathOperation::MementoFailed:
        return "the edit could not be made (nothing to change)";
    }
    return "the edit could not be made";
}

} // namespace sptool
