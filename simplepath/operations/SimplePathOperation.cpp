#include "simplepath/operations/SimplePathOperation.h"

SimplePathOperation::~SimplePathOperation() = default;

SimplePathOperation::SegmentIndependentInformation::~SegmentIndependentInformation() = default;

int SimplePathOperation::SegmentIndependentInformation::getType() const {
    return 0;
}

int SimplePathOperation::SegmentIndependentInformation::AquireSimplePathPickInfo(
    PathSeg const* segment, DPoint const& location, double tolerance, PHashablePointer<SimplePath>& path,
    SimplePathVertex*& vertex, int& index) const {
    if (pickCallback == nullptr) {
        return 0;
    }
    return pickCallback(segment, location, tolerance, path, vertex, index);
}
