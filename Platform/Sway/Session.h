#pragma once

#include "Platform/I3Ipc/Connection.h"
#include "Platform/I3Ipc/Nodes.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::sway {

/// The connections to a compositor that uses i3's IPC: one for requests, another one for events. If one of them breaks,
/// both are closed, and opened again after a pause. Main thread only.
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
        /// An event of this type, with what it brought.
        virtual void sessionReported(i3ipc::EventType type, const i3ipc::Json& content) = 0;
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

    /// Opens it, now if the compositor is there, else as soon as it is.
    void start();

    [[nodiscard]] bool isOpen() const;

    /// The end of all waiting in this turn of the loop.
    [[nodiscard]] Instant deadline() const { return mainLoop.turnDeadline().end(); }

    /// Asks and waits for the answer. Nothing if it has not come by then, or is not JSON. An answer that comes later is
    /// thrown away. With a deadline that has passed it only asks.
    [[nodiscard]] std::optional<i3ipc::Json> ask(i3ipc::MessageType type, std::string_view payload, Instant deadline);

    /// Runs a list of commands; returns whether all succeeded. See `ask`.
    bool run(std::string_view commands, Instant deadline);

private:
    struct Connections {
        i3ipc::Connection requests;
        i3ipc::Connection events;
        std::unique_ptr<linux::DescriptorWatch> requestsWatch;
        std::unique_ptr<linux::DescriptorWatch> eventsWatch;
        /// The number of pending replies that will be discarded.
        int answersOwed = 0;
    };

    void open();
    [[nodiscard]] bool subscribe(i3ipc::Connection& connection) const;
    /// Closes in a turn of its own: a caller must not be notified during its request.
    void closeSoon();
    /// The answer to the last question, those before thrown away.
    [[nodiscard]] std::optional<i3ipc::Message> awaitAnswer(Instant deadline);
    void close();
    void serveEvents();
    void dropLateAnswers();
    void deliver(const i3ipc::Message& message);

    linux::MainLoop& mainLoop;
    std::string path;
    std::vector<Follower*> followers;
    std::unique_ptr<Connections> connections;
    std::unique_ptr<ScheduledWork> next;
    bool isClosing = false;
    bool hasMore = false;
};

} // namespace platform::sway
