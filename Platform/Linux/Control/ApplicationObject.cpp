#include "Platform/Linux/Control/ApplicationObject.h"

#include "Platform/Linux/Control/ControlMessages.h"

#include <array>
#include <string_view>

namespace platform::linux {

namespace {

constexpr const char* applicationInterface = "org.freedesktop.Application";

int reply(sd_bus_message* call, const ControlAnswer<void>& answer, sd_bus_error* error) {
    if (!answer) {
        return sd_bus_error_set(error, ControlMessages::errorName(answer.error().kind), answer.error().reason.c_str());
    }
    return sd_bus_reply_method_return(call, nullptr);
}

/// The desktop's own data (a startup id, an activation token) is for windows that the desktop places.
int showMethod(sd_bus_message* call, void* data, sd_bus_error* error) {
    return reply(call, static_cast<ControlRequests*>(data)->open(), error);
}

/// The actions are those that the desktop entry names (Desktop Entry Specification, D-Bus Activation).
int actionMethod(sd_bus_message* call, void* data, sd_bus_error* error) {
    const char* name = nullptr;
    if (const int result = sd_bus_message_read_basic(call, SD_BUS_TYPE_STRING, static_cast<void*>(&name)); result < 0) {
        return result;
    }
    auto& requests = *static_cast<ControlRequests*>(data);
    const std::string_view action(name);
    if (action == "open") {
        return reply(call, requests.open(), error);
    }
    if (action == "quit") {
        return reply(call, requests.quit(), error);
    }
    return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "there is no such action");
}

// The bus is the user's own.
constexpr std::uint64_t applicationFlags = SD_BUS_VTABLE_UNPRIVILEGED;

const std::array<sd_bus_vtable, 5> applicationMethods{{
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_ARGS("Activate", SD_BUS_ARGS("a{sv}", platform_data), SD_BUS_NO_RESULT, &showMethod,
                            applicationFlags),
    SD_BUS_METHOD_WITH_ARGS("Open", SD_BUS_ARGS("as", uris, "a{sv}", platform_data), SD_BUS_NO_RESULT, &showMethod,
                            applicationFlags),
    SD_BUS_METHOD_WITH_ARGS("ActivateAction", SD_BUS_ARGS("s", action_name, "av", parameter, "a{sv}", platform_data),
                            SD_BUS_NO_RESULT, &actionMethod, applicationFlags),
    SD_BUS_VTABLE_END,
}};

} // namespace

bool offerApplication(sd_bus* bus, ControlRequests& requests) {
    return sd_bus_add_object_vtable(bus, nullptr, ControlMessages::objectPath, applicationInterface,
                                    applicationMethods.data(), &requests) >= 0;
}

} // namespace platform::linux
