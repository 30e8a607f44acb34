#pragma once

#include "simplepath/foundation/PXArray.h"
#include "simplepath/path/SimplePathTripleList.h"

// Cached access to the triples of one path, for a caller that locates many positions on a path that
// does not change meanwhile. Made by SimplePath::startFastSession and freed by stopFastSession.
//
// It holds one iterator per triple, in path order, and never copies of vertices. The path uses it only
// while it still has as many triples as when the session started and still keeps them in the same
// storage; otherwise it falls back silently to its ordinary lookups. An edit that keeps both (moving
// vertices, changing a mode, replacing a triple) is not noticed: stop the session before editing.
struct SimplePathFastSession {
    PXArray<SimplePathTripleList::Iterator> tripleIterators;
};
