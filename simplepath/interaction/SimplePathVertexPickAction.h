#pragma once

#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathVertexTriple.h"

// What a finished drag hands to the operation factory: the triple as it was picked (its three vertex
// pointers and mode) and the locations and mode it shall have. A plain value; it owns no vertex.
class SimplePathVertexPickAction {
  public:
    SimplePathVertexPickAction() = default;
    SimplePathVertexPickAction(SimplePathVertexTriple const& vertexTriple,
                               SimplePathLocationTriple const& locationTriple)
        : vertexTriple_(vertexTriple), locationTriple_(locationTriple) {}

    SimplePathVertexTriple const& getVertexTriple() const { return vertexTriple_; }
    SimplePathLocationTriple const& getLocationTriple() const { return locationTriple_; }

  private:
    SimplePathVertexTriple vertexTriple_;
    SimplePathLocationTriple locationTriple_;
};
