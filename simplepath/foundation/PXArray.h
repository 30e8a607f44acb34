#pragma once

#include "simplepath/foundation/Outcome.h"

#include <cstdint>
#include <new>
#include <type_traits>

// A growable array with a configurable growth policy and a filler value ("empty") that stands in for
// unused slots. Storage holds allocLength elements of which the first length are in use.
//
// Growth policy for n needed elements: 0 gives 0; a non-zero step gives the smallest multiple of step
// strictly above n; otherwise growing starts from the current allocation (32 when none) and doubles
// while below n and below 2^30, and shrinking halves while half still holds n.
//
// Access through the non-const operator[] and get() extends the array to the index. The const
// operator[](int) deliberately reads any slot below allocLength (not only below length) and gives
// `empty` beyond it; a negative index reads slot 0.
template <class T> class PXArray {
  public:
    using size_type = std::uint64_t;

    PXArray() = default;
    // Storage for allocSize elements (policy applied) of which the first `size` count as used.
    PXArray(size_type size, size_type allocSize) {
        growArray(allocSize > size ? allocSize : size, true);
        length_ = size < allocLength_ ? size : allocLength_;
    }
    PXArray(T const* items, size_type count) {
        growArray(count, false);
        if (allocLength_ == count) {
            for (size_type i = 0; i < count; ++i) {
                data[i] = items[i];
            }
            length_ = count;
        }
    }
    PXArray(PXArray const& other) { copyFrom(other); }
    PXArray& operator=(PXArray const& other) {
        if (this != &other) {
            reset();
            copyFrom(other);
        }
        return *this;
    }
    virtual ~PXArray() { delete[] data; }

    size_type length() const { return length_; }
    size_type allocLength() const { return allocLength_; }
    size_type allocBytes() const { return allocLength_ * sizeof(T); }
    size_type getStep() const { return step; }
    size_type setStep(size_type n) { return step = n; }
    bool isEmptySet() const { return fillWithEmpty; }
    T const& getEmpty() const { return empty; }

    T& get(size_type i) { return extendTo(i); }
    T& operator[](int i) { return extendTo(i < 0 ? 0 : static_cast<size_type>(i)); }
    T& operator[](size_type i) { return extendTo(i); }

    T const& operator[](int i) const {
        size_type const index = i < 0 ? 0 : static_cast<size_type>(i);
        return index < allocLength_ ? data[index] : empty;
    }
    T const& operator[](size_type i) const { return i < allocLength_ ? data[i] : empty; }
    // Other integer types (long, unsigned, ...) resolve here instead of being ambiguous.
    template <class I, class = std::enable_if_t<std::is_integral_v<I> && !std::is_same_v<I, int> &&
                                                !std::is_same_v<I, size_type> && !std::is_same_v<I, bool>>>
    T& operator[](I i) {
        return (*this)[i < 0 ? size_type(0) : static_cast<size_type>(i)];
    }
    template <class I, class = std::enable_if_t<std::is_integral_v<I> && !std::is_same_v<I, int> &&
                                                !std::is_same_v<I, size_type> && !std::is_same_v<I, bool>>>
    T const& operator[](I i) const {
        return (*this)[i < 0 ? size_type(0) : static_cast<size_type>(i)];
    }
    T const& get(size_type i) const { return (*this)[i]; }
    T const& operator()(size_type i) const { return (*this)[i]; }

    T& add(T const& value) {
        T const copy = value; // value may live in this array's storage
        if (length_ == allocLength_) {
            growArray(allocLength_ + 1, true);
            if (length_ == allocLength_) {
                return empty; // allocation failed; nothing stored
            }
        }
        data[length_] = copy;
        return data[length_++];
    }
    T& add() { return add(T(empty)); }

    T& ins(size_type i, T const& value) {
        T const copy = value;
        if (i >= allocLength_) {
            growArray(i + 1, true);
        } else if (length_ == allocLength_) {
            growArray(allocLength_ + 1, true);
        }
        if (i >= allocLength_) {
            return empty;
        }
        if (i < length_) {
            for (size_type k = length_; k > i; --k) {
                data[k] = data[k - 1];
            }
            ++length_;
        } else {
            length_ = i + 1;
        }
        data[i] = copy;
        return data[i];
    }
    T& ins(size_type i) { return ins(i, T(empty)); }
    T& insert(T const& value, size_type i) { return ins(i, value); }

    void set(size_type i, T const& value) { extendTo(i) = value; }
    void setAll(T const& value) {
        for (size_type k = 0; k < length_; ++k) {
            data[k] = value;
        }
    }

    void del(size_type i) {
        if (i >= length_) {
            return;
        }
        --length_;
        for (size_type k = i; k < length_; ++k) {
            data[k] = data[k + 1];
        }
        data[length_] = empty;
    }
    void remove(size_type i) { del(i); }

    vasta::outcome<size_type> find(T const& value, bool fromBack) const {
        if (data == nullptr) {
            return vasta::outcome<size_type>::failure(1002);
        }
        if (fromBack) {
            for (size_type k = length_; k > 0; --k) {
                if (data[k - 1] == value) {
                    return k - 1;
                }
            }
        } else {
            for (size_type k = 0; k < length_; ++k) {
                if (data[k] == value) {
                    return k;
                }
            }
        }
        return vasta::outcome<size_type>::failure(1001);
    }

    void setSize(size_type n) {
        if (n > length_) {
            growArray(n, true);
            length_ = n < allocLength_ ? n : allocLength_;
        } else {
            for (size_type k = n; k < length_; ++k) {
                data[k] = empty;
            }
            length_ = n;
        }
    }
    // Reallocates to hold n elements, allocLength becomes n, used elements beyond it are dropped.
    void resize(size_type n) { setAllocSize(n); }
    void setAllocSize(size_type n) {
        if (n < length_) {
            length_ = n;
        }
        growArray(n, false);
    }

    void setEmpty(T const& value) {
        empty = value;
        fillWithEmpty = true;
        for (size_type k = length_; k < allocLength_; ++k) {
            data[k] = empty;
        }
    }

    void clear() {
        if (!fillWithEmpty) {
            reset();
            return;
        }
        for (size_type k = 0; k < length_; ++k) {
            data[k] = empty;
        }
        length_ = 0;
    }
    void reset() {
        delete[] data;
        data = nullptr;
        length_ = 0;
        allocLength_ = 0;
    }
    void compact() {
        if (length_ == 0) {
            reset();
            return;
        }
        growArray(length_, false);
    }

    virtual bool operator==(PXArray const& other) const {
        if (this == &other) {
            return true;
        }
        if (length_ != other.length_) {
            return false;
        }
        for (size_type k = 0; k < length_; ++k) {
            if (!(data[k] == other.data[k])) {
                return false;
            }
        }
        return true;
    }
    virtual bool operator!=(PXArray const& other) const { return !(*this == other); }

    // The allocation the policy picks for n needed elements.
    size_type getGrowSize(size_type n) const {
        if (n == 0) {
            return 0;
        }
        if (step != 0) {
            return step * ((n + step) / step);
        }
        constexpr size_type cap = size_type(1) << 30;
        size_type size = allocLength_;
        if (n >= allocLength_) {
            if (size == 0) {
                size = 32;
            }
            while (size < n && size < cap) {
                size *= 2;
            }
            return size;
        }
        while (size / 2 >= n) {
            size /= 2;
        }
        return size;
    }

    T* data = nullptr;
    T empty{};

  private:
    T& extendTo(size_type i) {
        if (i >= length_) {
            if (i >= allocLength_) {
                growArray(i + 1, true);
                if (i >= allocLength_) {
                    return empty; // allocation failed or beyond the policy's cap
                }
            }
            length_ = i + 1 < allocLength_ ? i + 1 : allocLength_;
        }
        return data[i];
    }

    void growArray(size_type n, bool usePolicy) {
        size_type const newAlloc = usePolicy ? getGrowSize(n) : n;
        if (newAlloc == allocLength_) {
            return;
        }
        if (newAlloc == 0) {
            reset();
            return;
        }
        T* const fresh = new (std::nothrow) T[newAlloc];
        if (fresh == nullptr) {
            return;
        }
        size_type const keep = newAlloc < allocLength_ ? newAlloc : allocLength_;
        for (size_type k = 0; k < keep; ++k) {
            fresh[k] = data[k];
        }
        if (fillWithEmpty) {
            for (size_type k = keep; k < newAlloc; ++k) {
                fresh[k] = empty;
            }
        }
        delete[] data;
        data = fresh;
        allocLength_ = newAlloc;
        if (length_ > allocLength_) {
            length_ = allocLength_;
        }
    }

    void copyFrom(PXArray const& other) {
        empty = other.empty;
        step = other.step;
        fillWithEmpty = other.fillWithEmpty;
        growArray(other.allocLength_, false);
        if (allocLength_ == other.allocLength_) {
            for (size_type k = 0; k < allocLength_; ++k) {
                data[k] = other.data[k];
            }
            length_ = other.length_;
        }
    }

  public:
    // Field names as the layout gives them; length and allocLength are reached through the members above.
    size_type allocLength_ = 0;
    size_type length_ = 0;
    size_type step = 0;
    bool fillWithEmpty = false;
};
