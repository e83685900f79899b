#pragma once

#include "Platform/HostedLoop.h"
#include "Platform/Linux/TurnDeadline.h"
#include "Platform/MainActor.h"

#include <systemd/sd-event.h>

#include <deque>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

namespace platform::linux {

/// A descriptor that the loop listens to. Dropping it ends that.
class DescriptorWatch {
public:
    DescriptorWatch() = default;
    DescriptorWatch(const DescriptorWatch&) = delete;
    DescriptorWatch& operator=(const DescriptorWatch&) = delete;
    virtual ~DescriptorWatch() = default;
};

/// Work at the end of each turn of the loop, until this is dropped.
class TurnEnd {
public:
    TurnEnd() = default;
    TurnEnd(const TurnEnd&) = delete;
    TurnEnd& operator=(const TurnEnd&) = delete;
    virtual ~TurnEnd() = default;
};

/// The main thread's event loop over sd-event, made on that thread.
///
/// Timers run on CLOCK_BOOTTIME, which counts on while the machine sleeps; their accuracy is the tolerance that was
/// asked for, so that the kernel wakes the process for several at once.
class MainLoop final : public MainActor, public HostedLoop {
public:
    MainLoop();
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;
    ~MainLoop() override;

    /// Runs until `end`; gives the status that it was given. A loop that cannot go on ends with status 1.
    [[nodiscard]] int run();

    /// Goes on in another loop: once the present turn is over, `run` calls `host` instead of waiting itself. The host
    /// serves this loop as `HostedLoop` says, and returns when it has ended. If it returns earlier, `run` goes on as
    /// before.
    void continueIn(std::function<void()> host) { next = std::move(host); }

    [[nodiscard]] int descriptor() const override;
    [[nodiscard]] Outlook serve() override;

    /// Ends `run` after the present turn. The first status given counts.
    void end(int status);

    /// Ends the loop with status 0 on SIGTERM, SIGINT and SIGHUP. A SIGHUP that is ignored when this is called stays
    /// so.
    void endOnTerminationSignals();

    /// Calls `prepare` before every time that the loop is about to wait, and `serve` when the descriptor is readable or
    /// when `prepare` said that there is something to serve already. The watch must not outlive the loop.
    [[nodiscard]] std::unique_ptr<DescriptorWatch> watch(int descriptor, std::function<bool()> prepare,
                                                         std::function<void()> serve);

    /// Calls `work` at the end of each turn, before the loop waits for the next. Must not outlive the loop.
    [[nodiscard]] std::unique_ptr<TurnEnd> atEndOfTurn(std::function<void()> work);

    /// The end of all waiting in the present turn. Renewed after all work at the end of the turn.
    [[nodiscard]] TurnDeadline& turnDeadline() { return limit; }

    /// The loop's own descriptor, for hanging it into another loop.
    [[nodiscard]] sd_event* handle() const { return loop.get(); }

    [[nodiscard]] bool isCurrent() const override;
    [[nodiscard]] Instant now() const override;
    void post(Work work) override;
    [[nodiscard]] std::unique_ptr<ScheduledWork> schedule(Instant deadline, Duration tolerance, Work work) override;
    void runLater(Instant deadline, Duration tolerance, Work work) override;

private:
    struct Unreference {
        void operator()(sd_event* event) const { sd_event_unref(event); }

        void operator()(sd_event_source* source) const { sd_event_source_disable_unref(source); }
    };

    using Source = std::unique_ptr<sd_event_source, Unreference>;

    /// Work for the next turn of the loop, fairly among everything else that waits.
    class Soon {
    public:
        Soon(sd_event* loop, std::function<void()> work)
            : loop(loop)
            , work(std::move(work)) {}

        /// Without effect while it waits already. May be called by the work itself.
        void arm();

    private:
        sd_event* loop;
        std::function<void()> work;
        Source source;
        bool isArmed = false;
    };

    class EndlessTimer;
    class Timer;
    class Watch;

    void runPosted();
    [[nodiscard]] bool isFinished() const;

    std::unique_ptr<sd_event, Unreference> loop;
    TurnDeadline limit{*this};
    std::unique_ptr<TurnEnd> deadlineRenewal;
    std::unique_ptr<Soon> turnOfPosted;
    std::deque<Work> posted;
    std::function<void()> next;
    bool isServing = false;
    std::thread::id mainThread = std::this_thread::get_id();
};

} // namespace platform::linux
