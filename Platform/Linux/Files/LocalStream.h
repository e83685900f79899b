#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Seam/Desktop/MainActor.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace platform::linux {

/// A connection to a Unix socket over which messages go both ways. It blocks only in `send` and `receive`, and only
/// until their deadline. Any error breaks it permanently. Any thread; the clock has to outlive it.
class LocalStream {
public:
    /// Empty if nothing listens at this path, or the listen queue is full.
    [[nodiscard]] static std::optional<LocalStream> open(const std::string& path, const MainActor& clock);

    LocalStream(FileDescriptor socket, const MainActor& clock)
        : socket(std::move(socket))
        , clock(&clock) {}

    [[nodiscard]] int descriptor() const { return socket.get(); }

    [[nodiscard]] bool isBroken() const { return broken; }

    /// Whether all bytes of a message were sent. A partial message breaks the connection.
    bool send(std::string_view bytes, Instant deadline);

    /// The next message that `reader` cuts from the received bytes; empty if there is none until the deadline, or the
    /// connection broke. With a deadline in the past it returns a message that has arrived. `Reader` has `add(bytes)`,
    /// `next()` with an optional message, and `isBroken()`.
    template <typename Reader>
    [[nodiscard]] auto receive(Reader& reader, Instant deadline) -> decltype(reader.next()) {
        while (!broken) {
            if (auto message = reader.next()) {
                return message;
            }
            broken = broken || reader.isBroken();
            if (broken || (!read(reader) && !broken && !awaitData(deadline))) {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

private:
    /// Adds the data that has arrived; false without any.
    template <typename Reader>
    [[nodiscard]] bool read(Reader& reader) {
        const std::string bytes = arrived();
        reader.add(bytes);
        return !bytes.empty();
    }

    /// The data that has arrived, up to a limit.
    [[nodiscard]] std::string arrived();
    /// Waits for data; false if the deadline comes first.
    [[nodiscard]] bool awaitData(Instant deadline) const;

    FileDescriptor socket;
    const MainActor* clock;
    bool broken = false;
};

} // namespace platform::linux
