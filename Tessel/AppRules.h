#pragma once

#include "CorvidKit/Concurrency.h"
#include "CorvidKit/Lifetime.h"
#include "Platform/Seam/Desktop/AccessibilityObserver.h"
#include "Platform/Seam/Desktop/RunningApplications.h"
#include "Tessel/Prefs.h"
#include "Tessel/WindowMover.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace tessel {

/// Carries out the app rules: applies each ruled application's action to its first standard window, when the window is
/// created or if it exists already when the application is launched; and again shortly afterwards if the application
/// moved the window. Every failure is silent. Main thread only; no callback reaches a destroyed watcher.
class AppRules {
public:
    AppRules() = default;
    AppRules(const AppRules&) = delete;
    AppRules& operator=(const AppRules&) = delete;
    ~AppRules() = default;

    /// Actions by bundle identifier.
    [[nodiscard]] const Prefs::Rules& rules() const { return currentRules; }

    /// While running, starts watching applications that have a rule now, and stops watching those without one; open
    /// windows stay as they are.
    void setRules(Prefs::Rules rules);

    [[nodiscard]] bool isRunning() const { return running; }

    /// Starts watching; open windows stay as they are. Without effect while running.
    void start();

    /// Stops watching. A window that a rule was just applied to may still be moved back once.
    void stop();

    /// Notified of every window that a rule was applied to, with the rule's action. Optional.
    std::function<void(WindowAction, const platform::AXUIElement&, const WindowMover::Attempt&)> onPlacement;

private:
    /// Watches the running applications that have a rule, and no others.
    void syncObservers();

    /// Watches an application for new windows. Retries if it cannot be watched yet; `attempt` counts the retries so
    /// far.
    void watch(const platform::RunningApplicationReference& application, bool justLaunched, std::int64_t attempt);
    void watchLater(const platform::RunningApplicationReference& application, bool justLaunched, std::int64_t attempt);
    void unwatch(platform::ProcessIdentifier process);

    static void windowCreatedCallback(platform::AXObserver& observer, const platform::AXUIElement& element,
                                      std::string_view notification, void* context);
    void windowCreated(const platform::AXUIElement& window);
    void apply(const platform::AXUIElement& window);
    void place(WindowAction action, const platform::AXUIElement& window) const;

    Prefs::Rules currentRules;
    bool running = false;
    /// One for each watched process; its callbacks find the watcher by a plain pointer, so the observers are destroyed
    /// first.
    std::map<platform::ProcessIdentifier, std::unique_ptr<platform::AXObserver>> observers;
    std::vector<corvid::NotificationObservation> workspaceObservations;
    corvid::Lifetime lifetime;
};

} // namespace tessel
