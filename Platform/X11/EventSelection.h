#pragma once

#include "Platform/X11/Connection.h"

#include <cstdint>
#include <map>

namespace platform::x11 {

/// The events that the server sends us of foreign windows. A client has a single mask for each window, so all users of
/// a window must share it; this class combines their masks.
class EventSelection {
public:
    explicit EventSelection(Connection& connection)
        : connection(connection) {}

    /// Selects these events of a window until further notice, instead of those selected before. Does not wait; a window
    /// that is gone is no error.
    void select(xcb_window_t window, std::uint32_t mask);

    /// Selects these events of a window in addition, independent of the others; an empty mask ends that. For one user
    /// of each window.
    void selectBeside(xcb_window_t window, std::uint32_t mask);

    /// Selects these events in addition, until a call with an empty mask. For one user at a time.
    void selectForNow(xcb_window_t window, std::uint32_t mask);

    /// Drops the masks of a window that is destroyed.
    void forget(xcb_window_t window);

private:
    using Masks = std::map<xcb_window_t, std::uint32_t>;

    static void keep(Masks& masks, xcb_window_t window, std::uint32_t mask);
    [[nodiscard]] std::uint32_t lastingMask(xcb_window_t window) const;
    void send(xcb_window_t window, std::uint32_t mask);

    Connection& connection;
    /// Masks that are not empty.
    Masks lasting;
    Masks beside;
};

} // namespace platform::x11
