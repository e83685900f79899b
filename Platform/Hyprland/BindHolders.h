#pragma once

#include "Platform/Hyprland/HotKeys.h"
#include "Platform/Linux/Holders/LaterAnswer.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <utility>

namespace platform::hyprland {

/// Says who has the shortcuts that Hyprland has refused. Main thread only.
class BindHolders final : public ShortcutHolders {
public:
    /// Both must outlive this.
    BindHolders(linux::MainLoop& mainLoop, const HotKeys& hotKeys)
        : mainLoop(mainLoop)
        , hotKeys(hotKeys) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override {
        return linux::answerLater(mainLoop, shortcuts, std::move(found),
                                  [this](const corvid::Shortcut& shortcut) { return hotKeys.holderOf(shortcut); });
    }

private:
    linux::MainLoop& mainLoop;
    const HotKeys& hotKeys;
};

} // namespace platform::hyprland
