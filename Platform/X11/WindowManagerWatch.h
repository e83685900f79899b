#pragma once

#include "Platform/MainActor.h"
#include "Platform/X11/EventSelection.h"
#include "Platform/X11/WindowManager.h"

#include <functional>
#include <memory>

namespace platform::x11 {

/// Follows which window manager is in charge. The server reports every step of a change: properties of the root window
/// and of the window manager's own window, and the end of the latter, which comes with the end of the window manager.
/// Main thread only.
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

private:
    [[nodiscard]] bool concerns(const xcb_generic_event_t& event) const;
    void follow(xcb_window_t window);

    Connection& connection;
    EventSelection& selection;
    MainActor& mainActor;
    std::function<void()> changed;
    WindowManager manager;
    /// The window that the root names, whether or not it proves a window manager.
    xcb_window_t followed = XCB_WINDOW_NONE;
    bool isStale = true;
    std::unique_ptr<ScheduledWork> retry;
};

} // namespace platform::x11
