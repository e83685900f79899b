#include "Platform/ShellCore/WindowAccess.h"

#include "Platform/ShellCore/Arguments.h"
#include "Platform/ShellCore/Protocol.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

namespace platform::shellcore {

namespace {

/// A coordinate in the bus's format.
std::int32_t whole(double value) {
    constexpr double most = 1e6;
    return static_cast<std::int32_t>(std::lround(std::clamp(value, -most, most)));
}

std::uint64_t numberOf(const compositor::WindowIdentifier& window) {
    std::uint64_t number = 0;
    std::from_chars(window.data(), window.data() + window.size(), number);
    return number;
}

} // namespace

WindowAccess::WindowAccess(ShellLink& link, compositor::WindowTable& table, Opening opening)
    : Listener(link)
    , link(link)
    , table(table)
    , opening(std::move(opening)) {
}

void WindowAccess::refresh(Instant deadline) {
    if (!areFramesStale || !link.isOpen()) {
        return;
    }
    const ShellLink::Answer answer = link.call(deadline, "Frames", "");
    if (!answer) {
        return;
    }
    const auto frames = parseFrames(textOf(answer->get()));
    if (!frames) {
        return;
    }
    areFramesStale = false;
    for (const WindowFrame& each : *frames) {
        put(each.window, each.frame, each.isFullscreen);
    }
}

AXError WindowAccess::place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) {
    if (!link.isOpen()) {
        return AXError::apiDisabled;
    }
    const compositor::Window* known = table.find(window);
    if (known == nullptr) {
        return AXError::invalidUIElement;
    }
    const std::uint64_t number = numberOf(window);
    const std::int32_t x = whole(frame.origin.x);
    const std::int32_t y = whole(frame.origin.y);
    const std::int32_t width = whole(frame.size.width);
    const std::int32_t height = whole(frame.size.height);
    if (link.isPast(deadline)) {
        link.send("Place", "tiiii", number, x, y, width, height);
        areFramesStale = true;
        return AXError::cannotComplete;
    }
    const ShellLink::Answer answer = link.call(deadline, "Place", "tiiii", number, x, y, width, height);
    if (const auto settled = answer ? rectangleOf(answer->get()) : std::nullopt) {
        put(window, *settled, known->isFullscreen);
        return AXError::success;
    }
    areFramesStale = true;
    return !answer && answer.error().name == Protocol::noSuchWindow ? AXError::invalidUIElement
                                                                    : AXError::cannotComplete;
}

std::optional<corvid::CGPoint> WindowAccess::pointer() {
    const ShellLink::Answer answer = link.call(link.deadline(), "Pointer", "");
    std::int32_t x = 0;
    std::int32_t y = 0;
    if (!answer || sd_bus_message_read(answer->get(), "ii", &x, &y) <= 0) {
        return std::nullopt;
    }
    return corvid::CGPoint{static_cast<double>(x), static_cast<double>(y)};
}

void WindowAccess::placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) {
    link.send("PlaceOwn", "isii", ::getpid(), title.c_str(), whole(topLeft.x), whole(topLeft.y));
}

void WindowAccess::opened(const Hello& hello, bool /*isNew*/) {
    focused = hello.contents.focused;
    areFramesStale = false;
    table.open(hello.contents);
    showFocus();
}

void WindowAccess::closed() {
    table.close();
}

void WindowAccess::signalArrived(std::string_view signal, sd_bus_message* message) {
    if (signal == "WindowChanged") {
        if (auto window = parseWindow(textOf(message))) {
            table.put(window->first, std::move(window->second));
            // A reply to a later request is newer than this.
            areFramesStale = true;
            showFocus();
        }
    } else if (signal == "WindowGone") {
        if (const auto window = windowOf(message)) {
            table.remove(std::to_string(*window));
        }
    } else if (signal == "Moved") {
        areFramesStale = true;
    } else if (signal == "Focused") {
        if (const auto window = windowOf(message)) {
            focused = *window == 0 ? std::nullopt : std::optional(std::to_string(*window));
            showFocus();
        }
    } else if (signal == "OutputsChanged") {
        if (auto outputs = parseOutputs(textOf(message))) {
            table.setOutputs(*std::move(outputs));
        }
    }
}

void WindowAccess::put(const compositor::WindowIdentifier& identifier, const corvid::CGRect& frame, bool isFullscreen) {
    const compositor::Window* known = table.find(identifier);
    if (known == nullptr) {
        return;
    }
    compositor::Window window = *known;
    window.frame = frame;
    window.isFullscreen = isFullscreen;
    table.put(identifier, std::move(window));
}

void WindowAccess::showFocus() {
    // The keyboard focus may be elsewhere than in a window, for example in the desktop's background.
    table.setFocused(focused && table.find(*focused) != nullptr ? focused : std::nullopt);
}

} // namespace platform::shellcore
