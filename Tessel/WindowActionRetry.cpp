#include "Tessel/WindowActionRetry.h"

#include "Platform/Seam/Platform.h"
#include "Tessel/WindowMover.h"

#include <array>
#include <chrono>
#include <cmath>
#include <utility>

namespace tessel {

namespace {

// Each attempt may block the main thread for a whole turn's time, so the pauses grow.
constexpr std::array<std::chrono::milliseconds, 3> pauses{
    std::chrono::milliseconds(100), std::chrono::milliseconds(400), std::chrono::milliseconds(1600)};
constexpr std::chrono::milliseconds pauseLeeway{10};

/// A caller does not wait for the retries after that, because the last pause is the longest by far.
constexpr std::size_t retriesAwaited = 2;

/// Whether a window may be there because its placement was cut short: it was placed with a decoration that it does not
/// have now, and a terminal rounds its size as well. A title bar or a row of text is thinner than this.
bool isNear(const corvid::CGRect& present, const corvid::CGRect& target) {
    constexpr double longestDifference = 64;
    const auto isClose = [](double first, double second) { return std::abs(first - second) <= longestDifference; };
    return isClose(present.origin.x, target.origin.x) && isClose(present.origin.y, target.origin.y) &&
           isClose(present.size.width, target.size.width) && isClose(present.size.height, target.size.height);
}

/// Whether the window is where the action found it or has put it, as far as it answers.
bool isWhereItWasLeft(const platform::AXUIElement& window, const WindowMover::Attempt& former) {
    const auto present = former.before ? WindowMover::frame(window) : std::nullopt;
    return !present || present == former.before || present->origin == former.goal->target.origin ||
           present->size == former.goal->target.size || isNear(*present, former.goal->target);
}

} // namespace

WindowMover::Outcome WindowActionRetry::perform(const WindowOrder& order, const platform::AXUIElement& window,
                                                Ended ended) {
    return attempt({.order = order,
                    .window = window,
                    .report = ended ? std::make_shared<Report>(std::move(ended)) : std::shared_ptr<Report>()});
}

void WindowActionRetry::follow(const WindowOrder& order, const platform::AXUIElement& window,
                               const WindowMover::Attempt& made) {
    forget(window);
    conclude({.order = order, .window = window}, made);
}

// The task is a copy: the attempt destroys the function that called it, with everything that it captured.
WindowMover::Outcome WindowActionRetry::attempt(Task task) {
    forget(task.window);
    const WindowMover::Attempt made = task.made.goal
                                          ? WindowMover::attempt(*task.made.goal, task.window)
                                          : WindowMover::attempt(task.order, task.window, memory.trail(task.window));
    conclude(std::move(task), made);
    return made.outcome;
}

void WindowActionRetry::conclude(Task task, const WindowMover::Attempt& made) {
    remember(task, made);
    const bool isLast = made.outcome != WindowMover::Outcome::unanswered || task.retries == pauses.size();
    if (task.report && (isLast || task.retries == retriesAwaited)) {
        task.report->deliver(made.outcome);
    }
    if (isLast) {
        return;
    }
    if (made.before) {
        task.made = made;
    }
    platform::MainActor& mainActor = platform::current().mainActor;
    const platform::Instant due = mainActor.now() + pauses[task.retries];
    ++task.retries;
    Waiting next{.window = task.window, .work = {}};
    next.work = mainActor.schedule(due, pauseLeeway, [this, task = std::move(task)] {
        if (isWhereItWasLeft(task.window, task.made)) {
            static_cast<void>(attempt(task));
        } else {
            forget(task.window);
        }
    });
    waiting.push_back(std::move(next));
}

void WindowActionRetry::remember(Task& task, const WindowMover::Attempt& made) {
    if (!made.placed || !made.process) {
        return;
    }
    if (task.isRemembered) {
        memory.amend(task.window, made);
    } else if (task.order == WindowOrder(WindowPlacement(WindowPlacement::restore))) {
        memory.goBack(task.window, made);
    } else {
        memory.add(task.window, made);
    }
    task.isRemembered = true;
}

// A copy for the same reason.
void WindowActionRetry::forget(platform::AXUIElement window) { // NOLINT(performance-unnecessary-value-param)
    std::erase_if(waiting, [&](const Waiting& former) { return former.window == window; });
}

} // namespace tessel
