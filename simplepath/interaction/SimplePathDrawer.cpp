#include "simplepath/interaction/SimplePathDrawer.h"

// Hosts override only the optional members they use.
void SimplePathDrawer::drawHighlightedVertex(DPoint const&) {}
void SimplePathDrawer::beginDrawing() {}
void SimplePathDrawer::endDrawing() {}
