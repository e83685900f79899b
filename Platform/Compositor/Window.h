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
    /// Whether the compositor has it in a layout, which it leaves as it is placed, even if its frame stays the same.
    bool isTiled = false;
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
    /// It is the one that the user works on. Only told by a compositor that does not tell where the pointer is.
    bool isActive = false;

    friend bool operator==(const Output&, const Output&) = default;
};

} // namespace platform::compositor
