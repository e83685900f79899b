#include "CorvidKit/Concurrency.h"
#include "CorvidKit/HotKeys.h"
#include "CorvidKitCore/Shortcut.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace corvid {
namespace {

constexpr Shortcut shortcut{.keyCode = 123, .modifiers = Shortcut::control | Shortcut::option};

/// The complete message of the process when it stops.
auto lastWords(const std::string& location) {
    return testing::Eq(location + ": Fatal error: Incorrect actor executor assumption; Expected same executor as "
                                  "MainActor\n");
}

void onAnotherThread(const std::function<void()>& work) {
    std::thread(work).join();
}

class MainActorAssumption : public testing::Test {
protected:
    // The second thread must not be started in a mere fork of this process.
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    platform::simulated::Desktop desktop;
    std::shared_ptr<platform::NotificationCenter> center = std::make_shared<platform::NotificationCenter>();
    HotKeyDispatcher dispatcher;
    HotKeyCenter<int> hotKeys{dispatcher};
};

using MainActorAssumptionDeathTest = MainActorAssumption;

TEST_F(MainActorAssumption, HoldsOnTheMainThreadAndGivesWhatTheWorkGives) {
    EXPECT_EQ(assumeIsolated({.file = "here", .line = 1}, [] { return 7; }), 7);
}

TEST_F(MainActorAssumptionDeathTest, StopsTheProcessOnAnotherThread) {
    EXPECT_DEATH(onAnotherThread([] { assumeIsolated({.file = "Some/File", .line = 12}, [] {}); }),
                 lastWords("Some/File:12"));
}

TEST_F(MainActorAssumptionDeathTest, StopsTheProcessBeforeTheWork) {
    EXPECT_DEATH(
        {
            const platform::simulated::MainActor::Elsewhere elsewhere(desktop.mainActor);
            assumeIsolated({.file = "Some/File", .line = 12}, [] { fputs("worked\n", stderr); });
        },
        lastWords("Some/File:12"));
}

TEST_F(MainActorAssumptionDeathTest, StopsTheProcessAtANotificationPostedFromAnotherThread) {
    const NotificationObservation observation("launch", center,
                                              [](const platform::Notification&) { fputs("reported\n", stderr); });
    EXPECT_DEATH(onAnotherThread([this] { center->post({.name = "launch", .userInfo = {}}); }),
                 lastWords("CorvidKit/Concurrency:37"));
}

TEST_F(MainActorAssumptionDeathTest, StopsTheProcessAtAPressDeliveredOnAnotherThread) {
    hotKeys.onPress = [](int) { fputs("pressed\n", stderr); };
    hotKeys.registerShortcuts({{1, shortcut}});
    EXPECT_DEATH(onAnotherThread([this] { desktop.hotKeyEvents.press(shortcut.keyCode, shortcut.modifiers); }),
                 lastWords("CorvidKit/HotKeys:86"));
}

TEST_F(MainActorAssumptionDeathTest, StopsTheProcessAtHotKeysUnregisteredFromAnotherThread) {
    hotKeys.registerShortcuts({{1, shortcut}});
    EXPECT_DEATH(onAnotherThread([this] { hotKeys.unregister(); }), lastWords("CorvidKit/HotKeys:31"));
}

TEST_F(MainActorAssumption, IsNotMadeForEventsThatAreNotOurs) {
    hotKeys.registerShortcuts({{1, shortcut}});
    const platform::simulated::MainActor::Elsewhere elsewhere(desktop.mainActor);
    EXPECT_EQ(desktop.hotKeyEvents.deliverWithoutEvent(), platform::eventNotHandledErr);
    EXPECT_EQ(desktop.hotKeyEvents.deliverWithoutParameter(), platform::eventNotHandledErr);
    EXPECT_EQ(desktop.hotKeyEvents.deliver({.signature = 1, .id = 1}), platform::eventNotHandledErr);
}

} // namespace
} // namespace corvid
