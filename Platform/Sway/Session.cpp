#include "Platform/Sway/Session.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform::sway {

namespace {

using i3ipc::Connection;
using i3ipc::EventType;
using i3ipc::isSet;
using i3ipc::Json;
using i3ipc::Message;
using i3ipc::MessageType;
using i3ipc::parsedJson;

constexpr std::chrono::milliseconds connectingLeeway{100};

/// A compositor with that many unanswered requests hangs.
constexpr int mostAnswersOwed = 16;

/// After that many events, other sources of the loop get their turn.
constexpr int mostEventsAtOnce = 64;

constexpr Instant atOnce{};

bool isSuccess(const Json& result) {
    return isSet(result, "success");
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
    return connections && !isClosing && !connections->requests.isBroken() && !connections->events.isBroken();
}

void Session::open() {
    next.reset();
    auto requests = Connection::open(path, mainLoop);
    auto events = Connection::open(path, mainLoop);
    if (!requests || !events || !subscribe(*events)) {
        next = mainLoop.schedule(mainLoop.now() + untilRetry, connectingLeeway, [this] { open(); });
        return;
    }
    connections = std::make_unique<Connections>(*std::move(requests), *std::move(events), nullptr, nullptr, 0);
    connections->requestsWatch =
        mainLoop.watch(connections->requests.descriptor(), [] { return false; }, [this] { dropLateAnswers(); });
    connections->eventsWatch =
        mainLoop.watch(connections->events.descriptor(), [this] { return hasMore; }, [this] { serveEvents(); });
    // Events that came with the replies to the subscriptions do not make the descriptor readable.
    hasMore = true;
    for (Follower* follower : followers) {
        follower->sessionOpened();
    }
}

bool Session::subscribe(Connection& connection) const {
    // One by one, because a list with an unknown event is refused as a whole. Without the shutdown event, the broken
    // connection shows a compositor's end.
    constexpr std::array<std::pair<std::string_view, bool>, 4> wanted{
        {{R"(["window"])", true}, {R"(["workspace"])", true}, {R"(["binding"])", true}, {R"(["shutdown"])", false}}};
    for (const auto& [list, isNeeded] : wanted) {
        if (!connection.send(MessageType::subscribe, list, deadline())) {
            return false;
        }
        // Events of the former subscriptions may come first: the receiver of this notification reads everything anyway.
        std::optional<Message> answer;
        do {
            answer = connection.receive(deadline());
        } while (answer && answer->type != static_cast<std::uint32_t>(MessageType::subscribe));
        const auto result = answer ? parsedJson(answer->payload) : std::nullopt;
        if (!result || (isNeeded && !isSuccess(*result))) {
            return false;
        }
    }
    return true;
}

void Session::closeSoon() {
    if (std::exchange(isClosing, true)) {
        return;
    }
    next = mainLoop.schedule(mainLoop.now(), Duration::zero(), [this] { close(); });
}

void Session::close() {
    connections.reset();
    isClosing = false;
    hasMore = false;
    next = mainLoop.schedule(mainLoop.now() + untilRetry, connectingLeeway, [this] { open(); });
    for (Follower* follower : followers) {
        follower->sessionClosed();
    }
}

std::optional<Json> Session::ask(MessageType type, std::string_view payload, Instant deadline) {
    if (!isOpen()) {
        return std::nullopt;
    }
    Connection& requests = connections->requests;
    if (connections->answersOwed < mostAnswersOwed && requests.send(type, payload, deadline)) {
        ++connections->answersOwed;
        if (const auto answer = awaitAnswer(deadline)) {
            auto content =
                answer->type == static_cast<std::uint32_t>(type) ? parsedJson(answer->payload) : std::nullopt;
            if (!content) {
                closeSoon();
            }
            return content;
        }
    }
    if (connections->answersOwed >= mostAnswersOwed || requests.isBroken()) {
        closeSoon();
    }
    return std::nullopt;
}

std::optional<Message> Session::awaitAnswer(Instant deadline) {
    // Replies come in the order of the requests.
    while (auto answer = connections->requests.receive(deadline)) {
        if (--connections->answersOwed == 0) {
            return answer;
        }
    }
    return std::nullopt;
}

bool Session::run(std::string_view commands, Instant deadline) {
    const auto results = ask(MessageType::runCommand, commands, deadline);
    return results && results->is_array() && !results->empty() && std::ranges::all_of(*results, isSuccess);
}

void Session::serveEvents() {
    bool hasTime = true;
    hasMore = true;
    for (int count = 0; hasMore && hasTime && count < mostEventsAtOnce; ++count) {
        const auto message = isOpen() ? connections->events.receive(atOnce) : std::nullopt;
        hasMore = message.has_value();
        if (message) {
            deliver(*message);
        }
        // Each event that waits has a turn of its own.
        hasTime = !mainLoop.turnDeadline().hasBegun();
    }
    if (hasTime) {
        for (Follower* follower : followers) {
            follower->sessionIsQuiet();
        }
    }
    if (connections->events.isBroken()) {
        hasMore = false;
        closeSoon();
    }
}

void Session::dropLateAnswers() {
    while (isOpen() && connections->requests.receive(atOnce)) {
        --connections->answersOwed;
    }
    // A reply without a request is an error as well.
    if (connections->requests.isBroken() || connections->answersOwed < 0) {
        closeSoon();
    }
}

void Session::deliver(const Message& message) {
    const auto content = parsedJson(message.payload);
    if (!content) {
        closeSoon();
        return;
    }
    for (Follower* follower : followers) {
        follower->sessionReported(static_cast<EventType>(message.type), *content);
    }
}

} // namespace platform::sway
