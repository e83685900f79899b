#include "Platform/ShellCore/ShellHolders.h"

#include "CorvidKitCore/Keys.h"
#include "Platform/Compositor/Json.h"
#include "Platform/Linux/Holders/Accelerator.h"
#include "Platform/Linux/Holders/CommonPurpose.h"

#include <cstdint>
#include <string>
#include <utility>

namespace platform::shellcore {

namespace {

using compositor::Json;

std::vector<std::string> textsIn(const Json& object, const char* name) {
    std::vector<std::string> texts;
    const Json* list = compositor::member(object, name);
    for (const Json& each : list != nullptr && list->is_array() ? *list : Json::array()) {
        if (each.is_string()) {
            texts.push_back(each.get<std::string>());
        }
    }
    return texts;
}

int appendCombinations(sd_bus_message* message, const std::vector<corvid::Shortcut>& shortcuts) {
    int result = sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "(uu)");
    for (const corvid::Shortcut& shortcut : shortcuts) {
        // No key has the code zero. A shortcut without a key keeps its place in the list.
        const corvid::Key* key = corvid::keyOf(shortcut.keyCode);
        if (result >= 0) {
            result = sd_bus_message_append(message, "(uu)", key != nullptr ? key->keymapCode() : 0U,
                                           corvid::coreModifiers(shortcut.modifiers));
        }
    }
    return result < 0 ? result : sd_bus_message_close_container(message);
}

} // namespace

class ShellHolders::Search final : public HolderSearch {
public:
    Search(ShellHolders& holders, const std::vector<corvid::Shortcut>& shortcuts, Found found)
        : holders(holders)
        , shortcuts(shortcuts)
        , found(std::move(found)) {}

    void begin() {
        const linux::OwnedMessage message = holders.link.isOpen() ? holders.link.newCall("Holders") : nullptr;
        sd_bus_slot* slot = nullptr;
        const bool isAsked =
            message != nullptr && appendCombinations(message.get(), shortcuts) >= 0 &&
            sd_bus_call_async(holders.link.connection(), &slot, message.get(), &Search::answered, this,
                              static_cast<std::uint64_t>(std::chrono::microseconds(patience).count())) >= 0;
        question.reset(slot);
        if (!isAsked) {
            goOnWith({});
        }
    }

private:
    static int answered(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        auto& self = *static_cast<Search*>(data);
        const char* text = nullptr;
        const bool isAnswer =
            sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read(reply, "s", &text) > 0;
        self.goOnWith(isAnswer ? text : "");
        return 0;
    }

    /// In a turn of its own, because the connection is also read while other code waits for it.
    void goOnWith(std::string answer) {
        next =
            holders.mainLoop.schedule(holders.mainLoop.now(), {}, [this, answer = std::move(answer)] { take(answer); });
    }

    void take(const std::string& answer) {
        said = read(answer, shortcuts, holders.shell);
        std::vector<corvid::Shortcut> unknown;
        unknown.reserve(said.unknown.size());
        for (const std::size_t place : said.unknown) {
            unknown.push_back(shortcuts[place]);
        }
        inSettings = unknown.empty() ? nullptr : holders.settings.find(unknown, [this](const Answers& more) {
            for (std::size_t count = 0; count < more.size(); ++count) {
                said.answers[said.unknown[count]] = more[count];
            }
            sendReply();
        });
        if (!inSettings) {
            sendReply();
        }
    }

    void sendReply() {
        // The callback may drop this.
        const Found reply = std::move(found);
        const Answers given = std::move(said.answers);
        reply(given);
    }

    ShellHolders& holders;
    std::vector<corvid::Shortcut> shortcuts;
    Found found;
    Said said;
    linux::OwnedSlot question;
    std::unique_ptr<ScheduledWork> next;
    std::unique_ptr<HolderSearch> inSettings;
};

ShellHolders::Said ShellHolders::read(std::string_view json, const std::vector<corvid::Shortcut>& shortcuts,
                                      const Shell& shell) {
    const std::size_t count = shortcuts.size();
    const std::optional<Json> list = compositor::parsedJson(json);
    const bool isWhole = list && list->is_array() && list->size() == count;
    Said said{.answers = Answers(count), .unknown = {}};
    for (std::size_t place = 0; place < count; ++place) {
        if (isWhole && (*list)[place].is_null()) {
            continue;
        }
        const std::string binding = isWhole ? compositor::nameOf((*list)[place], "binding") : std::string();
        if (binding.empty()) {
            said.unknown.push_back(place);
            continue;
        }
        said.answers[place] = ShortcutHolder{.heldBy = shell.name,
                                             .purpose = compositor::nameOf((*list)[place], "summary"),
                                             .otherKeys = linux::otherKeys(textsIn((*list)[place], "keys"), shortcuts)};
        if (const auto common = linux::commonPurpose(shell.settings.schemas.front(), binding)) {
            said.answers[place]->purpose = *common;
        }
    }
    return said;
}

std::unique_ptr<HolderSearch> ShellHolders::find(const std::vector<corvid::Shortcut>& shortcuts, Found found) {
    auto search = std::make_unique<Search>(*this, shortcuts, std::move(found));
    search->begin();
    return search;
}

} // namespace platform::shellcore
