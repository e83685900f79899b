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

/// A compositor with that many unanswered requests hangs.
constexpr int mostAnswersOwed = 16;

constexpr Instant atOnce{};

bool isSuccess(const Json& result) {
    return isSet(result, "success");
}

} // namespace

Session::Session(linux::MainLoop& mainLoop, std::string path)
    : compositor::Session<i3ipc::EventType, const i3ipc::Json&>(mainLoop)
    , path(std::move(path)) {
}

bool Session::connect() {
    auto requests = Connection::open(path, loop());
    auto events = Connection::open(path, loop());
    if (!requests || !events || !subscribe(*events)) {
        return false;
    }
    connections = std::make_unique<Connections>(*std::move(requests), *std::move(events), nullptr, nullptr, 0);
    connections->requestsWatch =
        loop().watch(connections->requests.descriptor(), [] { return false; }, [this] { dropLateAnswers(); });
    connections->eventsWatch = watchEvents(connections->events.descriptor());
    return true;
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

bool Session::deliverNext() {
    const auto message = connections->events.receive(atOnce);
    if (!message) {
        return false;
    }
    if (const auto content = parsedJson(message->payload)) {
        report(static_cast<EventType>(message->type), *content);
    } else {
        closeSoon();
    }
    return true;
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

} // namespace platform::sway
