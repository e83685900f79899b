#include "Platform/KWin/WindowAccess.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>
#include <variant>

namespace platform::kwin {

namespace {

/// A window that takes another size than the requested one may pass through a third one; it has come to rest when
/// nothing has changed for this long.
constexpr std::chrono::milliseconds calm{40};
/// An X11 window that counts its size in characters requests a whole number of them after it was forced into another
/// size: within 60 ms on a quiet machine, and within 125 ms on a busy one (measured with xterm). KWin does not report
/// that request in advance.
constexpr std::chrono::milliseconds timeToObject{200};

constexpr std::chrono::milliseconds pointerPatience{100};

/// On scaled screens KWin rounds to their pixels.
constexpr double roundingError = 1;

bool isClose(double a, double b) {
    return std::abs(a - b) < roundingError;
}

bool isClose(const corvid::CGPoint& a, const corvid::CGPoint& b) {
    return isClose(a.x, b.x) && isClose(a.y, b.y);
}

bool isClose(const corvid::CGRect& a, const corvid::CGRect& b) {
    return isClose(a.origin, b.origin) && isClose(a.size.width, b.size.width) && isClose(a.size.height, b.size.height);
}

} // namespace

WindowAccess::WindowAccess(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, compositor::WindowTable& table,
                           std::filesystem::path script, ScriptLink::Timing timing)
    : mainLoop(mainLoop)
    , table(table)
    , link(mainLoop, sessionBus, std::move(script), *this, timing) {
}

bool WindowAccess::waitUntilOpen(Instant deadline) {
    return link.waitFor([this] { return table.isOpen(); }, deadline);
}

void WindowAccess::refresh(Instant /*deadline*/) {
    link.actOnArrivals();
}

AXError WindowAccess::place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) {
    link.actOnArrivals();
    AXError error = request(window, frame, deadline);
    const compositor::Window* placed = table.find(window);
    if (error == AXError::success && placed != nullptr && !isClose(placed->frame.origin, frame.origin)) {
        // It took another size and moved away with it, so it keeps that size.
        error = request(window, {.origin = frame.origin, .size = placed->frame.size}, deadline);
    }
    return error;
}

AXError WindowAccess::request(const compositor::WindowIdentifier& window, const corvid::CGRect& frame,
                              Instant deadline) {
    const compositor::Window* known = table.find(window);
    if (known == nullptr) {
        return AXError::invalidUIElement;
    }
    if (known->isFullscreen || !table.isOpen()) {
        return AXError::cannotComplete;
    }
    placement = Placement{.number = ++lastNumber,
                          .window = window,
                          .frame = frame,
                          .formerFrame = known->frame,
                          .outcome = std::nullopt,
                          .lastChange = std::nullopt};
    link.ask(ScriptMessages::place(lastNumber, window, frame));
    const AXError error = settle(deadline);
    placement.reset();
    return error;
}

AXError WindowAccess::settle(Instant deadline) {
    const auto isAnswered = [this] { return placement->outcome || !table.isOpen(); };
    if (!link.waitFor(isAnswered, deadline)) {
        return AXError::cannotComplete;
    }
    switch (placement->outcome.value_or(ScriptMessages::Outcome::failed)) {
    case ScriptMessages::Outcome::gone:
        return AXError::invalidUIElement;
    case ScriptMessages::Outcome::refused:
    case ScriptMessages::Outcome::failed:
        return AXError::cannotComplete;
    case ScriptMessages::Outcome::done:
        break;
    }
    // On Wayland a window has its new frame only after its program has drawn it.
    const Instant begin = mainLoop.now();
    for (;;) {
        const compositor::Window* placed = table.find(placement->window);
        if (placed == nullptr) {
            return AXError::invalidUIElement;
        }
        const bool isThere = isClose(placed->frame, placement->frame);
        if (placement->isTakenBack || (isThere && !placement->mayBeCorrected)) {
            return AXError::success;
        }
        const auto former = placement->lastChange;
        const bool isResting = isThere || former;
        const Instant rest = isResting ? std::min(deadline, former ? *former + calm : begin + timeToObject) : deadline;
        const auto hasChanged = [&] {
            return placement->lastChange != former || placement->isTakenBack || !table.isOpen();
        };
        if (!link.waitFor(hasChanged, rest)) {
            return isThere || (former && mainLoop.now() < deadline) ? AXError::success : AXError::cannotComplete;
        }
        if (!table.isOpen()) {
            return AXError::cannotComplete;
        }
    }
}

std::optional<corvid::CGPoint> WindowAccess::pointer() {
    link.actOnArrivals();
    if (!table.isOpen()) {
        return std::nullopt;
    }
    const std::uint64_t number = ++lastNumber;
    pointerResult.reset();
    link.ask(ScriptMessages::pointer(number));
    const auto isAnswered = [this, number] { return pointerResult && pointerResult->number == number; };
    const Instant limit = std::min(mainLoop.now() + pointerPatience, mainLoop.turnDeadline().end());
    return link.waitFor(isAnswered, limit) ? pointerResult->pointer : std::nullopt;
}

void WindowAccess::placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) {
    ownPlaces[title] = topLeft;
    link.actOnArrivals();
    if (table.isOpen()) {
        link.ask(ScriptMessages::placeOwn(++lastNumber, ::getpid(), title, topLeft));
    }
}

void WindowAccess::scriptReported(ScriptMessages::News news) {
    std::visit([this](auto& report) { take(std::move(report)); }, news);
}

void WindowAccess::scriptCarriedOut(const ScriptMessages::Result& result) {
    if (result.pointer) {
        pointerResult = result;
    }
    if (!placement || placement->number != result.number) {
        return;
    }
    placement->outcome = result.outcome;
    placement->frame = result.asked.value_or(placement->frame);
    placement->mayBeCorrected = result.isForced && placement->frame.size != placement->formerFrame.size;
    // An immediate change, such as a mere move, needs no waiting.
    const compositor::Window* known = table.find(placement->window);
    if (known != nullptr && result.frame && known->frame != *result.frame) {
        compositor::Window present = *known;
        present.frame = *result.frame;
        table.put(placement->window, std::move(present));
    }
}

void WindowAccess::scriptLost() {
    table.close();
}

void WindowAccess::take(ScriptMessages::Opened contents) {
    table.open(std::move(contents));
    for (const auto& [title, topLeft] : ownPlaces) {
        link.ask(ScriptMessages::placeOwn(++lastNumber, ::getpid(), title, topLeft));
    }
}

void WindowAccess::take(ScriptMessages::WindowReport report) {
    if (undoing && undoing->window == report.identifier) {
        undoing.reset();
    }
    const bool isUndoing = isUndone(report);
    if (placement && placement->window == report.identifier) {
        placement->isTakenBack = isUndoing;
    }
    if (isUndoing) {
        auto work = [this, report] { table.put(report.identifier, report.window); };
        undoing = Undoing{.window = report.identifier,
                          .notice = mainLoop.schedule(mainLoop.now(), std::chrono::milliseconds(1), std::move(work))};
        return;
    }
    if (placement && placement->outcome && placement->window == report.identifier) {
        const compositor::Window* known = table.find(report.identifier);
        if (known == nullptr || known->frame != report.window.frame) {
            placement->lastChange = mainLoop.now();
        }
    }
    table.put(report.identifier, std::move(report.window));
}

bool WindowAccess::isUndone(const ScriptMessages::WindowReport& report) const {
    if (!placement || !placement->outcome || !placement->mayBeCorrected || placement->window != report.identifier) {
        return false;
    }
    return isClose(report.window.frame, placement->formerFrame) &&
           !isClose(placement->frame.origin, placement->formerFrame.origin);
}

void WindowAccess::take(const ScriptMessages::Gone& gone) {
    if (undoing && undoing->window == gone.identifier) {
        undoing.reset();
    }
    table.remove(gone.identifier);
}

void WindowAccess::take(ScriptMessages::Focused focused) {
    table.setFocused(std::move(focused.identifier));
}

void WindowAccess::take(ScriptMessages::Screens screens) {
    table.setOutputs(std::move(screens.outputs));
}

} // namespace platform::kwin
