#include "Tessel/AppRules.h"

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Platform.h"
#include "TesselCore/AppRule.h"

#include <any>
#include <chrono>
#include <expected>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace tessel {

using platform::AXUIElement;
using platform::ProcessIdentifier;
using platform::RunningApplicationReference;

namespace {

/// The delay before the next attempt for an application that cannot be watched yet, and the number of further attempts.
constexpr std::chrono::milliseconds retryDelay{250};
constexpr std::int64_t mostRetries = 40;

/// The time in which an application may move its window again after a rule.
constexpr std::chrono::milliseconds settleDelay{400};

/// Runs a function on the main thread after an exact delay; it cannot be cancelled.
void runAfter(platform::Duration delay, platform::MainActor::Work work) {
    platform::MainActor& mainActor = platform::current().mainActor;
    mainActor.runLater(mainActor.now() + delay, platform::Duration::zero(), std::move(work));
}

/// The application in a notification of the workspace; null without one.
RunningApplicationReference applicationIn(const platform::Notification& notification) {
    const auto found = notification.userInfo.find(platform::WorkspaceNotification::applicationKey);
    if (found == notification.userInfo.end()) {
        return nullptr;
    }
    const auto* application = std::any_cast<RunningApplicationReference>(&found->second);
    return application == nullptr ? nullptr : *application;
}

std::optional<WindowAction> ruleFor(const Prefs::Rules& rules, const std::optional<std::string>& bundleIdentifier) {
    const auto found = bundleIdentifier ? rules.find(*bundleIdentifier) : rules.end();
    return found == rules.end() ? std::nullopt : std::optional(found->second);
}

/// An observer of the process that notifies `context` of new windows; null if the process is not ready for one.
std::unique_ptr<platform::AXObserver> observeWindows(ProcessIdentifier process, const AXUIElement& application,
                                                     platform::AXObserverCallback callback, void* context) {
    auto observer = platform::current().desktop.accessibilityObservers.createObserver(process, callback);
    if (!observer || *observer == nullptr) {
        return nullptr;
    }
    const platform::AXError error =
        (*observer)->addNotification(application, platform::AXNotification::windowCreated, context);
    return error == platform::AXError::success ? *std::move(observer) : nullptr;
}

} // namespace

void AppRules::setRules(Prefs::Rules rules) {
    currentRules = std::move(rules);
    if (running) {
        syncObservers();
    }
}

void AppRules::start() {
    if (running) {
        return;
    }
    running = true;
    const auto center = platform::current().desktop.runningApplications.notificationCenter();
    workspaceObservations.emplace_back(platform::WorkspaceNotification::didLaunchApplication, center,
                                       [this](const platform::Notification& notification) {
                                           if (const auto application = applicationIn(notification)) {
                                               watch(application, true, 0);
                                           }
                                       });
    workspaceObservations.emplace_back(platform::WorkspaceNotification::didTerminateApplication, center,
                                       [this](const platform::Notification& notification) {
                                           if (const auto application = applicationIn(notification)) {
                                               unwatch(application->processIdentifier());
                                           }
                                       });
    syncObservers();
}

void AppRules::stop() {
    running = false;
    workspaceObservations.clear();
    observers.clear();
}

void AppRules::syncObservers() {
    std::set<ProcessIdentifier> ruled;
    for (const auto& application : platform::current().desktop.runningApplications.runningApplications()) {
        if (currentRules.contains(application->bundleIdentifier().value_or(""))) {
            watch(application, false, 0);
            ruled.insert(application->processIdentifier());
        }
    }
    std::erase_if(observers, [&ruled](const auto& entry) { return !ruled.contains(entry.first); });
}

void AppRules::watch(const RunningApplicationReference& application, bool justLaunched, std::int64_t attempt) {
    const ProcessIdentifier process = application->processIdentifier();
    if (!running || observers.contains(process) || application->isTerminated() ||
        !ruleFor(currentRules, application->bundleIdentifier())) {
        return;
    }
    const AXUIElement element = platform::current().desktop.accessibility.applicationElement(process);
    auto observer = observeWindows(process, element, &AppRules::windowCreatedCallback, this);
    if (!observer) {
        watchLater(application, justLaunched, attempt);
        return;
    }
    observers.emplace(process, std::move(observer));
    if (!justLaunched) {
        return;
    }
    const std::vector<AXUIElement> windows = WindowMover::standardWindows(element);
    if (windows.size() == 1) {
        apply(windows.front());
    }
}

void AppRules::watchLater(const RunningApplicationReference& application, bool justLaunched, std::int64_t attempt) {
    if (attempt >= mostRetries) {
        return;
    }
    runAfter(retryDelay, [this, watcher = lifetime.watch(), application, justLaunched, attempt] {
        if (!watcher.isOver()) {
            watch(application, justLaunched, attempt + 1);
        }
    });
}

void AppRules::unwatch(ProcessIdentifier process) {
    observers.erase(process);
}

void AppRules::windowCreatedCallback(platform::AXObserver& /*observer*/, const AXUIElement& element,
                                     std::string_view /*notification*/, void* context) {
    if (context == nullptr) {
        return;
    }
    corvid::assumeIsolated({.file = "Tessel/AppRules", .line = __LINE__},
                           [&] { static_cast<AppRules*>(context)->windowCreated(element); });
}

void AppRules::windowCreated(const AXUIElement& window) {
    if (!WindowMover::isStandard(window)) {
        return;
    }
    platform::Accessibility& accessibility = platform::current().desktop.accessibility;
    const std::expected<ProcessIdentifier, platform::AXError> process = accessibility.processIdentifier(window);
    if (!process) {
        return;
    }
    const auto count = WindowMover::standardWindows(accessibility.applicationElement(*process)).size();
    if (AppRule::applies(static_cast<std::int64_t>(count))) {
        apply(window);
    }
}

void AppRules::apply(const AXUIElement& window) {
    const auto process = platform::current().desktop.accessibility.processIdentifier(window);
    if (!process) {
        return;
    }
    const auto application = platform::current().desktop.runningApplications.runningApplication(*process);
    const auto action = application ? ruleFor(currentRules, application->bundleIdentifier()) : std::nullopt;
    if (!action) {
        return;
    }
    place(*action, window);
    runAfter(settleDelay,
             [this, watcher = lifetime.watch(), window, action = *action, settled = WindowMover::frame(window)] {
                 const auto present = WindowMover::frame(window);
                 if (!present || present == settled) {
                     return;
                 }
                 if (watcher.isOver()) {
                     WindowMover::perform(action, window);
                 } else {
                     place(action, window);
                 }
             });
}

void AppRules::place(WindowAction action, const AXUIElement& window) const {
    const WindowMover::Attempt made = WindowMover::attempt(action, window);
    if (onPlacement) {
        onPlacement(action, window, made);
    }
}

} // namespace tessel
