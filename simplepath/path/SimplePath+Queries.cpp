// SimplePath members: read-only geometry (bounds, top and bottom, length, the box test, the closest
// position, intersections with a line and the metric between positions).

#include <cmath>
#include <initializer_list>
#include <list>
#include <vector>

#include "simplepath/interfaces/P2DMatrix.h"
#include "simplepath/interfaces/detail/Tolerances.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/detail/SimplePathSegmentReader.h"

namespace {

constexpr double kIntSentinel = 2147483647.0;
constexpr double kDoubleSentinel = 1.7976931348623157e308;

// The rounding guard (64 ulps) of the largest magnitude among the values: far above the rounding of any
// curve coordinate computed from control coordinates no larger than these.
double roundingMargin(std::initializer_list<double> values) {
    double largest = 0.0;
    for (double v : values) {
        double const magnitude = v < 0.0 ? -v : v;
        largest = magnitude > largest ? magnitude : largest;
    }
    return simplepath_tolerance::kRoundingGuard * largest;
}

// The curve's exact extent, folded segment by segment from PBezier::localMinMax (end points and the
// zeros of the derivative, never the handles' extent). `sentinel` starts the minima and, negated, the
// maxima; an empty path fails with the outputs left there.
//
// Pruning: the anchors lie on the curve, so they are folded in first; a segment whose control box (which
// holds the curve, widened for rounding) lies within the extent found so far cannot widen it and is not
// solved. On a long path only the segments along the outermost stretches are solved.
SimplePath::Result extentOf(SimplePathSegmentReader const& reader, double sentinel, double& minXOut,
                            double& minYOut, double& maxXOut, double& maxYOut) {
    double minX = sentinel, minY = sentinel, maxX = -sentinel, maxY = -sentinel;
    SimplePath::Result result = SimplePath::Success;
    if (reader.numTriples() == 0) {
        result = SimplePath::Failure;
    } else if (reader.numTriples() == 1) {
        DPoint const p = reader.anchor(0);
        minX = maxX = p.x;
        minY = maxY = p.y;
    } else {
        reader.anchors([&](int, DPoint const& p) {
            minX = p.x < minX ? p.x : minX;
            maxX = p.x > maxX ? p.x : maxX;
            minY = p.y < minY ? p.y : minY;
            maxY = p.y > maxY ? p.y : maxY;
        });
        // With the anchors inside, a segment can only widen the extent when a handle reaches outside it.
        // The test uses the extent shrunk by a rounding margin, so that a segment whose computed extremes
        // might round past the extent is solved too.
        double innerMinX, innerMinY, innerMaxX, innerMaxY;
        auto const shrink = [&] {
            double const margin = roundingMargin({minX, minY, maxX, maxY});
            innerMinX = minX + margin;
            innerMinY = minY + margin;
            innerMaxX = maxX - margin;
            innerMaxY = maxY - margin;
        };
        shrink();
        auto const reachesOut = [&](DPoint const& h1, DPoint const& h2) {
            return h1.x < innerMinX || h2.x < innerMinX || h1.x > innerMaxX || h2.x > innerMaxX ||
                   h1.y < innerMinY || h2.y < innerMinY || h1.y > innerMaxY || h2.y > innerMaxY;
        };
        reader.forwardByHandles(reachesOut, [&](int, PBezier const& b) {
            b.localMinMax(minX, minY, maxX, maxY);
            shrink();
        });
    }
    minXOut = minX;
    minYOut = minY;
    maxXOut = maxX;
    maxYOut = maxY;
    return result;
}

// The walk of the closest-position queries, from the last segment to the first: a segment whose control
// box (which holds the curve, widened for rounding) lies farther from the point than `bound` or than the
// best distance so far could neither win nor tie, and is skipped; every other one is offered to `offer`,
// which updates `bestDistance`. A NaN never skips.
template <class Offer>
void walkNearSegments(SimplePathSegmentReader const& reader, DPoint const& point, double const& bestDistance,
                      double bound, Offer&& offer) {
    reader.backward([&](int s, PBezier const& b) {
        double const limit = bestDistance < bound ? bestDistance : bound;
        if (!(SimplePathControlBox(b).squaredDistanceBound(point) > limit)) {
            offer(s, b);
        }
        return true;
    });
}

} // namespace

SimplePath::Result SimplePath::getMinMax(double& minX, double& minY, double& maxX, double& maxY) const {
    return extentOf(SimplePathSegmentReader(tripleList, closed), kIntSentinel, minX, minY, maxX, maxY);
}

SimplePath::Result SimplePath::pretransformGetMinMax(ArbTrans<DPoint> const& transform, double& minX,
                                                     double& minY, double& maxX, double& maxY) const {
    return extentOf(SimplePathSegmentReader(tripleList, closed, &transform), kIntSentinel, minX, minY, maxX,
                    maxY);
}

SimplePath::Result SimplePath::pretransformGetMinMaxEx(ArbTrans<DPoint> const& transform, double& minX,
                                                       double& minY, double& maxX, double& maxY) const {
    return extentOf(SimplePathSegmentReader(tripleList, closed, &transform), kDoubleSentinel, minX, minY,
                    maxX, maxY);
}

// Each segment's top and bottom come from PBezier::localTopBottom; a later segment replaces them only
// when strictly higher (lower), so the earliest segment wins ties. The highest and lowest anchors bound
// the answer from inside: a segment whose control box stays strictly below the highest anchor and
// strictly above the lowest can hold neither the top nor the bottom, nor tie with them, and is not solved.
SimplePath::Result SimplePath::getTopBottom(DPoint& top, DPoint& bottom) const {
    top = DPoint(-kIntSentinel, -kIntSentinel);
    bottom = DPoint(kIntSentinel, kIntSentinel);
    SimplePathSegmentReader const reader(tripleList, closed);
    if (reader.numTriples() == 0) {
        return Failure;
    }
    if (reader.numTriples() == 1) {
        top = bottom = reader.anchor(0);
        return Success;
    }
    double highest = -kDoubleSentinel, lowest = kDoubleSentinel;
    reader.anchors([&](int, DPoint const& p) {
        highest = p.y > highest ? p.y : highest;
        lowest = p.y < lowest ? p.y : lowest;
    });
    reader.forward([&](int, PBezier const& b) {
        SimplePathControlBox const box(b);
        if (box.maxY < highest && box.minY > lowest) {
            return true;
        }
        DPoint segmentTop, segmentBottom;
        b.localTopBottom(segmentTop, segmentBottom);
        if (segmentTop.y > top.y) {
            top = segmentTop;
        }
        if (segmentBottom.y < bottom.y) {
            bottom = segmentBottom;
        }
        return true;
    });
    return Success;
}

// The sum of the mapped segments' lengths (PBezier::length, through arcLengths sixteen segments at a time so
// that their planning overlaps); each has a relative error of at most 1e-12, and so has the sum (all terms
// are positive). The segments are added in path order, as one length() per segment would add them.
void SimplePath::pretransformLength(ArbTrans<DPoint> const& transform, double& length) const {
    constexpr int kBatch = 16;
    PBezier batch[kBatch];
    double lengths[kBatch];
    int held = 0;
    double total = 0.0;
    auto const add = [&] {
        arcLengths(batch, held, lengths);
        for (int i = 0; i < held; ++i) {
            total += lengths[i];
        }
        held = 0;
    };
    SimplePathSegmentReader(tripleList, closed, &transform).forward([&](int, PBezier const& b) {
        batch[held++] = b;
        if (held == kBatch) {
            add();
        }
        return true;
    });
    add();
    length = total;
}

// Each mapped segment is flattened at tolerance 1.0 and its points are tested against the open box, in
// path order (the closing segment last). A segment whose control points' box cannot reach inside the
// box has no flattening point inside it and is passed over without flattening.
int SimplePath::pretransformInBox(ArbTrans<DPoint> const& transform, DPoint const& boxMin,
                                  DPoint const& boxMax) const {
    auto const inside = [&](DPoint const& p) {
        return p.x > boxMin.x && p.y > boxMin.y && boxMax.x > p.x && boxMax.y > p.y;
    };
    SimplePathSegmentReader const reader(tripleList, closed, &transform);
    if (reader.numTriples() == 0) {
        return 0;
    }
    if (reader.numTriples() == 1) {
        return inside(reader.anchor(0)) ? 1 : 0;
    }
    std::vector<DPoint> points; // reused by every segment, grown only when a flattening needs more room
    points.reserve(64);
    int found = 0;
    reader.forward([&](int, PBezier const& b) {
        if (!SimplePathControlBox(b).mayMeetOpenBox(boxMin, boxMax)) {
            return true;
        }
        points.clear();
        b.getPolyline(1.0, points);
        for (DPoint const& p : points) {
            if (inside(p)) {
                found = 1;
                return false;
            }
        }
        return true;
    });
    return found;
}

SimplePath::Result SimplePath::findClosestPosition(DPoint const& point, SimplePathPosition& position) const {
    double squaredDistance = 0.0;
    return findClosestPosition(point, position, squaredDistance);
}

// Method: the end anchor is the first candidate; then, from the last segment to the first, the nearest
// parameter of each segment (PBezier::findNearestPointTValue, global on the segment) competes, and a
// segment replaces the candidate when its squared distance is no larger, so the lowest segment wins ties.
// The accuracy is the kernel's: within 1e-12 of the segment's size of the true minimum.
//
// Pruning, which leaves the result exactly that of solving every segment: first the anchor nearest the
// point is found and the one or two segments meeting there are solved; the best of those and the end
// anchor is an upper bound of the final distance. Then, in the walk, a segment whose control box (which
// holds the curve, widened for rounding) lies farther than that bound or than the best so far is skipped
// unsolved: it could neither win nor tie. Only the few segments near the point are solved.
SimplePath::Result SimplePath::findClosestPosition(DPoint const& point, SimplePathPosition& position,
                                                   double& squaredDistance) const {
    SimplePathSegmentReader const reader(tripleList, closed);
    int const n = reader.numTriples();
    if (n == 0) {
        return Failure;
    }
    if (n == 1) {
        position = SimplePathPosition(0, 0.0);
        squaredDistance = 0.0;
        return Success;
    }
    int const segments = reader.segmentCount();
    auto const solve = [&point](PBezier const& b, double& t) {
        t = b.findNearestPointTValue(point);
        t = t < 0.0 ? 0.0 : (t > 1.0 ? 1.0 : t);
        return ::squaredDistance(b.bValue(t), point);
    };

    SimplePathPosition best(segments, 0.0);
    double bestDistance = ::squaredDistance(reader.anchor(reader.endTriple()), point);

    int nearest = 0;
    double nearestDistance = kDoubleSentinel;
    reader.anchors([&](int i, DPoint const& p) {
        double const d = ::squaredDistance(p, point);
        if (d < nearestDistance) {
            nearest = i;
            nearestDistance = d;
        }
    });
    double bound = bestDistance;
    double t = 0.0;
    if (nearest < segments) {
        bound = std::fmin(bound, solve(reader.segment(nearest), t));
    }
    int const before = nearest > 0 ? nearest - 1 : (reader.isClosed() ? n - 1 : -1);
    if (before >= 0) {
        bound = std::fmin(bound, solve(reader.segment(before), t));
    }

    walkNearSegments(reader, point, bestDistance, bound, [&](int s, PBezier const& b) {
        double const d = solve(b, t);
        if (bestDistance >= d) {
            best = SimplePathPosition(s, t);
            bestDistance = d;
        }
    });
    position = best;
    squaredDistance = bestDistance;
    return Success;
}

SimplePath::Result SimplePath::pretransformFindClosestPosition(DPoint const& point,
                                                               ArbTrans<DPoint> const& transform,
                                                               SimplePathPosition& position) const {
    double scratch = kDoubleSentinel;
    return pretransformFindClosestPosition(point, transform, position, scratch);
}

// Method: sampling. Each mapped segment, from the last to the first, is evaluated at t = 0.0, 0.1, 0.2, ...
// while t < 1.0, t accumulated by adding 0.1 (eleven samples, the last just below 1.0); a sample at no
// larger squared distance than the best so far becomes the candidate, so ties go to the lower segment and,
// within a segment, to the later sample. The answer is only as good as the samples: it is the nearest
// sample, not the nearest curve point. Every anchor is a sample (t = 0.0 gives the segment's start
// exactly) or the end anchor, so the nearest anchor bounds the answer; segments whose control box lies
// beyond that bound or the best so far are skipped, which cannot change the answer.
SimplePath::Result SimplePath::pretransformFindClosestPosition(DPoint const& point,
                                                               ArbTrans<DPoint> const& transform,
                                                               SimplePathPosition& position,
                                                               double& squaredDistance) const {
    SimplePathSegmentReader const reader(tripleList, closed, &transform);
    int const n = reader.numTriples();
    if (n == 0) {
        return Failure;
    }
    if (n == 1) {
        position = SimplePathPosition(0, 0.0);
        return Success;
    }
    SimplePathPosition best(reader.segmentCount(), 0.0);
    double bestDistance = ::squaredDistance(reader.anchor(reader.endTriple()), point);
    double bound = bestDistance;
    reader.anchors([&](int, DPoint const& p) {
        double const d = ::squaredDistance(p, point);
        bound = d < bound ? d : bound;
    });
    walkNearSegments(reader, point, bestDistance, bound, [&](int s, PBezier const& b) {
        for (double t = 0.0; t < 1.0; t += 0.1) {
            double const d = ::squaredDistance(b.bValue(t), point);
            if (d <= bestDistance) {
                best = SimplePathPosition(s, t);
                bestDistance = d;
            }
        }
    });
    position = best;
    squaredDistance = bestDistance;
    return Success;
}

// Method: the line through a and b is taken onto the x-axis (a to the origin, b to (1, 0)) by the inverse
// of the frame (a, b - a, ortho(b - a)); each mapped segment is carried along and intersectBezierWithXAxis
// gives its crossings (roots of the cubic y(t) to 1e-12). A segment whose four control points lie strictly
// on one side of the line cannot meet it and is not solved. Crossings at u = 1.0 are left to the segment
// that starts there, so an interior anchor on the line is reported once; the path's end anchor, which
// starts no segment, is tested first by its distance from the line (below 1.0). A line through two equal
// points has no direction and meets nothing.
SimplePath::Result SimplePath::pretransformFindIntersections(DPoint const& a, DPoint const& b,
                                                             ArbTrans<DPoint> const& transform,
                                                             std::list<SimplePathPosition>& out) const {
    SimplePathSegmentReader const reader(tripleList, closed, &transform);
    int const n = reader.numTriples();
    if (n == 0) {
        return Failure;
    }
    DVector const direction = b - a;
    P2DMatrix<double> const frame(a, direction, direction.ortho());
    double const determinant = frame.determinant();
    if (determinant == 0.0 || !std::isfinite(determinant)) {
        return Success;
    }
    P2DMatrix<double> const toAxis = frame.inverse();

    DPoint const endAnchor = reader.anchor(reader.endTriple());
    if (std::fabs(direction.cross(endAnchor - a)) < 1.0 * direction.length()) {
        out.push_back(SimplePathPosition(reader.isClosed() ? 0 : n - 1, 0.0));
    }
    std::vector<double> params; // reused by every segment; a cubic has at most three crossings
    params.reserve(8);
    reader.backward([&](int s, PBezier const& mapped) {
        PBezier const onAxis(toAxis * mapped[0], toAxis * mapped[1], toAxis * mapped[2], toAxis * mapped[3]);
        double const y0 = onAxis[0].y, y1 = onAxis[1].y, y2 = onAxis[2].y, y3 = onAxis[3].y;
        if ((y0 > 0.0 && y1 > 0.0 && y2 > 0.0 && y3 > 0.0) ||
            (y0 < 0.0 && y1 < 0.0 && y2 < 0.0 && y3 < 0.0)) {
            return true;
        }
        params.clear();
        intersectBezierWithXAxis(onAxis, params);
        for (double const u : params) {
            if (u >= 0.0 && u < 1.0) {
                out.push_back(SimplePathPosition(s, u));
            }
        }
        return true;
    });
    return Success;
}

// s - u in segments on an open path; on a closed path whichever of s - u and its wrap by n is shorter,
// the wrap when both are equally long.
double SimplePath::getInterPositionMetric(SimplePathPosition const& a, SimplePathPosition const& b) const {
    double const s = a.getIndex() + a.getParameter();
    double const u = b.getIndex() + b.getParameter();
    double const direct = s - u;
    if (closed == 0) {
        return direct;
    }
    double const n = numTriples();
    double const wrapped = s <= u ? direct + n : direct - n;
    return std::fabs(direct) < std::fabs(wrapped) ? direct : wrapped;
}
