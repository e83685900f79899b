#include "Platform/X11/AccessibilityObservers.h"

#include "Platform/X11/Element.h"

namespace platform::x11 {

AccessibilityObservers::AccessibilityObservers(Connection& connection, Turn& turn, const ManagedWindows& windows,
                                               linux::Deliveries& deliveries)
    : WindowObservers(deliveries)
    , connection(connection)
    , turn(turn)
    , windows(windows) {
}

void AccessibilityObservers::windowBecameReady(xcb_window_t window, const ManagedWindow& facts) {
    notify(facts.process, facts.arrival,
           [this, window] { return exists(window) ? std::optional(linux::windowElement(window)) : std::nullopt; });
}

bool AccessibilityObservers::exists(xcb_window_t window) {
    const ManagedWindow* facts = windows.find(window);
    if (facts == nullptr || !facts->isListed) {
        return false;
    }
    // The callback asks for the same facts next, so they are read here. A slow server means nothing for the window.
    return turn.window(window) != nullptr || connection.isOutOfTime();
}

} // namespace platform::x11
