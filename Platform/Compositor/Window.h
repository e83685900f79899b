#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/Windows/WindowKind.h"

#include <string>

namespace platform::compositor {

/// The compositor's own name of a window. While the compositor runs it is never given to another window.
using WindowIdentifier = std::string;

using linux::WindowKind;

/// What a compositor tells of one window.
struct Window {
    linux::ApplicationClues clues;
    WindowKind kind = WindowKind::furniture;
    /// Whether it has no entry in task bars.
    bool skipsTaskBars = false;
    bool isFullscreen = false;
    /// Whether the compositor has finished taking it in, so that its kind and frame are final and it can be placed.
    bool isReady = false;
    /// The visible outer rectangle, decorations in and shadows out, in points of the compositor's own space: y grows
    /// downwards, the origin is where the compositor has it.
    corvid::CGRect frame;

    friend bool operator==(const Window&, const Window&) = default;
};

/// One screen, both rectangles in the compositor's own space.
struct Output {
    corvid::CGRect frame;
    /// The frame without what panels and docks keep for themselves.
    corvid::CGRect workArea;

    friend bool operator==(const Output&, const Output&) = default;
};

} // namespace platform::compositor
