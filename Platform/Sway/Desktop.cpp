#include "Platform/Sway/Desktop.h"

#include "Platform/Linux/Log.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform::sway {

namespace {

constexpr std::chrono::milliseconds endingLeeway{500};

} // namespace

DesktopParts::DesktopParts(linux::MainLoop& mainLoop, const std::string& socketPath)
    : session(mainLoop, socketPath)
    , door(session, windowTable, mainLoop, ::getpid()) {
}

Desktop::Desktop(linux::MainLoop& mainLoop, const std::string& socketPath)
    : DesktopParts(mainLoop, socketPath)
    , compositor::Desktop(mainLoop, windowTable, door)
    , mainLoop(mainLoop)
    , socketPath(socketPath)
    , lastCommands(socketPath)
    , hotKeys((session.follow(*this), session), includedFiles,
              [this](const std::string& commands) { lastCommands.set(commands); }) {
    endAfter(patience);
    session.start();
}

void Desktop::sessionClosed() {
    // It closes its connections first and takes its socket along then.
    end = mainLoop.schedule(mainLoop.now() + patienceAfterLeaving, endingLeeway, [this] {
        std::error_code ignored;
        endAfter(std::filesystem::exists(socketPath, ignored) ? patience - patienceAfterLeaving : Duration::zero());
    });
}

void Desktop::endAfter(Duration delay) {
    end = mainLoop.schedule(mainLoop.now() + delay, endingLeeway, [this] {
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
