#pragma once

#include "Platform/X11/EventSelection.h"
#include "Platform/X11/Fence.h"

#include <cstdint>
#include <optional>

namespace platform::x11 {

/// Follows the children of the root window while the window manager does not list its windows: a window is mapped or
/// put into a frame there when it becomes managed. This wakes us up whenever a window moves, so it is only for those
/// window managers. Main thread only.
class RootChildren {
public:
    /// Both outlive this. Nobody else selects events of the root beside the lasting ones.
    RootChildren(Connection& connection, EventSelection& selection)
        : connection(connection)
        , selection(selection)
        , fence(connection) {}

    /// Begins or ends following. Does not wait.
    void follow(bool isWanted);

    /// Whether the managed windows may have changed with this event. Each change is reported twice, for a window
    /// manager may set `WM_STATE` last: at once, and when the window manager has handled all that came before.
    [[nodiscard]] bool isChange(const xcb_generic_event_t& event);

private:
    Connection& connection;
    EventSelection& selection;
    Fence fence;
    bool isFollowed = false;
    /// The last one; earlier ones are answered before it.
    std::optional<std::uint16_t> question;
};

} // namespace platform::x11
