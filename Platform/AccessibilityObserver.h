#pragma once

#include "Platform/Accessibility.h"

#include <expected>
#include <memory>
#include <string_view>

namespace platform {

/// What an observer can be told about.
namespace AXNotification {
/// The application has a new window. Told once for each window, in the order of their creation, when the window can be
/// dealt with: it is in the application's `windows`, and its subrole, position and size are readable. Windows that
/// exist at the time of subscribing are not told.
inline constexpr std::string_view windowCreated = "AXWindowCreated";
} // namespace AXNotification

/// An observer of one process's elements. Dropping it ends the delivery at once: nothing reaches its callback
/// afterwards, not even what had happened before. Main thread only.
class AXObserver {
public:
    AXObserver() = default;
    AXObserver(const AXObserver&) = delete;
    AXObserver& operator=(const AXObserver&) = delete;
    virtual ~AXObserver() = default;

    /// Subscribes to a notification of an element of the observer's process. `context` is handed to the callback
    /// unchanged and may be null. Anything but `success` leaves no subscription; a process that is not ready to be
    /// observed yet gives `cannotComplete`, and the caller tries again later.
    virtual AXError addNotification(const AXUIElement& element, std::string_view notification, void* context) = 0;
};

/// Called on the main thread in a turn of the event loop of its own, never from within a call of ours. `element` is the
/// window that was created. The callback may drop any observer, the one that calls it included.
using AXObserverCallback = void (*)(AXObserver& observer, const AXUIElement& element, std::string_view notification,
                                    void* context);

/// Makes observers. Main thread only.
class AccessibilityObservers {
public:
    AccessibilityObservers() = default;
    AccessibilityObservers(const AccessibilityObservers&) = delete;
    AccessibilityObservers& operator=(const AccessibilityObservers&) = delete;
    virtual ~AccessibilityObservers() = default;

    /// An observer of one process; a null observer counts as a failure like an error does. Observers of the same
    /// process do not know of each other. A backend that hears of every process's windows anyway succeeds at once, also
    /// for a process that has no window yet. The observer must be dropped before the platform is.
    [[nodiscard]] virtual std::expected<std::unique_ptr<AXObserver>, AXError>
    createObserver(ProcessIdentifier process, AXObserverCallback callback) = 0;
};

} // namespace platform
