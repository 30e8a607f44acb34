#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <set>
#include <utility>

#include "simplepath/edit/SimplePathRemap.h"
#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/path/SimplePathPosition.h"

class SimplePath;
class SimplePathVertex;
class SimplePathPositionTransform;

// What an edit did: which vertices and paths it added and removed, which old paths were replaced by
// which new ones, and the chain of position transforms that carries a (path, position) pair across the
// edit. Primitives fill one in as they go; the caller reads it afterwards to bring its own references
// up to date.
//
// The instruction lists vertices and paths without owning them: whoever holds it decides what
// becomes of removed vertices. Vertices are kept as sets (each once); paths in insertion order.
//
// Position transforms are owned. A transform never changes once built, so a copy of the instruction
// shares its transforms with the original instead of duplicating them (their count is kept with
// them); each transform is deleted exactly once, when the last instruction holding it goes. Everything
// else (vertex sets, path lists, path map) is copied, so recording into the copy later leaves the
// original as it was.
class SimplePathChangeInstruction {
  public:
    using PathPosition = std::pair<PHashablePointer<SimplePath>, SimplePathPosition>;

    SimplePathChangeInstruction();
    SimplePathChangeInstruction(SimplePathChangeInstruction const& other);
    SimplePathChangeInstruction& operator=(SimplePathChangeInstruction const&) = delete;
    ~SimplePathChangeInstruction();

    void insertAdded(SimplePathVertex* vertex);
    void insertRemoved(SimplePathVertex* vertex);
    void insertAdded(PHashablePointer<SimplePath> const& path);
    void insertRemoved(PHashablePointer<SimplePath> const& path);

    // Appends `transform` to the chain and takes ownership of it. A null transform (what the factory
    // returns for a transform it refuses to make) is not recorded: the result is false. A transform
    // recorded twice is applied twice and deleted once.
    bool insertPositionTransform(SimplePathPositionTransform* transform);
    // Records that `replacement` took the place of `old` (once per replacement).
    void insertRefMap(PHashablePointer<SimplePath> const& old,
                      PHashablePointer<SimplePath> const& replacement);

    // Each adds what was recorded to `out`, which is not cleared first.
    void simplePathVerticesAdded(std::set<SimplePathVertex*>& out) const;
    void simplePathVerticesRemoved(std::set<SimplePathVertex*>& out) const;
    void simplePathsAdded(std::list<PHashablePointer<SimplePath>>& out) const;
    void simplePathsRemoved(std::list<PHashablePointer<SimplePath>>& out) const;

    SimplePathRemap const& getRefMap() const;
    std::size_t numPositionTransforms() const;

    // The pair carried through every recorded transform, in recording order.
    std::pair<PHashablePointer<SimplePath>, SimplePathPosition>
    translate(std::pair<PHashablePointer<SimplePath>, SimplePathPosition> const& pair) const;
    // Empties `out`, then fills it with the paths that now stand for `path`: its replacements in the
    // path map, in recording order, if it has any; else nothing if it was removed; else `path` itself.
    void translate(PHashablePointer<SimplePath> const& path,
                   std::list<PHashablePointer<SimplePath>>& out) const;
    // Every pair of the list translated in place, as by the single-pair form.
    void translate(std::list<std::pair<PHashablePointer<SimplePath>, SimplePathPosition>>& pairs) const;

  private:
    struct Records;
    std::unique_ptr<Records> records;
};
