#pragma once

// A user's workspace around a design: a placeholder without state for host code.
class PathUserWorkspace {
  public:
    PathUserWorkspace() = default;
    PathUserWorkspace(PathUserWorkspace const&) = default;
    PathUserWorkspace& operator=(PathUserWorkspace const&) = default;
};
