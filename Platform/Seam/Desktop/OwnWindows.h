#pragma once

#include "CorvidKitCore/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// Operations on our own windows that a toolkit cannot do, and the desktop can. Main thread only.
class OwnWindows {
public:
    /// The desktop's own id of the window (on X11 its XID); without meaning if windows have none.
    using Number = std::uint64_t;

    /// The toolkit's protocol for windows here.
    enum class Protocol : std::uint8_t {
        /// A window may be unmanaged by the window manager: it then keeps its own position, a point is a pixel, and it
        /// can grab the pointer.
        x11,
        /// The compositor manages every window, and assigns the keyboard focus; a point is the compositor's unit.
        wayland,
    };

    OwnWindows() = default;
    OwnWindows(const OwnWindows&) = delete;
    OwnWindows& operator=(const OwnWindows&) = delete;
    virtual ~OwnWindows() = default;

    [[nodiscard]] virtual Protocol protocol() const = 0;

    /// The pointer's position, in points in the screen space; empty if the desktop does not report it.
    [[nodiscard]] virtual std::optional<corvid::CGPoint> pointer() = 0;

    /// The frame of the screen that the user works on, in points in the screen space; empty if the desktop does not
    /// report it, or reports the pointer's position.
    [[nodiscard]] virtual std::optional<corvid::CGRect> activeScreen() { return std::nullopt; }

    /// Moves the top-left corner of the window to that position, in points in the accessibility space. Without effect
    /// on a window that is gone. If windows have no ids, the window is found by its title, which no other window of
    /// this process has, and its position may be set before it is shown.
    virtual void place(Number window, const std::string& title, corvid::CGPoint topLeft) = 0;

    /// Gives the window the keyboard focus, regardless of its owner. A window that is about to be shown gets it then;
    /// one that is not shown within a second does not. When the window is hidden, the focus returns to its former
    /// owner, unless another window has taken it meanwhile. If the compositor assigns the focus, it has done so.
    virtual void takeKeyboard(Number window) = 0;

    /// Whether the window has the keyboard focus, or is about to get it by a request. False if the desktop does not
    /// report it.
    [[nodiscard]] virtual bool hasKeyboard(Number window) = 0;

    /// Whether a window of another program has the keyboard focus. False if the desktop does not report it.
    [[nodiscard]] virtual bool isKeyboardElsewhere() { return false; }

    /// Whether the background shows through the transparent parts of a window.
    [[nodiscard]] virtual bool areBlended() = 0;
};

} // namespace platform
