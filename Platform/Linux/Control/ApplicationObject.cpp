#include "Platform/Linux/Control/ApplicationObject.h"

#include "Platform/Linux/Control/ControlMessages.h"

#include <array>

namespace platform::linux {

namespace {

constexpr const char* interfaceName = "org.freedesktop.Application";

/// What the desktop tells of itself (a startup id, an activation token) is for windows that the desktop places.
int showMethod(sd_bus_message* call, void* data, sd_bus_error* error) {
    const auto shown = static_cast<ControlRequests*>(data)->open();
    if (!shown) {
        return sd_bus_error_set(error, ControlMessages::errorName(shown.error().kind), shown.error().reason.c_str());
    }
    return sd_bus_reply_method_return(call, nullptr);
}

int actionMethod(sd_bus_message* /*call*/, void* /*data*/, sd_bus_error* error) {
    return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "there is no such action");
}

// The bus is the user's own.
constexpr std::uint64_t flags = SD_BUS_VTABLE_UNPRIVILEGED;

const std::array<sd_bus_vtable, 5> methods{{
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_ARGS("Activate", SD_BUS_ARGS("a{sv}", platform_data), SD_BUS_NO_RESULT, &showMethod, flags),
    SD_BUS_METHOD_WITH_ARGS("Open", SD_BUS_ARGS("as", uris, "a{sv}", platform_data), SD_BUS_NO_RESULT, &showMethod,
                            flags),
    SD_BUS_METHOD_WITH_ARGS("ActivateAction", SD_BUS_ARGS("s", action_name, "av", parameter, "a{sv}", platform_data),
                            SD_BUS_NO_RESULT, &actionMethod, flags),
    SD_BUS_VTABLE_END,
}};

} // namespace

bool offerApplication(sd_bus* bus, ControlRequests& requests) {
    return sd_bus_add_object_vtable(bus, nullptr, ControlMessages::objectPath, interfaceName, methods.data(),
                                    &requests) >= 0;
}

} // namespace platform::linux
