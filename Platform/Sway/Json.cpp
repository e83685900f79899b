#include "Platform/Sway/Json.h"

#include <limits>
#include <string>

namespace platform::sway {

std::string_view textOf(const Json& object, const char* name) {
    const Json* value = member(object, name);
    const auto* text = value == nullptr ? nullptr : value->get_ptr<const std::string*>();
    return text == nullptr ? std::string_view() : std::string_view(*text);
}

std::optional<std::int64_t> numberOf(const Json& object, const char* name) {
    const Json* value = member(object, name);
    if (value == nullptr || !value->is_number_integer()) {
        return std::nullopt;
    }
    if (const auto* large = value->get_ptr<const std::uint64_t*>()) {
        return *large > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())
                   ? std::nullopt
                   : std::optional(static_cast<std::int64_t>(*large));
    }
    return *value->get_ptr<const std::int64_t*>();
}

bool isSet(const Json& object, const char* name) {
    const Json* value = member(object, name);
    const auto* boolean = value == nullptr ? nullptr : value->get_ptr<const bool*>();
    return boolean != nullptr && *boolean;
}

} // namespace platform::sway
