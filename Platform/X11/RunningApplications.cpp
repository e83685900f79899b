#include "Platform/X11/RunningApplications.h"

#include <algorithm>
#include <any>
#include <utility>

namespace platform::x11 {

namespace {

constexpr std::chrono::seconds longestGrace{10};
constexpr std::chrono::milliseconds leeway{500};
// Each takes a descriptor, of which a process has a thousand or so.
constexpr std::size_t mostWatchedExits = 256;
// Windows read at a time while looking for one of a certain kind.
constexpr std::size_t windowsAtOnce = 16;

} // namespace

RunningApplications::RunningApplications(Connection& connection, Turn& turn, linux::MainLoop& mainLoop,
                                         ManagedWindows& windows, Deliveries& deliveries, WindowReady windowReady)
    : connection(connection)
    , turn(turn)
    , mainLoop(mainLoop)
    , windows(windows)
    , deliveries(deliveries)
    , windowReady(std::move(windowReady)) {
}

void RunningApplications::start(linux::ApplicationIdentification& identifier, ApplicationCatalogue& names) {
    identification = &identifier;
    catalogue = &names;
    windows.start(*this);
}

std::vector<RunningApplicationReference> RunningApplications::runningApplications() {
    std::vector<RunningApplicationReference> references;
    references.reserve(applications.size());
    for (const auto& running : applications) {
        references.push_back(running->application);
    }
    return references;
}

RunningApplicationReference RunningApplications::runningApplication(ProcessIdentifier process) {
    const Running* running = find(process);
    return running == nullptr ? nullptr : running->application;
}

WindowInterest RunningApplications::windowAppeared(xcb_window_t window, const linux::ApplicationClues& clues,
                                                   bool wasThere) {
    Running* known = find(clues.process);
    if (known != nullptr && known->exit && known->exit->hasHappened()) {
        // The number is another process's by now.
        end(clues.process);
        known = nullptr;
    }
    Running& running = known == nullptr ? add(clues.process, wasThere) : *known;
    running.windows.push_back(window);
    if (!identifyBy(running, clues) && running.awaitsLaunch && !running.grace && !running.isGraceOver) {
        running.grace = mainLoop.schedule(mainLoop.now() + longestGrace, leeway,
                                          [this, process = clues.process] { endGrace(process); });
    }
    return {.identity = running.grace != nullptr, .destruction = running.exit == nullptr};
}

void RunningApplications::windowChangedIdentity(xcb_window_t /*window*/, const linux::ApplicationClues& clues) {
    Running* running = find(clues.process);
    if (running != nullptr && identifyBy(*running, clues)) {
        launchIfComplete(*running);
    }
}

void RunningApplications::windowBecameReady(xcb_window_t window, const ManagedWindow& facts) {
    if (Running* running = find(facts.process)) {
        launchIfComplete(*running);
    }
    windowReady(window, facts);
}

void RunningApplications::windowVanished(xcb_window_t window, const ManagedWindow& facts) {
    Running* running = find(facts.process);
    if (running == nullptr) {
        return;
    }
    std::erase(running->windows, window);
    if (running->windows.empty() && !running->exit) {
        end(facts.process);
    }
}

std::optional<std::string> RunningApplications::identify(ProcessIdentifier process) {
    Running* running = find(process);
    if (running == nullptr) {
        return std::nullopt;
    }
    std::vector<ApplicationCluesRequest> requests;
    for (const xcb_window_t window : running->windows) {
        if (requests.size() < windowsAtOnce) {
            requests.emplace_back(connection, window);
        }
    }
    for (const ApplicationCluesRequest& request : requests) {
        const auto clues = request.read(connection);
        if (clues && clues->process == process) {
            identifyBy(*running, *clues);
        }
    }
    if (!running->application->isIdentified()) {
        return std::nullopt;
    }
    launchIfComplete(*running);
    return running->application->bundleIdentifier();
}

std::optional<std::string> RunningApplications::displayName(const std::string& bundleIdentifier) {
    const auto location = catalogue->location(bundleIdentifier);
    return location ? std::optional(catalogue->displayName(*location)) : std::nullopt;
}

ActivationPolicy RunningApplications::activationPolicy(ProcessIdentifier process) {
    const Running* running = find(process);
    if (running == nullptr) {
        return ActivationPolicy::accessory;
    }
    std::vector<xcb_window_t> listed = running->windows;
    std::erase_if(listed, [this](xcb_window_t window) {
        const ManagedWindow* facts = windows.find(window);
        return facts == nullptr || !facts->isListed;
    });
    const auto isInTaskBars = [this](xcb_window_t window) {
        const WindowFacts* facts = turn.window(window);
        return facts != nullptr && facts->kind == WindowKind::standard && !facts->skipsTaskBars;
    };
    for (std::size_t first = 0; first < listed.size(); first += windowsAtOnce) {
        const auto begin = listed.begin() + static_cast<std::ptrdiff_t>(first);
        const auto end = listed.begin() + static_cast<std::ptrdiff_t>(std::min(first + windowsAtOnce, listed.size()));
        turn.readWindows({begin, end});
        if (std::any_of(begin, end, isInTaskBars)) {
            return ActivationPolicy::regular;
        }
    }
    return ActivationPolicy::accessory;
}

RunningApplications::Running* RunningApplications::find(ProcessIdentifier process) {
    const auto found = std::ranges::find_if(
        applications, [process](const auto& running) { return running->application->processIdentifier() == process; });
    return found == applications.end() ? nullptr : found->get();
}

RunningApplications::Running& RunningApplications::add(ProcessIdentifier process, bool wasThere) {
    auto running = std::make_unique<Running>();
    running->application = std::make_shared<Application>(directory, process);
    running->exit = watchExit(process);
    running->awaitsLaunch = !wasThere;
    return *applications.emplace_back(std::move(running));
}

std::unique_ptr<linux::ProcessExit> RunningApplications::watchExit(ProcessIdentifier process) {
    const auto watched =
        std::ranges::count_if(applications, [](const auto& running) { return running->exit != nullptr; });
    if (static_cast<std::size_t>(watched) >= mostWatchedExits) {
        return nullptr;
    }
    return linux::ProcessExit::watch(mainLoop, process, [this, process] { end(process); });
}

bool RunningApplications::identifyBy(Running& running, const linux::ApplicationClues& clues) {
    if (running.application->isIdentified()) {
        return true;
    }
    auto identifier = identification->bundleIdentifier(clues);
    if (!identifier) {
        return false;
    }
    running.application->setBundleIdentifier(*std::move(identifier));
    stopListening(running);
    return true;
}

void RunningApplications::stopListening(Running& running) {
    running.grace.reset();
    for (const xcb_window_t window : running.windows) {
        windows.endIdentityInterest(window);
    }
}

void RunningApplications::endGrace(ProcessIdentifier process) {
    if (Running* running = find(process)) {
        running->isGraceOver = true;
        stopListening(*running);
        launchIfComplete(*running);
    }
}

void RunningApplications::launchIfComplete(Running& running) {
    const bool isReady = std::ranges::any_of(running.windows, [this](xcb_window_t window) {
        const ManagedWindow* facts = windows.find(window);
        return facts != nullptr && facts->isListed && facts->isReady;
    });
    if (running.awaitsLaunch && isReady && (running.application->isIdentified() || running.isGraceOver)) {
        running.awaitsLaunch = false;
        tell(WorkspaceNotification::didLaunchApplication, running.application);
    }
}

void RunningApplications::end(ProcessIdentifier process) {
    const auto found = std::ranges::find_if(
        applications, [process](const auto& running) { return running->application->processIdentifier() == process; });
    if (found == applications.end()) {
        return;
    }
    const std::unique_ptr<Running> ended = std::move(*found);
    applications.erase(found);
    ended->application->terminate();
    windows.forgetOwner(process);
    if (!ended->awaitsLaunch) {
        tell(WorkspaceNotification::didTerminateApplication, ended->application);
    }
}

void RunningApplications::tell(std::string_view notification, RunningApplicationReference application) {
    deliveries.post([target = center, notification, application = std::move(application)] {
        target->post({.name = std::string(notification),
                      .userInfo = {{std::string(WorkspaceNotification::applicationKey), std::any(application)}}});
    });
}

} // namespace platform::x11
