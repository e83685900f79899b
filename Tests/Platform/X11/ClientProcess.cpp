#include "ClientProcess.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace platform::x11 {

namespace {

/// The other program: makes a window for every byte that it receives, and answers with the window's id.
[[noreturn]] void serve(const std::string& display, int commands) {
    xcb_connection_t* connection = xcb_connect(display.c_str(), nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        _exit(1);
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    for (char command = 0; read(commands, &command, 1) == 1;) {
        const xcb_window_t window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 10, 10, 200, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
        if (write(commands, &window, sizeof window) != sizeof window) {
            break;
        }
    }
    _exit(0);
}

} // namespace

ClientProcess::ClientProcess(const std::string& display) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        throw std::runtime_error("cannot make a pair of sockets");
    }
    child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        close(ends[0]);
        serve(display, ends[1]);
    }
    close(ends[1]);
    commands = ends[0];
}

xcb_window_t ClientProcess::makeWindow() const {
    const char command = 'w';
    xcb_window_t window = XCB_WINDOW_NONE;
    if (write(commands, &command, 1) != 1 || read(commands, &window, sizeof window) != sizeof window) {
        throw std::runtime_error("the client process does not answer");
    }
    return window;
}

void ClientProcess::end() {
    if (child > 0) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(commands);
        child = -1;
    }
}

} // namespace platform::x11
