#pragma once

// An arbitrary, possibly non-affine, point mapping with an inverse. Hosts derive from it to
// query and edit paths in another space (a view, an envelope, a perspective).
template <class T> class ArbTrans {
  public:
    virtual ~ArbTrans() = default;
    virtual T transform(T const& p) const = 0;
    virtual T reverseTransform(T const& p) const = 0;
};

// The mapping that leaves every point where it is.
template <class T> class IdTrans : public ArbTrans<T> {
  public:
    T transform(T const& p) const override { return p; }
    T reverseTransform(T const& p) const override { return p; }
};
