#include "Platform/Linux/Windows/RunningProcesses.h"

#include <algorithm>
#include <any>
#include <chrono>
#include <string>
#include <utility>

namespace platform::linux {

namespace {

constexpr std::chrono::seconds longestGrace{10};
constexpr std::chrono::milliseconds leeway{500};
// Each takes a descriptor, of which a process has a thousand or so.
constexpr std::size_t mostWatchedExits = 256;

} // namespace

RunningProcesses::RunningProcesses(MainLoop& mainLoop, Deliveries& deliveries)
    : mainLoop(mainLoop)
    , deliveries(deliveries) {
}

void RunningProcesses::setNames(ApplicationIdentification& identifier, ApplicationCatalogue& names) {
    identification = &identifier;
    catalogue = &names;
}

std::vector<RunningApplicationReference> RunningProcesses::runningApplications() {
    std::vector<RunningApplicationReference> references;
    references.reserve(applications.size());
    for (const auto& running : applications) {
        // One that is listed before its launch is delivered would be taken for one that was there before.
        if (!running->application->isBeingLaunched()) {
            references.push_back(running->application);
        }
    }
    return references;
}

RunningApplicationReference RunningProcesses::runningApplication(ProcessIdentifier process) {
    const Running* running = find(process);
    return running == nullptr ? nullptr : running->application;
}

RunningProcesses::Interest RunningProcesses::windowAppeared(const ApplicationClues& clues, bool wasThere) {
    Running* known = find(clues.process);
    if (known != nullptr && known->exit && known->exit->hasHappened()) {
        // The number is another process's by now.
        end(clues.process);
        known = nullptr;
    }
    Running& running = known == nullptr ? add(clues.process, wasThere) : *known;
    if (!identifyBy(running, clues) && running.awaitsLaunch && !running.grace && !running.isGraceOver) {
        running.grace = mainLoop.schedule(mainLoop.now() + longestGrace, leeway,
                                          [this, process = clues.process] { endGrace(process); });
    }
    return {.identity = running.grace != nullptr, .end = running.exit == nullptr};
}

void RunningProcesses::windowChangedIdentity(const ApplicationClues& clues) {
    Running* running = find(clues.process);
    if (running != nullptr && identifyBy(*running, clues)) {
        launchIfComplete(*running);
    }
}

void RunningProcesses::windowBecameReady(ProcessIdentifier process) {
    if (Running* running = find(process)) {
        launchIfComplete(*running);
    }
}

void RunningProcesses::lastWindowVanished(ProcessIdentifier process) {
    const Running* running = find(process);
    if (running != nullptr && !running->exit) {
        end(process);
    }
}

std::optional<std::string> RunningProcesses::identify(ProcessIdentifier process) {
    Running* running = find(process);
    if (running == nullptr) {
        return std::nullopt;
    }
    for (const ApplicationClues& each : clues(process)) {
        identifyBy(*running, each);
    }
    if (!running->application->isIdentified()) {
        return std::nullopt;
    }
    launchIfComplete(*running);
    return running->application->bundleIdentifier();
}

std::optional<std::string> RunningProcesses::displayName(const std::string& bundleIdentifier) {
    const auto location = catalogue->location(bundleIdentifier);
    return location ? std::optional(catalogue->displayName(*location)) : std::nullopt;
}

RunningProcesses::Place RunningProcesses::placeOf(ProcessIdentifier process) {
    return std::ranges::find_if(
        applications, [process](const auto& running) { return running->application->processIdentifier() == process; });
}

RunningProcesses::Running* RunningProcesses::find(ProcessIdentifier process) {
    const auto found = placeOf(process);
    return found == applications.end() ? nullptr : found->get();
}

RunningProcesses::Running& RunningProcesses::add(ProcessIdentifier process, bool wasThere) {
    auto running = std::make_unique<Running>();
    running->application = std::make_shared<Application>(directory, process);
    running->exit = watchExit(process);
    running->awaitsLaunch = !wasThere;
    return *applications.emplace_back(std::move(running));
}

std::unique_ptr<ProcessExit> RunningProcesses::watchExit(ProcessIdentifier process) {
    const auto watched =
        std::ranges::count_if(applications, [](const auto& running) { return running->exit != nullptr; });
    if (static_cast<std::size_t>(watched) >= mostWatchedExits) {
        return nullptr;
    }
    return ProcessExit::watch(mainLoop, process, [this, process] { end(process); });
}

bool RunningProcesses::identifyBy(Running& running, const ApplicationClues& clues) {
    if (running.application->isIdentified()) {
        return true;
    }
    auto identifier = identification->bundleIdentifier(clues);
    if (!identifier) {
        return false;
    }
    running.application->setBundleIdentifier(*std::move(identifier));
    endListening(running);
    return true;
}

void RunningProcesses::endListening(Running& running) {
    running.grace.reset();
    stopListening(running.application->processIdentifier());
}

void RunningProcesses::endGrace(ProcessIdentifier process) {
    if (Running* running = find(process)) {
        running->isGraceOver = true;
        endListening(*running);
        launchIfComplete(*running);
    }
}

void RunningProcesses::launchIfComplete(Running& running) {
    const bool isKnown = running.application->isIdentified() || running.isGraceOver;
    if (running.awaitsLaunch && isKnown && hasReadyWindow(running.application->processIdentifier())) {
        running.awaitsLaunch = false;
        running.application->setBeingLaunched(true);
        postNotification(WorkspaceNotification::didLaunchApplication, running.application);
    }
}

void RunningProcesses::end(ProcessIdentifier process) {
    const auto found = placeOf(process);
    if (found == applications.end()) {
        return;
    }
    const std::unique_ptr<Running> ended = std::move(*found);
    applications.erase(found);
    ended->application->terminate();
    forget(process);
    if (!ended->awaitsLaunch) {
        postNotification(WorkspaceNotification::didTerminateApplication, ended->application);
    }
}

void RunningProcesses::postNotification(std::string_view notification, std::shared_ptr<Application> application) {
    deliveries.post([target = center, notification, application = std::move(application)] {
        application->setBeingLaunched(false);
        target->post({.name = std::string(notification),
                      .userInfo = {{std::string(WorkspaceNotification::applicationKey),
                                    std::any(RunningApplicationReference(application))}}});
    });
}

} // namespace platform::linux
