#include "Platform/KWin/GlobalAccel.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace platform::kwin {

namespace {

constexpr const char* componentPath = "/component/org_corvid_Tessel";

/// KGlobalAccel::SetPresent and NoAutoloading: it is in use, and the key given here counts.
constexpr std::uint32_t registerFlags = 2U | 4U;

/// The order of the texts, as in KGlobalAccel::actionIdFields.
int appendAction(sd_bus_message* message, const AccelAction& action) {
    return sd_bus_message_append(message, "as", 4, action.component.c_str(), action.action.c_str(),
                                 action.componentTitle.c_str(), action.actionTitle.c_str());
}

int appendKeys(sd_bus_message* message, const KeySequences& keys) {
    int result = sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "(ai)");
    for (const KeySequence& each : keys) {
        result = result < 0 ? result
                            : sd_bus_message_append(message, "(ai)", 4, each.at(0), each.at(1), each.at(2), each.at(3));
    }
    return result < 0 ? result : sd_bus_message_close_container(message);
}

/// A call that starts no service; null without a bus.
linux::OwnedMessage newAccelCall(sd_bus* bus, const char* path, const char* interface, const char* method) {
    sd_bus_message* raw = nullptr;
    if (bus == nullptr || sd_bus_message_new_method_call(bus, &raw, GlobalAccel::name, path, interface, method) < 0) {
        return nullptr;
    }
    sd_bus_message_set_auto_start(raw, 0);
    return linux::OwnedMessage(raw);
}

} // namespace

linux::OwnedMessage newRecipientCall(sd_bus* bus, std::int32_t key) {
    linux::OwnedMessage message = newAccelCall(bus, GlobalAccel::path, GlobalAccel::interface, "actionList");
    return message && sd_bus_message_append(message.get(), "(ai)", 4, key, 0, 0, 0) >= 0 ? std::move(message) : nullptr;
}

std::optional<AccelAction> readAction(sd_bus_message* message) {
    const char* component = nullptr;
    const char* action = nullptr;
    const char* componentTitle = nullptr;
    const char* actionTitle = nullptr;
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "s") <= 0 ||
        sd_bus_message_read(message, "ssss", &component, &action, &componentTitle, &actionTitle) <= 0) {
        return std::nullopt;
    }
    AccelAction named{
        .component = component, .action = action, .componentTitle = componentTitle, .actionTitle = actionTitle};
    for (const char* more = nullptr; sd_bus_message_read(message, "s", &more) > 0;) {
    }
    sd_bus_message_exit_container(message);
    return named.component.empty() ? std::nullopt : std::optional(std::move(named));
}

KeySequences readKeys(sd_bus_message* message) {
    KeySequences keys;
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "(ai)") <= 0) {
        return keys;
    }
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_STRUCT, "ai") > 0 &&
           sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "i") > 0) {
        KeySequence sequence{};
        std::int32_t key = 0;
        for (std::size_t place = 0; sd_bus_message_read(message, "i", &key) > 0; ++place) {
            if (place < sequence.size()) {
                sequence.at(place) = key;
            }
        }
        keys.push_back(sequence);
        sd_bus_message_exit_container(message);
        sd_bus_message_exit_container(message);
    }
    sd_bus_message_exit_container(message);
    return keys;
}

void GlobalAccel::withoutCounting(const std::function<void()>& work) {
    const Instant begin = mainLoop.now();
    work();
    if (turnEnd) {
        *turnEnd += mainLoop.now() - begin;
    }
}

bool GlobalAccel::isOlderThanOwnChange(sd_bus_message* signal) const {
    // Messages of one sender arrive in the order of their numbers, and a change is signalled before it is answered.
    const char* sender = sd_bus_message_get_sender(signal);
    std::uint64_t number = 0;
    return sender != nullptr && changedBy == sender && sd_bus_message_get_cookie(signal, &number) >= 0 &&
           number < changedAt;
}

GlobalAccel::Answer<bool> GlobalAccel::registerKey(const AccelAction& action, std::int32_t key) {
    if (!answerTo(about(action, "doRegister"))) {
        return std::unexpected(NoAnswer{});
    }
    const linux::OwnedMessage wish = about(action, "setShortcutKeys");
    const bool isWhole = wish && appendKeys(wish.get(), {sequenceOf(key)}) >= 0 &&
                         sd_bus_message_append(wish.get(), "u", registerFlags) >= 0;
    const linux::OwnedMessage granted = isWhole ? answerTo(wish) : nullptr;
    if (!granted) {
        return std::unexpected(NoAnswer{});
    }
    // Up to Plasma 6.5, a key that another program has is left out of what was granted.
    const KeySequences keys = readKeys(granted.get());
    return !keys.empty() && keys.front().front() == key;
}

void GlobalAccel::unregister(const std::string& action) {
    const linux::OwnedMessage message = newAccelCall(bus, path, interface, "unregister");
    constexpr std::uint64_t usualTimeout = 0;
    if (message && sd_bus_message_append(message.get(), "ss", ownComponent, action.c_str()) >= 0) {
        sd_bus_call_async(bus, nullptr, message.get(), &linux::ignoreReply, nullptr, usualTimeout);
    }
}

std::vector<std::string> GlobalAccel::ownActions() {
    std::vector<std::string> actions;
    const linux::OwnedMessage names = answerTo(newAccelCall(bus, componentPath, componentInterface, "shortcutNames"));
    if (!names || sd_bus_message_enter_container(names.get(), SD_BUS_TYPE_ARRAY, "s") <= 0) {
        return actions;
    }
    for (const char* action = nullptr; sd_bus_message_read(names.get(), "s", &action) > 0;) {
        actions.emplace_back(action);
    }
    return actions;
}

void GlobalAccel::cleanUp() {
    static_cast<void>(answerTo(newAccelCall(bus, componentPath, componentInterface, "cleanUp")));
}

GlobalAccel::Answer<std::optional<AccelAction>> GlobalAccel::recipient(std::int32_t key) {
    const linux::OwnedMessage answer = answerTo(newRecipientCall(bus, key));
    if (!answer) {
        return std::unexpected(NoAnswer{});
    }
    return readAction(answer.get());
}

GlobalAccel::Answer<KeySequences> GlobalAccel::keysOf(const AccelAction& action) {
    const linux::OwnedMessage answer = answerTo(about(action, "shortcutKeys"));
    if (!answer) {
        return std::unexpected(NoAnswer{});
    }
    return readKeys(answer.get());
}

GlobalAccel::Answer<void> GlobalAccel::setKeysOf(const AccelAction& action, const KeySequences& keys) {
    const linux::OwnedMessage wish = about(action, "setForeignShortcutKeys");
    const linux::OwnedMessage answer = wish && appendKeys(wish.get(), keys) >= 0 ? answerTo(wish) : nullptr;
    if (!answer) {
        return std::unexpected(NoAnswer{});
    }
    const char* sender = sd_bus_message_get_sender(answer.get());
    changedBy = sender == nullptr ? "" : sender;
    sd_bus_message_get_cookie(answer.get(), &changedAt);
    return {};
}

linux::OwnedMessage GlobalAccel::about(const AccelAction& action, const char* method) const {
    linux::OwnedMessage question = newAccelCall(bus, path, interface, method);
    return question && appendAction(question.get(), action) >= 0 ? std::move(question) : nullptr;
}

linux::OwnedMessage GlobalAccel::answerTo(const linux::OwnedMessage& question) {
    const auto left = std::chrono::ceil<std::chrono::microseconds>(patience());
    if (!question) {
        return nullptr;
    }
    sd_bus_message* reply = nullptr;
    const int result = left.count() > 0
                           ? sd_bus_call(bus, question.get(), static_cast<std::uint64_t>(left.count()), nullptr, &reply)
                           : -ETIMEDOUT;
    // A server that is too busy to answer, as at login, has refused nothing.
    if (result == -ETIMEDOUT) {
        timedOut();
    }
    return result < 0 ? nullptr : linux::OwnedMessage(reply);
}

Duration GlobalAccel::patience() {
    if (!turnEnd) {
        turnEnd = mainLoop.now() + turnTime;
        mainLoop.post([accel = std::weak_ptr(self)] {
            if (const auto alive = accel.lock()) {
                (*alive)->turnEnd.reset();
            }
        });
    }
    return *turnEnd - mainLoop.now();
}

} // namespace platform::kwin
