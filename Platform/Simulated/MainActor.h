#pragma once

#include "Platform/MainActor.h"

#include <atomic>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace platform::simulated {

/// A main thread whose clock stands still until it is turned. It is the thread that makes it; its event loop turns only
/// inside `run` and `advance`.
class MainActor final : public platform::MainActor {
public:
    /// A piece of scheduled work that still waits.
    struct Waiting {
        Instant deadline;
        Duration tolerance{};

        friend bool operator==(const Waiting&, const Waiting&) = default;
    };

    /// While it lives, the thread that made the actor is told that it is not the main thread.
    class Elsewhere {
    public:
        explicit Elsewhere(MainActor& actor)
            : actor(actor) {
            ++actor.elsewhere;
        }
        Elsewhere(const Elsewhere&) = delete;
        Elsewhere& operator=(const Elsewhere&) = delete;
        ~Elsewhere() { --actor.elsewhere; }

    private:
        MainActor& actor;
    };

    MainActor();
    MainActor(const MainActor&) = delete;
    MainActor& operator=(const MainActor&) = delete;
    ~MainActor() override;

    [[nodiscard]] bool isCurrent() const override;
    [[nodiscard]] Instant now() const override;
    void post(Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> schedule(Instant deadline, Duration tolerance, Work work) override;
    void runLater(Instant deadline, Duration tolerance, Work work) override;

    /// Runs posted work, also what it posts itself, until none is left. Gives the number of pieces run.
    std::size_t run();

    /// Turns the clock by `duration` and runs on the way, in the order of time, whatever falls due.
    void advance(Duration duration);

    /// Turns the clock without turning the event loop: what work does that takes its time.
    void pass(Duration duration);

    /// Whether scheduled work runs at its deadline (as at first) or as late as its tolerance allows.
    void setExhaustsTolerance(bool exhausts);

    /// The scheduled work that still waits, in the order of scheduling.
    [[nodiscard]] std::vector<Waiting> waiting() const;

private:
    struct Schedule;
    class Handle;

    const std::thread::id thread = std::this_thread::get_id();
    int elsewhere = 0;
    std::atomic<Instant::rep> clock{0};
    /// Shared with the handles, which may outlive the actor.
    std::shared_ptr<Schedule> scheduled;
    std::mutex postedMutex;
    std::deque<Work> posted;
};

} // namespace platform::simulated
