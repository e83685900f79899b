#include "Tessel/WindowActionRetry.h"

#include "Platform/Platform.h"
#include "Tessel/WindowMover.h"

#include <array>
#include <chrono>

namespace tessel {

namespace {

// Each attempt may hold the main thread for a whole turn's time, so the pauses grow.
constexpr std::array<std::chrono::milliseconds, 3> pauses{
    std::chrono::milliseconds(100), std::chrono::milliseconds(400), std::chrono::milliseconds(1600)};
constexpr std::chrono::milliseconds pauseLeeway{10};

} // namespace

void WindowActionRetry::perform(WindowAction action, const platform::AXUIElement& window) {
    attempt(action, window, 0);
}

void WindowActionRetry::attempt(WindowAction action, const platform::AXUIElement& window, std::size_t retries) {
    std::erase_if(waiting, [&](const Waiting& former) { return former.window == window; });
    if (WindowMover::attempt(action, window) == WindowMover::Outcome::ended || retries == pauses.size()) {
        return;
    }
    platform::MainActor& mainActor = platform::current().mainActor;
    waiting.push_back(
        {.window = window,
         .work = mainActor.schedule(mainActor.now() + pauses[retries], pauseLeeway, [this, action, window, retries] {
             // The attempt drops this work, and the copies that it holds.
             const platform::AXUIElement kept = window;
             attempt(action, kept, retries + 1);
         })});
}

} // namespace tessel
