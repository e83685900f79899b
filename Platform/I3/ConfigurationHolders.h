#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

namespace platform::i3 {

/// Searches for shortcuts in i3's configuration, which i3 itself reports: through `i3-msg`, so that the program never
/// waits for i3. Main thread only.
class ConfigurationHolders final : public ShortcutHolders {
public:
    /// The loop must outlive this.
    explicit ConfigurationHolders(linux::MainLoop& mainLoop)
        : mainLoop(mainLoop) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

private:
    linux::MainLoop& mainLoop;
};

} // namespace platform::i3
