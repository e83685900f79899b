#pragma once

#include "Platform/Hyprland/HotKeys.h"
#include "Platform/Linux/Holders/LaterAnswer.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <utility>

namespace platform::hyprland {

/// Says what Hyprland does with the shortcuts that it has refused. Main thread only.
class BindHolders final : public ShortcutHolders {
public:
    /// Both must outlive this.
    BindHolders(linux::MainLoop& mainLoop, const HotKeys& hotKeys)
        : mainLoop(mainLoop)
        , hotKeys(hotKeys) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override {
        return linux::answerLater(mainLoop, shortcuts, std::move(found),
                                  [this](const corvid::Shortcut& shortcut) -> std::optional<ShortcutHolder> {
                                      const auto purpose = hotKeys.purposeOf(shortcut);
                                      return purpose ? std::optional(
                                                           ShortcutHolder{.heldBy = "Hyprland", .purpose = *purpose})
                                                     : std::nullopt;
                                  });
    }

private:
    linux::MainLoop& mainLoop;
    const HotKeys& hotKeys;
};

} // namespace platform::hyprland
