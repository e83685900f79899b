#pragma once

#include "Platform/Linux/Control/Session.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

/// The facts that identify this program's session and the placer of its windows.
struct SessionFacts {
    std::string display;           ///< `DISPLAY`
    std::string waylandDisplay;    ///< `WAYLAND_DISPLAY`
    std::string sessionType;       ///< `XDG_SESSION_TYPE`
    std::string runtimeFolder;     ///< `XDG_RUNTIME_DIR`
    std::string swaySocket;        ///< `SWAYSOCK`
    std::string wayfireSocket;     ///< `WAYFIRE_SOCKET`
    std::string hyprlandSignature; ///< `HYPRLAND_INSTANCE_SIGNATURE`
    /// The names in `XDG_CURRENT_DESKTOP`.
    std::vector<std::string> currentDesktops = {};

    // Facts that need a request, which is sent only if its result matters.

    /// Whether a process listens at the Unix socket of that path.
    std::function<bool(const std::string& path)> isListenedTo;
    /// The program that listens at the Unix socket of that path; empty without one.
    std::function<std::string(const std::string& path)> listenerAt;
    /// Whether that name has an owner on the user's message bus.
    std::function<bool(const std::string& name)> isOnBus;

    /// Reads the environment: main thread.
    [[nodiscard]] static SessionFacts ofThisProcess();

    /// Whether windows are shown over Wayland. Such a session has an X display, too, which knows only some of them.
    [[nodiscard]] bool isWayland() const {
        return !waylandDisplay.empty() || (sessionType == "wayland" && display.empty());
    }

    [[nodiscard]] bool hasDesktop(std::string_view name) const;

    /// The name of the session among those that the user may have, whether or not its display answers: the display of
    /// its windows. Empty without one.
    [[nodiscard]] std::string name() const;
};

/// The session of this process, for finding the program that runs in it. Reads the environment: main thread.
[[nodiscard]] platform::linux::Session sessionOf(const SessionFacts& facts);

} // namespace tessel
