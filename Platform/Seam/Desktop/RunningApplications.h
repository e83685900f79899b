#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/NotificationCenter.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The presence of an application on the desktop.
enum class ActivationPolicy {
    /// An ordinary application, with an entry in the dock or task list.
    regular,
    /// One that lives in the tray or shows windows only now and then.
    accessory,
    /// One that never shows a window.
    prohibited,
};

/// An application that runs or ran. Its answers are the present ones, not those of its creation; once it has terminated
/// it stays terminated, even when another application gets its process id. Main thread only.
class RunningApplication {
public:
    RunningApplication() = default;
    RunningApplication(const RunningApplication&) = delete;
    RunningApplication& operator=(const RunningApplication&) = delete;
    virtual ~RunningApplication() = default;

    [[nodiscard]] virtual ProcessIdentifier processIdentifier() const = 0;

    /// The name under which the application is installed (on Linux the desktop entry's id without ".desktop"); empty if
    /// it is unknown.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;

    /// The name for people, in their language; empty without one.
    [[nodiscard]] virtual std::optional<std::string> localizedName() const = 0;

    [[nodiscard]] virtual ActivationPolicy activationPolicy() const = 0;

    [[nodiscard]] virtual bool isTerminated() const = 0;
};

using RunningApplicationReference = std::shared_ptr<const RunningApplication>;

/// The notifications of `RunningApplications::notificationCenter`.
namespace WorkspaceNotification {
/// An application has been launched. Posted once for each, when its bundle identifier is known (or will certainly stay
/// unknown); not posted for applications that ran before this program.
inline constexpr std::string_view didLaunchApplication = "NSWorkspaceDidLaunchApplicationNotification";
/// An application has ended. Posted once for each, after `isTerminated` has become true.
inline constexpr std::string_view didTerminateApplication = "NSWorkspaceDidTerminateApplicationNotification";
/// The key in the user info under which both carry the `RunningApplicationReference`.
inline constexpr std::string_view applicationKey = "NSWorkspaceApplicationKey";
} // namespace WorkspaceNotification

/// The applications that run in this session. Main thread only.
class RunningApplications {
public:
    RunningApplications() = default;
    RunningApplications(const RunningApplications&) = delete;
    RunningApplications& operator=(const RunningApplications&) = delete;
    virtual ~RunningApplications() = default;

    /// All of them, in the order of their launch, including this program if the desktop lists it.
    [[nodiscard]] virtual std::vector<RunningApplicationReference> runningApplications() = 0;

    /// The one with that process id that has not terminated; null without one.
    [[nodiscard]] virtual RunningApplicationReference runningApplication(ProcessIdentifier process) = 0;

    /// The center for launches and terminations: posted on the main thread, in a turn of the event loop of their own.
    /// Always the same center.
    [[nodiscard]] virtual std::shared_ptr<NotificationCenter> notificationCenter() = 0;
};

} // namespace platform
