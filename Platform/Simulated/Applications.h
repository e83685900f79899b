#pragma once

#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/NotificationCenter.h"
#include "Platform/Seam/Desktop/RunningApplications.h"
#include "Platform/Simulated/Application.h"
#include "Platform/Simulated/Window.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace platform::simulated {

/// All applications and windows of the simulated desktop.
class Applications final : public RunningApplications {
public:
    explicit Applications(platform::MainActor& mainActor)
        : mainActor(mainActor) {}

    /// An application that ran before: without a notification.
    Application& add(ApplicationOptions options);

    /// Starts an application; observers are notified in a turn of their own.
    Application& launch(ApplicationOptions options);

    /// Ends an application and closes its windows; observers are notified in a turn of their own.
    void terminate(Application& application);

    /// Frees the applications that have ended and the windows that were closed, which are otherwise kept as long as the
    /// desktop lives.
    void forgetEnded();

    /// The application with the keyboard focus, or null.
    Application* frontmost = nullptr;

    /// The running application of that process, or null.
    [[nodiscard]] Application* find(ProcessIdentifier process) const;

    /// The window of that number, or null if it was closed.
    [[nodiscard]] Window* findWindow(int number) const;

    [[nodiscard]] std::vector<RunningApplicationReference> runningApplications() override;
    [[nodiscard]] RunningApplicationReference runningApplication(ProcessIdentifier process) override;
    [[nodiscard]] std::shared_ptr<NotificationCenter> notificationCenter() override { return center; }

private:
    friend class Application;
    friend class AccessibilityObservers;

    Window& makeWindow(ProcessIdentifier process, WindowOptions options);
    [[nodiscard]] std::vector<Window*> windowsOf(ProcessIdentifier process) const;
    void postNotification(std::string_view notification, RunningApplicationReference application);

    platform::MainActor& mainActor;
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
    std::vector<std::shared_ptr<Application>> applications;
    std::vector<std::unique_ptr<Window>> windows;
    int lastWindowNumber = 0;
    /// Called for every window that opens visibly.
    std::function<void(const Window&)> windowOpened;
};

} // namespace platform::simulated
