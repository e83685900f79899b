#pragma once

#include <expected>
#include <string>

namespace platform {

/// Whether this program starts when the user logs in.
enum class LoginItemStatus {
    notRegistered = 0,
    enabled = 1,
    /// Registered, but switched off by the user or the system elsewhere.
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

    /// The state that holds now, read afresh: it may have been changed from outside.
    [[nodiscard]] virtual LoginItemStatus status() = 0;

    /// Puts this program on the list, or takes it off; nothing to do is success. The error is a sentence that says what
    /// went wrong, in the user's language. Success does not mean `enabled`: the user may have to approve.
    virtual std::expected<void, std::string> registerItem() = 0;
    virtual std::expected<void, std::string> unregisterItem() = 0;
};

} // namespace platform
