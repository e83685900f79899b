#include "Tests/Platform/Linux/SocketServer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace {

void require(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

} // namespace

SocketServer::Peer::~Peer() {
    ::close(socket);
}

SocketServer::SocketServer() {
    std::array<int, 2> ends{};
    require(::pipe2(ends.data(), O_CLOEXEC) == 0, "no pipe");
    wakeReading = ends[0];
    wakeWriting = ends[1];
}

SocketServer::~SocketServer() {
    ::close(wakeReading);
    ::close(wakeWriting);
}

void SocketServer::beginServing() {
    start();
    thread = std::thread([this] { serve(); });
}

void SocketServer::endServing() {
    {
        const std::scoped_lock lock(mutex);
        isEnding = true;
    }
    wake();
    thread.join();
    stop();
}

void SocketServer::stop() {
    const std::scoped_lock lock(mutex);
    peers.clear();
    if (listening >= 0) {
        ::close(std::exchange(listening, -1));
        ::unlink(path().c_str());
    }
    wake();
}

void SocketServer::start() {
    const std::scoped_lock lock(mutex);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path().copy(address.sun_path, sizeof address.sun_path - 1);
    listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    require(::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "cannot bind");
    require(::listen(listening, 16) == 0, "cannot listen");
    wake();
}

void SocketServer::sendRaw(std::string_view bytes) {
    const std::scoped_lock lock(mutex);
    for (const auto& peer : peers) {
        if (peer->hasSubscribed) {
            sendAll(*peer, bytes);
        }
    }
}

int SocketServer::connections() {
    const std::scoped_lock lock(mutex);
    return static_cast<int>(peers.size());
}

void SocketServer::sendAll(const Peer& peer, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(peer.socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

void SocketServer::wake() const {
    require(::write(wakeWriting, "x", 1) == 1, "cannot wake");
}

void SocketServer::serve() {
    while (true) {
        std::vector<pollfd> waiting{{.fd = wakeReading, .events = POLLIN, .revents = 0}};
        {
            const std::scoped_lock lock(mutex);
            if (isEnding) {
                return;
            }
            waiting.push_back({.fd = listening, .events = POLLIN, .revents = 0});
            for (const auto& peer : peers) {
                waiting.push_back({.fd = peer->socket, .events = POLLIN, .revents = 0});
            }
        }
        ::poll(waiting.data(), waiting.size(), -1);
        if (waiting[0].revents != 0) {
            std::array<char, 64> bytes{};
            static_cast<void>(::read(wakeReading, bytes.data(), bytes.size()));
        }
        const std::scoped_lock lock(mutex);
        accept();
        std::erase_if(peers, [this](const auto& peer) { return !read(*peer); });
    }
}

void SocketServer::accept() {
    while (listening >= 0) {
        const int socket = ::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) {
            return;
        }
        peers.push_back(std::make_unique<Peer>(socket));
    }
}

bool SocketServer::read(Peer& peer) {
    std::array<char, 65536> buffer{};
    const ssize_t count = ::recv(peer.socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count == 0) {
        return false;
    }
    peer.unread.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return handle(peer);
}
