#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <cstddef>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform::hyprland {

/// Requests to the compositor: a connection for each, which has its answer and is closed. The compositor serves a
/// connection only once it has something to read, and stands still while it writes the answer, so nothing is left
/// unwritten or unread. Main thread only.
class Requests {
public:
    explicit Requests(linux::MainLoop& mainLoop)
        : mainLoop(mainLoop) {}

    /// Asks at the socket of that path and waits for the answer. Empty if nothing listens there, or the whole answer
    /// has not come by the deadline; what comes later is read and dropped. With a deadline that has passed it only
    /// asks.
    [[nodiscard]] std::optional<std::string> ask(const std::string& path, std::string_view request, Instant deadline);

    /// Whether so many answers are late that the compositor hangs.
    [[nodiscard]] bool isFull() const { return late.size() >= mostLate; }

    /// Drops all answers that are still to come.
    void forget();

private:
    struct Late {
        linux::FileDescriptor socket;
        std::unique_ptr<linux::DescriptorWatch> watch;
        bool isOver = false;
    };

    /// More than the windows that are placed at once.
    static constexpr std::size_t mostLate = 24;

    void leave(linux::FileDescriptor socket);
    void drain(Late& left);

    linux::MainLoop& mainLoop;
    /// Connections whose answers nobody waits for any more.
    std::list<Late> late;
    std::unique_ptr<ScheduledWork> sweep;
};

} // namespace platform::hyprland
