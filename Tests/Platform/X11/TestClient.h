#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/X11/Connection.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::x11 {

/// A client under the test's control: it writes properties, removes windows, and acts as the window manager.
class TestClient {
public:
    explicit TestClient(const std::string& display);

    [[nodiscard]] Connection& connection() { return link; }

    [[nodiscard]] xcb_atom_t atom(std::string_view name);

    /// Each of these has taken effect on return.
    void setText(xcb_window_t window, std::string_view property, std::string_view text);
    void setWords(xcb_window_t window, std::string_view property, std::string_view type,
                  const std::vector<std::uint32_t>& words);
    void removeProperty(xcb_window_t window, std::string_view property);
    void destroy(xcb_window_t window);

    /// Waits until a window of an ended client is gone.
    void awaitEnd(xcb_window_t window);

    /// Sets the managed windows (`_NET_CLIENT_LIST`).
    void list(const std::vector<xcb_window_t>& windows);

    /// The same, and deletes the list.
    void unlist() { removeProperty(link.root(), "_NET_CLIENT_LIST"); }

    /// Becomes the window manager: it receives the requests to configure top-level windows, and announces that it lists
    /// its windows.
    void becomeWindowManager();

    /// The same without an announcement.
    void becomeSilentWindowManager();

    /// Stops being the window manager; the requests so far stay unanswered.
    void resign();

    /// The number of received requests without an answer.
    [[nodiscard]] std::size_t waitingRequests();

    /// Carries the requests out.
    void answerRequests();

    /// Waits until the server has handled every request of this connection.
    void finish();

private:
    void selectOnRoot(std::uint32_t mask);

    /// Gives the time alone: this client has turns of its own.
    linux::MainLoop clock;
    Connection link;
    std::vector<xcb_configure_request_event_t> requests;
};

} // namespace platform::x11
