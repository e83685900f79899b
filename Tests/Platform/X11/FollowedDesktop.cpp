#include "FollowedDesktop.h"

#include "Tests/Platform/Linux/Stopwatch.h"

#include <algorithm>
#include <any>
#include <chrono>
#include <stdexcept>
#include <utility>

namespace platform::x11 {

namespace {

constexpr std::chrono::seconds patience{20};

} // namespace

void FollowedDesktop::start(std::unique_ptr<TilingManager> tiling) {
    Desktop::TilingManagers managers;
    if (tiling) {
        managers.push_back(std::move(tiling));
    }
    auto opened = Desktop::open(mainLoop, std::move(managers));
    if (!opened) {
        throw std::runtime_error(opened.error());
    }
    desktop = *std::move(opened);
    const auto note = [this](const char* what) {
        return [this, what](const Notification& notification) {
            const auto application = std::any_cast<RunningApplicationReference>(
                notification.userInfo.find(WorkspaceNotification::applicationKey)->second);
            reported.push_back(std::string(what) + application->bundleIdentifier().value_or("nobody"));
            reportedApplications.push_back(application);
        };
    };
    const auto center = applications().notificationCenter();
    static_cast<void>(center->addObserver(WorkspaceNotification::didLaunchApplication, note("launch ")));
    static_cast<void>(center->addObserver(WorkspaceNotification::didTerminateApplication, note("terminate ")));
    desktop->followApplications(identification, catalogue);
}

xcb_window_t FollowedDesktop::makeWindow(const ClientProcess& client, const std::string& className) {
    const xcb_window_t window = client.makeWindow();
    if (!className.empty()) {
        testClient.setText(window, "WM_CLASS", "instance" + std::string(1, '\0') + className + std::string(1, '\0'));
    }
    return window;
}

xcb_window_t FollowedDesktop::openWindow(const ClientProcess& client, const std::string& className) {
    managed.push_back(makeWindow(client, className));
    list();
    return managed.back();
}

void FollowedDesktop::closeWindow(xcb_window_t window) {
    testClient.destroy(window);
    std::erase(managed, window);
    list();
}

bool FollowedDesktop::runUntil(const std::function<bool()>& condition) {
    constexpr std::uint64_t shortWait = 10'000;
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        const linux::Stopwatch stopwatch;
        sd_event_run(mainLoop.handle(), shortWait);
        longest = std::max(longest, stopwatch.elapsed());
    }
    return true;
}

void FollowedDesktop::settle() {
    const std::string name = "settled" + std::to_string(++settlings);
    ClientProcess last(server.display());
    const xcb_window_t window = makeWindow(last, "");
    testClient.setText(window, "_GTK_APPLICATION_ID", name);
    managed.push_back(window);
    list();
    const auto saw = [&](const std::string& what) { return std::ranges::find(reported, what) != reported.end(); };
    if (!runUntil([&] { return saw("launch " + name); })) {
        throw std::runtime_error("the desktop does not settle");
    }
    last.end();
    std::erase(managed, window);
    list();
    if (!runUntil([&] { return saw("terminate " + name); })) {
        throw std::runtime_error("the desktop does not settle");
    }
    for (std::size_t index = reported.size(); index-- > 0;) {
        if (reported[index].ends_with(name)) {
            reported.erase(reported.begin() + static_cast<std::ptrdiff_t>(index));
            reportedApplications.erase(reportedApplications.begin() + static_cast<std::ptrdiff_t>(index));
        }
    }
}

void FollowedDesktop::drain() {
    // Long enough for the server's messages to arrive.
    constexpr std::uint64_t quiet = 30'000;
    const auto end = std::chrono::steady_clock::now() + patience;
    while (sd_event_run(mainLoop.handle(), quiet) > 0) {
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("the desktop does not come to rest");
        }
    }
}

} // namespace platform::x11
