#include "Platform/Compositor/Desktop.h"

namespace platform::compositor {

Desktop::Desktop(linux::MainLoop& mainLoop, WindowTable& table, Door& door)
    : table(table)
    , turn(table, door, mainLoop.turnDeadline())
    , placement(door, turn)
    , windows(door, turn, placement, [this] { return isTrusted(); })
    , own(door, turn)
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
}

void Desktop::followApplications(linux::ApplicationIdentification& identification, ApplicationCatalogue& catalogue) {
    processes.start(identification, catalogue);
    // The objects that are made next register keys and look at the screens.
    turn.deadline().begin();
}

} // namespace platform::compositor
