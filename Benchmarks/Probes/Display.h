#pragma once

#include "Benchmarks/Probes/Probe.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>

namespace benchmarks {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an error or an event: allocated by xcb, freed by this program.
template <typename Message>
using Owned = std::unique_ptr<Message, FreeDeleter>;

/// A point on the screen in X's space: pixels in root coordinates.
struct Placement {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const Placement&, const Placement&) = default;
};

/// A probe's only connection to the server of DISPLAY.
class Display {
public:
    Display();

    [[nodiscard]] xcb_connection_t* raw() const { return connection.get(); }

    [[nodiscard]] xcb_window_t root() const { return rootWindow; }

    /// The child of the root that contains a client's window: the window manager's frame around it, or the window
    /// itself without one.
    [[nodiscard]] xcb_window_t frameOf(xcb_window_t client) const;

    /// The present geometry of a child of the root.
    [[nodiscard]] Placement placementOf(xcb_window_t window) const;

    /// Returns when the server has handled every earlier request.
    void synchronize() const;

    void flush() const { xcb_flush(raw()); }

    /// The next event; empty if none arrives before the limit.
    [[nodiscard]] Owned<xcb_generic_event_t> eventUntil(Clock::time_point limit) const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* raw) const { xcb_disconnect(raw); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> connection;
    xcb_window_t rootWindow = XCB_WINDOW_NONE;
};

} // namespace benchmarks
