#include "Platform/KWin/HotKeys.h"

#include "Platform/KWin/QtKeys.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::kwin {

namespace {

constexpr const char* componentTitle = "Tessel";

constexpr const char* keyMatch = "type='signal',sender='org.kde.kglobalaccel',path='/component/org_corvid_Tessel',"
                                 "interface='org.kde.kglobalaccel.Component'";
// Sent when the system's settings have changed the keys of a program, whichever it is.
constexpr const char* settingsMatch = "type='signal',sender='org.kde.kglobalaccel',path='/kglobalaccel',"
                                      "interface='org.kde.KGlobalAccel',member='yourShortcutsChanged'";

/// No more presses than this wait to be acted on.
constexpr std::size_t mostPresses = 64;

} // namespace

HotKeys::HotKeys(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, Naming naming,
                 std::optional<std::string> loans, linux::Log log)
    : Listener(sessionBus)
    , mainLoop(mainLoop)
    , naming(std::move(naming))
    , accel(mainLoop, [this] { tellOfLoss(); })
    , loans(accel, std::move(loans), std::move(log))
    , owner(GlobalAccel::name, [this] { ownerChanged(); }) {
}

HotKeys::~HotKeys() {
    for (const auto& [reference, registered] : registrations) {
        accel.unregister(registered.action);
    }
    accel.beginLastTurn();
    keepReassigned();
    if (!loans.borrowed().empty()) {
        clearLeftovers();
        loans.giveBackAll();
    }
    // Waited for, behind all that was given back: when this program has ended, the keys are free.
    accel.cleanUp();
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    const auto key = qtKey(keyCode, modifiers);
    if (!key) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    if (isRegistered(*key)) {
        return {.status = eventHotKeyExistsErr, .reference = std::nullopt};
    }
    keepReassigned();
    clearLeftovers();
    if (!borrows && loans.isBorrowed(*key)) {
        loans.giveBack(*key);
    }
    const Registered registered{.action = "hot-key-" + std::to_string(keyCode) + "-" + std::to_string(modifiers),
                                .title = naming(keyCode, modifiers),
                                .key = *key,
                                .name = name};
    const OSStatus status = take(registered);
    if (status != noErr) {
        accel.unregister(registered.action);
        settleLater();
        return {.status = status, .reference = std::nullopt};
    }
    registrations.emplace(++lastReference, registered);
    return {.status = noErr, .reference = EventHotKeyRef{lastReference}};
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    const auto found = registrations.find(reference.value);
    if (found != registrations.end()) {
        accel.unregister(found->second.action);
        registrations.erase(found);
        settleLater();
    }
}

void HotKeys::setBorrows(bool consent) {
    if (!consent || borrows) {
        loans.forgetLeft();
    }
    borrows = consent;
    settleLater();
}

HotKeyLoan HotKeys::loan(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const auto key = qtKey(keyCode, modifiers);
    if (key && loans.isBorrowed(*key) && isRegistered(*key)) {
        return HotKeyLoan::made;
    }
    return key && lendable.contains(*key) ? HotKeyLoan::possible : HotKeyLoan::none;
}

const AccelAction* HotKeys::lender(std::int32_t key) const {
    return loans.lender(key);
}

void HotKeys::busArrived(sd_bus* arrived) {
    bus = arrived;
    accel.use(bus);
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus, &slot, keyMatch, &HotKeys::keySignalled, &linux::ignoreReply, this);
    keySignals.reset(slot);
    sd_bus_add_match_async(bus, &slot, settingsMatch, &HotKeys::settingsSignalled, &linux::ignoreReply, this);
    settingsSignals.reset(slot);
    owner.follow(bus);
}

void HotKeys::busLeft() {
    bus = nullptr;
    accel.use(nullptr);
    keySignals.reset();
    settingsSignals.reset();
    owner.forget();
    // The next server knows none of our keys, even under the same name.
    server = "-";
}

void HotKeys::ownerChanged() {
    heldAction.clear();
    if (owner.owner().empty() || owner.owner() == server) {
        return;
    }
    const bool isAnother = !std::exchange(server, owner.owner()).empty();
    areLeftoversCleared = false;
    if (isAnother) {
        later(&HotKeys::renew);
    }
    settleLater();
}

void HotKeys::renew() {
    if (bus == nullptr) {
        return;
    }
    for (const auto& [reference, registered] : registrations) {
        if (take(registered) != noErr) {
            accel.unregister(registered.action);
            tellOfLoss();
        }
    }
}

int HotKeys::keySignalled(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<HotKeys*>(data);
    const char* keyComponent = nullptr;
    const char* action = nullptr;
    if (!self.owner.sent(signal) || sd_bus_message_read(signal, "ss", &keyComponent, &action) <= 0 ||
        std::string_view(keyComponent) != GlobalAccel::ownComponent) {
        return 0;
    }
    if (sd_bus_message_is_signal(signal, GlobalAccel::componentInterface, "globalShortcutPressed") > 0) {
        self.keyPressed(action);
    } else if (sd_bus_message_is_signal(signal, GlobalAccel::componentInterface, "globalShortcutReleased") > 0) {
        self.heldAction.clear();
    }
    return 0;
}

int HotKeys::settingsSignalled(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<HotKeys*>(data);
    const auto changed = self.owner.sent(signal) ? readAction(signal) : std::nullopt;
    if (!changed || changed->component == GlobalAccel::ownComponent || self.accel.isOlderThanOwnChange(signal)) {
        return 0;
    }
    const KeySequences keys = readKeys(signal);
    for (const auto& [reference, registered] : self.registrations) {
        const bool isGivenAway =
            std::ranges::any_of(keys, [&](const KeySequence& sequence) { return sequence.front() == registered.key; });
        if (!isGivenAway) {
            continue;
        }
        // Registered anew, ours comes after the one that was changed, so that gets the presses, as its user wanted.
        self.tellOfLoss();
        if (self.borrows) {
            self.reassigned.emplace_back(registered.key, *changed);
            self.later(&HotKeys::keepReassigned);
        }
    }
    return 0;
}

void HotKeys::keyPressed(const char* action) {
    // A key that is held repeats its press without a release between.
    if (std::exchange(heldAction, action) == action || pressedActions.size() >= mostPresses) {
        return;
    }
    pressedActions.emplace_back(action);
    later(&HotKeys::actOnPresses);
}

void HotKeys::actOnPresses() {
    if (pressedActions.empty()) {
        return;
    }
    const std::string action = std::move(pressedActions.front());
    pressedActions.pop_front();
    const auto found =
        std::ranges::find_if(registrations, [&](const auto& entry) { return entry.second.action == action; });
    if (found != registrations.end() && hasHandler()) {
        if (beforePress) {
            beforePress();
        }
        tellOfPress(found->second.name);
    }
}

OSStatus HotKeys::take(const Registered& registered) {
    const std::int32_t key = registered.key;
    lendable.erase(key);
    OSStatus status = establish(registered);
    const bool isWanted = borrows && !loans.isLeft(key);
    if (status == eventHotKeyExistsErr && isWanted && loans.borrow(key)) {
        status = establish(registered);
    } else if (status == eventHotKeyExistsErr && !isWanted && loans.canBorrow(key)) {
        lendable.insert(key);
    }
    if (status == noErr && loans.isBorrowed(key)) {
        loans.confirm(key);
    }
    return status;
}

OSStatus HotKeys::establish(const Registered& registered) {
    const auto granted = accel.registerKey({.component = GlobalAccel::ownComponent,
                                            .action = registered.action,
                                            .componentTitle = componentTitle,
                                            .actionTitle = registered.title},
                                           registered.key);
    if (!granted) {
        return eventHotKeyInvalidErr;
    }
    const auto recipient = *granted ? accel.recipient(registered.key) : std::nullopt;
    const bool isOurs = *granted && (!recipient || !*recipient || (*recipient)->component == GlobalAccel::ownComponent);
    return isOurs ? noErr : eventHotKeyExistsErr;
}

void HotKeys::clearLeftovers() {
    if (std::exchange(areLeftoversCleared, true)) {
        return;
    }
    // A program that was killed could not give its keys back.
    for (const std::string& action : accel.ownActions()) {
        const bool isHeld =
            std::ranges::any_of(registrations, [&](const auto& entry) { return entry.second.action == action; });
        if (!isHeld) {
            accel.unregister(action);
        }
    }
}

void HotKeys::settleLater() {
    if (!loans.borrowed().empty()) {
        later(&HotKeys::settle);
    }
}

void HotKeys::settle() {
    keepReassigned();
    for (const std::int32_t key : loans.borrowed()) {
        if (bus != nullptr && !isRegistered(key)) {
            clearLeftovers();
            loans.giveBack(key);
        }
    }
}

void HotKeys::keepReassigned() {
    for (const auto& [key, action] : std::exchange(reassigned, {})) {
        loans.leave(key, action);
    }
}

void HotKeys::later(void (HotKeys::*work)()) {
    mainLoop.post([keys = std::weak_ptr(self), work] {
        if (const auto alive = keys.lock()) {
            ((*alive)->*work)();
        }
    });
}

bool HotKeys::isRegistered(std::int32_t key) const {
    return std::ranges::any_of(registrations, [&](const auto& entry) { return entry.second.key == key; });
}

} // namespace platform::kwin
