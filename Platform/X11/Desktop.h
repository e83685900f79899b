#pragma once

#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Windows/Deliveries.h"
#include "Platform/X11/Accessibility.h"
#include "Platform/X11/AccessibilityObservers.h"
#include "Platform/X11/Beep.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/EventSelection.h"
#include "Platform/X11/Fence.h"
#include "Platform/X11/HotKeys.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/OwnWindows.h"
#include "Platform/X11/Placement.h"
#include "Platform/X11/RootChildren.h"
#include "Platform/X11/RunningApplications.h"
#include "Platform/X11/Screens.h"
#include "Platform/X11/SettingsManager.h"
#include "Platform/X11/SystemTray.h"
#include "Platform/X11/TilingManager.h"
#include "Platform/X11/Turn.h"
#include "Platform/X11/WindowManagerHolders.h"
#include "Platform/X11/WindowManagerWatch.h"
#include "Platform/X11/Workspace.h"

#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::x11 {

/// An X11 desktop: one connection and everything that uses it, driven by the main loop.
class Desktop final : public linux::Desktop {
public:
    /// Window managers with protocols of their own. Each is used while it is the window manager.
    using TilingManagers = std::vector<std::unique_ptr<TilingManager>>;

    /// Connects to the environment's DISPLAY. The error is a sentence for the user.
    [[nodiscard]] static std::expected<std::unique_ptr<Desktop>, std::string> open(linux::MainLoop& mainLoop,
                                                                                   TilingManagers tiling = {});

    Desktop(linux::MainLoop& mainLoop, Connection opened, TilingManagers tiling);

    /// The session's name among those that the user may have: the environment's display and its screen, even if they do
    /// not answer. Empty if DISPLAY names none.
    [[nodiscard]] static std::string sessionName();

    /// The present window manager's own, if it is such a tiling one.
    [[nodiscard]] std::string_view name() const override;

    /// About a window that the window manager keeps where it is.
    [[nodiscard]] std::string caution() override;

    void followApplications(linux::ApplicationIdentification& identification, ApplicationCatalogue& catalogue) override;

    [[nodiscard]] DesktopParts parts() override {
        return {.accessibility = windows,
                .accessibilityObservers = observers,
                .sound = bell,
                .hotKeyEvents = hotKeys,
                .ownWindows = own,
                .runningApplications = processes,
                .screens = monitors,
                .shortcutHolders = &holders,
                .workspace = applications};
    }

    /// Adds a source of the holders of shortcuts.
    void addHolders(WindowManagerHolders::Source source) { holders.add(std::move(source)); }

    /// The settings manager.
    [[nodiscard]] SettingsManager* appearanceSource() override { return &settings; }

    /// The tray of older panels.
    [[nodiscard]] linux::TrayPlace* trayPlace() override { return &tray; }

private:
    [[nodiscard]] std::optional<AccessObstacle> obstacle();
    [[nodiscard]] bool finishTurn();
    void serveEvents();
    void handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool isReadingDue() const {
        return guessIsStale || managedWindows.hasWork() || windowManager.isRenewalDue();
    }
    void readChanges();
    void renewGuess();
    void handlePropertyChange(const xcb_property_notify_event_t& event);
    void followKeyboardIn(Duration delay);
    /// Switches to the window manager that is in charge now.
    void windowManagerChanged();
    /// Renews the grabs and announces the change once the window manager has come to rest.
    void settleSoon();
    void announceAccess();
    void keepBorrowed();

    linux::MainLoop& mainLoop;
    Connection connection;
    EventSelection selection{connection};
    Turn turn{connection};
    TilingManagers tiling;
    Fence fence{connection};
    Placement placement{connection, selection, turn, fence};
    Accessibility windows;
    Beep bell{connection};
    HotKeys hotKeys{connection};
    WindowManagerHolders holders;
    OwnWindows own;
    Screens monitors{turn};
    SettingsManager settings{connection, selection};
    Workspace applications{turn};
    linux::Deliveries deliveries{mainLoop};
    ManagedWindows managedWindows{connection, selection, mainLoop};
    AccessibilityObservers observers{connection, turn, managedWindows, deliveries};
    RunningApplications processes;
    SystemTray tray{connection, selection, turn, mainLoop};
    RootChildren rootChildren{connection, selection};
    WindowManagerWatch windowManager{connection, selection, mainLoop, [this] { windowManagerChanged(); }};
    std::uint8_t keyboardEvent = 0;
    bool guessIsStale = true;
    /// Whether the changes are read in this turn, before any event is served.
    bool readsFirst = false;
    std::unique_ptr<ScheduledWork> guessRetry;
    std::unique_ptr<ScheduledWork> keyboardFollow;
    std::unique_ptr<ScheduledWork> settling;
    std::unique_ptr<ScheduledWork> accessNotice;
    std::unique_ptr<ScheduledWork> borrowedRenewal;
    std::unique_ptr<linux::DescriptorWatch> watch;
};

} // namespace platform::x11
