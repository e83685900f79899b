#include "Platform/Simulated/AccessibilityObservers.h"

#include "Platform/Simulated/Element.h"

#include <string>
#include <utility>

namespace platform::simulated {

class AccessibilityObservers::Observer final : public AXObserver {
public:
    Observer(AccessibilityObservers& owner, ProcessIdentifier process, AXObserverCallback callback)
        : owner(owner)
        , process(process)
        , callback(callback) {
        owner.observers.push_back(this);
    }
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    ~Observer() override {
        owner.trace.record("stop observing process " + std::to_string(process));
        std::erase(owner.observers, this);
    }

    AXError addNotification(const AXUIElement& element, std::string_view notification, void* context) override {
        const auto* ours = dynamic_cast<const Element*>(&element.contents());
        owner.trace.record("subscribe to application " + std::to_string(process) + " " + std::string(notification));
        if (const auto error = owner.subscriptionErrors.find(process); error != owner.subscriptionErrors.end()) {
            return error->second;
        }
        const bool isOfThisProcess =
            ours != nullptr && ours->window == Element::applicationItself && ours->process == process;
        if (!isOfThisProcess || notification != AXNotification::windowCreated) {
            return AXError::illegalArgument;
        }
        subscriptions->push_back(context);
        return AXError::success;
    }

    /// Calls back in a turn of its own, unless the observer is gone by then.
    void notify(const Window& window) {
        if (window.process() != process) {
            return;
        }
        for (void* context : *subscriptions) {
            owner.mainActor.post([this, context, alive = std::weak_ptr(subscriptions), element = window.element()] {
                if (!alive.expired()) {
                    callback(*this, element, AXNotification::windowCreated, context);
                }
            });
        }
    }

private:
    AccessibilityObservers& owner;
    ProcessIdentifier process;
    AXObserverCallback callback;
    /// The contexts of the subscriptions. Destroyed with the observer, so that posted work can detect that.
    std::shared_ptr<std::vector<void*>> subscriptions = std::make_shared<std::vector<void*>>();
};

AccessibilityObservers::AccessibilityObservers(Trace& trace, platform::MainActor& mainActor, Applications& applications)
    : trace(trace)
    , mainActor(mainActor) {
    applications.windowOpened = [this](const Window& window) { notify(window); };
}

std::expected<std::unique_ptr<AXObserver>, AXError>
AccessibilityObservers::createObserver(ProcessIdentifier process, AXObserverCallback callback) {
    trace.record("observe process " + std::to_string(process));
    if (const auto error = creationErrors.find(process); error != creationErrors.end()) {
        if (error->second == AXError::success) {
            return nullptr;
        }
        return std::unexpected(error->second);
    }
    return std::make_unique<Observer>(*this, process, callback);
}

void AccessibilityObservers::notify(const Window& window) {
    for (Observer* observer : observers) {
        observer->notify(window);
    }
}

} // namespace platform::simulated
