#pragma once

#include "CorvidKit/FatalError.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/NotificationCenter.h"

#include <functional>
#include <memory>
#include <string_view>
#include <utility>

namespace corvid {

/// Stops the process, naming `location`, unless it is called on the main thread.
void assertIsolated(SourceLocation location);

/// Runs work that must already be on the main thread, as code called back by the platform is. There is no hop to the
/// main thread: to arrive elsewhere is a programming error, and stops the process.
template <typename Work>
decltype(auto) assumeIsolated(SourceLocation location, Work&& work) {
    assertIsolated(location);
    return std::invoke(std::forward<Work>(work));
}

/// Runs an action on the main thread every so often, until it is cancelled or dropped. It can be dropped from within
/// its own action. Main thread only.
///
/// The first run comes one interval after creation. Each wait begins when the run before it has ended, so that a slow
/// action delays the next run and runs never pile up. Every wait may end up to `tolerance` late.
class RepeatingTask {
public:
    using Action = std::move_only_function<void()>;

    /// The largest delay of a run, for any interval, so that the system can join wake-ups.
    static constexpr platform::Duration tolerance = std::chrono::seconds(10);

    RepeatingTask(platform::Duration interval, Action action);
    RepeatingTask(const RepeatingTask&) = delete;
    RepeatingTask& operator=(const RepeatingTask&) = delete;
    ~RepeatingTask();

    /// Ends the task for good; a run in progress finishes. Calling it again has no effect.
    void cancel();

private:
    struct Loop;

    static void wait(const std::shared_ptr<Loop>& loop);

    std::shared_ptr<Loop> loop;
};

/// Keeps one observer registered with a notification center until it is dropped, which ends the delivery at once. The
/// handler runs on the main thread and may drop the observation. Main thread only.
class NotificationObservation {
public:
    using Handler = std::function<void(const platform::Notification&)>;

    /// Observes the notifications of that name from any sender.
    NotificationObservation(std::string_view name, std::shared_ptr<platform::NotificationCenter> center,
                            Handler handler);
    NotificationObservation(const NotificationObservation&) = delete;
    NotificationObservation& operator=(const NotificationObservation&) = delete;
    /// The observation moved from observes nothing.
    NotificationObservation(NotificationObservation&&) noexcept = default;
    NotificationObservation& operator=(NotificationObservation&& other) noexcept;
    ~NotificationObservation();

private:
    void end();

    std::shared_ptr<platform::NotificationCenter> center;
    platform::NotificationCenter::Token token;
};

} // namespace corvid
