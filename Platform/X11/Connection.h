#pragma once

#include "Platform/Linux/Loop/TurnDeadline.h"
#include "Platform/X11/Atoms.h"
#include "Platform/X11/Reply.h"

#include <xcb/xcb.h>

#include <cstddef>
#include <deque>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace platform::x11 {

/// The bytes that can be sent at once without waiting for the server, if it has read most of the earlier ones: the
/// buffers in between hold some 200 KiB.
inline constexpr std::size_t largestBurst = std::size_t{64} << 10U;

/// One connection to an X server: requests, replies within a time limit, and the events that arrive meanwhile.
///
/// Main thread only. Every wait has a limit: a server that another client has grabbed (XGrabServer) must not block the
/// main thread. A reply that did not come in time reads as absent and is discarded when it comes.
class Connection {
public:
    /// Connects to `display` (empty: the environment's DISPLAY). Every wait ends at `deadline`, which has to outlive
    /// this. The error is a sentence for the user.
    [[nodiscard]] static std::expected<Connection, std::string> open(const std::string& display,
                                                                     linux::TurnDeadline& deadline);

    Connection(Connection&&) noexcept = default;
    Connection& operator=(Connection&&) noexcept = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() = default;

    [[nodiscard]] xcb_connection_t* raw() const { return connection.get(); }

    [[nodiscard]] xcb_window_t root() const { return screen->root; }

    [[nodiscard]] const xcb_screen_t& screenSetup() const { return *screen; }

    [[nodiscard]] int screenNumber() const { return number; }

    [[nodiscard]] const AtomTable& atomTable() const { return atoms; }

    [[nodiscard]] xcb_atom_t atom(Atom name) const { return atoms[name]; }

    /// The connection's descriptor; readable when the server has sent data.
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(connection.get()); }

    /// Whether the server has the extension. A request of an extension that it lacks breaks the connection.
    [[nodiscard]] bool has(xcb_extension_t& extension) const {
        const xcb_query_extension_reply_t* answer = xcb_get_extension_data(connection.get(), &extension);
        return answer != nullptr && answer->present != 0;
    }

    /// Whether the connection is broken.
    [[nodiscard]] bool isBroken() const { return xcb_connection_has_error(connection.get()) != 0; }

    void flush() { xcb_flush(connection.get()); }

    /// The end of all waiting in this turn of the event loop.
    [[nodiscard]] linux::TurnDeadline& deadline() const { return *turn; }

    /// Whether the turn's time is used up. No: what had no reply has failed.
    [[nodiscard]] bool isOutOfTime() const { return turn->hasPassed(); }

    /// Whether the turn's time is used up, or the server does not take what it is sent, so that no answer is to be
    /// expected.
    [[nodiscard]] bool isExhausted() const { return isOutOfTime() || isBacklogged(); }

    /// Whether the server has left so much unread that sending more might block, for as long as another client grabs
    /// the server. Code that sends more than a few requests at once checks this before, and sends at most
    /// `largestBurst` bytes.
    [[nodiscard]] bool isBacklogged() const;

    /// The reply to a request, or null if it failed or did not come within the turn's time.
    template <typename Reply, typename Cookie>
    [[nodiscard]] Owned<Reply> reply(Cookie cookie) {
        return Owned<Reply>(static_cast<Reply*>(waitForReply(cookie.sequence)));
    }

    /// Whether checked requests without replies have all succeeded, with a single wait; empty if the server did not
    /// reply within the turn's time.
    [[nodiscard]] std::optional<bool> succeeded(const std::vector<xcb_void_cookie_t>& cookies);

    /// The next event that has arrived, or null. Does not wait.
    [[nodiscard]] Owned<xcb_generic_event_t> nextEvent();

    /// Whether `nextEvent` would return an event without reading from the server.
    [[nodiscard]] bool hasPendingEvents();

    /// Waits for an event that `matches`, at most until `limit` and the end of the turn's time, and removes it; false
    /// if none came. Events that do not match are kept for `nextEvent`.
    template <typename Predicate>
    [[nodiscard]] bool waitForEvent(Instant limit, Predicate matches) {
        std::size_t seen = 0;
        for (;;) {
            for (; seen < kept.size(); ++seen) {
                if (matches(*kept[seen])) {
                    kept.erase(kept.begin() + static_cast<std::ptrdiff_t>(seen));
                    return true;
                }
            }
            if (!keepArrivedEvents() && !waitUntilReadable(limit)) {
                return false;
            }
        }
    }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* raw) const { xcb_disconnect(raw); }
    };

    Connection(xcb_connection_t* raw, int screenNumber, linux::TurnDeadline& deadline);

    [[nodiscard]] bool internAtoms();
    [[nodiscard]] void* waitForReply(unsigned sequence);
    [[nodiscard]] bool waitUntilReadable(Instant limit);
    bool keepArrivedEvents();

    std::unique_ptr<xcb_connection_t, Disconnect> connection;
    int number = 0;
    const xcb_screen_t* screen = nullptr;
    AtomTable atoms;
    std::deque<Owned<xcb_generic_event_t>> kept;
    linux::TurnDeadline* turn;
};

} // namespace platform::x11
