#include "Platform/Simulated/Applications.h"

#include <algorithm>
#include <any>
#include <string>
#include <utility>

namespace platform::simulated {

Application& Applications::add(ApplicationOptions options) {
    applications.push_back(std::make_shared<Application>(*this, std::move(options)));
    return *applications.back();
}

Application& Applications::launch(ApplicationOptions options) {
    Application& application = add(std::move(options));
    postNotification(WorkspaceNotification::didLaunchApplication, applications.back());
    return application;
}

void Applications::terminate(Application& application) {
    application.terminated = true;
    application.focusedWindow = nullptr;
    for (Window* window : application.windows()) {
        window->close();
    }
    if (frontmost == &application) {
        frontmost = nullptr;
    }
    const auto found =
        std::ranges::find(applications, &application, [](const auto& candidate) { return candidate.get(); });
    postNotification(WorkspaceNotification::didTerminateApplication, *found);
}

void Applications::forgetEnded() {
    std::erase_if(windows, [](const auto& window) { return window->isClosed(); });
    std::erase_if(applications, [](const auto& application) { return application->isTerminated(); });
}

Application* Applications::find(ProcessIdentifier process) const {
    const auto found = std::ranges::find_if(applications, [process](const auto& application) {
        return application->processIdentifier() == process && !application->isTerminated();
    });
    return found == applications.end() ? nullptr : found->get();
}

Window* Applications::findWindow(int number) const {
    const auto found =
        std::ranges::find_if(windows, [number](const auto& window) { return window->number() == number; });
    return found == windows.end() || (*found)->isClosed() ? nullptr : found->get();
}

std::vector<RunningApplicationReference> Applications::runningApplications() {
    std::vector<RunningApplicationReference> running;
    std::ranges::copy_if(applications, std::back_inserter(running),
                         [](const auto& application) { return !application->isTerminated(); });
    return running;
}

RunningApplicationReference Applications::runningApplication(ProcessIdentifier process) {
    for (const auto& application : applications) {
        if (application->processIdentifier() == process && !application->isTerminated()) {
            return application;
        }
    }
    return nullptr;
}

Window& Applications::makeWindow(ProcessIdentifier process, WindowOptions options) {
    windows.push_back(std::make_unique<Window>(++lastWindowNumber, process, mainActor, std::move(options)));
    return *windows.back();
}

std::vector<Window*> Applications::windowsOf(ProcessIdentifier process) const {
    std::vector<Window*> open;
    for (const auto& window : windows) {
        if (window->process() == process && !window->isClosed()) {
            open.push_back(window.get());
        }
    }
    return open;
}

void Applications::postNotification(std::string_view notification, RunningApplicationReference application) {
    mainActor.post([target = center, notification, application = std::move(application)] {
        target->post({.name = std::string(notification),
                      .userInfo = {{std::string(WorkspaceNotification::applicationKey), std::any(application)}}});
    });
}

} // namespace platform::simulated
