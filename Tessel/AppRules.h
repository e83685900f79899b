#pragma once

#include "CorvidKit/Concurrency.h"
#include "CorvidKit/Lifetime.h"
#include "Platform/AccessibilityObserver.h"
#include "Platform/RunningApplications.h"
#include "Tessel/Prefs.h"
#include "Tessel/WindowMover.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace tessel {

/// Carries out the app rules: applies each ruled application's action to its first standard window, as it is created or
/// when it already stands there as the application has just been launched; and once more shortly afterwards if the
/// application moved the window again. Every failure is silent. Main thread only; nothing reaches a watcher that has
/// been dropped.
class AppRules {
public:
    AppRules() = default;
    AppRules(const AppRules&) = delete;
    AppRules& operator=(const AppRules&) = delete;
    ~AppRules() = default;

    /// Actions by bundle identifier.
    [[nodiscard]] const Prefs::Rules& rules() const { return currentRules; }

    /// While running, applications that have a rule now are watched from now on, and those without one no longer;
    /// windows that are open already stay as they are.
    void setRules(Prefs::Rules rules);

    [[nodiscard]] bool isRunning() const { return running; }

    /// Starts watching; nothing happens to windows that are open already. Without effect while running.
    void start();

    /// Stops watching. A window that a rule was just applied to may still be put back once.
    void stop();

    /// Told of every window that a rule was applied to. May be left out.
    std::function<void(const platform::AXUIElement&, const WindowMover::Attempt&)> onPlacement;

private:
    /// Watches the running applications that have a rule, and no others.
    void syncObservers();

    /// Watches an application for new windows. One that cannot be watched yet is tried again, `attempt` times so far.
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
    /// One for each watched process; its callbacks find the watcher by a plain pointer, which is why it goes first.
    std::map<platform::ProcessIdentifier, std::unique_ptr<platform::AXObserver>> observers;
    std::vector<corvid::NotificationObservation> workspaceObservations;
    corvid::Lifetime lifetime;
};

} // namespace tessel
