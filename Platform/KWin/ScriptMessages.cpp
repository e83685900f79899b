#include "Platform/KWin/ScriptMessages.h"

#include "Platform/Compositor/Json.h"

#include <array>
#include <utility>

namespace platform::kwin::ScriptMessages {

namespace {

using compositor::isSet;
using compositor::Json;
using compositor::listIn;
using compositor::member;
using compositor::nameOf;
using compositor::rectangleOf;

std::optional<compositor::WindowKind> kind(const Json& object) {
    const std::string_view word = compositor::textOf(object, "kind");
    if (word == "standard") {
        return compositor::WindowKind::standard;
    }
    return word == "auxiliary" ? std::optional(compositor::WindowKind::auxiliary) : std::nullopt;
}

std::optional<WindowReport> window(const Json& object) {
    std::string identifier = nameOf(object, "id");
    const Json* process = member(object, "process");
    const auto itsKind = kind(object);
    const auto frame = rectangleOf(object, "frame");
    if (identifier.empty() || process == nullptr || !process->is_number_integer() || !itsKind || !frame) {
        return std::nullopt;
    }
    return WindowReport{.identifier = std::move(identifier),
                        .window = {.clues = {.process = compositor::processOf(object, "process"),
                                             .applicationId = nameOf(object, "entry"),
                                             .windowClass = nameOf(object, "class"),
                                             .windowInstance = nameOf(object, "instance")},
                                   .kind = *itsKind,
                                   .skipsTaskBars = isSet(object, "skipsTaskBars"),
                                   .isFullscreen = isSet(object, "isFullscreen"),
                                   // KWin's script reports a window once it is shown.
                                   .isReady = true,
                                   .frame = *frame}};
}

std::optional<Screens> screens(const Json* list) {
    if (list == nullptr || !list->is_array() || list->empty()) {
        return std::nullopt;
    }
    Screens read;
    for (const Json& screen : *list) {
        const auto frame = rectangleOf(screen, "frame");
        const auto workArea = rectangleOf(screen, "workArea");
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
    std::string identifier = nameOf(object, "focused");
    return Focused{identifier.empty() ? std::nullopt : std::optional(std::move(identifier))};
}

std::optional<Opened> opened(const Json& object) {
    const Json* list = listIn(object, "windows");
    auto focus = focused(object);
    auto outputs = screens(member(object, "screens"));
    if (list == nullptr || !focus || !outputs) {
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
    const std::string_view word = compositor::textOf(object, "outcome");
    constexpr std::array<std::pair<std::string_view, Outcome>, 4> words{
        {{"done", Outcome::done}, {"gone", Outcome::gone}, {"refused", Outcome::refused}, {"failed", Outcome::failed}}};
    for (const auto& [known, value] : words) {
        if (word == known) {
            return value;
        }
    }
    return std::nullopt;
}

/// As a text; a replacement character stands for each invalid part of the title.
std::string written(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

std::optional<News> readNews(std::string_view text) {
    const auto value = compositor::parsedJson(text);
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
    std::string identifier = nameOf(*value, "gone");
    return identifier.empty() ? std::nullopt : std::optional<News>(Gone{std::move(identifier)});
}

std::optional<std::vector<Result>> readResults(std::string_view text) {
    const auto value = compositor::parsedJson(text);
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
                      .asked = rectangleOf(each, "asked"),
                      .frame = rectangleOf(each, "frame"),
                      .isForced = isSet(each, "isForced"),
                      .pointer = std::nullopt};
        if (const Json* place = listIn(each, "pointer"); place != nullptr && place->size() == 2) {
            const auto x = compositor::coordinate(place->front());
            const auto y = compositor::coordinate(place->back());
            result.pointer = x && y ? std::optional(corvid::CGPoint{*x, *y}) : std::nullopt;
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
