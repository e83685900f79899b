#include "Platform/Seam/Desktop/OwnWindows.h"
#include "Platform/Simulated/Localization.h"
#include "Tessel/Wiring/DesktopChoice.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace tessel {
namespace {

using Kind = DesktopKind;

/// A session as its environment describes it, with servers at these sockets and owners of these bus names.
struct Session {
    std::string what;
    Kind expected;
    std::string display = {};
    std::string waylandDisplay = {};
    std::string sessionType = {};
    std::vector<std::string> currentDesktops = {};
    std::string swaySocket = {};
    std::string hyprlandSignature = {};
    std::string liveSocket = {};
    std::string busName = {};
    std::string wayfireSocket = {};
    /// The program that listens at the display's socket.
    std::string program = {};

    [[nodiscard]] SessionFacts facts() const {
        return {
            .display = display,
            .waylandDisplay = waylandDisplay,
            .sessionType = sessionType,
            .runtimeFolder = "/run/user/7",
            .swaySocket = swaySocket,
            .wayfireSocket = wayfireSocket,
            .hyprlandSignature = hyprlandSignature,
            .currentDesktops = currentDesktops,
            .isListenedTo = [this](const std::string& path) { return !path.empty() && path == liveSocket; },
            .listenerAt = [this](const std::string& path) { return path == "/run/user/7/wayland-1" ? program : ""; },
            .isOnBus = [this](const std::string& name) { return name == busName; }};
    }
};

const std::vector<Session> sessions{
    {.what = "nothing at all", .expected = Kind::none},
    {.what = "a plain X11 display", .expected = Kind::x11, .display = ":0"},
    {.what = "i3", .expected = Kind::x11, .display = ":0", .sessionType = "x11", .currentDesktops = {"i3"}},
    {.what = "Plasma on X11",
     .expected = Kind::x11,
     .display = ":0",
     .currentDesktops = {"KDE"},
     .busName = "org.kde.KWin"},
    {.what = "GNOME on X11",
     .expected = Kind::x11,
     .display = ":0",
     .sessionType = "x11",
     .currentDesktops = {"GNOME"}},
    {.what = "an X display of its own within a Wayland session",
     .expected = Kind::x11,
     .display = ":99",
     .sessionType = "wayland",
     .currentDesktops = {"GNOME"}},
    {.what = "sway",
     .expected = Kind::sway,
     .display = ":0",
     .waylandDisplay = "wayland-1",
     .currentDesktops = {"sway"},
     .swaySocket = "/sway",
     .liveSocket = "/sway"},
    {.what = "sway that has ended",
     .expected = Kind::unsupported,
     .display = ":0",
     .waylandDisplay = "wayland-1",
     .swaySocket = "/sway"},
    {.what = "sway within Plasma",
     .expected = Kind::sway,
     .waylandDisplay = "wayland-1",
     .currentDesktops = {"KDE"},
     .swaySocket = "/sway",
     .liveSocket = "/sway"},
    {.what = "Wayfire",
     .expected = Kind::wayfire,
     .display = ":0",
     .waylandDisplay = "wayland-1",
     .liveSocket = "/wayfire",
     .wayfireSocket = "/wayfire"},
    {.what = "Wayfire without its IPC, named by the login manager",
     .expected = Kind::wayfire,
     .waylandDisplay = "wayland-1",
     .currentDesktops = {"Wayfire", "wlroots"}},
    {.what = "Wayfire without its IPC, started from a terminal",
     .expected = Kind::wayfire,
     .waylandDisplay = "wayland-1",
     .program = "wayfire"},
    {.what = "Wayfire that has ended",
     .expected = Kind::unsupported,
     .display = ":0",
     .waylandDisplay = "wayland-1",
     .wayfireSocket = "/wayfire"},
    {.what = "X11 after Wayfire", .expected = Kind::x11, .display = ":0", .wayfireSocket = "/wayfire"},
    {.what = "Hyprland",
     .expected = Kind::hyprland,
     .display = ":0",
     .waylandDisplay = "wayland-1",
     .currentDesktops = {"Hyprland"},
     .hyprlandSignature = "abc_1_2",
     .liveSocket = "/run/user/7/hypr/abc_1_2/.socket2.sock"},
    {.what = "Hyprland that has ended",
     .expected = Kind::unsupported,
     .display = ":0",
     .waylandDisplay = "wayland-1",
     .hyprlandSignature = "abc_1_2"},
    {.what = "GNOME that was started from within Hyprland",
     .expected = Kind::gnomeShell,
     .waylandDisplay = "wayland-0",
     .currentDesktops = {"GNOME"},
     .hyprlandSignature = "abc_1_2"},
    {.what = "a signature that is a path",
     .expected = Kind::unsupported,
     .waylandDisplay = "wayland-1",
     .hyprlandSignature = "../sway",
     .liveSocket = "/run/user/7/hypr/../sway/.socket2.sock"},
    {.what = "Plasma",
     .expected = Kind::kwin,
     .display = ":0",
     .waylandDisplay = "wayland-0",
     .currentDesktops = {"KDE"}},
    {.what = "another desktop on KWin",
     .expected = Kind::kwin,
     .display = ":0",
     .waylandDisplay = "wayland-0",
     .currentDesktops = {"LXQt"},
     .busName = "org.kde.KWin"},
    {.what = "GNOME",
     .expected = Kind::gnomeShell,
     .display = ":0",
     .waylandDisplay = "wayland-0",
     .currentDesktops = {"ubuntu", "GNOME"}},
    {.what = "GNOME whose socket has its usual name",
     .expected = Kind::gnomeShell,
     .sessionType = "wayland",
     .currentDesktops = {"GNOME"}},
    {.what = "Cinnamon",
     .expected = Kind::cinnamon,
     .display = ":0",
     .waylandDisplay = "wayland-0",
     .currentDesktops = {"X-Cinnamon"}},
    {.what = "Cinnamon under another name",
     .expected = Kind::cinnamon,
     .display = ":0",
     .waylandDisplay = "wayland-0",
     .currentDesktops = {"Example"},
     .busName = "org.Cinnamon"},
    {.what = "Cinnamon on X11",
     .expected = Kind::x11,
     .display = ":0",
     .sessionType = "x11",
     .currentDesktops = {"X-Cinnamon"},
     .busName = "org.Cinnamon"},
    {.what = "an unknown compositor", .expected = Kind::unsupported, .display = ":0", .waylandDisplay = "wayland-1"},
};

TEST(DesktopChoice, FollowsTheFactsOfTheSession) {
    for (const Session& session : sessions) {
        EXPECT_EQ(desktopKind(session.facts()), session.expected) << session.what;
    }
}

TEST(DesktopChoice, AnUnknownCompositorIsADesktopThatSaysWhatIsMissing) {
    const Session session{.what = {}, .expected = Kind::unsupported, .display = ":0", .waylandDisplay = "wayland-1"};
    platform::linux::MainLoop mainLoop;
    platform::linux::SessionBus bus(mainLoop, std::nullopt);
    const platform::simulated::Localization localization;
    const auto desktop = openDesktop(
        {.mainLoop = mainLoop, .sessionBus = bus, .localization = localization, .folders = {}}, session.facts());
    ASSERT_TRUE(desktop.has_value());
    EXPECT_EQ((*desktop)->name(), "none");
    EXPECT_FALSE((*desktop)->parts().accessibility.isProcessTrustedWithPrompt());
    EXPECT_EQ((*desktop)->parts().accessibility.obstacle()->kind, platform::AccessObstacle::Kind::unknownCompositor);
    EXPECT_EQ((*desktop)->parts().ownWindows.protocol(), platform::OwnWindows::Protocol::wayland);
}

TEST(DesktopChoice, WithoutADisplayThereIsNoDesktop) {
    const Session session{.what = {}, .expected = Kind::none};
    platform::linux::MainLoop mainLoop;
    platform::linux::SessionBus bus(mainLoop, std::nullopt);
    const platform::simulated::Localization localization;
    const auto desktop = openDesktop(
        {.mainLoop = mainLoop, .sessionBus = bus, .localization = localization, .folders = {}}, session.facts());
    ASSERT_FALSE(desktop.has_value());
    EXPECT_NE(desktop.error().find("DISPLAY"), std::string::npos);
}

TEST(SessionName, IsWhereTheWindowsAreShown) {
    ASSERT_EQ(setenv("DISPLAY", ":7", 1), 0);
    const auto nameWith = [](const std::string& waylandDisplay) {
        const Session session{.what = {}, .expected = Kind::none, .display = ":7", .waylandDisplay = waylandDisplay};
        return session.facts().name();
    };
    EXPECT_EQ(nameWith(""), ":7.0");
    EXPECT_EQ(nameWith("wayland-1"), "/run/user/7/wayland-1");
    EXPECT_EQ(nameWith("/tmp/wayland"), "/tmp/wayland");
}

} // namespace
} // namespace tessel
