#include "Platform/Linux/Control/ControlSocket.h"

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Control/ControlObject.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Log/Log.h"

#include <systemd/sd-id128.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <utility>
#include <vector>

namespace platform::linux {

/// One connection.
///
/// The D-Bus library takes messages of up to 128 MiB and has no setting for less. So it does not read from the
/// connection itself: what comes is counted and handed on through a pair of sockets, and only the answers go directly.
class ControlSocket::Peer {
public:
    Peer(MainLoop& mainLoop, FileDescriptor accepted, ControlRequests& requests)
        : connection(std::move(accepted)) {
        std::array<int, 2> ends{-1, -1};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) != 0) {
            return;
        }
        feed = FileDescriptor{ends[0]};
        FileDescriptor requestsEnd{ends[1]};
        // The library closes its descriptor.
        FileDescriptor answersEnd{::fcntl(connection.get(), F_DUPFD_CLOEXEC, 0)};
        sd_id128_t identity{};
        sd_bus* raw = nullptr;
        if (!answersEnd || sd_id128_randomize(&identity) < 0 || sd_bus_new(&raw) < 0) {
            return;
        }
        bus.reset(raw);
        if (sd_bus_set_fd(raw, requestsEnd.get(), answersEnd.get()) < 0) {
            return;
        }
        // They are the library's from here on.
        [[maybe_unused]] const std::array given{requestsEnd.release(), answersEnd.release()};
        isReady = sd_bus_set_server(raw, 1, identity) >= 0 && sd_bus_negotiate_fds(raw, 0) >= 0 &&
                  offerControl(raw, requests) && sd_bus_start(raw) >= 0;
        // The library sets the largest possible buffer. This size holds the longest reply.
        constexpr int unreadBytes = 256 << 10; // the kernel doubles it
        ::setsockopt(connection.get(), SOL_SOCKET, SO_SNDBUF, &unreadBytes, sizeof(unreadBytes));
        watch = mainLoop.watch(connection.get(), [this] { return hasMore; }, [this] { serve(); });
    }

    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;
    ~Peer() = default;

    [[nodiscard]] bool isAlive() const {
        std::uint64_t unsent = 0;
        return isReady && !isRefused && sd_bus_is_open(bus.get()) > 0 &&
               (sd_bus_get_n_queued_write(bus.get(), &unsent) < 0 || unsent == 0);
    }

private:
    /// One step in each turn of the loop: many requests at once must not keep it from everything else.
    void serve() {
        if (!hasMore) {
            handOn();
        }
        const int result = sd_bus_process(bus.get(), nullptr);
        hasMore = result > 0;
        isRefused = isRefused || result < 0;
    }

    void handOn() {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::recv(connection.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
        if (count < 0) {
            isRefused = isRefused || (errno != EAGAIN && errno != EINTR);
            return;
        }
        if (count == 0) {
            // Its earlier requests are still answered; then the library sees the end as well.
            ::shutdown(feed.get(), SHUT_WR);
            return;
        }
        const auto size = static_cast<std::size_t>(count);
        received += size;
        if (received > mostBytes || ::send(feed.get(), bytes.data(), size, MSG_DONTWAIT | MSG_NOSIGNAL) != count) {
            isRefused = true;
        }
    }

    FileDescriptor connection;
    FileDescriptor feed;
    OwnedBus bus;
    bool isReady = false;
    bool isRefused = false;
    /// The library may have unprocessed data.
    bool hasMore = false;
    std::size_t received = 0;
    std::unique_ptr<DescriptorWatch> watch;
};

ControlSocket::ControlSocket(MainLoop& mainLoop, SingleInstance& instance)
    : mainLoop(mainLoop)
    , instance(instance) {
}

ControlSocket::~ControlSocket() = default;

void ControlSocket::serve(ControlRequests& answering) {
    requests = &answering;
    turnEnd = mainLoop.atEndOfTurn([this] { tidy(); });
    listen();
    wasInFolder = instance.isInFolder();
    if (const std::string path = instance.folder(); !path.empty()) {
        folder = std::make_unique<FolderWatch>(mainLoop, std::vector{path}, "", settling, [this] { stayReachable(); });
    }
}

void ControlSocket::stayReachable() {
    lookingAgain.reset();
    const bool isReachable = instance.isReachable();
    if (isReachable && (instance.isInFolder() || !wasInFolder)) {
        return;
    }
    if (!isReachable) {
        watch.reset();
        pause.reset();
        const auto renewed = instance.renew();
        if (renewed) {
            listen();
        } else if (!isLost) {
            logToStandardError("the remote control has stopped: " + renewed.error().reason);
        }
        isLost = !renewed;
    }
    lookingAgain = mainLoop.schedule(mainLoop.now() + retry, retry / 2, [this] { stayReachable(); });
}

void ControlSocket::listen() {
    pause.reset();
    watch = mainLoop.watch(instance.listeningSocket(), [] { return false; }, [this] { accept(); });
}

void ControlSocket::accept() {
    FileDescriptor accepted{::accept4(instance.listeningSocket(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
    if (!accepted) {
        if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
            // The connection stays in the queue and keeps the socket readable: watching it further would loop without
            // end.
            pause = mainLoop.schedule(mainLoop.now() + std::chrono::seconds(1), std::chrono::seconds(1),
                                      [this] { listen(); });
        }
        return;
    }
    if (!isPeerOfSameUser(accepted.get())) {
        return;
    }
    if (peers.size() >= mostConnections) {
        peers.pop_front();
    }
    peers.emplace_back(mainLoop, std::move(accepted), *requests);
}

void ControlSocket::tidy() {
    // None of their callbacks is under way here, so they can be dropped.
    peers.remove_if([](const Peer& peer) { return !peer.isAlive(); });
    if (pause) {
        watch.reset();
    }
}

} // namespace platform::linux
