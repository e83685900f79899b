#include "Platform/Wayfire/Session.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform::wayfire {

namespace {

using compositor::listIn;

/// A compositor with that many unanswered requests hangs.
constexpr std::size_t mostAnswersOwed = 16;

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
    : compositor::Session<std::string_view, const Json&>(mainLoop)
    , path(std::move(path)) {
}

bool Session::connect() {
    auto connection = Connection::open(path, loop());
    if (!connection || !prepare(*connection)) {
        return false;
    }
    opened = std::make_unique<Open>(*std::move(connection), nullptr, std::deque<Json>(), 0);
    opened->readable = watchEvents(opened->connection.descriptor());
    return true;
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
    auto connection = Connection::open(path, loop());
    if (!connection || !connection->send(watchRequest(events), deadline)) {
        return std::nullopt;
    }
    const auto answer = connection->receiveAnswer(deadline);
    return answer && isOk(*answer) ? std::move(connection) : std::nullopt;
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
            expectEvents();
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

bool Session::deliverNext() {
    const auto event = nextEvent();
    if (event) {
        report(compositor::textOf(*event, "event"), *event);
    }
    return event.has_value();
}

std::optional<Json> Session::nextEvent() {
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
    return std::nullopt;
}

} // namespace platform::wayfire
