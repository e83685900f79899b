#include "FollowedCompositor.h"

#include <any>
#include <chrono>
#include <utility>

namespace platform::compositor {

FollowedCompositor::FollowedCompositor() {
    const auto note = [this](const char* what) {
        return [this, what](const Notification& notification) {
            const auto application = std::any_cast<RunningApplicationReference>(
                notification.userInfo.find(WorkspaceNotification::applicationKey)->second);
            reported.push_back(std::string(what) + application->bundleIdentifier().value_or("nobody"));
        };
    };
    const auto center = parts().runningApplications.notificationCenter();
    static_cast<void>(center->addObserver(WorkspaceNotification::didLaunchApplication, note("launch ")));
    static_cast<void>(center->addObserver(WorkspaceNotification::didTerminateApplication, note("terminate ")));
}

void FollowedCompositor::start(WindowTable::Contents contents) {
    table.open(std::move(contents));
    desktop->followApplications(identification, catalogue);
}

void FollowedCompositor::openWindow(const WindowIdentifier& identifier, ProcessIdentifier process,
                                    const std::string& className) {
    Window window = readyWindow(process);
    window.clues.windowClass = className;
    table.put(identifier, window);
}

bool FollowedCompositor::runUntil(const std::function<bool()>& condition) {
    constexpr std::uint64_t shortWait = 10'000;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        sd_event_run(mainLoop.handle(), shortWait);
    }
    return true;
}

void FollowedCompositor::drain() {
    while (sd_event_run(mainLoop.handle(), 0) > 0) {
    }
}

} // namespace platform::compositor
