#pragma once

#include "Platform/Seam/Requests/ControlRequests.h"

#include <systemd/sd-bus.h>

namespace platform::linux {

/// Offers the requests as an object on a connection, be it to a message bus or to a single peer; it stays as long as
/// the connection does. `requests` must outlive that. False where the library refuses.
///
/// Object `/org/corvid/Tessel`, interface `org.corvid.Tessel1`:
///
///     Open()
///     Status() -> a{sv}        status s, statusText s, version s, backend s, enabled b, trusted b,
///                              shortcuts a(sss) of action, keys and state, rules a{ss} of identifier and action
///     Perform(s action)
///     SetRule(s identifier, s action)
///     Quit()
///
/// A refusal is an error: `org.freedesktop.DBus.Error.InvalidArgs`, or `Paused`, `NotTrusted`, `NoWindow`, `Failed`
/// below `org.corvid.Tessel1.Error`, with a sentence as its message.
[[nodiscard]] bool offerControl(sd_bus* bus, ControlRequests& requests);

} // namespace platform::linux
