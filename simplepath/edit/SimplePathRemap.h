#pragma once

#include <cstddef>
#include <list>
#include <map>

#include "simplepath/foundation/PHashablePointer.h"

class SimplePath;

// Which paths replace which: an old path maps to every path that took its place, in the order the
// replacements were recorded (a split gives two, a join maps two old paths to one). Paths are not
// owned.
class SimplePathRemap {
  public:
    void insert(PHashablePointer<SimplePath> const& old, PHashablePointer<SimplePath> const& replacement);

    // The first replacement recorded for `old` into `replacement`; false, and `replacement`
    // untouched, when `old` has none.
    bool find(PHashablePointer<SimplePath> const& old, PHashablePointer<SimplePath>& replacement) const;
    // Appends every replacement of `old`, in recording order; false when there is none.
    bool findAll(PHashablePointer<SimplePath> const& old, std::list<PHashablePointer<SimplePath>>& out) const;

    bool empty() const { return entries.empty(); }
    std::size_t size() const { return entries.size(); }
    std::multimap<PHashablePointer<SimplePath>, PHashablePointer<SimplePath>> const& getEntries() const {
        return entries;
    }

  private:
    // std::multimap keeps entries with equal keys in insertion order, which is the recording order.
    std::multimap<PHashablePointer<SimplePath>, PHashablePointer<SimplePath>> entries;
};
