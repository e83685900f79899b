#include "CorvidKit/HotKeys.h"

#include "Platform/Seam/Platform.h"

#include <limits>
#include <utility>

namespace corvid {

namespace {

/// "CWky" as a four-character code, the signature of our hot keys.
constexpr std::uint32_t signature = 0x4357'6B79;

HotKeyDispatcher* inForce = nullptr;

} // namespace

HotKeyDispatcher& HotKeyDispatcher::shared() {
    if (inForce == nullptr) {
        static HotKeyDispatcher instance;
        return instance;
    }
    return *inForce;
}

HotKeyDispatcher::HotKeyDispatcher(std::uint32_t firstID)
    : previous(std::exchange(inForce, this))
    , nextID(firstID) {
}

HotKeyDispatcher::~HotKeyDispatcher() {
    inForce = previous;
}

std::optional<std::uint32_t> HotKeyDispatcher::registerHotKey(const Shortcut& shortcut, Handler handler) {
    platform::HotKeyEvents& events = platform::current().desktop.hotKeyEvents;
    if (!handlerInstalled) {
        handlerInstalled = events.installHandler(&hotKeyCallback, nullptr) == platform::noErr;
    }
    const std::uint32_t id = takeID();
    const auto registration =
        events.registerHotKey(shortcut.keyCode, shortcut.modifiers, {.signature = signature, .id = id});
    if (registration.status != platform::noErr || !registration.reference) {
        return std::nullopt;
    }
    entries.insert_or_assign(id, Entry{.ref = *registration.reference, .handler = std::move(handler)});
    return id;
}

void HotKeyDispatcher::unregister(std::uint32_t id) {
    // The handler is dropped last, when nothing of it is in the table any more.
    const auto removed = entries.extract(id);
    if (removed) {
        platform::current().desktop.hotKeyEvents.unregisterHotKey(removed.mapped().ref);
    }
}

platform::OSStatus HotKeyDispatcher::hotKeyCallback(platform::EventHandlerCall* /*nextHandler*/,
                                                    const platform::HotKeyEvent* event, void* /*userData*/) {
    if (event == nullptr) {
        return platform::eventNotHandledErr;
    }
    const auto pressed = event->directObject();
    if (!pressed || pressed->signature != signature) {
        return platform::eventNotHandledErr;
    }
    assumeIsolated({.file = "CorvidKit/HotKeys", .line = 86}, [&] { HotKeyDispatcher::shared().fire(pressed->id); });
    return platform::noErr;
}

void HotKeyDispatcher::fire(std::uint32_t id) {
    const auto found = entries.find(id);
    if (found == entries.end()) {
        return;
    }
    // A copy: the handler may take its own entry out of the table.
    const Handler handler = found->second.handler;
    handler();
}

std::uint32_t HotKeyDispatcher::takeID() {
    if (nextID == std::numeric_limits<std::uint32_t>::max()) {
        fatalError("Arithmetic overflow: no hot key ids are left", {.file = "CorvidKit/HotKeys", .line = __LINE__});
    }
    return nextID++;
}

} // namespace corvid
