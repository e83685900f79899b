#include "Platform/KWin/AccelHolders.h"

#include "Platform/KWin/QtKeys.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace platform::kwin {

namespace {

constexpr std::string_view ownComponent = "org.corvid.Tessel";

/// The first in the list of who has a key that is not this program: a(ssssssaiai), each with the action's name, its
/// name for people, the same two of the program and of the context, and keys (kglobalaccel, KGlobalShortcutInfo).
std::optional<ShortcutHolder> holderIn(sd_bus_message* reply) {
    if (sd_bus_message_enter_container(reply, SD_BUS_TYPE_ARRAY, "(ssssssaiai)") <= 0) {
        return std::nullopt;
    }
    while (sd_bus_message_enter_container(reply, SD_BUS_TYPE_STRUCT, "ssssssaiai") > 0) {
        const char* action = nullptr;
        const char* actionTitle = nullptr;
        const char* component = nullptr;
        const char* componentTitle = nullptr;
        if (sd_bus_message_read(reply, "ssss", &action, &actionTitle, &component, &componentTitle) <= 0) {
            return std::nullopt;
        }
        if (component != ownComponent && *component != '\0') {
            return ShortcutHolder{.heldBy = *componentTitle == '\0' ? component : componentTitle,
                                  .purpose = std::string(*actionTitle == '\0' ? action : actionTitle)};
        }
        if (sd_bus_message_skip(reply, "ssaiai") < 0 || sd_bus_message_exit_container(reply) < 0) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace

class AccelHolders::Search final : public HolderSearch {
public:
    Search(linux::MainLoop& mainLoop, Found found)
        : mainLoop(mainLoop)
        , found(std::move(found)) {}

    /// Whether anybody could be asked at all.
    [[nodiscard]] bool ask(sd_bus* connection, const std::vector<corvid::Shortcut>& shortcuts) {
        answers.resize(shortcuts.size());
        questions.reserve(shortcuts.size());
        for (std::size_t place = 0; place < shortcuts.size(); ++place) {
            if (const auto key = qtKey(shortcuts[place].keyCode, shortcuts[place].modifiers)) {
                ask(connection, place, *key);
            }
        }
        return unanswered > 0;
    }

private:
    struct Question {
        Search& search;
        std::size_t place = 0;
        linux::OwnedSlot slot;
    };

    void ask(sd_bus* connection, std::size_t place, std::int32_t key) {
        sd_bus_message* raw = nullptr;
        if (sd_bus_message_new_method_call(connection, &raw, "org.kde.kglobalaccel", "/kglobalaccel",
                                           "org.kde.KGlobalAccel", "getGlobalShortcutsByKey") < 0) {
            return;
        }
        const linux::OwnedMessage message(raw);
        // A service that does not run holds no key, so this starts none.
        sd_bus_message_set_auto_start(raw, 0);
        auto& question =
            questions.emplace_back(std::make_unique<Question>(Question{.search = *this, .place = place, .slot = {}}));
        sd_bus_slot* slot = nullptr;
        if (sd_bus_message_append(raw, "i", key) >= 0 &&
            sd_bus_call_async(connection, &slot, raw, &Search::answered, question.get(),
                              static_cast<std::uint64_t>(std::chrono::microseconds(patience).count())) >= 0) {
            question->slot.reset(slot);
            ++unanswered;
        }
    }

    static int answered(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        const Question& question = *static_cast<Question*>(data);
        Search& search = question.search;
        if (sd_bus_message_is_method_error(reply, nullptr) == 0) {
            search.answers[question.place] = holderIn(reply);
        }
        if (--search.unanswered == 0) {
            // Told in a turn of its own: the bus is also read while something else waits for it.
            search.end = search.mainLoop.schedule(search.mainLoop.now(), {}, [&search] { search.tell(); });
        }
        return 0;
    }

    void tell() {
        // The callback may drop this.
        const Found told = std::move(found);
        const Answers given = std::move(answers);
        told(given);
    }

    linux::MainLoop& mainLoop;
    Found found;
    Answers answers;
    std::vector<std::unique_ptr<Question>> questions;
    std::size_t unanswered = 0;
    std::unique_ptr<ScheduledWork> end;
};

AccelHolders::AccelHolders(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus)
    : Listener(sessionBus)
    , mainLoop(mainLoop) {
}

std::unique_ptr<HolderSearch> AccelHolders::find(const std::vector<corvid::Shortcut>& shortcuts, Found found) {
    auto search = std::make_unique<Search>(mainLoop, std::move(found));
    return bus != nullptr && search->ask(bus, shortcuts) ? std::move(search) : nullptr;
}

} // namespace platform::kwin
