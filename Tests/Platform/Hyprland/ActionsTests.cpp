#include "CorvidKit/HotKeys.h"
#include "Platform/Hyprland/Desktop.h"
#include "Platform/Linux/Windows/Elements.h"
#include "Platform/Seam/Platform.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/RemoteControl.h"
#include "Tessel/WindowMover.h"
#include "Tests/Platform/Hyprland/OpenHyprland.h"
#include "Tests/Platform/Linux/Applications/PlainApplications.h"

#include <gtest/gtest.h>

#include <any>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace platform::hyprland {
namespace {

using corvid::CGRect;
using corvid::CGSize;
using tessel::WindowAction;
using Configuration = FakeHyprland::Configuration;

std::string titleOf(std::uint32_t /*keyCode*/, std::uint32_t /*modifiers*/) {
    return "Left Half";
}

/// One output, as it is configured, and what is left of it for windows, in the layout's points.
struct Setup {
    std::string what;
    Configuration configuration = Configuration::lua;
    FakeHyprland::Monitor monitor;
    int border = 0;
    CGRect area;
};

/// The actions on a whole desktop, with the program's own arithmetic.
class HyprlandActions : public testing::TestWithParam<Setup> {
protected:
    HyprlandActions() {
        peer.speak(GetParam().configuration);
        peer.setMonitors({GetParam().monitor});
        peer.setBorder(GetParam().border);
    }

    /// Performs the action on the window, in a turn of the loop as a press would; the window then has that frame. What
    /// nobody reads any more is asked for without waiting.
    void expectFrame(const CGRect& expected, WindowAction action, const FakeHyprland::Window& window) {
        peer.setWindows({window});
        peer.setFocused(window.address);
        Desktop desktop(loop, peer.facts(), titleOf);
        const Platform table = other.around(desktop.parts(), catalogue);
        const Installation installation{table};
        desktop.followApplications(identification, catalogue);
        bool isDone = false;
        loop.post([&] {
            tessel::WindowMover::perform(action, linux::windowElement(compositor::WindowIdentifier("0x7")));
            isDone = true;
        });
        CGRect frame;
        EXPECT_TRUE(runUntil(loop,
                             [&] {
                                 frame = frameOf(peer.window(window.address));
                                 return isDone && frame == expected;
                             }))
            << action.rawValue() << " to " << frame.minX() << ", " << frame.minY() << ", " << frame.width() << ", "
            << frame.height();
    }

    [[nodiscard]] static CGRect frameOf(const FakeHyprland::Window& window) {
        const double border = GetParam().border;
        return {{window.box.origin.x - border, window.box.origin.y - border},
                {window.box.size.width + 2 * border, window.box.size.height + 2 * border}};
    }

    [[nodiscard]] CGRect centered(CGSize size) const {
        const CGRect& area = GetParam().area;
        return {{area.midX() - size.width / 2, area.midY() - size.height / 2}, size};
    }

    FakeHyprland peer;
    linux::MainLoop loop;
    linux::PlainIdentification identification;
    linux::PlainCatalogue catalogue;
    simulated::Desktop other;
};

TEST_P(HyprlandActions, PutAWindowExactlyWhereItBelongs) {
    const CGRect area = GetParam().area;
    const double border = GetParam().border;
    const FakeHyprland::Window window{
        .address = 7, .box = {{area.minX() + 40, area.minY() + 60}, {400 - 2 * border, 300 - 2 * border}}};
    const CGRect left{area.origin, {area.size.width / 2, area.size.height}};
    expectFrame(left, WindowAction::leftHalf, window);
    expectFrame((CGRect{{area.midX(), area.minY()}, {area.size.width / 2, area.size.height}}), WindowAction::rightHalf,
                window);
    expectFrame(centered({400, 300}), WindowAction::center, window);
    expectFrame(area, WindowAction::maximize, window);
    expectFrame(centered({area.size.width * 0.9, area.size.height * 0.9}), WindowAction::almostMaximize, window);
    expectFrame((CGRect{{area.minX() + 40 - border, area.minY()}, {400, area.size.height}}),
                WindowAction::maximizeHeight, window);
}

TEST_P(HyprlandActions, AreExactForAWindowThatWouldLieAcrossZeroWhileItIsSized) {
    const CGRect area = GetParam().area;
    const FakeHyprland::Window window{
        .address = 7, .box = {{area.minX() + 11, area.minY() + 13}, {733, 403}}, .isFloating = true};
    expectFrame((CGRect{area.origin, {area.size.width / 2, area.size.height}}), WindowAction::leftHalf, window);
}

TEST_P(HyprlandActions, PutAWindowThatRefusesTheSizeAtTheEdge) {
    const CGRect area = GetParam().area;
    const double border = GetParam().border;
    const double smallest = area.size.width / 2 + 101;
    const FakeHyprland::Window window{.address = 7,
                                      .box = {{area.minX() + 40, area.minY() + 60}, {smallest, 300}},
                                      .isFloating = true,
                                      .smallest = {smallest, 10}};
    const double width = smallest + 2 * border;
    expectFrame((CGRect{{area.maxX() - width, area.minY()}, {width, area.size.height}}), WindowAction::rightHalf,
                window);
}

INSTANTIATE_TEST_SUITE_P(
    OnEach, HyprlandActions,
    testing::Values(Setup{.what = "plain", .monitor = {.reserved = {0, 40, 0, 0}}, .area = {{0, 40}, {1920, 1040}}},
                    Setup{.what = "hyprlang",
                          .configuration = Configuration::hyprlang,
                          .monitor = {.reserved = {0, 40, 0, 0}},
                          .border = 2,
                          .area = {{0, 40}, {1920, 1040}}},
                    Setup{.what = "scaled",
                          .monitor = {.width = 2880, .height = 1800, .scale = "1.50", .reserved = {40, 0, 0, 40}},
                          .border = 3,
                          .area = {{40, 0}, {1880, 1160}}},
                    Setup{.what = "turned",
                          .monitor = {.x = -100, .y = 60, .width = 2560, .height = 1440, .transform = 3},
                          .border = 1,
                          .area = {{-100, 60}, {1440, 2560}}}),
    [](const auto& each) { return each.param.what; });

TEST(HyprlandDesktop, TellsOfApplicationsByTheirFirstWindows) {
    FakeHyprland peer;
    linux::MainLoop loop;
    linux::PlainIdentification identification;
    linux::PlainCatalogue catalogue;
    Desktop desktop(loop, peer.facts(), titleOf);
    EXPECT_EQ(desktop.name(), "Hyprland");
    std::vector<std::string> launched;
    static_cast<void>(desktop.parts().runningApplications.notificationCenter()->addObserver(
        WorkspaceNotification::didLaunchApplication, [&](const Notification& notification) {
            const auto application = std::any_cast<RunningApplicationReference>(
                notification.userInfo.find(WorkspaceNotification::applicationKey)->second);
            launched.push_back(application->bundleIdentifier().value_or("nobody"));
        }));
    desktop.followApplications(identification, catalogue);
    peer.open({.address = 7, .process = ::getpid(), .appId = "editor"});
    EXPECT_TRUE(runUntil(loop, [&] { return !launched.empty(); }));
    EXPECT_EQ(launched, std::vector<std::string>{"editor"});
}

TEST(HyprlandDesktop, AnActionThatASilentCompositorHasNotCarriedOutIsNotDone) {
    FakeHyprland peer;
    linux::MainLoop loop;
    linux::PlainIdentification identification;
    linux::PlainCatalogue catalogue;
    simulated::Desktop other;
    peer.setWindows({{.address = 7, .box = {{40, 60}, {400, 300}}}});
    peer.setFocused(7);
    Desktop desktop(loop, peer.facts(), titleOf);
    const Platform table = other.around(desktop.parts(), catalogue);
    const Installation installation{table};
    desktop.followApplications(identification, catalogue);
    corvid::HotKeyDispatcher dispatcher;
    tessel::AppState state(other.standardUserDefaults, false, dispatcher);
    tessel::RemoteControl control(state, {.version = "1.2",
                                          .localization = other.localization,
                                          .application = other.thisApplication,
                                          .backend = [] { return std::string("Hyprland"); },
                                          .open = [] {}});
    std::vector<bool> answers;
    const auto isDone = [&](const char* action) {
        answers.clear();
        loop.post([&control, &answers, action] {
            control.perform(action, [&answers](const auto& answer) { answers.push_back(answer.has_value()); });
        });
        EXPECT_TRUE(runUntil(loop, [&] {
            other.mainActor.advance(std::chrono::milliseconds(10));
            return !answers.empty();
        }));
        return answers == std::vector<bool>{true};
    };
    EXPECT_TRUE(isDone("leftHalf"));
    peer.behave(FakeHyprland::Manners::silent);
    EXPECT_FALSE(isDone("rightHalf"));
    peer.behave(FakeHyprland::Manners::good);
    EXPECT_TRUE(isDone("rightHalf"));
}

TEST(HyprlandDesktop, EndsTheLoopSoonAfterTheUserHasLoggedOut) {
    FakeHyprland peer;
    linux::MainLoop loop;
    const Desktop desktop(loop, peer.facts(), titleOf);
    peer.stop();
    EXPECT_EQ(loop.run(), EXIT_FAILURE);
}

} // namespace
} // namespace platform::hyprland
