#pragma once

#include "Platform/Linux/Loop/MainLoop.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform::compositor {

/// The connection to a compositor's IPC. If it breaks, it is closed, and opened again after a pause. A session of one
/// compositor derives from this and adds its words on the wire; `Event` are the contents of one of its events. Main
/// thread only.
template <typename... Event>
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

        virtual void sessionReported(Event... /*event*/) {}

        /// All events that have arrived were reported.
        virtual void sessionIsQuiet() {}
    };

    static constexpr std::chrono::seconds untilRetry{1};

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Must outlive this.
    void follow(Follower& follower) { followers.push_back(&follower); }

    /// Opens it, now if the compositor is there, else as soon as it is.
    void start() { open(); }

    [[nodiscard]] bool isOpen() const { return isConnected && !isClosing && !isBroken(); }

    /// The end of all waiting in this turn of the loop.
    [[nodiscard]] Instant deadline() const { return mainLoop.turnDeadline().end(); }

    /// Closes it in a turn of its own, because a caller must not be notified during its request, and opens it again
    /// after the pause.
    void closeSoon() {
        if (isConnected && !std::exchange(isClosing, true)) {
            next = mainLoop.schedule(mainLoop.now(), Duration::zero(), [this] { close(); });
        }
    }

protected:
    explicit Session(linux::MainLoop& mainLoop)
        : mainLoop(mainLoop) {}

    virtual ~Session() = default;

    /// Connects; false if the compositor is not there, or is not one to work with. Requests are for the connection
    /// itself here, because the session is not open yet.
    [[nodiscard]] virtual bool connect() = 0;
    /// Drops the connection.
    virtual void disconnect() = 0;
    /// Only asked between the two.
    [[nodiscard]] virtual bool isBroken() const = 0;
    /// Reports the next event that has arrived, if it is a valid one; false without one.
    [[nodiscard]] virtual bool deliverNext() = 0;

    void report(Event... event) {
        for (Follower* follower : followers) {
            follower->sessionReported(event...);
        }
    }

    /// Serves the events that arrive there. To be dropped with the connection.
    [[nodiscard]] std::unique_ptr<linux::DescriptorWatch> watchEvents(int descriptor) {
        return mainLoop.watch(descriptor, [this] { return hasMore; }, [this] { serve(); });
    }

    /// Events have been taken from the descriptor that are not delivered yet.
    void expectEvents() { hasMore = true; }

    [[nodiscard]] linux::MainLoop& loop() const { return mainLoop; }

private:
    static constexpr std::chrono::milliseconds connectingLeeway{100};
    /// After that many events, other sources of the loop get their turn.
    static constexpr int mostEventsAtOnce = 64;

    void open() {
        next.reset();
        isConnected = connect();
        if (!isConnected) {
            openAfterPause();
            return;
        }
        // Events that came with the first answers do not make the descriptor readable.
        hasMore = true;
        for (Follower* follower : followers) {
            follower->sessionOpened();
        }
    }

    void openAfterPause() {
        next = mainLoop.schedule(mainLoop.now() + untilRetry, connectingLeeway, [this] { open(); });
    }

    void close() {
        isConnected = false;
        isClosing = false;
        hasMore = false;
        disconnect();
        openAfterPause();
        for (Follower* follower : followers) {
            follower->sessionClosed();
        }
    }

    void serve() {
        bool hasTime = true;
        hasMore = true;
        for (int count = 0; hasMore && hasTime && count < mostEventsAtOnce; ++count) {
            hasMore = isOpen() && deliverNext();
            // Each event that waits has a turn of its own.
            hasTime = !mainLoop.turnDeadline().hasBegun();
        }
        if (hasTime) {
            for (Follower* follower : followers) {
                follower->sessionIsQuiet();
            }
        }
        if (isBroken()) {
            hasMore = false;
            closeSoon();
        }
    }

    linux::MainLoop& mainLoop;
    std::vector<Follower*> followers;
    std::unique_ptr<ScheduledWork> next;
    bool isConnected = false;
    bool isClosing = false;
    bool hasMore = false;
};

} // namespace platform::compositor
