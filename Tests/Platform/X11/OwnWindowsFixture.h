#pragma once

#include "ClientProcess.h"
#include "Platform/Simulated/MainActor.h"
#include "Platform/X11/OwnWindows.h"
#include "TestClient.h"
#include "XServer.h"

#include <gtest/gtest.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

#include <poll.h>
#include <sys/uio.h>

#include <array>
#include <chrono>
#include <functional>
#include <stdexcept>

namespace platform::x11 {

/// A server, a toolkit with windows, and the class under test, with the test's own clock.
class OwnWindowsTest : public testing::Test {
protected:
    using CGPoint = corvid::CGPoint;

    XServer server;
    TestClient testClient{server.display()};
    ClientProcess toolkit{server.display()};
    linux::MainLoop clock;
    Connection connection = connect(server.display(), clock.turnDeadline());
    EventSelection selection{connection};
    Turn turn{connection};
    simulated::MainActor mainActor;
    OwnWindows windows{connection, selection, turn, mainActor};

    void beginTurn() {
        connection.deadline().begin();
        turn.begin();
    }

    /// A window that no window manager minds.
    xcb_window_t makeWindow() {
        const xcb_window_t window = toolkit.makeWindow();
        const std::uint32_t yes = 1;
        xcb_change_window_attributes(raw(), window, XCB_CW_OVERRIDE_REDIRECT, &yes);
        finish();
        return window;
    }

    xcb_window_t makeShownWindow() {
        const xcb_window_t window = makeWindow();
        show(window);
        return window;
    }

    void show(xcb_window_t window) {
        xcb_map_window(raw(), window);
        finish();
    }

    void hide(xcb_window_t window) {
        xcb_unmap_window(raw(), window);
        finish();
    }

    /// Gives it the focus as a window manager does.
    void focus(xcb_window_t window) {
        xcb_set_input_focus(raw(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
        finish();
    }

    /// The server serves its clients in any order: this request is handled before any client continues.
    void takeKeyboard(xcb_window_t window) {
        beginTurn();
        windows.takeKeyboard(window);
        awaitServer();
    }

    /// Waits until the server's clock, in milliseconds, has advanced: people are not faster.
    void awaitTick() {
        ServerClock clock(connection);
        beginTurn();
        const xcb_timestamp_t begin = clock.now();
        while (clock.now() == begin) {
            beginTurn();
        }
    }

    xcb_window_t focused() {
        testClient.connection().deadline().begin();
        const auto reply = testClient.connection().reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(raw()));
        return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
    }

    CGPoint origin(xcb_window_t window) {
        testClient.connection().deadline().begin();
        const auto reply = testClient.connection().reply<xcb_get_geometry_reply_t>(xcb_get_geometry(raw(), window));
        return reply ? CGPoint{static_cast<double>(reply->x), static_cast<double>(reply->y)} : CGPoint{-1, -1};
    }

    void movePointer(std::int16_t x, std::int16_t y) {
        xcb_warp_pointer(raw(), XCB_WINDOW_NONE, testClient.connection().root(), 0, 0, 0, 0, x, y);
        finish();
    }

    /// Two monitors side by side, of which the right one is the primary one.
    void splitScreen() {
        for (const bool isPrimary : {false, true}) {
            xcb_randr_monitor_info_t monitor{.name = testClient.atom(isPrimary ? "RIGHT" : "LEFT"),
                                             .primary = isPrimary,
                                             .automatic = 0,
                                             .nOutput = 0,
                                             .x = static_cast<std::int16_t>(isPrimary ? 640 : 0),
                                             .y = static_cast<std::int16_t>(isPrimary ? 200 : 0),
                                             .width = 640,
                                             .height = static_cast<std::uint16_t>(isPrimary ? 600 : 800),
                                             .width_in_millimeters = 160,
                                             .height_in_millimeters = 200};
            sendMonitor(monitor);
        }
        finish();
    }

    /// libxcb 1.15 miscounts the bytes of this request.
    void sendMonitor(xcb_randr_monitor_info_t monitor) {
        xcb_randr_set_monitor_request_t request{};
        request.window = testClient.connection().root();
        // The library needs space for its own data in front.
        std::array<iovec, 4> parts{};
        parts[2] = {.iov_base = &request, .iov_len = sizeof request};
        parts[3] = {.iov_base = &monitor, .iov_len = sizeof monitor};
        const xcb_protocol_request_t protocol{
            .count = 2, .ext = &xcb_randr_id, .opcode = XCB_RANDR_SET_MONITOR, .isvoid = 1};
        xcb_send_request(raw(), 0, &parts[2], &protocol);
    }

    /// Passes on the server's events, until the condition holds; false if it does not within some seconds.
    [[nodiscard]] bool handleUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            pollfd readable{.fd = connection.descriptor(), .events = POLLIN, .revents = 0};
            poll(&readable, 1, 10);
            handleAll();
        }
        return true;
    }

    /// Passes on all events of the server so far.
    void handleAll() {
        beginTurn();
        awaitServer();
        while (const auto event = connection.nextEvent()) {
            beginTurn();
            windows.handle(*event);
        }
        // The requests of this turn have been carried out as well.
        beginTurn();
        awaitServer();
    }

    void awaitServer() {
        static_cast<void>(connection.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.raw())));
    }

    static Connection connect(const std::string& display, linux::TurnDeadline& deadline) {
        auto opened = Connection::open(display, deadline);
        if (!opened) {
            throw std::runtime_error(opened.error());
        }
        return *std::move(opened);
    }

    xcb_connection_t* raw() { return testClient.connection().raw(); }

    void finish() { static_cast<void>(focused()); }
};

} // namespace platform::x11
