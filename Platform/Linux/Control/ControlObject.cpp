#include "Platform/Linux/Control/ControlObject.h"

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Control/ControlMessages.h"

#include <array>
#include <memory>
#include <string_view>

namespace platform::linux {

namespace {

ControlRequests& requestsOf(void* data) {
    return *static_cast<ControlRequests*>(data);
}

int answer(sd_bus_message* call, const ControlAnswer<void>& result) {
    if (!result) {
        return sd_bus_reply_method_errorf(call, ControlMessages::errorName(result.error().kind), "%s",
                                          result.error().reason.c_str());
    }
    return sd_bus_reply_method_return(call, nullptr);
}

int openMethod(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    return answer(call, requestsOf(data).open());
}

int statusMethod(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    const auto status = requestsOf(data).status();
    if (!status) {
        return answer(call, std::unexpected(status.error()));
    }
    sd_bus_message* raw = nullptr;
    int result = sd_bus_message_new_method_return(call, &raw);
    const OwnedMessage reply(raw);
    if (result >= 0) {
        result = ControlMessages::append(raw, *status);
    }
    return result < 0 ? result : sd_bus_message_send(raw);
}

int performMethod(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    const char* action = nullptr;
    const int result = sd_bus_message_read(call, "s", &action);
    if (result < 0) {
        return result;
    }
    // The caller may be gone by then; the message keeps its connection.
    const std::shared_ptr<sd_bus_message> kept(sd_bus_message_ref(call), &sd_bus_message_unref);
    requestsOf(data).perform(action, [kept](const ControlAnswer<void>& given) { answer(kept.get(), given); });
    return 1;
}

int setRuleMethod(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    const char* identifier = nullptr;
    const char* action = nullptr;
    const int result = sd_bus_message_read(call, "ss", &identifier, &action);
    return result < 0 ? result : answer(call, requestsOf(data).setRule(identifier, action));
}

int takeShortcutsMethod(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    return answer(call, requestsOf(data).setBorrowsShortcuts(true));
}

int giveBackShortcutsMethod(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    return answer(call, requestsOf(data).setBorrowsShortcuts(false));
}

int quitMethod(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
    return answer(call, requestsOf(data).quit());
}

// Callers are authorized before: by the user's own bus, or as a peer of the same user.
constexpr std::uint64_t controlFlags = SD_BUS_VTABLE_UNPRIVILEGED;

const std::array<sd_bus_vtable, 9> controlMethods{{
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Open", "", "", &openMethod, controlFlags),
    SD_BUS_METHOD_WITH_ARGS("Status", SD_BUS_NO_ARGS, SD_BUS_RESULT("a{sv}", status), &statusMethod, controlFlags),
    SD_BUS_METHOD_WITH_ARGS("Perform", SD_BUS_ARGS("s", action), SD_BUS_NO_RESULT, &performMethod, controlFlags),
    SD_BUS_METHOD_WITH_ARGS("SetRule", SD_BUS_ARGS("s", identifier, "s", action), SD_BUS_NO_RESULT, &setRuleMethod,
                            controlFlags),
    SD_BUS_METHOD("TakeShortcuts", "", "", &takeShortcutsMethod, controlFlags),
    SD_BUS_METHOD("GiveBackShortcuts", "", "", &giveBackShortcutsMethod, controlFlags),
    SD_BUS_METHOD("Quit", "", "", &quitMethod, controlFlags),
    SD_BUS_VTABLE_END,
}};

} // namespace

bool offerControl(sd_bus* bus, ControlRequests& requests) {
    return sd_bus_add_object_vtable(bus, nullptr, ControlMessages::objectPath, ControlMessages::interfaceName,
                                    controlMethods.data(), &requests) >= 0;
}

} // namespace platform::linux
