#pragma once

#include "Platform/Compositor/Session.h"
#include "Platform/I3Ipc/Connection.h"
#include "Platform/I3Ipc/Nodes.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <memory>
#include <optional>
#include <string>

namespace platform::sway {

/// The connections to a compositor that uses i3's IPC: one for requests, another one for events. If one of them breaks,
/// both are closed. Main thread only.
class Session final : public compositor::Session<i3ipc::EventType, const i3ipc::Json&> {
public:
    /// `path`: of the compositor's socket. Opens nothing yet.
    Session(linux::MainLoop& mainLoop, std::string path);

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

    [[nodiscard]] bool connect() override;

    void disconnect() override { connections.reset(); }

    [[nodiscard]] bool isBroken() const override {
        return connections->requests.isBroken() || connections->events.isBroken();
    }

    [[nodiscard]] bool deliverNext() override;

    [[nodiscard]] bool subscribe(i3ipc::Connection& connection) const;
    /// The answer to the last question, those before thrown away.
    [[nodiscard]] std::optional<i3ipc::Message> awaitAnswer(Instant deadline);
    void dropLateAnswers();

    std::string path;
    std::unique_ptr<Connections> connections;
};

} // namespace platform::sway
