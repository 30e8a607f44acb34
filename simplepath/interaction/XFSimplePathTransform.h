#pragma once

#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/DPoint.h"

class PBoxForm;

// The forward mapping of an envelope: box coordinates to the envelope's region, and back by the box
// form's Newton inverse. The box form is not owned and must outlive the transform; without one every
// point maps to itself both ways.
class XFSimplePathTransform : public ArbTrans<DPoint> {
  public:
    explicit XFSimplePathTransform(PBoxForm const& boxForm) : boxForm_(&boxForm) {}
    // A null box form gives the identity.
    explicit XFSimplePathTransform(PBoxForm const* boxForm) : boxForm_(boxForm) {}
    XFSimplePathTransform(XFSimplePathTransform const&) = default;
    XFSimplePathTransform& operator=(XFSimplePathTransform const&) = default;
    ~XFSimplePathTransform() override = default;

    DPoint transform(DPoint const& p) const override;
    DPoint reverseTransform(DPoint const& p) const override;

  private:
    PBoxForm const* boxForm_ = nullptr;
};
