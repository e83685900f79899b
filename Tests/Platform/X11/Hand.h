#pragma once

#include "Platform/Linux/MainLoop.h"
#include "Platform/X11/Connection.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::x11 {

/// A client that the test moves by hand: writes properties, removes windows, and plays the window manager.
class Hand {
public:
    explicit Hand(const std::string& display);

    [[nodiscard]] Connection& connection() { return link; }

    [[nodiscard]] xcb_atom_t atom(std::string_view name);

    /// Each of these is done when it returns.
    void setText(xcb_window_t window, std::string_view property, std::string_view text);
    void setWords(xcb_window_t window, std::string_view property, std::string_view type,
                  const std::vector<std::uint32_t>& words);
    void removeProperty(xcb_window_t window, std::string_view property);
    void destroy(xcb_window_t window);

    /// Waits until a window is gone, whose client has ended.
    void awaitEnd(xcb_window_t window);

    /// Says which windows are managed (`_NET_CLIENT_LIST`).
    void list(const std::vector<xcb_window_t>& windows);

    /// The same, and takes the list away.
    void unlist() { removeProperty(link.root(), "_NET_CLIENT_LIST"); }

    /// Takes the window manager's place: requests to configure top-level windows come here.
    void becomeWindowManager();

    /// Leaves that place again; what was asked meanwhile stays unanswered.
    void resign();

    /// The number of requests that have come and not been answered.
    [[nodiscard]] std::size_t waitingRequests();

    /// Does what was asked.
    void answerRequests();

    /// Waits until the server has done all that was asked of it on this connection.
    void finish();

private:
    void selectOnRoot(std::uint32_t mask);

    /// Gives the time alone: this client has turns of its own.
    linux::MainLoop clock;
    Connection link;
    std::vector<xcb_configure_request_event_t> requests;
};

} // namespace platform::x11
