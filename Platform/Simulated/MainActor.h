#pragma once

#include "Platform/Seam/Desktop/MainActor.h"

#include <atomic>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace platform::simulated {

/// A main thread whose clock stands still until a test advances it. Its thread is the creating one; its event loop runs
/// only inside `run` and `advance`.
class MainActor final : public platform::MainActor {
public:
    /// A pending scheduled call.
    struct Waiting {
        Instant deadline;
        Duration tolerance{};

        friend bool operator==(const Waiting&, const Waiting&) = default;
    };

    /// While it lives, `isCurrent` is false on the thread that made the actor.
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

    /// Runs posted work, including work that it posts itself, until none is left. Returns the number of calls.
    std::size_t run();

    /// Advances the clock by `duration` and runs due work on the way, in the order of time.
    void advance(Duration duration);

    /// Advances the clock without running the event loop, like work that takes time.
    void pass(Duration duration);

    /// Whether scheduled work runs at its deadline (as at first) or as late as its tolerance allows.
    void setExhaustsTolerance(bool exhausts);

    /// The pending scheduled work, in the order of scheduling.
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
