#include "Platform/Sway/Desktop.h"

#include "Platform/Linux/Log.h"

#include <unistd.h>

#include <cstdlib>

namespace platform::sway {

namespace {

constexpr std::chrono::milliseconds leeway{500};

} // namespace

DesktopParts::DesktopParts(linux::MainLoop& mainLoop, const std::string& socketPath)
    : session(mainLoop, socketPath)
    , door(session, windowTable, mainLoop, ::getpid()) {
}

Desktop::Desktop(linux::MainLoop& mainLoop, const std::string& socketPath)
    : DesktopParts(mainLoop, socketPath)
    , compositor::Desktop(mainLoop, windowTable, door)
    , mainLoop(mainLoop)
    , bell(mainLoop)
    , hotKeys((session.follow(*this), session)) {
    sessionClosed();
    session.start();
}

bool Desktop::isTrusted() {
    return compositor::Desktop::isTrusted() && !hotKeys.takeChange();
}

void Desktop::sessionClosed() {
    end = mainLoop.schedule(mainLoop.now() + patience, leeway, [this] {
        linux::logToStandardError("sway is gone");
        mainLoop.end(EXIT_FAILURE);
    });
}

void Desktop::sessionTold(EventType type, const Json& /*content*/) {
    // Presses that arrive together have each a turn's time of their own.
    if (type == EventType::binding) {
        beginTurn();
    }
}

} // namespace platform::sway
