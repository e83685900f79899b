#include "Platform/Linux/DesktopNotifications.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

/// A desktop's server of notifications, which notes what it is to show.
class NotificationServer final : private SessionBus::Listener {
public:
    explicit NotificationServer(SessionBus& bus)
        : Listener(bus) {}

    std::vector<std::string> shown;
    bool isThere = false;

private:
    void busArrived(sd_bus* bus) override {
        EXPECT_GE(sd_bus_add_object(bus, nullptr, "/org/freedesktop/Notifications", &NotificationServer::called, this),
                  0);
        EXPECT_GE(sd_bus_request_name_async(bus, nullptr, "org.freedesktop.Notifications", 0,
                                            &NotificationServer::named, this),
                  0);
    }

    void busLeft() override {}

    static int named(sd_bus_message* /*reply*/, void* data, sd_bus_error* /*error*/) {
        static_cast<NotificationServer*>(data)->isThere = true;
        return 0;
    }

    static int called(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
        EXPECT_GT(sd_bus_message_is_method_call(call, "org.freedesktop.Notifications", "Notify"), 0);
        EXPECT_STREQ(sd_bus_message_get_signature(call, 1), "susssasa{sv}i");
        const char* program = "";
        const char* icon = "";
        const char* summary = "";
        const char* body = "";
        const char* hint = "";
        const char* entry = "";
        std::uint32_t replaced = 1;
        std::int32_t duration = 0;
        EXPECT_GT(sd_bus_message_read(call, "susss", &program, &replaced, &icon, &summary, &body), 0);
        EXPECT_EQ(replaced, 0U);
        EXPECT_GT(sd_bus_message_skip(call, "as"), 0);
        EXPECT_GT(sd_bus_message_read(call, "a{sv}", 1, &hint, "s", &entry), 0);
        EXPECT_GT(sd_bus_message_read(call, "i", &duration), 0);
        EXPECT_EQ(duration, -1);
        static_cast<NotificationServer*>(data)->shown.push_back(std::string(program) + "|" + icon + "|" + summary +
                                                                "|" + body + "|" + hint + "=" + entry);
        return sd_bus_reply_method_return(call, "u", 7U);
    }
};

class DesktopNotificationsTest : public testing::Test {
protected:
    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }

    static std::string shownAs(const std::string& line) {
        return "Program|org.example.Program|" + line + "||desktop-entry=org.example.Program";
    }

    MessageBus daemon;
    MainLoop loop;
};

TEST_F(DesktopNotificationsTest, ALineIsShownUnderTheProgramsNameAndIcon) {
    daemon.start();
    SessionBus serverBus(loop, daemon.address());
    NotificationServer server(serverBus);
    ASSERT_TRUE(runUntil([&] { return server.isThere; }));
    SessionBus bus(loop, daemon.address());
    DesktopNotifications notifications(bus, "Program", "org.example.Program");
    ASSERT_TRUE(bus.awaitArrival(loop.now() + std::chrono::seconds(10)));
    notifications.show("Ready");
    EXPECT_TRUE(runUntil([&] { return !server.shown.empty(); }));
    EXPECT_EQ(server.shown, std::vector<std::string>{shownAs("Ready")});
}

TEST_F(DesktopNotificationsTest, WhatComesBeforeTheBusIsShownOnceItIsThere) {
    daemon.start();
    SessionBus serverBus(loop, daemon.address());
    NotificationServer server(serverBus);
    ASSERT_TRUE(runUntil([&] { return server.isThere; }));
    // It is greeted by the bus in a later turn of the loop.
    SessionBus bus(loop, daemon.address());
    DesktopNotifications notifications(bus, "Program", "org.example.Program");
    notifications.show("First");
    notifications.show("Last");
    EXPECT_TRUE(runUntil([&] { return !server.shown.empty(); }));
    EXPECT_EQ(server.shown, std::vector<std::string>{shownAs("Last")});
}

TEST_F(DesktopNotificationsTest, WithNobodyToShowThemTheyAreLost) {
    daemon.start();
    SessionBus bus(loop, daemon.address());
    DesktopNotifications notifications(bus, "Program", "org.example.Program");
    ASSERT_TRUE(bus.awaitArrival(loop.now() + std::chrono::seconds(10)));
    notifications.show("Lost");
    SessionBus serverBus(loop, daemon.address());
    ASSERT_TRUE(serverBus.awaitArrival(loop.now() + std::chrono::seconds(10)));
    NotificationServer server(serverBus);
    ASSERT_TRUE(runUntil([&] { return server.isThere; }));
    notifications.show("Shown");
    EXPECT_TRUE(runUntil([&] { return !server.shown.empty(); }));
    EXPECT_EQ(server.shown, std::vector<std::string>{shownAs("Shown")});
}

} // namespace
} // namespace platform::linux
