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
    circle->getMinMax(minX, minY, maxX, maxY);
    std::printf("circle of %d vertices, bounds (%.3f, %.3f) to (%.3f, %.3f)\n", circle->numTriples(), minX,
                minY, maxX, maxY);

    SimplePathPosition held;
    circle->findClosestPosition(DPoint(80.0, 80.0), held);
    DPoint before;
    circle->locatePosition(held, before);
    std::printf("nearest to the cursor: segment %d at t = %.4f, point (%.4f, %.4f)\n", held.getIndex(),
                held.getParameter(), before.x, before.y);

    SimplePathChangeInstruction change;
    SimplePathPosition insertAt;
    circle->makePosition(held.getIndex(), held.getParameter() / 2, insertAt);
    circle->addVertexAtPosition(insertAt, change);

    auto const moved = change.translate({PHashablePointer<SimplePath>(circle.get()), held});
    DPoint after;
    circle->locatePosition(moved.second, after);
    std::printf("after inserting a vertex before it: segment %d at t = %.4f, point (%.4f, %.4f)\n",
                moved.second.getIndex(), moved.second.getParameter(), after.x, after.y);
    return isEqual(before, after, 1e-9) ? 0 : 1;
}
