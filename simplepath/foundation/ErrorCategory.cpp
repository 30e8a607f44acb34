#include "simplepath/foundation/ErrorCategory.h"

namespace detail {

char const* Orlan_Error_category::name() const noexcept {
    return "Vector Files - Error";
}

std::string Orlan_Error_category::message(int code) const {
    switch (code) {
    case 1000:
        return "Attempting to call functionality which is not implemented.";
    case 1002:
        return "Null value found when expecting allocated memory.";
    default:
        // 1001 (value not found) has never had a message of its own; callers rely on this text.
        return "Unknown Error Code.";
    }
}

Orlan_Error_category const& orlanErrorCategory() {
    static Orlan_Error_category const category;
    return category;
}

} // namespace detail
