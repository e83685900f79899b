#pragma once

#include "Platform/GnomeShell/Messages.h"
#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/MainLoop.h"

#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::gnomeshell {

/// The way to our extension in the shell: a connection of its own to the session bus, which owns the name that the
/// extension serves. The program's other connection would not do: here answers are waited for.
///
/// Whatever happens is followed: the bus, the shell and the extension may each end and come back. Main thread only.
class ShellLink final : private linux::SessionBus::Listener {
public:
    /// Somebody who works with the extension. Must end before the link.
    class Listener {
    public:
        explicit Listener(ShellLink& link);
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener();

        /// The extension is there. `isNew`: it has begun anew, and holds and shows nothing of ours. May be called
        /// within the connection's own work: answers must not be waited for.
        virtual void opened(const Hello& hello, bool isNew) = 0;
        /// It is gone, or never was there.
        virtual void closed() = 0;
        /// The extension has said something; the message is read from its beginning.
        virtual void told(std::string_view signal, sd_bus_message* message) = 0;

    private:
        ShellLink& link;
    };

    /// Why the extension does not answer.
    enum class Obstacle {
        none,
        /// Nobody knows yet.
        unknown,
        noShell,
        /// The shell is there without the extension.
        noExtension,
        /// The extension is an earlier or a later one than this program's.
        otherVersion,
        /// The extension serves somebody else, who has the program's name on the bus.
        otherClient,
        /// The shell lacks something that the extension uses, so that this does nothing.
        unfitShell,
    };

    struct Failure {
        /// The name of the error; empty where there was no answer in time.
        std::string name;
    };

    using Answer = std::expected<linux::OwnedMessage, Failure>;

    /// `bus` must be used by nobody else, and outlive the link.
    ShellLink(linux::MainLoop& mainLoop, linux::SessionBus& bus);
    ShellLink(const ShellLink&) = delete;
    ShellLink& operator=(const ShellLink&) = delete;
    ~ShellLink() override;

    /// Waits until it is known whether the extension is there, at the latest until `deadline`.
    void await(Instant deadline);

    [[nodiscard]] bool isOpen() const { return obstacle() == Obstacle::none; }

    [[nodiscard]] Obstacle obstacle() const { return present; }

    /// With `unfitShell`: the names of what the shell lacks, with commas between them.
    [[nodiscard]] const std::string& missing() const { return missingNames; }

    /// The end of all waiting in this turn of the loop.
    [[nodiscard]] Instant deadline() const { return mainLoop.turnDeadline().end(); }

    [[nodiscard]] bool isPast(Instant deadline) const;

    /// Calls a method of the extension and waits for the answer.
    template <typename... Values>
    [[nodiscard]] Answer call(Instant deadline, const char* method, const char* types, Values... values) {
        const linux::OwnedMessage message = newCall(method);
        if (message == nullptr || sd_bus_message_append(message.get(), types, values...) < 0) {
            return std::unexpected(Failure{});
        }
        return answerTo(message.get(), deadline);
    }

    /// Calls a method of the extension; what becomes of it is its own affair.
    template <typename... Values>
    void send(const char* method, const char* types, Values... values) {
        const linux::OwnedMessage message = newCall(method);
        if (message != nullptr && sd_bus_message_append(message.get(), types, values...) >= 0) {
            sendUnanswered(message.get());
        }
    }

    /// A call of a method of the extension, for its values to be appended; null without a bus.
    [[nodiscard]] linux::OwnedMessage newCall(const char* method) const;

    /// The connection, for whatever else is asked of the shell; null without a bus.
    [[nodiscard]] sd_bus* connection() const { return bus; }

private:
    struct Answers;

    void busArrived(sd_bus* arrived) override;
    void busLeft() override;

    /// Asks whether the extension is there; the answer comes later.
    void ask();
    void ownerChanged();
    void take(sd_bus_message* answer);
    /// Why the extension, or the bus in its stead, has not answered as it should.
    [[nodiscard]] Obstacle obstacleIn(sd_bus_message* answer, bool isFromBus);
    void close(Obstacle reason);
    [[nodiscard]] Answer answerTo(sd_bus_message* message, Instant deadline);
    void sendUnanswered(sd_bus_message* message);

    linux::MainLoop& mainLoop;
    linux::SessionBus& sessionBus;
    std::vector<Listener*> listeners;
    Obstacle present = Obstacle::unknown;
    sd_bus* bus = nullptr;
    linux::NameOwner owner;
    /// The connection of the shell; empty where it is not known. The shell's first answer says it before the owner
    /// does.
    std::string shell;
    std::string session;
    std::string missingNames;
    linux::OwnedSlot signals;
    linux::OwnedSlot question;
};

} // namespace platform::gnomeshell
