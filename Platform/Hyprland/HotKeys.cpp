#include "Platform/Hyprland/HotKeys.h"

#include <algorithm>
#include <utility>

namespace platform::hyprland {

namespace {

using Kind = compositor::ProtocolHotKeys::Answer::Kind;

/// The compositor as the holder of a key with this effect.
ShortcutHolder hyprland(const std::string& purpose) {
    return {.heldBy = "Hyprland", .purpose = purpose};
}

} // namespace

HotKeys::HotKeys(Session& session, Open open, Naming naming)
    : session(session)
    , open(std::move(open))
    , naming(std::move(naming)) {
    session.follow(*this);
}

HotKeys::~HotKeys() {
    for (auto& [number, registered] : registrations) {
        unbind(number, registered);
    }
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    const auto combination = Combination::of(keyCode, modifiers);
    if (!combination) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    return registrations.add({.combination = *combination, .name = name, .title = naming(keyCode, modifiers)},
                             &Registered::combination,
                             [this](std::uint64_t number, Registered& registered) { return bind(number, registered); });
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    if (auto registered = registrations.remove(reference)) {
        unbind(reference.value, *registered);
    }
}

std::optional<LoanObstacle> HotKeys::loanObstacle(std::uint32_t keyCode, std::uint32_t modifiers) const {
    return holderOf({.keyCode = keyCode, .modifiers = modifiers}) ? std::optional(LoanObstacle::notReleased)
                                                                  : std::nullopt;
}

std::optional<ShortcutHolder> HotKeys::holderOf(const corvid::Shortcut& shortcut) const {
    const auto combination = Combination::of(shortcut.keyCode, shortcut.modifiers);
    const auto found = combination ? refused.find(*combination) : refused.end();
    return found == refused.end() ? std::nullopt : std::optional(found->second);
}

void HotKeys::sessionOpened() {
    openProtocol();
    renew();
}

void HotKeys::sessionClosed() {
    protocol.reset();
    binds.reset();
    for (auto& [number, registered] : registrations) {
        registered.isBound = false;
    }
}

void HotKeys::sessionReported(std::string_view event, std::string_view data) {
    if (event == "configreloaded") {
        renew();
    } else if (event == "custom") {
        if (const auto number = pressedNumber(data)) {
            handlePress(*number);
        }
    }
}

void HotKeys::openProtocol() {
    isProtocolLost = false;
    protocol = open({.pressed = [this](std::uint64_t number) { handlePress(number); },
                     .revoked =
                         [this](std::uint64_t number) {
                             if (Registered* registered = registrations.find(number)) {
                                 registered->isBound = false;
                                 reportLoss();
                             }
                         },
                     .gone =
                         [this] {
                             protocol.reset();
                             isProtocolLost = true;
                             for (auto& [number, registered] : registrations) {
                                 registered.isBound = false;
                             }
                             reportLoss();
                         }},
                    session.deadline());
}

void HotKeys::handlePress(std::uint64_t number) {
    const Registered* registered = registrations.find(number);
    if (registered != nullptr && registered->isBound) {
        reportPress(registered->name);
    }
}

void HotKeys::renew() {
    binds.reset();
    bool hasChanged = false;
    for (auto& [number, registered] : registrations) {
        if (protocol == nullptr) {
            // The compositor forgets them with its configuration.
            registered.isBound = false;
        }
        hasChanged = bind(number, registered) != noErr || hasChanged;
    }
    const std::vector<Bind>* held = session.isOpen() && !refused.empty() ? present() : nullptr;
    hasChanged = hasChanged || (held != nullptr && std::ranges::any_of(refused, [&](const auto& entry) {
                                    return bindOf(*held, entry.first) == nullptr;
                                }));
    if (hasChanged) {
        reportLoss();
    }
}

OSStatus HotKeys::bind(std::uint64_t number, Registered& registered) {
    if (!session.isOpen()) {
        // Bound when the session opens.
        return noErr;
    }
    const std::vector<Bind>* held = present();
    if (held == nullptr) {
        // Whether the configuration binds it is not known now, so registering has to be tried again.
        reportLoss();
        return eventHotKeyExistsErr;
    }
    if (const Bind* holder = bindOf(*held, registered.combination)) {
        ShortcutHolder compositor = hyprland(holder->purpose);
        unbind(number, registered);
        return refuse(registered, std::move(compositor));
    }
    if (registered.isBound) {
        return noErr;
    }
    if (isProtocolLost) {
        openProtocol();
    }
    if (protocol == nullptr) {
        const auto answer =
            session.run([&](Language language) { return bindingRequest(language, registered.combination, number); },
                        session.deadline());
        registered.isBound = !answer || answer->starts_with("ok");
        refused.erase(registered.combination);
        // A compositor that is too busy to reply has refused nothing.
        return registered.isBound ? noErr : eventHotKeyInvalidErr;
    }
    const auto keysym = registered.combination.keysym();
    if (!keysym) {
        return eventHotKeyInvalidErr;
    }
    const auto answer = protocol->bind(number, *keysym, registered.combination.protocolModifiers(), registered.title,
                                       session.deadline());
    if (answer.kind == Kind::denied) {
        const auto list = session.read("globalshortcuts", session.deadline());
        auto program = list ? readHolder(*list, registered.combination) : std::nullopt;
        return refuse(registered, program ? *std::move(program) : hyprland(answer.message));
    }
    if (answer.kind == Kind::none) {
        reportLoss();
        return eventHotKeyExistsErr;
    }
    registered.isBound = true;
    refused.erase(registered.combination);
    return noErr;
}

OSStatus HotKeys::refuse(const Registered& registered, ShortcutHolder holder) {
    refused.insert_or_assign(registered.combination, std::move(holder));
    return eventHotKeyExistsErr;
}

void HotKeys::unbind(std::uint64_t number, Registered& registered) {
    if (!std::exchange(registered.isBound, false)) {
        return;
    }
    if (protocol != nullptr) {
        protocol->release(number);
        return;
    }
    // In hyprlang this removes whatever the combination has, in any mode. Ours does nothing if it stays.
    binds.reset();
    const std::vector<Bind>* held = session.language() == Language::lua ? nullptr : present();
    const bool isAlone = held != nullptr && std::ranges::all_of(*held, [&](const Bind& each) {
                             return each.ours != 0 || !each.isOf(registered.combination);
                         });
    if (session.language() == Language::lua || isAlone) {
        session.run([&](Language language) { return unbindingRequest(language, registered.combination, number); },
                    session.deadline());
    }
    binds.reset();
}

const std::vector<Bind>* HotKeys::present() {
    if (!binds) {
        const auto answer = session.read("binds", session.deadline());
        binds = answer ? readBinds(*answer) : std::nullopt;
    }
    return binds ? &*binds : nullptr;
}

const Bind* HotKeys::bindOf(const std::vector<Bind>& binds, const Combination& combination) {
    const auto found = std::ranges::find_if(
        binds, [&](const Bind& each) { return each.ours == 0 && each.submap.empty() && each.isOf(combination); });
    return found == binds.end() ? nullptr : &*found;
}

} // namespace platform::hyprland
