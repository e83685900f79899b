#pragma once

#include <expected>
#include <string>

namespace platform {

/// Whether this program starts when the user logs in.
enum class LoginItemStatus {
    notRegistered = 0,
    enabled = 1,
    /// Registered, but disabled elsewhere by the user or the system.
    requiresApproval = 2,
    /// The desktop has no such facility, or does not find this program.
    notFound = 3,
};

/// The desktop's list of programs that start at login, as far as it concerns this one. Main thread only.
class LoginItemService {
public:
    LoginItemService() = default;
    LoginItemService(const LoginItemService&) = delete;
    LoginItemService& operator=(const LoginItemService&) = delete;
    virtual ~LoginItemService() = default;

    /// The present state, read again each time: another program may have changed it.
    [[nodiscard]] virtual LoginItemStatus status() = 0;

    /// Adds this program to the list, or removes it; if nothing changes, that is success. The error is a sentence with
    /// the cause, in the user's language. Success does not mean `enabled`: the user may have to approve.
    virtual std::expected<void, std::string> registerItem() = 0;
    virtual std::expected<void, std::string> unregisterItem() = 0;
};

} // namespace platform
