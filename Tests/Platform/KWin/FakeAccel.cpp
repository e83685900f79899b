#include "FakeAccel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

using platform::kwin::GlobalAccel;
using platform::kwin::KeySequence;
using platform::kwin::readAction;
using platform::kwin::readKeys;
using platform::linux::OwnedMessage;

namespace {

void append(sd_bus_message* message, const FakeAccel::Sequences& keys) {
    sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "(ai)");
    for (const KeySequence& each : keys) {
        sd_bus_message_append(message, "(ai)", 4, each[0], each[1], each[2], each[3]);
    }
    sd_bus_message_close_container(message);
}

OwnedMessage replyTo(sd_bus_message* call) {
    sd_bus_message* raw = nullptr;
    sd_bus_message_new_method_return(call, &raw);
    return OwnedMessage(raw);
}

bool isSameAction(const FakeAccel::Action& one, const FakeAccel::Action& other) {
    return one.component == other.component && one.action == other.action;
}

} // namespace

void FakeAccel::holdSequences(const Action& action, const Sequences& keys) {
    const std::scoped_lock lock(mutex);
    if (Held* known = find(action)) {
        known->keys = keys;
    } else {
        all.push_back({action, keys});
    }
}

void FakeAccel::hold(const Action& action, const std::vector<std::int32_t>& keys) {
    holdSequences(action, alone(keys));
}

FakeAccel::Sequences FakeAccel::keysOf(const Action& action) {
    const std::scoped_lock lock(mutex);
    const Held* known = find(action);
    return known == nullptr ? Sequences{} : known->keys;
}

std::string FakeAccel::recipient(std::int32_t key) {
    const std::scoped_lock lock(mutex);
    const Held* owner = recipientOf(platform::kwin::sequenceOf(key));
    return owner == nullptr ? "" : owner->action.component;
}

std::map<std::string, int> FakeAccel::ownKeys() {
    const std::scoped_lock lock(mutex);
    std::map<std::string, int> keys;
    for (const Held& each : all) {
        if (each.action.component == GlobalAccel::ownComponent) {
            keys[each.action.action] = each.keys.empty() ? 0 : each.keys.front().front();
        }
    }
    return keys;
}

void FakeAccel::forgetOthers() {
    const std::scoped_lock lock(mutex);
    std::erase_if(all, [](const Held& each) { return each.action.component != GlobalAccel::ownComponent; });
}

int FakeAccel::answer(sd_bus_message* call, const std::function<void(std::string)>& note) {
    const auto is = [&](const char* method) {
        return sd_bus_message_is_method_call(call, GlobalAccel::interface, method) > 0;
    };
    const auto isOfComponent = [&](const char* method) {
        return sd_bus_message_is_method_call(call, GlobalAccel::componentInterface, method) > 0;
    };
    if (callsLeft-- <= 0) {
        callsLeft = 0;
        return sd_bus_reply_method_errorf(call, "org.example.Killed", "The caller is dead");
    }
    const std::scoped_lock lock(mutex);
    if (is("doRegister")) {
        const auto action = readAction(call);
        if (action && find(*action) == nullptr) {
            all.push_back({*action, {}});
        }
        return sd_bus_reply_method_return(call, nullptr);
    }
    if (is("setShortcutKeys")) {
        return setKeys(call, note);
    }
    if (is("setForeignShortcutKeys")) {
        return setForeignKeys(call);
    }
    if (is("actionList")) {
        return sendRecipient(call);
    }
    if (is("shortcutKeys")) {
        return sendKeys(call);
    }
    if (is("unregister")) {
        return unregister(call);
    }
    if (isOfComponent("shortcutNames")) {
        return sendNames(call);
    }
    return isOfComponent("cleanUp") ? sd_bus_reply_method_return(call, "b", 1) : 0;
}

FakeAccel::Held* FakeAccel::find(const Action& action) {
    const auto found = std::ranges::find_if(all, [&](const Held& each) { return isSameAction(each.action, action); });
    return found == all.end() ? nullptr : &*found;
}

const FakeAccel::Held* FakeAccel::recipientOf(const KeySequence& sequence) const {
    const auto found = std::ranges::find_if(
        all, [&](const Held& each) { return std::ranges::find(each.keys, sequence) != each.keys.end(); });
    return found == all.end() ? nullptr : &*found;
}

bool FakeAccel::isInARow(const KeySequence& sequence) const {
    const auto hasIt = [&](const KeySequence& each) {
        return each[1] != 0 && std::ranges::find(each, sequence.front()) != each.end();
    };
    return sequence[1] == 0 &&
           std::ranges::any_of(all, [&](const Held& each) { return std::ranges::any_of(each.keys, hasIt); });
}

FakeAccel::Sequences FakeAccel::set(Held& held, const Sequences& keys) {
    held.keys.clear();
    for (const KeySequence& each : keys) {
        // The place of a key that is not granted stays, empty (kglobalaccel 5.103).
        const bool isGranted = sharesKeys || (recipientOf(each) == nullptr && !isInARow(each));
        held.keys.push_back(isGranted ? each : KeySequence{});
    }
    if (sharesKeys) {
        // Plasma 6.7's KGlobalAccel does not keep the order either (6.7.4).
        std::ranges::sort(held.keys);
    }
    return held.keys;
}

int FakeAccel::setKeys(sd_bus_message* call, const std::function<void(std::string)>& note) {
    EXPECT_STREQ(sd_bus_message_get_signature(call, 1), "asa(ai)u");
    const auto action = readAction(call);
    const Sequences keys = readKeys(call);
    Held* known = action ? find(*action) : nullptr;
    if (known == nullptr) {
        ADD_FAILURE() << "an action that was not made known";
        return -EINVAL;
    }
    note("register " + action->component + "|" + action->action + "|" + action->componentTitle + "|" +
         action->actionTitle);
    const OwnedMessage reply = replyTo(call);
    append(reply.get(), set(*known, keys));
    return sd_bus_message_send(reply.get());
}

int FakeAccel::setForeignKeys(sd_bus_message* call) {
    EXPECT_STREQ(sd_bus_message_get_signature(call, 1), "asa(ai)");
    const auto action = readAction(call);
    const Sequences keys = readKeys(call);
    beforeForeignChange();
    if (keepsForeignKeys) {
        return sd_bus_reply_method_return(call, nullptr);
    }
    if (Held* known = action ? find(*action) : nullptr) {
        signalChange(sd_bus_message_get_bus(call), known->action, set(*known, keys));
    }
    return sd_bus_reply_method_return(call, nullptr);
}

int FakeAccel::sendRecipient(sd_bus_message* call) {
    EXPECT_STREQ(sd_bus_message_get_signature(call, 1), "(ai)");
    KeySequence sequence{};
    sd_bus_message_enter_container(call, SD_BUS_TYPE_STRUCT, "ai");
    sd_bus_message_enter_container(call, SD_BUS_TYPE_ARRAY, "i");
    for (std::int32_t& key : sequence) {
        sd_bus_message_read(call, "i", &key);
    }
    const Held* owner = recipientOf(sequence);
    if (owner == nullptr) {
        return sd_bus_reply_method_return(call, "as", 0);
    }
    const Action& action = owner->action;
    return sd_bus_reply_method_return(call, "as", 4, action.component.c_str(), action.action.c_str(),
                                      action.componentTitle.c_str(), action.actionTitle.c_str());
}

int FakeAccel::sendKeys(sd_bus_message* call) {
    const auto action = readAction(call);
    const Held* known = action ? find(*action) : nullptr;
    const OwnedMessage reply = replyTo(call);
    append(reply.get(), known == nullptr ? Sequences{} : known->keys);
    return sd_bus_message_send(reply.get());
}

int FakeAccel::sendNames(sd_bus_message* call) {
    const OwnedMessage reply = replyTo(call);
    sd_bus_message_open_container(reply.get(), SD_BUS_TYPE_ARRAY, "s");
    for (const Held& each : all) {
        if (each.action.component == GlobalAccel::ownComponent) {
            sd_bus_message_append(reply.get(), "s", each.action.action.c_str());
        }
    }
    sd_bus_message_close_container(reply.get());
    return sd_bus_message_send(reply.get());
}

int FakeAccel::unregister(sd_bus_message* call) {
    const char* component = nullptr;
    const char* action = nullptr;
    EXPECT_GT(sd_bus_message_read(call, "ss", &component, &action), 0);
    const auto erased = std::erase_if(
        all, [&](const Held& each) { return each.action.component == component && each.action.action == action; });
    return sd_bus_reply_method_return(call, "b", static_cast<int>(erased > 0));
}

void signalChange(sd_bus* bus, const FakeAccel::Action& action, const FakeAccel::Sequences& keys) {
    sd_bus_message* raw = nullptr;
    sd_bus_message_new_signal(bus, &raw, GlobalAccel::path, GlobalAccel::interface, "yourShortcutsChanged");
    const OwnedMessage signal(raw);
    sd_bus_message_append(raw, "as", 4, action.component.c_str(), action.action.c_str(), action.componentTitle.c_str(),
                          action.actionTitle.c_str());
    append(raw, keys);
    sd_bus_send(bus, raw, nullptr);
}

FakeAccel::Sequences alone(const std::vector<std::int32_t>& keys) {
    FakeAccel::Sequences sequences;
    std::ranges::transform(keys, std::back_inserter(sequences), platform::kwin::sequenceOf);
    return sequences;
}
