#pragma once

#include "Platform/Seam/Desktop/ShortcutHolders.h"
#include "Platform/Simulated/MainActor.h"
#include "Platform/Simulated/Trace.h"

#include <chrono>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

namespace platform::simulated {

/// Returns the holders of combinations that a test has set, after some time of the simulated clock.
///
/// Trace: "find holders of 1".
class ShortcutHolders final : public platform::ShortcutHolders {
public:
    /// The delay of a reply.
    static constexpr Duration delay = std::chrono::milliseconds(30);

    ShortcutHolders(Trace& trace, MainActor& mainActor)
        : trace(trace)
        , mainActor(mainActor) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override {
        trace.record("find holders of " + std::to_string(shortcuts.size()));
        auto search = std::make_unique<Search>();
        search->answer = mainActor.schedule(mainActor.now() + delay, {}, [this, shortcuts, reply = std::move(found)] {
            Answers answers;
            for (const corvid::Shortcut& shortcut : shortcuts) {
                const auto known = holders.find(shortcut);
                answers.push_back(known == holders.end() ? std::nullopt : std::optional(known->second));
            }
            reply(answers);
        });
        return search;
    }

    /// The held combinations and their holders.
    std::unordered_map<corvid::Shortcut, ShortcutHolder> holders;

private:
    struct Search final : HolderSearch {
        std::unique_ptr<ScheduledWork> answer;
    };

    Trace& trace;
    MainActor& mainActor;
};

} // namespace platform::simulated
