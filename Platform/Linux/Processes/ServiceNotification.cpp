#include "Platform/Linux/Processes/ServiceNotification.h"

#include <systemd/sd-daemon.h>

namespace platform::linux {

void notifyReady(const std::string& status) {
    sd_notify(0, ("READY=1\nSTATUS=" + status).c_str());
}

void notifyStatus(const std::string& status) {
    sd_notify(0, ("STATUS=" + status).c_str());
}

} // namespace platform::linux
