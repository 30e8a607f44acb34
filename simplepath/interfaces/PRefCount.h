#pragma once

// The control block of a reference-counted handle: the object pointer and its count.
// The block does no locking itself; callers hold the process-wide lock below while they touch it.
class PRefCount {
  public:
    explicit PRefCount(void* object) : object_(object) {}
    PRefCount(PRefCount const&) = delete;
    PRefCount& operator=(PRefCount const&) = delete;

    PRefCount& operator++() {
        ++count_;
        return *this;
    }
    // Returns the new count.
    long decrement() { return --count_; }
    long value() const { return count_; }
    void* pointer() const { return object_; }

  private:
    void* object_;
    long count_ = 1;
};

// The one process-wide lock under which every reference count is changed.
void lockRefCount();
void unlockRefCount();
