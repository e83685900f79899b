#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"
#include "Platform/X11/Connection.h"

namespace platform::x11 {

/// Searches for shortcuts in openbox's configuration: the file that openbox names on the root window
/// (`_OB_CONFIG_FILE`), or the first "openbox/rc.xml" in the folders of configurations. Main thread only.
class OpenboxHolders final : public ShortcutHolders {
public:
    /// Both must outlive this.
    OpenboxHolders(linux::MainLoop& mainLoop, Connection& connection)
        : mainLoop(mainLoop)
        , connection(connection) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

private:
    linux::MainLoop& mainLoop;
    Connection& connection;
};

} // namespace platform::x11
