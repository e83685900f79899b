#pragma once

#include "Platform/Compositor/WindowParts.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/GnomeShell/Extension.h"
#include "Platform/GnomeShell/TopBar.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/ShellCore/HotKeys.h"
#include "Platform/ShellCore/ShellBell.h"
#include "Platform/ShellCore/ShellHolders.h"
#include "Platform/ShellCore/ShellLink.h"
#include "Platform/ShellCore/WindowAccess.h"

#include <filesystem>
#include <string>

namespace platform::gnomeshell {

/// GNOME Shell on Wayland. Our own extension gives access to windows, keys and the item in the top bar.
class Desktop final : public linux::Desktop {
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

    void followApplications(linux::ApplicationIdentification& identification,
                            ApplicationCatalogue& catalogue) override {
        windows.followApplications(identification, catalogue);
    }

    [[nodiscard]] DesktopParts parts() override { return windows.with(bell, hotKeys, &holders); }

    [[nodiscard]] linux::TrayPlace* trayPlace() override { return &topBar; }

    /// Only the top bar reports the position of the item.
    [[nodiscard]] bool prefersOwnTrayPlace() const override { return true; }

    [[nodiscard]] std::string caution() override { return extension.caution(); }

private:
    linux::SessionBus bus;
    shellcore::ShellLink link;
    compositor::WindowTable table;
    Extension extension;
    shellcore::WindowAccess access;
    compositor::WindowParts windows;
    shellcore::HotKeys hotKeys;
    shellcore::ShellHolders holders;
    TopBar topBar;
    shellcore::ShellBell bell;
};

} // namespace platform::gnomeshell
