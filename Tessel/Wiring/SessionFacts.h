#pragma once

#include "Platform/Linux/Control/Session.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

/// What tells in which session this program runs and who places its windows.
struct SessionFacts {
    std::string display;        ///< `DISPLAY`
    std::string waylandDisplay; ///< `WAYLAND_DISPLAY`
    std::string sessionType;    ///< `XDG_SESSION_TYPE`
    std::string runtimeFolder;  ///< `XDG_RUNTIME_DIR`
    std::string swaySocket;     ///< `SWAYSOCK`
    /// The names in `XDG_CURRENT_DESKTOP`.
    std::vector<std::string> currentDesktops = {};

    // What has to be asked for, and is only where it makes a difference.

    /// Whether somebody listens at the Unix socket of that path.
    std::function<bool(const std::string& path)> isListenedTo;
    /// Whether somebody has that name on the user's message bus.
    std::function<bool(const std::string& name)> isOnBus;

    /// Reads the environment: main thread.
    [[nodiscard]] static SessionFacts ofThisProcess();

    /// Whether windows are shown over Wayland. In such a session there is an X display, too, which knows only some of
    /// them.
    [[nodiscard]] bool isWayland() const {
        return !waylandDisplay.empty() || (sessionType == "wayland" && display.empty());
    }

    [[nodiscard]] bool hasDesktop(std::string_view name) const;

    /// Names the session among those that the user may have, whether or not its display answers: what shows its
    /// windows. Empty where there is nothing of that kind.
    [[nodiscard]] std::string name() const;
};

/// The session of this process, to find the program that runs in it. Reads the environment: main thread.
[[nodiscard]] platform::linux::Session sessionOf(const SessionFacts& facts);

} // namespace tessel
