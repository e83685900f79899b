#pragma once

namespace platform {

/// An event loop that can turn within another one. Main thread only.
class HostedLoop {
public:
    HostedLoop() = default;
    HostedLoop(const HostedLoop&) = delete;
    HostedLoop& operator=(const HostedLoop&) = delete;
    virtual ~HostedLoop() = default;

    /// Readable when there is something to serve.
    [[nodiscard]] virtual int descriptor() const = 0;

    /// Serves what there is to serve without waiting, and prepares to be waited for: to be called when the descriptor
    /// is readable, and each time before the other loop waits. False once the loop has ended. Does nothing while it is
    /// being served already.
    [[nodiscard]] virtual bool serve() = 0;
};

} // namespace platform
