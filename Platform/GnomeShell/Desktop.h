#pragma once

#include "Platform/Compositor/Desktop.h"
#include "Platform/GnomeShell/Extension.h"
#include "Platform/GnomeShell/TopBar.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/ShellCore/HotKeys.h"
#include "Platform/ShellCore/ShellBell.h"
#include "Platform/ShellCore/ShellHolders.h"
#include "Platform/ShellCore/ShellLink.h"
#include "Platform/ShellCore/WindowAccess.h"

#include <filesystem>
#include <string>

namespace platform::gnomeshell {

/// The members that live longer than the rest of the desktop.
struct ShellParts {
    ShellParts(linux::MainLoop& mainLoop, const std::filesystem::path& extensionFolder);

    linux::SessionBus bus;
    shellcore::ShellLink link;
    compositor::WindowTable table;
    Extension extension;
    shellcore::WindowAccess access;
};

/// GNOME Shell on Wayland. Our own extension gives access to windows, keys and the item in the top bar.
class Desktop final : private ShellParts, public compositor::Desktop {
public:
    struct Folders {
        /// The forms of the extension, "legacy" and "esm".
        std::filesystem::path extension;
        /// The program's own icons ("hicolor" and the like).
        std::filesystem::path icons;
    };

    /// Waits a moment for the shell's reply. The loop must outlive the desktop.
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
    shellcore::HotKeys hotKeys;
    shellcore::ShellHolders holders;
    TopBar topBar;
    shellcore::ShellBell bell;
};

} // namespace platform::gnomeshell
