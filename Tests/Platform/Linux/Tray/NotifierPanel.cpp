#include "Tests/Platform/Linux/Tray/NotifierPanel.h"

#include "Tests/Platform/Linux/Tray/MessageText.h"

#include <array>
#include <chrono>
#include <cstdarg>
#include <stdexcept>
#include <utility>

using platform::linux::OwnedMessage;
using platform::linux::OwnedSlot;

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

} // namespace

struct NotifierPanel::Methods {
    static NotifierPanel& self(void* data) { return *static_cast<NotifierPanel*>(data); }

    static int registerItem(sd_bus_message* call, void* data, sd_bus_error* error) {
        const char* name = nullptr;
        sd_bus_message_read(call, "s", &name);
        NotifierPanel& panel = self(data);
        panel.registered.emplace_back(name);
        if (panel.isSilent) {
            return 1;
        }
        if (panel.refusals-- > 0) {
            return sd_bus_error_set(error, SD_BUS_ERROR_FAILED, "not now");
        }
        return sd_bus_reply_method_return(call, nullptr);
    }

    static int hostRegistered(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* /*name*/,
                              sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        return sd_bus_message_append(reply, "b", static_cast<int>(self(data).hasHost));
    }

    static int noteSignal(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
        const std::string arguments = messageText(signal);
        self(data).signals.push_back(sd_bus_message_get_member(signal) + (arguments.empty() ? "" : " " + arguments));
        return 0;
    }

    static int keepReply(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        *static_cast<OwnedMessage*>(data) = OwnedMessage(sd_bus_message_ref(reply));
        return 0;
    }

    static constexpr std::array<sd_bus_vtable, 6> table{{
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", &registerItem, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", &hostRegistered, 0, 0),
        SD_BUS_SIGNAL("StatusNotifierHostRegistered", "", 0),
        SD_BUS_SIGNAL("StatusNotifierHostUnregistered", "", 0),
        SD_BUS_VTABLE_END,
    }};
};

NotifierPanel::NotifierPanel(platform::linux::MainLoop& loop, const std::string& address)
    : loop(loop) {
    sd_bus* raw = nullptr;
    if (sd_bus_new(&raw) < 0) {
        throw std::runtime_error("no bus");
    }
    bus.reset(raw);
    if (sd_bus_set_address(raw, address.c_str()) < 0 || sd_bus_set_bus_client(raw, 1) < 0 || sd_bus_start(raw) < 0 ||
        sd_bus_attach_event(raw, loop.handle(), SD_EVENT_PRIORITY_NORMAL) < 0) {
        throw std::runtime_error("the panel cannot connect to the bus");
    }
    for (const char* rule :
         {"type='signal',interface='org.kde.StatusNotifierItem'", "type='signal',interface='com.canonical.dbusmenu'"}) {
        sd_bus_add_match(raw, nullptr, rule, &Methods::noteSignal, this);
    }
}

NotifierPanel::~NotifierPanel() = default;

void NotifierPanel::watch(bool withHost) {
    hasHost = withHost;
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(bus.get(), &slot, watcherPath, watcherName, Methods::table.data(), this);
    object.reset(slot);
    if (sd_bus_request_name(bus.get(), watcherName, 0) < 0) {
        throw std::runtime_error("the panel cannot become the watcher");
    }
}

void NotifierPanel::unwatch() {
    sd_bus_release_name(bus.get(), watcherName);
    object.reset();
}

void NotifierPanel::setHost(bool has) {
    hasHost = has;
    sd_bus_emit_signal(bus.get(), watcherPath, watcherName,
                       has ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered", nullptr);
}

std::string NotifierPanel::call(const char* path, const char* interface, const char* method, const char* types, ...) {
    sd_bus_message* raw = nullptr;
    sd_bus_message_new_method_call(bus.get(), &raw, registered.back().c_str(), path, interface, method);
    const OwnedMessage message(raw);
    va_list values;
    va_start(values, types);
    sd_bus_message_appendv(raw, types, values);
    va_end(values);
    return finish(raw);
}

std::string NotifierPanel::property(const char* path, const char* interface, const char* name) {
    return call(path, "org.freedesktop.DBus.Properties", "Get", "ss", interface, name);
}

std::string NotifierPanel::finish(sd_bus_message* message) {
    OwnedMessage reply;
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(bus.get(), &slot, message, &Methods::keepReply, &reply, 0);
    const OwnedSlot owned(slot);
    if (!until([&] { return reply != nullptr; })) {
        return "no answer";
    }
    const sd_bus_error* error = sd_bus_message_get_error(reply.get());
    return error != nullptr ? "error: " + std::string(error->name) : messageText(reply.get());
}

bool NotifierPanel::until(const std::function<bool()>& condition) {
    constexpr std::uint64_t shortWait = 10'000;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        sd_event_run(loop.handle(), shortWait);
    }
    return true;
}
