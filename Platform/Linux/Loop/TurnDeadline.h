#pragma once

#include "Platform/Seam/Desktop/MainActor.h"

#include <chrono>
#include <concepts>
#include <optional>

namespace platform::linux {

/// The end of all waiting in one turn of the event loop. The loop owns it and renews it between turns; everything that
/// waits for an answer on the main thread ends its wait here, whoever is asked. So a turn waits for at most one limit,
/// however many servers and programs hang. Main thread only.
///
/// The limit begins to run with the first wait: a turn that waits for nothing costs no reading of the clock.
class TurnDeadline {
public:
    static constexpr std::chrono::milliseconds turnLimit{250};

    /// For what is done before the loop turns for the first time: at the beginning of a session every program asks the
    /// display server for something.
    static constexpr std::chrono::seconds startLimit{10};

    /// `clock` has to outlive this.
    explicit TurnDeadline(const MainActor& clock)
        : clock(clock) {}

    TurnDeadline(const TurnDeadline&) = delete;
    TurnDeadline& operator=(const TurnDeadline&) = delete;
    ~TurnDeadline() = default;

    /// A new turn: there is time again.
    void begin(Duration allowed = turnLimit) {
        limit = allowed;
        first.reset();
    }

    /// Whether the limit has begun to run, because something was waited for.
    [[nodiscard]] bool hasBegun() const { return first.has_value(); }

    /// Until when a wait may last. The limit begins to run, if it did not before.
    [[nodiscard]] Instant end() {
        if (!first) {
            first = clock.now();
        }
        return *first + limit;
    }

    /// How long a wait may last. Not positive once the time is used up.
    [[nodiscard]] Duration left() { return end() - clock.now(); }

    /// Whether the time is used up. What was not waited for has used up nothing.
    [[nodiscard]] bool hasPassed() { return hasBegun() && left() <= Duration::zero(); }

    [[nodiscard]] Instant now() const { return clock.now(); }

    /// Does work that takes time of its own, such as writing to a disk, without counting that time as waiting.
    void withoutCounting(const std::invocable auto& work) {
        const Instant begin = clock.now();
        work();
        if (first) {
            *first += clock.now() - begin;
        }
    }

private:
    const MainActor& clock;
    Duration limit = turnLimit;
    std::optional<Instant> first;
};

} // namespace platform::linux
