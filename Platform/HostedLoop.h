#pragma once

#include <cstdint>

namespace platform {

/// An event loop that can turn within another one. Main thread only.
class HostedLoop {
public:
    /// The work that a turn has left to do.
    enum class Outlook : std::uint8_t {
        /// Nothing until the descriptor is readable.
        idle,
        /// Perhaps more to serve at once, of which the descriptor does not tell.
        unfinished,
        ended,
    };

    HostedLoop() = default;
    HostedLoop(const HostedLoop&) = delete;
    HostedLoop& operator=(const HostedLoop&) = delete;
    virtual ~HostedLoop() = default;

    /// Readable when there is something to serve.
    [[nodiscard]] virtual int descriptor() const = 0;

    /// Serves what there is to serve without waiting, and prepares to be waited for: to be called when the descriptor
    /// is readable, each time before the other loop waits, and again, once that has had its turn, after `unfinished`.
    /// Does nothing while it is being served already, and is idle then.
    [[nodiscard]] virtual Outlook serve() = 0;
};

} // namespace platform
