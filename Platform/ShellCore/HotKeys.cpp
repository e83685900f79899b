#include "Platform/ShellCore/HotKeys.h"

#include "Platform/Linux/Holders/Accelerator.h"

#include <algorithm>
#include <utility>

namespace platform::shellcore {

namespace {

/// The two booleans of a reply; empty after a timeout, false for both after an error.
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

/// By the core's words; nothing for the empty one.
std::optional<LoanObstacle> obstacleOf(std::string_view word) {
    using enum LoanObstacle;
    for (const auto& [known, obstacle] :
         {std::pair("others", reserved), std::pair("own", notLent), std::pair("shell", unknownShell)}) {
        if (word == known) {
            return obstacle;
        }
    }
    return word.empty() ? std::nullopt : std::optional(notLent);
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
    const auto text = linux::acceleratorText({.keyCode = keyCode, .modifiers = modifiers});
    if (!text || !link.isOpen()) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    const std::uint32_t number = ++lastNumber;
    const std::optional<Hold> hold = take(number, *text);
    const Carbon carbon{keyCode, modifiers};
    refused.forget(carbon);
    if (hold && !hold->isHeld) {
        refused.refuse(carbon, hold->obstacle);
        return {.status = eventHotKeyExistsErr, .reference = std::nullopt};
    }
    registrations.emplace(number, Registered{.carbon = carbon,
                                             .accelerator = *text,
                                             .name = name,
                                             .isConfirmed = hold.has_value(),
                                             .isBorrowed = hold && hold->isBorrowed});
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
    return refused.isLendable(carbon) ? HotKeyLoan::possible : HotKeyLoan::none;
}

std::optional<LoanObstacle> HotKeys::loanObstacle(std::uint32_t keyCode, std::uint32_t modifiers) const {
    return refused.obstacle({keyCode, modifiers});
}

void HotKeys::opened(const Hello& /*hello*/, bool isNew) {
    if (!isNew) {
        return;
    }
    for (auto& [number, registered] : registrations) {
        registered.isConfirmed = false;
    }
    // Not inside the connection's own callbacks, because this waits for replies.
    confirmAt(mainLoop.now(), {});
}

void HotKeys::closed() {
    confirmation.reset();
}

void HotKeys::signalArrived(std::string_view signal, sd_bus_message* message) {
    std::uint32_t number = 0;
    int isBorrowed = 0; // the library's boolean
    if (signal == "Activated" && sd_bus_message_read(message, "u", &number) > 0) {
        later.post([this, number] { press(number); });
    } else if (signal == "KeyHeld" && sd_bus_message_read(message, "ub", &number, &isBorrowed) > 0) {
        if (const auto found = registrations.find(number); found != registrations.end()) {
            found->second.isBorrowed = isBorrowed != 0;
        }
    } else if (signal == "KeyLost" && sd_bus_message_read(message, "u", &number) > 0 &&
               registrations.contains(number)) {
        reportLoss();
    }
}

std::optional<HotKeys::Hold> HotKeys::take(std::uint32_t number, const std::string& accelerator) {
    const char* text = accelerator.c_str();
    if (borrows) {
        const ShellLink::Answer answer = link.call(link.deadline(), "Borrow", "us", number, text);
        // An earlier version of the extension, which the shell may still run, cannot do that.
        if (answer || answer.error().name.empty()) {
            const auto held = booleansIn(answer, "bb");
            if (!held || held->first) {
                return held.transform([](const auto& each) { return Hold{.isHeld = true, .isBorrowed = each.second}; });
            }
            return refusal(accelerator);
        }
    }
    const auto isGranted = booleansIn(link.call(link.deadline(), "Grab", "us", number, text), "b");
    if (!isGranted || isGranted->first) {
        return isGranted.transform([](const auto& /*granted*/) { return Hold{.isHeld = true}; });
    }
    return refusal(accelerator);
}

std::optional<HotKeys::Hold> HotKeys::refusal(const std::string& accelerator) {
    const ShellLink::Answer answer = link.call(link.deadline(), "LoanObstacle", "s", accelerator.c_str());
    if (!answer && answer.error().name.empty()) {
        return std::nullopt;
    }
    const char* word = nullptr;
    if (!answer || sd_bus_message_read(answer->get(), "s", &word) <= 0) {
        const bool isOld = !answer && answer.error().name == SD_BUS_ERROR_UNKNOWN_METHOD;
        return Hold{.obstacle = isOld ? LoanObstacle::oldExtension : LoanObstacle::unknownShell};
    }
    return Hold{.obstacle = obstacleOf(word)};
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
        registered.isBorrowed = hold && hold->isBorrowed;
        isAnyLost = isAnyLost || (hold && !hold->isHeld);
        isAllAnswered = isAllAnswered && hold.has_value();
    }
    if (!isAllAnswered) {
        confirmAt(mainLoop.now() + untilRetry, untilRetry / 10);
    }
    if (isAnyLost) {
        reportLoss();
    }
}

void HotKeys::confirmAt(Instant time, Duration tolerance) {
    confirmation = mainLoop.schedule(time, tolerance, [this] { confirm(); });
}

void HotKeys::press(std::uint32_t number) {
    const auto found = registrations.find(number);
    if (found != registrations.end()) {
        reportPress(found->second.name);
    }
}

} // namespace platform::shellcore
