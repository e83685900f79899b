#include "Platform/Linux/Control/SessionClaim.h"

#include "Platform/Linux/Control/ControlClient.h"

#include <chrono>
#include <thread>
#include <utility>

namespace platform::linux {

std::expected<SingleInstance, SessionRefusal> claimSession(const Session& session) {
    const auto deadline = std::chrono::steady_clock::now() + ControlClient::patience;
    for (;;) {
        std::expected<SingleInstance, SingleInstance::Refusal> instance = SingleInstance::acquire(session);
        if (instance) {
            return *std::move(instance);
        }
        if (!instance.error().isTaken) {
            return std::unexpected(SessionRefusal{.reason = std::move(instance.error().reason)});
        }
        const ControlAnswer<void> answer = ControlClient::ofSession(session).open();
        const bool isGone = !answer && answer.error().kind == ControlRefusal::Kind::notRunning;
        if (!isGone || std::chrono::steady_clock::now() >= deadline) {
            return std::unexpected(
                SessionRefusal{.asked = answer.has_value(), .reason = std::move(instance.error().reason)});
        }
        // Between taking the right and listening, or between closing the connections and the socket.
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

} // namespace platform::linux
