// A host that keeps a position on a path across an edit: it builds a circle, remembers the point of the
// outline nearest to the cursor, inserts a vertex before that point, and lets the change instruction
// carry the remembered position to where the same point of the outline now lies.
#include "simplepath/simplepath.h"

#include <cstdio>
#include <memory>

int main() {
    DPoint centre(0.0, 0.0);
    std::unique_ptr<SimplePath> circle(SimplePath::createCircleSP(centre, 100.0));

    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    if (circle->getMinMax(minX, minY, maxX, maxY) != SimplePath::Success) {
        return 1;
    }
    std::printf("circle of %d vertices, bounds (%.3f, %.3f) to (%.3f, %.3f)\n", circle->numTriples(), minX,
                minY, maxX, maxY);

    SimplePathPosition held;
    if (circle->findClosestPosition(DPoint(80.0, 80.0), held) != SimplePath::Success) {
        return 1;
    }
    DPoint before;
    if (circle->locatePosition(held, before) != SimplePath::Success) {
        return 1;
    }
    std::printf("nearest to the cursor: segment %d at t = %.4f, point (%.4f, %.4f)\n", held.getIndex(),
                held.getParameter(), before.x, before.y);

    SimplePathChangeInstruction change;
    SimplePathPosition insertAt;
    if (circle->makePosition(held.getIndex(), held.getParameter() / 2, insertAt) != SimplePath::Success) {
        return 1;
    }
    if (circle->addVertexAtPosition(insertAt, change) != SimplePath::Success) {
        return 1;
    }

    auto const moved = change.translate({PHashablePointer<SimplePath>(circle.get()), held});
    DPoint after;
    if (circle->locatePosition(moved.second, after) != SimplePath::Success) {
        return 1;
    }
    std::printf("after inserting a vertex before it: segment %d at t = %.4f, point (%.4f, %.4f)\n",
                moved.second.getIndex(), moved.second.getParameter(), after.x, after.y);
    return isEqual(before, after, 1e-9) ? 0 : 1;
}
