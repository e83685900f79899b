#include "Tests/Platform/I3Ipc/FakeSway.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::size_t headerLength = 14;

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

} // namespace

struct FakeSway::Peer {
    explicit Peer(int socket)
        : socket(socket) {}

    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    ~Peer() { ::close(socket); }

    int socket;
    std::string unread;
    bool hasSubscribed = false;
};

FakeSway::FakeSway() {
    std::array<int, 2> ends{};
    require(::pipe2(ends.data(), O_CLOEXEC) == 0, "no pipe");
    wakeReading = ends[0];
    wakeWriting = ends[1];
    start();
    thread = std::thread([this] { serve(); });
}

FakeSway::~FakeSway() {
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

std::string FakeSway::message(std::uint32_t type, std::string_view payload) {
    const auto length = static_cast<std::uint32_t>(payload.size());
    std::string bytes("i3-ipc");
    for (const std::uint32_t number : {length, type}) {
        std::array<char, 4> raw{};
        std::memcpy(raw.data(), &number, raw.size());
        bytes.append(raw.data(), raw.size());
    }
    return bytes.append(payload);
}

void FakeSway::behave(Manners newManners) {
    const std::scoped_lock lock(mutex);
    manners = newManners;
}

void FakeSway::stop() {
    const std::scoped_lock lock(mutex);
    peers.clear();
    if (listening >= 0) {
        ::close(std::exchange(listening, -1));
        ::unlink(path().c_str());
    }
    wake();
}

void FakeSway::start() {
    const std::scoped_lock lock(mutex);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path().copy(address.sun_path, sizeof address.sun_path - 1);
    listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    require(::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "cannot bind");
    require(::listen(listening, 16) == 0, "cannot listen");
    wake();
}

void FakeSway::setTree(std::string json) {
    const std::scoped_lock lock(mutex);
    tree = std::move(json);
}

void FakeSway::setConfiguration(std::string text) {
    const std::scoped_lock lock(mutex);
    configuration = std::move(text);
}

void FakeSway::setMode(std::string name) {
    const std::scoped_lock lock(mutex);
    mode = std::move(name);
}

void FakeSway::onCommands(std::function<void(const std::string&)> function) {
    const std::scoped_lock lock(mutex);
    carryOut = std::move(function);
}

void FakeSway::onTree(std::function<void()> function) {
    const std::scoped_lock lock(mutex);
    changeTree = std::move(function);
}

void FakeSway::refuse(std::string words) {
    const std::scoped_lock lock(mutex);
    refused = std::move(words);
}

void FakeSway::tell(std::uint32_t event, std::string_view json) {
    tellRaw(message(event, json));
}

void FakeSway::tellRaw(std::string_view bytes) {
    const std::scoped_lock lock(mutex);
    for (const auto& peer : peers) {
        if (peer->hasSubscribed) {
            sendAll(peer->socket, bytes);
        }
    }
}

std::vector<std::string> FakeSway::takeCommands() {
    const std::scoped_lock lock(mutex);
    return std::exchange(commands, {});
}

int FakeSway::treeReadings() {
    const std::scoped_lock lock(mutex);
    return readings;
}

int FakeSway::connections() {
    const std::scoped_lock lock(mutex);
    return static_cast<int>(peers.size());
}

void FakeSway::wake() const {
    require(::write(wakeWriting, "x", 1) == 1, "cannot wake");
}

void FakeSway::serve() {
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

void FakeSway::accept() {
    while (listening >= 0) {
        const int socket = ::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) {
            return;
        }
        peers.push_back(std::make_unique<Peer>(socket));
    }
}

bool FakeSway::read(Peer& peer) {
    std::array<char, 65536> buffer{};
    ssize_t count = ::recv(peer.socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count == 0) {
        return false;
    }
    peer.unread.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    while (peer.unread.size() >= headerLength) {
        std::array<std::uint32_t, 2> numbers{};
        std::memcpy(numbers.data(), peer.unread.data() + 6, sizeof numbers);
        if (peer.unread.size() < headerLength + numbers[0]) {
            break;
        }
        const std::string payload = peer.unread.substr(headerLength, numbers[0]);
        peer.unread.erase(0, headerLength + numbers[0]);
        if (manners == Manners::closing) {
            return false;
        }
        answer(peer, numbers[1], payload);
    }
    return true;
}

void FakeSway::answer(Peer& peer, std::uint32_t type, const std::string& payload) {
    peer.hasSubscribed = peer.hasSubscribed || type == 2;
    switch (manners) {
    case Manners::good:
    case Manners::refusing:
        sendAll(peer.socket, message(type, result(type, payload)));
        break;
    case Manners::twice: {
        const std::string once = message(type, result(type, payload));
        sendAll(peer.socket, once + once);
        break;
    }
    case Manners::garbled:
        sendAll(peer.socket, "HTTP/1.1 400 Bad Request\r\n\r\n");
        break;
    case Manners::malformed:
        sendAll(peer.socket, message(type, R"({"type": "root", "nodes": [)"));
        break;
    case Manners::nonsense:
        sendAll(peer.socket, message(type, R"([17, "root", null])"));
        break;
    case Manners::endless:
        sendAll(peer.socket, message(type, "").replace(6, 4, "\xff\xff\xff\x7f"));
        break;
    case Manners::silent:
    case Manners::closing:
        break;
    }
}

std::string FakeSway::result(std::uint32_t type, const std::string& payload) {
    switch (type) {
    case 0:
        commands.push_back(payload);
        if (carryOut) {
            carryOut(payload);
        }
        {
            const bool isRefused = !refused.empty() && payload.find(refused) != std::string::npos;
            const auto count = 1 + std::ranges::count(payload, ';') + std::ranges::count(payload, ',');
            return nlohmann::json(std::vector(static_cast<std::size_t>(count), nlohmann::json{{"success", !isRefused}}))
                .dump();
        }
    case 2:
        return manners == Manners::refusing ? R"({"success": false})" : R"({"success": true})";
    case 4:
        ++readings;
        if (changeTree) {
            changeTree();
        }
        return tree;
    case 7:
        return nlohmann::json{{"variant", "sway"}, {"loaded_config_file_name", folder / "config"}}.dump();
    case 9:
        return nlohmann::json{{"config", configuration}}.dump();
    case 12:
        return nlohmann::json{{"name", mode}}.dump();
    default:
        return "null";
    }
}
