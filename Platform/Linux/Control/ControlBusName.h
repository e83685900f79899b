#pragma once

#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Seam/Requests/ControlRequests.h"

namespace platform::linux {

/// Offers the requests on the user's message bus, both under our own interface and under the desktops' interface for
/// applications, and owns the name `org.corvid.Tessel` there whenever there is a bus.
///
/// A bus may serve several displays, each with a program of its own. The first to request the name owns it; the others
/// queue for it, and the next one gets it when the first ends. The command line does not depend on that: it uses the
/// program of its own display (see `ControlSocket`).
class ControlBusName final : public SessionBus::Listener {
public:
    /// `requests` must outlive the bus.
    ControlBusName(SessionBus& bus, ControlRequests& requests);

    void busArrived(sd_bus* bus) override;
    void busLeft() override;

private:
    ControlRequests& requests;
};

} // namespace platform::linux
