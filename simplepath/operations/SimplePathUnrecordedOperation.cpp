#include "simplepath/operations/SimplePathUnrecordedOperation.h"

int SimplePathUnrecordedOperation::noRecord(SegmentIndependentInformation*& info) {
    info = nullptr;
    return -1;
}

int SimplePathUnrecordedOperation::RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) {
    return noRecord(info);
}

int SimplePathUnrecordedOperation::ApplySegIndependentInfo(SegmentIndependentInformation*& info) {
    return noRecord(info);
}
