#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/LaterWork.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace platform::compositor {

/// Hot keys by the Wayland protocols for them: `vicinae-hotkey-v1`, or `xx-hotkey-v1` where only that is offered. The
/// compositor decides who gets a combination, tells a press once, and forgets everything with the connection. A key is
/// named by its symbol in any of the user's layouts; locks are ignored. Main thread only.
class ProtocolHotKeys {
public:
    /// The compositor's answer to a request.
    struct Answer {
        enum class Kind : std::uint8_t {
            bound,
            denied,
            /// It has not come in time, or the connection is gone.
            none,
        };

        Kind kind = Kind::none;
        /// The compositor's own words to the user on a denial, in its own language; may be empty.
        std::string message = {};
    };

    /// Called in turns of the loop of their own.
    struct Handlers {
        std::function<void(std::uint64_t number)> pressed;
        /// The compositor has taken it back; it is not held any more.
        std::function<void(std::uint64_t number)> revoked;
        /// The connection is gone, and all keys with it. It may destroy this object.
        std::function<void()> gone;
    };

    /// `socket`: the path of the compositor's socket. `applicationId`: of this program, for the compositor's user. Null
    /// if nothing listens there, Wayland's library is not installed, or neither protocol is offered by the deadline.
    /// `mainLoop` must outlive it.
    [[nodiscard]] static std::unique_ptr<ProtocolHotKeys> open(linux::MainLoop& mainLoop, const std::string& socket,
                                                               const std::string& applicationId, Handlers handlers,
                                                               Instant deadline);

    ProtocolHotKeys(const ProtocolHotKeys&) = delete;
    ProtocolHotKeys& operator=(const ProtocolHotKeys&) = delete;
    /// Gives all keys back.
    ~ProtocolHotKeys();

    /// Requests a combination, under a number that no other one has meanwhile, and waits for the answer. `keysym`: of
    /// the key without Shift. `modifiers`: 1 Shift, 2 Control, 4 Alt, 8 Super. One that is not bound is given up.
    [[nodiscard]] Answer bind(std::uint64_t number, std::uint32_t keysym, std::uint32_t modifiers,
                              const std::string& description, Instant deadline);

    /// Gives a combination back. An unknown number is ignored.
    void release(std::uint64_t number);

private:
    class Connection;

    explicit ProtocolHotKeys(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> connection;
};

} // namespace platform::compositor
