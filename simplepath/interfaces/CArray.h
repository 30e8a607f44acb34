#pragma once

#include <vector>

// The application framework's growable array, used by the legacy curve family.
// Indices are int. Members that take a range ignore an index outside the array instead of
// corrupting memory; element access (operator[], GetAt, SetAt) requires a valid index.
template <class TYPE, class ARG_TYPE = TYPE const&> class CArray {
  public:
    CArray() = default;

    int GetSize() const { return static_cast<int>(items_.size()); }
    int GetCount() const { return GetSize(); }
    int GetUpperBound() const { return GetSize() - 1; }
    bool IsEmpty() const { return items_.empty(); }

    // Appends and returns the new element's index.
    int Add(ARG_TYPE value) {
        items_.push_back(value);
        return GetSize() - 1;
    }
    // Appends every element of another array; returns the index of the first appended one.
    int Append(CArray const& other) {
        int const first = GetSize();
        items_.insert(items_.end(), other.items_.begin(), other.items_.end());
        return first;
    }
    void Copy(CArray const& other) { items_ = other.items_; }
    void RemoveAll() { items_.clear(); }
    void RemoveAt(int index, int count = 1) {
        if (index < 0 || count <= 0 || index >= GetSize()) {
            return;
        }
        int const end = count > GetSize() - index ? GetSize() : index + count;
        items_.erase(items_.begin() + index, items_.begin() + end);
    }
    // Inserts count copies before index; an index at or past the end grows the array to reach it.
    void InsertAt(int index, ARG_TYPE value, int count = 1) {
        if (index < 0 || count <= 0) {
            return;
        }
        TYPE const copy = value; // value may refer into this array
        if (index >= GetSize()) {
            items_.resize(static_cast<std::size_t>(index));
            items_.insert(items_.end(), static_cast<std::size_t>(count), copy);
            return;
        }
        items_.insert(items_.begin() + index, static_cast<std::size_t>(count), copy);
    }
    void SetSize(int size) { items_.resize(size > 0 ? static_cast<std::size_t>(size) : 0u); }
    TYPE GetAt(int index) const { return items_[static_cast<std::size_t>(index)]; }
    void SetAt(int index, ARG_TYPE value) { items_[static_cast<std::size_t>(index)] = value; }
    TYPE& ElementAt(int index) { return items_[static_cast<std::size_t>(index)]; }
    TYPE& operator[](int index) { return items_[static_cast<std::size_t>(index)]; }
    TYPE const& operator[](int index) const { return items_[static_cast<std::size_t>(index)]; }
    TYPE* GetData() { return items_.data(); }
    TYPE const* GetData() const { return items_.data(); }

  private:
    std::vector<TYPE> items_;
};
