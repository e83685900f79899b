#include "Platform/Linux/Control/ControlBusName.h"

#include "Platform/Linux/Control/ApplicationObject.h"
#include "Platform/Linux/Control/ControlMessages.h"
#include "Platform/Linux/Control/ControlObject.h"

namespace platform::linux {

namespace {} // namespace

ControlBusName::ControlBusName(SessionBus& bus, ControlRequests& requests)
    : Listener(bus)
    , requests(requests) {
}

void ControlBusName::busArrived(sd_bus* bus) {
    // The object comes first: a client may call it as soon as it sees the name.
    if (offerControl(bus, requests) && offerApplication(bus, requests)) {
        sd_bus_request_name_async(bus, nullptr, ControlMessages::busName, SD_BUS_NAME_QUEUE, &ignoreReply, nullptr);
    }
}

void ControlBusName::busLeft() {
    // Object and name went with the connection.
}

} // namespace platform::linux
