#pragma once

#include "Platform/Compositor/Session.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Wayfire/Connection.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::wayfire {

/// The connection to Wayfire's IPC. Answers come in the order of the requests, with events between them. It is opened
/// once Wayfire has all the plugins that this takes. Bindings that were made over it end with it. Main thread only.
class Session final : public compositor::Session<std::string_view, const Json&> {
public:
    /// `path`: of the compositor's socket. Opens nothing yet.
    Session(linux::MainLoop& mainLoop, std::string path);

    /// The plugins that were missing when it was last to be opened, in the order of `wayfire.ini`'s own list; none if
    /// the compositor did not answer.
    [[nodiscard]] const std::vector<std::string>& missingPlugins() const { return missing; }

    [[nodiscard]] const std::string& socketPath() const { return path; }

    /// Asks and waits for the answer. Nothing if it has not come by then; one that comes later is thrown away. With a
    /// deadline that has passed it only asks.
    [[nodiscard]] std::optional<Json> ask(const Request& request, Instant deadline);

    /// Asks all of these at once. As many answers, in their order, or none at all if the last has not come by then.
    [[nodiscard]] std::vector<Json> askAll(const std::vector<Request>& requests, Instant deadline);

    /// A connection of its own that gets these events; nothing if the compositor does not answer in time. Wayfire
    /// counts a second list of one connection twice, so each list has a connection.
    [[nodiscard]] std::optional<Connection> watch(const std::vector<std::string>& events, Instant deadline) const;

private:
    struct Open {
        Connection connection;
        std::unique_ptr<linux::DescriptorWatch> readable;
        /// Events that came while an answer was awaited.
        std::deque<Json> events;
        /// The number of pending answers that will be discarded.
        std::size_t answersOwed = 0;
    };

    [[nodiscard]] bool connect() override;

    void disconnect() override { opened.reset(); }

    [[nodiscard]] bool isBroken() const override { return opened->connection.isBroken(); }

    [[nodiscard]] bool deliverNext() override;

    /// Whether the compositor has what this takes, and tells the events.
    [[nodiscard]] bool prepare(Connection& connection);
    [[nodiscard]] bool sendAll(const std::vector<Request>& requests, Instant deadline);
    /// The next event; late answers are discarded on the way.
    [[nodiscard]] std::optional<Json> nextEvent();

    std::string path;
    std::unique_ptr<Open> opened;
    std::vector<std::string> missing;
};

} // namespace platform::wayfire
