#pragma once

#include "Platform/Compositor/Desktop.h"
#include "Platform/GnomeShell/Door.h"
#include "Platform/GnomeShell/Extension.h"
#include "Platform/GnomeShell/HotKeys.h"
#include "Platform/GnomeShell/ShellBell.h"
#include "Platform/GnomeShell/ShellHolders.h"
#include "Platform/GnomeShell/ShellLink.h"
#include "Platform/GnomeShell/TopBar.h"
#include "Platform/Linux/Bus/SessionBus.h"

#include <filesystem>
#include <string>

namespace platform::gnomeshell {

/// The members that live longer than the rest of the desktop.
struct Ground {
    Ground(linux::MainLoop& mainLoop, const std::filesystem::path& extensionFolder);

    linux::SessionBus bus;
    ShellLink link;
    compositor::WindowTable table;
    Extension extension;
    Door door;
};

/// GNOME Shell on Wayland. Windows, keys and the item in the top bar are reached through an extension of ours.
class Desktop final : private Ground, public compositor::Desktop {
public:
    struct Folders {
        /// The forms of the extension, "legacy" and "esm".
        std::filesystem::path extension;
        /// The program's own icons ("hicolor" and the like).
        std::filesystem::path icons;
    };

    /// Waits a moment for the shell to answer. The loop must outlive the desktop.
    Desktop(linux::MainLoop& mainLoop, const Folders& folders);

    [[nodiscard]] std::string_view name() const override { return "GNOME Shell"; }

    [[nodiscard]] Beep& sound() override { return bell; }

    [[nodiscard]] HotKeyEvents& hotKeyEvents() override { return hotKeys; }

    [[nodiscard]] ShortcutHolders* shortcutHolders() override { return &holders; }

    [[nodiscard]] linux::TrayPlace* trayPlace() override { return &topBar; }

    /// Only the top bar reports the position of the item.
    [[nodiscard]] bool prefersOwnTrayPlace() const override { return true; }

    [[nodiscard]] std::string caution() override { return extension.caution(); }

private:
    HotKeys hotKeys;
    ShellHolders holders;
    TopBar topBar;
    ShellBell bell;
};

} // namespace platform::gnomeshell
