#include "Platform/Hyprland/Desktop.h"

#include "Platform/Linux/Log/Log.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace platform::hyprland {

namespace {

/// The name of our desktop entry.
constexpr const char* applicationId = "org.corvid.Tessel";

} // namespace

Desktop::Desktop(linux::MainLoop& mainLoop, const InstanceFacts& facts, HotKeys::Naming naming)
    : session(mainLoop, [facts] { return runningFolder(facts); })
    , access(session, table, mainLoop, ::getpid())
    , windows(mainLoop, table, access)
    , end(
          mainLoop,
          [facts] {
              std::error_code ignored;
              return !std::filesystem::exists(eventSocket(folderOf(facts)), ignored);
          },
          [&mainLoop] {
              linux::logToStandardError("Hyprland is gone");
              mainLoop.end(EXIT_FAILURE);
          })
    , hotKeys(
          session,
          [&mainLoop, socket = displaySocket(facts)](HotKeys::Protocol::Handlers handlers, Instant deadline) {
              return HotKeys::Protocol::open(mainLoop, socket, applicationId, std::move(handlers), deadline);
          },
          std::move(naming))
    , holders(mainLoop, hotKeys) {
    session.follow(*this);
    end.await();
    session.start();
}

} // namespace platform::hyprland
