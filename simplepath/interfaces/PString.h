#pragma once

#include <string>
#include <utility>

// A UTF-8 string value.
class PString {
  public:
    PString() = default;
    PString(char const* text) : value_(text != nullptr ? text : "") {}
    PString(std::string text) : value_(std::move(text)) {}

    char const* c_str() const { return value_.c_str(); }
    std::string const& str() const { return value_; }
    // The length in bytes of the UTF-8 encoding.
    std::size_t length() const { return value_.size(); }
    bool empty() const { return value_.empty(); }
    bool operator==(PString const& s) const { return value_ == s.value_; }
    bool operator!=(PString const& s) const { return value_ != s.value_; }

  private:
    std::string value_;
};
