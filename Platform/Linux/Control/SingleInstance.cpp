#include "Platform/Linux/Control/SingleInstance.h"

#include "Platform/Linux/Control/SocketAddress.h"
#include "Platform/Linux/FileIdentity.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

namespace platform::linux {

namespace {

constexpr const char* lockEnding = ".lock";

using Hindrance = SingleInstance::Hindrance;

FileDescriptor newSocket() {
    return FileDescriptor{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
}

bool listenAt(const FileDescriptor& socket, const SocketAddress& address) {
    // The kernel refuses further connections until these are accepted.
    constexpr int mostWaiting = 16;
    return socket && ::bind(socket.get(), address.get(), address.size()) == 0 &&
           ::listen(socket.get(), mostWaiting) == 0;
}

std::unexpected<Hindrance> failure() {
    return std::unexpected(
        Hindrance{.reason = "cannot make the control socket: " + std::generic_category().message(errno)});
}

std::unexpected<Hindrance> taken() {
    return std::unexpected(Hindrance{.isTaken = true, .reason = "already running in this session, but not answering"});
}

/// The user of the process at the other end.
std::optional<uid_t> peerUser(int descriptor) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    const bool isKnown = ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && size == sizeof(peer);
    return isKnown ? std::optional(peer.uid) : std::nullopt;
}

} // namespace

/// The socket and what keeps others from it. In a folder, the files go with it.
class SingleInstance::Place {
public:
    using Taken = std::expected<void, Hindrance>;

    /// Once. Where it fails, this is to be dropped.
    [[nodiscard]] Taken take(const Session& wanted) {
        folder = openSocketFolder(wanted, Missing::isMade);
        return folder ? takeInFolder(wanted) : takeAbstract(wanted);
    }

    Place() = default;
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    ~Place() {
        // Once the lock file has been removed, the files there may be another process's.
        if (lock && FileIdentity::of(lock) == FileIdentity::of(folder, lockName)) {
            ::unlinkat(folder.get(), socketName.c_str(), 0);
            ::unlinkat(folder.get(), lockName.c_str(), 0);
        }
    }

    [[nodiscard]] int listeningSocket() const { return socket.get(); }

    [[nodiscard]] bool isInFolder() const { return static_cast<bool>(lock); }

    [[nodiscard]] bool isWhereItBelongs(const Session& wanted) const {
        if (!lock) {
            return !openSocketFolder(wanted, Missing::isMade);
        }
        const FileDescriptor now = openSocketFolder(wanted, Missing::isLeft);
        return now && FileIdentity::of(now, lockName) == FileIdentity::of(lock) &&
               FileIdentity::of(now, socketName) == socketFile;
    }

private:
    Taken takeInFolder(const Session& wanted) {
        socketName = socketFileName(wanted, socketEnding);
        lockName = socketFileName(wanted, lockEnding);
        FileDescriptor taking;
        do {
            constexpr mode_t mode = 0600;
            taking = FileDescriptor{
                ::openat(folder.get(), lockName.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, mode)};
            if (!taking) {
                return failure();
            }
            if (::flock(taking.get(), LOCK_EX | LOCK_NB) != 0) {
                return errno == EWOULDBLOCK ? taken() : failure();
            }
            // The former owner may have removed the file meanwhile; then this lock excludes nobody.
        } while (FileIdentity::of(taking) != FileIdentity::of(folder, lockName));
        lock = std::move(taking);
        // A process that was killed leaves its socket behind.
        ::unlinkat(folder.get(), socketName.c_str(), 0);
        socket = newSocket();
        if (!listenAt(socket, SocketAddress::inFolder(folder, socketName))) {
            return failure();
        }
        socketFile = FileIdentity::of(folder, socketName);
        return {};
    }

    Taken takeAbstract(const Session& wanted) {
        socket = newSocket();
        const SocketAddress address = SocketAddress::abstract(wanted);
        if (listenAt(socket, address)) {
            return {};
        }
        if (errno != EADDRINUSE) {
            return failure();
        }
        const FileDescriptor probe = newSocket();
        const bool isConnected = probe && ::connect(probe.get(), address.get(), address.size()) == 0;
        const std::optional<uid_t> user = isConnected ? peerUser(probe.get()) : std::nullopt;
        if (user && *user != ::getuid()) {
            return std::unexpected(Hindrance{.reason = "a process of another user (uid " + std::to_string(*user) +
                                                       ") has taken the name of this session's control socket; "
                                                       "XDG_RUNTIME_DIR names no folder to keep it in"});
        }
        return taken();
    }

    FileDescriptor folder;
    FileDescriptor lock;
    FileDescriptor socket;
    std::string socketName;
    std::string lockName;
    std::optional<FileIdentity> socketFile;
};

std::expected<SingleInstance, Hindrance> SingleInstance::acquire(const Session& session) {
    auto place = std::make_unique<Place>();
    if (Place::Taken taken = place->take(session); !taken) {
        return std::unexpected(std::move(taken.error()));
    }
    return SingleInstance(session, std::move(place));
}

SingleInstance::SingleInstance(Session session, std::unique_ptr<Place> place)
    : session(std::move(session))
    , place(std::move(place)) {
}

SingleInstance::SingleInstance(SingleInstance&&) noexcept = default;
SingleInstance& SingleInstance::operator=(SingleInstance&&) noexcept = default;
SingleInstance::~SingleInstance() = default;

int SingleInstance::listeningSocket() const {
    return place ? place->listeningSocket() : -1;
}

bool SingleInstance::isReachable() const {
    return place && place->isWhereItBelongs(session);
}

bool SingleInstance::isInFolder() const {
    return place && place->isInFolder();
}

std::expected<void, Hindrance> SingleInstance::renew() {
    place.reset();
    auto renewed = std::make_unique<Place>();
    Place::Taken taken = renewed->take(session);
    if (taken) {
        place = std::move(renewed);
    }
    return taken;
}

std::string SingleInstance::folder() const {
    return socketFolder(session);
}

std::expected<FileDescriptor, int> SingleInstance::connect(const Session& session) {
    const FileDescriptor folder = openSocketFolder(session, Missing::isLeft);
    FileDescriptor socket = newSocket();
    const SocketAddress address = folder ? SocketAddress::inFolder(folder, socketFileName(session, socketEnding))
                                         : SocketAddress::abstract(session);
    if (!socket || ::connect(socket.get(), address.get(), address.size()) != 0) {
        return std::unexpected(errno);
    }
    if (!isPeerOfSameUser(socket.get())) {
        return std::unexpected(EPERM);
    }
    return socket;
}

bool isPeerOfSameUser(int descriptor) {
    return peerUser(descriptor) == ::getuid();
}

} // namespace platform::linux
