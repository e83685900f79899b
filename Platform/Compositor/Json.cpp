#include "Platform/Compositor/Json.h"

#include "Platform/Linux/ValidText.h"

#include <utility>

namespace platform::compositor {

std::optional<Json> parsedJson(std::string_view text) {
    // Each container of a layout is two levels. Without a limit some kilobytes of brackets would take the hundredfold.
    constexpr int deepest = 256;
    const auto keepShallow = [](int depth, Json::parse_event_t /*event*/, Json& /*value*/) { return depth <= deepest; };
    Json value = Json::parse(text, keepShallow, false);
    // The parser refuses the whole text. It comes first nevertheless, so that nobody else pays for the repair.
    if (value.is_discarded()) {
        value = Json::parse(linux::validText(text), keepShallow, false);
    }
    return value.is_discarded() ? std::nullopt : std::optional(std::move(value));
}

const Json* member(const Json& object, const char* name) {
    if (!object.is_object()) {
        return nullptr;
    }
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

} // namespace platform::compositor
