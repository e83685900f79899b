#pragma once

#include "Platform/Linux/Holders/LaterAnswer.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace platform::linux {

/// Tells holders that a desktop's hot keys learned when their combinations were refused. Main thread only.
class KnownHolders final : public ShortcutHolders {
public:
    using HolderOf = std::function<std::optional<ShortcutHolder>(const corvid::Shortcut& shortcut)>;

    /// The loop must outlive this, and `holderOf` be callable as long.
    KnownHolders(MainLoop& mainLoop, HolderOf holderOf)
        : mainLoop(mainLoop)
        , holderOf(std::move(holderOf)) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override {
        return answerLater(mainLoop, shortcuts, std::move(found), holderOf);
    }

private:
    MainLoop& mainLoop;
    HolderOf holderOf;
};

} // namespace platform::linux
