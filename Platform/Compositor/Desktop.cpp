#include "Platform/Compositor/Desktop.h"

#include <string>

namespace platform::compositor {

Desktop::Desktop(linux::MainLoop& mainLoop, WindowTable& table, Door& door)
    : mainLoop(mainLoop)
    , table(table)
    , turn(table, door, mainLoop)
    , placement(door, turn)
    , windows(table, door, turn, placement)
    , own(door, turn)
    , deliveries(mainLoop)
    , observers(table, deliveries)
    , processes(mainLoop, table, deliveries,
                [this](const WindowIdentifier& identifier, const Window& window) {
                    observers.windowBecameReady(identifier, window);
                })
    , turnEnd(mainLoop.atEndOfTurn([this] { beginTurn(); })) {
    table.onDoorChange([this] { announceAccess(); });
}

Desktop::~Desktop() {
    table.onDoorChange({});
}

void Desktop::followApplications(linux::ApplicationIdentification& identification, ApplicationCatalogue& catalogue) {
    processes.start(identification, catalogue);
}

void Desktop::announceAccess() {
    // In a turn of its own: the door is in the middle of its work, and observers ask and wait for answers.
    accessNotice = mainLoop.schedule(mainLoop.now(), {}, [this] {
        windows.notificationCenter()->post({.name = std::string(AccessNotification::didChange), .userInfo = {}});
    });
}

void Desktop::beginTurn() {
    placement.finishTurn();
    turn.begin();
}

} // namespace platform::compositor
