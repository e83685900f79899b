#include "Platform/Linux/Processes/ServiceNotification.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <string>

namespace platform::linux {
namespace {

/// A service manager's socket for notifications, named in the environment as in sd_notify(3).
class ServiceManager {
public:
    ServiceManager()
        : descriptor(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        const std::string name = "tessel-tests/" + std::to_string(getpid());
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::ranges::copy(name, std::begin(address.sun_path) + 1);
        const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
        EXPECT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), size), 0);
        setenv("NOTIFY_SOCKET", ("@" + name).c_str(), 1);
    }

    ServiceManager(const ServiceManager&) = delete;
    ServiceManager& operator=(const ServiceManager&) = delete;

    ~ServiceManager() {
        unsetenv("NOTIFY_SOCKET");
        close(descriptor);
    }

    /// The message that has arrived, or an empty text.
    [[nodiscard]] std::string received() const {
        std::array<char, 256> buffer{};
        const auto length = recv(descriptor, buffer.data(), buffer.size(), MSG_DONTWAIT);
        return length > 0 ? std::string(buffer.data(), static_cast<std::size_t>(length)) : std::string();
    }

private:
    int descriptor;
};

TEST(ServiceNotification, ReportsThatTheProgramIsReadyWithItsStatus) {
    const ServiceManager manager;
    notifyReady("Active");
    EXPECT_EQ(manager.received(), "READY=1\nSTATUS=Active");
}

TEST(ServiceNotification, ReportsALaterStatusAlone) {
    const ServiceManager manager;
    notifyStatus("Paused");
    EXPECT_EQ(manager.received(), "STATUS=Paused");
}

TEST(ServiceNotification, WithoutAServiceManagerNothingHappens) {
    const ServiceManager manager;
    unsetenv("NOTIFY_SOCKET");
    notifyReady("Active");
    notifyStatus("Paused");
    EXPECT_EQ(manager.received(), "");
}

} // namespace
} // namespace platform::linux
