#pragma once

#include "Platform/Seam/Desktop/LoginItemService.h"
#include "Platform/Simulated/Trace.h"

#include <expected>
#include <optional>
#include <string>

namespace platform::simulated {

/// Trace: "register login item", "unregister login item".
class LoginItemService final : public platform::LoginItemService {
public:
    explicit LoginItemService(Trace& trace)
        : trace(trace) {}

    [[nodiscard]] LoginItemStatus status() override { return current; }

    std::expected<void, std::string> registerItem() override {
        trace.record("register login item");
        return change(requiresApproval ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled);
    }

    std::expected<void, std::string> unregisterItem() override {
        trace.record("unregister login item");
        return change(LoginItemStatus::notRegistered);
    }

    /// Changes the state from outside.
    void setStatus(LoginItemStatus status) { current = status; }

    /// Whether the user must approve before registering takes effect.
    bool requiresApproval = false;

    /// The failure of both operations, without an effect.
    std::optional<std::string> error;

private:
    std::expected<void, std::string> change(LoginItemStatus status) {
        if (error) {
            return std::unexpected(*error);
        }
        current = status;
        return {};
    }

    Trace& trace;
    LoginItemStatus current = LoginItemStatus::notRegistered;
};

} // namespace platform::simulated
