#include "Platform/Sway/Json.h"

#include <limits>

namespace platform::sway {

std::optional<Json> parsedJson(std::string_view text) {
    // Each container of a layout is two levels. Without a limit some kilobytes of brackets would take the hundredfold.
    constexpr int deepest = 256;
    const auto keepShallow = [](int depth, Json::parse_event_t /*event*/, Json& /*value*/) { return depth <= deepest; };
    Json value = Json::parse(text, keepShallow, false);
    if (value.is_discarded()) {
        return std::nullopt;
    }
    return value;
}

const Json* member(const Json& object, const char* name) {
    if (!object.is_object()) {
        return nullptr;
    }
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

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
