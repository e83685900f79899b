#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/Windows/WindowKind.h"

#include <string>

namespace platform::compositor {

/// The compositor's own id of a window. While the compositor runs, no other window gets the same id.
using WindowIdentifier = std::string;

using linux::WindowKind;

/// A compositor's data on one window.
struct Window {
    linux::ApplicationClues clues;
    WindowKind kind = WindowKind::ignored;
    /// Whether it has no entry in task bars.
    bool skipsTaskBars = false;
    bool isFullscreen = false;
    /// Whether the compositor has it in a layout, which it leaves when it is placed, even if its frame stays the same.
    bool isTiled = false;
    /// Whether the compositor has finished mapping it, so that its kind and frame are final and it can be placed.
    bool isReady = false;
    /// The visible outer rectangle, with decorations and without shadows, in points of the compositor's own space: y
    /// grows downwards, and the compositor chooses the origin.
    corvid::CGRect frame;

    friend bool operator==(const Window&, const Window&) = default;
};

/// One screen, both rectangles in the compositor's own space.
struct Output {
    corvid::CGRect frame;
    /// The frame without the space that panels and docks reserve.
    corvid::CGRect workArea;
    /// Whether the user works on it. Set only by a compositor that does not report the pointer's position.
    bool isActive = false;

    friend bool operator==(const Output&, const Output&) = default;
};

} // namespace platform::compositor
