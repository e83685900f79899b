#pragma once

#include "Platform/ApplicationCatalogue.h"
#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/ProcessExit.h"
#include "Platform/RunningApplications.h"
#include "Platform/X11/Application.h"
#include "Platform/X11/Deliveries.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/Turn.h"

#include <functional>
#include <memory>
#include <vector>

namespace platform::x11 {

/// The processes that own managed windows, or have owned one and still run.
///
/// A process is launched when its first window can be dealt with and its application is identified. One that is not
/// identified by its first window is told as soon as a later property or window identifies it, and after ten seconds in
/// any case: whatever a program says of itself, it has said by then, and to listen longer would be to wake up whenever
/// it changes a title. A process that ends before its launch was told is told neither way.
///
/// A process ends when the kernel says so; where that cannot be had (a remote client, an old kernel, no descriptors
/// left), when its last window is destroyed.
class RunningApplications final : public platform::RunningApplications,
                                  private ManagedWindows::Follower,
                                  private Application::Directory {
public:
    /// Called when a window that is new is ready.
    using WindowReady = std::function<void(xcb_window_t window, const ManagedWindow& facts)>;

    RunningApplications(Connection& connection, Turn& turn, linux::MainLoop& mainLoop, ManagedWindows& windows,
                        Deliveries& deliveries, WindowReady windowReady);
    RunningApplications(const RunningApplications&) = delete;
    RunningApplications& operator=(const RunningApplications&) = delete;
    ~RunningApplications() override = default;

    /// Begins to follow. Both have to outlive this.
    void start(linux::ApplicationIdentification& identifier, ApplicationCatalogue& names);

    [[nodiscard]] std::vector<RunningApplicationReference> runningApplications() override;
    [[nodiscard]] RunningApplicationReference runningApplication(ProcessIdentifier process) override;
    [[nodiscard]] std::shared_ptr<NotificationCenter> notificationCenter() override { return center; }

private:
    struct Running {
        std::shared_ptr<Application> application;
        /// Those that exist, oldest first.
        std::vector<xcb_window_t> windows;
        std::unique_ptr<linux::ProcessExit> exit;
        bool awaitsLaunch = false;
        /// Runs while the launch waits for the application to be identified.
        std::unique_ptr<ScheduledWork> grace;
        bool isGraceOver = false;
    };

    WindowInterest windowAppeared(xcb_window_t window, const linux::ApplicationClues& clues, bool wasThere) override;
    void windowChangedIdentity(xcb_window_t window, const linux::ApplicationClues& clues) override;
    void windowBecameReady(xcb_window_t window, const ManagedWindow& facts) override;
    void windowVanished(xcb_window_t window, const ManagedWindow& facts) override;

    [[nodiscard]] std::optional<std::string> identify(ProcessIdentifier process) override;
    [[nodiscard]] std::optional<std::string> displayName(const std::string& bundleIdentifier) override;
    [[nodiscard]] ActivationPolicy activationPolicy(ProcessIdentifier process) override;

    [[nodiscard]] Running* find(ProcessIdentifier process);
    Running& add(ProcessIdentifier process, bool wasThere);
    [[nodiscard]] std::unique_ptr<linux::ProcessExit> watchExit(ProcessIdentifier process);
    bool identifyBy(Running& running, const linux::ApplicationClues& clues);
    void stopListening(Running& running);
    void endGrace(ProcessIdentifier process);
    void launchIfComplete(Running& running);
    void end(ProcessIdentifier process);
    void tell(std::string_view notification, RunningApplicationReference application);

    Connection& connection;
    Turn& turn;
    linux::MainLoop& mainLoop;
    ManagedWindows& windows;
    Deliveries& deliveries;
    WindowReady windowReady;
    linux::ApplicationIdentification* identification = nullptr;
    ApplicationCatalogue* catalogue = nullptr;
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
    std::shared_ptr<Application::Directory*> directory =
        std::make_shared<Application::Directory*>(static_cast<Application::Directory*>(this));
    /// In the order of launch.
    std::vector<std::unique_ptr<Running>> applications;
};

} // namespace platform::x11
