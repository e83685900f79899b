#include "Platform/Linux/Services/SessionLock.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace platform::linux {
namespace {

constexpr const char* loginManager = "org.freedesktop.login1";
constexpr const char* session = "/org/freedesktop/login1/session/_32";
constexpr const char* sessionInterface = "org.freedesktop.login1.Session";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

/// A program on a bus that sends signals.
class Speaker {
public:
    /// With that name, unless it is empty.
    explicit Speaker(const MessageBus& daemon, const char* name = "") {
        sd_bus* raw = nullptr;
        sd_bus_new(&raw);
        bus.reset(raw);
        EXPECT_GE(sd_bus_set_address(raw, daemon.address().c_str()), 0);
        EXPECT_GE(sd_bus_set_bus_client(raw, 1), 0);
        EXPECT_GE(sd_bus_start(raw), 0);
        EXPECT_TRUE(*name == '\0' || sd_bus_request_name(raw, name, 0) >= 0);
    }

    /// Sends a signal whose body `append` writes.
    void say(
        const char* path, const char* interface, const char* member,
        const std::function<void(sd_bus_message*)>& append = [](sd_bus_message*) {}) const {
        sd_bus_message* raw = nullptr;
        ASSERT_GE(sd_bus_message_new_signal(bus.get(), &raw, path, interface, member), 0);
        const OwnedMessage signal(raw);
        append(raw);
        ASSERT_GE(sd_bus_send(bus.get(), raw, nullptr), 0);
        ASSERT_GE(sd_bus_flush(bus.get()), 0);
    }

    void sayLock() const { say(session, sessionInterface, "Lock"); }

    void sayProperty(const char* name, const char* type, const std::function<void(sd_bus_message*)>& appendValue,
                     const char* interface = sessionInterface) const {
        say(session, propertiesInterface, "PropertiesChanged", [&](sd_bus_message* signal) {
            sd_bus_message_append(signal, "s", interface);
            sd_bus_message_open_container(signal, SD_BUS_TYPE_ARRAY, "{sv}");
            sd_bus_message_append(signal, "{sv}", "IdleHint", "b", 1);
            sd_bus_message_open_container(signal, SD_BUS_TYPE_DICT_ENTRY, "sv");
            sd_bus_message_append(signal, "s", name);
            sd_bus_message_open_container(signal, SD_BUS_TYPE_VARIANT, type);
            appendValue(signal);
            sd_bus_message_close_container(signal);
            sd_bus_message_close_container(signal);
            sd_bus_message_close_container(signal);
            sd_bus_message_append(signal, "as", 0);
        });
    }

    void sayHint(bool isLocked) const {
        sayProperty("LockedHint", "b",
                    [&](sd_bus_message* signal) { sd_bus_message_append(signal, "b", static_cast<int>(isLocked)); });
    }

    void sayActive(const char* interface, bool isActive) const {
        say("/ScreenSaver", interface, "ActiveChanged",
            [&](sd_bus_message* signal) { sd_bus_message_append(signal, "b", static_cast<int>(isActive)); });
    }

    /// From now on it replies to the question whether the session is locked, while it serves.
    void answerHint(bool isLocked) {
        isHintSet = isLocked;
        ASSERT_GE(sd_bus_add_object(bus.get(), nullptr, session, &Speaker::asked, this), 0);
    }

    /// Serves its bus; returns the last client that asked.
    [[nodiscard]] std::string servedFor() const {
        while (sd_bus_process(bus.get(), nullptr) > 0) {
        }
        return asker;
    }

    /// The present connections of the bus.
    [[nodiscard]] std::set<std::string> names() const {
        char** raw = nullptr;
        EXPECT_GE(sd_bus_list_names(bus.get(), &raw, nullptr), 0);
        std::set<std::string> found;
        for (char** name = raw; *name != nullptr; ++name) {
            if (**name == ':') {
                found.insert(*name);
            }
            std::free(*name);
        }
        std::free(raw);
        return found;
    }

    /// Pings a connection, which replies once it has read every earlier message.
    void ping(const std::string& name) {
        hasPong = false;
        sd_bus_slot* slot = nullptr;
        const auto answered = [](sd_bus_message* /*reply*/, void* data, sd_bus_error* /*error*/) {
            static_cast<Speaker*>(data)->hasPong = true;
            return 0;
        };
        ASSERT_GE(sd_bus_call_method_async(bus.get(), &slot, name.c_str(), "/", "org.freedesktop.DBus.Peer", "Ping",
                                           answered, this, ""),
                  0);
        pinging.reset(slot);
    }

    static int asked(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
        auto& self = *static_cast<Speaker*>(data);
        const char* interface = nullptr;
        const char* property = nullptr;
        EXPECT_GT(sd_bus_message_is_method_call(call, propertiesInterface, "Get"), 0);
        EXPECT_GT(sd_bus_message_read(call, "ss", &interface, &property), 0);
        EXPECT_STREQ(interface, sessionInterface);
        EXPECT_STREQ(property, "LockedHint");
        self.asker = sd_bus_message_get_sender(call);
        return sd_bus_reply_method_return(call, "v", "b", static_cast<int>(self.isHintSet));
    }

    [[nodiscard]] bool isAnswered() {
        while (sd_bus_process(bus.get(), nullptr) > 0) {
        }
        return hasPong;
    }

    /// The number of match rules that all clients have added to the bus.
    [[nodiscard]] std::uint32_t matches() const {
        sd_bus_message* raw = nullptr;
        EXPECT_GE(sd_bus_call_method(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                     "org.freedesktop.DBus.Debug.Stats", "GetStats", nullptr, &raw, ""),
                  0);
        const OwnedMessage reply(raw);
        std::uint32_t count = 0;
        sd_bus_message_enter_container(raw, SD_BUS_TYPE_ARRAY, "{sv}");
        while (sd_bus_message_enter_container(raw, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
            const char* name = nullptr;
            sd_bus_message_read(raw, "s", &name);
            if (std::string_view(name) == "MatchRules") {
                sd_bus_message_read(raw, "v", "u", &count);
            } else {
                sd_bus_message_skip(raw, "v");
            }
            sd_bus_message_exit_container(raw);
        }
        return count;
    }

private:
    OwnedBus bus;
    OwnedSlot pinging;
    bool hasPong = false;
    bool isHintSet = false;
    std::string asker;
};

std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

class SessionLockTest : public testing::Test {
protected:
    void SetUp() override {
        systemDaemon.start();
        userDaemon.start();
        user = std::make_unique<SessionBus>(loop, userDaemon.address());
        ASSERT_TRUE(user->awaitArrival(loop.now() + std::chrono::seconds(10)));
        nameOnUsers = *Speaker(userDaemon).names().begin();
    }

    /// Returns when its signals are received.
    void watch(const std::string& name = "2") {
        locks = std::make_unique<SessionLock>(loop, *user, systemDaemon.address(), name);
        const Speaker onSystem(systemDaemon);
        const Speaker onUser(userDaemon);
        const std::set<std::string> others = onSystem.names();
        const std::uint32_t before = onSystem.matches();
        const std::uint32_t beforeOnUser = onUser.matches();
        watching = locks->watch([this] { ++reported; });
        ASSERT_TRUE(runUntil([&] {
            return onSystem.matches() == before + (name.empty() ? 0 : 2) && onUser.matches() == beforeOnUser + 1;
        }));
        std::ranges::set_difference(onSystem.names(), others, std::back_inserter(ownNames));
    }

    /// The number of reported locks when every earlier message on the sender's bus has been handled.
    int reportsAfter(Speaker& speaker, const std::string& listener) {
        speaker.ping(listener);
        EXPECT_TRUE(runUntil([&] { return speaker.isAnswered(); }));
        bool hasTurned = false;
        loop.post([&] { hasTurned = true; });
        EXPECT_TRUE(runUntil([&] { return hasTurned; }));
        return std::exchange(reported, 0);
    }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }

    MessageBus systemDaemon;
    MessageBus userDaemon;
    MainLoop loop;
    int reported = 0;
    // Created once the daemons run.
    std::unique_ptr<SessionBus> user;
    std::unique_ptr<SessionLock> locks;
    std::unique_ptr<LockWatch> watching;
    std::string nameOnUsers;
    /// On the system's bus.
    std::vector<std::string> ownNames;
};

TEST_F(SessionLockTest, TheLoginManagersWordOnThisSessionCounts) {
    Speaker speaker(systemDaemon, loginManager);
    watch();
    speaker.sayLock();
    EXPECT_EQ(reportsAfter(speaker, ownNames.at(0)), 1) << "asked to lock";
    speaker.sayHint(true);
    EXPECT_EQ(reportsAfter(speaker, ownNames.at(0)), 1) << "said to be locked";
}

TEST_F(SessionLockTest, ALockThatHoldsAlreadyIsToldOfWhereItIsAskedFor) {
    for (const bool isLocked : {true, false}) {
        Speaker speaker(systemDaemon, loginManager);
        speaker.answerHint(isLocked);
        locks = std::make_unique<SessionLock>(loop, *user, systemDaemon.address(), "2");
        watching = locks->watchAndAsk([this] { ++reported; });
        ASSERT_TRUE(runUntil([&] { return !speaker.servedFor().empty(); }));
        EXPECT_EQ(reportsAfter(speaker, speaker.servedFor()), isLocked ? 1 : 0);
    }
}

TEST_F(SessionLockTest, ALockThatHoldsAlreadyIsNotToldOfOtherwise) {
    Speaker speaker(systemDaemon, loginManager);
    speaker.answerHint(true);
    watch();
    EXPECT_EQ(reportsAfter(speaker, ownNames.at(0)), 0);
    EXPECT_EQ(speaker.servedFor(), "");
}

TEST_F(SessionLockTest, OtherWordsOfTheLoginManagerDoNot) {
    Speaker speaker(systemDaemon, loginManager);
    watch();
    const std::vector<std::function<void()>> others{
        [&] { speaker.say("/org/freedesktop/login1/session/_33", sessionInterface, "Lock"); },
        [&] { speaker.say(session, sessionInterface, "Unlock"); },
        [&] { speaker.say(session, "org.freedesktop.login1.Seat", "Lock"); },
        [&] { speaker.sayHint(false); },
        [&] {
            speaker.sayProperty("LockedHint", "s", [](auto* signal) { sd_bus_message_append(signal, "s", "true"); });
        },
        [&] { speaker.sayProperty("LockedHint", "u", [](auto* signal) { sd_bus_message_append(signal, "u", 1); }); },
        [&] { speaker.sayProperty("Active", "b", [](auto* signal) { sd_bus_message_append(signal, "b", 1); }); },
        [&] {
            speaker.sayProperty(
                "LockedHint", "b", [](auto* signal) { sd_bus_message_append(signal, "b", 1); },
                "org.freedesktop.login1.User");
        },
        [&] { speaker.say(session, propertiesInterface, "PropertiesChanged"); },
    };
    for (std::size_t index = 0; index < others.size(); ++index) {
        others[index]();
        EXPECT_EQ(reportsAfter(speaker, ownNames.at(0)), 0) << index;
    }
}

TEST_F(SessionLockTest, OtherSendersOnTheSystemBusAreIgnored) {
    Speaker speaker(systemDaemon, loginManager);
    Speaker stranger(systemDaemon);
    watch();
    stranger.sayLock();
    stranger.sayHint(true);
    EXPECT_EQ(reportsAfter(stranger, ownNames.at(0)), 0);
    speaker.sayLock();
    EXPECT_EQ(reportsAfter(speaker, ownNames.at(0)), 1);
}

TEST_F(SessionLockTest, ScreensaversOfAnyDesktopCount) {
    Speaker speaker(userDaemon);
    watch();
    for (const char* interface : {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver", "org.mate.ScreenSaver",
                                  "org.cinnamon.ScreenSaver", "org.xfce.ScreenSaver"}) {
        speaker.sayActive(interface, true);
        EXPECT_EQ(reportsAfter(speaker, nameOnUsers), 1) << interface;
        speaker.sayActive(interface, false);
        EXPECT_EQ(reportsAfter(speaker, nameOnUsers), 0) << interface;
    }
    speaker.sayActive("org.example.Player", true);
    speaker.say("/ScreenSaver", "org.freedesktop.ScreenSaver", "ActiveChanged",
                [](sd_bus_message* signal) { sd_bus_message_append(signal, "s", "yes"); });
    EXPECT_EQ(reportsAfter(speaker, nameOnUsers), 0);
}

TEST_F(SessionLockTest, WithoutASystemsBusOrALoginTheScreensaverIsStillHeard) {
    const Speaker speaker(userDaemon);
    watch("");
    speaker.sayActive("org.gnome.ScreenSaver", true);
    EXPECT_TRUE(runUntil([&] { return reported == 1; }));
    watching.reset();
    systemDaemon.stop();
    const std::uint32_t before = speaker.matches();
    locks = std::make_unique<SessionLock>(loop, *user, systemDaemon.address(), "2");
    watching = locks->watch([this] { ++reported; });
    ASSERT_TRUE(runUntil([&] { return speaker.matches() == before + 1; }));
    speaker.sayActive("org.gnome.ScreenSaver", true);
    EXPECT_TRUE(runUntil([&] { return reported == 2; }));
}

TEST_F(SessionLockTest, TheCallbackMayDestroyTheWatch) {
    const Speaker speaker(systemDaemon, loginManager);
    watch();
    watching = locks->watch([this] {
        watching.reset();
        ++reported;
    });
    // The connection that was just closed may still be registered for a moment.
    ASSERT_TRUE(runUntil([&] { return speaker.matches() == 2; }));
    speaker.sayLock();
    speaker.sayHint(true);
    ASSERT_TRUE(runUntil([&] { return reported > 0; }));
    loop.post([&] { loop.end(0); });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(reported, 1);
}

TEST_F(SessionLockTest, WithoutAWatchThereAreNoConnectionsAndMatches) {
    const Speaker onUser(userDaemon);
    const std::uint32_t matches = onUser.matches();
    const std::ptrdiff_t descriptors = openDescriptors();
    watch();
    EXPECT_GT(openDescriptors(), descriptors);
    watching.reset();
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_TRUE(runUntil([&] { return onUser.matches() == matches; }));
}

} // namespace
} // namespace platform::linux
