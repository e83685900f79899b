#pragma once

#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/X11/EventSelection.h"
#include "Platform/X11/WindowManager.h"

#include <functional>
#include <memory>

namespace platform::x11 {

/// Follows which window manager is in charge. The server reports every step of a change: properties of the root window
/// and of the window manager's own window, and the end of the latter, which comes with the end of the window manager.
/// The server does not report one that has no such window; `lookAgain` is for its begin and its end. Main thread only.
class WindowManagerWatch {
public:
    /// All outlive this. Root property changes are selected by the caller. `changed` is called from `renew` when there
    /// is another answer.
    WindowManagerWatch(Connection& connection, EventSelection& selection, MainActor& mainActor,
                       std::function<void()> changed);

    /// The window manager in charge, as of the last `renew`.
    [[nodiscard]] const WindowManager& present() const { return manager; }

    /// An event that came from the server, of whatever kind.
    void handle(const xcb_generic_event_t& event);

    /// Asks the server again if an event, or a former question that was not answered in time, gives a reason to.
    /// Without an answer in time everything stays as it was.
    void renew();

    /// Makes the next `renew` ask, unless events report every change of the present window manager. For moments at
    /// which another one may have begun or ended.
    void lookAgain();

    /// Whether the next `renew` asks.
    [[nodiscard]] bool isRenewalDue() const { return isStale; }

private:
    [[nodiscard]] bool concerns(const xcb_generic_event_t& event) const;
    void follow(xcb_window_t window);

    Connection& connection;
    EventSelection& selection;
    MainActor& mainActor;
    std::function<void()> changed;
    WindowManager manager;
    /// The window that may prove a window manager, whether or not it does.
    xcb_window_t followed = XCB_WINDOW_NONE;
    bool isStale = true;
    std::unique_ptr<ScheduledWork> retry;
};

} // namespace platform::x11
