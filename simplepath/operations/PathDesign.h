#pragma once

// The host's design, as this library sees it: a placeholder that host code may derive from or hold.
// It carries no state; its memento, likewise, records nothing.
class PathDesign {
  public:
    class Memento {
      public:
        Memento() = default;
        Memento(Memento const&) = default;
        Memento& operator=(Memento const&) = default;
    };

    PathDesign() = default;
    PathDesign(PathDesign const&) = default;
    PathDesign& operator=(PathDesign const&) = default;
};
