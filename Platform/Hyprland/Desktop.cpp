#include "Platform/Hyprland/Desktop.h"

#include <unistd.h>

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
    , end(mainLoop, compositor::absenceOf(eventSocket(folderOf(facts))), compositor::endOfLoop(mainLoop, "Hyprland"))
    , hotKeys(
          session,
          [&mainLoop, socket = displaySocket(facts)](HotKeys::Protocol::Handlers handlers, Instant deadline) {
              return HotKeys::Protocol::open(mainLoop, socket, applicationId, std::move(handlers), deadline);
          },
          std::move(naming))
    , holders(mainLoop, [this](const corvid::Shortcut& shortcut) { return hotKeys.holderOf(shortcut); }) {
    session.follow(*this);
    end.await();
    session.start();
}

} // namespace platform::hyprland
