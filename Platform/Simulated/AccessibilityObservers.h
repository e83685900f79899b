#pragma once

#include "Platform/AccessibilityObserver.h"
#include "Platform/MainActor.h"
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

    /// What creating an observer of the process meets from now on; `success` gives a null observer.
    void failCreation(ProcessIdentifier process, AXError error) { creationErrors.insert_or_assign(process, error); }

    /// What subscribing to the process's elements meets from now on.
    void failSubscription(ProcessIdentifier process, AXError error) {
        subscriptionErrors.insert_or_assign(process, error);
    }

    /// The process can be observed again.
    void succeed(ProcessIdentifier process) {
        creationErrors.erase(process);
        subscriptionErrors.erase(process);
    }

    /// The number of observers that are alive.
    [[nodiscard]] std::size_t count() const { return observers.size(); }

private:
    class Observer;

    void tell(const Window& window);

    Trace& trace;
    platform::MainActor& mainActor;
    std::map<ProcessIdentifier, AXError> creationErrors;
    std::map<ProcessIdentifier, AXError> subscriptionErrors;
    /// Those that are alive, oldest first; each takes itself out.
    std::vector<Observer*> observers;
};

} // namespace platform::simulated
