#pragma once

#include "Platform/Linux/MainLoop.h"
#include "Platform/ShortcutHolders.h"

namespace platform::i3 {

/// Looks for shortcuts in i3's configuration, which i3 itself tells: `i3-msg` is run for it, so that nothing waits for
/// i3. Main thread only.
class ConfigurationHolders final : public ShortcutHolders {
public:
    /// The loop has to outlive this.
    explicit ConfigurationHolders(linux::MainLoop& mainLoop)
        : mainLoop(mainLoop) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

private:
    linux::MainLoop& mainLoop;
};

} // namespace platform::i3
