#include "Tessel/WindowActionRetry.h"

#include "Platform/Platform.h"
#include "Tessel/WindowMover.h"

#include <array>
#include <chrono>
#include <utility>

namespace tessel {

namespace {

// Each attempt may hold the main thread for a whole turn's time, so the pauses grow.
constexpr std::array<std::chrono::milliseconds, 3> pauses{
    std::chrono::milliseconds(100), std::chrono::milliseconds(400), std::chrono::milliseconds(1600)};
constexpr std::chrono::milliseconds pauseLeeway{10};

/// Whether the window is where the action found it or has put it, as far as it answers.
bool isWhereItWasLeft(const platform::AXUIElement& window, const WindowMover::Attempt& former) {
    const auto present = former.before ? WindowMover::frame(window) : std::nullopt;
    return !present || present == former.before || present->origin == former.target->origin ||
           present->size == former.target->size;
}

} // namespace

void WindowActionRetry::perform(WindowAction action, const platform::AXUIElement& window) {
    attempt(action, window, 0);
}

// The window by value: the attempt drops the work that it is called by, with all that the work holds.
void WindowActionRetry::attempt(WindowAction action, platform::AXUIElement window, std::size_t retries) {
    forget(window);
    const WindowMover::Attempt made = WindowMover::attempt(action, window);
    if (made.outcome == WindowMover::Outcome::ended || retries == pauses.size()) {
        return;
    }
    platform::MainActor& mainActor = platform::current().mainActor;
    const platform::Instant due = mainActor.now() + pauses[retries];
    Waiting next{.window = window, .work = {}};
    next.work = mainActor.schedule(due, pauseLeeway, [this, action, window = std::move(window), made, retries] {
        if (isWhereItWasLeft(window, made)) {
            attempt(action, window, retries + 1);
        } else {
            forget(window);
        }
    });
    waiting.push_back(std::move(next));
}

// By value for the same reason.
void WindowActionRetry::forget(platform::AXUIElement window) { // NOLINT(performance-unnecessary-value-param)
    std::erase_if(waiting, [&](const Waiting& former) { return former.window == window; });
}

} // namespace tessel
