#include "Tessel/AccessText.h"

#include <utility>

namespace tessel {

namespace {

using ObstacleKind = platform::AccessObstacle::Kind;

} // namespace

std::string accessText(const platform::AccessObstacle& obstacle) {
    const auto& [kind, desktop, detail, file] = obstacle;
    switch (kind) {
    case ObstacleKind::permission:
        return "the system's settings do not allow it";
    case ObstacleKind::windowManager:
        return "no window manager here moves windows on request";
    case ObstacleKind::silentWindowManager:
        return desktop + " does not answer at its socket";
    case ObstacleKind::silentCompositor:
        return desktop + " does not answer";
    case ObstacleKind::scriptNotRunning:
        return desktop + " does not answer, or does not run scripts";
    case ObstacleKind::extensionOff:
        return "the extension Tessel of " + desktop + " is switched off; switch it on in the application Extensions";
    case ObstacleKind::extensionNotLoaded:
        return desktop + " has not loaded its extension Tessel yet; log out and in once";
    case ObstacleKind::extensionRefused:
        return desktop + " does not run its extension Tessel; the application Extensions says why";
    case ObstacleKind::extensionUnfit:
        return "the extension Tessel does not fit " + desktop + ", which lacks " + detail;
    case ObstacleKind::codeRefused:
        return desktop + " does not run Tessel's code, which it needs to move windows: " + detail;
    case ObstacleKind::busNameTaken:
        return "another program has Tessel's name on the message bus (" + detail + ")";
    case ObstacleKind::pluginsMissing:
        return desktop + " lacks plugins that Tessel needs; add “" + detail +
               "” to the line “plugins” in the section “core” of " + file;
    case ObstacleKind::unknownCompositor:
        return "this Wayland compositor has no way for Tessel to move windows; X11, Plasma, GNOME, Cinnamon, sway and "
               "Wayfire "
               "have one";
    }
    std::unreachable();
}

const char* accessVariant(const platform::AccessObstacle& obstacle) {
    switch (obstacle.kind) {
    case ObstacleKind::permission:
        return nullptr;
    case ObstacleKind::windowManager:
    case ObstacleKind::silentWindowManager:
        return "X11";
    case ObstacleKind::silentCompositor:
    case ObstacleKind::scriptNotRunning:
    case ObstacleKind::busNameTaken:
        return "compositor";
    case ObstacleKind::extensionOff:
        return "extension-off";
    case ObstacleKind::extensionNotLoaded:
        return "extension-login";
    case ObstacleKind::extensionRefused:
    case ObstacleKind::extensionUnfit:
        return "extension-refused";
    case ObstacleKind::codeRefused:
        return "code-refused";
    case ObstacleKind::pluginsMissing:
        return "plugins-missing";
    case ObstacleKind::unknownCompositor:
        return "unsupported";
    }
    std::unreachable();
}

} // namespace tessel
