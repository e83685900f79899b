#include "Platform/KWin/Desktop.h"

#include <utility>

namespace platform::kwin {

DesktopParts::DesktopParts(linux::MainLoop& mainLoop, const std::filesystem::path& script, HotKeys::Naming naming)
    : bus(mainLoop)
    , door(mainLoop, bus, table, script)
    , hotKeys(mainLoop, bus, std::move(naming), KeyLoans::standardFile())
    , holders(mainLoop, bus, [this](std::int32_t key) { return hotKeys.lender(key); }) {
    const Instant deadline = mainLoop.now() + Desktop::startPatience;
    bus.awaitArrival(deadline);
    door.waitUntilOpen(deadline);
}

Desktop::Desktop(linux::MainLoop& mainLoop, const std::filesystem::path& script, HotKeys::Naming naming)
    : DesktopParts(mainLoop, script, std::move(naming))
    , compositor::Desktop(mainLoop, DesktopParts::table, DesktopParts::door) {
    hotKeys.setBeforePress([this] { beginTurn(); });
}

} // namespace platform::kwin
