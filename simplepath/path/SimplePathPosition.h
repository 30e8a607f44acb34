#pragma once

// A place on a path: a segment index and the Bezier parameter within that segment, in [0, 1].
//
// Parameter 1.0 is the segment's end anchor, the same place as (i+1, 0.0); the nearest-point queries
// report an anchor that way (the lowest segment wins a tie), and locating accepts it.
// (i, 0.0) is the anchor of triple i. The end of a path is (n-1, 0.0) when it is open and (n, 0.0)
// when it is closed, the latter being triple 0's anchor reached again. The default, (-1, 0.0), is the
// invalid position. A position knows nothing of its path: positions of different paths must not be
// compared, and range checks happen where a position is used.
class SimplePathPosition {
  public:
    SimplePathPosition() = default;
    SimplePathPosition(SimplePathPosition const&) = default;
    SimplePathPosition& operator=(SimplePathPosition const&) = default;

    void getValues(int& segmentIndex, double& segmentParameter) const {
        segmentIndex = index;
        segmentParameter = parameter;
    }
    void setValues(int segmentIndex, double segmentParameter) {
        index = segmentIndex;
        parameter = segmentParameter;
    }
    int getIndex() const { return index; }
    double getParameter() const { return parameter; }

    // Exact comparison of both fields; no tolerance.
    bool operator==(SimplePathPosition const& other) const {
        return index == other.index && parameter == other.parameter;
    }
    bool operator!=(SimplePathPosition const& other) const { return !(*this == other); }
    // Path order: by segment, then by parameter.
    bool operator<(SimplePathPosition const& other) const;
    bool operator>(SimplePathPosition const& other) const;

  private:
    friend class SimplePath;
    SimplePathPosition(int segmentIndex, double segmentParameter)
        : index(segmentIndex), parameter(segmentParameter) {}

    int index = -1;
    double parameter = 0.0;
};
