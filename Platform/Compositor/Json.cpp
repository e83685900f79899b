#include "Platform/Compositor/Json.h"

#include "Platform/Linux/ValidText.h"

#include <cstddef>
#include <utility>

namespace platform::compositor {

namespace {

/// Whether nothing is nested deeper than in any layout, where each container is two levels. Some kilobytes of brackets
/// would take the hundredfold; and the parser's own way to leave values out takes the square of their number.
bool isShallow(std::string_view text) {
    constexpr int deepest = 256;
    int depth = 0;
    bool isInString = false;
    for (std::size_t place = 0; place < text.size() && depth <= deepest; ++place) {
        const char character = text[place];
        if (isInString) {
            place += character == '\\' ? 1 : 0;
            isInString = character != '"';
        } else if (character == '"') {
            isInString = true;
        } else if (character == '[' || character == '{') {
            ++depth;
        } else if (character == ']' || character == '}') {
            --depth;
        }
    }
    return depth <= deepest;
}

} // namespace

std::optional<Json> parsedJson(std::string_view text) {
    if (!isShallow(text)) {
        return std::nullopt;
    }
    Json value = Json::parse(text, nullptr, false);
    // The parser refuses the whole text. It comes first nevertheless, so that nobody else pays for the repair.
    if (value.is_discarded()) {
        value = Json::parse(linux::validText(text), nullptr, false);
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

std::string textIn(const Json& object, const char* name) {
    const Json* text = member(object, name);
    return text != nullptr && text->is_string() ? text->get<std::string>() : std::string();
}

} // namespace platform::compositor
