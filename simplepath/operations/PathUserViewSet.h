#pragma once

// The set of views a user has open on a design: a placeholder without state for host code.
class PathUserViewSet {
  public:
    PathUserViewSet() = default;
    PathUserViewSet(PathUserViewSet const&) = default;
    PathUserViewSet& operator=(PathUserViewSet const&) = default;
};
