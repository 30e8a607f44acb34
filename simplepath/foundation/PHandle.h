#pragma once

#include "simplepath/interfaces/PRefCount.h"

#include <cstdint>

// A reference-counted owning handle. Every handle to one object shares one control block; the last
// handle to let go deletes the object through its virtual destructor. The block and its count are
// only touched under the process-wide reference-count lock, and the object is deleted after the lock
// is released, so a destructor may itself create or drop handles.
template <class T> class PHandle {
  public:
    PHandle() : refCount(new PRefCount(nullptr)) {}
    PHandle(T* object) : refCount(new PRefCount(object)) {}
    PHandle(PHandle const& other) {
        lockRefCount();
        refCount = other.refCount;
        if (refCount != nullptr) {
            ++*refCount;
            unlockRefCount();
            return;
        }
        unlockRefCount();
        refCount = new PRefCount(nullptr);
    }
    virtual ~PHandle() { unlinkAndLink(nullptr); }
    PHandle& operator=(PHandle const& other) {
        if (this != &other) {
            lockRefCount();
            PRefCount* const block = other.refCount;
            unlockRefCount();
            unlinkAndLink(block);
        }
        return *this;
    }

    T* operator->() const {
        lockRefCount();
        T* const object = refCount != nullptr ? static_cast<T*>(refCount->pointer()) : nullptr;
        unlockRefCount();
        return object;
    }
    // No check for a handle without a block: such a handle only exists after detach() failed to allocate.
    T& operator*() const {
        lockRefCount();
        T* const object = static_cast<T*>(refCount->pointer());
        unlockRefCount();
        return *object;
    }

    // Equal when both have a block and the blocks hold the same object (two null handles are equal).
    bool operator==(PHandle const& other) const {
        lockRefCount();
        bool const equal = refCount != nullptr && other.refCount != nullptr &&
                           refCount->pointer() == other.refCount->pointer();
        unlockRefCount();
        return equal;
    }
    bool operator!=(PHandle const& other) const { return !(*this == other); }
    // Ordered by control block, not by object: two handles made separately from one pointer differ.
    bool operator<(PHandle const& other) const { return blockAddress() < other.blockAddress(); }
    bool operator>(PHandle const& other) const { return blockAddress() > other.blockAddress(); }

    bool isNull() const {
        lockRefCount();
        bool const null = refCount == nullptr || refCount->pointer() == nullptr;
        unlockRefCount();
        return null;
    }
    bool isValid() const { return !isNull(); }

    // Takes the object out of a handle that is its only owner: the handle becomes null and the caller
    // owns the object. A shared object (or a handle without a block) gives null and changes nothing.
    T* detach() {
        PRefCount* const fresh = new PRefCount(nullptr);
        lockRefCount();
        PRefCount* const old = refCount;
        if (old == nullptr || old->value() != 1) {
            unlockRefCount();
            delete fresh;
            return nullptr;
        }
        refCount = fresh;
        unlockRefCount();
        T* const object = static_cast<T*>(old->pointer());
        delete old;
        return object;
    }

    PRefCount* refCount = nullptr;

  private:
    std::uintptr_t blockAddress() const {
        lockRefCount();
        auto const address = reinterpret_cast<std::uintptr_t>(refCount);
        unlockRefCount();
        return address;
    }

    void unlinkAndLink(PRefCount* block) {
        lockRefCount();
        PRefCount* const old = refCount;
        refCount = block;
        if (block != nullptr) {
            ++*block;
        }
        if (old == nullptr) {
            unlockRefCount();
            return;
        }
        long const remaining = old->decrement();
        unlockRefCount();
        if (remaining == 0) {
            T* const object = static_cast<T*>(old->pointer());
            delete old;
            delete object;
        }
    }
};
