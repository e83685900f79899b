#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace platform::linux {

/// A search whose results are available at once: calls `holderOf` for each of the shortcuts in a later turn of the
/// loop. Both functions must be callable as long as the search lives.
[[nodiscard]] inline std::unique_ptr<HolderSearch>
answerLater(MainLoop& mainLoop, const std::vector<corvid::Shortcut>& shortcuts, ShortcutHolders::Found found,
            std::function<std::optional<ShortcutHolder>(const corvid::Shortcut&)> holderOf) {
    struct Search final : HolderSearch {
        std::unique_ptr<ScheduledWork> work;
    };

    auto search = std::make_unique<Search>();
    search->work =
        mainLoop.schedule(mainLoop.now(), {}, [shortcuts, reply = std::move(found), holderOf = std::move(holderOf)] {
            ShortcutHolders::Answers answers;
            for (const corvid::Shortcut& shortcut : shortcuts) {
                answers.push_back(holderOf(shortcut));
            }
            reply(answers);
        });
    return search;
}

} // namespace platform::linux
