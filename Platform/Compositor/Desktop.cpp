#include "Platform/Compositor/Desktop.h"

namespace platform::compositor {

Desktop::Desktop(linux::MainLoop& mainLoop, WindowTable& table, Door& door)
    : table(table)
    , turn(table, door, mainLoop)
    , placement(door, turn)
    , windows(door, turn, placement, [this] { return isTrusted(); })
    , own(door, turn)
    , deliveries(mainLoop)
    , observers(table, deliveries)
    , processes(mainLoop, table, deliveries,
                [this](const WindowIdentifier& identifier, const Window& window) {
                    observers.windowBecameReady(identifier, window);
                })
    , turnEnd(mainLoop.atEndOfTurn([this] { beginTurn(); })) {
}

void Desktop::followApplications(linux::ApplicationIdentification& identification, ApplicationCatalogue& catalogue) {
    processes.start(identification, catalogue);
}

void Desktop::beginTurn() {
    placement.finishTurn();
    turn.begin();
}

} // namespace platform::compositor
