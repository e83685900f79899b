#pragma once

#include "Platform/X11/ConfiguredPositions.h"
#include "Platform/X11/EventSelection.h"
#include "Platform/X11/Fence.h"
#include "Platform/X11/FrameGeometry.h"
#include "Platform/X11/ScopedConfigureWatch.h"
#include "Platform/X11/Turn.h"
#include "Platform/X11/WindowManager.h"

#include <cstdint>
#include <optional>

namespace platform::x11 {

/// Moves and resizes one window at a time through the window manager, and ensures that the request takes effect.
///
/// Requests for one window are collected until they are sent, so that a size, a position and a size again are sent as
/// one message. Rectangles are in root coordinates.
class Placement {
public:
    Placement(Connection& connection, EventSelection& selection, Turn& turn, Fence& fence)
        : connection(connection)
        , selection(selection)
        , turn(turn)
        , fence(fence) {}

    /// Adds to the requests for a window. Pending requests for another window are sent first.
    void request(xcb_window_t window, const PlacementRequest& part);

    /// Sends the pending requests, if any; does not wait for the result. A maximized window is released first, which
    /// does wait, and so does a predicted result. Under a window manager that moves windows on configure requests alone
    /// it always waits: the position may have to be corrected.
    void send();

    /// Sends the pending requests for this window and waits until the window has come to rest. Does nothing without
    /// pending requests.
    ///
    /// A window that grows in steps rounds its size, and then must be moved once more. If the window manager is known
    /// to round by the window's hints, the result is predicted: the window's facts are the predicted ones from now on,
    /// nothing is sent yet, and the next request is part of the same message.
    void settle(xcb_window_t window);

    /// The window manager in use, read again when it changes.
    void setWindowManager(WindowManager manager);

    /// A window that was requested to move, and its geometry, which the window manager left as it was.
    struct LeftAlone {
        xcb_window_t window = XCB_WINDOW_NONE;
        FrameGeometry geometry;
    };

    /// The window of the last request, if the window manager ignored it: it lays this window out itself. If it
    /// was to have another position, it is requested nothing else in that turn (`Turn::isLeftAlone`).
    [[nodiscard]] const std::optional<LeftAlone>& leftAlone() const { return ignored; }

private:
    struct Job {
        xcb_window_t window = XCB_WINDOW_NONE;
        PlacementRequest request;
    };

    /// The known state of the window after the message was sent.
    struct Sent {
        Job job;
        FrameGeometry before;
        /// The geometry whose extents were used for the message.
        FrameGeometry reckoned;
        SizeHints sizeHints;
        bool wasMaximizedHorizontally = false;
        bool wasMaximizedVertically = false;
        bool wasMaximized = false;
    };

    struct Foreseen {
        /// The window's state before the prediction.
        WindowFacts before;
        /// There was another request since, so the result differs.
        bool isOutdated = false;
    };

    [[nodiscard]] std::optional<Sent> sendJob(const std::optional<Foreseen>& foreseen);
    void finish();
    [[nodiscard]] bool foresee();
    void learnRounding(const Sent& sent);
    /// Whether the window could have changed as requested, and did not change at all.
    [[nodiscard]] static bool isIgnored(const Sent& sent, const WindowFacts* present);
    /// Notes whether the window manager ignored what was sent.
    void noteWhetherIgnored(const Sent& sent);
    /// Whether the window was tiled, and had to be released.
    [[nodiscard]] bool untile(const Sent& sent);
    void correctForChangedExtents(const Sent& sent);
    /// Sends a message once more, shifted by the difference: to a window manager that does not tell its decoration and
    /// reckons with another one than the window has.
    void shiftIfElsewhere(const Sent& sent);
    /// Whether a window is moved by configure requests: the window manager has no better way, or none for this window.
    [[nodiscard]] bool movesByConfiguring(xcb_window_t window) const;
    [[nodiscard]] std::optional<Sent> configureJob(const std::optional<Foreseen>& foreseen);
    void configureIfElsewhere(const Sent& sent);
    void correctPosition(const Sent& sent, FrameGeometry before, const ScopedConfigureWatch& watch);
    [[nodiscard]] static bool isInPlace(const Sent& sent, const WindowFacts& facts);
    /// Waits until a client that was at `before` stands still after a configure request; null if the window manager did
    /// not react in time.
    [[nodiscard]] const WindowFacts* readConfigured(const Sent& sent, const corvid::CGRect& before,
                                                    const ScopedConfigureWatch& watch);
    /// Whether a client that was at `before` has its position, but not yet a size, after the last configure request.
    [[nodiscard]] bool isHalfDone(const Sent& sent, const WindowFacts& facts, const corvid::CGRect& before) const;
    void awaitShadow(const Sent& sent, bool wasTiled);
    [[nodiscard]] const WindowFacts* readAgain(xcb_window_t window);
    /// Requests the job's frame of a window that has this geometry now.
    void ask(const Sent& sent, const FrameGeometry& present);
    void askByConfiguring(const Sent& sent, const FrameGeometry& present);
    void releaseMaximized(xcb_window_t window, bool horizontally, bool vertically);
    void changeMaximized(xcb_window_t window, std::uint32_t action);

    Connection& connection;
    EventSelection& selection;
    Turn& turn;
    Fence& fence;
    WindowManager windowManager;
    std::optional<Job> waiting;
    /// The predicted result of the pending job.
    std::optional<Foreseen> expectation;
    /// As observed with the present window manager.
    ConfiguredPositions configuredPositions;
    /// The last window that messages did not put into its place, but configure requests did.
    xcb_window_t configuredWindow = XCB_WINDOW_NONE;
    /// Those of the last configure request, for the client.
    corvid::CGPoint requestedPosition;
    corvid::CGSize requestedSize;
    std::optional<LeftAlone> ignored;
    /// Whether the present window manager was observed to round a size by the window's hints.
    bool roundsByHints = false;
};

} // namespace platform::x11
