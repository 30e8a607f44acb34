#include "simplepath/path/SimplePathSpatialIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "simplepath/interfaces/P2DMatrix.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/detail/Tolerances.h"
#include "simplepath/path/detail/SimplePathSegmentReader.h"

// Why the pruning leaves every answer exactly that of the linear member: each query below visits every
// segment (or vertex) that the member could answer with, and runs on it the very computation the member
// runs, on the very same doubles (the segments are read by the same reader), keeping the member's order
// or tie rule. A box is passed over only when a test on it proves that no segment or vertex inside could
// answer, and every such test is monotone in the box: the computed lower bound for a box is never above
// the same bound computed for a smaller box inside it, because rounding preserves order. So the proof for
// a leaf's box carries over to the boxes above it.

namespace {

using Box = SimplePathSpatialIndex::Box;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr Box kEmpty = {kInfinity, kInfinity, -kInfinity, -kInfinity};
constexpr Box kEverything = {-kInfinity, -kInfinity, kInfinity, kInfinity};

// The control box of a segment, widened for the rounding of evaluated points (SimplePathControlBox, the
// box the linear walks prune with). A NaN among the control points makes the box unbounded: such a
// segment is never pruned, so it is treated exactly as the member treats it.
Box segmentBox(PBezier const& b) {
    // One sum of all eight coordinates is NaN when any of them is NaN (or infinite, or so large that the
    // sum overflows); those segments get the unbounded box, which is merely cautious for the finite ones.
    double const sum = b[0].x + b[0].y + b[1].x + b[1].y + b[2].x + b[2].y + b[3].x + b[3].y;
    if (!(sum - sum == 0.0)) {
        return kEverything;
    }
    SimplePathControlBox const c(b);
    return {c.minX, c.minY, c.maxX, c.maxY};
}

// Union by comparisons, so that a NaN coordinate is left out (a vertex at NaN can never be hit).
void include(Box& box, double x, double y) {
    box.minX = x < box.minX ? x : box.minX;
    box.minY = y < box.minY ? y : box.minY;
    box.maxX = x > box.maxX ? x : box.maxX;
    box.maxY = y > box.maxY ? y : box.maxY;
}

void include(Box& box, Box const& other) {
    include(box, other.minX, other.minY);
    include(box, other.maxX, other.maxY);
}

void include(Box& box, SimplePathVertex const* vertex) {
    if (vertex != nullptr) {
        DPoint const p = SimplePathSegmentReader::locationOf(vertex);
        include(box, p.x, p.y);
    }
}

// A lower bound of the squared distance from p to any point in the box, computed as the queries compute
// distances; 0 when p is inside or anything is NaN (never prunes then). The formula is that of
// SimplePathControlBox::squaredDistanceBound.
double squaredGap(Box const& box, DPoint const& p) {
    auto const gap = [](double below, double above) {
        return below > 0.0 ? below : (above > 0.0 ? above : 0.0);
    };
    double const dx = gap(box.minX - p.x, p.x - box.maxX);
    double const dy = gap(box.minY - p.y, p.y - box.maxY);
    return dx * dx + dy * dy;
}

// The largest of the coordinates' magnitudes among the curve's control points and p: the scale of the
// rounding in anything computed from them.
double scaleOf(PBezier const& b, DPoint const& p) {
    double scale = std::max(std::fabs(p.x), std::fabs(p.y));
    for (int i = 0; i < 4; ++i) {
        scale = std::max(scale, std::max(std::fabs(b[i].x), std::fabs(b[i].y)));
    }
    return scale;
}

// A lower bound of the squared distance from p to any evaluated point of the curve, tighter than its box:
// the curve lies in the convex hull of its control points, so the distance to that hull (zero inside it),
// less kRoundingGuard times the coordinates' scale for the rounding of both that distance and the
// evaluated points. The hull is the union of the four triangles of three control points, and its edges
// are among the six segments between two control points (the others lie inside it). Gives 0 unless all
// coordinates are finite (and their sum too), so it never prunes then.
double hullGap(PBezier const& b, DPoint const& p) {
    if (!std::isfinite(p.x + p.y + b[0].x + b[0].y + b[1].x + b[1].y + b[2].x + b[2].y + b[3].x + b[3].y)) {
        return 0.0;
    }
    auto const side = [&p](DPoint const& o, DPoint const& a) {
        return (a.x - o.x) * (p.y - o.y) - (a.y - o.y) * (p.x - o.x);
    };
    auto const inTriangle = [&](int i, int j, int k) {
        double const c1 = side(b[i], b[j]);
        double const c2 = side(b[j], b[k]);
        double const c3 = side(b[k], b[i]);
        return (c1 >= 0.0 && c2 >= 0.0 && c3 >= 0.0) || (c1 <= 0.0 && c2 <= 0.0 && c3 <= 0.0);
    };
    if (inTriangle(0, 1, 2) || inTriangle(0, 1, 3) || inTriangle(0, 2, 3) || inTriangle(1, 2, 3)) {
        return 0.0;
    }
    double nearest = std::numeric_limits<double>::infinity();
    for (int i = 0; i < 4; ++i) {
        for (int j = i + 1; j < 4; ++j) {
            DVector const edge = b[j] - b[i];
            DVector const off = p - b[i];
            double const length = edge.dot(edge);
            double t = length > 0.0 ? off.dot(edge) / length : 0.0;
            t = t < 0.0 ? 0.0 : (t > 1.0 ? 1.0 : t);
            DVector const gap = off - t * edge;
            nearest = std::min(nearest, gap.dot(gap));
        }
    }
    double const d = std::sqrt(nearest) - simplepath_tolerance::kRoundingGuard * scaleOf(b, p);
    return d > 0.0 ? d * d : 0.0;
}

DPoint centre(Box const& box) {
    return {0.5 * box.minX + 0.5 * box.maxX, 0.5 * box.minY + 0.5 * box.maxY};
}

SimplePath::Result storeVertex(SimplePathVertex* picked, SimplePathVertex*& vertex) {
    if (picked == nullptr) {
        return SimplePath::Failure;
    }
    vertex = picked;
    return SimplePath::Success;
}

} // namespace

SimplePath::Result SimplePathSpatialIndex::build(SimplePath const& source) {
    clear();
    int const n = source.numTriples();
    int const segments = n == 0 ? 0 : (source.isClosedSimplePath() != 0 ? n : n - 1);
    int count[kMaxLevels];
    int start[kMaxLevels];
    int depth = 0;
    int total = 0; // boxes stored, all levels
    if (n > 0) {
        int c = n;
        for (;;) {
            count[depth] = c;
            start[depth] = total;
            total += c;
            ++depth;
            if (c == 1) {
                break;
            }
            c = (c + kFanOut - 1) / kFanOut;
        }
    }
    try {
        curves.resize(static_cast<std::size_t>(segments));
        boxes.resize(static_cast<std::size_t>(total));
    } catch (std::bad_alloc const&) {
        curves = std::vector<PBezier>();
        boxes = std::vector<Box>();
        return SimplePath::Failure;
    }
    for (int k = 0; k < depth; ++k) {
        levelCount[k] = count[k];
        levelStart[k] = start[k];
    }
    levels = depth;
    path = &source;
    triples = n;
    closed = source.isClosedSimplePath() != 0;
    computeBoxes();
    changeCount = source.getTripleList().changeCount();
    return SimplePath::Success;
}

SimplePath::Result SimplePathSpatialIndex::refit() {
    if (path == nullptr || path->numTriples() != triples || (path->isClosedSimplePath() != 0) != closed) {
        return SimplePath::Failure;
    }
    computeBoxes();
    changeCount = path->getTripleList().changeCount();
    return SimplePath::Success;
}

void SimplePathSpatialIndex::clear() {
    path = nullptr;
    changeCount = 0;
    triples = 0;
    closed = false;
    levels = 0;
    curves.clear();
    boxes.clear();
}

bool SimplePathSpatialIndex::isCurrent() const {
    return path != nullptr && path->getTripleList().changeCount() == changeCount &&
           path->numTriples() == triples && (path->isClosedSimplePath() != 0) == closed;
}

inline SimplePathSpatialIndex::Box SimplePathSpatialIndex::box(int level, int index) const {
    return boxes[static_cast<std::size_t>(levelStart[level] + index)];
}

void SimplePathSpatialIndex::prefetchParts(int level, int index) const {
#if defined(__GNUC__) || defined(__clang__)
    if (level > 0) {
        // The parts span 128 bytes, two or three cache lines.
        Box const* const parts = &boxes[static_cast<std::size_t>(levelStart[level - 1] + kFanOut * index)];
        __builtin_prefetch(parts);
        __builtin_prefetch(parts + kFanOut / 2);
        __builtin_prefetch(parts + kFanOut - 1);
    }
#else
    (void)level;
    (void)index;
#endif
}

// The control points as the linear members read them (the same reader, so the same doubles); then level 1
// from runs of segment boxes and the vertices of their triples, and every higher level from unions.
void SimplePathSpatialIndex::computeBoxes() {
    if (levels == 0) {
        return;
    }
    SimplePathTripleList const& list = path->getTripleList();
    SimplePathSegmentReader const reader(list, closed ? 1 : 0);
    PBezier* const copied = curves.data();
    Box* const bottom = boxes.data();
    reader.forward([copied, bottom](int s, PBezier const& b) {
        copied[s] = b;
        bottom[s] = segmentBox(b);
        return true;
    });
    for (int i = static_cast<int>(curves.size()); i < triples; ++i) {
        bottom[i] = kEmpty; // the last triple of an open path starts no segment
    }
    for (int k = 1; k < levels; ++k) {
        Box* const here = &boxes[static_cast<std::size_t>(levelStart[k])];
        int const belowCount = levelCount[k - 1];
        for (int j = 0; j < levelCount[k]; ++j) {
            Box b = box(k - 1, kFanOut * j);
            for (int i = kFanOut * j + 1; i < kFanOut * j + kFanOut && i < belowCount; ++i) {
                include(b, box(k - 1, i));
            }
            if (k == 1) {
                for (int i = kFanOut * j; i < kFanOut * j + kFanOut && i < triples; ++i) {
                    SimplePathVertexTriple const& triple = list[i];
                    include(b, triple.first);
                    include(b, triple.anchor);
                    include(b, triple.last);
                }
            }
            here[j] = b;
        }
    }
}

template <class Keep, class AtBottom>
bool SimplePathSpatialIndex::walkDescending(int bottom, Keep const& keep, AtBottom const& atBottom) const {
    if (levels == 0 || bottom > levels - 1) {
        return true;
    }
    struct Node {
        int level, index;
    };
    Node stack[kStackDepth];
    int top = 0;
    stack[top++] = {levels - 1, 0};
    while (top > 0) {
        Node const node = stack[--top];
        if (!keep(box(node.level, node.index))) {
            continue;
        }
        if (node.level == bottom) {
            if (!atBottom(node.index)) {
                return false;
            }
            continue;
        }
        // The latest part goes on top, to be walked first.
        int const first = kFanOut * node.index;
        int const end = std::min(first + kFanOut, levelCount[node.level - 1]);
        for (int child = first; child < end; ++child) {
            stack[top++] = {node.level - 1, child};
        }
    }
    return true;
}

SimplePath::Result SimplePathSpatialIndex::findClosestPosition(DPoint const& point,
                                                               SimplePathPosition& position) const {
    double squaredDistance = 0.0;
    return findClosestPosition(point, position, squaredDistance);
}

// The member's answer is the end anchor or the segment of least squared distance (each segment solved by
// PBezier::findNearestPointTValue, clamped to [0, 1]), the lowest segment on a tie, a segment winning a
// tie with the end anchor. Ties are settled by the segment index, so the order of solving does not matter.
//
// Solving a segment costs as much as visiting a few dozen boxes, so the search runs in two passes. The
// first walks the boxes depth first, the nearest part first, and collects the segments whose box may hold
// the answer; it prunes with the nearest anchor seen so far, a distance some segment is sure to reach
// (with a margin for the rounding of the solver's own distance, so that a pruned box could neither win
// nor tie). The second solves the collected segments in the order of their box bounds and stops at the
// first bound beyond the best distance found, so that only segments that could still win are solved.
// Should more segments qualify than the pass can hold, the rest are solved as they are met.
SimplePath::Result SimplePathSpatialIndex::findClosestPosition(DPoint const& point,
                                                               SimplePathPosition& position,
                                                               double& squaredDistance) const {
    if (!isCurrent()) {
        return path == nullptr ? SimplePath::Failure
                               : path->findClosestPosition(point, position, squaredDistance);
    }
    SimplePathSegmentReader const reader(path->getTripleList(), closed ? 1 : 0);
    int const n = triples;
    if (n == 0) {
        return SimplePath::Failure;
    }
    if (n == 1) {
        position.setValues(0, 0.0);
        squaredDistance = 0.0;
        return SimplePath::Success;
    }
    int const segments = reader.segmentCount();
    int bestSegment = segments;
    double bestParameter = 0.0;
    double best = ::squaredDistance(reader.anchor(reader.endTriple()), point);
    auto const solve = [&](int s) {
        PBezier const& b = curves[static_cast<std::size_t>(s)];
        if (hullGap(b, point) > best) {
            return; // cannot win or tie
        }
        double t = b.findNearestPointTValue(point);
        t = t < 0.0 ? 0.0 : (t > 1.0 ? 1.0 : t);
        double const d = ::squaredDistance(b.bValue(t), point);
        if (d < best || (d == best && s < bestSegment)) {
            best = d;
            bestSegment = s;
            bestParameter = t;
        }
    };

    // Pass one. `reach` bounds the answer from above: the end anchor's distance (exact), or the distance of
    // an anchor of a collected segment, widened by a few ulps of the coordinates involved, since the solver
    // works in another basis and evaluates its answer with rounding of that size.
    auto const widened = [&point](PBezier const& b, double squared) {
        double const d = std::sqrt(squared) + simplepath_tolerance::kRoundingGuard * scaleOf(b, point);
        return d * d * (1.0 + simplepath_tolerance::kRoundingGuard);
    };
    struct Candidate {
        double bound;
        int segment;
    };
    constexpr int kMaxCandidates = 128;
    Candidate candidates[kMaxCandidates];
    int collected = 0;
    double reach = best;
    struct Node {
        int level, index;
        double bound;
    };
    Node stack[kStackDepth];
    int top = 0;
    // A box's visit reads its parts, likely far from anything read lately: ask for them as the box is
    // stacked, so that the memory is on its way while the walk works elsewhere.
    auto const push = [&](Node const& node) {
        prefetchParts(node.level, node.index);
        stack[top++] = node;
    };
    push({levels - 1, 0, squaredGap(box(levels - 1, 0), point)});
    while (top > 0) {
        Node const node = stack[--top];
        double const limit = reach < best ? reach : best;
        if (node.bound > limit) {
            continue;
        }
        if (node.level == 0) {
            int const s = node.index;
            if (s >= segments) {
                continue;
            }
            if (collected == kMaxCandidates) {
                solve(s);
                continue;
            }
            candidates[collected++] = {node.bound, s};
            PBezier const& b = curves[static_cast<std::size_t>(s)];
            double const nearerAnchor =
                std::min(::squaredDistance(b[0], point), ::squaredDistance(b[3], point));
            reach = std::min(reach, widened(b, nearerAnchor));
            continue;
        }
        // The parts within reach go on the stack farthest first, so that the nearest is searched first. When
        // the point lies in several (high up in the hierarchy, where boxes are large), the one whose centre
        // is nearer counts as nearer.
        int const level = node.level - 1;
        int const first = kFanOut * node.index;
        int const end = std::min(first + kFanOut, levelCount[level]);
        struct Part {
            double bound, centreDistance;
            int index;
        };
        Part parts[kFanOut];
        int kept = 0;
        for (int child = first; child < end; ++child) {
            Box const b = box(level, child);
            double const bound = squaredGap(b, point);
            if (bound > limit) {
                continue;
            }
            Part const part{bound, bound == 0.0 ? ::squaredDistance(centre(b), point) : 0.0, child};
            int at = kept++;
            for (; at > 0 &&
                   (parts[at - 1].bound < part.bound || (parts[at - 1].bound == part.bound &&
                                                         parts[at - 1].centreDistance < part.centreDistance));
                 --at) {
                parts[at] = parts[at - 1];
            }
            parts[at] = part;
        }
        for (int i = 0; i < kept; ++i) {
            push({level, parts[i].index, parts[i].bound});
        }
    }

    // Pass two: nearest bound first (box bounds are never NaN).
    std::sort(candidates, candidates + collected, [](Candidate const& a, Candidate const& b) {
        return a.bound < b.bound || (a.bound == b.bound && a.segment < b.segment);
    });
    for (int i = 0; i < collected; ++i) {
        if (candidates[i].bound > best) {
            break;
        }
        solve(candidates[i].segment);
    }
    position.setValues(bestSegment, bestParameter);
    squaredDistance = best;
    return SimplePath::Success;
}

// The member's order: the end anchor first when it lies within 1.0 of the line, then the segments from
// the last to the first, each one's crossings as intersectBezierWithXAxis returns them. The member skips a
// segment whose control points, carried onto the line's axis frame, lie strictly on one side of the axis;
// a box is passed over here only when the frame's y over the whole box is farther from zero than a bound
// on the rounding of that computation, so that every control point inside would be skipped too.
SimplePath::Result SimplePathSpatialIndex::findIntersections(DPoint const& a, DPoint const& b,
                                                             std::list<SimplePathPosition>& out) const {
    if (!isCurrent()) {
        return path == nullptr ? SimplePath::Failure
                               : path->pretransformFindIntersections(a, b, IdTrans<DPoint>(), out);
    }
    int const n = triples;
    if (n == 0) {
        return SimplePath::Failure;
    }
    SimplePathSegmentReader const reader(path->getTripleList(), closed ? 1 : 0);
    DVector const direction = b - a;
    P2DMatrix<double> const frame(a, direction, direction.ortho());
    double const determinant = frame.determinant();
    if (determinant == 0.0 || !std::isfinite(determinant)) {
        return SimplePath::Success;
    }
    P2DMatrix<double> const toAxis = frame.inverse();

    DPoint const endAnchor = reader.anchor(reader.endTriple());
    if (std::fabs(direction.cross(endAnchor - a)) < 1.0 * direction.length()) {
        SimplePathPosition end;
        end.setValues(reader.isClosed() ? 0 : n - 1, 0.0);
        out.push_back(end);
    }

    // y on the axis is oy + ax * x + ay * y, evaluated (as the member does) with a relative error of a few
    // ulps of |oy| + |ax x| + |ay y|, and so is the bound over the box; the margin allows the rounding guard
    // of that sum, many times both, plus the smallest normal double for underflow.
    double const oy = toAxis.origin().y, ax = toAxis.xAxis().y, ay = toAxis.yAxis().y;
    auto const mayCross = [oy, ax, ay](Box const& box) {
        double const lo =
            oy + (ax > 0.0 ? ax * box.minX : ax * box.maxX) + (ay > 0.0 ? ay * box.minY : ay * box.maxY);
        double const hi =
            oy + (ax > 0.0 ? ax * box.maxX : ax * box.minX) + (ay > 0.0 ? ay * box.maxY : ay * box.minY);
        double const reach = std::fabs(oy) +
                             std::fabs(ax) * std::fmax(std::fabs(box.minX), std::fabs(box.maxX)) +
                             std::fabs(ay) * std::fmax(std::fabs(box.minY), std::fabs(box.maxY));
        double const margin =
            simplepath_tolerance::kRoundingGuard * reach + std::numeric_limits<double>::min();
        return !(lo > margin || hi < -margin); // NaN anywhere keeps the box
    };
    std::vector<double> params; // made on the first segment that needs solving, then reused
    int const segments = reader.segmentCount();
    walkDescending(0, mayCross, [&](int s) {
        if (s >= segments) {
            return true;
        }
        PBezier const& mapped = curves[static_cast<std::size_t>(s)];
        PBezier const onAxis(toAxis * mapped[0], toAxis * mapped[1], toAxis * mapped[2], toAxis * mapped[3]);
        double const y0 = onAxis[0].y, y1 = onAxis[1].y, y2 = onAxis[2].y, y3 = onAxis[3].y;
        if ((y0 > 0.0 && y1 > 0.0 && y2 > 0.0 && y3 > 0.0) ||
            (y0 < 0.0 && y1 < 0.0 && y2 < 0.0 && y3 < 0.0)) {
            return true;
        }
        if (params.capacity() == 0) {
            params.reserve(8);
        }
        params.clear();
        intersectBezierWithXAxis(onAxis, params);
        for (double const u : params) {
            if (u >= 0.0 && u < 1.0) {
                SimplePathPosition crossing;
                crossing.setValues(s, u);
                out.push_back(crossing);
            }
        }
        return true;
    });
    return SimplePath::Success;
}

// The member's answer: the anchor strictly within the tolerance of the latest triple; failing that, the
// incoming or else the outgoing handle of the latest triple with a handle within it. The walk goes from
// the last triple to the first and stops at the first hit, anchors in one walk, handles in a second. A box
// whose distance bound is at least the tolerance holds no vertex that could be hit.
SimplePath::Result SimplePathSpatialIndex::pickVertex(DPoint const& point, double tolerance,
                                                      SimplePathVertex*& vertex) const {
    if (!isCurrent()) {
        return path == nullptr ? SimplePath::Failure : path->pickVertex(point, tolerance, vertex);
    }
    SimplePathTripleList const& list = path->getTripleList();
    double const limit = tolerance * tolerance;
    auto const hit = [&](SimplePathVertex const* v) {
        return v != nullptr && ::squaredDistance(SimplePathSegmentReader::locationOf(v), point) < limit;
    };
    if (triples == 1) {
        SimplePathVertexTriple const& t = list[0];
        SimplePathVertex* const picked =
            hit(t.anchor) ? t.anchor : (hit(t.first) ? t.first : (hit(t.last) ? t.last : nullptr));
        return storeVertex(picked, vertex);
    }
    auto const near = [&](Box const& box) { return !(squaredGap(box, point) >= limit); };
    SimplePathVertex* picked = nullptr;
    auto const pass = [&](bool anchors) {
        walkDescending(1, near, [&](int j) {
            for (int i = kFanOut * j + kFanOut - 1; i >= kFanOut * j; --i) {
                if (i >= triples) {
                    continue;
                }
                SimplePathVertexTriple const& t = list[i];
                picked = anchors ? (hit(t.anchor) ? t.anchor : nullptr)
                                 : (hit(t.first) ? t.first : (hit(t.last) ? t.last : nullptr));
                if (picked != nullptr) {
                    return false;
                }
            }
            return true;
        });
    };
    pass(true);
    if (picked == nullptr) {
        pass(false);
    }
    return storeVertex(picked, vertex);
}

// The member's procedure: the segments from the last to the first, each asked PBezier::findParameter
// (started at 0.5), the first parameter in [0, 1) or of exactly 1.0 answering; then the latest anchor
// strictly within the tolerance. findParameter answers only for a point strictly inside the control box
// grown by the tolerance, so boxes that fail that test on their (larger) extent are passed over.
SimplePath::Result SimplePathSpatialIndex::pickPosition(DPoint const& point, double tolerance,
                                                        SimplePathPosition& position) const {
    if (!isCurrent()) {
        return path == nullptr ? SimplePath::Failure : path->pickPosition(point, tolerance, position);
    }
    int const n = triples;
    if (n == 0) {
        return SimplePath::Failure;
    }
    SimplePathTripleList const& list = path->getTripleList();
    SimplePathSegmentReader const reader(list, closed ? 1 : 0);
    if (n > 1 && tolerance > 0.0) {
        int const segments = reader.segmentCount();
        auto const within = [&](Box const& box) {
            return point.x > box.minX - tolerance && point.x < box.maxX + tolerance &&
                   point.y > box.minY - tolerance && point.y < box.maxY + tolerance;
        };
        bool found = false;
        walkDescending(0, within, [&](int s) {
            if (s >= segments) {
                return true;
            }
            double const t = curves[static_cast<std::size_t>(s)].findParameter(point, 0.5, tolerance);
            if (t >= 0.0 && t < 1.0) {
                position.setValues(s, t);
                found = true;
            } else if (t == 1.0) {
                position.setValues(s + 1, 0.0);
                found = true;
            }
            return !found;
        });
        if (found) {
            return SimplePath::Success;
        }
    }
    double const limit = tolerance * tolerance;
    auto const hit = [&](int i) {
        SimplePathVertex const* const v = list[i].anchor;
        return v != nullptr && ::squaredDistance(SimplePathSegmentReader::locationOf(v), point) < limit;
    };
    int picked = -1;
    if (n == 1) {
        picked = hit(0) ? 0 : -1;
    } else {
        auto const near = [&](Box const& box) { return !(squaredGap(box, point) >= limit); };
        walkDescending(1, near, [&](int j) {
            for (int i = kFanOut * j + kFanOut - 1; i >= kFanOut * j; --i) {
                if (i < n && hit(i)) {
                    picked = i;
                    return false;
                }
            }
            return true;
        });
    }
    if (picked < 0) {
        return SimplePath::Failure;
    }
    position.setValues(picked, 0.0);
    return SimplePath::Success;
}

// 1 when a point of some segment's flattening at tolerance 1.0 lies strictly inside the open box, as the
// member decides; only the segments whose control box reaches into the box are flattened (the member's
// own pruning), and the first point inside ends the search.
int SimplePathSpatialIndex::inBox(DPoint const& boxMin, DPoint const& boxMax) const {
    if (!isCurrent()) {
        return path == nullptr ? 0 : path->pretransformInBox(IdTrans<DPoint>(), boxMin, boxMax);
    }
    auto const inside = [&](DPoint const& p) {
        return p.x > boxMin.x && p.y > boxMin.y && boxMax.x > p.x && boxMax.y > p.y;
    };
    SimplePathSegmentReader const reader(path->getTripleList(), closed ? 1 : 0);
    if (triples == 0) {
        return 0;
    }
    if (triples == 1) {
        return inside(reader.anchor(0)) ? 1 : 0;
    }
    auto const reaches = [&](Box const& box) {
        return !(box.maxX <= boxMin.x || box.maxY <= boxMin.y || box.minX >= boxMax.x ||
                 box.minY >= boxMax.y);
    };
    int const segments = reader.segmentCount();
    std::vector<DPoint> points; // made on the first segment that needs flattening, then reused
    int found = 0;
    walkDescending(0, reaches, [&](int s) {
        if (s >= segments) {
            return true;
        }
        points.clear();
        curves[static_cast<std::size_t>(s)].getPolyline(1.0, points);
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
