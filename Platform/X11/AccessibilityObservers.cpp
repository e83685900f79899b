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
    tell(facts.process, facts.arrival,
         [this, window] { return exists(window) ? std::optional(linux::windowElement(window)) : std::nullopt; });
}

bool AccessibilityObservers::exists(xcb_window_t window) {
    const ManagedWindow* facts = windows.find(window);
    if (facts == nullptr || !facts->isListed) {
        return false;
    }
    // What is read here is what the callback asks for next. A server that is slow to answer says nothing about the
    // window.
    return turn.window(window) != nullptr || connection.isOutOfTime();
}

} // namespace platform::x11
