#include "Platform/Wayfire/Session.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform::wayfire {

namespace {

using compositor::listIn;

constexpr std::chrono::milliseconds connectingLeeway{100};

/// A compositor with that many unanswered requests hangs.
constexpr std::size_t mostAnswersOwed = 16;

/// After that many events, other sources of the loop get their turn.
constexpr int mostEventsAtOnce = 64;

constexpr Instant atOnce{};

/// A method of each plugin that this takes (Wayfire 0.10, "list-methods").
constexpr std::array neededMethods{
    std::pair<std::string_view, std::string_view>{"ipc-rules", "window-rules/configure-view"},
    std::pair<std::string_view, std::string_view>{"command", "command/register-binding"},
};

const std::vector<std::string> watchedEvents{"view-mapped", "view-unmapped", "view-app-id-changed"};

Request watchRequest(const std::vector<std::string>& events) {
    return {.method = "window-rules/events/watch", .data = {{"events", events}}};
}

bool isOk(const Json& answer) {
    return compositor::textOf(answer, "result") == "ok";
}

} // namespace

Session::Session(linux::MainLoop& mainLoop, std::string path)
    : mainLoop(mainLoop)
    , path(std::move(path)) {
}

void Session::start() {
    open();
}

bool Session::isOpen() const {
    return opened && !isClosing && !opened->connection.isBroken();
}

void Session::open() {
    next.reset();
    auto connection = Connection::open(path, mainLoop);
    if (!connection || !prepare(*connection)) {
        next = mainLoop.schedule(mainLoop.now() + untilRetry, connectingLeeway, [this] { open(); });
        return;
    }
    opened = std::make_unique<Open>(*std::move(connection), nullptr, std::deque<Json>(), 0);
    opened->readable = mainLoop.watch(opened->connection.descriptor(), [this] { return hasMore; }, [this] { serve(); });
    // Events that came with the first answers do not make the descriptor readable.
    hasMore = true;
    for (Follower* follower : followers) {
        follower->sessionOpened();
    }
}

bool Session::prepare(Connection& connection) {
    missing.clear();
    if (!connection.send({.method = "list-methods"}, deadline())) {
        return false;
    }
    const auto answer = connection.receiveAnswer(deadline());
    const Json* methods = answer ? listIn(*answer, "methods") : nullptr;
    if (methods == nullptr) {
        return false;
    }
    for (const auto& [plugin, method] : neededMethods) {
        if (std::ranges::find(*methods, Json(method)) == methods->end()) {
            missing.emplace_back(plugin);
        }
    }
    if (!missing.empty() || !connection.send(watchRequest(watchedEvents), deadline())) {
        return false;
    }
    const auto watched = connection.receiveAnswer(deadline());
    return watched && isOk(*watched);
}

std::optional<Connection> Session::watch(const std::vector<std::string>& events, Instant deadline) const {
    auto connection = Connection::open(path, mainLoop);
    if (!connection || !connection->send(watchRequest(events), deadline)) {
        return std::nullopt;
    }
    const auto answer = connection->receiveAnswer(deadline);
    return answer && isOk(*answer) ? std::move(connection) : std::nullopt;
}

void Session::closeSoon() {
    if (!opened || std::exchange(isClosing, true)) {
        return;
    }
    // A follower that asks must not be told meanwhile.
    next = mainLoop.schedule(mainLoop.now(), Duration::zero(), [this] { close(); });
}

void Session::close() {
    opened.reset();
    isClosing = false;
    hasMore = false;
    next = mainLoop.schedule(mainLoop.now() + untilRetry, connectingLeeway, [this] { open(); });
    for (Follower* follower : followers) {
        follower->sessionClosed();
    }
}

std::optional<Json> Session::ask(const Request& request, Instant deadline) {
    auto answers = askAll({request}, deadline);
    return answers.empty() ? std::nullopt : std::optional(std::move(answers.front()));
}

std::vector<Json> Session::askAll(const std::vector<Request>& requests, Instant deadline) {
    std::vector<Json> answers;
    if (!isOpen() || !sendAll(requests, deadline)) {
        return answers;
    }
    while (opened->answersOwed > 0) {
        auto message = opened->connection.receive(deadline);
        if (!message) {
            answers.clear();
            break;
        }
        if (Connection::isEvent(*message)) {
            opened->events.push_back(*std::move(message));
            hasMore = true;
        } else if (opened->answersOwed-- <= requests.size()) {
            answers.push_back(*std::move(message));
        }
    }
    if (opened->connection.isBroken()) {
        closeSoon();
    }
    return answers;
}

bool Session::sendAll(const std::vector<Request>& requests, Instant deadline) {
    bool isSent = true;
    for (std::size_t count = 0; isSent && count < requests.size(); ++count) {
        isSent = opened->connection.send(requests[count], deadline);
        opened->answersOwed += isSent ? 1 : 0;
    }
    if (opened->answersOwed >= mostAnswersOwed + requests.size() || !isSent) {
        closeSoon();
    }
    return isSent;
}

void Session::serve() {
    bool hasTime = true;
    hasMore = true;
    for (int count = 0; hasMore && hasTime && count < mostEventsAtOnce; ++count) {
        const auto event = nextEvent();
        hasMore = event.has_value();
        if (event) {
            for (Follower* follower : followers) {
                follower->sessionReported(compositor::textOf(*event, "event"), *event);
            }
        }
        // Each event that waits has a turn of its own.
        hasTime = !mainLoop.turnDeadline().hasBegun();
    }
    if (hasTime) {
        for (Follower* follower : followers) {
            follower->sessionIsQuiet();
        }
    }
}

std::optional<Json> Session::nextEvent() {
    if (!isOpen()) {
        return std::nullopt;
    }
    if (!opened->events.empty()) {
        auto event = std::optional(std::move(opened->events.front()));
        opened->events.pop_front();
        return event;
    }
    while (auto message = opened->connection.receive(atOnce)) {
        if (Connection::isEvent(*message)) {
            return message;
        }
        // An answer without a request is an error as well.
        if (opened->answersOwed == 0) {
            closeSoon();
            return std::nullopt;
        }
        --opened->answersOwed;
    }
    if (opened->connection.isBroken()) {
        closeSoon();
    }
    return std::nullopt;
}

} // namespace platform::wayfire
