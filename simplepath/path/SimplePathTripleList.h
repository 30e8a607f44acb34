#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>
#include <vector>

#include "simplepath/interfaces/DPoint.h"
#include "simplepath/path/SimplePathVertexTriple.h"

// The triples of one path in path order, stored contiguously: index access is constant time and
// iterators are plain positions in the array. Inserting or removing a triple moves the later ones;
// any change of length may move the whole array and so invalidates iterators.
//
// Ownership. The list refers to vertices it does not manage, with one exception: its destructor
// deletes the vertices of every triple still in it. Copies are shallow (the same vertex pointers),
// meant for scratch lists that are emptied with removeAll() before they die; a shallow copy destroyed
// with triples in it would delete vertices that another list still uses.
//
// Change count. Every member that changes the list (its triples, their order, modes or the locations of
// their vertices) raises a counter, so that a structure derived from the path, such as a spatial index,
// can tell in constant time whether it still describes the path. Reserving storage changes nothing.
//
// Growing the storage can throw std::bad_alloc; nothing else here throws.
class SimplePathTripleList {
    // A position in the array. A forward iterator points at its triple. A reverse one walks from the
    // last triple towards the first and holds the position just after its triple, so that rend()
    // (before the first triple) needs no address outside the array.
    template <class Triple, bool Reverse> class BasicIterator {
      public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = SimplePathVertexTriple;
        using difference_type = std::ptrdiff_t;
        using pointer = Triple*;
        using reference = SimplePathVertexTriple const&;

        BasicIterator() = default;
        template <class Other, class = std::enable_if_t<std::is_convertible_v<Other*, Triple*>>>
        BasicIterator(BasicIterator<Other, Reverse> const& other) : at(other.at) {}

        SimplePathVertexTriple const& operator*() const { return *operator->(); }
        Triple* operator->() const { return Reverse ? at - 1 : at; }
        BasicIterator& operator++() {
            at += kStep;
            return *this;
        }
        BasicIterator operator++(int) {
            BasicIterator const before = *this;
            at += kStep;
            return before;
        }
        BasicIterator& operator--() {
            at -= kStep;
            return *this;
        }
        BasicIterator operator--(int) {
            BasicIterator const before = *this;
            at -= kStep;
            return before;
        }
        bool operator==(BasicIterator const& other) const { return at == other.at; }
        bool operator!=(BasicIterator const& other) const { return at != other.at; }

      private:
        friend class SimplePathTripleList;
        template <class, bool> friend class BasicIterator;
        static constexpr std::ptrdiff_t kStep = Reverse ? -1 : 1;
        explicit BasicIterator(Triple* position) : at(position) {}
        Triple* at = nullptr;
    };

  public:
    using Iterator = BasicIterator<SimplePathVertexTriple, false>;
    using ConstIterator = BasicIterator<SimplePathVertexTriple const, false>;
    using ReverseIterator = BasicIterator<SimplePathVertexTriple, true>;
    using ConstReverseIterator = BasicIterator<SimplePathVertexTriple const, true>;

    SimplePathTripleList() = default;
    SimplePathTripleList(SimplePathTripleList const& other) = default;
    SimplePathTripleList& operator=(SimplePathTripleList const& other);
    // Takes the triples (and with them the duty to delete their vertices); the source is left empty.
    SimplePathTripleList(SimplePathTripleList&& other) noexcept;
    SimplePathTripleList& operator=(SimplePathTripleList&& other) noexcept;
    ~SimplePathTripleList();

    int length() const { return static_cast<int>(triples.size()); }
    void reserve(int count);
    // Grows with every change of the list; two equal readings mean that nothing changed in between.
    std::uint64_t changeCount() const { return changes; }
    // Whether every triple refers to three vertices of the library's own class (none null, none of a
    // host's class), so that a walk may read their locations directly instead of through a virtual call.
    // Turns false when any other vertex comes in and true again only when the list is emptied.
    bool holdsPlainVertices() const { return plain; }

    // No bounds checks: the index must be in [0, length()).
    SimplePathVertexTriple operator[](int index) { return triples[static_cast<std::size_t>(index)]; }
    SimplePathVertexTriple const& operator[](int index) const {
        return triples[static_cast<std::size_t>(index)];
    }
    SimplePathVertexTriple get(int index) { return triples[static_cast<std::size_t>(index)]; }
    SimplePathVertexTriple const& get(int index) const { return triples[static_cast<std::size_t>(index)]; }

    Iterator begin() { return Iterator(triples.data()); }
    Iterator end() { return Iterator(triples.data() + triples.size()); }
    ConstIterator begin() const { return ConstIterator(triples.data()); }
    ConstIterator end() const { return ConstIterator(triples.data() + triples.size()); }
    ReverseIterator rbegin() { return ReverseIterator(triples.data() + triples.size()); }
    ReverseIterator rend() { return ReverseIterator(triples.data()); }
    ConstReverseIterator rbegin() const { return ConstReverseIterator(triples.data() + triples.size()); }
    ConstReverseIterator rend() const { return ConstReverseIterator(triples.data()); }

    // The iterator of triple `index` (no bounds check; length() gives end()), and back.
    Iterator iteratorAt(int index) { return Iterator(triples.data() + index); }
    ConstIterator iteratorAt(int index) const { return ConstIterator(triples.data() + index); }
    int indexOf(ConstIterator position) const { return static_cast<int>(position.at - triples.data()); }
    // The triples as one array of length() entries (null when there are none).
    SimplePathVertexTriple const* data() const { return triples.data(); }

    void push_back(SimplePathVertexTriple const& triple) {
        triples.push_back(triple);
        notePlainness(triple);
        ++changes;
    }
    // push_back for a triple the path has just made itself, whose vertices are known to be plain.
    void appendMade(SimplePathVertexTriple const& triple) {
        triples.push_back(triple);
        ++changes;
    }
    void push_front(SimplePathVertexTriple const& triple);
    // Inserts before `position`; returns the iterator of the new triple.
    Iterator insert(Iterator position, SimplePathVertexTriple const& triple);
    // Erases one triple without deleting its vertices; returns the iterator of the triple after it.
    Iterator remove(Iterator position);
    // Erases every triple without deleting any vertex.
    void removeAll() {
        triples.clear();
        plain = true;
        ++changes;
    }
    // Moves the triple at `position` to the end (one step of turning a closed path's start).
    void cut_and_append(Iterator position);

    void setTriple(Iterator position, SimplePathVertexTriple const& triple) {
        *position.at = triple;
        notePlainness(triple);
        ++changes;
    }
    // Moves the triple's first, anchor and last vertices, in that order.
    void setTripleLocations(Iterator position, DPoint const& first, DPoint const& anchor, DPoint const& last);
    void setTripleMode(Iterator position, SimplePathVertexTriple::VertexTripleMode mode) {
        position.at->mode = mode;
        ++changes;
    }

  private:
    std::ptrdiff_t offset(ConstIterator position) const { return position.at - triples.data(); }
    // Clears `plain` unless the triple's three vertices are the library's own.
    void notePlainness(SimplePathVertexTriple const& triple) {
        if (plain && !isPlain(triple)) {
            plain = false;
        }
    }
    static bool isPlain(SimplePathVertexTriple const& triple);

    std::vector<SimplePathVertexTriple> triples;
    std::uint64_t changes = 0;
    bool plain = true;
};
