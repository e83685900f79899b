#include "Platform/Linux/Applications/DesktopEntries.h"

#include "Platform/Linux/Files/BaseFolders.h"

#include <malloc.h>

#include <chrono>
#include <utility>

namespace platform::linux {

DesktopEntries::Places DesktopEntries::Places::ofThisSession() {
    return {
        .folders = BaseFolders::ofThisProcess().applications(),
        .currentDesktops = linux::currentDesktops(),
        .searchPath = programSearchPath(),
    };
}

DesktopEntries::DesktopEntries(MainLoop& loop, Places places, Duration coalescing)
    : loop(loop)
    , where(std::move(places))
    , coalescing(coalescing) {
}

const DesktopEntryIndex& DesktopEntries::index() {
    // If the kernel does not report changes, a reading is valid for a few seconds.
    constexpr Duration trusted = std::chrono::seconds(5);
    bool isCurrent = watch.has_value() && !watch->takeChange();
    if (!watch) {
        watch.emplace(loop, where.folders, ".desktop", coalescing, [this] { changed(); });
    }
    if (isCurrent && !watch->isComplete()) {
        isCurrent = loop.now() - readAt < trusted;
    }
    if (!isCurrent) {
        // The old one goes first: memory for two is never needed.
        entries = DesktopEntryIndex();
        entries = DesktopEntryIndex::read(where.folders, where.currentDesktops);
        readAt = loop.now();
        // The readers leave holes behind that the program does not need again before the next change.
        ::malloc_trim(0);
    }
    return entries;
}

} // namespace platform::linux
