#pragma once

#include "Platform/Cinnamon/CoreLoader.h"
#include "Platform/Compositor/WindowParts.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/ShellCore/HotKeys.h"
#include "Platform/ShellCore/ShellBell.h"
#include "Platform/ShellCore/ShellHolders.h"
#include "Platform/ShellCore/ShellLink.h"
#include "Platform/ShellCore/WindowAccess.h"

#include <chrono>
#include <filesystem>
#include <string_view>

namespace platform::cinnamon {

/// Cinnamon on Wayland: our core in it gives access to windows and keys. Its panels show status items by themselves.
class Desktop final : public linux::Desktop {
public:
    /// The limit for all waiting when the program starts.
    static constexpr std::chrono::seconds startPatience{2};

    /// Waits until Cinnamon runs the core, so that the shortcuts work at once. If that takes too long, the desktop
    /// starts without the permission to move windows. `core` is the file that Cinnamon evaluates. The loop must outlive
    /// the desktop.
    Desktop(linux::MainLoop& mainLoop, std::filesystem::path core);

    [[nodiscard]] std::string_view name() const override { return "Cinnamon"; }

    void followApplications(linux::ApplicationIdentification& identification,
                            ApplicationCatalogue& catalogue) override {
        windows.followApplications(identification, catalogue);
    }

    [[nodiscard]] DesktopParts parts() override { return windows.with(bell, hotKeys, &holders); }

private:
    /// A connection of its own, because a placement reads it while it waits.
    linux::SessionBus bus;
    shellcore::ShellLink link;
    compositor::WindowTable table;
    CoreLoader loader;
    shellcore::WindowAccess access;
    compositor::WindowParts windows;
    shellcore::HotKeys hotKeys;
    shellcore::ShellHolders holders;
    shellcore::ShellBell bell;
};

} // namespace platform::cinnamon
