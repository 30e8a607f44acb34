#pragma once

#include "simplepath/interfaces/CArray.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/legacy/BPoint.h"

// One cubic Bezier segment of the legacy curve family: P0 (start anchor), P1 (start handle), P2 (end
// handle), P3 (end anchor), with its own evaluation, length, flattening, nearest-point search and
// drag-to-point editing. Parameters run over [0, 1].
//
// Two flattening settings travel with the segment: the resolution (the flattening tolerance, 1.0 by
// default) and whether a straight segment, one whose handles sit on their anchors, is subdivided like
// any other curve (true by default) or written as its end point alone.
class CBezier {
  public:
    // P0 = a's anchor, P1 = a's after-handle, P2 = b's before-handle, P3 = b's anchor.
    CBezier(BPOINT const& a, BPOINT const& b);
    CBezier(DPoint const& p0, DPoint const& p1, DPoint const& p2, DPoint const& p3);

    void SetResolution(double resolution) { resolution_ = resolution; }
    void SetExpandStraightLines(bool expand) { expandStraightLines_ = expand; }
    double GetResolution() const { return resolution_; }
    bool GetExpandStraightLines() const { return expandStraightLines_; }

    DPoint const& GetP0() const { return p0_; }
    DPoint const& GetP1() const { return p1_; }
    DPoint const& GetP2() const { return p2_; }
    DPoint const& GetP3() const { return p3_; }

    // The point at t by the Bernstein form. t exactly 0 and exactly 1 give P0 and P3 bit for bit.
    DPoint GetCurvePoint(double t) const;

    // Arc length between t0 and t1: composite Simpson's rule with 10 intervals on the speed |B'(t)|.
    // Fixed cost (11 speed evaluations); exact for a straight segment with evenly spaced handles, and for
    // smooth segments the error falls as the fourth power of the interval (relative error typically
    // below 1e-5 for gentle curves, larger near a cusp, where the speed is not smooth).
    double GetLength(double t0, double t1) const;
    double GetLength() const { return GetLength(0.0, 1.0); }

    // The parameter at which GetLength(0, t) equals length: safeguarded Newton iteration on the
    // Simpson length, bracketed by bisection, to |GetLength(0, t) - length| <= 1e-9 (or until the
    // bracket is one double wide). A length of 0 or less gives 0, one of GetLength() or more gives 1,
    // NaN gives 0.
    double GetTFromLength(double length) const;

    // Appends an adaptive flattening of the segment to out (P0 first only when out is empty, so that
    // consecutive segments share their joint): halving at t = 1/2 until each piece's control legs are
    // within the tolerance, each finished piece writing its P1, P2, P3. Every written point is thus within
    // one tolerance of the curve. The tolerance is the resolution, raised for long segments, which are
    // flattened more coarsely: to at least 3, 5, 10 or 100 once the chord exceeds 2000, 5000, 10000 or
    // 100000. Halving stops 16 levels deep whatever the tolerance (at most 3 * 2^16 + 1 points), so a
    // zero or NaN resolution or NaN coordinates cannot run away.
    void GetPolyline(CArray<DPoint, DPoint>& out) const;

    // Replaces out with a uniform flattening: P0, C(i/n) for 0 < i < n, P3. n starts at 20 and doubles
    // while the n-piece polyline's length differs from the 10-piece polyline's by more than the
    // resolution, at most ten times (n <= 20480).
    void GetPolylineEx(CArray<DPoint, DPoint>& out) const;

    // Reshapes the segment so that the curve passes through target at parameter t (clamped to [0, 1]).
    // At an end the anchor moves to target and takes its handle along. Inside, a segment without
    // handles first gets handles on its chord; then the handle farther from t is nudged by a weighted
    // share of the miss and the nearer one is solved so that C(t) = target. A NaN t or a non-finite
    // target leaves the segment as it was.
    void DragToPoint(double t, DPoint const& target);

    // The parameter of the curve point nearest p: a scan at steps of 0.01 from 0 (the parameter
    // accumulated by repeated addition, so the scan stops just short of 1), then 8 passes, each scanning
    // the neighbourhood of the best parameter so far at a tenth of the previous step. Only strictly
    // closer points replace the best one, so the first of equally near points wins. The answer is
    // accurate to about 1e-10 in t within the basin the coarse scan picked.
    double _GetCurveT(DPoint const& p) const;
    // The nearest-parameter query of the path editor: the same answer as _GetCurveT.
    double GetNearestCurvePointT(DPoint const& p) const { return _GetCurveT(p); }

    // Writes the segment back into the two entries it was made from: P0 to a's anchor, P1 to a's
    // after-handle, P2 to b's before-handle, P3 to b's anchor. a's before-handle and b's after-handle
    // belong to the neighbouring segments and are left alone.
    void GetBPoints(BPOINT& a, BPOINT& b) const;

    // The summed GetLength() of the segments points[i] - points[i + 1]: all size - 1 of them, or only
    // the first `last` when 0 <= last < size - 1.
    static double GetBPointArrayLength(CArray<BPOINT, BPOINT> const& points, int last);

  protected:
    // Length of the polyline P0, C(1/n), ..., C((n - 1)/n), P3 (n below 1 counts as 1).
    double GetL(int n) const;
    // Recursive flattening of the cubic held in b by halving (de Casteljau at t = 1/2) until every
    // leg of its control polygon is at most b->tolerance, appending each finished piece's P1, P2, P3.
    void GetBArray(BEZIER* b) const;

  private:
    DPoint p0_;
    DPoint p1_;
    DPoint p2_;
    DPoint p3_;
    double resolution_ = 1.0;
    bool expandStraightLines_ = true;
};
