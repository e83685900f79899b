#pragma once

#include "Platform/Linux/Control/Session.h"
#include "Platform/Linux/FileDescriptor.h"

#include <expected>
#include <memory>
#include <string>

namespace platform::linux {

/// The right to be the only Tessel of a session, held for as long as the object lives, and a socket at which its holder
/// can be reached.
///
/// Both are files in the folder "tessel" of the session's runtime folder, named after the display: a socket, and beside
/// it a lock (flock(2)), which the kernel frees with the process, however that ends. So a socket that was left behind
/// is nobody's, and the next holder replaces it. Only a folder that is the user's own and open to nobody else counts,
/// so that neither another user nor a sandbox gets there.
///
/// Where there is no such folder, both are an abstract Unix socket's name (unix(7)), made of the user and the display:
/// that goes with the process, too, but everybody on the machine's network can take it.
///
/// Main thread only.
class SingleInstance {
public:
    /// Why the right cannot be had.
    struct Hindrance {
        /// Whether the holder may be a Tessel of this user, which can be asked.
        bool isTaken = false;
        /// A sentence without its full stop.
        std::string reason;
    };

    /// Takes the right for a session.
    [[nodiscard]] static std::expected<SingleInstance, Hindrance> acquire(const Session& session);

    /// A connection to the holder of a session's right, not blocking. The error is an errno: ECONNREFUSED or ENOENT
    /// where nobody has the right, EPERM where a process of another user has its name, EAGAIN where the holder does not
    /// listen to those who wait already.
    [[nodiscard]] static std::expected<FileDescriptor, int> connect(const Session& session);

    SingleInstance(SingleInstance&&) noexcept;
    SingleInstance& operator=(SingleInstance&&) noexcept;
    ~SingleInstance();

    /// The listening socket, not blocking; negative while `renew` does not get one.
    [[nodiscard]] int listeningSocket() const;

    /// Whether `connect` leads here. Somebody may have emptied the runtime folder, and the system takes it away when it
    /// takes the user's last session for ended.
    [[nodiscard]] bool isReachable() const;

    [[nodiscard]] bool isInFolder() const;

    /// Takes the right anew, in the place where others look for it now. The listening socket is another afterwards.
    [[nodiscard]] std::expected<void, Hindrance> renew();

    /// The folder whose changes may have made this unreachable, or reachable in another place; empty: none.
    [[nodiscard]] std::string folder() const;

private:
    class Place;

    SingleInstance(Session session, std::unique_ptr<Place> place);

    Session session;
    std::unique_ptr<Place> place;
};

/// Whether the process at the other end of a connected Unix socket belongs to this user (SO_PEERCRED in unix(7)).
[[nodiscard]] bool isPeerOfSameUser(int descriptor);

} // namespace platform::linux
