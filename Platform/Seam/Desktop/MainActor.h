#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace platform {

/// The clock that continues while the machine is suspended. It has no `now` of its own: use the `MainActor`'s, so that
/// tests can advance it.
struct ContinuousClock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<ContinuousClock, duration>;
};

using Duration = ContinuousClock::duration;
using Instant = ContinuousClock::time_point;

/// A scheduled call. Destroying it before its time cancels it; destroying it while it runs, or after, is harmless.
class ScheduledWork {
public:
    ScheduledWork() = default;
    ScheduledWork(const ScheduledWork&) = delete;
    ScheduledWork& operator=(const ScheduledWork&) = delete;
    virtual ~ScheduledWork() = default;
};

/// The main thread, on which the whole program runs.
class MainActor {
public:
    using Work = std::move_only_function<void()>;

    MainActor() = default;
    MainActor(const MainActor&) = delete;
    MainActor& operator=(const MainActor&) = delete;
    virtual ~MainActor() = default;

    /// Whether the caller is on the main thread. Any thread.
    [[nodiscard]] virtual bool isCurrent() const = 0;

    /// The time now. Any thread.
    [[nodiscard]] virtual Instant now() const = 0;

    /// Runs `work` in a later turn of the event loop, in the order of posting. Main thread; work that is pending when
    /// the loop ends is destroyed without running.
    virtual void post(Work work) = 0;

    /// Runs `work` once on the main thread, not before `deadline` and, while the machine is awake and idle, at most
    /// `tolerance` later (the backend may use the leeway to join wake-ups). Main thread.
    [[nodiscard]] virtual std::unique_ptr<ScheduledWork> schedule(Instant deadline, Duration tolerance, Work work) = 0;

    /// The same for work without an owner, which cannot be cancelled; work that is pending when the loop ends is
    /// destroyed without running. Main thread.
    virtual void runLater(Instant deadline, Duration tolerance, Work work) = 0;
};

} // namespace platform
