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

constexpr const char* accelName = "org.kde.kglobalaccel";
constexpr const char* accelPath = "/kglobalaccel";
constexpr const char* accelInterface = "org.kde.KGlobalAccel";
constexpr const char* componentInterface = "org.kde.kglobalaccel.Component";

// Under these the program stands in the system's settings.
constexpr const char* component = "org.corvid.Tessel";
constexpr const char* componentTitle = "Tessel";
constexpr const char* componentPath = "/component/org_corvid_Tessel";

constexpr const char* keyMatch = "type='signal',sender='org.kde.kglobalaccel',path='/component/org_corvid_Tessel',"
                                 "interface='org.kde.kglobalaccel.Component'";
// Sent when the system's settings have changed the keys of a program, whichever it is.
constexpr const char* settingsMatch = "type='signal',sender='org.kde.kglobalaccel',path='/kglobalaccel',"
                                      "interface='org.kde.KGlobalAccel',member='yourShortcutsChanged'";

/// All that is asked in one turn of the loop takes at most this.
constexpr std::chrono::milliseconds turnTime{250};
/// No more presses than this wait to be acted on.
constexpr std::size_t mostPresses = 64;

/// KGlobalAccel::SetPresent and NoAutoloading: it is in use, and the key given here counts.
constexpr std::uint32_t registerFlags = 2U | 4U;

/// A call of KGlobalAccel, which is not started by it: while KWin is away, another one would come between it and its
/// keys.
linux::OwnedMessage newCall(sd_bus* bus, const char* path, const char* interface, const char* method) {
    sd_bus_message* raw = nullptr;
    if (bus == nullptr || sd_bus_message_new_method_call(bus, &raw, accelName, path, interface, method) < 0) {
        return nullptr;
    }
    sd_bus_message_set_auto_start(raw, 0);
    return linux::OwnedMessage(raw);
}

/// The four texts that name an action.
int appendAction(sd_bus_message* message, const std::string& action, const std::string& title) {
    return sd_bus_message_append(message, "as", 4, component, action.c_str(), componentTitle, title.c_str());
}

/// The first key of each sequence in an a(ai).
std::vector<std::int32_t> readKeys(sd_bus_message* message) {
    std::vector<std::int32_t> keys;
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "(ai)") <= 0) {
        return keys;
    }
    std::int32_t key = 0;
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_STRUCT, "ai") > 0 &&
           sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "i") > 0 &&
           sd_bus_message_read(message, "i", &key) > 0) {
        keys.push_back(key);
        while (sd_bus_message_read(message, "i", &key) > 0) {
        }
        sd_bus_message_exit_container(message);
        sd_bus_message_exit_container(message);
    }
    return keys;
}

} // namespace

HotKeys::HotKeys(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, Naming naming)
    : Listener(sessionBus)
    , mainLoop(mainLoop)
    , naming(std::move(naming))
    , owner(accelName, [this] { ownerChanged(); }) {
}

HotKeys::~HotKeys() {
    for (const auto& [reference, registered] : registrations) {
        giveBack(registered.action);
    }
    // Waited for, behind all that was given back: when this program has ended, the keys are free.
    turnEnd = mainLoop.now() + turnTime;
    static_cast<void>(
        call(componentPath, componentInterface, "cleanUp", [](sd_bus_message* /*message*/) { return 0; }));
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    const auto key = qtKey(keyCode, modifiers);
    if (!key) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    const bool isOurs = std::ranges::any_of(registrations, [&](const auto& entry) { return entry.second.key == *key; });
    if (isOurs) {
        return {.status = eventHotKeyExistsErr, .reference = std::nullopt};
    }
    clearLeftovers();
    const Registered registered{.action = "hot-key-" + std::to_string(keyCode) + "-" + std::to_string(modifiers),
                                .title = naming(keyCode, modifiers),
                                .key = *key,
                                .name = name};
    const OSStatus status = establish(registered);
    if (status != noErr) {
        giveBack(registered.action);
        return {.status = status, .reference = std::nullopt};
    }
    registrations.emplace(++lastReference, registered);
    return {.status = noErr, .reference = EventHotKeyRef{lastReference}};
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    const auto found = registrations.find(reference.value);
    if (found != registrations.end()) {
        giveBack(found->second.action);
        registrations.erase(found);
    }
}

bool HotKeys::takeLoss() {
    return std::exchange(keyWasLost, false);
}

void HotKeys::busArrived(sd_bus* arrived) {
    bus = arrived;
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus, &slot, keyMatch, &HotKeys::keySignalled, &linux::ignoreReply, this);
    keySignals.reset(slot);
    sd_bus_add_match_async(bus, &slot, settingsMatch, &HotKeys::settingsSignalled, &linux::ignoreReply, this);
    settingsSignals.reset(slot);
    owner.follow(bus);
}

void HotKeys::busLeft() {
    bus = nullptr;
    keySignals.reset();
    settingsSignals.reset();
    owner.forget();
    // Whoever is there next knows nothing of our keys, whatever it is called.
    server = "-";
}

void HotKeys::ownerChanged() {
    heldAction.clear();
    if (owner.owner().empty() || owner.owner() == server) {
        return;
    }
    const bool isAnother = !std::exchange(server, owner.owner()).empty();
    if (isAnother) {
        areLeftoversCleared = false;
        mainLoop.post([keys = std::weak_ptr(self)] {
            if (const auto alive = keys.lock()) {
                (*alive)->renew();
            }
        });
    }
}

void HotKeys::renew() {
    if (bus == nullptr) {
        return;
    }
    for (const auto& [reference, registered] : registrations) {
        if (establish(registered) != noErr) {
            giveBack(registered.action);
            keyWasLost = true;
        }
    }
}

int HotKeys::keySignalled(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<HotKeys*>(data);
    const char* keyComponent = nullptr;
    const char* action = nullptr;
    if (!self.owner.sent(signal) || sd_bus_message_read(signal, "ss", &keyComponent, &action) <= 0 ||
        std::string_view(keyComponent) != component) {
        return 0;
    }
    if (sd_bus_message_is_signal(signal, componentInterface, "globalShortcutPressed") > 0) {
        self.keyPressed(action);
    } else if (sd_bus_message_is_signal(signal, componentInterface, "globalShortcutReleased") > 0) {
        self.heldAction.clear();
    }
    return 0;
}

int HotKeys::settingsSignalled(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<HotKeys*>(data);
    const char* changed = nullptr;
    // The first of the four texts that name an action is its component.
    if (!self.owner.sent(signal) || sd_bus_message_enter_container(signal, SD_BUS_TYPE_ARRAY, "s") <= 0 ||
        sd_bus_message_read(signal, "s", &changed) <= 0 || std::string_view(changed) == component) {
        return 0;
    }
    for (const char* text = nullptr; sd_bus_message_read(signal, "s", &text) > 0;) {
    }
    sd_bus_message_exit_container(signal);
    const std::vector<std::int32_t> keys = readKeys(signal);
    // Registered anew, ours comes after the one that was changed, so that gets the presses, as its user wanted.
    self.keyWasLost = self.keyWasLost || std::ranges::any_of(self.registrations, [&](const auto& entry) {
                          return std::ranges::find(keys, entry.second.key) != keys.end();
                      });
    return 0;
}

void HotKeys::keyPressed(const char* action) {
    // A key that is held repeats its press without a release between.
    if (std::exchange(heldAction, action) == action || pressedActions.size() >= mostPresses) {
        return;
    }
    pressedActions.emplace_back(action);
    mainLoop.post([keys = std::weak_ptr(self)] {
        if (const auto alive = keys.lock()) {
            (*alive)->actOnPresses();
        }
    });
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

OSStatus HotKeys::establish(const Registered& registered) {
    const linux::OwnedMessage known = call(accelPath, accelInterface, "doRegister", [&](sd_bus_message* message) {
        return appendAction(message, registered.action, registered.title);
    });
    if (!known) {
        return eventHotKeyInvalidErr;
    }
    const linux::OwnedMessage granted =
        call(accelPath, accelInterface, "setShortcutKeys", [&](sd_bus_message* message) {
            // One sequence of one key; a sequence has four places.
            const int result = appendAction(message, registered.action, registered.title);
            return result < 0 ? result
                              : sd_bus_message_append(message, "a(ai)u", 1, 4, registered.key, 0, 0, 0, registerFlags);
        });
    if (!granted) {
        return eventHotKeyInvalidErr;
    }
    // Up to Plasma 6.5, a key that another program has is left out of what was granted.
    const std::vector<std::int32_t> keys = readKeys(granted.get());
    const bool isGranted = !keys.empty() && keys.front() == registered.key;
    return isGranted && !goesToAnother(registered.key) ? noErr : eventHotKeyExistsErr;
}

bool HotKeys::goesToAnother(std::int32_t key) {
    // Of those that share a key, the one that registered first, which gets the presses.
    const linux::OwnedMessage action = call(accelPath, accelInterface, "actionList", [&](sd_bus_message* message) {
        return sd_bus_message_append(message, "(ai)", 4, key, 0, 0, 0);
    });
    const char* holder = nullptr;
    return action && sd_bus_message_enter_container(action.get(), SD_BUS_TYPE_ARRAY, "s") > 0 &&
           sd_bus_message_read(action.get(), "s", &holder) > 0 && std::string_view(holder) != component;
}

void HotKeys::giveBack(const std::string& action) {
    const linux::OwnedMessage message = newCall(bus, accelPath, accelInterface, "unregister");
    constexpr std::uint64_t usualTimeout = 0;
    if (message && sd_bus_message_append(message.get(), "ss", component, action.c_str()) >= 0) {
        sd_bus_call_async(bus, nullptr, message.get(), &linux::ignoreReply, nullptr, usualTimeout);
    }
}

void HotKeys::clearLeftovers() {
    if (areLeftoversCleared) {
        return;
    }
    areLeftoversCleared = true;
    // A program that was killed could not give its keys back.
    const linux::OwnedMessage names =
        call(componentPath, componentInterface, "shortcutNames", [](sd_bus_message* /*message*/) { return 0; });
    if (!names || sd_bus_message_enter_container(names.get(), SD_BUS_TYPE_ARRAY, "s") <= 0) {
        return;
    }
    const char* action = nullptr;
    while (sd_bus_message_read(names.get(), "s", &action) > 0) {
        const bool isHeld =
            std::ranges::any_of(registrations, [&](const auto& entry) { return entry.second.action == action; });
        if (!isHeld) {
            giveBack(action);
        }
    }
}

linux::OwnedMessage HotKeys::call(const char* path, const char* interface, const char* method,
                                  const std::function<int(sd_bus_message*)>& append) {
    const auto left = std::chrono::ceil<std::chrono::microseconds>(patience());
    const linux::OwnedMessage message = newCall(bus, path, interface, method);
    if (!message || append(message.get()) < 0) {
        return nullptr;
    }
    sd_bus_message* reply = nullptr;
    const int result = left.count() > 0
                           ? sd_bus_call(bus, message.get(), static_cast<std::uint64_t>(left.count()), nullptr, &reply)
                           : -ETIMEDOUT;
    // A server that is too busy to answer, as at login, has refused nothing: all are to be registered anew.
    keyWasLost = keyWasLost || result == -ETIMEDOUT;
    return result < 0 ? nullptr : linux::OwnedMessage(reply);
}

Duration HotKeys::patience() {
    if (!turnEnd) {
        turnEnd = mainLoop.now() + turnTime;
        mainLoop.post([keys = std::weak_ptr(self)] {
            if (const auto alive = keys.lock()) {
                (*alive)->turnEnd.reset();
            }
        });
    }
    return *turnEnd - mainLoop.now();
}

} // namespace platform::kwin
