#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Control/ControlBusName.h"
#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Control/SingleInstance.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Tests/Platform/Linux/Control/ControlServer.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds soon{20};

ControlServer::Serve onBus(const std::string& address) {
    return [address](MainLoop& loop, RecordedRequests& requests, const std::function<void()>& run) {
        SessionBus bus(loop, address, soon);
        const ControlBusName name(bus, requests);
        run();
    };
}

ControlServer::Setup called(const std::string& version) {
    return [version](RecordedRequests& requests) { requests.report.version = version; };
}

/// The version that the owner of the name reports, as soon as it does.
std::string versionOnBus(const MessageBus& bus, const std::string& wanted) {
    const auto deadline = std::chrono::steady_clock::now() + seconds(10);
    std::string reported;
    while (reported != wanted && std::chrono::steady_clock::now() < deadline) {
        const auto status = ControlClient::onBus(bus.address()).status();
        reported = status ? status->version : "none: " + status.error().reason;
    }
    return reported;
}

TEST(SessionBus, AClientThatKnowsTheNameCanCallTheProgram) {
    MessageBus bus;
    bus.start();
    ControlServer server(onBus(bus.address()), called("1"));
    EXPECT_EQ(versionOnBus(bus, "1"), "1");
    EXPECT_TRUE(perform(ControlClient::onBus(bus.address()), "center"));
    EXPECT_TRUE(ControlClient::onBus(bus.address()).quit());
    const auto asked = server.asked();
    EXPECT_EQ(asked.back(), "quit");
    EXPECT_EQ(asked.at(asked.size() - 2), "perform center");
}

/// The call with which `gdbus` and desktops start an application. Returns the name of the error, or an empty text.
std::string callApplication(const MessageBus& bus, const char* member, const char* types, const char* first) {
    sd_bus* raw = nullptr;
    EXPECT_GE(sd_bus_new(&raw), 0);
    const OwnedBus connection(raw);
    EXPECT_GE(sd_bus_set_address(raw, bus.address().c_str()), 0);
    EXPECT_GE(sd_bus_set_bus_client(raw, 1), 0);
    EXPECT_GE(sd_bus_start(raw), 0);
    sd_bus_message* rawCall = nullptr;
    EXPECT_GE(sd_bus_message_new_method_call(raw, &rawCall, "org.corvid.Tessel", "/org/corvid/Tessel",
                                             "org.freedesktop.Application", member),
              0);
    const OwnedMessage call(rawCall);
    const std::string_view signature(types);
    if (signature.starts_with("as")) {
        EXPECT_GE(sd_bus_message_append(rawCall, "as", 1, first), 0);
    } else if (signature.starts_with("sav")) {
        EXPECT_GE(sd_bus_message_append(rawCall, "sav", first, 0), 0);
    }
    EXPECT_GE(sd_bus_message_append(rawCall, "a{sv}", 1, "activation-token", "s", "token"), 0);
    sd_bus_error error{};
    const int result = sd_bus_call(raw, rawCall, 0, &error, nullptr);
    std::string name = error.name != nullptr ? error.name : "";
    EXPECT_EQ(result < 0, !name.empty());
    sd_bus_error_free(&error);
    return name;
}

TEST(SessionBus, DesktopsCanAskItAsTheyAskAnyApplication) {
    MessageBus bus;
    bus.start();
    ControlServer server(onBus(bus.address()), called("1"));
    ASSERT_EQ(versionOnBus(bus, "1"), "1");
    EXPECT_EQ(callApplication(bus, "Activate", "a{sv}", nullptr), "");
    EXPECT_EQ(callApplication(bus, "Open", "asa{sv}", "file:///tmp/a"), "");
    EXPECT_EQ(callApplication(bus, "ActivateAction", "sava{sv}", "fly"), "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_EQ(callApplication(bus, "ActivateAction", "sava{sv}", "open"), "");
    EXPECT_EQ(callApplication(bus, "Nothing", "a{sv}", nullptr), "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_EQ(callApplication(bus, "ActivateAction", "sava{sv}", "quit"), "");
    std::vector<std::string> asked = server.asked();
    std::erase(asked, "status");
    EXPECT_EQ(asked, (std::vector<std::string>{"open", "open", "open", "quit"}));
}

TEST(SessionBus, ABusThatComesLateIsFound) {
    MessageBus bus;
    const ControlServer server(onBus(bus.address()), called("1"));
    EXPECT_EQ(ControlClient::onBus(bus.address()).status().error().kind, ControlRefusal::Kind::notRunning);
    bus.start();
    EXPECT_EQ(versionOnBus(bus, "1"), "1");
    EXPECT_TRUE(ControlClient::onBus(bus.address()).quit());
}

TEST(SessionBus, ABusThatDiesAndComesBackIsFoundAgain) {
    MessageBus bus;
    bus.start();
    const ControlServer server(onBus(bus.address()), called("1"));
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(versionOnBus(bus, "1"), "1");
        bus.stop();
        bus.start();
    }
    EXPECT_EQ(versionOnBus(bus, "1"), "1");
    EXPECT_TRUE(ControlClient::onBus(bus.address()).quit());
}

TEST(SessionBus, TheNameGoesToTheNextInLineWhenItsOwnerEnds) {
    MessageBus bus;
    bus.start();
    ControlServer first(onBus(bus.address()), called("1"));
    EXPECT_EQ(versionOnBus(bus, "1"), "1");
    const ControlServer second(onBus(bus.address()), called("2"));
    EXPECT_EQ(versionOnBus(bus, "1"), "1");
    EXPECT_TRUE(ControlClient::onBus(bus.address()).quit());
    EXPECT_EQ(first.asked().back(), "quit");
    EXPECT_EQ(versionOnBus(bus, "2"), "2");
    EXPECT_TRUE(ControlClient::onBus(bus.address()).quit());
}

/// Runs a loop with a bus object for some time. Returns the number of the loop's turns.
int turnsWithin(Duration time, const std::string& address, Duration interval) {
    MainLoop loop;
    int turns = 0;
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    const FileDescriptor reading{ends[0]};
    const FileDescriptor writing{ends[1]};
    const auto counter = loop.watch(
        reading.get(),
        [&turns] {
            ++turns;
            return false;
        },
        [] {});
    const SessionBus bus(loop, address, interval);
    const auto end = loop.schedule(loop.now() + time, milliseconds(1), [&loop] { loop.end(0); });
    EXPECT_EQ(loop.run(), 0);
    return turns;
}

TEST(SessionBus, AMissingBusIsLookedForCalmly) {
    const MessageBus bus;
    EXPECT_LT(turnsWithin(milliseconds(300), bus.address(), milliseconds(100)), 10);
    EXPECT_LT(turnsWithin(milliseconds(300), bus.address(), SessionBus::usualInterval), 3);
    EXPECT_GE(SessionBus::usualInterval, seconds(10));
}

TEST(SessionBus, SomethingElseBehindTheAddressIsLeftCalmly) {
    const Session session = uniqueSession("not-a-bus");
    // It accepts connections and never sends anything.
    const auto silent = SingleInstance::acquire(session);
    const std::string address = "unix:path=" + session.runtimeFolder + "/tessel/" + session.display + ".socket";
    EXPECT_LT(turnsWithin(milliseconds(300), address, milliseconds(100)), 10);
}

class Environment : public testing::Test {
protected:
    static void set(const char* name, const char* value) {
        if (value == nullptr) {
            ::unsetenv(name);
        } else {
            ::setenv(name, value, 1);
        }
    }
};

TEST_F(Environment, NamesTheBusButOnlyAsALocalSocket) {
    struct Row {
        const char* address;
        const char* folder;
        std::optional<std::string> expected;
    };
    const std::vector<Row> rows{
        {nullptr, nullptr, std::nullopt},
        {nullptr, "/run/user/1000", "unix:path=/run/user/1000/bus"},
        {nullptr, "/odd folder,;", "unix:path=/odd%20folder%2c%3b/bus"},
        {nullptr, "relative", std::nullopt},
        {"", "/run/user/1000", "unix:path=/run/user/1000/bus"},
        {"unix:path=/tmp/bus", "/run/user/1000", "unix:path=/tmp/bus"},
        {"unix:path=/tmp/a;unix:abstract=b", nullptr, "unix:path=/tmp/a;unix:abstract=b"},
        {"tcp:host=example.org,port=1;unix:path=/tmp/a", nullptr, "unix:path=/tmp/a"},
        {"tcp:host=example.org,port=1", "/run/user/1000", std::nullopt},
        {"unixexec:path=/bin/false", "/run/user/1000", std::nullopt},
        {"autolaunch:;", "/run/user/1000", std::nullopt},
    };
    inChildProcess([&] {
        for (const Row& row : rows) {
            set("DBUS_SESSION_BUS_ADDRESS", row.address);
            set("XDG_RUNTIME_DIR", row.folder);
            EXPECT_EQ(sessionBusAddress(), row.expected) << (row.address != nullptr ? row.address : "none");
        }
    });
}

} // namespace
} // namespace platform::linux
