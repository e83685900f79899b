#include "Platform/Compositor/Json.h"

#include "Platform/Linux/Text/ValidText.h"

#include <cmath>
#include <utility>

namespace platform::compositor {

namespace {

/// Whether nothing is nested deeper than in any layout, where each container is two levels. Some kilobytes of brackets
/// would take a hundred times their memory; and the parser's own filter takes time by the square of their number.
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

std::optional<corvid::CGRect> rectangle(const Json* x, const Json* y, const Json* width, const Json* height) {
    if (x == nullptr || y == nullptr || width == nullptr || height == nullptr) {
        return std::nullopt;
    }
    const auto left = coordinate(*x);
    const auto top = coordinate(*y);
    const auto across = coordinate(*width);
    const auto down = coordinate(*height);
    const bool isOne = left && top && across && down && *across >= 0 && *down >= 0;
    return isOne ? std::optional(corvid::CGRect{{*left, *top}, {*across, *down}}) : std::nullopt;
}

} // namespace

std::optional<Json> parsedJson(std::string_view text) {
    if (text.size() > longestJson || !isShallow(text)) {
        return std::nullopt;
    }
    Json value = Json::parse(text, nullptr, false);
    // The parser refuses the whole text. It runs first nevertheless, so that valid messages do not pay for the repair.
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

const Json* listIn(const Json& object, const char* name) {
    const Json* list = member(object, name);
    return list != nullptr && list->is_array() ? list : nullptr;
}

std::string_view textOf(const Json& object, const char* name) {
    const Json* value = member(object, name);
    const auto* text = value == nullptr ? nullptr : value->get_ptr<const std::string*>();
    return text == nullptr ? std::string_view() : std::string_view(*text);
}

std::string nameOf(const Json& object, const char* name) {
    constexpr std::size_t longest = 1024;
    const std::string_view text = textOf(object, name);
    return text.size() <= longest && !text.contains('\0') ? std::string(text) : std::string();
}

bool isSet(const Json& object, const char* name) {
    const Json* value = member(object, name);
    return value != nullptr && value->is_boolean() && value->get<bool>();
}

std::optional<std::int64_t> numberOf(const Json& object, const char* name) {
    const Json* value = member(object, name);
    if (value == nullptr || !value->is_number_integer()) {
        return std::nullopt;
    }
    const bool isTooLarge = value->is_number_unsigned() && !std::in_range<std::int64_t>(value->get<std::uint64_t>());
    return isTooLarge ? std::nullopt : std::optional(value->get<std::int64_t>());
}

ProcessIdentifier processOf(const Json& object, const char* name) {
    const auto number = numberOf(object, name).value_or(0);
    const bool isOne = number > 0 && std::in_range<ProcessIdentifier>(number);
    return isOne ? static_cast<ProcessIdentifier>(number) : 0;
}

std::optional<double> coordinate(const Json& value) {
    constexpr double farthest = 1e6;
    const bool isOne = value.is_number() && std::abs(value.get<double>()) <= farthest;
    return isOne ? std::optional(value.get<double>()) : std::nullopt;
}

std::optional<corvid::CGPoint> pointOf(const Json& object) {
    const Json* x = member(object, "x");
    const Json* y = member(object, "y");
    const auto across = x == nullptr ? std::nullopt : coordinate(*x);
    const auto down = y == nullptr ? std::nullopt : coordinate(*y);
    return across && down ? std::optional(corvid::CGPoint{*across, *down}) : std::nullopt;
}

std::optional<corvid::CGRect> rectangleIn(const Json& list, std::size_t first) {
    constexpr std::size_t sides = 4;
    if (!list.is_array() || list.size() < first + sides) {
        return std::nullopt;
    }
    return rectangle(&list[first], &list[first + 1], &list[first + 2], &list[first + 3]);
}

std::optional<corvid::CGRect> rectangleOf(const Json& object, const char* name) {
    constexpr std::size_t sides = 4;
    const Json* value = member(object, name);
    if (value == nullptr) {
        return std::nullopt;
    }
    if (value->is_array()) {
        return value->size() == sides ? rectangleIn(*value, 0) : std::nullopt;
    }
    return rectangle(member(*value, "x"), member(*value, "y"), member(*value, "width"), member(*value, "height"));
}

} // namespace platform::compositor
