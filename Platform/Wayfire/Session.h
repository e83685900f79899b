#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Wayfire/Connection.h"

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::wayfire {

/// The connection to Wayfire's IPC. Answers come in the order of the requests, with events between them. If it breaks,
/// it is closed, and opened again after a pause. Bindings that were made over it end with it. Main thread only.
class Session {
public:
    /// Notified in the main loop; may send requests.
    class Follower {
    public:
        Follower() = default;
        Follower(const Follower&) = delete;
        Follower& operator=(const Follower&) = delete;
        virtual ~Follower() = default;

        virtual void sessionOpened() = 0;
        virtual void sessionClosed() = 0;
        /// An event of this name, with all that it brought.
        virtual void sessionReported(std::string_view event, const Json& content) = 0;
        /// All events that have arrived were reported.
        virtual void sessionIsQuiet() = 0;
    };

    static constexpr std::chrono::seconds untilRetry{1};

    /// `path`: of the compositor's socket. Opens nothing yet.
    Session(linux::MainLoop& mainLoop, std::string path);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() = default;

    /// Must outlive this.
    void follow(Follower& follower) { followers.push_back(&follower); }

    /// Opens it, now if the compositor is there with all the plugins that this takes, else as soon as it is.
    void start();

    [[nodiscard]] bool isOpen() const;

    /// The plugins that were missing when it was last to be opened, in the order of `wayfire.ini`'s own list; none if
    /// the compositor did not answer.
    [[nodiscard]] const std::vector<std::string>& missingPlugins() const { return missing; }

    [[nodiscard]] const std::string& socketPath() const { return path; }

    /// The end of all waiting in this turn of the loop.
    [[nodiscard]] Instant deadline() const { return mainLoop.turnDeadline().end(); }

    /// Asks and waits for the answer. Nothing if it has not come by then; one that comes later is thrown away. With a
    /// deadline that has passed it only asks.
    [[nodiscard]] std::optional<Json> ask(const Request& request, Instant deadline);

    /// Asks all of these at once. As many answers, in their order, or none at all if the last has not come by then.
    [[nodiscard]] std::vector<Json> askAll(const std::vector<Request>& requests, Instant deadline);

    /// Closes it in a turn of its own, and opens it again after the pause: the compositor forgets what was made over
    /// it.
    void closeSoon();

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

    void open();
    /// Whether the compositor has what this takes, and tells the events.
    [[nodiscard]] bool prepare(Connection& connection);
    void close();
    [[nodiscard]] bool sendAll(const std::vector<Request>& requests, Instant deadline);
    void serve();
    /// The next event; late answers are discarded on the way.
    [[nodiscard]] std::optional<Json> nextEvent();

    linux::MainLoop& mainLoop;
    std::string path;
    std::vector<Follower*> followers;
    std::unique_ptr<Open> opened;
    std::unique_ptr<ScheduledWork> next;
    std::vector<std::string> missing;
    bool isClosing = false;
    bool hasMore = false;
};

} // namespace platform::wayfire
