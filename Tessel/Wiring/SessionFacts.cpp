#include "Tessel/Wiring/SessionFacts.h"

#include "Platform/Linux/Bus/BusNames.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Files/LocalSocket.h"
#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/X11/Desktop.h"

#include <algorithm>
#include <cstddef>

namespace tessel {

namespace {

std::string variable(const char* name) {
    return platform::linux::environmentVariable(name).value_or("");
}

/// The kernel's name for the process; its program's path is hidden where that has privileges (proc(5), "comm").
std::string listenerProgram(const std::string& path) {
    constexpr std::size_t longest = 16;
    const auto process = platform::linux::listenerAt(path);
    if (!process) {
        return {};
    }
    auto name = platform::linux::readRegularFile("/proc/" + std::to_string(*process) + "/comm", longest,
                                                 platform::linux::Excess::cutOff);
    return name ? name->substr(0, name->find('\n')) : std::string();
}

} // namespace

SessionFacts SessionFacts::ofThisProcess() {
    return {.display = variable("DISPLAY"),
            .waylandDisplay = variable("WAYLAND_DISPLAY"),
            .sessionType = variable("XDG_SESSION_TYPE"),
            .runtimeFolder = variable("XDG_RUNTIME_DIR"),
            .swaySocket = variable("SWAYSOCK"),
            .wayfireSocket = variable("WAYFIRE_SOCKET"),
            .hyprlandSignature = variable("HYPRLAND_INSTANCE_SIGNATURE"),
            .currentDesktops = platform::linux::currentDesktops(),
            .isListenedTo = platform::linux::isListenedTo,
            .listenerAt = listenerProgram,
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
