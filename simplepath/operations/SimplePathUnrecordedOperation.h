#pragma once

#include "simplepath/operations/SimplePathOperation.h"

// The base of the path-level operations, which describe themselves in no record: they replace or
// reshape whole paths, and a record by coordinates could not name the pieces they make. Both record
// members null the caller's pointer, without releasing what it pointed to (the caller still owns
// that), and return -1; a group of operations therefore leaves their entries empty.
class SimplePathUnrecordedOperation : public SimplePathOperation {
  public:
    int RetreiveSegIndependentInfo(SegmentIndependentInformation*& info) override;
    int ApplySegIndependentInfo(SegmentIndependentInformation*& info) override;

  private:
    static int noRecord(SegmentIndependentInformation*& info);
};
