#include "Platform/Linux/Tray/NotifierPlace.h"

#include "Platform/Linux/Bus/Calls.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::linux {

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* hostRule = "type='signal',path='/StatusNotifierWatcher',"
                                 "interface='org.kde.StatusNotifierWatcher'";

/// A call to the watcher; null if the library refuses. It starts no service.
OwnedMessage callTo(sd_bus* bus, const char* interface, const char* method) {
    sd_bus_message* raw = nullptr;
    if (sd_bus_message_new_method_call(bus, &raw, watcherName, watcherPath, interface, method) < 0) {
        return nullptr;
    }
    sd_bus_message_set_auto_start(raw, 0);
    return OwnedMessage(raw);
}

} // namespace

/// The handlers of the bus's messages; `data` is the place.
struct NotifierPlace::Answers {
    static NotifierPlace& self(void* data) { return *static_cast<NotifierPlace*>(data); }

    static int hostsChanged(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
        // The sender does not matter, because this requests the present state from the watcher.
        if (std::string_view(sd_bus_message_get_member(signal)).starts_with("StatusNotifierHost")) {
            self(data).askForHost();
        }
        return 0;
    }

    static int hostArrived(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        int has = 0; // the library's boolean
        const bool isAnswer = sd_bus_message_is_method_error(reply, nullptr) == 0 &&
                              sd_bus_message_enter_container(reply, SD_BUS_TYPE_VARIANT, "b") > 0 &&
                              sd_bus_message_read(reply, "b", &has) > 0;
        self(data).setHasHost(isAnswer && has != 0);
        return 0;
    }

    static int registered(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        NotifierPlace& place = self(data);
        place.isRegistered = sd_bus_message_is_method_error(reply, nullptr) == 0;
        if (!place.isRegistered && place.tries < mostTries) {
            // A watcher may have its name before it has its methods.
            place.retry = place.mainLoop.schedule(place.mainLoop.now() + untilRetry, untilRetry / 10, [&place] {
                place.registerItem();
                place.askForHost();
            });
        }
        return 0;
    }
};

NotifierPlace::NotifierPlace(MainLoop& mainLoop, SessionBus& bus, Screens& screens, std::string iconThemePath)
    : Listener(bus)
    , mainLoop(mainLoop)
    , screens(screens)
    , item(std::move(iconThemePath), [this](std::int32_t x, std::int32_t y) { clicked(x, y); })
    , menu(mainLoop)
    , watcher(watcherName, [this] { watcherChanged(); }) {
}

void NotifierPlace::show(const TrayContents& newContents) {
    contents = &newContents;
    menu.setLines(contents->menu);
    if (bus != nullptr && item.offer(bus, *contents) && menu.offer(bus)) {
        tries = 0;
        registerItem();
    }
}

void NotifierPlace::hide() {
    // A watcher forgets an item only with its connection; panels read nothing from one that is not there, and drop it.
    if (bus != nullptr && contents != nullptr) {
        sd_bus_emit_signal(bus, NotifierItem::objectPath, "org.kde.StatusNotifierItem", "NewStatus", "s", "Passive");
    }
    contents = nullptr;
    isRegistered = false;
    registration.reset();
    retry.reset();
    item.withdraw();
    menu.withdraw();
}

void NotifierPlace::update(Change change) {
    if (change == Change::menu) {
        menu.setLines(contents->menu);
    }
    item.announce(change);
}

void NotifierPlace::busArrived(sd_bus* arrived) {
    bus = arrived;
    if (contents != nullptr) {
        // The objects come first: a panel may call them as soon as it knows the item.
        [[maybe_unused]] const bool areOffered = item.offer(bus, *contents) && menu.offer(bus);
    }
    watcher.follow(bus);
    hostMatch = listen(bus, hostRule, &Answers::hostsChanged, this);
}

void NotifierPlace::busLeft() {
    watcher.forget();
    hostMatch.reset();
    item.withdraw();
    menu.withdraw();
    bus = nullptr;
    watcherLeft();
}

void NotifierPlace::watcherChanged() {
    watcherLeft();
    tries = 0;
    registerItem();
    askForHost();
}

void NotifierPlace::watcherLeft() {
    registration.reset();
    hostQuestion.reset();
    retry.reset();
    isRegistered = false;
    setHasHost(false);
}

void NotifierPlace::registerItem() {
    const char* name = nullptr;
    if (watcher.owner().empty() || contents == nullptr || sd_bus_get_unique_name(bus, &name) < 0) {
        return;
    }
    ++tries;
    const OwnedMessage call = callTo(bus, watcherName, "RegisterStatusNotifierItem");
    // By the connection's own name, which needs no other name (and may be all that a sandbox allows).
    if (call != nullptr && sd_bus_message_append(call.get(), "s", name) >= 0) {
        registration = send(bus, call.get(), &Answers::registered, this);
    }
}

void NotifierPlace::askForHost() {
    if (watcher.owner().empty()) {
        return;
    }
    const OwnedMessage call = callTo(bus, "org.freedesktop.DBus.Properties", "Get");
    if (call != nullptr &&
        sd_bus_message_append(call.get(), "ss", watcherName, "IsStatusNotifierHostRegistered") >= 0) {
        hostQuestion = send(bus, call.get(), &Answers::hostArrived, this);
    }
}

void NotifierPlace::setHasHost(bool has) {
    if (hasHost != has) {
        hasHost = has;
        offerChanged();
    }
}

void NotifierPlace::clicked(std::int32_t x, std::int32_t y) {
    if (contents != nullptr && contents->action) {
        // After the panel has its reply. A copy: the item may be gone by then, with its action.
        mainLoop.post([action = contents->action, position = inScreenSpace(x, y)] { action(position); });
    }
}

std::optional<corvid::CGPoint> NotifierPlace::inScreenSpace(std::int32_t x, std::int32_t y) const {
    if (x == 0 && y == 0) {
        // Panels without a position send zeros.
        return std::nullopt;
    }
    const std::vector<Screen> attached = screens.screens();
    if (attached.empty()) {
        return std::nullopt;
    }
    const auto left = std::ranges::min(attached, {}, [](const Screen& screen) { return screen.frame.minX(); });
    const auto highest = std::ranges::max(attached, {}, [](const Screen& screen) { return screen.frame.maxY(); });
    return corvid::CGPoint{left.frame.minX() + x, highest.frame.maxY() - y};
}

} // namespace platform::linux
