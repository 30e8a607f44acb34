#pragma once

#include <string>
#include <system_error>

namespace detail {

// The library's error category. Codes: 1000 not implemented, 1001 value not found, 1002 no storage.
class Orlan_Error_category : public std::error_category {
  public:
    char const* name() const noexcept override;
    std::string message(int code) const override;
};

// The one instance every error code of the category refers to.
Orlan_Error_category const& orlanErrorCategory();

} // namespace detail
