#include "Platform/GnomeShell/HotKeys.h"
#include "Tests/Platform/GnomeShell/ShellFixture.h"
#include "Tests/Platform/Linux/Stopwatch.h"

#include <algorithm>
#include <string>
#include <vector>

namespace platform::gnomeshell {
namespace {

constexpr std::uint32_t keyLeft = 123;
constexpr std::uint32_t keyC = 8;
constexpr std::uint32_t controlOption = 0x1800;

class HotKeysOfTheShell : public ShellTest {
protected:
    HotKeysOfTheShell() {
        shell->setExtension(true);
        shell->answerWith("Grab", "b", 1);
        link->await(soon());
        hotKeys.emplace(loop, *link);
        hotKeys->installHandler(
            [](EventHandlerCall* /*next*/, const HotKeyEvent* event, void* data) {
                static_cast<std::vector<std::uint32_t>*>(data)->push_back(event->directObject()->id);
                return noErr;
            },
            &pressed);
    }

    void press(std::uint32_t number) {
        shell->tell("Activated", [&](sd_bus_message* signal) { sd_bus_message_append(signal, "u", number); });
    }

    [[nodiscard]] HotKeyEvents::Registration take(std::uint32_t key, std::uint32_t id) {
        return hotKeys->registerHotKey(key, controlOption, {.signature = 1, .id = id});
    }

    std::vector<std::uint32_t> pressed;
    std::optional<HotKeys> hotKeys;
};

TEST_F(HotKeysOfTheShell, AreTakenByTheirPlaceOnTheKeyboardAndTellOfTheirPresses) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    ASSERT_EQ(take(keyC, 32).status, noErr);
    EXPECT_TRUE(shell->wasCalled("Grab 1 <Control><Alt>0x71"));
    EXPECT_TRUE(shell->wasCalled("Grab 2 <Control><Alt>0x36"));
    press(2);
    press(1);
    press(77);
    catchUp();
    EXPECT_EQ(pressed, (std::vector<std::uint32_t>{32, 31}));
}

TEST_F(HotKeysOfTheShell, ThatSomebodyHoldsAreRefused) {
    shell->answerWith("Grab", "b", 0);
    const auto registration = take(keyLeft, 31);
    EXPECT_EQ(registration.status, eventHotKeyExistsErr);
    EXPECT_FALSE(registration.reference);
    press(1);
    catchUp();
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeysOfTheShell, ThatABusyShellDoesNotAnswerForAreAskedForAgain) {
    shell->answer("Grab", [](sd_bus_message* /*call*/) {});
    const linux::Stopwatch stopwatch;
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    ASSERT_EQ(take(keyC, 32).status, noErr);
    EXPECT_LT(stopwatch.elapsed(), 2 * ShellLink::longestWait) << "all of a turn wait together";
    press(1);
    catchUp();
    EXPECT_EQ(pressed, std::vector<std::uint32_t>{31});
    shell->answerWith("Grab", "b", 1);
    ASSERT_TRUE(until([&] { return shell->wasCalled("Grab 2 <Control><Alt>0x36"); }));
    catchUp();
    EXPECT_FALSE(hotKeys->takeLoss());
}

TEST_F(HotKeysOfTheShell, ThatABusyShellRefusesInTheEndAreALoss) {
    shell->answer("Grab", [](sd_bus_message* /*call*/) {});
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->answerWith("Grab", "b", 0);
    EXPECT_TRUE(until([&] { return hotKeys->takeLoss(); }));
}

TEST_F(HotKeysOfTheShell, ThatNoKeyboardHasAreInvalid) {
    EXPECT_EQ(take(0xffff, 31).status, eventHotKeyInvalidErr);
}

TEST_F(HotKeysOfTheShell, AreInvalidWhileTheExtensionIsNotThere) {
    shell->setExtension(false);
    ASSERT_TRUE(until([&] { return !link->isOpen(); }));
    EXPECT_EQ(take(keyLeft, 31).status, eventHotKeyInvalidErr);
}

TEST_F(HotKeysOfTheShell, AreSilentOnceTheyAreGivenBack) {
    const auto registration = take(keyLeft, 31);
    ASSERT_TRUE(registration.reference);
    hotKeys->unregisterHotKey(*registration.reference);
    hotKeys->unregisterHotKey(*registration.reference);
    EXPECT_TRUE(until([&] { return shell->wasCalled("Ungrab 1"); }));
    press(1);
    catchUp();
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeysOfTheShell, AreTakenAgainWhenTheExtensionBeginsAnew) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->setExtension(false);
    ASSERT_TRUE(until([&] { return !link->isOpen(); }));
    shell->setExtension(true, "second");
    ASSERT_TRUE(until([&] {
        const auto calls = shell->calls();
        return std::ranges::count(calls, "Grab 1 <Control><Alt>0x71") == 2;
    }));
    catchUp();
    EXPECT_FALSE(hotKeys->takeLoss());
}

TEST_F(HotKeysOfTheShell, ThatSomebodyTookMeanwhileAreALossThatIsToldOnce) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->answerWith("Grab", "b", 0);
    shell->setExtension(true, "second");
    ASSERT_TRUE(until([&] { return hotKeys->takeLoss(); }));
    EXPECT_FALSE(hotKeys->takeLoss());
}

TEST_F(HotKeysOfTheShell, AreGivenBackAtTheEnd) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    press(1);
    hotKeys.reset();
    EXPECT_TRUE(until([&] { return shell->wasCalled("Ungrab 1"); }));
    catchUp();
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeysOfTheShell, DoNotHearWhatIsNoPress) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->tell("Activated");
    shell->tell("Activated", [](sd_bus_message* signal) { sd_bus_message_append(signal, "s", "1"); });
    shell->tellAsStranger("Activated", [](sd_bus_message* signal) { sd_bus_message_append(signal, "u", 1U); });
    catchUp();
    EXPECT_TRUE(pressed.empty());
}

} // namespace
} // namespace platform::gnomeshell
