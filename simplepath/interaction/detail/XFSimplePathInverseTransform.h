#pragma once

#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"

class PBoxForm;

// The mirror of XFSimplePathTransform: forward takes envelope coordinates back into the box (the box
// form's Newton inverse), reverse maps box coordinates onto the envelope. The library uses it to carry
// points of an enveloped drawing back to the unbent shape; it is not meant for hosts. The box form is
// not owned; without one every point maps to itself both ways.
class XFSimplePathInverseTransform : public ArbTrans<DPoint> {
  public:
    explicit XFSimplePathInverseTransform(PBoxForm const& boxForm) : boxForm_(&boxForm) {}
    // A null box form gives the identity.
    explicit XFSimplePathInverseTransform(PBoxForm const* boxForm) : boxForm_(boxForm) {}
    XFSimplePathInverseTransform(XFSimplePathInverseTransform const&) = default;
    XFSimplePathInverseTransform& operator=(XFSimplePathInverseTransform const&) = default;
    ~XFSimplePathInverseTransform() override = default;

    DPoint transform(DPoint const& p) const override;
    DPoint reverseTransform(DPoint const& p) const override;

  private:
    PBoxForm const* boxForm_ = nullptr;
};
