#include "Platform/GnomeShell/HotKeys.h"

#include "Platform/GnomeShell/Accelerator.h"

#include <algorithm>
#include <utility>

namespace platform::gnomeshell {

namespace {

/// The two booleans of an answer; nothing where none came in time, false for both where it is an error.
std::optional<std::pair<bool, bool>> booleansIn(const ShellLink::Answer& answer, const char* types) {
    if (!answer && answer.error().name.empty()) {
        return std::nullopt;
    }
    int first = 0; // the library's booleans
    int second = 0;
    if (!answer || sd_bus_message_read(answer->get(), types, &first, &second) <= 0) {
        return std::pair(false, false);
    }
    return std::pair(first != 0, second != 0);
}

} // namespace

HotKeys::HotKeys(linux::MainLoop& mainLoop, ShellLink& link)
    : Listener(link)
    , mainLoop(mainLoop)
    , link(link) {
}

HotKeys::~HotKeys() {
    for (const auto& [number, registered] : registrations) {
        link.send("Ungrab", "u", number);
    }
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    const auto text = accelerator(keyCode, modifiers);
    if (!text || !link.isOpen()) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    const std::uint32_t number = ++lastNumber;
    const std::optional<Hold> hold = take(number, *text);
    const Carbon carbon{keyCode, modifiers};
    lendable.erase(carbon);
    if (hold == Hold::refused || hold == Hold::lendable) {
        if (hold == Hold::lendable) {
            lendable.insert(carbon);
        }
        return {.status = eventHotKeyExistsErr, .reference = std::nullopt};
    }
    registrations.emplace(number, Registered{.carbon = carbon,
                                             .accelerator = *text,
                                             .name = name,
                                             .isConfirmed = hold.has_value(),
                                             .isBorrowed = hold == Hold::borrowed});
    if (!hold) {
        confirmAt(mainLoop.now() + untilRetry, untilRetry / 10);
    }
    return {.status = noErr, .reference = EventHotKeyRef{number}};
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    const auto number = static_cast<std::uint32_t>(reference.value);
    if (registrations.erase(number) > 0) {
        link.send("Ungrab", "u", number);
    }
}

HotKeyLoan HotKeys::loan(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const Carbon carbon{keyCode, modifiers};
    const bool isMade = std::ranges::any_of(
        registrations, [&](const auto& entry) { return entry.second.carbon == carbon && entry.second.isBorrowed; });
    if (isMade) {
        return HotKeyLoan::made;
    }
    return lendable.contains(carbon) ? HotKeyLoan::possible : HotKeyLoan::none;
}

void HotKeys::opened(const Hello& /*hello*/, bool isNew) {
    if (!isNew) {
        return;
    }
    for (auto& [number, registered] : registrations) {
        registered.isConfirmed = false;
    }
    // Not within the connection's own work: answers are waited for.
    confirmAt(mainLoop.now(), {});
}

void HotKeys::closed() {
    confirmation.reset();
}

void HotKeys::told(std::string_view signal, sd_bus_message* message) {
    std::uint32_t number = 0;
    int isBorrowed = 0; // the library's boolean
    if (signal == "Activated" && sd_bus_message_read(message, "u", &number) > 0) {
        mainLoop.post([hotKeys = std::weak_ptr(self), number] {
            if (const auto present = hotKeys.lock()) {
                (*present)->press(number);
            }
        });
    } else if (signal == "KeyHeld" && sd_bus_message_read(message, "ub", &number, &isBorrowed) > 0) {
        if (const auto found = registrations.find(number); found != registrations.end()) {
            found->second.isBorrowed = isBorrowed != 0;
        }
    } else if (signal == "KeyLost" && sd_bus_message_read(message, "u", &number) > 0 &&
               registrations.contains(number)) {
        tellOfLoss();
    }
}

std::optional<HotKeys::Hold> HotKeys::take(std::uint32_t number, const std::string& accelerator) {
    const char* text = accelerator.c_str();
    if (borrows) {
        const ShellLink::Answer answer = link.call(link.endOfWaiting(), "Borrow", "us", number, text);
        // An earlier version of the extension, which the shell may still run, cannot do that.
        if (answer || answer.error().name.empty()) {
            return booleansIn(answer, "bb").transform([](const auto& each) {
                const auto [isHeld, isBorrowed] = each;
                const Hold held = isBorrowed ? Hold::borrowed : Hold::free;
                return isHeld ? held : Hold::refused;
            });
        }
    }
    const auto isGranted = booleansIn(link.call(link.endOfWaiting(), "Grab", "us", number, text), "b");
    if (!isGranted || isGranted->first) {
        return isGranted ? std::optional(Hold::free) : std::nullopt;
    }
    const auto isLendable = booleansIn(link.call(link.endOfWaiting(), "Lends", "s", text), "b");
    return isLendable.transform([](const auto& each) { return each.first ? Hold::lendable : Hold::refused; });
}

void HotKeys::confirm() {
    bool isAllAnswered = true;
    bool isAnyLost = false;
    for (auto& [number, registered] : registrations) {
        if (registered.isConfirmed) {
            continue;
        }
        const std::optional<Hold> hold = take(number, registered.accelerator);
        // A refused key is not requested again: its loss is reported, upon which all are registered anew.
        registered.isConfirmed = hold.has_value();
        registered.isBorrowed = hold == Hold::borrowed;
        isAnyLost = isAnyLost || hold == Hold::refused || hold == Hold::lendable;
        isAllAnswered = isAllAnswered && hold.has_value();
    }
    if (!isAllAnswered) {
        confirmAt(mainLoop.now() + untilRetry, untilRetry / 10);
    }
    if (isAnyLost) {
        tellOfLoss();
    }
}

void HotKeys::confirmAt(Instant time, Duration tolerance) {
    confirmation = mainLoop.schedule(time, tolerance, [this] { confirm(); });
}

void HotKeys::press(std::uint32_t number) {
    const auto found = registrations.find(number);
    if (found != registrations.end()) {
        tellOfPress(found->second.name);
    }
}

} // namespace platform::gnomeshell
