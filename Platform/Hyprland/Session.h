#pragma once

#include "Platform/Compositor/Json.h"
#include "Platform/Compositor/Session.h"
#include "Platform/Hyprland/Requests.h"
#include "Platform/Hyprland/Words.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform::hyprland {

/// The way to a running Hyprland: requests, and a connection for its events, which are a name and what it brought, as
/// in "closewindow" and "55d0c0ffee". When that breaks, a compositor is looked for again. Main thread only.
class Session final : public compositor::Session<std::string_view, std::string_view> {
public:
    /// `find` gives the folder of the running compositor's sockets; empty without one. Opens nothing yet.
    Session(linux::MainLoop& mainLoop, std::function<std::string()> find);

    [[nodiscard]] Language language() const { return spoken; }

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
    };

    [[nodiscard]] bool connect() override;
    void disconnect() override;

    [[nodiscard]] bool isBroken() const override { return events->isBroken; }

    [[nodiscard]] bool deliverNext() override;

    /// Reads what has come; false without anything.
    [[nodiscard]] bool receive() const;
    [[nodiscard]] bool hasLine() const;
    void learnLanguage(const std::optional<std::string>& status);

    std::function<std::string()> find;
    Requests requests;
    std::string folder;
    std::unique_ptr<Events> events;
    Language spoken = Language::hyprlang;
};

} // namespace platform::hyprland
