#include "Platform/Cinnamon/CoreLoader.h"

#include "Platform/Compositor/Json.h"
#include "Platform/Linux/Bus/Calls.h"
#include "Platform/ShellCore/Protocol.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace platform::cinnamon {

namespace {

using Obstacle = shellcore::ShellLink::Obstacle;

constexpr const char* title = "Cinnamon";

constexpr linux::BusMember evaluation{CoreLoader::cinnamonName, "/org/Cinnamon", CoreLoader::cinnamonName, "Eval"};

/// The longest part of an error that the status shows.
constexpr std::size_t longestReason = 200;

std::string contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The core as an expression; `client` is a unique name of the bus, which has no quotation marks.
std::string scriptFor(const std::string& core, const char* client) {
    return "(function (program) {\n" + core + "\n})('" + client + "')";
}

} // namespace

/// The handlers of Cinnamon's replies; `data` is the loader.
struct CoreLoader::Answers {
    static int evaluated(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        static_cast<CoreLoader*>(data)->take(reply);
        return 0;
    }
};

CoreLoader::CoreLoader(linux::MainLoop& mainLoop, shellcore::ShellLink& link, std::filesystem::path file,
                       Duration patience)
    : Listener(link)
    , mainLoop(mainLoop)
    , link(link)
    , file(std::move(file))
    , patience(patience) {
}

AccessObstacle CoreLoader::silence() {
    return {.kind = AccessObstacle::Kind::silentCompositor, .desktop = title};
}

std::optional<AccessObstacle> CoreLoader::obstacle() const {
    using Kind = AccessObstacle::Kind;
    const auto because = [](std::string reason) {
        return AccessObstacle{.kind = Kind::codeRefused, .desktop = title, .detail = std::move(reason)};
    };
    switch (link.obstacle()) {
    case Obstacle::none:
        return std::nullopt;
    case Obstacle::unknown:
    case Obstacle::noShell:
        return silence();
    case Obstacle::noCore:
        return failure.empty() ? silence() : because(failure);
    case Obstacle::otherVersion:
        return because("the code is of another version of Tessel");
    case Obstacle::otherClient:
        return AccessObstacle{.kind = Kind::busNameTaken, .detail = shellcore::Protocol::busName};
    case Obstacle::unfitShell:
        return because("it lacks " + link.missing());
    }
    std::unreachable();
}

void CoreLoader::retry() {
    if (link.obstacle() == Obstacle::noCore && attempt == nullptr) {
        untilRetry = soonestRetry;
        send();
    }
}

void CoreLoader::opened(const shellcore::Hello& /*hello*/, bool /*isNew*/) {
    attempt.reset();
    next.reset();
    failure.clear();
    untilRetry = soonestRetry;
}

void CoreLoader::closed() {
    attempt.reset();
    next.reset();
    failure.clear();
    if (link.obstacle() == Obstacle::noCore) {
        untilRetry = soonestRetry;
        send();
    }
}

void CoreLoader::send() {
    next.reset();
    const std::string core = contentsOf(file);
    const char* client = nullptr;
    if (core.empty()) {
        fail(file.string() + " is missing");
    } else if (sd_bus_get_unique_name(link.connection(), &client) >= 0) {
        attempt =
            linux::call(link.connection(), evaluation, &Answers::evaluated, this, "s", scriptFor(core, client).c_str());
    }
}

void CoreLoader::take(sd_bus_message* answer) {
    attempt.reset();
    if (sd_bus_message_is_method_error(answer, nullptr) != 0) {
        const char* message = sd_bus_message_get_error(answer)->message;
        fail(message == nullptr ? "it refuses Eval" : message);
        return;
    }
    int isDone = 0; // the library's boolean
    const char* result = nullptr;
    if (sd_bus_message_read(answer, "bs", &isDone, &result) <= 0) {
        fail("its reply to Eval is of another form");
        return;
    }
    const std::optional<compositor::Json> value = compositor::parsedJson(result);
    const bool isText = value && value->is_string();
    if (isDone == 0 || !isText || !value->get<std::string>().empty()) {
        const std::string reason = isText ? value->get<std::string>() : "";
        fail(reason.empty() ? "it does not evaluate code" : reason);
        return;
    }
    // The core announces itself to the owner of the program's name, which may be another client.
    link.ask();
    next = mainLoop.schedule(mainLoop.now() + patience, patience / 10, [this] { fail("the code does not answer"); });
}

void CoreLoader::fail(std::string reason) {
    reason.resize(std::min(reason.size(), longestReason));
    const bool isNew = std::exchange(failure, std::move(reason)) != failure;
    next = mainLoop.schedule(mainLoop.now() + untilRetry, untilRetry / 10, [this] { send(); });
    untilRetry = std::min(untilRetry * 2, longestRetry);
    if (isNew && refused) {
        refused();
    }
}

} // namespace platform::cinnamon
