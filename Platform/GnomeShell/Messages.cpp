#include "Platform/GnomeShell/Messages.h"

#include "Platform/Compositor/Json.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace platform::gnomeshell {

namespace {

using compositor::Json;
using compositor::member;
using compositor::Output;
using compositor::Window;
using compositor::WindowIdentifier;
using compositor::WindowKind;

constexpr std::size_t longestMessage = std::size_t{4} << 20U;
constexpr std::size_t longestText = 1024;
constexpr std::size_t mostWindows = 4096;
constexpr std::size_t mostOutputs = 64;
/// Farther than any desktop reaches.
constexpr double farthest = 1e6;

Json parse(std::string_view text) {
    return text.size() > longestMessage ? Json() : compositor::parsedJson(text).value_or(Json());
}

std::string textOf(const Json& object, const char* name) {
    const Json* value = member(object, name);
    if (value == nullptr || !value->is_string()) {
        return {};
    }
    const auto& text = value->get_ref<const std::string&>();
    return text.size() > longestText ? std::string() : text;
}

bool booleanOf(const Json& object, const char* name) {
    const Json* value = member(object, name);
    return value != nullptr && value->is_boolean() && value->get<bool>();
}

std::optional<WindowIdentifier> identifierOf(const Json* value) {
    if (value == nullptr || !value->is_number_unsigned()) {
        return std::nullopt;
    }
    return std::to_string(value->get<std::uint64_t>());
}

/// The rectangle that begins at an element of a list.
std::optional<corvid::CGRect> rectangleIn(const Json& list, std::size_t first) {
    constexpr std::size_t sides = 4;
    if (!list.is_array() || list.size() < first + sides) {
        return std::nullopt;
    }
    std::array<double, sides> values{};
    for (std::size_t index = 0; index < sides; ++index) {
        const Json& value = list[first + index];
        if (!value.is_number()) {
            return std::nullopt;
        }
        values.at(index) = value.get<double>();
        if (!std::isfinite(values.at(index)) || std::abs(values.at(index)) > farthest) {
            return std::nullopt;
        }
    }
    const auto& [x, y, width, height] = values;
    return width < 0 || height < 0 ? std::nullopt : std::optional(corvid::CGRect{{x, y}, {width, height}});
}

std::optional<corvid::CGRect> rectangleOf(const Json& object, const char* name) {
    const Json* value = member(object, name);
    return value == nullptr ? std::nullopt : rectangleIn(*value, 0);
}

ProcessIdentifier processOf(const Json& object) {
    const Json* value = member(object, "pid");
    if (value == nullptr || !value->is_number_integer()) {
        return 0;
    }
    const auto number = value->get<std::int64_t>();
    return number > 0 && number <= std::numeric_limits<ProcessIdentifier>::max()
               ? static_cast<ProcessIdentifier>(number)
               : 0;
}

WindowKind kindOf(const Json& object) {
    const std::string kind = textOf(object, "kind");
    if (kind == "standard") {
        return WindowKind::standard;
    }
    return kind == "auxiliary" ? WindowKind::auxiliary : WindowKind::furniture;
}

std::optional<std::pair<WindowIdentifier, Window>> windowOf(const Json& object) {
    auto identifier = identifierOf(member(object, "id"));
    const auto frame = rectangleOf(object, "frame");
    if (!identifier || !frame) {
        return std::nullopt;
    }
    // The extension tells of a window only once it is shown.
    return std::pair(*std::move(identifier), Window{.clues = {.process = processOf(object),
                                                              .applicationId = textOf(object, "applicationId"),
                                                              .windowClass = textOf(object, "windowClass"),
                                                              .windowInstance = textOf(object, "windowInstance")},
                                                    .kind = kindOf(object),
                                                    .skipsTaskBars = booleanOf(object, "skipsTaskBars"),
                                                    .isFullscreen = booleanOf(object, "isFullscreen"),
                                                    .isReady = true,
                                                    .frame = *frame});
}

std::optional<std::vector<Output>> outputsOf(const Json* list) {
    if (list == nullptr || !list->is_array() || list->size() > mostOutputs) {
        return std::nullopt;
    }
    std::vector<Output> outputs;
    for (const Json& each : *list) {
        const auto frame = rectangleOf(each, "frame");
        const auto workArea = rectangleOf(each, "workArea");
        if (frame && workArea && frame->size.width > 0 && frame->size.height > 0) {
            outputs.push_back({.frame = *frame, .workArea = *workArea});
        }
    }
    return outputs;
}

} // namespace

std::optional<Hello> parseHello(std::string_view text) {
    const Json message = parse(text);
    const Json* version = member(message, "version");
    const Json* windows = member(message, "windows");
    auto outputs = outputsOf(member(message, "outputs"));
    if (version == nullptr || !version->is_number_integer() || windows == nullptr || !windows->is_array() || !outputs) {
        return std::nullopt;
    }
    const auto number = version->get<std::int64_t>();
    Hello hello{.version = number > 0 && number < std::numeric_limits<int>::max() ? static_cast<int>(number) : 0,
                .session = textOf(message, "session"),
                .contents = {.windows = {},
                             .focused = identifierOf(member(message, "focused")),
                             .outputs = *std::move(outputs)}};
    for (const Json& each : *windows) {
        auto window = windowOf(each);
        if (window && hello.contents.windows.size() < mostWindows) {
            hello.contents.windows.push_back(*std::move(window));
        }
    }
    return hello;
}

std::optional<std::pair<WindowIdentifier, Window>> parseWindow(std::string_view text) {
    return windowOf(parse(text));
}

std::optional<std::vector<Output>> parseOutputs(std::string_view text) {
    const Json message = parse(text);
    return outputsOf(&message);
}

std::optional<std::vector<WindowFrame>> parseFrames(std::string_view text) {
    const Json message = parse(text);
    if (!message.is_array()) {
        return std::nullopt;
    }
    std::vector<WindowFrame> frames;
    for (const Json& each : message) {
        // Number, rectangle, whether it is fullscreen.
        constexpr std::size_t length = 6;
        const bool hasAll = each.is_array() && each.size() == length && each.back().is_boolean();
        auto identifier = hasAll ? identifierOf(&each.front()) : std::nullopt;
        const auto frame = hasAll ? rectangleIn(each, 1) : std::nullopt;
        if (identifier && frame && frames.size() < mostWindows) {
            frames.push_back(
                {.window = *std::move(identifier), .frame = *frame, .isFullscreen = each.back().get<bool>()});
        }
    }
    return frames;
}

} // namespace platform::gnomeshell
