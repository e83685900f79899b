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

std::string Desktop::hindrance() {
    return DesktopParts::table.isOpen() ? "" : "KWin does not answer, or does not run scripts";
}

bool Desktop::isTrusted() {
    // A moment without trust makes lost keys known: all are then registered again, and those that another program holds
    // fail.
    return compositor::Desktop::isTrusted() && !hotKeys.takeLoss();
}

} // namespace platform::kwin
