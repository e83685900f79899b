#include "Platform/Hyprland/Layout.h"

#include "Platform/Compositor/Outputs.h"
#include "Platform/Hyprland/Words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace platform::hyprland {

namespace {

using compositor::coordinate;
using compositor::isSet;
using compositor::Json;
using compositor::listIn;
using compositor::nameOf;
using compositor::numberOf;
using compositor::Output;
using compositor::textOf;
using compositor::WindowKind;
using corvid::CGRect;
using corvid::CGSize;

/// A pair of numbers: a place or a size.
std::optional<std::pair<double, double>> pairOf(const Json& object, const char* name) {
    const Json* list = listIn(object, name);
    if (list == nullptr || list->size() != 2) {
        return std::nullopt;
    }
    const auto first = coordinate((*list)[0]);
    const auto second = coordinate((*list)[1]);
    return first && second ? std::optional(std::pair(*first, *second)) : std::nullopt;
}

std::uint64_t ageOf(const Json& object) {
    const std::string_view digits = textOf(object, "stableId");
    constexpr int hexadecimal = 16;
    std::uint64_t age = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), age, hexadecimal);
    return error == std::errc() && end == digits.data() + digits.size() ? age : 0;
}

std::optional<Client> clientOf(const Json& object) {
    const auto place = pairOf(object, "at");
    const auto size = pairOf(object, "size");
    Client client{.identifier = nameOf(object, "address"), .window = {}, .title = nameOf(object, "title")};
    if (!isSet(object, "mapped") || !isAddress(client.identifier) || !place || !size || size->first < 0 ||
        size->second < 0) {
        return std::nullopt;
    }
    // Bits: 1 is maximized, 2 is fullscreen (Hyprland, eFullscreenMode). Before 0.42 it was a boolean beside a mode.
    const std::int64_t mode = numberOf(object, "fullscreen").value_or(isSet(object, "fullscreen") ? 2 : 0);
    client.isMaximized = mode == 1;
    client.isPinned = isSet(object, "pinned");
    client.age = ageOf(object);
    const bool isX11 = isSet(object, "xwayland");
    compositor::Window& window = client.window;
    window.clues.process = compositor::processOf(object, "pid");
    (isX11 ? window.clues.windowClass : window.clues.applicationId) = nameOf(object, "class");
    window.kind = WindowKind::standard;
    window.isFullscreen = (mode & 2) != 0;
    window.isTiled = !isSet(object, "floating") || client.isMaximized;
    window.isReady = !isSet(object, "hidden");
    window.frame = {{place->first, place->second}, {size->first, size->second}};
    return client;
}

std::optional<double> numberIn(const Json& object, const char* name) {
    const Json* value = compositor::member(object, name);
    return value == nullptr ? std::nullopt : coordinate(*value);
}

/// The space that bars reserve at the left, top, right and bottom edges, in the layout's points.
CGRect withoutReserved(const CGRect& frame, const Json& monitor) {
    const Json* list = listIn(monitor, "reserved");
    constexpr std::size_t edges = 4;
    if (list == nullptr || list->size() != edges) {
        return frame;
    }
    const double left = coordinate((*list)[0]).value_or(0);
    const double top = coordinate((*list)[1]).value_or(0);
    const double right = coordinate((*list)[2]).value_or(0);
    const double bottom = coordinate((*list)[3]).value_or(0);
    const CGRect area{{frame.origin.x + left, frame.origin.y + top},
                      {frame.size.width - left - right, frame.size.height - top - bottom}};
    const bool isUsable = std::min({left, top, right, bottom}) >= 0 && area.size.width > 0 && area.size.height > 0;
    return isUsable ? area : frame;
}

std::optional<Output> outputOf(const Json& monitor) {
    const auto x = numberIn(monitor, "x");
    const auto y = numberIn(monitor, "y");
    const auto width = numberIn(monitor, "width");
    const auto height = numberIn(monitor, "height");
    const bool isMirror = !textOf(monitor, "mirrorOf").empty() && textOf(monitor, "mirrorOf") != "none";
    if (!x || !y || !width || !height || *width < 1 || *height < 1 || isMirror || isSet(monitor, "disabled")) {
        return std::nullopt;
    }
    CGSize size = logicalSize({*width, *height}, numberIn(monitor, "scale").value_or(1));
    // The odd ones of wl_output.transform turn it by a quarter.
    if (numberOf(monitor, "transform").value_or(0) % 2 != 0) {
        std::swap(size.width, size.height);
    }
    const CGRect frame{{*x, *y}, size};
    if (size.width < 1 || size.height < 1) {
        return std::nullopt;
    }
    return Output{.frame = frame, .workArea = withoutReserved(frame, monitor)};
}

template <typename Each>
void readEach(const Json& list, const Each& read, auto& results) {
    for (const Json& object : list) {
        if (auto result = read(object)) {
            results.push_back(*std::move(result));
        }
    }
}

} // namespace

std::optional<std::vector<Client>> readClients(const Json& answer) {
    if (!answer.is_array()) {
        return std::nullopt;
    }
    std::vector<Client> clients;
    readEach(answer, clientOf, clients);
    // Otherwise they are in the order in which they lie above each other.
    std::ranges::sort(clients, {}, &Client::age);
    return clients;
}

std::optional<std::vector<Output>> readMonitors(const Json& answer) {
    if (!answer.is_array()) {
        return std::nullopt;
    }
    std::vector<Output> outputs;
    readEach(answer, outputOf, outputs);
    compositor::putOriginFirst(outputs);
    return outputs;
}

CGSize logicalSize(CGSize pixels, double scale) {
    constexpr double steps = 120;
    constexpr double imprecision = 0.006;
    constexpr double nearlyWhole = 1e-6;
    const auto isWhole = [](double value) { return std::abs(value - std::round(value)) < nearlyWhole; };
    constexpr double smallest = 0.1;
    constexpr double largest = 100;
    if (!(scale >= smallest && scale <= largest)) {
        return pixels;
    }
    for (const double offset : {0.0, -1.0, 1.0}) {
        const double exact = (std::round(scale * steps) + offset) / steps;
        if (exact > 0 && std::abs(exact - scale) <= imprecision && isWhole(pixels.width / exact) &&
            isWhole(pixels.height / exact)) {
            return {std::round(pixels.width / exact), std::round(pixels.height / exact)};
        }
    }
    return {std::round(pixels.width / scale), std::round(pixels.height / scale)};
}

} // namespace platform::hyprland
