#include "Platform/Compositor/WindowParts.h"

#include <string>

namespace platform::compositor {

WindowParts::WindowParts(linux::MainLoop& mainLoop, WindowTable& table, WindowAccess& access)
    : mainLoop(mainLoop)
    , table(table)
    , turn(table, access, mainLoop.turnDeadline())
    , placement(access, turn)
    , windows(table, access, turn, placement)
    , own(access, turn)
    , deliveries(mainLoop)
    , observers(table, deliveries)
    , processes(mainLoop, table, deliveries,
                [this](const WindowIdentifier& identifier, const Window& window) {
                    observers.windowBecameReady(identifier, window);
                })
    , turnEnd(mainLoop.atEndOfTurn([this] {
        placement.finishTurn();
        turn.begin();
    })) {
    table.onAccessChange([this] { announceAccess(); });
}

WindowParts::~WindowParts() {
    table.onAccessChange({});
}

void WindowParts::followApplications(linux::ApplicationIdentification& identification,
                                     ApplicationCatalogue& catalogue) {
    processes.start(identification, catalogue);
    // The objects that are made next register keys and look at the screens.
    turn.deadline().begin();
}

DesktopParts WindowParts::with(Beep& sound, HotKeyEvents& hotKeys, ShortcutHolders* holders) {
    return {.accessibility = windows,
            .accessibilityObservers = observers,
            .sound = sound,
            .hotKeyEvents = hotKeys,
            .ownWindows = own,
            .runningApplications = processes,
            .screens = outputs,
            .shortcutHolders = holders,
            .workspace = applications};
}

void WindowParts::announceAccess() {
    // In a turn of its own: the window access is in the middle of its work, and observers ask and wait for answers.
    accessNotice = mainLoop.schedule(mainLoop.now(), {}, [this] {
        windows.notificationCenter()->post({.name = std::string(AccessNotification::didChange), .userInfo = {}});
    });
}

} // namespace platform::compositor
