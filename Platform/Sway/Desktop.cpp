#include "Platform/Sway/Desktop.h"

#include "Platform/Linux/Log/Log.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform::sway {

namespace {

using i3ipc::EventType;
using i3ipc::Json;

constexpr std::chrono::milliseconds endingLeeway{500};

} // namespace

Desktop::Desktop(linux::MainLoop& mainLoop, const std::string& socketPath)
    : mainLoop(mainLoop)
    , socketPath(socketPath)
    , session(mainLoop, socketPath)
    , access(session, table, mainLoop, ::getpid())
    , lastCommands(socketPath)
    , hotKeys((session.follow(*this), session), i3ipc::includedFiles,
              [this](const std::string& commands) { lastCommands.set(commands); }) {
    end = mainLoop.schedule(mainLoop.now() + patience, endingLeeway, [this] { giveUp(); });
    session.start();
}

void Desktop::sessionClosed() {
    endUnlessBackBy(mainLoop.now() + patience);
}

void Desktop::endUnlessBackBy(Instant limit) {
    // An ending sway closes its connections first and removes its socket then.
    end = mainLoop.schedule(mainLoop.now() + betweenLooks, endingLeeway, [this, limit] {
        std::error_code ignored;
        if (mainLoop.now() >= limit || !std::filesystem::exists(socketPath, ignored)) {
            giveUp();
        } else {
            endUnlessBackBy(limit);
        }
    });
}

void Desktop::giveUp() {
    linux::logToStandardError("sway is gone");
    mainLoop.end(EXIT_FAILURE);
}

} // namespace platform::sway
