#pragma once

#include <string>

namespace platform::linux {

/// Tells the service manager that started this process, if any, that it is ready, and what state it is in
/// (sd_notify(3)). Nothing happens where nobody listens.
void notifyReady(const std::string& status);

/// Tells the service manager another state.
void notifyStatus(const std::string& status);

} // namespace platform::linux
