#include "Platform/Hyprland/Session.h"

#include "Platform/Hyprland/Instance.h"
#include "Platform/Linux/Files/LocalSocket.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <utility>

namespace platform::hyprland {

namespace {

constexpr std::chrono::milliseconds connectingLeeway{100};

/// After that many events, other sources of the loop get their turn.
constexpr int mostEventsAtOnce = 64;

/// The compositor cuts its lines at a kilobyte.
constexpr std::size_t longestLine = std::size_t{64} << 10U;

} // namespace

Session::Session(linux::MainLoop& mainLoop, std::function<std::string()> find)
    : mainLoop(mainLoop)
    , find(std::move(find))
    , requests(mainLoop) {
}

void Session::start() {
    open();
}

void Session::open() {
    next.reset();
    folder = find();
    linux::FileDescriptor socket = folder.empty() ? linux::FileDescriptor() : linux::connectedTo(eventSocket(folder));
    if (!socket) {
        next = mainLoop.schedule(mainLoop.now() + untilRetry, connectingLeeway, [this] { open(); });
        return;
    }
    events = std::make_unique<Events>(Events{.socket = std::move(socket), .watch = nullptr, .unread = {}});
    events->watch = mainLoop.watch(
        events->socket.get(), [this] { return hasLine() || events->isQuietUnreported; }, [this] { serveEvents(); });
    learnLanguage(deadline());
    for (Follower* follower : followers) {
        follower->sessionOpened();
    }
}

void Session::learnLanguage(Instant until) {
    if (const auto status = ask("status", until)) {
        spoken = languageIn(*status);
    }
}

void Session::closeSoon() {
    if (!next) {
        next = mainLoop.schedule(mainLoop.now(), Duration::zero(), [this] { close(); });
    }
}

void Session::close() {
    events.reset();
    requests.forget();
    next = mainLoop.schedule(mainLoop.now() + untilRetry, connectingLeeway, [this] { open(); });
    for (Follower* follower : followers) {
        follower->sessionClosed();
    }
}

std::optional<std::string> Session::ask(std::string_view request, Instant deadline) {
    if (!isOpen() || events->isBroken) {
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

void Session::serveEvents() {
    bool hasTime = true;
    bool hasMore = true;
    events->isQuietUnreported = true;
    for (int count = 0; hasMore && hasTime && count < mostEventsAtOnce; ++count) {
        hasMore = hasLine() || (receive() && hasLine());
        if (hasMore) {
            deliverLine();
        }
        // Each event that waits has a turn of its own.
        hasTime = !mainLoop.turnDeadline().hasBegun();
    }
    if (hasTime) {
        events->isQuietUnreported = false;
        for (Follower* follower : followers) {
            follower->sessionIsQuiet();
        }
    }
    if (events->isBroken) {
        closeSoon();
    }
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
    return events != nullptr && events->unread.contains('\n');
}

void Session::deliverLine() {
    const std::size_t end = events->unread.find('\n');
    const std::string line = events->unread.substr(0, end);
    events->unread.erase(0, end + 1);
    constexpr std::string_view mark = ">>";
    const std::size_t place = line.find(mark);
    if (place == std::string::npos) {
        return;
    }
    const std::string_view event = std::string_view(line).substr(0, place);
    if (event == "configreloaded") {
        learnLanguage(deadline());
    }
    for (Follower* follower : followers) {
        follower->sessionReported(event, std::string_view(line).substr(place + mark.size()));
    }
}

} // namespace platform::hyprland
