#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace platform::linux {

/// The GSettings schemas of one family of desktops for their shortcuts.
struct SettingsFamily {
    /// The beginnings of the names of schemas with shortcuts, the window manager's own first.
    std::span<const std::string_view> schemas;
    /// The setting that lists the user's own shortcuts, by their paths or by the ends of their paths; empty without
    /// one.
    std::string_view listSchema = {};
    std::string_view listKey = {};
    /// The schema of one of them, and the beginning of its path if only the end is listed.
    std::string_view ownSchema = {};
    std::string_view ownPath = {};
};

namespace settings {

inline constexpr std::array<std::string_view, 5> gnomeSchemas{
    "org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings", "org.gnome.mutter.keybindings",
    "org.gnome.mutter.wayland.keybindings", "org.gnome.settings-daemon.plugins.media-keys"};
inline constexpr std::array<std::string_view, 3> cinnamonSchemas{"org.cinnamon.desktop.keybindings.wm",
                                                                 "org.cinnamon.desktop.keybindings.media-keys",
                                                                 "org.cinnamon.muffin.keybindings"};
inline constexpr std::array<std::string_view, 3> mateSchemas{"org.mate.Marco.global-keybindings",
                                                             "org.mate.Marco.window-keybindings",
                                                             "org.mate.SettingsDaemon.plugins.media-keys"};

inline constexpr SettingsFamily gnome{.schemas = gnomeSchemas,
                                      .listSchema = "org.gnome.settings-daemon.plugins.media-keys",
                                      .listKey = "custom-keybindings",
                                      .ownSchema = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding"};
inline constexpr SettingsFamily cinnamon{.schemas = cinnamonSchemas,
                                         .listSchema = "org.cinnamon.desktop.keybindings",
                                         .listKey = "custom-list",
                                         .ownSchema = "org.cinnamon.desktop.keybindings.custom-keybinding",
                                         .ownPath = "/org/cinnamon/desktop/keybindings/custom-keybindings/"};
inline constexpr SettingsFamily mate{.schemas = mateSchemas};

} // namespace settings

/// Searches for shortcuts in the settings of GNOME, Cinnamon or MATE by their own tool, `gsettings`, run as another
/// program: the library behind it, GIO, would stay in memory, and aborts a program that requests a missing schema. Main
/// thread only.
class SettingsHolders final : public ShortcutHolders {
public:
    /// `heldBy`: the desktop's common name. The loop must outlive this, and so must the family's texts.
    SettingsHolders(MainLoop& mainLoop, std::string heldBy, const SettingsFamily& family)
        : mainLoop(mainLoop)
        , heldBy(std::move(heldBy))
        , family(family) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

private:
    MainLoop& mainLoop;
    std::string heldBy;
    SettingsFamily family;
};

} // namespace platform::linux
