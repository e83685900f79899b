#include "Platform/Compositor/AccessibilityObservers.h"

#include "Platform/Linux/Windows/Elements.h"

namespace platform::compositor {

void AccessibilityObservers::windowBecameReady(const WindowIdentifier& identifier, const Window& window) {
    notify(window.clues.process, table.arrivalOf(identifier), [this, identifier] {
        return table.find(identifier) == nullptr ? std::nullopt : std::optional(linux::windowElement(identifier));
    });
}

} // namespace platform::compositor
