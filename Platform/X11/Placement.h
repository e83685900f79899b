#pragma once

#include "Platform/X11/EventSelection.h"
#include "Platform/X11/Fence.h"
#include "Platform/X11/FrameGeometry.h"
#include "Platform/X11/Turn.h"
#include "Platform/X11/WindowManager.h"

#include <array>
#include <cstdint>
#include <optional>

namespace platform::x11 {

/// Moves and resizes one window at a time through the window manager, and sees to it that it really happens.
///
/// Requests of one window gather until they are sent, so that a size, a position and a size again travel as the one
/// message that they amount to. Rectangles are in root coordinates.
class Placement {
public:
    Placement(Connection& connection, EventSelection& selection, Turn& turn, Fence& fence)
        : connection(connection)
        , selection(selection)
        , turn(turn)
        , fence(fence) {}

    /// Adds to what is asked of a window. Requests of another window that still wait are sent first.
    void request(xcb_window_t window, const PlacementRequest& part);

    /// Sends what waits, if anything; does not wait for the outcome. A maximized window is released first, which does
    /// take waiting, and so does an outcome that was foreseen.
    void send();

    /// Sends what waits for this window and waits until the window has come to rest. Does nothing where nothing waits.
    ///
    /// A window that grows in steps rounds its size, and then has to be moved once more. Where the window manager is
    /// known to round as the window's hints say, the outcome is foreseen: the window's facts are from now on what they
    /// will be, nothing is sent yet, and what is asked for next travels in the same message.
    void settle(xcb_window_t window);

    /// Which window manager to deal with, asked anew when it changes.
    void setWindowManager(WindowManager manager);

private:
    struct Job {
        xcb_window_t window = XCB_WINDOW_NONE;
        PlacementRequest request;
    };

    /// What is known of the window after the message was sent.
    struct Sent {
        Job job;
        FrameGeometry before;
        /// The geometry whose extents the message was reckoned with.
        FrameGeometry reckoned;
        SizeHints sizeHints;
        bool wasMaximized = false;
    };

    struct Foreseen {
        /// The window as it still is.
        WindowFacts before;
        /// Something else was asked for since: the outcome is another one.
        bool isOutdated = false;
    };

    [[nodiscard]] std::optional<Sent> sendJob(const std::optional<Foreseen>& foreseen);
    void finish();
    [[nodiscard]] bool foresee();
    void learnRounding(const Sent& sent);
    /// Whether the window was tiled, and had to be released.
    [[nodiscard]] bool untile(const Sent& sent);
    void correctForChangedExtents(const Sent& sent);
    void awaitShadow(const Sent& sent, bool wasTiled);
    [[nodiscard]] const WindowFacts* readAgain(xcb_window_t window);
    /// Asks for what the job wants of a window that has this geometry now.
    void ask(const Sent& sent, const FrameGeometry& present);
    void sendMoveResize(xcb_window_t window, const MoveResizeMessage& message);
    void changeMaximized(xcb_window_t window, std::uint32_t action);
    void sendToRoot(xcb_window_t window, Atom type, const std::array<std::uint32_t, 5>& data);

    Connection& connection;
    EventSelection& selection;
    Turn& turn;
    Fence& fence;
    WindowManager windowManager;
    std::optional<Job> waiting;
    /// What is expected of the job that waits.
    std::optional<Foreseen> expectation;
    /// Whether the present window manager has been seen to round a size as the window's hints say.
    bool roundsByHints = false;
};

} // namespace platform::x11
