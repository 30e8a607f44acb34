#pragma once

#include "toolkit/CubicChain.h"

#include "simplepath/path/SimplePath.h"

#include <memory>

namespace sptool {

// One chain as a library path, each vertex's mode inferred from its handle directions alone (so a vertex
// with a retracted handle comes out smooth); null when it cannot be made. An open chain that ends where
// it started stays open and keeps its own last vertex.
std::unique_ptr<SimplePath> pathOfChainInferringModes(CubicChain const& chain);

// One path as a chain again: a lone vertex is a chain without segments (one segment round to itself when
// the path is closed).
CubicChain chainOfPath(SimplePath const& path);

} // namespace sptool
