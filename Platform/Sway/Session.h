#pragma once

#include "Platform/Linux/MainLoop.h"
#include "Platform/Sway/Connection.h"
#include "Platform/Sway/Nodes.h"

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
        /// An event of this type, with its contents.
        virtual void sessionTold(EventType type, const Json& content) = 0;
        /// All events that had arrived have been reported.
        virtual void sessionIsQuiet() = 0;
    };

    /// The limit for all waiting in one turn of the loop.
    static constexpr std::chrono::milliseconds patience{250};
    static constexpr std::chrono::seconds untilRetry{1};

    /// `path`: of the compositor's socket. Opens nothing yet.
    Session(linux::MainLoop& mainLoop, std::string path);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() = default;

    /// Must outlive this.
    void follow(Follower& told) { followers.push_back(&told); }

    /// Opens it, now if the compositor is there, else as soon as it is.
    void start();

    [[nodiscard]] bool isOpen() const;

    /// The deadline of all requests in this turn of the loop.
    [[nodiscard]] Instant deadline();

    /// Sends a request and waits for the reply. Empty if it has not come in time, or is not JSON. A late reply is
    /// discarded. With a deadline in the past it only sends the request.
    [[nodiscard]] std::optional<Json> ask(MessageType type, std::string_view payload, Instant deadline);

    /// Runs a list of commands; returns whether all succeeded. See `ask`.
    bool run(std::string_view commands, Instant deadline);

private:
    struct Connections {
        Connection requests;
        Connection events;
        std::unique_ptr<linux::DescriptorWatch> requestsWatch;
        std::unique_ptr<linux::DescriptorWatch> eventsWatch;
        /// The number of pending replies that will be discarded.
        int answersOwed = 0;
    };

    void open();
    [[nodiscard]] bool subscribe(Connection& connection);
    /// Closes in a turn of its own, because a caller must not be notified during its request.
    void closeSoon();
    /// The reply to the last request, after all earlier ones have been discarded.
    [[nodiscard]] std::optional<Message> awaitAnswer(Instant deadline);
    void close();
    void serveEvents();
    void dropLateAnswers();
    void tell(const Message& message);

    linux::MainLoop& mainLoop;
    std::string path;
    std::vector<Follower*> followers;
    std::unique_ptr<Connections> connections;
    std::optional<Instant> endOfTurn;
    std::unique_ptr<linux::TurnEnd> turnEnd;
    std::unique_ptr<ScheduledWork> next;
    bool isClosing = false;
    bool hasMore = false;
};

} // namespace platform::sway
