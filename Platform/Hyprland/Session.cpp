#include "Platform/Hyprland/Session.h"

#include "Platform/Hyprland/Instance.h"
#include "Platform/Linux/Files/LocalSocket.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <utility>

namespace platform::hyprland {

namespace {

constexpr std::string_view statusRequest = "status";

/// The compositor cuts its lines at a kilobyte.
constexpr std::size_t longestLine = std::size_t{64} << 10U;

} // namespace

Session::Session(linux::MainLoop& mainLoop, std::function<std::string()> find)
    : compositor::Session<std::string_view, std::string_view>(mainLoop)
    , find(std::move(find))
    , requests(mainLoop) {
}

bool Session::connect() {
    folder = find();
    linux::FileDescriptor socket = folder.empty() ? linux::FileDescriptor() : linux::connectedTo(eventSocket(folder));
    if (!socket) {
        return false;
    }
    events = std::make_unique<Events>(Events{.socket = std::move(socket), .watch = nullptr, .unread = {}});
    events->watch = watchEvents(events->socket.get());
    learnLanguage(requests.ask(requestSocket(folder), statusRequest, deadline()));
    return true;
}

void Session::disconnect() {
    events.reset();
    requests.forget();
}

void Session::learnLanguage(const std::optional<std::string>& status) {
    if (status) {
        spoken = languageIn(*status);
    }
}

std::optional<std::string> Session::ask(std::string_view request, Instant deadline) {
    if (!isOpen()) {
        return std::nullopt;
    }
    if (requests.isFull()) {
        closeSoon();
        return std::nullopt;
    }
    return requests.ask(requestSocket(folder), request, deadline);
}

std::optional<compositor::Json> Session::read(std::string_view request, Instant deadline) {
    const auto answer = ask("j/" + std::string(request), deadline);
    return answer ? compositor::parsedJson(*answer) : std::nullopt;
}

std::optional<std::string> Session::run(const std::function<std::string(Language)>& request, Instant deadline) {
    auto answer = ask(request(spoken), deadline);
    if (answer && refusesLanguage(*answer, spoken)) {
        spoken = spoken == Language::lua ? Language::hyprlang : Language::lua;
        answer = ask(request(spoken), deadline);
    }
    return answer;
}

bool Session::receive() const {
    std::array<char, std::size_t{16} << 10U> buffer;
    const ssize_t received = ::recv(events->socket.get(), buffer.data(), buffer.size(), 0);
    if (received > 0) {
        events->unread.append(buffer.data(), static_cast<std::size_t>(received));
        events->isBroken = !hasLine() && events->unread.size() > longestLine;
        return true;
    }
    events->isBroken = received == 0 || (errno != EAGAIN && errno != EINTR);
    return false;
}

bool Session::hasLine() const {
    return events->unread.contains('\n');
}

bool Session::deliverNext() {
    if (!hasLine() && !(receive() && hasLine())) {
        return false;
    }
    const std::size_t end = events->unread.find('\n');
    const std::string line = events->unread.substr(0, end);
    events->unread.erase(0, end + 1);
    constexpr std::string_view mark = ">>";
    const std::size_t place = line.find(mark);
    if (place == std::string::npos) {
        return true;
    }
    const std::string_view event = std::string_view(line).substr(0, place);
    if (event == "configreloaded") {
        learnLanguage(ask(statusRequest, deadline()));
    }
    report(event, std::string_view(line).substr(place + mark.size()));
    return true;
}

} // namespace platform::hyprland
