#pragma once

#include "Platform/Linux/Windows/Deliveries.h"
#include "Platform/Seam/Desktop/AccessibilityObserver.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace platform::linux {

/// Reports new windows on desktops that announce the windows of every process: any process can be observed at any time.
/// Main thread only.
///
/// Windows are numbered as they arrive. A window that has arrived before the subscription counts as existing; every
/// other one is reported once, when it is ready and still exists.
class WindowObservers : public platform::AccessibilityObservers {
public:
    explicit WindowObservers(Deliveries& deliveries)
        : deliveries(deliveries) {}

    [[nodiscard]] std::expected<std::unique_ptr<AXObserver>, AXError> createObserver(ProcessIdentifier process,
                                                                                     AXObserverCallback callback) final;

protected:
    /// A new window of the process is ready. `element` is called at the delivery: it returns nothing if the window no
    /// longer exists. It must be callable for as long as the deliveries live.
    void notify(ProcessIdentifier process, std::uint64_t arrival,
                const std::function<std::optional<AXUIElement>()>& element);

private:
    class Observer;

    /// The observers that are alive, oldest first; each takes itself out.
    using Registry = std::vector<Observer*>;

    /// The arrival of the newest window.
    [[nodiscard]] virtual std::uint64_t lastArrival() const = 0;

    Deliveries& deliveries;
    std::shared_ptr<Registry> registry = std::make_shared<Registry>();
};

} // namespace platform::linux
