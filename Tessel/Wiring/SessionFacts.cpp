#include "Tessel/Wiring/SessionFacts.h"

#include "Platform/Linux/Bus/BusNames.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Files/LocalSocket.h"
#include "Platform/X11/Desktop.h"

#include <algorithm>

namespace tessel {

namespace {

std::string variable(const char* name) {
    return platform::linux::environmentVariable(name).value_or("");
}

} // namespace

SessionFacts SessionFacts::ofThisProcess() {
    return {.display = variable("DISPLAY"),
            .waylandDisplay = variable("WAYLAND_DISPLAY"),
            .sessionType = variable("XDG_SESSION_TYPE"),
            .runtimeFolder = variable("XDG_RUNTIME_DIR"),
            .swaySocket = variable("SWAYSOCK"),
            .hyprlandSignature = variable("HYPRLAND_INSTANCE_SIGNATURE"),
            .currentDesktops = platform::linux::currentDesktops(),
            .isListenedTo = platform::linux::isListenedTo,
            .isOnBus = [](const std::string& name) {
                return platform::linux::hasOwnerOnBus(platform::linux::sessionBusAddress(), name);
            }};
}

bool SessionFacts::hasDesktop(std::string_view name) const {
    return std::ranges::find(currentDesktops, name) != currentDesktops.end();
}

std::string SessionFacts::name() const {
    if (waylandDisplay.empty()) {
        return platform::x11::Desktop::sessionName();
    }
    // The same search for the socket as in Wayland's own library (wl_display_connect).
    return waylandDisplay.starts_with('/') ? waylandDisplay : runtimeFolder + "/" + waylandDisplay;
}

platform::linux::Session sessionOf(const SessionFacts& facts) {
    return {.display = facts.name(), .runtimeFolder = platform::linux::runtimeFolder()};
}

} // namespace tessel
