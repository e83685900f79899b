#include "FakeKWin.h"
#include "Platform/KWin/BusWait.h"
#include "Platform/KWin/HotKeys.h"
#include "Platform/KWin/QtKeys.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"
#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"
#include "Tests/Platform/Linux/Stopwatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <memory>

namespace platform::kwin {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::uint32_t left = 123;
constexpr std::uint32_t letterC = 8;
constexpr std::uint32_t controlOption = 0x1800;
constexpr int ctrlAltLeft = 0x0d000012;
constexpr int ctrlAltC = 0x0c000043;

const FakeAccel::Action theirs{"org.example.Other", "theirs", "Another program", "Theirs"};

class HotKeysTest : public testing::Test {
protected:
    MessageBus daemon;
    linux::MainLoop loop;
    std::vector<std::uint32_t> presses;
    // Created once the daemon runs.
    std::unique_ptr<FakeKWin> kwin;
    std::unique_ptr<linux::SessionBus> bus;
    std::unique_ptr<HotKeys> keys;
    std::unique_ptr<linux::HotKeyLosses> losses;

    void SetUp() override {
        daemon.start();
        kwin = std::make_unique<FakeKWin>(daemon.address());
        kwin->start();
        connect();
    }

    void connect() {
        bus = std::make_unique<linux::SessionBus>(loop, daemon.address(), milliseconds(20));
        keys = std::make_unique<HotKeys>(
            loop, *bus, [](std::uint32_t keyCode, std::uint32_t) { return "Key " + std::to_string(keyCode); });
        losses = std::make_unique<linux::HotKeyLosses>(*keys);
        ASSERT_TRUE(bus->awaitArrival(loop.now() + std::chrono::seconds(10)));
        keys->installHandler(
            [](EventHandlerCall*, const HotKeyEvent* event, void* data) -> OSStatus {
                static_cast<std::vector<std::uint32_t>*>(data)->push_back(event->directObject()->id);
                return noErr;
            },
            &presses);
    }

    [[nodiscard]] HotKeyEvents::Registration add(std::uint32_t keyCode, std::uint32_t identifier) {
        return keys->registerHotKey(keyCode, controlOption, {.signature = 1, .id = identifier});
    }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }
};

TEST_F(HotKeysTest, AreRegisteredUnderNamesForPeople) {
    const auto registration = add(left, 1);
    EXPECT_EQ(registration.status, noErr);
    EXPECT_TRUE(registration.reference);
    EXPECT_THAT(kwin->keys(), ElementsAre(Pair("hot-key-123-6144", ctrlAltLeft)));
    EXPECT_THAT(kwin->history(), ElementsAre("register org.corvid.Tessel|hot-key-123-6144|Tessel|Key 123"));
}

TEST_F(HotKeysTest, EachPressIsReportedOnceWithItsId) {
    ASSERT_EQ(add(left, 5).status, noErr);
    ASSERT_EQ(add(letterC, 6).status, noErr);
    kwin->press(ctrlAltC);
    kwin->press(ctrlAltLeft);
    kwin->press(ctrlAltLeft);
    EXPECT_TRUE(runUntil([&] { return presses.size() == 3; }));
    EXPECT_THAT(presses, ElementsAre(6, 5, 5));
}

TEST_F(HotKeysTest, AKeyThatIsHeldIsOnePress) {
    ASSERT_EQ(add(left, 1).status, noErr);
    ASSERT_EQ(add(letterC, 2).status, noErr);
    kwin->press(ctrlAltLeft, 20);
    kwin->press(ctrlAltLeft, 20);
    kwin->press(ctrlAltC);
    ASSERT_TRUE(runUntil([&] { return !presses.empty() && presses.back() == 2; }));
    EXPECT_THAT(presses, ElementsAre(1, 1, 2));
}

TEST_F(HotKeysTest, AKeyOfAnotherProgramIsRefusedAndLeavesNoTrace) {
    kwin->accel.hold(theirs, {ctrlAltLeft});
    const auto refused = add(left, 1);
    EXPECT_EQ(refused.status, eventHotKeyExistsErr);
    EXPECT_FALSE(refused.reference);
    EXPECT_EQ(add(letterC, 2).status, noErr);
    EXPECT_THAT(kwin->keys(), ElementsAre(Pair("hot-key-8-6144", ctrlAltC)));
}

TEST_F(HotKeysTest, AKeyThatIsGrantedToTwoIsHeldByTheFirst) {
    kwin->accel.hold(theirs, {ctrlAltLeft});
    kwin->accel.sharesKeys = true;
    const auto refused = add(left, 1);
    EXPECT_EQ(refused.status, eventHotKeyExistsErr);
    EXPECT_FALSE(refused.reference);
    EXPECT_EQ(add(letterC, 2).status, noErr);
    EXPECT_TRUE(runUntil([&] { return kwin->keys().size() == 1; }));
    EXPECT_THAT(kwin->keys(), ElementsAre(Pair("hot-key-8-6144", ctrlAltC)));
    EXPECT_FALSE(losses->take());
}

TEST_F(HotKeysTest, AKeyThatTheSettingsGiveToAnotherProgramIsLost) {
    kwin->accel.sharesKeys = true;
    const auto registration = add(left, 1);
    ASSERT_TRUE(registration.reference);
    ASSERT_EQ(add(letterC, 2).status, noErr);
    kwin->assignElsewhere(ctrlAltLeft);
    bool isLost = false;
    ASSERT_TRUE(runUntil([&] { return isLost = isLost || losses->take(); }));
    keys->unregisterHotKey(*registration.reference);
    EXPECT_EQ(add(left, 1).status, eventHotKeyExistsErr);
    EXPECT_TRUE(runUntil([&] { return kwin->keys().size() == 1; }));
}

TEST_F(HotKeysTest, OtherChangesOfTheSettingsLoseNoKey) {
    ASSERT_EQ(add(left, 1).status, noErr);
    kwin->assignElsewhere(ctrlAltC);
    kwin->reportChange({"org.corvid.Tessel", "hot-key-123-6144", "Tessel", "Key 123"}, {ctrlAltLeft});
    kwin->press(ctrlAltLeft);
    ASSERT_TRUE(runUntil([&] { return presses.size() == 1; }));
    EXPECT_FALSE(losses->take());
}

TEST_F(HotKeysTest, AKeyOfOursIsRefusedAndStays) {
    ASSERT_EQ(add(left, 1).status, noErr);
    EXPECT_EQ(add(left, 2).status, eventHotKeyExistsErr);
    kwin->press(ctrlAltLeft);
    ASSERT_TRUE(runUntil([&] { return !presses.empty(); }));
    EXPECT_THAT(presses, ElementsAre(1));
}

TEST_F(HotKeysTest, AReleasedKeyIsGone) {
    const auto registration = add(left, 1);
    ASSERT_TRUE(registration.reference);
    keys->unregisterHotKey(*registration.reference);
    keys->unregisterHotKey(*registration.reference);
    keys->unregisterHotKey({999});
    EXPECT_TRUE(runUntil([&] { return kwin->keys().empty(); }));
    EXPECT_EQ(add(left, 2).status, noErr);
    EXPECT_THAT(kwin->keys(), ElementsAre(Pair("hot-key-123-6144", ctrlAltLeft)));
}

TEST_F(HotKeysTest, NothingIsHeldAfterTheEnd) {
    ASSERT_EQ(add(left, 1).status, noErr);
    ASSERT_EQ(add(letterC, 2).status, noErr);
    keys.reset();
    EXPECT_THAT(kwin->keys(), IsEmpty());
}

TEST_F(HotKeysTest, KeysOfAKilledProgramAreRemoved) {
    ASSERT_EQ(add(left, 1).status, noErr);
    auto otherBus = std::make_unique<linux::SessionBus>(loop, daemon.address());
    HotKeys next(loop, *otherBus, [](std::uint32_t, std::uint32_t) { return std::string(); });
    ASSERT_TRUE(otherBus->awaitArrival(loop.now() + std::chrono::seconds(10)));
    EXPECT_EQ(next.registerHotKey(letterC, controlOption, {}).status, noErr);
    EXPECT_THAT(kwin->keys(), ElementsAre(Pair("hot-key-8-6144", ctrlAltC)));
}

TEST_F(HotKeysTest, KeysThatHaveNoPlaceOrStrangeModifiersAreInvalid) {
    EXPECT_EQ(add(200, 1).status, eventHotKeyInvalidErr);
    EXPECT_EQ(keys->registerHotKey(left, 0x2000, {}).status, eventHotKeyInvalidErr);
    EXPECT_THAT(kwin->history(), IsEmpty());
}

TEST_F(HotKeysTest, AreRegisteredAgainWhereTheServerIsAnother) {
    ASSERT_EQ(add(left, 1).status, noErr);
    ASSERT_EQ(add(letterC, 2).status, noErr);
    // The first server is known.
    kwin->press(ctrlAltLeft);
    ASSERT_TRUE(runUntil([&] { return presses.size() == 1; }));
    kwin->stop();
    FakeKWin another(daemon.address());
    another.accel.hold(theirs, {ctrlAltC});
    another.start();
    ASSERT_TRUE(runUntil([&] { return another.history().size() == 2; }));
    EXPECT_TRUE(runUntil([&] { return another.keys().size() == 1; }));
    EXPECT_THAT(another.keys(), ElementsAre(Pair("hot-key-123-6144", ctrlAltLeft)));
    EXPECT_TRUE(losses->take());
    EXPECT_FALSE(losses->take());
    another.press(ctrlAltLeft);
    EXPECT_TRUE(runUntil([&] { return presses.size() == 2; }));
}

TEST_F(HotKeysTest, WithoutAServerNothingIsRegistered) {
    kwin->stop();
    EXPECT_EQ(add(left, 1).status, eventHotKeyInvalidErr);
    EXPECT_FALSE(losses->take());
}

TEST_F(HotKeysTest, AServerThatHangsTakesNoMoreThanATurn) {
    std::promise<void> beginning;
    std::promise<void> permission;
    std::thread hanging([&, isGiven = permission.get_future().share()] {
        kwin->run([&] {
            beginning.set_value();
            isGiven.wait_for(std::chrono::seconds(10));
        });
    });
    beginning.get_future().wait();
    const linux::Stopwatch stopwatch;
    for (std::uint32_t identifier = 1; identifier <= 6; ++identifier) {
        EXPECT_EQ(add(identifier, identifier).status, eventHotKeyInvalidErr);
    }
    EXPECT_LT(stopwatch.elapsed(), milliseconds(400));
    permission.set_value();
    hanging.join();
    // The registrations that it carried out late were undone.
    EXPECT_TRUE(runUntil([&] { return kwin->keys().empty(); }));
    // It has refused nothing, so all is to be registered anew.
    EXPECT_TRUE(losses->take());
    bool isHeld = false;
    EXPECT_TRUE(runUntil([&] {
        isHeld = isHeld || add(left, 7).status == noErr;
        return isHeld;
    }));
}

TEST_F(HotKeysTest, NoServiceIsStartedToHoldThem) {
    keys.reset();
    kwin->stop();
    daemon.stop();
    const std::string started = daemon.folder / "started";
    write(daemon.folder / "services/org.kde.kglobalaccel.service",
          "[D-BUS Service]\nName=org.kde.kglobalaccel\nExec=/usr/bin/touch " + started + "\n");
    daemon.start();
    connect();
    // A started program has ended when such a call is answered.
    EXPECT_EQ(add(left, 1).status, eventHotKeyInvalidErr);
    EXPECT_FALSE(std::filesystem::exists(started));
    keys.reset();
    EXPECT_FALSE(std::filesystem::exists(started));
}

TEST_F(HotKeysTest, OnlyTheServersPressesCount) {
    ASSERT_EQ(add(left, 1).status, noErr);
    sd_bus* raw = nullptr;
    ASSERT_GE(sd_bus_new(&raw), 0);
    const linux::OwnedBus stranger(raw);
    ASSERT_GE(sd_bus_set_address(raw, daemon.address().c_str()), 0);
    ASSERT_GE(sd_bus_set_bus_client(raw, 1), 0);
    ASSERT_GE(sd_bus_start(raw), 0);
    // To all connections, and to each one directly, which no match rule filters.
    std::vector<std::string> destinations{""};
    char** names = nullptr;
    ASSERT_GE(sd_bus_list_names(raw, &names, nullptr), 0);
    for (char** name = names; *name != nullptr; ++name) {
        destinations.emplace_back(*name);
        std::free(*name);
    }
    std::free(names);
    ASSERT_GE(destinations.size(), 4U);
    for (const std::string& destination : destinations) {
        sd_bus_message* rawSignal = nullptr;
        ASSERT_GE(sd_bus_message_new_signal(raw, &rawSignal, "/component/org_corvid_Tessel",
                                            "org.kde.kglobalaccel.Component", "globalShortcutPressed"),
                  0);
        const linux::OwnedMessage signal(rawSignal);
        sd_bus_message_append(rawSignal, "ssx", "org.corvid.Tessel", "hot-key-123-6144", std::int64_t{0});
        if (destination.starts_with(':')) {
            sd_bus_message_set_destination(rawSignal, destination.c_str());
        }
        ASSERT_GE(sd_bus_send(raw, rawSignal, nullptr), 0);
    }
    ASSERT_GE(sd_bus_flush(raw), 0);
    kwin->press(ctrlAltLeft);
    ASSERT_TRUE(runUntil([&] { return !presses.empty(); }));
    EXPECT_THAT(presses, ElementsAre(1));
}

TEST(QtKeys, AreTheLettersOfAnAmericanKeyboard) {
    struct Case {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        std::optional<std::int32_t> key;
    };
    for (const Case& each : {
             Case{123, 0x1800, 0x0d000012},
             Case{124, 0x1800, 0x0d000014},
             Case{125, 0x1800, 0x0d000015},
             Case{126, 0x1800, 0x0d000013},
             Case{8, 0x1800, 0x0c000043},
             Case{2, 0x1800, 0x0c000044},
             Case{0, 0x100, 0x10000041},
             Case{49, 0x200, 0x02000020},
             Case{122, 0, 0x01000030},
             Case{200, 0x1800, std::nullopt},
             Case{8, 0x10000, std::nullopt},
             Case{8, 0x400, std::nullopt},
         }) {
        EXPECT_EQ(qtKey(each.keyCode, each.modifiers), each.key) << each.keyCode << ", " << each.modifiers;
    }
}

} // namespace
} // namespace platform::kwin
