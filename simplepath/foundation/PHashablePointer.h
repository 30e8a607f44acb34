#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>

// A typed pointer that can be compared, ordered and hashed, used wherever the library refers to a path
// it does not own. It never owns and never counts: copying copies the address, destroying it leaves
// the object alone. Dereferencing checks nothing.
template <class T> class PHashablePointer {
  public:
    PHashablePointer() = default;
    PHashablePointer(T* object) : pointer(object) {}
    PHashablePointer(PHashablePointer const&) = default;
    virtual ~PHashablePointer() = default;
    PHashablePointer& operator=(PHashablePointer const& other) {
        pointer = other.pointer;
        return *this;
    }

    T* getPointer() { return pointer; }
    T const* getPointer() const { return pointer; }
    operator T*() const { return pointer; }
    T* operator->() const { return pointer; }
    T& operator*() const { return *pointer; }

    bool operator==(PHashablePointer const& other) const { return pointer == other.pointer; }
    bool operator!=(PHashablePointer const& other) const { return pointer != other.pointer; }
    bool operator==(T const* other) const { return pointer == other; }
    bool operator!=(T const* other) const { return pointer != other; }
    template <class U = T, class = std::enable_if_t<!std::is_const_v<U>>> bool operator==(U* other) const {
        return pointer == other;
    }
    template <class U = T, class = std::enable_if_t<!std::is_const_v<U>>> bool operator!=(U* other) const {
        return pointer != other;
    }
    bool operator==(std::nullptr_t) const { return pointer == nullptr; }
    bool operator!=(std::nullptr_t) const { return pointer != nullptr; }
    // Ordered by the addresses taken as unsigned numbers, so the order is total and stable.
    bool operator<(PHashablePointer const& other) const { return address() < other.address(); }
    bool operator>(PHashablePointer const& other) const { return address() > other.address(); }

    // The low 32 bits of the address times 1741, wrapping in 32-bit arithmetic.
    int hash() const {
        auto const low = static_cast<std::uint32_t>(address());
        return static_cast<int>(low * 1741u);
    }

    T* pointer = nullptr;

  private:
    std::uintptr_t address() const { return reinterpret_cast<std::uintptr_t>(pointer); }
};

template <class T> struct std::hash<PHashablePointer<T>> {
    std::size_t operator()(PHashablePointer<T> const& p) const noexcept {
        return static_cast<std::size_t>(static_cast<unsigned>(p.hash()));
    }
};
