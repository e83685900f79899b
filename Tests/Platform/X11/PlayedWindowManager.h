#pragma once

#include <xcb/xcb.h>

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace platform::x11 {

/// A window manager without any announcement: a process that puts each window into a frame with a title bar, gives it
/// the keyboard, and moves it when it is configured (ICCCM 4.1.5).
class PlayedWindowManager {
public:
    /// The meaning of the position in a configure request.
    enum class Reference : std::uint8_t {
        frame,
        frameWithoutBorder,
        client,
        /// The client if the window has Static gravity, else the frame.
        gravity,
    };

    struct Manners {
        Reference reference = Reference::frame;
        /// Windows between the root and the client; without any, the client gets the border.
        int frames = 1;
        std::uint16_t border = 2;
        std::int16_t title = 18;
        /// The width of the frame beside the client, within the border.
        std::int16_t left = 3;
        std::int16_t right = 5;
        /// The pause before it handles requests for its own windows; it handles others at once.
        std::chrono::milliseconds pause{};
        /// Whether it moves a window before that pause, and only resizes it afterwards.
        bool movesAtOnce = false;
        /// Whether it removes the border of a window that it does not manage, when it is configured.
        bool removesBorders = false;
        /// Whether it owns the selection of window managers.
        bool ownsSelection = false;
        /// Whether it keeps the corner of a frame at the edge of the screen, up to a point beyond it.
        bool keepsCorner = false;
        /// The height of the bar that it draws at the upper edge of the screen, without a property; none if it is 0.
        std::uint16_t bar = 0;
        /// Whether windows stay where they are.
        bool refuses = false;
    };

    /// It is in charge on return.
    PlayedWindowManager(const std::string& display, const Manners& manners);
    PlayedWindowManager(const PlayedWindowManager&) = delete;
    PlayedWindowManager& operator=(const PlayedWindowManager&) = delete;
    ~PlayedWindowManager() { end(); }

    /// Kills it, and waits until it is gone.
    void end();

private:
    pid_t child = -1;
};

} // namespace platform::x11
