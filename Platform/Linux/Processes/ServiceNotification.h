#pragma once

#include <string>

namespace platform::linux {

/// Notifies the service manager that started this process, if any, that it is ready, with its status (sd_notify(3)).
/// Without effect if none listens.
void notifyReady(const std::string& status);

/// Sends the service manager another status.
void notifyStatus(const std::string& status);

} // namespace platform::linux
