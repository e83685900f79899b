#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <optional>
#include <string_view>

namespace platform::linux {

/// The holder of a shortcut by Xfce's channel "xfce4-keyboard-shortcuts", as `xfconf-query --list --verbose` prints it.
/// The name of a property ends with the keys, its value is their function. "custom" precedes "default", which is
/// ignored if "custom/override" is set.
[[nodiscard]] std::optional<ShortcutHolder> xfceHolder(std::string_view printed, const corvid::Shortcut& shortcut);

/// Searches for shortcuts in Xfce's settings by their own tool, `xfconf-query`, run as another program. Main thread
/// only.
class XfceHolders final : public ShortcutHolders {
public:
    /// The loop has to outlive this.
    explicit XfceHolders(MainLoop& mainLoop)
        : mainLoop(mainLoop) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

private:
    MainLoop& mainLoop;
};

} // namespace platform::linux
