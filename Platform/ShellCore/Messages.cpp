#include "Platform/ShellCore/Messages.h"

#include "Platform/Compositor/Json.h"

#include <cstdint>
#include <limits>

namespace platform::shellcore {

namespace {

using compositor::isSet;
using compositor::Json;
using compositor::member;
using compositor::nameOf;
using compositor::Output;
using compositor::rectangleOf;
using compositor::Window;
using compositor::WindowIdentifier;
using compositor::WindowKind;

Json parse(std::string_view text) {
    return compositor::parsedJson(text).value_or(Json());
}

std::optional<WindowIdentifier> identifierOf(const Json* value) {
    if (value == nullptr || !value->is_number_unsigned()) {
        return std::nullopt;
    }
    return std::to_string(value->get<std::uint64_t>());
}

WindowKind kindOf(const Json& object) {
    const std::string_view kind = compositor::textOf(object, "kind");
    if (kind == "standard") {
        return WindowKind::standard;
    }
    return kind == "auxiliary" ? WindowKind::auxiliary : WindowKind::ignored;
}

std::optional<std::pair<WindowIdentifier, Window>> windowOf(const Json& object) {
    auto identifier = identifierOf(member(object, "id"));
    const auto frame = rectangleOf(object, "frame");
    if (!identifier || !frame) {
        return std::nullopt;
    }
    // The core reports a window only once it is shown.
    return std::pair(*std::move(identifier), Window{.clues = {.process = compositor::processOf(object, "pid"),
                                                              .applicationId = nameOf(object, "applicationId"),
                                                              .windowClass = nameOf(object, "windowClass"),
                                                              .windowInstance = nameOf(object, "windowInstance")},
                                                    .kind = kindOf(object),
                                                    .skipsTaskBars = isSet(object, "skipsTaskBars"),
                                                    .isFullscreen = isSet(object, "isFullscreen"),
                                                    .isReady = true,
                                                    .frame = *frame});
}

std::optional<std::vector<Output>> outputsOf(const Json* list) {
    if (list == nullptr || !list->is_array()) {
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
                .session = nameOf(message, "session"),
                .contents = {.windows = {},
                             .focused = identifierOf(member(message, "focused")),
                             .outputs = *std::move(outputs)}};
    for (const Json& each : *windows) {
        auto window = windowOf(each);
        if (window) {
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
        const auto frame = hasAll ? compositor::rectangleIn(each, 1) : std::nullopt;
        if (identifier && frame) {
            frames.push_back(
                {.window = *std::move(identifier), .frame = *frame, .isFullscreen = each.back().get<bool>()});
        }
    }
    return frames;
}

} // namespace platform::shellcore
