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
}

std::string Desktop::hindrance() {
    return DesktopParts::table.isOpen() ? "" : "KWin does not answer, or does not run scripts";
}

bool Desktop::isTrusted() {
    // Keys that were lost are made known by a moment without trust: all are then registered anew, and what somebody
    // else holds is found to be so.
    return compositor::Desktop::isTrusted() && !hotKeys.takeLoss();
}

} // namespace platform::kwin
