#pragma once

#include "simplepath/foundation/ErrorCategory.h"

#include <system_error>
#include <utility>

namespace vasta {

// A value together with an error code: success carries error value 0, failure a code of the library's
// error category and no meaningful value.
template <class T> class [[nodiscard]] outcome {
  public:
    outcome(T value) : value_(std::move(value)) {}
    outcome(std::error_code error) : value_(), error_(error) {}

    static outcome failure(int code) { return outcome(std::error_code(code, detail::orlanErrorCategory())); }

    bool has_value() const { return !error_; }
    explicit operator bool() const { return has_value(); }
    T const& value() const { return value_; }
    T& value() { return value_; }
    std::error_code const& error() const { return error_; }

  private:
    T value_;
    std::error_code error_;
};

} // namespace vasta
