#pragma once

#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Processes/ProcessExit.h"
#include "Platform/Linux/Windows/Application.h"
#include "Platform/Linux/Windows/Deliveries.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Seam/Desktop/RunningApplications.h"

#include <memory>
#include <vector>

namespace platform::linux {

/// The processes that own windows, or have owned one and still run. The desktop knows their windows. Main thread only.
///
/// A process is launched when its first window can be dealt with and its application is identified. Where the first
/// window does not identify it, the launch is reported as soon as something later does, and after ten seconds in any
/// case: a program has described itself by then, and listening longer would mean a wake-up at every change of a title.
/// A process that ends before its launch was reported is not reported at all. From then until the launch is delivered
/// it can be found by its number, and is not listed.
///
/// The kernel reports the end of a process. Where it cannot (a remote client, an old kernel, no descriptors left), the
/// process ends with its last window.
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
    /// Facts about a process that its windows have yet to provide.
    struct Interest {
        /// The clues to its application.
        bool identity = false;
        /// That the last of them is gone.
        bool end = false;
    };

    /// Sets the sources of identities and names; to be called before anything below. Both must outlive this.
    void setNames(ApplicationIdentification& identifier, ApplicationCatalogue& names);

    /// A window has appeared. `wasThere`: it was there at the very start. The desktop adds the window to its data on
    /// the process after this, because the process may turn out to be another one than the former process of the same
    /// id.
    Interest windowAppeared(const ApplicationClues& clues, bool wasThere);
    /// The clues to a window's application have changed.
    void windowChangedIdentity(const ApplicationClues& clues);
    /// A window of the process is ready.
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

    // Answered by the desktop.

    /// Whether one of the process's windows is ready now.
    [[nodiscard]] virtual bool hasReadyWindow(ProcessIdentifier process) = 0;
    /// The clues that the process's windows give now, oldest first.
    [[nodiscard]] virtual std::vector<ApplicationClues> clues(ProcessIdentifier process) = 0;
    /// The windows' identification of the process's application is no longer needed.
    virtual void stopListening(ProcessIdentifier process) = 0;
    /// The process has ended: its remaining windows have no owner.
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
    void postNotification(std::string_view notification, std::shared_ptr<Application> application);

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
