#pragma once

#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/PList.h"

// A chain of cubic segments with a strict-closed flag (set when the chain is meant to close on itself).
class PBezierCurve {
  public:
    PBezierCurve() = default;

    PList<PBezier>& getSegments() { return segments_; }
    PList<PBezier> const& getSegments() const { return segments_; }
    // The number of segments.
    long length() const { return segments_.length(); }

    int strictIsClosed() const { return strictClosed_; }
    void setStrictIsClosed(int closed) { strictClosed_ = closed; }

    bool operator==(PBezierCurve const& c) const {
        return strictClosed_ == c.strictClosed_ && segments_ == c.segments_;
    }
    bool operator!=(PBezierCurve const& c) const { return !(*this == c); }

  private:
    PList<PBezier> segments_;
    int strictClosed_ = 0;
};
