#include "Platform/I3/Manager.h"

#include "Platform/I3/Layout.h"
#include "Platform/I3Ipc/Commands.h"
#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <utility>

namespace platform::i3 {

namespace {

using i3ipc::Json;
using i3ipc::MessageType;

/// i3's socket (i3 User's Guide, "Interprocess communication"); empty if i3 does not name it.
std::string socketPath(x11::Connection& display) {
    const auto request = x11::requestProperty(display, display.root(), display.atom(x11::Atom::i3SocketPath));
    return x11::readText(display, request);
}

} // namespace

bool Manager::isReachable(x11::Connection& display) {
    // No reply is pending: the readable data is the end of the connection, or comes from a peer that must not be used.
    if (connection && (connection->receive(Instant{}) || connection->isBroken())) {
        connection.reset();
    }
    return connection || open(display);
}

std::optional<x11::Layout> Manager::readLayout(x11::Connection& display) {
    const auto answer = ask(display, MessageType::getTree, "");
    return answer ? i3::readLayout(*answer) : std::nullopt;
}

bool Manager::place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) {
    // A refusal, as for a window that is gone by now, shows when the layout is read.
    const std::string commands = "[id=" + std::to_string(window) + "] " + i3ipc::placingCommands(frame);
    return ask(display, MessageType::runCommand, commands).has_value();
}

std::optional<Json> Manager::ask(x11::Connection& display, MessageType type, std::string_view payload) {
    if (!isReachable(display)) {
        return std::nullopt;
    }
    const Instant deadline = display.deadline().end();
    const auto answer = connection->send(type, payload, deadline) ? connection->receive(deadline) : std::nullopt;
    auto content =
        answer && answer->type == static_cast<std::uint32_t>(type) ? i3ipc::parsedJson(answer->payload) : std::nullopt;
    if (!content) {
        connection.reset();
    }
    return content;
}

bool Manager::open(x11::Connection& display) {
    connection = i3ipc::Connection::open(socketPath(display), clock);
    return connection.has_value();
}

} // namespace platform::i3
