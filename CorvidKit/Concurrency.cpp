#include "CorvidKit/Concurrency.h"

#include "Platform/Seam/Platform.h"

namespace corvid {

namespace {
constexpr SourceLocation notificationBlock{.file = "CorvidKit/Concurrency", .line = 37};
} // namespace

void assertIsolated(SourceLocation location) {
    if (!platform::current().mainActor.isCurrent()) {
        fatalError("Incorrect actor executor assumption; Expected same executor as MainActor", location);
    }
}

struct RepeatingTask::Loop {
    platform::MainActor& mainActor;
    platform::Duration interval;
    Action action;
    bool isCancelled = false;
    std::unique_ptr<platform::ScheduledWork> sleep = nullptr;
};

RepeatingTask::RepeatingTask(platform::Duration interval, Action action)
    : loop(std::make_shared<Loop>(
          Loop{.mainActor = platform::current().mainActor, .interval = interval, .action = std::move(action)})) {
    wait(loop);
}

RepeatingTask::~RepeatingTask() {
    cancel();
}

void RepeatingTask::cancel() {
    loop->isCancelled = true;
    loop->sleep.reset();
}

void RepeatingTask::wait(const std::shared_ptr<Loop>& loop) {
    const platform::Instant deadline = loop->mainActor.now() + loop->interval;
    loop->sleep = loop->mainActor.schedule(deadline, tolerance, [sleeping = std::weak_ptr(loop)] {
        // Held until the run is over: the action may drop the task, and is itself part of the loop.
        const std::shared_ptr<Loop> running = sleeping.lock();
        if (!running || running->isCancelled) {
            return;
        }
        running->action();
        if (!running->isCancelled) {
            wait(running);
        }
    });
}

NotificationObservation::NotificationObservation(std::string_view name,
                                                 std::shared_ptr<platform::NotificationCenter> center, Handler handler)
    : center(std::move(center))
    , token(this->center->addObserver(name, [handler = std::move(handler)](const platform::Notification& notification) {
        assumeIsolated(notificationBlock, [&] { handler(notification); });
    })) {
}

NotificationObservation& NotificationObservation::operator=(NotificationObservation&& other) noexcept {
    if (this != &other) {
        end();
        center = std::move(other.center);
        token = other.token;
    }
    return *this;
}

NotificationObservation::~NotificationObservation() {
    end();
}

void NotificationObservation::end() {
    if (center) {
        center->removeObserver(token);
    }
}

} // namespace corvid
