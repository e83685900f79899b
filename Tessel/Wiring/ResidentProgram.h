#pragma once

#include "CorvidKit/DeferredOpenPanel.h"
#include "CorvidKit/DeferredPopover.h"
#include "CorvidKit/DeferredToolkit.h"
#include "CorvidKit/MenuBarApp.h"
#include "CorvidKit/Publisher.h"
#include "Platform/Linux/AddressOpener.h"
#include "Platform/Linux/Appearance.h"
#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Applications/DesktopEntryCatalogue.h"
#include "Platform/Linux/Applications/DesktopEntryIdentification.h"
#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Control/ControlBusName.h"
#include "Platform/Linux/Control/ControlSocket.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/Localization.h"
#include "Platform/Linux/LoopApplication.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/PluginFile.h"
#include "Platform/Linux/ProcessInfo.h"
#include "Platform/Linux/ProgramFile.h"
#include "Platform/Linux/SessionLock.h"
#include "Platform/Linux/Settings/UserDefaults.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemLog.h"
#include "Platform/Linux/Tray/NotifierPlace.h"
#include "Platform/Linux/Tray/StatusBar.h"
#include "Platform/MainBundle.h"
#include "Platform/Platform.h"
#include "Tessel/AppState.h"
#include "Tessel/RemoteControl.h"
#include "Tessel/StatusMenu.h"

#include <memory>
#include <optional>
#include <string>

namespace tessel {

/// The program that waits for its keys: everything that lives as long as the event loop turns, on an opened desktop.
/// The members stand in the order of their lives; each may use those above it. Main thread only.
class ResidentProgram {
public:
    /// Made before the desktop and ended after it.
    struct Foundation {
        platform::linux::MainLoop& mainLoop;
        /// The interface.
        platform::linux::PluginFile& plugin;
        platform::linux::ControlSocket& controlSocket;
        platform::linux::SessionBus& sessionBus;
        const platform::MainBundle& bundle;
        platform::linux::Localization& localization;
    };

    ResidentProgram(const Foundation& foundation, std::unique_ptr<platform::linux::Desktop> opened);
    ResidentProgram(const ResidentProgram&) = delete;
    ResidentProgram& operator=(const ResidentProgram&) = delete;
    ~ResidentProgram() = default;

    /// Runs until the loop ends; gives the exit status.
    [[nodiscard]] int run();

    /// The program to become after the end, if any.
    [[nodiscard]] std::optional<std::string> nextProgram() const { return application.nextProgram(); }

private:
    [[nodiscard]] std::unique_ptr<platform::linux::Desktop> followed(std::unique_ptr<platform::linux::Desktop> opened);
    [[nodiscard]] std::vector<platform::linux::TrayPlace*> trayPlaces();
    [[nodiscard]] std::unique_ptr<platform::Toolkit> startToolkit();
    [[nodiscard]] corvid::MenuBarApp::Parts launch();
    void followStatus(AppState& state);
    void serveRequests(AppState& state);

    Foundation foundation;
    platform::linux::DesktopEntries entries{foundation.mainLoop};
    platform::linux::DesktopEntryIdentification identification{entries};
    platform::linux::DesktopEntryCatalogue catalogue{entries};
    std::unique_ptr<platform::linux::Desktop> desktop;
    platform::linux::AddressOpener addressOpener{foundation.sessionBus};
    platform::linux::AutostartLoginItem loginItem;
    platform::linux::ProgramFile programFile{foundation.mainLoop};
    platform::linux::LoopApplication application{foundation.mainLoop, programFile};
    platform::linux::ProcessInfo processInfo;
    platform::linux::SystemClock systemClock;
    platform::linux::SystemLog systemLog;
    platform::linux::UserDefaults userDefaults;
    platform::linux::NotifierPlace notifiers;
    platform::linux::StatusBar statusBar;
    platform::linux::Appearance appearance;
    platform::linux::SessionLock sessionLock;
    corvid::DeferredToolkit toolkit;
    corvid::DeferredOpenPanel openPanel{toolkit};
    corvid::DeferredPopover popover{toolkit};
    platform::Platform table;
    platform::Installation installation{table};
    /// Made once the loop runs.
    corvid::Subscription statusChanges;
    std::string reportedStatus;
    std::optional<StatusMenu> statusMenu;
    std::optional<RemoteControl> remoteControl;
    std::optional<platform::linux::ControlBusName> busName;
};

} // namespace tessel
