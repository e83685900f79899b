#include "Tessel/Wiring/DesktopChoice.h"

#include "Platform/Awesome/Manager.h"
#include "Platform/Bspwm/Manager.h"
#include "Platform/Cinnamon/Desktop.h"
#include "Platform/GnomeShell/Desktop.h"
#include "Platform/Herbstluftwm/Manager.h"
#include "Platform/Hyprland/Desktop.h"
#include "Platform/I3/ConfigurationHolders.h"
#include "Platform/I3/Manager.h"
#include "Platform/KWin/AccelHolders.h"
#include "Platform/KWin/Desktop.h"
#include "Platform/Linux/Holders/SettingsHolders.h"
#include "Platform/Linux/Holders/XfceHolders.h"
#include "Platform/Sway/Desktop.h"
#include "Platform/Wayfire/Desktop.h"
#include "Platform/X11/Desktop.h"
#include "Tessel/Wiring/UnsupportedDesktop.h"
#include "TesselCore/WindowAction.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tessel {

namespace {

using platform::linux::MainLoop;
using platform::linux::SessionBus;
using Opened = std::expected<std::unique_ptr<platform::linux::Desktop>, std::string>;

/// The condition for a desktop of one kind, and its construction.
struct Candidate {
    DesktopKind kind;
    bool (*isThere)(const SessionFacts& facts);
    Opened (*open)(const DesktopNeeds& needs, const SessionFacts& facts);
};

bool isSway(const SessionFacts& facts) {
    return !facts.swaySocket.empty() && facts.isListenedTo(facts.swaySocket);
}

/// A Wayfire without its plugin "ipc" is recognized all the same, so that the user is told.
bool isWayfire(const SessionFacts& facts) {
    return (!facts.wayfireSocket.empty() && facts.isListenedTo(facts.wayfireSocket)) ||
           (facts.isWayland() && (facts.hasDesktop("Wayfire") || facts.listenerAt(facts.name()) == "wayfire"));
}

platform::hyprland::InstanceFacts hyprlandFacts(const SessionFacts& facts) {
    return {
        .runtimeFolder = facts.runtimeFolder, .signature = facts.hyprlandSignature, .display = facts.waylandDisplay};
}

bool isHyprland(const SessionFacts& facts) {
    // Not the other socket: whoever connects there holds the compositor up until it has read something.
    const std::string folder = platform::hyprland::folderOf(hyprlandFacts(facts));
    return !folder.empty() && facts.isListenedTo(platform::hyprland::eventSocket(folder));
}

bool isKWin(const SessionFacts& facts) {
    return facts.isWayland() &&
           (facts.hasDesktop("KDE") || (!facts.hasDesktop("GNOME") && facts.isOnBus("org.kde.KWin")));
}

bool isGnomeShell(const SessionFacts& facts) {
    return facts.isWayland() && facts.hasDesktop("GNOME");
}

bool isCinnamon(const SessionFacts& facts) {
    return facts.isWayland() && (facts.hasDesktop("X-Cinnamon") || facts.isOnBus("org.Cinnamon"));
}

bool isX11(const SessionFacts& facts) {
    return !facts.isWayland() && !facts.display.empty();
}

/// Adds the sources of the holders of taken shortcuts, by the window manager's name.
void addHolders(platform::x11::Desktop& desktop, MainLoop& mainLoop, SessionBus& sessionBus) {
    using platform::linux::SettingsFamily;
    struct Family {
        const char* windowManager;
        const char* heldBy;
        const SettingsFamily* settings;
    };

    namespace settings = platform::linux::settings;
    for (const Family& each : {Family{"GNOME Shell", "GNOME", &settings::gnome},
                               {"Mutter", "Mutter", &settings::gnome},
                               {"Mutter(Budgie)", "Budgie", &settings::gnome},
                               {"Metacity", "Metacity", &settings::gnome},
                               {"Mutter (Muffin)", "Cinnamon", &settings::cinnamon},
                               {"Metacity (Marco)", "MATE", &settings::mate}}) {
        desktop.addHolders(
            {.windowManager = each.windowManager,
             .holders = std::make_unique<platform::linux::SettingsHolders>(mainLoop, each.heldBy, *each.settings)});
    }
    desktop.addHolders({.windowManager = "Xfwm4", .holders = std::make_unique<platform::linux::XfceHolders>(mainLoop)});
    desktop.addHolders(
        {.windowManager = "i3", .holders = std::make_unique<platform::i3::ConfigurationHolders>(mainLoop)});
    desktop.addHolders(
        {.windowManager = "KWin", .holders = std::make_unique<platform::kwin::AccelHolders>(mainLoop, sessionBus)});
}

Opened openX11(const DesktopNeeds& needs, const SessionFacts& /*facts*/) {
    // Window managers come and go while this runs; these are asked in their own way, each while it is in charge.
    platform::x11::Desktop::TilingManagers tiling;
    tiling.push_back(std::make_unique<platform::i3::Manager>(needs.mainLoop));
    tiling.push_back(std::make_unique<platform::bspwm::Manager>(needs.mainLoop));
    tiling.push_back(std::make_unique<platform::herbstluftwm::Manager>());
    tiling.push_back(std::make_unique<platform::awesome::Manager>(needs.mainLoop));
    auto opened = platform::x11::Desktop::open(needs.mainLoop, std::move(tiling));
    if (!opened) {
        return std::unexpected(opened.error());
    }
    addHolders(**opened, needs.mainLoop, needs.sessionBus);
    return *std::move(opened);
}

/// The name of a shortcut in the system's settings.
std::string titleOf(const platform::Localization& localization, std::uint32_t keyCode, std::uint32_t modifiers) {
    const corvid::Shortcut wanted{.keyCode = keyCode, .modifiers = modifiers};
    for (const auto& [action, shortcut] : WindowAction::shortcuts()) {
        if (shortcut == wanted) {
            return localization.text("Tessel", action.title());
        }
    }
    return wanted.displayString();
}

Opened openKWin(const DesktopNeeds& needs, const SessionFacts& /*facts*/) {
    return std::make_unique<platform::kwin::Desktop>(
        needs.mainLoop, needs.folders.kwinScript,
        [&localization = needs.localization](std::uint32_t keyCode, std::uint32_t modifiers) {
            return titleOf(localization, keyCode, modifiers);
        });
}

Opened openGnomeShell(const DesktopNeeds& needs, const SessionFacts& /*facts*/) {
    using platform::gnomeshell::Desktop;
    return std::make_unique<Desktop>(
        needs.mainLoop, Desktop::Folders{.extension = needs.folders.shellExtension, .icons = needs.folders.icons});
}

Opened openCinnamon(const DesktopNeeds& needs, const SessionFacts& /*facts*/) {
    return std::make_unique<platform::cinnamon::Desktop>(needs.mainLoop, needs.folders.cinnamonCore);
}

Opened openSway(const DesktopNeeds& needs, const SessionFacts& facts) {
    return std::make_unique<platform::sway::Desktop>(needs.mainLoop, facts.swaySocket);
}

Opened openWayfire(const DesktopNeeds& needs, const SessionFacts& facts) {
    // The plugin puts it there (Wayfire 0.10, plugins/ipc).
    const std::string usual = facts.runtimeFolder + "/wayfire-" + facts.waylandDisplay + "-.socket";
    return std::make_unique<platform::wayfire::Desktop>(
        needs.mainLoop, platform::wayfire::Sockets{.ipc = facts.wayfireSocket.empty() ? usual : facts.wayfireSocket,
                                                   .wayland = facts.name()});
}

Opened openHyprland(const DesktopNeeds& needs, const SessionFacts& facts) {
    return std::make_unique<platform::hyprland::Desktop>(
        needs.mainLoop, hyprlandFacts(facts),
        [&localization = needs.localization](std::uint32_t keyCode, std::uint32_t modifiers) {
            return titleOf(localization, keyCode, modifiers);
        });
}

Opened openUnsupported(const DesktopNeeds& /*needs*/, const SessionFacts& /*facts*/) {
    return std::make_unique<UnsupportedDesktop>();
}

Opened openNothing(const DesktopNeeds& /*needs*/, const SessionFacts& /*facts*/) {
    return std::unexpected("there is no desktop to work on (neither WAYLAND_DISPLAY nor DISPLAY is set)");
}

/// The first candidate whose condition holds is chosen.
constexpr std::array<Candidate, 9> candidates{{
    {DesktopKind::sway, isSway, openSway},
    {DesktopKind::wayfire, isWayfire, openWayfire},
    {DesktopKind::hyprland, isHyprland, openHyprland},
    {DesktopKind::kwin, isKWin, openKWin},
    {DesktopKind::gnomeShell, isGnomeShell, openGnomeShell},
    {DesktopKind::cinnamon, isCinnamon, openCinnamon},
    {DesktopKind::x11, isX11, openX11},
    {DesktopKind::unsupported, [](const SessionFacts& facts) { return facts.isWayland(); }, openUnsupported},
    {DesktopKind::none, [](const SessionFacts& /*facts*/) { return true; }, openNothing},
}};

const Candidate& candidateFor(const SessionFacts& facts) {
    return *std::ranges::find_if(candidates, [&](const Candidate& each) { return each.isThere(facts); });
}

} // namespace

DesktopKind desktopKind(const SessionFacts& facts) {
    return candidateFor(facts).kind;
}

Opened openDesktop(const DesktopNeeds& needs, const SessionFacts& facts) {
    return candidateFor(facts).open(needs, facts);
}

} // namespace tessel
