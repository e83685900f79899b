#pragma once

#include "Platform/Linux/Windows/RunningProcesses.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/Turn.h"

#include <functional>
#include <map>
#include <vector>

namespace platform::x11 {

/// The processes that own managed windows, or have owned one and still run. Each subscription to a window costs
/// wake-ups. There is one for the identification of its application while the launch waits for that, and one for its
/// destruction if the end of the process cannot be watched otherwise.
class RunningApplications final : public linux::RunningProcesses, private ManagedWindows::Follower {
public:
    /// Called when a window that is new is ready.
    using WindowReady = std::function<void(xcb_window_t window, const ManagedWindow& facts)>;

    RunningApplications(Connection& connection, Turn& turn, linux::MainLoop& mainLoop, ManagedWindows& windows,
                        linux::Deliveries& deliveries, WindowReady windowReady);

    /// Begins to follow. Both must outlive this.
    void start(linux::ApplicationIdentification& identifier, ApplicationCatalogue& names);

private:
    WindowInterest windowAppeared(xcb_window_t window, const linux::ApplicationClues& clues, bool wasThere) override;
    void windowChangedIdentity(xcb_window_t window, const linux::ApplicationClues& clues) override;
    void windowBecameReady(xcb_window_t window, const ManagedWindow& facts) override;
    void windowVanished(xcb_window_t window, const ManagedWindow& facts) override;

    [[nodiscard]] bool hasReadyWindow(ProcessIdentifier process) override;
    [[nodiscard]] std::vector<linux::ApplicationClues> clues(ProcessIdentifier process) override;
    [[nodiscard]] ActivationPolicy activationPolicy(ProcessIdentifier process) override;
    void stopListening(ProcessIdentifier process) override;
    void forget(ProcessIdentifier process) override;

    [[nodiscard]] std::vector<xcb_window_t> windowsOf(ProcessIdentifier process) const;

    Connection& connection;
    Turn& turn;
    ManagedWindows& windows;
    WindowReady windowReady;
    /// The existing ones of each process, oldest first.
    std::map<ProcessIdentifier, std::vector<xcb_window_t>> owned;
};

} // namespace platform::x11
