#include "FollowedCompositor.h"
#include "Platform/Linux/Windows/Elements.h"

#include <unistd.h>

#include <optional>
#include <vector>

namespace platform::compositor {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using Identifiers = std::vector<WindowIdentifier>;
using Trace = std::vector<std::string>;

constexpr ProcessIdentifier editor = -7;
constexpr ProcessIdentifier browser = -8;

class CompositorDesktop : public FollowedCompositor {
protected:
    /// Subscribes to the editor's new windows.
    void watch(std::unique_ptr<AXObserver>& observer) {
        observer = *parts().accessibilityObservers.createObserver(
            editor,
            [](AXObserver& /*observer*/, const AXUIElement& element, std::string_view /*notification*/, void* context) {
                static_cast<Identifiers*>(context)->push_back(
                    dynamic_cast<const linux::WindowElement<WindowIdentifier>&>(element.contents()).window);
            });
        EXPECT_EQ(observer->addNotification(parts().accessibility.applicationElement(editor),
                                            AXNotification::windowCreated, &seen),
                  AXError::success);
    }

    Identifiers seen;
};

TEST_F(CompositorDesktop, NewWindowsOfAnObservedProcessAreReportedWhenTheyAreReady) {
    WindowTable::Contents contents;
    contents.windows = {{"1", readyWindow(editor)}};
    start(std::move(contents));
    std::unique_ptr<AXObserver> observer;
    watch(observer);
    Window unready = readyWindow(editor);
    unready.isReady = false;
    table.put("2", unready);
    openWindow("3", editor, "Editor");
    openWindow("4", browser, "Browser");
    EXPECT_EQ(seen, Identifiers{}) << "never within a call";
    drain();
    EXPECT_EQ(seen, Identifiers{"3"});
    table.put("2", readyWindow(editor));
    openWindow("5", editor, "Editor");
    table.remove("5");
    drain();
    EXPECT_EQ(seen, (Identifiers{"3", "2"}));
    openWindow("6", editor, "Editor");
    observer.reset();
    drain();
    EXPECT_EQ(seen, (Identifiers{"3", "2"}));
}

TEST_F(CompositorDesktop, WindowsThatAppearedWithoutAccessAreNotReported) {
    start();
    std::unique_ptr<AXObserver> observer;
    watch(observer);
    table.close();
    WindowTable::Contents contents;
    contents.windows = {{"1", readyWindow(editor)}};
    table.open(std::move(contents));
    openWindow("2", editor, "Editor");
    drain();
    EXPECT_EQ(seen, Identifiers{"2"});
}

TEST_F(CompositorDesktop, AnObserverThatOutlivesTheDesktopIsHarmless) {
    start();
    std::unique_ptr<AXObserver> observer;
    watch(observer);
    openWindow("1", editor, "Editor");
    const AXUIElement application = parts().accessibility.applicationElement(editor);
    desktop.reset();
    EXPECT_EQ(observer->addNotification(application, AXNotification::windowCreated, &seen), AXError::cannotComplete);
    EXPECT_EQ(seen, Identifiers{});
}

TEST_F(CompositorDesktop, WritesAreSentWhenTheTurnOfTheLoopEnds) {
    WindowTable::Contents contents;
    contents.windows = {{"1", readyWindow(editor)}};
    contents.outputs = {{.frame = {{0, 0}, {800, 600}}, .workArea = {{0, 0}, {800, 600}}}};
    start(std::move(contents));
    mainLoop.post([&] {
        parts().accessibility.setAttributeValue(linux::windowElement(WindowIdentifier("1")), AXAttribute::position,
                                                CGPoint{10, 20});
    });
    drain();
    EXPECT_EQ(access.takeTrace().back(), "place 1 at (10, 20) 300 x 200 without waiting");
    mainLoop.post([&] { static_cast<void>(parts().screens.screens()); });
    drain();
    EXPECT_EQ(access.takeTrace(), Trace{"refresh"}) << "a turn of its own";
}

TEST_F(CompositorDesktop, ScreensAreInTheScreenSpaceThePrimaryOneFirst) {
    WindowTable::Contents contents;
    contents.outputs = {{.frame = {{1280, 100}, {1920, 1080}}, .workArea = {{1280, 132}, {1920, 1048}}},
                        {.frame = {{0, 0}, {1280, 1024}}, .workArea = {{0, 0}, {1280, 1000}}}};
    start(std::move(contents));
    EXPECT_EQ(parts().screens.screens(),
              (std::vector<Screen>{
                  {.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1048}}},
                  {.frame = {{-1280, 156}, {1280, 1024}}, .visibleFrame = {{-1280, 180}, {1280, 1000}}},
              }));
    table.close();
    EXPECT_TRUE(parts().screens.screens().empty());
}

TEST_F(CompositorDesktop, OwnWindowsAndThePointerAreCountedFromThePrimaryOutput) {
    WindowTable::Contents contents;
    contents.outputs = {{.frame = {{1280, 100}, {1920, 1080}}, .workArea = {{1280, 132}, {1920, 1048}}}};
    start(std::move(contents));
    platform::OwnWindows& own = parts().ownWindows;
    EXPECT_EQ(own.pointer(), std::nullopt) << "the compositor does not say";
    access.pointerPosition = CGPoint{1300, 150};
    EXPECT_EQ(own.pointer(), (CGPoint{20, 1030}));
    own.place(0, "Title", {30, 40});
    EXPECT_EQ(access.takeTrace().back(), "place own Title at (1310, 140)");
    table.close();
    EXPECT_EQ(own.pointer(), std::nullopt);
    own.place(0, "Title", {30, 40});
    EXPECT_EQ(access.takeTrace(), Trace{});
}

TEST_F(CompositorDesktop, TheActiveScreenIsInTheScreenSpace) {
    WindowTable::Contents contents;
    contents.outputs = {{.frame = {{1280, 100}, {1920, 1080}}, .workArea = {{1280, 132}, {1920, 1048}}},
                        {.frame = {{0, 0}, {1280, 1024}}, .workArea = {{0, 0}, {1280, 1000}}, .isActive = true}};
    start(std::move(contents));
    EXPECT_EQ(parts().ownWindows.activeScreen(), (CGRect{{-1280, 156}, {1280, 1024}}));
    table.close();
    EXPECT_EQ(parts().ownWindows.activeScreen(), std::nullopt);
}

TEST_F(CompositorDesktop, TheKeyboardIsElsewhereIfAnotherProgramIsKnownToHaveIt) {
    start();
    platform::OwnWindows& own = parts().ownWindows;
    EXPECT_FALSE(own.isKeyboardElsewhere()) << "nobody has it";
    openWindow("1", ::getpid() + 1, "editor");
    openWindow("2", ::getpid(), "tessel");
    table.setFocused("1");
    EXPECT_TRUE(own.isKeyboardElsewhere());
    table.setFocused("2");
    EXPECT_FALSE(own.isKeyboardElsewhere());
    table.setFocused("3");
    EXPECT_FALSE(own.isKeyboardElsewhere()) << "nobody knows whose that is";
    table.setFocused("1");
    table.close();
    EXPECT_FALSE(own.isKeyboardElsewhere());
}

TEST_F(CompositorDesktop, AnnouncesInALaterTurnThatItsAccessHasBegunOrEnded) {
    int notices = 0;
    const auto& center = parts().accessibility.notificationCenter();
    static_cast<void>(center->addObserver(AccessNotification::didChange, [&](const Notification&) { ++notices; }));
    start();
    EXPECT_EQ(notices, 0) << "never within a call";
    drain();
    EXPECT_EQ(notices, 1);
    table.open({});
    drain();
    EXPECT_EQ(notices, 1) << "it was open already";
    table.close();
    drain();
    EXPECT_EQ(notices, 2);
    desktop.reset();
    table.open({});
    drain();
    EXPECT_EQ(notices, 2);
}

} // namespace
} // namespace platform::compositor
