#pragma once

#include "Platform/Seam/Requests/ControlRequests.h"

#include <systemd/sd-bus.h>

namespace platform::linux {

/// Offers the program as desktops start applications: by a call on the message bus, which starts the program if it does
/// not run (Desktop Entry Specification, D-Bus Activation). It stays as long as the connection does. `requests` must
/// outlive that. False where the library refuses.
///
/// Object `/org/corvid/Tessel`, interface `org.freedesktop.Application`:
///
///     Activate(a{sv} platform_data)
///     Open(as uris, a{sv} platform_data)
///     ActivateAction(s action_name, av parameter, a{sv} platform_data)
///
/// The program shows itself for the first two, as it opens no files. The desktop entry has no actions, so none is
/// carried out.
[[nodiscard]] bool offerApplication(sd_bus* bus, ControlRequests& requests);

} // namespace platform::linux
