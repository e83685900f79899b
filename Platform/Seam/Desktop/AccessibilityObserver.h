#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

#include <expected>
#include <memory>
#include <string_view>

namespace platform {

/// The notifications of an observer.
namespace AXNotification {
/// The application has a new window. Sent once for each window, in the order of their creation, when the window is
/// ready: it is in the application's `windows`, and its subrole, position and size are readable. There is no
/// notification for windows that exist at the subscription.
inline constexpr std::string_view windowCreated = "AXWindowCreated";
} // namespace AXNotification

/// An observer of one process's elements. Destroying it ends the delivery at once: no callback follows, not even for
/// earlier events. Main thread only.
class AXObserver {
public:
    AXObserver() = default;
    AXObserver(const AXObserver&) = delete;
    AXObserver& operator=(const AXObserver&) = delete;
    virtual ~AXObserver() = default;

    /// Subscribes to a notification of an element of the observer's process. `context` is passed to the callback
    /// unchanged and may be null. Any result but `success` leaves no subscription; a process that cannot be observed
    /// yet returns `cannotComplete`, and the caller retries later.
    virtual AXError addNotification(const AXUIElement& element, std::string_view notification, void* context) = 0;
};

/// Called on the main thread in a turn of the event loop of its own, never from within a call of ours. `element` is the
/// window that was created. The callback may destroy any observer, including its own.
using AXObserverCallback = void (*)(AXObserver& observer, const AXUIElement& element, std::string_view notification,
                                    void* context);

/// Creates observers. Main thread only.
class AccessibilityObservers {
public:
    AccessibilityObservers() = default;
    AccessibilityObservers(const AccessibilityObservers&) = delete;
    AccessibilityObservers& operator=(const AccessibilityObservers&) = delete;
    virtual ~AccessibilityObservers() = default;

    /// An observer of one process; a null observer counts as a failure like an error does. Observers of the same
    /// process are independent. A backend that gets every process's windows anyway succeeds at once, also for a process
    /// that has no window yet. The observer must be destroyed before the platform.
    [[nodiscard]] virtual std::expected<std::unique_ptr<AXObserver>, AXError>
    createObserver(ProcessIdentifier process, AXObserverCallback callback) = 0;
};

} // namespace platform
