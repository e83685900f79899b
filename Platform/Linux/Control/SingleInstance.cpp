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
    using Taken = std::expected<std::unique_ptr<Place>, Hindrance>;

    static Taken take(const Session& session) {
        FileDescriptor folder = openSocketFolder(session, Missing::isMade);
        return folder ? takeIn(std::move(folder), session) : takeAbstract(session);
    }

    Place() = default;
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    ~Place() {
        // Whose lock is not there any more may find another one's files there.
        if (lock && FileIdentity::of(lock) == FileIdentity::of(folder, lockName)) {
            ::unlinkat(folder.get(), socketName.c_str(), 0);
            ::unlinkat(folder.get(), lockName.c_str(), 0);
        }
    }

    [[nodiscard]] int listeningSocket() const { return socket.get(); }

    [[nodiscard]] bool isInFolder() const { return static_cast<bool>(lock); }

    [[nodiscard]] bool isWhereItBelongs(const Session& session) const {
        if (!lock) {
            return !openSocketFolder(session, Missing::isMade);
        }
        const FileDescriptor now = openSocketFolder(session, Missing::isLeft);
        return now && FileIdentity::of(now, lockName) == FileIdentity::of(lock) &&
               FileIdentity::of(now, socketName) == socketFile;
    }

private:
    static Taken takeIn(FileDescriptor folder, const Session& session) {
        auto place = std::make_unique<Place>();
        place->socketName = socketFileName(session, socketEnding);
        place->lockName = socketFileName(session, lockEnding);
        FileDescriptor lock;
        do {
            constexpr mode_t mode = 0600;
            lock = FileDescriptor{
                ::openat(folder.get(), place->lockName.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, mode)};
            if (!lock) {
                return failure();
            }
            if (::flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
                return errno == EWOULDBLOCK ? taken() : failure();
            }
            // The one who had it before may have removed the file meanwhile; then this lock keeps nobody out.
        } while (FileIdentity::of(lock) != FileIdentity::of(folder, place->lockName));
        place->folder = std::move(folder);
        place->lock = std::move(lock);
        // What is left of a process that was killed.
        ::unlinkat(place->folder.get(), place->socketName.c_str(), 0);
        place->socket = newSocket();
        if (!listenAt(place->socket, SocketAddress::inFolder(place->folder, place->socketName))) {
            return failure();
        }
        place->socketFile = FileIdentity::of(place->folder, place->socketName);
        return place;
    }

    static Taken takeAbstract(const Session& session) {
        auto place = std::make_unique<Place>();
        place->socket = newSocket();
        const SocketAddress address = SocketAddress::abstract(session);
        if (listenAt(place->socket, address)) {
            return place;
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
    Place::Taken place = Place::take(session);
    if (!place) {
        return std::unexpected(std::move(place.error()));
    }
    return SingleInstance(session, *std::move(place));
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
    Place::Taken taken = Place::take(session);
    if (!taken) {
        return std::unexpected(std::move(taken.error()));
    }
    place = *std::move(taken);
    return {};
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
