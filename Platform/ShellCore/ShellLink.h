#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/ShellCore/Messages.h"

#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::shellcore {

/// The connection to our core in a shell, GNOME's or Cinnamon's: a separate connection to the session bus, which owns
/// the name that the core serves. The program's other connection is not suitable, because this one waits for replies.
///
/// The link follows every change: the bus, the shell and the core may each end and come back. Main thread only.
class ShellLink final : private linux::SessionBus::Listener {
public:
    /// A user of the core. Must end before the link.
    class Listener {
    public:
        explicit Listener(ShellLink& link);
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener();

        /// The core is available. `isNew`: it has started again, and holds and shows nothing of ours. May run
        /// inside the connection's own callbacks, so it must not wait for replies.
        virtual void opened(const Hello& hello, bool isNew) = 0;
        /// It is gone, or was never available.
        virtual void closed() = 0;
        /// The core has sent a signal; the message is read from its beginning.
        virtual void signalArrived(std::string_view signal, sd_bus_message* message) = 0;

    private:
        ShellLink& link;
    };

    /// The reason why the core does not reply.
    enum class Obstacle {
        none,
        /// Not known yet.
        unknown,
        noShell,
        /// The shell runs without the core.
        noCore,
        /// The core is an earlier or a later one than this program's.
        otherVersion,
        /// The core serves another client, which owns the program's name on the bus.
        otherClient,
        /// The shell lacks a function that the core uses, so the core does nothing.
        unfitShell,
    };

    struct Failure {
        /// The name of the error; empty after a timeout.
        std::string name;
    };

    using Answer = std::expected<linux::OwnedMessage, Failure>;

    /// `shellName` is the name of the shell on the bus. `bus` must be used by nobody else, and outlive the link.
    ShellLink(linux::MainLoop& mainLoop, linux::SessionBus& bus, std::string shellName);
    ShellLink(const ShellLink&) = delete;
    ShellLink& operator=(const ShellLink&) = delete;
    ~ShellLink() override;

    /// Waits until it is known whether the core is available, at the latest until `deadline`.
    void await(Instant deadline);

    /// Asks whether the core is available; the reply comes later. The link does so by itself whenever the core
    /// announces itself, and when the program's name on the bus becomes its own.
    void ask();

    [[nodiscard]] bool isOpen() const { return obstacle() == Obstacle::none; }

    [[nodiscard]] Obstacle obstacle() const { return present; }

    /// With `unfitShell`: the names of the missing functions, separated by commas.
    [[nodiscard]] const std::string& missing() const { return missingNames; }

    /// The end of all waiting in this turn of the loop.
    [[nodiscard]] Instant deadline() const { return mainLoop.turnDeadline().end(); }

    [[nodiscard]] bool isPast(Instant deadline) const;

    /// Calls a method of the core and waits for the reply.
    template <typename... Values>
    [[nodiscard]] Answer call(Instant deadline, const char* method, const char* types, Values... values) {
        const linux::OwnedMessage message = newCall(method);
        if (message == nullptr || sd_bus_message_append(message.get(), types, values...) < 0) {
            return std::unexpected(Failure{});
        }
        return answerTo(message.get(), deadline);
    }

    /// Calls a method of the core and ignores the result.
    template <typename... Values>
    void send(const char* method, const char* types, Values... values) {
        const linux::OwnedMessage message = newCall(method);
        if (message != nullptr && sd_bus_message_append(message.get(), types, values...) >= 0) {
            sendUnanswered(message.get());
        }
    }

    /// A call of a method of the core, to which its arguments are appended; null without a bus.
    [[nodiscard]] linux::OwnedMessage newCall(const char* method) const;

    /// The connection, for other requests to the shell; null without a bus.
    [[nodiscard]] sd_bus* connection() const { return bus; }

private:
    struct Answers;

    void busArrived(sd_bus* arrived) override;
    void busLeft() override;

    void ownerChanged();
    void take(sd_bus_message* answer);
    /// The cause of a failed reply of the core, or of the bus in its place.
    [[nodiscard]] Obstacle obstacleIn(sd_bus_message* answer, bool isFromBus);
    void close(Obstacle reason);
    [[nodiscard]] Answer answerTo(sd_bus_message* message, Instant deadline);
    void sendUnanswered(sd_bus_message* message);

    linux::MainLoop& mainLoop;
    linux::SessionBus& sessionBus;
    std::string shellName;
    std::vector<Listener*> listeners;
    Obstacle present = Obstacle::unknown;
    sd_bus* bus = nullptr;
    linux::NameOwner owner;
    /// The connection of the shell; empty if it is unknown. The shell's first reply has it before the owner's signal
    /// does.
    std::string shell;
    std::string session;
    std::string missingNames;
    linux::OwnedSlot signals;
    linux::OwnedSlot naming;
    linux::OwnedSlot question;
};

} // namespace platform::shellcore
