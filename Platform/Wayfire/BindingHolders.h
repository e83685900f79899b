#pragma once

#include "Platform/Linux/Holders/LaterAnswer.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"
#include "Platform/Wayfire/HotKeys.h"

#include <utility>

namespace platform::wayfire {

/// Finds shortcuts in Wayfire's options, which were read when they were refused. Main thread only.
class BindingHolders final : public ShortcutHolders {
public:
    /// Both must outlive this.
    BindingHolders(linux::MainLoop& mainLoop, const HotKeys& hotKeys)
        : mainLoop(mainLoop)
        , hotKeys(hotKeys) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override {
        return linux::answerLater(mainLoop, shortcuts, std::move(found), [this](const corvid::Shortcut& shortcut) {
            const ShortcutHolder* holder = hotKeys.holderOf(shortcut);
            return holder == nullptr ? std::nullopt : std::optional(*holder);
        });
    }

private:
    linux::MainLoop& mainLoop;
    const HotKeys& hotKeys;
};

} // namespace platform::wayfire
