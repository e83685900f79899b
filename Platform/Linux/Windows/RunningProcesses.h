#pragma once

#include "Platform/ApplicationCatalogue.h"
#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/ProcessExit.h"
#include "Platform/Linux/Windows/Application.h"
#include "Platform/Linux/Windows/Deliveries.h"
#include "Platform/RunningApplications.h"

#include <memory>
#include <vector>

namespace platform::linux {

/// The processes that own windows, or have owned one and still run. Which windows those are, the desktop knows. Main
/// thread only.
///
/// A process is launched when its first window can be dealt with and its application is identified. One that is not
/// identified by its first window is told as soon as something later identifies it, and after ten seconds in any case:
/// whatever a program says of itself, it has said by then, and to listen longer would be to wake up whenever it changes
/// a title. A process that ends before its launch was told is told neither way. From then until the launch is delivered
/// it can be found by its number, and is not listed.
///
/// A process ends when the kernel says so; where that cannot be had (a remote client, an old kernel, no descriptors
/// left), when its last window is gone.
class RunningProcesses : public platform::RunningApplications, private Application::Directory {
public:
    RunningProcesses(MainLoop& mainLoop, Deliveries& deliveries);
    RunningProcesses(const RunningProcesses&) = delete;
    RunningProcesses& operator=(const RunningProcesses&) = delete;
    ~RunningProcesses() override = default;

    [[nodiscard]] std::vector<RunningApplicationReference> runningApplications() final;
    [[nodiscard]] RunningApplicationReference runningApplication(ProcessIdentifier process) final;

    [[nodiscard]] std::shared_ptr<NotificationCenter> notificationCenter() final { return center; }

protected:
    /// What is still to be learned of a process from its windows.
    struct Interest {
        /// What identifies its application.
        bool identity = false;
        /// That the last of them is gone.
        bool end = false;
    };

    /// Who identifies and names applications; to be called before any of those below. Both have to outlive this.
    void setNames(ApplicationIdentification& identifier, ApplicationCatalogue& names);

    /// A window has come. `wasThere`: it was there at the very start. The desktop adds the window to what it knows of
    /// the process after this: the process may turn out to be another one than that of the same number before.
    Interest windowAppeared(const ApplicationClues& clues, bool wasThere);
    /// What identifies a window's application is another one now.
    void windowChangedIdentity(const ApplicationClues& clues);
    /// A window of the process can be dealt with.
    void windowBecameReady(ProcessIdentifier process);
    /// The process has no windows any more.
    void lastWindowVanished(ProcessIdentifier process);

private:
    struct Running {
        std::shared_ptr<Application> application;
        std::unique_ptr<ProcessExit> exit;
        bool awaitsLaunch = false;
        /// Runs while the launch waits for the application to be identified.
        std::unique_ptr<ScheduledWork> grace;
        bool isGraceOver = false;
    };

    using Place = std::vector<std::unique_ptr<Running>>::iterator;

    // What the desktop knows.

    /// Whether one of the process's windows can be dealt with now.
    [[nodiscard]] virtual bool hasReadyWindow(ProcessIdentifier process) = 0;
    /// What the process's windows say of its application now, oldest first.
    [[nodiscard]] virtual std::vector<ApplicationClues> clues(ProcessIdentifier process) = 0;
    /// Nobody wants to know any more what the process's windows say of its application.
    virtual void stopListening(ProcessIdentifier process) = 0;
    /// The process has ended: what is left of its windows is nobody's.
    virtual void forget(ProcessIdentifier process) = 0;

    [[nodiscard]] std::optional<std::string> identify(ProcessIdentifier process) final;
    [[nodiscard]] std::optional<std::string> displayName(const std::string& bundleIdentifier) final;

    [[nodiscard]] Place placeOf(ProcessIdentifier process);
    [[nodiscard]] Running* find(ProcessIdentifier process);
    Running& add(ProcessIdentifier process, bool wasThere);
    [[nodiscard]] std::unique_ptr<ProcessExit> watchExit(ProcessIdentifier process);
    bool identifyBy(Running& running, const ApplicationClues& clues);
    void endListening(Running& running);
    void endGrace(ProcessIdentifier process);
    void launchIfComplete(Running& running);
    void end(ProcessIdentifier process);
    void tell(std::string_view notification, std::shared_ptr<Application> application);

    MainLoop& mainLoop;
    Deliveries& deliveries;
    ApplicationIdentification* identification = nullptr;
    ApplicationCatalogue* catalogue = nullptr;
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
    std::shared_ptr<Application::Directory*> directory =
        std::make_shared<Application::Directory*>(static_cast<Application::Directory*>(this));
    /// In the order of launch.
    std::vector<std::unique_ptr<Running>> applications;
};

} // namespace platform::linux
