#pragma once

#include "Platform/Compositor/Json.h"
#include "Platform/Hyprland/Requests.h"
#include "Platform/Hyprland/Words.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::hyprland {

/// The way to a running Hyprland: requests, and a connection for its events. When that breaks, a compositor is looked
/// for after a pause, and again until there is one. Main thread only.
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
        /// An event and what it brought, as in "closewindow" and "55d0c0ffee".
        virtual void sessionReported(std::string_view event, std::string_view data) = 0;
        /// All events that have arrived were reported.
        virtual void sessionIsQuiet() = 0;
    };

    static constexpr std::chrono::seconds untilRetry{1};

    /// `find` gives the folder of the running compositor's sockets; empty without one. Opens nothing yet.
    Session(linux::MainLoop& mainLoop, std::function<std::string()> find);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() = default;

    /// Must outlive this.
    void follow(Follower& follower) { followers.push_back(&follower); }

    /// Opens it, now if the compositor is there, else as soon as it is.
    void start();

    [[nodiscard]] bool isOpen() const { return events != nullptr; }

    [[nodiscard]] Language language() const { return spoken; }

    /// The end of all waiting in this turn of the loop.
    [[nodiscard]] Instant deadline() const { return mainLoop.turnDeadline().end(); }

    /// Asks and waits for the answer; see `Requests::ask`.
    [[nodiscard]] std::optional<std::string> ask(std::string_view request, Instant deadline);

    /// Asks for JSON ("j/" is put in front). Empty if the answer is late, or is none.
    [[nodiscard]] std::optional<compositor::Json> read(std::string_view request, Instant deadline);

    /// Sends a request in the compositor's language; once more in the other one if it has changed. Returns the answer.
    std::optional<std::string> run(const std::function<std::string(Language)>& request, Instant deadline);

private:
    struct Events {
        linux::FileDescriptor socket;
        std::unique_ptr<linux::DescriptorWatch> watch;
        std::string unread;
        bool isBroken = false;
        /// Whether the followers are to be told that no more have come.
        bool isQuietUnreported = false;
    };

    void open();
    void close();
    /// Closes in a turn of its own: a caller must not be notified during its request.
    void closeSoon();
    void serveEvents();
    /// Reads what has come; false without anything.
    [[nodiscard]] bool receive() const;
    [[nodiscard]] bool hasLine() const;
    void deliverLine();
    void learnLanguage(Instant until);

    linux::MainLoop& mainLoop;
    std::function<std::string()> find;
    Requests requests;
    std::vector<Follower*> followers;
    std::string folder;
    std::unique_ptr<Events> events;
    std::unique_ptr<ScheduledWork> next;
    Language spoken = Language::hyprlang;
};

} // namespace platform::hyprland
