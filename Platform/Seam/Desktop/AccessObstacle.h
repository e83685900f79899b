#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// The reason why the desktop does not let this program move windows, with the names that a sentence about it needs.
struct AccessObstacle {
    enum class Kind : std::uint8_t {
        /// The user has not given the permission in the system's settings.
        permission,
        /// No window manager is in charge that moves windows on request.
        windowManager,
        /// The window manager `desktop` does not answer in its own protocol.
        silentWindowManager,
        /// The compositor `desktop` does not answer.
        silentCompositor,
        /// The compositor `desktop` does not run our script, or does not answer: the two cannot be told apart.
        scriptNotRunning,
        /// Our extension of the compositor `desktop` is installed, but switched off.
        extensionOff,
        /// The compositor `desktop` loads our extension, or its present version, at the next login.
        extensionNotLoaded,
        /// The compositor `desktop` refuses to run our extension.
        extensionRefused,
        /// Our extension runs and cannot work, because the compositor `desktop` lacks `detail`.
        extensionUnfit,
        /// The compositor `desktop` does not run our code; `detail` says why.
        codeRefused,
        /// Another program owns the bus name `detail`, so that our extension serves that program.
        busNameTaken,
        /// The compositor `desktop` lacks its own plugins `detail` (their names, with blanks between), which the user
        /// adds to its configuration, `file`.
        pluginsMissing,
        /// There is no backend for this compositor.
        unknownCompositor,
    };

    Kind kind = Kind::permission;
    /// The name of the window manager or compositor; empty where the kind does not mention one.
    std::string desktop = {};
    std::string detail = {};
    /// The path of a file; empty where the kind does not mention one.
    std::string file = {};

    friend bool operator==(const AccessObstacle&, const AccessObstacle&) = default;
};

} // namespace platform
