#include "Platform/Bspwm/Manager.h"

#include "Platform/Bspwm/Layout.h"
#include "Platform/Linux/Files/LocalSocket.h"
#include "Platform/X11/ClientRequest.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform::bspwm {

namespace {

using compositor::Json;

/// The first byte of a refusal, in front of the message for the user.
constexpr char refusalMark = '\a';

/// bspwm's socket, by the rules of bspc(1); empty without a display.
std::string socketPath() {
    if (const char* named = std::getenv("BSPWM_SOCKET"); named != nullptr && *named != '\0') {
        return named;
    }
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen) == 0) {
        return {};
    }
    const x11::Owned<char> owned(host);
    return "/tmp/bspwm" + std::string(host) + "_" + std::to_string(display) + "_" + std::to_string(screen) + "-socket";
}

/// Everything until the peer closes the connection; empty if that does not happen in time, or the reply is too long.
std::optional<std::string> readToEnd(const linux::FileDescriptor& socket, const MainActor& clock, Instant deadline) {
    std::string text;
    std::array<char, std::size_t{16} << 10U> buffer;
    while (text.size() < compositor::longestJson) {
        const ssize_t received = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
        if (received == 0) {
            return text;
        }
        if (received > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(received));
        } else if ((errno != EAGAIN && errno != EINTR) || !linux::awaitSocket(socket, POLLIN, clock, deadline)) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace

bool Manager::isReachable(x11::Connection& /*display*/) {
    // Not connected to for this: bspwm never closes a connection that ends without a message.
    std::error_code error;
    return std::filesystem::is_socket(socketPath(), error);
}

std::optional<x11::Layout> Manager::readLayout(x11::Connection& display) {
    const auto state = query(display, {"wm", "-d"});
    return state ? bspwm::readLayout(*state) : std::nullopt;
}

bool Manager::place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) {
    const std::string id = std::to_string(window);
    const auto node = query(display, {"query", "-T", "-n", id});
    const auto border = node ? borderOf(*node) : std::nullopt;
    if (!border) {
        return false;
    }
    // It refuses this for a window that floats already. A late reply is no reason to leave the window where it floated
    // before.
    static_cast<void>(ask(display, {"node", id, "-t", "floating"}));
    // The corner is that of the border.
    const double around = 2.0 * *border;
    x11::requestClientRectangle(display, window,
                                {frame.origin, {frame.size.width - around, frame.size.height - around}});
    return true;
}

std::optional<std::string> Manager::ask(x11::Connection& display, std::initializer_list<std::string_view> words) const {
    std::string message;
    for (const std::string_view word : words) {
        message.append(word).push_back('\0');
    }
    const Instant deadline = display.deadline().end();
    const linux::FileDescriptor socket = linux::connectedTo(socketPath());
    // A message is shorter than any socket's buffer.
    if (!socket ||
        ::send(socket.get(), message.data(), message.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(message.size())) {
        return std::nullopt;
    }
    auto reply = readToEnd(socket, clock, deadline);
    return reply && reply->starts_with(refusalMark) ? std::nullopt : std::move(reply);
}

std::optional<Json> Manager::query(x11::Connection& display, std::initializer_list<std::string_view> words) const {
    const auto reply = ask(display, words);
    return reply ? compositor::parsedJson(*reply) : std::nullopt;
}

} // namespace platform::bspwm
