#pragma once

#include "Platform/Compositor/Window.h"

#include <map>
#include <set>

namespace platform::compositor {

/// The kinds of windows on a tiling compositor that does not report them. Wayland programs do not declare the kind of
/// their windows, so a window that floats from the beginning, beside an older one of its program, counts as a dialog.
///
/// The kind shows only when the window appears: later a person, or we, may have taken it out of the layout. So it is
/// kept for as long as the window is there. Main thread only.
class WindowKinds {
public:
    /// The windows that were read at one time. Add them oldest first; the windows that are missing are forgotten.
    class Reading {
    public:
        explicit Reading(WindowKinds& kinds)
            : kinds(kinds) {}

        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;

        ~Reading() { kinds.known.swap(present); }

        /// Sets the kind of a window, which has the one that it declares, and says whether it is tiled.
        void add(const WindowIdentifier& identifier, Window& window);

    private:
        WindowKinds& kinds;
        std::map<WindowIdentifier, WindowKind> present;
        std::set<ProcessIdentifier> processes;
    };

    void clear() { known.clear(); }

private:
    std::map<WindowIdentifier, WindowKind> known;
};

} // namespace platform::compositor
