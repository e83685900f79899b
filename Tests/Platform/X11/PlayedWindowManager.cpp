#include "PlayedWindowManager.h"

#include "Platform/X11/Event.h"
#include "Platform/X11/Reply.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <csignal>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::x11 {

namespace {

using Reference = PlayedWindowManager::Reference;

// Wider than each screen of the tests.
constexpr std::uint16_t widest = 8192;

/// The window manager in its process.
class Player {
public:
    Player(xcb_connection_t* connection, const PlayedWindowManager::Manners& manners)
        : connection(connection)
        , manners(manners)
        , root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root)
        , state(atom("WM_STATE")) {}

    /// Whether it is the only window manager.
    [[nodiscard]] bool begin() {
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        const Owned<xcb_generic_error_t> refusal(xcb_request_check(
            connection, xcb_change_window_attributes_checked(connection, root, XCB_CW_EVENT_MASK, &mask)));
        if (manners.ownsSelection) {
            xcb_set_selection_owner(connection, makeWindow(root, 1, 1, 0), atom("WM_S0"), XCB_CURRENT_TIME);
        }
        if (manners.bar > 0) {
            const std::uint32_t isUnmanaged = 1;
            const xcb_window_t bar = makeWindow(root, widest, manners.bar, 0);
            xcb_change_window_attributes(connection, bar, XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
            xcb_map_window(connection, bar);
        }
        finish();
        return refusal == nullptr;
    }

    [[noreturn]] void run() {
        for (;;) {
            while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
                handle(*event);
            }
            xcb_flush(connection);
            pollfd server{.fd = xcb_get_file_descriptor(connection), .events = POLLIN, .revents = 0};
            if (poll(&server, 1, waiting.empty() ? -1 : static_cast<int>(manners.pause.count())) == 0) {
                for (const xcb_configure_request_event_t& request : std::exchange(waiting, {})) {
                    move(request);
                }
            }
            if (xcb_connection_has_error(connection) != 0) {
                _exit(0);
            }
        }
    }

private:
    xcb_atom_t atom(std::string_view name) {
        const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
        return reply->atom;
    }

    void finish() {
        const Owned<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    }

    xcb_window_t makeWindow(xcb_window_t parent, std::uint16_t width, std::uint16_t height, std::uint16_t border) {
        const xcb_window_t window = xcb_generate_id(connection);
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, parent, 0, 0, width, height, border,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
        return window;
    }

    void handle(const xcb_generic_event_t& event) {
        if (const auto* mapped = eventAs<xcb_map_request_event_t>(event, XCB_MAP_REQUEST)) {
            manage(mapped->window);
        } else if (const auto* request = eventAs<xcb_configure_request_event_t>(event, XCB_CONFIGURE_REQUEST)) {
            if (!frames.contains(request->window)) {
                const std::uint16_t border = manners.removesBorders ? XCB_CONFIG_WINDOW_BORDER_WIDTH : 0;
                const std::array<std::uint32_t, 3> values{request->width, request->height, 0};
                xcb_configure_window(connection, request->window,
                                     XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT | border, values.data());
            } else if (manners.pause.count() > 0) {
                if (manners.movesAtOnce) {
                    moveAlone(*request);
                }
                waiting.push_back(*request);
            } else {
                move(*request);
            }
        } else if (const auto* destroyed = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY)) {
            if (frames.contains(destroyed->window)) {
                xcb_destroy_window(connection, frames.at(destroyed->window).front());
                frames.erase(destroyed->window);
            }
        }
    }

    void manage(xcb_window_t client) {
        const Owned<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(connection, xcb_get_geometry(connection, client), nullptr));
        const std::uint32_t border = manners.frames == 0 ? manners.border : 0;
        xcb_configure_window(connection, client, XCB_CONFIG_WINDOW_BORDER_WIDTH, &border);
        std::vector<xcb_window_t>& chain = frames[client];
        xcb_window_t parent = root;
        for (int depth = 0; depth < manners.frames; ++depth) {
            chain.push_back(makeWindow(parent, 1, 1, depth == 0 ? manners.border : std::uint16_t{0}));
            parent = chain.back();
            xcb_map_window(connection, parent);
        }
        if (!chain.empty()) {
            xcb_change_save_set(connection, XCB_SET_MODE_INSERT, client);
            xcb_reparent_window(connection, client, parent, 0, 0);
        }
        place(client, 100, 100, geometry->width, geometry->height);
        xcb_map_window(connection, client);
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, client, XCB_CURRENT_TIME);
        const std::array<std::uint32_t, 2> normal{1, 0};
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, client, state, state, 32, 2, normal.data());
    }

    /// Puts the corner of the outermost window there.
    void place(xcb_window_t client, int x, int y, std::uint32_t width, std::uint32_t height) {
        const auto word = [](int value) { return std::bit_cast<std::uint32_t>(value); };
        constexpr std::uint16_t all =
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
        const auto& chain = frames.at(client);
        std::array<std::uint32_t, 4> values{word(x), word(y), width + word(manners.left + manners.right),
                                            height + word(manners.title)};
        for (std::size_t index = 0; index < chain.size(); ++index) {
            // Only the innermost has the title bar above the client.
            xcb_configure_window(connection, chain[index], all, values.data());
            values[0] = values[1] = 0;
        }
        if (!chain.empty()) {
            values[0] = word(manners.left);
            values[1] = word(manners.title);
        }
        values[2] = width;
        values[3] = height;
        xcb_configure_window(connection, client, all, values.data());
    }

    void move(const xcb_configure_request_event_t& request) {
        if (manners.refuses || !frames.contains(request.window)) {
            return;
        }
        const int border = manners.border;
        const int title = manners.frames == 0 ? 0 : manners.title;
        const int left = manners.frames == 0 ? 0 : manners.left;
        int x = request.x;
        int y = request.y;
        if (manners.reference == Reference::client ||
            (manners.reference == Reference::gravity && isStatic(request.window))) {
            x -= border + left;
            y -= border + title;
        } else if (manners.reference == Reference::frameWithoutBorder) {
            x -= border;
            y -= border;
        }
        if (manners.keepsCorner) {
            x = std::max(x, -1);
            y = std::max(y, -1);
        }
        place(request.window, x, y, request.width, request.height);
        send(request.window, x + border + left, y + border + title, request.width, request.height);
    }

    void moveAlone(xcb_configure_request_event_t request) {
        const Owned<xcb_get_geometry_reply_t> present(
            xcb_get_geometry_reply(connection, xcb_get_geometry(connection, request.window), nullptr));
        if (present) {
            request.width = present->width;
            request.height = present->height;
            move(request);
        }
    }

    /// Reports a position to the client (ICCCM 4.1.5).
    void send(xcb_window_t client, int x, int y, std::uint16_t width, std::uint16_t height) {
        xcb_configure_notify_event_t report{};
        report.response_type = XCB_CONFIGURE_NOTIFY;
        report.event = report.window = client;
        report.x = static_cast<std::int16_t>(x);
        report.y = static_cast<std::int16_t>(y);
        report.width = width;
        report.height = height;
        xcb_send_event(connection, 0, client, XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&report));
    }

    bool isStatic(xcb_window_t client) {
        constexpr std::uint32_t length = 18;
        const Owned<xcb_get_property_reply_t> hints(xcb_get_property_reply(
            connection,
            xcb_get_property(connection, 0, client, XCB_ATOM_WM_NORMAL_HINTS, XCB_GET_PROPERTY_TYPE_ANY, 0, length),
            nullptr));
        return hints && hints->length == length &&
               static_cast<const std::uint32_t*>(xcb_get_property_value(hints.get()))[length - 1] == XCB_GRAVITY_STATIC;
    }

    xcb_connection_t* connection;
    PlayedWindowManager::Manners manners;
    xcb_window_t root;
    xcb_atom_t state;
    /// From the outermost to the innermost.
    std::map<xcb_window_t, std::vector<xcb_window_t>> frames;
    std::vector<xcb_configure_request_event_t> waiting;
};

[[noreturn]] void play(const std::string& display, const PlayedWindowManager::Manners& manners, int answer) {
    xcb_connection_t* connection = xcb_connect(display.c_str(), nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        _exit(1);
    }
    Player player(connection, manners);
    const char isInCharge = player.begin() ? 'y' : 'n';
    if (write(answer, &isInCharge, 1) != 1) {
        _exit(1);
    }
    player.run();
}

} // namespace

PlayedWindowManager::PlayedWindowManager(const std::string& display, const Manners& manners) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        throw std::runtime_error("cannot make a pair of sockets");
    }
    child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        close(ends[0]);
        play(display, manners, ends[1]);
    }
    close(ends[1]);
    char answer = 'n';
    const bool isInCharge = read(ends[0], &answer, 1) == 1 && answer == 'y';
    close(ends[0]);
    if (!isInCharge) {
        end();
        throw std::runtime_error("there is another window manager");
    }
}

void PlayedWindowManager::end() {
    if (child > 0) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        child = -1;
    }
}

} // namespace platform::x11
