#pragma once

#include "Platform/Linux/Control/Session.h"
#include "Platform/Linux/Files/FileDescriptor.h"

#include <expected>
#include <memory>
#include <string>

namespace platform::linux {

/// The right to be the only Tessel of a session, held while the object lives, and the socket of its holder.
///
/// Both are files in the folder "tessel" of the session's runtime folder, named after the display: a socket, and beside
/// it a lock (flock(2)), which the kernel frees when the process ends in any way. So a socket that was left behind has
/// no owner, and the next holder replaces it. The folder must be the user's own and closed to all others, so that
/// neither another user nor a sandbox gets there.
///
/// Without such a folder, both are an abstract Unix socket's name (unix(7)), made of the user and the display: it is
/// freed with the process, too, but every process in the machine's network namespace can take it.
///
/// Main thread only.
class SingleInstance {
public:
    /// Why the right cannot be had.
    struct Refusal {
        /// Whether the holder may be a Tessel of this user, which can be asked.
        bool isTaken = false;
        /// A sentence without its full stop.
        std::string reason;
    };

    /// Takes the right for a session.
    [[nodiscard]] static std::expected<SingleInstance, Refusal> acquire(const Session& session);

    /// A connection to the holder of a session's right, not blocking. The error is an errno: ECONNREFUSED or ENOENT
    /// without a holder, EPERM if a process of another user has its name, EAGAIN if the holder does not accept the
    /// connections that wait already.
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

    /// Takes the right again, at the place where other programs search for it now. The listening socket is another one
    /// afterwards.
    [[nodiscard]] std::expected<void, Refusal> renew();

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
