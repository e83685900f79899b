#include "Platform/Linux/Windows/WindowObservers.h"

#include "Platform/Linux/Windows/Elements.h"

#include <utility>

namespace platform::linux {

class WindowObservers::Observer final : public AXObserver {
public:
    /// A subscription, and the windows that existed before it.
    struct Subscription {
        void* context = nullptr;
        std::uint64_t lastArrival = 0;
    };

    Observer(WindowObservers& owner, ProcessIdentifier process, AXObserverCallback callback)
        : owner(owner)
        , registry(owner.registry)
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
        subscriptions->push_back({.context = context, .lastArrival = owner.lastArrival()});
        return AXError::success;
    }

    [[nodiscard]] bool observes(ProcessIdentifier other) const { return other == process; }

    [[nodiscard]] std::shared_ptr<const std::vector<Subscription>> subscribed() const { return subscriptions; }

    void call(const AXUIElement& element, void* context) {
        callback(*this, element, AXNotification::windowCreated, context);
    }

private:
    /// Alive as long as its registry is.
    const WindowObservers& owner;
    std::weak_ptr<Registry> registry;
    ProcessIdentifier process;
    AXObserverCallback callback;
    /// Dies with the observer: a delivery that is under way checks it.
    std::shared_ptr<std::vector<Subscription>> subscriptions = std::make_shared<std::vector<Subscription>>();
};

std::expected<std::unique_ptr<AXObserver>, AXError> WindowObservers::createObserver(ProcessIdentifier process,
                                                                                    AXObserverCallback callback) {
    if (callback == nullptr) {
        return std::unexpected(AXError::illegalArgument);
    }
    return std::make_unique<Observer>(*this, process, callback);
}

void WindowObservers::notify(ProcessIdentifier process, std::uint64_t arrival,
                             const std::function<std::optional<AXUIElement>()>& element) {
    for (Observer* observer : *registry) {
        if (!observer->observes(process)) {
            continue;
        }
        for (const Observer::Subscription& subscription : *observer->subscribed()) {
            if (arrival <= subscription.lastArrival) {
                continue;
            }
            deliveries.post(
                [observer, element, context = subscription.context, alive = std::weak_ptr(observer->subscribed())] {
                    if (alive.expired()) {
                        return;
                    }
                    if (const auto window = element()) {
                        observer->call(*window, context);
                    }
                });
        }
    }
}

} // namespace platform::linux
