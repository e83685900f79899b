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
// Emitted when the system's settings have changed the keys of any program.
constexpr const char* settingsMatch = "type='signal',sender='org.kde.kglobalaccel',path='/kglobalaccel',"
                                      "interface='org.kde.KGlobalAccel',member='yourShortcutsChanged'";

} // namespace

HotKeys::HotKeys(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, Naming naming,
                 std::optional<std::string> loans, linux::Log log)
    : Listener(sessionBus)
    , mainLoop(mainLoop)
    , naming(std::move(naming))
    , accel(mainLoop, [this] { reportLoss(); })
    , loans(accel, std::move(loans), std::move(log))
    , owner(GlobalAccel::name, [this] { ownerChanged(); }) {
}

HotKeys::~HotKeys() {
    for (const auto& [reference, registered] : registrations) {
        accel.unregister(registered.action);
    }
    accel.ignoreTimeouts();
    mainLoop.turnDeadline().begin();
    keepReassigned();
    if (!loans.borrowed().empty()) {
        clearLeftovers();
        loans.giveBackAll();
    }
    // Waits, after everything that was removed, so that the keys are free when this program has ended.
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
    return key && refused.isLendable(*key) ? HotKeyLoan::possible : HotKeyLoan::none;
}

std::optional<LoanObstacle> HotKeys::loanObstacle(std::uint32_t keyCode, std::uint32_t modifiers) const {
    return qtKey(keyCode, modifiers).and_then([this](std::int32_t key) { return refused.obstacle(key); });
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
        later.post([this] { renew(); });
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
            reportLoss();
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
        self.reportLoss();
        if (self.borrows) {
            self.reassigned.emplace_back(registered.key, *changed);
            self.later.post([&self] { self.keepReassigned(); });
        }
    }
    return 0;
}

void HotKeys::keyPressed(const char* action) {
    // A held key repeats its press without a release in between.
    if (std::exchange(heldAction, action) == action) {
        return;
    }
    pressedActions.emplace_back(action);
    later.post([this] { actOnPresses(); });
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
        reportPress(found->second.name);
    }
}

OSStatus HotKeys::take(const Registered& registered) {
    const std::int32_t key = registered.key;
    refused.forget(key);
    OSStatus status = establish(registered);
    if (status == eventHotKeyExistsErr && borrows && !loans.isLeft(key)) {
        status = borrow(registered);
    } else if (status == eventHotKeyExistsErr) {
        refused.refuse(key, loans.obstacle(key));
    }
    if (status == noErr && loans.isBorrowed(key)) {
        loans.confirm(key);
    }
    return status;
}

OSStatus HotKeys::borrow(const Registered& registered) {
    auto obstacle = loans.borrow(registered.key);
    const OSStatus status = obstacle ? eventHotKeyExistsErr : establish(registered);
    if (status == eventHotKeyExistsErr) {
        // No other action has the key, and KGlobalAccel refuses it all the same.
        obstacle = obstacle ? obstacle : loans.obstacle(registered.key);
        refused.refuse(registered.key, obstacle.value_or(LoanObstacle::notReleased));
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
        later.post([this] { settle(); });
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

bool HotKeys::isRegistered(std::int32_t key) const {
    return std::ranges::any_of(registrations, [&](const auto& entry) { return entry.second.key == key; });
}

} // namespace platform::kwin
