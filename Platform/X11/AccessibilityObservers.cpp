#include "Platform/X11/AccessibilityObservers.h"

#include "Platform/X11/Element.h"

#include <utility>

namespace platform::x11 {

class AccessibilityObservers::Observer final : public AXObserver {
public:
    /// What was subscribed to, and what there was already.
    struct Subscription {
        void* context = nullptr;
        std::uint64_t lastArrival = 0;
    };

    Observer(AccessibilityObservers& owner, ProcessIdentifier process, AXObserverCallback callback)
        : registry(owner.registry)
        , windows(owner.windows)
        , process(process)
        , callback(callback) {
        owner.registry->push_back(this);
    }

    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    ~Observer() override {
        if (const auto alive = registry.lock()) {
            std::erase(*alive, this);
        }
    }

    AXError addNotification(const AXUIElement& element, std::string_view notification, void* context) override {
        const auto* application = dynamic_cast<const ApplicationElement*>(&element.contents());
        if (application == nullptr || application->process != process ||
            notification != AXNotification::windowCreated) {
            return AXError::illegalArgument;
        }
        if (registry.expired()) {
            return AXError::cannotComplete;
        }
        subscriptions->push_back({.context = context, .lastArrival = windows.lastArrival()});
        return AXError::success;
    }

    [[nodiscard]] bool observes(ProcessIdentifier owner) const { return owner == process; }

    [[nodiscard]] std::shared_ptr<const std::vector<Subscription>> subscribed() const { return subscriptions; }

    void call(const AXUIElement& element, void* context) {
        callback(*this, element, AXNotification::windowCreated, context);
    }

private:
    std::weak_ptr<Registry> registry;
    const ManagedWindows& windows;
    ProcessIdentifier process;
    AXObserverCallback callback;
    /// Dies with the observer, by which a delivery on its way can tell.
    std::shared_ptr<std::vector<Subscription>> subscriptions = std::make_shared<std::vector<Subscription>>();
};

AccessibilityObservers::AccessibilityObservers(Connection& connection, Turn& turn, const ManagedWindows& windows,
                                               Deliveries& deliveries)
    : connection(connection)
    , turn(turn)
    , windows(windows)
    , deliveries(deliveries) {
}

std::expected<std::unique_ptr<AXObserver>, AXError>
AccessibilityObservers::createObserver(ProcessIdentifier process, AXObserverCallback callback) {
    if (callback == nullptr) {
        return std::unexpected(AXError::illegalArgument);
    }
    return std::make_unique<Observer>(*this, process, callback);
}

void AccessibilityObservers::windowBecameReady(xcb_window_t window, const ManagedWindow& facts) {
    for (Observer* observer : *registry) {
        if (!observer->observes(facts.process)) {
            continue;
        }
        for (const Observer::Subscription& subscription : *observer->subscribed()) {
            if (facts.arrival <= subscription.lastArrival) {
                continue;
            }
            deliveries.post([this, observer, window, context = subscription.context,
                             alive = std::weak_ptr(observer->subscribed())] {
                if (!alive.expired() && exists(window)) {
                    observer->call(AXUIElement(std::make_shared<const WindowElement>(window)), context);
                }
            });
        }
    }
}

bool AccessibilityObservers::exists(xcb_window_t window) {
    const ManagedWindow* facts = windows.find(window);
    if (facts == nullptr || !facts->isListed) {
        return false;
    }
    // What is read here is what the callback asks for next. A server that is slow to answer says nothing about the
    // window.
    return turn.window(window) != nullptr || connection.isExhausted();
}

} // namespace platform::x11
