#pragma once

#include "Platform/Seam/Desktop/AccessibilityObserver.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Simulated/Applications.h"
#include "Platform/Simulated/Trace.h"

#include <cstddef>
#include <expected>
#include <map>
#include <memory>
#include <vector>

namespace platform::simulated {

/// Observers of the windows that `Applications` opens.
///
/// Trace: "observe process 10", "subscribe to application 10 AXWindowCreated", "stop observing process 10".
class AccessibilityObservers final : public platform::AccessibilityObservers {
public:
    AccessibilityObservers(Trace& trace, platform::MainActor& mainActor, Applications& applications);

    [[nodiscard]] std::expected<std::unique_ptr<AXObserver>, AXError>
    createObserver(ProcessIdentifier process, AXObserverCallback callback) override;

    /// The result of creating an observer of the process from now on; `success` returns a null observer.
    void failCreation(ProcessIdentifier process, AXError error) { creationErrors.insert_or_assign(process, error); }

    /// The result of subscribing to the process's elements from now on.
    void failSubscription(ProcessIdentifier process, AXError error) {
        subscriptionErrors.insert_or_assign(process, error);
    }

    /// The process can be observed again.
    void succeed(ProcessIdentifier process) {
        creationErrors.erase(process);
        subscriptionErrors.erase(process);
    }

    /// The number of living observers.
    [[nodiscard]] std::size_t count() const { return observers.size(); }

private:
    class Observer;

    void notify(const Window& window);

    Trace& trace;
    platform::MainActor& mainActor;
    std::map<ProcessIdentifier, AXError> creationErrors;
    std::map<ProcessIdentifier, AXError> subscriptionErrors;
    /// The living ones, oldest first; each removes itself.
    std::vector<Observer*> observers;
};

} // namespace platform::simulated
