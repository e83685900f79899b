#include "Platform/KWin/ScriptMessages.h"

#include "Platform/Compositor/Json.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace platform::kwin::ScriptMessages {

namespace {

using compositor::Json;
using compositor::member;

constexpr std::size_t longestName = 1024;
constexpr std::size_t mostWindows = 10'000;
constexpr std::size_t mostScreens = 64;
/// No desktop is larger, and calculations with such numbers are exact.
constexpr double farthest = 1e6;

std::optional<Json> parsed(std::string_view text) {
    return text.size() > longestText ? std::nullopt : compositor::parsedJson(text);
}

/// A text, empty where there is none or one that is no name.
std::string name(const Json& object, const char* key) {
    const Json* value = member(object, key);
    const auto* text = value == nullptr ? nullptr : value->get_ptr<const std::string*>();
    const bool isName = text != nullptr && text->size() <= longestName && text->find('\0') == std::string::npos;
    return isName ? *text : std::string();
}

bool flag(const Json& object, const char* key) {
    const Json* value = member(object, key);
    return value != nullptr && value->is_boolean() && value->get<bool>();
}

/// So many finite numbers.
template <std::size_t count>
std::optional<std::array<double, count>> numbers(const Json* list) {
    if (list == nullptr || !list->is_array() || list->size() != count) {
        return std::nullopt;
    }
    std::array<double, count> values{};
    for (std::size_t index = 0; index < count; ++index) {
        const Json& number = (*list)[index];
        if (!number.is_number() || !(std::abs(number.get<double>()) <= farthest)) {
            return std::nullopt;
        }
        values.at(index) = number.get<double>();
    }
    return values;
}

std::optional<corvid::CGRect> rectangle(const Json* list) {
    const auto sides = numbers<4>(list);
    if (!sides || (*sides)[2] < 0 || (*sides)[3] < 0) {
        return std::nullopt;
    }
    const auto [x, y, width, height] = *sides;
    return corvid::CGRect{{x, y}, {width, height}};
}

std::optional<ProcessIdentifier> process(const Json& object) {
    const Json* value = member(object, "process");
    if (value == nullptr || !value->is_number_integer()) {
        return std::nullopt;
    }
    const auto number = value->get<std::int64_t>();
    const bool isOne = number > 0 && number <= std::numeric_limits<ProcessIdentifier>::max();
    return isOne ? static_cast<ProcessIdentifier>(number) : 0;
}

std::optional<compositor::WindowKind> kind(const Json& object) {
    const std::string word = name(object, "kind");
    if (word == "standard") {
        return compositor::WindowKind::standard;
    }
    return word == "auxiliary" ? std::optional(compositor::WindowKind::auxiliary) : std::nullopt;
}

std::optional<Told> window(const Json& object) {
    std::string identifier = name(object, "id");
    const auto owner = process(object);
    const auto itsKind = kind(object);
    const auto frame = rectangle(member(object, "frame"));
    if (identifier.empty() || !owner || !itsKind || !frame) {
        return std::nullopt;
    }
    return Told{.identifier = std::move(identifier),
                .window = {.clues = {.process = *owner,
                                     .applicationId = name(object, "entry"),
                                     .windowClass = name(object, "class"),
                                     .windowInstance = name(object, "instance")},
                           .kind = *itsKind,
                           .skipsTaskBars = flag(object, "skipsTaskBars"),
                           .isFullscreen = flag(object, "isFullscreen"),
                           // KWin tells of a window once it is shown.
                           .isReady = true,
                           .frame = *frame}};
}

std::optional<Screens> screens(const Json* list) {
    if (list == nullptr || !list->is_array() || list->empty() || list->size() > mostScreens) {
        return std::nullopt;
    }
    Screens read;
    for (const Json& screen : *list) {
        const auto frame = rectangle(member(screen, "frame"));
        const auto workArea = rectangle(member(screen, "workArea"));
        if (!frame || !workArea) {
            return std::nullopt;
        }
        read.outputs.push_back({.frame = *frame, .workArea = *workArea});
    }
    return read;
}

std::optional<Focused> focused(const Json& object) {
    const Json* value = member(object, "focused");
    if (value == nullptr || !value->is_string()) {
        return std::nullopt;
    }
    std::string identifier = name(object, "focused");
    return Focused{identifier.empty() ? std::nullopt : std::optional(std::move(identifier))};
}

std::optional<Opened> opened(const Json& object) {
    const Json* list = member(object, "windows");
    auto focus = focused(object);
    auto outputs = screens(member(object, "screens"));
    if (list == nullptr || !list->is_array() || list->size() > mostWindows || !focus || !outputs) {
        return std::nullopt;
    }
    Opened read{.windows = {}, .focused = std::move(focus->identifier), .outputs = std::move(outputs->outputs)};
    for (const Json& each : *list) {
        auto one = window(each);
        if (!one) {
            return std::nullopt;
        }
        read.windows.emplace_back(std::move(one->identifier), std::move(one->window));
    }
    return read;
}

template <typename Value>
std::optional<News> news(std::optional<Value> value) {
    return value ? std::optional<News>(*std::move(value)) : std::nullopt;
}

std::optional<Outcome> outcome(const Json& object) {
    const std::string word = name(object, "outcome");
    constexpr std::array<std::pair<std::string_view, Outcome>, 4> words{
        {{"done", Outcome::done}, {"gone", Outcome::gone}, {"refused", Outcome::refused}, {"failed", Outcome::failed}}};
    for (const auto& [known, value] : words) {
        if (word == known) {
            return value;
        }
    }
    return std::nullopt;
}

/// As a text; what is not text in the title becomes a mark that stands for it.
std::string written(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

std::optional<News> readNews(std::string_view text) {
    const auto value = parsed(text);
    if (!value || !value->is_object() || value->size() != 1) {
        return std::nullopt;
    }
    if (const Json* contents = member(*value, "opened")) {
        return news(opened(*contents));
    }
    if (const Json* one = member(*value, "window")) {
        return news(window(*one));
    }
    if (const Json* list = member(*value, "screens")) {
        return news(screens(list));
    }
    if (member(*value, "focused") != nullptr) {
        return news(focused(*value));
    }
    std::string identifier = name(*value, "gone");
    return identifier.empty() ? std::nullopt : std::optional<News>(Gone{std::move(identifier)});
}

std::optional<std::vector<Result>> readResults(std::string_view text) {
    const auto value = parsed(text);
    if (!value || !value->is_array()) {
        return std::nullopt;
    }
    std::vector<Result> results;
    for (const Json& each : *value) {
        const Json* number = member(each, "number");
        const auto became = outcome(each);
        if (number == nullptr || !number->is_number_unsigned() || !became) {
            return std::nullopt;
        }
        Result result{.number = number->get<std::uint64_t>(),
                      .outcome = *became,
                      .asked = rectangle(member(each, "asked")),
                      .frame = rectangle(member(each, "frame")),
                      .isForced = flag(each, "isForced"),
                      .pointer = std::nullopt};
        if (const auto place = numbers<2>(member(each, "pointer"))) {
            result.pointer = corvid::CGPoint{(*place)[0], (*place)[1]};
        }
        results.push_back(result);
    }
    return results;
}

std::string place(std::uint64_t number, const compositor::WindowIdentifier& window, const corvid::CGRect& frame) {
    const auto [origin, size] = frame;
    return written({{"do", "place"},
                    {"number", number},
                    {"window", window},
                    {"frame", Json::array({origin.x, origin.y, size.width, size.height})}});
}

std::string placeOwn(std::uint64_t number, ProcessIdentifier process, const std::string& title,
                     corvid::CGPoint topLeft) {
    return written({{"do", "own"},
                    {"number", number},
                    {"process", process},
                    {"title", title},
                    {"at", Json::array({topLeft.x, topLeft.y})}});
}

std::string pointer(std::uint64_t number) {
    return written({{"do", "pointer"}, {"number", number}});
}

std::string answer(const std::vector<std::string>& commands) {
    std::string text = "[";
    for (const std::string& command : commands) {
        text += text.size() > 1 ? "," : "";
        text += command;
    }
    return text + "]";
}

std::string end() {
    return "\"end\"";
}

} // namespace platform::kwin::ScriptMessages
