#include "FakeHerbstluftwm.h"

#include "Platform/X11/Event.h"
#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <chrono>
#include <utility>

using namespace platform;

FakeHerbstluftwm::FakeHerbstluftwm(const std::string& display)
    : client(display) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    x11::Connection& connection = client.connection();
    xcb_change_window_attributes(connection.raw(), connection.root(), XCB_CW_EVENT_MASK, &mask);
    client.finish();
    thread = std::thread([this] { serve(); });
}

FakeHerbstluftwm::~FakeHerbstluftwm() {
    isEnding = true;
    thread.join();
}

void FakeHerbstluftwm::prepare(std::vector<Reply> next) {
    const std::scoped_lock lock(mutex);
    replies = std::move(next);
}

std::vector<std::string> FakeHerbstluftwm::takeCommands() {
    const std::scoped_lock lock(mutex);
    return std::exchange(commands, {});
}

void FakeHerbstluftwm::serve() {
    x11::Connection& connection = client.connection();
    while (!isEnding) {
        connection.deadline().begin();
        xcb_window_t made = XCB_WINDOW_NONE;
        const bool isMade = connection.waitForEvent(
            connection.deadline().now() + std::chrono::milliseconds(20), [&](const xcb_generic_event_t& event) {
                const auto* created = x11::eventAs<xcb_create_notify_event_t>(event, XCB_CREATE_NOTIFY);
                if (created == nullptr) {
                    return false;
                }
                made = created->window;
                return true;
            });
        if (isMade) {
            execute(made);
        }
    }
}

void FakeHerbstluftwm::execute(xcb_window_t window) {
    x11::Connection& connection = client.connection();
    const auto read = [&](xcb_atom_t property) {
        return x11::readText(connection, x11::requestProperty(connection, window, property));
    };
    using namespace std::string_literals;
    std::string arguments = read(client.atom("_HERBST_IPC_ARGS"));
    if (read(XCB_ATOM_WM_CLASS) != "HERBST_IPC_CLASS\0HERBST_IPC_CLASS\0"s || arguments.empty()) {
        return;
    }
    std::ranges::replace(arguments, '\0', ' ');
    std::optional<Reply> reply;
    {
        const std::scoped_lock lock(mutex);
        commands.push_back(arguments);
        if (!replies.empty()) {
            reply = replies.front();
            replies.erase(replies.begin());
        }
    }
    if (reply) {
        client.setText(window, "_HERBST_IPC_OUTPUT", reply->output);
        client.setWords(window, "_HERBST_IPC_EXIT_STATUS", "ATOM", {reply->status});
    }
}
