#pragma once

// The user's console on a design: a placeholder without state. Its virtual slots are reserved, so that
// a host deriving from it keeps its own slots in place when the console gains members; each does
// nothing here.
class PathUserConsole {
  public:
    PathUserConsole() = default;
    PathUserConsole(PathUserConsole const&) = default;
    PathUserConsole& operator=(PathUserConsole const&) = default;
    virtual ~PathUserConsole();

    virtual void reserved1();
    virtual void reserved2();
    virtual void reserved3();
    virtual void reserved4();
    virtual void reserved5();
    virtual void reserved6();
    virtual void reserved7();
    virtual void reserved8();
};
