#include "FakeBspwm.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <utility>

FakeBspwm::FakeBspwm() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = path();
    std::ranges::copy(name, std::begin(address.sun_path));
    listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    constexpr int waiting = 16;
    if (listening < 0 || ::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listening, waiting) != 0) {
        throw std::runtime_error("no socket at " + name);
    }
    thread = std::thread([this] { serve(); });
}

FakeBspwm::~FakeBspwm() {
    {
        const std::scoped_lock lock(mutex);
        isEnding = true;
    }
    // Ends the wait for connections.
    ::shutdown(listening, SHUT_RDWR);
    thread.join();
    for (const int peer : kept) {
        ::close(peer);
    }
    ::close(listening);
}

void FakeBspwm::behave(Manners newManners) {
    const std::scoped_lock lock(mutex);
    manners = newManners;
}

void FakeBspwm::setState(std::string json) {
    const std::scoped_lock lock(mutex);
    state = std::move(json);
}

void FakeBspwm::setNode(std::string json) {
    const std::scoped_lock lock(mutex);
    node = std::move(json);
}

std::vector<std::string> FakeBspwm::takeRequests() {
    const std::scoped_lock lock(mutex);
    return std::exchange(requests, {});
}

void FakeBspwm::serve() {
    for (;;) {
        const int peer = ::accept(listening, nullptr, nullptr);
        const std::scoped_lock lock(mutex);
        if (isEnding || peer < 0) {
            if (peer >= 0) {
                ::close(peer);
            }
            return;
        }
        answer(peer);
    }
}

void FakeBspwm::answer(int peer) {
    std::string request;
    if (manners != Manners::closing) {
        std::array<char, 1024> buffer;
        const ssize_t received = ::recv(peer, buffer.data(), buffer.size(), 0);
        request.assign(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(received, 0)));
        // Each word ends with a zero.
        std::ranges::replace(request, '\0', ' ');
        requests.push_back(request);
    }
    std::string reply;
    if (manners == Manners::silent) {
        kept.push_back(peer);
        return;
    }
    if (manners == Manners::refusing) {
        reply = "\anode: Invalid descriptor.\n";
    } else if (manners == Manners::garbled) {
        reply = "{\"monitors\":[\x01\xff";
    } else if (manners == Manners::endless) {
        const std::string much(std::size_t{1} << 20U, 'x');
        while (::send(peer, much.data(), much.size(), MSG_NOSIGNAL) > 0) {
        }
    } else if (manners == Manners::good && request.starts_with("wm ")) {
        reply = state + "\n";
    } else if (manners == Manners::good && request.starts_with("query ")) {
        reply = node + "\n";
    }
    static_cast<void>(::send(peer, reply.data(), reply.size(), MSG_NOSIGNAL));
    ::close(peer);
}
