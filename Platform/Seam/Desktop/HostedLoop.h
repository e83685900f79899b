#pragma once

#include <cstdint>

namespace platform {

/// An event loop that can run within another one. Main thread only.
class HostedLoop {
public:
    /// The remaining work after a turn.
    enum class Outlook : std::uint8_t {
        /// Nothing until the descriptor is readable.
        idle,
        /// Perhaps further work, for which the descriptor does not become readable.
        unfinished,
        ended,
    };

    HostedLoop() = default;
    HostedLoop(const HostedLoop&) = delete;
    HostedLoop& operator=(const HostedLoop&) = delete;
    virtual ~HostedLoop() = default;

    /// Readable when there is work.
    [[nodiscard]] virtual int descriptor() const = 0;

    /// Handles the available work without waiting, and prepares for the wait. Call it when the descriptor is readable,
    /// each time before the other loop waits, and, after `unfinished`, again once the other loop has had its turn. A
    /// nested call does nothing and returns idle.
    [[nodiscard]] virtual Outlook serve() = 0;
};

} // namespace platform
