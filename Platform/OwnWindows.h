#pragma once

#include "CorvidKitCore/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// What a toolkit cannot do for a window of ours, and the desktop can. Main thread only.
class OwnWindows {
public:
    /// The desktop's own number of the window (on X11 its XID); of no meaning where windows have none.
    using Number = std::uint64_t;

    /// What a toolkit speaks to show windows here.
    enum class Protocol : std::uint8_t {
        /// A window may stay out of the window manager's hands: it then stands where it is put, a point is a pixel, and
        /// it can hold the pointer.
        x11,
        /// Every window is in the compositor's hands, which also gives it the keyboard; a point is whatever the
        /// compositor counts in.
        wayland,
    };

    OwnWindows() = default;
    OwnWindows(const OwnWindows&) = delete;
    OwnWindows& operator=(const OwnWindows&) = delete;
    virtual ~OwnWindows() = default;

    [[nodiscard]] virtual Protocol protocol() const = 0;

    /// Where the pointer is, in points in the screen space; nothing where the desktop does not say.
    [[nodiscard]] virtual std::optional<corvid::CGPoint> pointer() = 0;

    /// The frame of the screen that the user works on, in points in the screen space; nothing where the desktop does
    /// not say, or says where the pointer is.
    [[nodiscard]] virtual std::optional<corvid::CGRect> activeScreen() { return std::nullopt; }

    /// Puts the top-left corner of the window there; in points in the accessibility space. Without effect on a window
    /// that is gone. Where windows have no numbers, the window goes by its title, which no other window of this process
    /// has, and may be told its place before it is shown.
    virtual void place(Number window, const std::string& title, corvid::CGPoint topLeft) = 0;

    /// Gives the window the keyboard, whoever has it. A window that is only about to be shown gets it when it is; one
    /// that is not shown within a second does not. When it is hidden, the keyboard goes back to who had it, unless
    /// somebody has taken it meanwhile. Where the compositor gives the keyboard, it has done so.
    virtual void takeKeyboard(Number window) = 0;

    /// Whether the window has the keyboard, or is about to get it as it was asked for. No where the desktop does not
    /// say.
    [[nodiscard]] virtual bool hasKeyboard(Number window) = 0;

    /// Whether a window of another program has the keyboard. No where the desktop does not say.
    [[nodiscard]] virtual bool isKeyboardElsewhere() { return false; }

    /// Whether what lies behind a window shines through where the window is transparent.
    [[nodiscard]] virtual bool areBlended() = 0;
};

} // namespace platform
