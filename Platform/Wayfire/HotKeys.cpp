#include "Platform/Wayfire/HotKeys.h"

#include <algorithm>
#include <ranges>
#include <string>
#include <utility>

namespace platform::wayfire {

namespace {

Request optionRequest(const std::string& path) {
    return {.method = "wayfire/get-config-option", .data = {{"option", path}}};
}

/// A number of Wayfire's is an address, so it may need all bits.
std::optional<std::uint64_t> bindingIn(const Json& message) {
    const Json* number = compositor::member(message, "binding-id");
    return number != nullptr && number->is_number_unsigned() ? std::optional(number->get<std::uint64_t>())
                                                             : std::nullopt;
}

/// Whether the word is one of the list's, which has blanks between them.
bool hasWord(std::string_view list, std::string_view word) {
    return std::ranges::any_of(std::views::split(list, ' '),
                               [&](const auto part) { return std::string_view(part.begin(), part.end()) == word; });
}

} // namespace

HotKeys::HotKeys(Session& session, MetadataTexts metadata)
    : session(session)
    , metadata(std::move(metadata)) {
    session.follow(*this);
}

HotKeys::~HotKeys() {
    for (auto& [reference, registered] : registrations) {
        unbind(registered);
    }
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    auto keys = KeyPress::of(keyCode, modifiers);
    if (!keys) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    return registrations.add({.keys = *std::move(keys), .name = name, .binding = std::nullopt}, &Registered::keys,
                             [this](std::uint64_t /*number*/, Registered& registered) { return bind(registered); });
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    if (auto registered = registrations.remove(reference)) {
        unbind(*registered);
    }
}

std::optional<LoanObstacle> HotKeys::loanObstacle(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const auto keys = KeyPress::of(keyCode, modifiers);
    return keys ? refused.obstacle(*keys) : std::nullopt;
}

std::optional<ShortcutHolder> HotKeys::holderOf(const corvid::Shortcut& shortcut) const {
    const auto keys = KeyPress::of(shortcut.keyCode, shortcut.modifiers);
    if (!bound || !keys) {
        return std::nullopt;
    }
    const auto found = bound->find(*keys);
    return found == bound->end() ? std::nullopt : std::optional(found->second);
}

void HotKeys::configurationChanged() {
    const auto former = std::exchange(bound, std::nullopt);
    const ConfiguredKeys* present = session.isOpen() ? configured() : nullptr;
    if (present == nullptr || !former) {
        return;
    }
    const auto isLost = [&](const auto& entry) { return present->contains(entry.second.keys); };
    const auto isFreed = [&](const auto& entry) {
        return refused.obstacle(entry.first).has_value() && !present->contains(entry.first);
    };
    if (std::ranges::any_of(registrations, isLost) || std::ranges::any_of(*former, isFreed)) {
        reportLoss();
    }
}

void HotKeys::sessionOpened() {
    bool hasLost = false;
    for (auto& [reference, registered] : registrations) {
        hasLost = bind(registered) != noErr || hasLost;
    }
    if (hasLost) {
        reportLoss();
    }
}

void HotKeys::sessionClosed() {
    bound.reset();
    for (auto& [reference, registered] : registrations) {
        registered.binding.reset();
    }
}

void HotKeys::sessionReported(std::string_view event, const Json& content) {
    const auto binding = event == "command-binding" ? bindingIn(content) : std::nullopt;
    if (!binding) {
        return;
    }
    const auto found =
        std::ranges::find_if(registrations, [&](const auto& entry) { return entry.second.binding == binding; });
    if (found != registrations.end()) {
        reportPress(found->second.name);
    }
}

OSStatus HotKeys::bind(Registered& registered) {
    if (!session.isOpen()) {
        // Bound when the session opens.
        return noErr;
    }
    const ConfiguredKeys* present = configured();
    if (present == nullptr) {
        // Whether the configuration binds it is not known now, so registering has to be tried again.
        reportLoss();
        return eventHotKeyExistsErr;
    }
    if (present->contains(registered.keys)) {
        refused.refuse(registered.keys, LoanObstacle::notReleased);
        return eventHotKeyExistsErr;
    }
    refused.forget(registered.keys);
    const auto answer = session.ask(
        {.method = "command/register-binding", .data = {{"binding", registered.keys.text()}}}, session.deadline());
    if (!answer) {
        // The binding may be there, with a number that nobody knows: it ends with the connection. All are made anew.
        session.closeSoon();
        return noErr;
    }
    registered.binding = bindingIn(*answer);
    return registered.binding ? noErr : eventHotKeyInvalidErr;
}

void HotKeys::unbind(Registered& registered) {
    if (const auto binding = std::exchange(registered.binding, std::nullopt)) {
        static_cast<void>(session.ask({.method = "command/unregister-binding", .data = {{"binding-id", *binding}}},
                                      session.deadline()));
    }
}

const HotKeys::ConfiguredKeys* HotKeys::configured() {
    if (!bound) {
        bound = readConfiguration();
    }
    return bound ? &*bound : nullptr;
}

std::optional<HotKeys::ConfiguredKeys> HotKeys::readConfiguration() {
    const Instant deadline = session.deadline();
    const auto facts = session.askAll({{.method = "wayfire/configuration"}, optionRequest("core/plugins")}, deadline);
    if (facts.empty()) {
        return std::nullopt;
    }
    const std::string_view plugins = compositor::textOf(facts[1], "value");
    std::vector<BindingOption> options;
    std::vector<Request> requests;
    for (const std::string& text : metadata(std::string(compositor::textOf(facts[0], "plugin-xml-dir")))) {
        for (BindingOption& option : readMetadata(text)) {
            if (option.section == "core" || hasWord(plugins, option.section)) {
                requests.push_back(optionRequest(option.path()));
                options.push_back(std::move(option));
            }
        }
    }
    const auto answers = session.askAll(requests, deadline);
    if (answers.size() != options.size()) {
        return std::nullopt;
    }
    ConfiguredKeys keys;
    for (std::size_t place = 0; place < options.size(); ++place) {
        for (ConfiguredKey& each : configuredKeys(options[place], answers[place])) {
            keys.emplace(std::move(each.keys), std::move(each.holder));
        }
    }
    return keys;
}

} // namespace platform::wayfire
