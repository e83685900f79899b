#include "Platform/Sway/HotKeys.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace platform::sway {

namespace {

/// Words that a person finds in what sway logs.
constexpr std::string_view commandPrefix = "nop tessel ";

std::optional<std::uint64_t> referenceIn(std::string_view command) {
    if (!command.starts_with(commandPrefix)) {
        return std::nullopt;
    }
    const std::string_view digits = command.substr(commandPrefix.size());
    std::uint64_t reference = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), reference);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(reference) : std::nullopt;
}

/// Whether a mode can be named in a command.
bool isQuotable(std::string_view name) {
    return !name.empty() && name.find_first_of("\"\\\n") == std::string_view::npos;
}

} // namespace

HotKeys::HotKeys(Session& session, Includes includes)
    : session(session)
    , includes(std::move(includes)) {
    session.follow(*this);
}

HotKeys::~HotKeys() {
    for (const auto& [reference, registered] : registrations) {
        if (registered.isBound) {
            unbind(registered.combination);
        }
    }
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    const auto combination = HotKeyCombination::of(keyCode, modifiers);
    if (!combination) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    const bool isOurs =
        std::ranges::any_of(registrations, [&](const auto& entry) { return entry.second.combination == combination; });
    const OSStatus status = isOurs ? eventHotKeyExistsErr : bind(*combination, lastReference + 1);
    if (status != noErr) {
        return {.status = status, .reference = std::nullopt};
    }
    registrations.emplace(++lastReference,
                          Registered{.combination = *combination, .name = name, .isBound = session.isOpen()});
    return {.status = noErr, .reference = EventHotKeyRef{lastReference}};
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    const auto found = registrations.find(reference.value);
    if (found == registrations.end()) {
        return;
    }
    if (found->second.isBound) {
        unbind(found->second.combination);
    }
    registrations.erase(found);
}

const ConfiguredBinding* HotKeys::bindingThatHas(const corvid::Shortcut& shortcut) const {
    const auto combination = HotKeyCombination::of(shortcut.keyCode, shortcut.modifiers);
    return bound && combination ? bindingOf(*bound, *combination) : nullptr;
}

bool HotKeys::takeChange() {
    return std::exchange(hasChanged, false);
}

void HotKeys::sessionOpened() {
    renew();
}

void HotKeys::sessionClosed() {
    bound.reset();
    for (auto& [reference, registered] : registrations) {
        registered.isBound = false;
    }
}

void HotKeys::sessionTold(EventType type, const Json& content) {
    const std::string_view change = textOf(content, "change");
    if (type == EventType::binding && change == "run") {
        handlePress(content);
    } else if (type == EventType::workspace && change == "reload") {
        renew();
    }
}

void HotKeys::handlePress(const Json& content) {
    const Json* binding = member(content, "binding");
    const auto reference = binding == nullptr ? std::nullopt : referenceIn(textOf(*binding, "command"));
    const auto found = reference ? registrations.find(*reference) : registrations.end();
    if (found != registrations.end()) {
        tellOfPress(found->second.name);
    }
}

void HotKeys::renew() {
    bound.reset();
    for (auto& [reference, registered] : registrations) {
        registered.isBound = bind(registered.combination, reference) == noErr;
        hasChanged = hasChanged || !registered.isBound;
    }
    const ConfiguredBindings* present = session.isOpen() && !refused.empty() ? configured() : nullptr;
    hasChanged = hasChanged || (present != nullptr && std::ranges::any_of(refused, [&](const auto& entry) {
                                    return bindingOf(*present, entry.second) == nullptr;
                                }));
}

OSStatus HotKeys::bind(const HotKeyCombination& combination, std::uint64_t reference) {
    if (!session.isOpen()) {
        // Bound once there is somebody to do it.
        return noErr;
    }
    const ConfiguredBindings* present = configured();
    if (present == nullptr) {
        // Whose it is cannot be told now, and is to be asked again.
        hasChanged = true;
        return eventHotKeyExistsErr;
    }
    if (bindingOf(*present, combination) != nullptr) {
        refused.insert_or_assign(combination.text(), combination);
        return eventHotKeyExistsErr;
    }
    refused.erase(combination.text());
    return runInDefaultMode("bindcode --no-warn --no-repeat " + combination.text() + " " + std::string(commandPrefix) +
                            std::to_string(reference))
               ? noErr
               : eventHotKeyInvalidErr;
}

void HotKeys::unbind(const HotKeyCombination& combination) {
    static_cast<void>(runInDefaultMode("unbindcode " + combination.text()));
}

bool HotKeys::runInDefaultMode(const std::string& command) {
    const Instant deadline = session.deadline();
    const auto state = session.ask(MessageType::getBindingState, "", deadline);
    const std::string_view mode = state ? textOf(*state, "name") : std::string_view();
    const bool isElsewhere = isQuotable(mode) && mode != "default";
    const auto results = session.ask(
        MessageType::runCommand,
        isElsewhere ? "mode \"default\"; " + command + "; mode \"" + std::string(mode) + "\"" : command, deadline);
    // A compositor that is too busy to answer has refused nothing.
    const std::size_t place = isElsewhere ? 1 : 0;
    return !results || (results->is_array() && results->size() > place && isSet((*results)[place], "success"));
}

const ConfiguredBindings* HotKeys::configured() {
    if (!bound) {
        const Instant deadline = session.deadline();
        const auto version = session.ask(MessageType::getVersion, "", deadline);
        const auto configuration = session.ask(MessageType::getConfig, "", deadline);
        if (!configuration || textOf(*configuration, "config").data() == nullptr) {
            return nullptr;
        }
        const ConfigurationFile main{
            .path = std::string(version ? textOf(*version, "loaded_config_file_name") : std::string_view()),
            .text = std::string(textOf(*configuration, "config")),
        };
        bound = configuredBindings(main, includes);
    }
    return &*bound;
}

} // namespace platform::sway
