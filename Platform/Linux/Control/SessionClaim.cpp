#include "Platform/Linux/Control/SessionClaim.h"

#include "Platform/Linux/Control/ControlClient.h"

#include <chrono>
#include <optional>
#include <thread>

namespace platform::linux {

std::expected<SingleInstance, AlreadyRunning> claimSession(const std::string& session) {
    const auto deadline = std::chrono::steady_clock::now() + ControlClient::patience;
    do {
        if (std::optional<SingleInstance> instance = SingleInstance::acquire(session)) {
            return *std::move(instance);
        }
        const ControlAnswer<void> answer = ControlClient::ofSession(session).open();
        if (answer || answer.error().kind != ControlRefusal::Kind::notRunning) {
            return std::unexpected(AlreadyRunning{.asked = answer.has_value()});
        }
        // Between binding and listening, or between closing the connections and the socket.
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    } while (std::chrono::steady_clock::now() < deadline);
    return std::unexpected(AlreadyRunning{});
}

} // namespace platform::linux
