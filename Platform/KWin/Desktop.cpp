#include "Platform/KWin/Desktop.h"

#include <utility>

namespace platform::kwin {

Desktop::Desktop(linux::MainLoop& mainLoop, const std::filesystem::path& script, HotKeys::Naming naming)
    : bus(mainLoop)
    , access(mainLoop, bus, table, script)
    , windows(mainLoop, table, access)
    , hotKeys(mainLoop, bus, std::move(naming), KeyLoans::standardFile())
    , holders(mainLoop, bus, [this](std::int32_t key) { return hotKeys.lender(key); }) {
    const Instant deadline = mainLoop.now() + startPatience;
    bus.awaitArrival(deadline);
    access.waitUntilOpen(deadline);
}

} // namespace platform::kwin
