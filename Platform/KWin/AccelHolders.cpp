#include "Platform/KWin/AccelHolders.h"

#include "Platform/KWin/QtKeys.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace platform::kwin {

namespace {

/// Empty for this program's own action.
std::optional<ShortcutHolder> holderOf(const AccelAction& action) {
    if (action.component == GlobalAccel::ownComponent) {
        return std::nullopt;
    }
    return ShortcutHolder{.heldBy = action.componentTitle.empty() ? action.component : action.componentTitle,
                          .purpose = action.actionTitle.empty() ? action.action : action.actionTitle};
}

} // namespace

class AccelHolders::Search final : public HolderSearch {
public:
    Search(linux::MainLoop& mainLoop, Found found)
        : mainLoop(mainLoop)
        , found(std::move(found)) {}

    /// Whether the holder is known or requested.
    [[nodiscard]] bool ask(sd_bus* connection, const std::vector<corvid::Shortcut>& shortcuts, const Lender& lenderOf) {
        answers.resize(shortcuts.size());
        questions.reserve(shortcuts.size());
        for (std::size_t place = 0; place < shortcuts.size(); ++place) {
            const auto key = qtKey(shortcuts[place].keyCode, shortcuts[place].modifiers);
            if (const AccelAction* known = key && lenderOf ? lenderOf(*key) : nullptr) {
                answers[place] = holderOf(*known);
            } else if (key) {
                ask(connection, place, *key);
            }
        }
        const bool isKnown = std::ranges::any_of(answers, [](const auto& answer) { return answer.has_value(); });
        if (unanswered == 0 && isKnown) {
            finish();
        }
        return unanswered > 0 || isKnown;
    }

private:
    struct Question {
        Search& search;
        std::size_t place = 0;
        linux::OwnedSlot slot;
    };

    void ask(sd_bus* connection, std::size_t place, std::int32_t key) {
        const linux::OwnedMessage message = newRecipientCall(connection, key);
        if (!message) {
            return;
        }
        auto& question =
            questions.emplace_back(std::make_unique<Question>(Question{.search = *this, .place = place, .slot = {}}));
        sd_bus_slot* slot = nullptr;
        if (sd_bus_call_async(connection, &slot, message.get(), &Search::answered, question.get(),
                              static_cast<std::uint64_t>(std::chrono::microseconds(patience).count())) >= 0) {
            question->slot.reset(slot);
            ++unanswered;
        }
    }

    static int answered(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        const Question& question = *static_cast<Question*>(data);
        Search& search = question.search;
        if (sd_bus_message_is_method_error(reply, nullptr) == 0) {
            search.answers[question.place] = readAction(reply).and_then(holderOf);
        }
        if (--search.unanswered == 0) {
            search.finish();
        }
        return 0;
    }

    void finish() {
        // Reported in a turn of its own, because the bus is also read while other code waits for it.
        end = mainLoop.schedule(mainLoop.now(), {}, [this] { sendReply(); });
    }

    void sendReply() {
        // The callback may drop this.
        const Found reply = std::move(found);
        const Answers given = std::move(answers);
        reply(given);
    }

    linux::MainLoop& mainLoop;
    Found found;
    Answers answers;
    std::vector<std::unique_ptr<Question>> questions;
    std::size_t unanswered = 0;
    std::unique_ptr<ScheduledWork> end;
};

AccelHolders::AccelHolders(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, Lender lender)
    : Listener(sessionBus)
    , mainLoop(mainLoop)
    , lender(std::move(lender)) {
}

std::unique_ptr<HolderSearch> AccelHolders::find(const std::vector<corvid::Shortcut>& shortcuts, Found found) {
    auto search = std::make_unique<Search>(mainLoop, std::move(found));
    return bus != nullptr && search->ask(bus, shortcuts, lender) ? std::move(search) : nullptr;
}

} // namespace platform::kwin
