#pragma once

#include "Platform/Seam/Desktop/MainActor.h"

#include <systemd/sd-bus.h>

#include <functional>

namespace platform::kwin {

/// Reads the bus, and no other source of the event loop, until the condition holds; returns whether it does. Ends at
/// the deadline, and when `bus` has become null meanwhile. Must not be called while the same bus is being read.
bool waitOnBus(sd_bus* const& bus, const MainActor& clock, const std::function<bool()>& condition, Instant deadline);

} // namespace platform::kwin
