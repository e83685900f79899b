#include "Tests/Platform/Hyprland/FakeHyprland.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace {

void require(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

void sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

int listenAt(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    require(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "cannot bind");
    require(::listen(socket, 10) == 0, "cannot listen");
    return socket;
}

} // namespace

struct FakeHyprland::Peer {
    Peer(int socket, bool isForEvents)
        : socket(socket)
        , isForEvents(isForEvents) {}

    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    ~Peer() { ::close(socket); }

    int socket;
    bool isForEvents;
    bool isAnswered = false;
    /// Of an endless answer, in bytes.
    std::size_t unsent = 0;
    std::string request;
};

FakeHyprland::FakeHyprland() {
    std::array<int, 2> ends{};
    require(::pipe2(ends.data(), O_CLOEXEC) == 0, "no pipe");
    wakeReading = ends[0];
    wakeWriting = ends[1];
    start();
    thread = std::thread([this] { serve(); });
}

FakeHyprland::~FakeHyprland() {
    {
        const std::scoped_lock lock(mutex);
        isEnding = true;
    }
    wake();
    thread.join();
    stop();
    ::close(wakeReading);
    ::close(wakeWriting);
}

void FakeHyprland::behave(Manners newManners) {
    const std::scoped_lock lock(mutex);
    manners = newManners;
}

void FakeHyprland::speak(Configuration newConfiguration) {
    const std::scoped_lock lock(mutex);
    configuration = newConfiguration;
}

void FakeHyprland::stop() {
    const std::scoped_lock lock(mutex);
    peers.clear();
    for (int* listening : {&requestListener, &eventListener}) {
        if (*listening >= 0) {
            ::close(std::exchange(*listening, -1));
        }
    }
    std::filesystem::remove_all(facts().runtimeFolder + "/hypr/" + instance);
    wake();
}

void FakeHyprland::start(const std::string& signature) {
    const std::scoped_lock lock(mutex);
    instance = signature;
    const std::string place = facts().runtimeFolder + "/hypr/" + instance;
    std::filesystem::create_directories(place);
    std::ofstream(place + "/hyprland.lock") << ::getpid() << "\nwayland-7\n";
    requestListener = listenAt(platform::hyprland::requestSocket(place));
    eventListener = listenAt(platform::hyprland::eventSocket(place));
    wake();
}

void FakeHyprland::setWindows(std::vector<Window> present) {
    const std::scoped_lock lock(mutex);
    windows = std::move(present);
}

void FakeHyprland::setMonitors(std::vector<Monitor> present) {
    const std::scoped_lock lock(mutex);
    monitors = std::move(present);
}

void FakeHyprland::setBinds(std::vector<Bind> present) {
    const std::scoped_lock lock(mutex);
    bindings = std::move(present);
}

void FakeHyprland::setGlobalShortcuts(std::string present) {
    const std::scoped_lock lock(mutex);
    globalShortcuts = std::move(present);
}

void FakeHyprland::setFocused(std::uint64_t address) {
    const std::scoped_lock lock(mutex);
    focused = address;
}

void FakeHyprland::setBorder(int width) {
    const std::scoped_lock lock(mutex);
    border = width;
}

FakeHyprland::Window FakeHyprland::window(std::uint64_t address) {
    const std::scoped_lock lock(mutex);
    const Window* found = find(address);
    return found == nullptr ? Window{} : *found;
}

std::vector<FakeHyprland::Bind> FakeHyprland::binds() {
    const std::scoped_lock lock(mutex);
    return bindings;
}

void FakeHyprland::open(const Window& window) {
    const std::scoped_lock lock(mutex);
    windows.push_back(window);
    send("openwindow>>" + writtenAddress(window.address).substr(2) + ",1," + window.appId + "," + window.title);
}

void FakeHyprland::close(std::uint64_t address) {
    const std::scoped_lock lock(mutex);
    std::erase_if(windows, [&](const Window& each) { return each.address == address; });
    send("closewindow>>" + writtenAddress(address).substr(2));
}

void FakeHyprland::send(const std::string& line) {
    sendRaw(line + "\n");
}

void FakeHyprland::sendRaw(std::string_view bytes) {
    const std::scoped_lock lock(mutex);
    for (const auto& peer : peers) {
        if (peer->isForEvents) {
            sendAll(peer->socket, bytes);
        }
    }
}

int FakeHyprland::listeners() {
    const std::scoped_lock lock(mutex);
    return static_cast<int>(std::ranges::count_if(peers, [](const auto& each) { return each->isForEvents; }));
}

std::vector<std::string> FakeHyprland::takeOrders() {
    const std::scoped_lock lock(mutex);
    return std::exchange(orders, {});
}

int FakeHyprland::readings() {
    const std::scoped_lock lock(mutex);
    return windowReadings;
}

void FakeHyprland::onOrder(std::function<void(const std::string&)> function) {
    const std::scoped_lock lock(mutex);
    reported = std::move(function);
}

void FakeHyprland::wake() const {
    require(::write(wakeWriting, "x", 1) == 1, "cannot wake");
}

void FakeHyprland::serve() {
    while (true) {
        std::vector<pollfd> waiting{{.fd = wakeReading, .events = POLLIN, .revents = 0}};
        {
            const std::scoped_lock lock(mutex);
            if (isEnding) {
                return;
            }
            waiting.push_back({.fd = requestListener, .events = POLLIN, .revents = 0});
            waiting.push_back({.fd = eventListener, .events = POLLIN, .revents = 0});
            for (const auto& peer : peers) {
                // One that was not answered stays until the other side is gone.
                const short events = peer->unsent > 0 ? POLLOUT : peer->isAnswered ? 0 : POLLIN;
                waiting.push_back({.fd = peer->socket, .events = events, .revents = 0});
            }
        }
        ::poll(waiting.data(), waiting.size(), -1);
        if (waiting[0].revents != 0) {
            std::array<char, 64> bytes{};
            static_cast<void>(::read(wakeReading, bytes.data(), bytes.size()));
        }
        const std::scoped_lock lock(mutex);
        accept(requestListener, false);
        accept(eventListener, true);
        std::erase_if(peers, [this](const auto& peer) { return !read(*peer); });
    }
}

void FakeHyprland::accept(int listening, bool isForEvents) {
    while (listening >= 0) {
        const int socket = ::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) {
            return;
        }
        peers.push_back(std::make_unique<Peer>(socket, isForEvents));
    }
}

bool FakeHyprland::read(Peer& peer) {
    std::array<char, 4096> buffer{};
    while (true) {
        const ssize_t count = ::recv(peer.socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (count > 0) {
            peer.request.append(buffer.data(), static_cast<std::size_t>(count));
            continue;
        }
        if (count < 0) {
            pollfd state{.fd = peer.socket, .events = 0, .revents = 0};
            return ::poll(&state, 1, 0) == 0;
        }
        if (peer.isForEvents) {
            return false;
        }
        if (!std::exchange(peer.isAnswered, true)) {
            answer(peer);
        }
        if (peer.unsent > 0) {
            return flood(peer);
        }
        pollfd state{.fd = peer.socket, .events = 0, .revents = 0};
        return manners == Manners::silent && ::poll(&state, 1, 0) == 0;
    }
}

// Sends only what the socket accepts: the client may read no more before its own thread, which needs the mutex, goes
// on.
bool FakeHyprland::flood(Peer& peer) {
    const std::string block(std::size_t{1} << 16U, '[');
    while (peer.unsent > 0) {
        const ssize_t sent = ::send(peer.socket, block.data(), block.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0) {
            return errno == EAGAIN;
        }
        peer.unsent -= std::min(peer.unsent, static_cast<std::size_t>(sent));
    }
    return false;
}

void FakeHyprland::answer(Peer& peer) {
    switch (manners) {
    case Manners::good:
        sendAll(peer.socket, result(peer.request));
        break;
    case Manners::unknowing:
        sendAll(peer.socket, "unknown request");
        break;
    case Manners::malformed:
        sendAll(peer.socket, R"([{"address": "0x7", "at": [)");
        break;
    case Manners::nonsense:
        sendAll(peer.socket, R"({"at": [null, {}], "address": 17})");
        break;
    case Manners::endless:
        peer.unsent = std::size_t{1} << 26U;
        break;
    case Manners::silent:
    case Manners::closing:
        break;
    }
}
