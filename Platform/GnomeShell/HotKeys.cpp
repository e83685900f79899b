#include "Platform/GnomeShell/HotKeys.h"

#include "Platform/GnomeShell/Accelerator.h"

#include <algorithm>
#include <utility>

namespace platform::gnomeshell {

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
    const std::optional<bool> isGranted = grab(number, *text);
    if (isGranted == false) {
        return {.status = eventHotKeyExistsErr, .reference = std::nullopt};
    }
    registrations.emplace(number, Registered{.accelerator = *text, .name = name, .isConfirmed = isGranted.has_value()});
    if (!isGranted) {
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

bool HotKeys::takeLoss() {
    return std::exchange(wasLost, false);
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
    if (signal == "Activated" && sd_bus_message_read(message, "u", &number) > 0) {
        mainLoop.post([hotKeys = std::weak_ptr(self), number] {
            if (const auto present = hotKeys.lock()) {
                (*present)->press(number);
            }
        });
    }
}

std::optional<bool> HotKeys::grab(std::uint32_t number, const std::string& accelerator) {
    const ShellLink::Answer answer = link.call(link.endOfWaiting(), "Grab", "us", number, accelerator.c_str());
    int isGranted = 0; // the library's boolean
    if (!answer && answer.error().name.empty()) {
        return std::nullopt;
    }
    return answer && sd_bus_message_read(answer->get(), "b", &isGranted) > 0 && isGranted != 0;
}

void HotKeys::confirm() {
    bool isAllAnswered = true;
    for (auto& [number, registered] : registrations) {
        if (registered.isConfirmed) {
            continue;
        }
        const std::optional<bool> isGranted = grab(number, registered.accelerator);
        // One that was refused is not asked for again: its loss is told, and then all are registered anew.
        registered.isConfirmed = isGranted.has_value();
        wasLost = wasLost || isGranted == false;
        isAllAnswered = isAllAnswered && isGranted.has_value();
    }
    if (!isAllAnswered) {
        confirmAt(mainLoop.now() + untilRetry, untilRetry / 10);
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
