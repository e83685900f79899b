#include "Platform/Sway/HotKeys.h"

#include "Platform/I3Ipc/LineHolder.h"
#include "Platform/Linux/Files/BaseFolders.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <utility>

namespace platform::sway {

namespace {

using i3ipc::ConfigurationFile;
using i3ipc::ConfiguredBindings;
using i3ipc::configuredBindings;
using i3ipc::EventType;
using i3ipc::HotKeyCombination;
using i3ipc::Includes;
using i3ipc::isSet;
using i3ipc::Json;
using i3ipc::KeyUse;
using i3ipc::member;
using i3ipc::MessageType;
using i3ipc::textOf;

/// Words that a person finds in what sway logs.
constexpr std::string_view commandPrefix = "nop tessel ";
/// The command of such a binding when the keys are released. It is no press.
constexpr std::string_view releaseCommand = "nop tessel released";

std::optional<std::uint64_t> referenceIn(std::string_view command) {
    if (!command.starts_with(commandPrefix)) {
        return std::nullopt;
    }
    const std::string_view digits = command.substr(commandPrefix.size());
    std::uint64_t reference = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), reference);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(reference) : std::nullopt;
}

bool isLendable(const KeyUse& use) {
    return use.line != nullptr && use.particular == nullptr;
}

std::string joined(const std::vector<std::string>& commands) {
    std::string list;
    for (const std::string& command : commands) {
        list += (list.empty() ? "" : "; ") + command;
    }
    return list;
}

/// Whether a mode can be named in a command.
bool isQuotable(std::string_view name) {
    return !name.empty() && name.find_first_of("\"\\\n") == std::string_view::npos;
}

} // namespace

HotKeys::HotKeys(Session& session, Includes includes, Leave leave)
    : session(session)
    , includes(std::move(includes))
    , leave(std::move(leave)) {
    session.follow(*this);
}

HotKeys::~HotKeys() {
    for (const auto& [reference, registered] : registrations) {
        unbind(registered);
    }
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    const auto combination = HotKeyCombination::of(keyCode, modifiers);
    if (!combination) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    const Registration registration = registrations.add(
        {.combination = *combination, .name = name, .bindings = {}, .isBorrowed = false}, &Registered::combination,
        [this](std::uint64_t number, Registered& registered) { return bind(number, registered); });
    if (!registration.reference && loan(keyCode, modifiers) == HotKeyLoan::possible) {
        // A program that was killed has left its borrowed keys.
        unbind(bindingsOver(*combination, true));
    }
    return registration;
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    if (const auto registered = registrations.remove(reference)) {
        unbind(*registered);
    }
}

HotKeyLoan HotKeys::loan(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const auto combination = HotKeyCombination::of(keyCode, modifiers);
    const bool isMade = std::ranges::any_of(registrations, [&](const auto& entry) {
        return entry.second.combination == combination && entry.second.isBorrowed;
    });
    if (isMade) {
        return HotKeyLoan::made;
    }
    const auto found = combination ? refused.find(combination->text()) : refused.end();
    return found != refused.end() && found->second.isLendable ? HotKeyLoan::possible : HotKeyLoan::none;
}

std::optional<LoanObstacle> HotKeys::loanObstacle(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const auto combination = HotKeyCombination::of(keyCode, modifiers);
    const auto found = combination ? refused.find(combination->text()) : refused.end();
    return found != refused.end() && !found->second.isLendable ? std::optional(LoanObstacle::particularLine)
                                                               : std::nullopt;
}

std::optional<ShortcutHolder> HotKeys::holderOf(const corvid::Shortcut& shortcut) const {
    const auto combination = HotKeyCombination::of(shortcut.keyCode, shortcut.modifiers);
    const KeyUse use = bound && combination ? i3ipc::useOf(*bound, *combination) : KeyUse{};
    if (use.line == nullptr) {
        return std::nullopt;
    }
    const std::string home = linux::environmentVariable("HOME").value_or("");
    ShortcutHolder holder = i3ipc::lineHolder("sway", use.particular ? *use.particular : *use.line, home);
    if (use.particular != nullptr) {
        // Its layout or keyboard is the reason why it is not lent.
        holder.purpose = use.particular->definition;
    }
    return holder;
}

void HotKeys::sessionOpened() {
    renew();
}

void HotKeys::sessionClosed() {
    bound.reset();
    for (auto& [reference, registered] : registrations) {
        registered.bindings.clear();
    }
}

void HotKeys::sessionReported(EventType type, const Json& content) {
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
    if (const Registered* registered = reference ? registrations.find(*reference) : nullptr) {
        reportPress(registered->name);
    }
}

void HotKeys::renew() {
    bound.reset();
    bool hasChanged = false;
    for (auto& [reference, registered] : registrations) {
        const bool wasBorrowed = registered.isBorrowed;
        const bool isBound = bind(reference, registered) == noErr;
        hasChanged = hasChanged || !isBound || registered.isBorrowed != wasBorrowed;
    }
    const ConfiguredBindings* present = session.isOpen() && !refused.empty() ? configured() : nullptr;
    hasChanged = hasChanged || (present != nullptr && std::ranges::any_of(refused, [&](const auto& entry) {
                                    const KeyUse use = i3ipc::useOf(*present, entry.second.combination);
                                    return use.line == nullptr || isLendable(use) != entry.second.isLendable;
                                }));
    if (hasChanged) {
        reportLoss();
    }
}

std::vector<HotKeys::Binding> HotKeys::bindingsOver(const HotKeyCombination& combination, bool isOnRelease) {
    // A keymap has no more layouts.
    constexpr std::array layouts{"Group1+", "Group2+", "Group3+", "Group4+"};
    std::vector<Binding> bindings;
    for (const char* layout : layouts) {
        bindings.push_back({.keys = layout + combination.text(), .isOnRelease = false});
        if (isOnRelease) {
            bindings.push_back({.keys = layout + combination.text(), .isOnRelease = true});
        }
    }
    return bindings;
}

OSStatus HotKeys::bind(std::uint64_t reference, Registered& registered) {
    registered.bindings.clear();
    if (!session.isOpen()) {
        // Bound when the session opens.
        return noErr;
    }
    const ConfiguredBindings* present = configured();
    if (present == nullptr) {
        // Whether the configuration binds it is not known now, so registering has to be tried again.
        reportLoss();
        return eventHotKeyExistsErr;
    }
    const HotKeyCombination& combination = registered.combination;
    const KeyUse use = i3ipc::useOf(*present, combination);
    registered.isBorrowed = borrows && isLendable(use);
    if (!registered.isBorrowed) {
        setLeft(combination, "");
    }
    if (use.line != nullptr && !registered.isBorrowed) {
        refused.insert_or_assign(combination.text(),
                                 Refused{.combination = combination, .isLendable = isLendable(use)});
        return eventHotKeyExistsErr;
    }
    refused.erase(combination.text());
    std::vector<Binding> bindings;
    if (registered.isBorrowed) {
        bindings = bindingsOver(combination, use.isOnRelease);
    } else {
        bindings.push_back({.keys = combination.text(), .isOnRelease = false});
    }
    std::vector<std::string> commands;
    std::ranges::transform(bindings, std::back_inserter(commands), [&](const Binding& each) {
        return each.isOnRelease ? "bindcode --no-warn --release " + each.keys + " " + std::string(releaseCommand)
                                : "bindcode --no-warn --no-repeat " + each.keys + " " + std::string(commandPrefix) +
                                      std::to_string(reference);
    });
    registered.bindings = std::move(bindings);
    if (registered.isBorrowed) {
        setLeft(combination, joined(unbindingCommands(registered.bindings)));
    }
    if (!runInDefaultMode(commands)) {
        if (registered.isBorrowed) {
            unbind(registered);
        }
        registered.bindings.clear();
        return eventHotKeyInvalidErr;
    }
    return noErr;
}

void HotKeys::unbind(const Registered& registered) {
    unbind(registered.bindings);
    setLeft(registered.combination, "");
}

void HotKeys::unbind(const std::vector<Binding>& bindings) {
    if (!bindings.empty()) {
        static_cast<void>(runInDefaultMode(unbindingCommands(bindings)));
    }
}

std::vector<std::string> HotKeys::unbindingCommands(const std::vector<Binding>& bindings) {
    std::vector<std::string> commands;
    std::ranges::transform(bindings, std::back_inserter(commands), [](const Binding& each) {
        return (each.isOnRelease ? "unbindcode --release " : "unbindcode ") + each.keys;
    });
    return commands;
}

void HotKeys::setLeft(const HotKeyCombination& combination, std::string commands) {
    const auto former = left;
    if (commands.empty()) {
        left.erase(combination.text());
    } else {
        left.insert_or_assign(combination.text(), std::move(commands));
    }
    if (left != former) {
        std::vector<std::string> lists;
        std::ranges::transform(left, std::back_inserter(lists), [](const auto& entry) { return entry.second; });
        leave(joined(lists));
    }
}

bool HotKeys::runInDefaultMode(const std::vector<std::string>& commands) {
    const Instant deadline = session.deadline();
    const auto state = session.ask(MessageType::getBindingState, "", deadline);
    const std::string_view mode = state ? textOf(*state, "name") : std::string_view();
    const bool isElsewhere = isQuotable(mode) && mode != "default";
    const std::string list = joined(commands);
    const auto results = session.ask(
        MessageType::runCommand,
        isElsewhere ? "mode \"default\"; " + list + "; mode \"" + std::string(mode) + "\"" : list, deadline);
    if (!results) {
        // A compositor that is too busy to reply has refused nothing.
        return true;
    }
    const std::size_t first = isElsewhere ? 1 : 0;
    if (!results->is_array() || results->size() < first + commands.size()) {
        return false;
    }
    const auto begin = results->begin() + static_cast<std::ptrdiff_t>(first);
    return std::all_of(begin, begin + static_cast<std::ptrdiff_t>(commands.size()),
                       [](const Json& result) { return isSet(result, "success"); });
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
