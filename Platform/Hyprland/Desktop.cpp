#include "Platform/Hyprland/Desktop.h"

#include "Platform/Linux/Log/Log.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace platform::hyprland {

namespace {

constexpr std::chrono::milliseconds endingLeeway{500};

/// The name of our desktop entry.
constexpr const char* applicationId = "org.corvid.Tessel";

} // namespace

DesktopParts::DesktopParts(linux::MainLoop& mainLoop, const InstanceFacts& facts)
    : session(mainLoop, [facts] { return runningFolder(facts); })
    , access(session, windowTable, mainLoop, ::getpid()) {
}

Desktop::Desktop(linux::MainLoop& mainLoop, const InstanceFacts& facts, HotKeys::Naming naming)
    : DesktopParts(mainLoop, facts)
    , compositor::Desktop(mainLoop, windowTable, access)
    , mainLoop(mainLoop)
    , facts(facts)
    , hotKeys(
          session,
          [&mainLoop, socket = displaySocket(facts)](HotKeys::Protocol::Told told, Instant deadline) {
              return HotKeys::Protocol::open(mainLoop, socket, applicationId, std::move(told), deadline);
          },
          std::move(naming)) {
    session.follow(*this);
    endAfter(patience);
    session.start();
}

void Desktop::sessionClosed() {
    // It closes its connections first and removes its sockets then.
    end = mainLoop.schedule(mainLoop.now() + patienceAfterLeaving, endingLeeway, [this] {
        std::error_code ignored;
        const bool isLeft = std::filesystem::exists(eventSocket(folderOf(facts)), ignored);
        endAfter(isLeft ? patience - patienceAfterLeaving : Duration::zero());
    });
}

void Desktop::endAfter(Duration delay) {
    end = mainLoop.schedule(mainLoop.now() + delay, endingLeeway, [this] {
        linux::logToStandardError("Hyprland is gone");
        mainLoop.end(EXIT_FAILURE);
    });
}

} // namespace platform::hyprland
