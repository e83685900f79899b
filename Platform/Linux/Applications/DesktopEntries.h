#pragma once

#include "Platform/Linux/Applications/DesktopEntryIndex.h"
#include "Platform/Linux/Applications/FolderWatch.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// The present desktop entries of this session. Read at the first use and again after a change, 500 of them in some 50
/// ms. Main thread; must not outlive the loop.
class DesktopEntries {
public:
    struct Places {
        /// The "applications" folders, the most important one first; they need not exist (`BaseFolders::applications`).
        std::vector<std::string> folders;
        /// The names in `XDG_CURRENT_DESKTOP`.
        std::vector<std::string> currentDesktops;
        /// The folders of `PATH`, with colons between them.
        std::string searchPath;

        [[nodiscard]] static Places ofThisSession();
    };

    /// How long after a change the handler is called, so that an installation causes few calls.
    static constexpr Duration standardCoalescing = std::chrono::milliseconds(500);

    explicit DesktopEntries(MainLoop& loop, Places places = Places::ofThisSession(),
                            Duration coalescing = standardCoalescing);

    /// The entries, afresh. Valid until the next call.
    [[nodiscard]] const DesktopEntryIndex& index();

    /// Calls `handler`, in place of an earlier one, in a turn of the event loop of its own after applications were
    /// installed, changed or removed. It is not called before the entries were first read.
    void onChange(std::function<void()> handler) { changed = std::move(handler); }

    [[nodiscard]] const Places& places() const { return where; }

private:
    MainLoop& loop;
    Places where;
    Duration coalescing;
    std::function<void()> changed = [] {};
    std::optional<FolderWatch> watch;
    DesktopEntryIndex entries;
    Instant readAt{};
};

} // namespace platform::linux
