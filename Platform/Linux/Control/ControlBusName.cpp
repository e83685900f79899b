#include "Platform/Linux/Control/ControlBusName.h"

#include "Platform/Linux/Control/ApplicationObject.h"
#include "Platform/Linux/Control/ControlMessages.h"
#include "Platform/Linux/Control/ControlObject.h"

namespace platform::linux {

namespace {

/// Whether the name came at once or later, or was refused: the program works on. Without a callback the library would
/// take a refusal as the end of the connection.
int ignoreAnswer(sd_bus_message* /*reply*/, void* /*data*/, sd_bus_error* /*error*/) {
    return 0;
}

} // namespace

ControlBusName::ControlBusName(SessionBus& bus, ControlRequests& requests)
    : Listener(bus)
    , requests(requests) {
}

void ControlBusName::busArrived(sd_bus* bus) {
    // First the object: whoever sees the name may call at once.
    if (offerControl(bus, requests) && offerApplication(bus, requests)) {
        sd_bus_request_name_async(bus, nullptr, ControlMessages::busName, SD_BUS_NAME_QUEUE, &ignoreAnswer, nullptr);
    }
}

void ControlBusName::busLeft() {
    // Object and name went with the connection.
}

} // namespace platform::linux
