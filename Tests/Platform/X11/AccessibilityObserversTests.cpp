#include "FollowedDesktop.h"
#include "Platform/X11/Element.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

using Windows = std::vector<xcb_window_t>;

/// Subscribes to a process's new windows and records them.
struct Watcher {
    Watcher(Desktop& desktop, ProcessIdentifier process)
        : observer(*desktop.parts().accessibilityObservers.createObserver(process, &Watcher::created)) {
        error = observer->addNotification(desktop.parts().accessibility.applicationElement(process),
                                          AXNotification::windowCreated, this);
    }

    static void created(AXObserver& observer, const AXUIElement& element, std::string_view notification,
                        void* context) {
        auto* watcher = static_cast<Watcher*>(context);
        EXPECT_EQ(watcher->observer.get(), &observer);
        EXPECT_EQ(notification, AXNotification::windowCreated);
        watcher->windows.push_back(dynamic_cast<const WindowElement&>(element.contents()).window);
        if (watcher->whenNotified) {
            watcher->whenNotified();
        }
    }

    std::unique_ptr<AXObserver> observer;
    AXError error = AXError::failure;
    Windows windows;
    std::function<void()> whenNotified;
};

class AccessibilityObserversTest : public testing::Test {
protected:
    FollowedDesktop followed;
    ClientProcess editor{followed.server.display()};
    ClientProcess browser{followed.server.display()};

    [[nodiscard]] bool isReported(const Watcher& watcher, std::size_t count) {
        return followed.runUntil([&] { return watcher.windows.size() >= count; });
    }

    /// The editor with one window, launched.
    xcb_window_t launchEditor() {
        const xcb_window_t window = followed.openWindow(editor, "Editor");
        EXPECT_TRUE(followed.runUntil([&] { return followed.reported.size() == 1; }));
        return window;
    }
};

TEST_F(AccessibilityObserversTest, NewWindowsAreReportedOnceInTheirOrderAndOldOnesAreNot) {
    followed.start();
    launchEditor();
    const Watcher watcher(*followed.desktop, editor.process());
    ASSERT_EQ(watcher.error, AXError::success);
    const xcb_window_t second = followed.makeWindow(editor, "Editor");
    const xcb_window_t third = followed.makeWindow(editor, "Editor");
    followed.managed.insert(followed.managed.end(), {third, second});
    followed.list();
    const xcb_window_t fourth = followed.openWindow(editor, "Editor");
    followed.openWindow(browser, "Browser");
    ASSERT_TRUE(isReported(watcher, 3));
    followed.settle();
    EXPECT_EQ(watcher.windows, (Windows{third, second, fourth}));
}

TEST_F(AccessibilityObserversTest, AWindowIsReportedWhenTheWindowManagerHasFinishedWithItAndEachInATurnOfItsOwn) {
    followed.start();
    launchEditor();
    Watcher watcher(*followed.desktop, editor.process());
    followed.testClient.becomeWindowManager();
    followed.openWindow(editor, "Editor");
    followed.openWindow(editor, "Editor");
    ASSERT_TRUE(followed.runUntil([&] { return followed.testClient.waitingRequests() > 0; }));
    followed.drain();
    EXPECT_EQ(watcher.windows, Windows{});

    int turn = 0;
    std::vector<int> turns;
    watcher.whenNotified = [&] { turns.push_back(turn); };
    followed.testClient.answerRequests();
    ASSERT_TRUE(followed.runUntil([&] { return ++turn > 0 && turns.size() == 2; }));
    EXPECT_LT(turns.front(), turns.back());
}

TEST_F(AccessibilityObserversTest, AWindowThatIsListedAtTheSubscriptionIsNotReportedThoughItIsNotReady) {
    followed.start();
    launchEditor();
    followed.testClient.becomeWindowManager();
    followed.openWindow(editor, "Editor");
    ASSERT_TRUE(followed.runUntil([&] { return followed.testClient.waitingRequests() == 1; }));
    const Watcher watcher(*followed.desktop, editor.process());
    const xcb_window_t next = followed.openWindow(editor, "Editor");
    ASSERT_TRUE(followed.runUntil([&] { return followed.testClient.waitingRequests() == 2; }));
    followed.testClient.answerRequests();
    ASSERT_TRUE(isReported(watcher, 1));
    EXPECT_EQ(watcher.windows, Windows{next});
}

TEST_F(AccessibilityObserversTest, AReportedWindowIsInTheListAndReadyForUse) {
    followed.start();
    Watcher watcher(*followed.desktop, editor.process());
    ASSERT_EQ(watcher.error, AXError::success) << "a process without windows can be observed";
    bool isRight = false;
    watcher.whenNotified = [&] {
        platform::Accessibility& accessibility = followed.desktop->parts().accessibility;
        const AXUIElement window(std::make_shared<const WindowElement>(watcher.windows.back()));
        const auto windows =
            accessibility.copyAttributeValue(accessibility.applicationElement(editor.process()), AXAttribute::windows);
        isRight = windows == AXValue(std::vector{window}) &&
                  accessibility.copyAttributeValue(window, AXAttribute::subrole) ==
                      AXValue(std::string(AXSubrole::standardWindow)) &&
                  accessibility.copyAttributeValue(window, AXAttribute::size) == AXValue(corvid::CGSize{200, 100});
    };
    followed.openWindow(editor, "Editor");
    ASSERT_TRUE(isReported(watcher, 1));
    EXPECT_TRUE(isRight);
}

TEST_F(AccessibilityObserversTest, AWindowThatIsGoneByThenIsNotReported) {
    followed.start();
    launchEditor();
    const Watcher watcher(*followed.desktop, editor.process());
    followed.testClient.becomeWindowManager();
    const xcb_window_t closed = followed.openWindow(editor, "Editor");
    const xcb_window_t destroyed = followed.openWindow(editor, "Editor");
    const xcb_window_t hidden = followed.openWindow(editor, "Editor");
    const xcb_window_t remaining = followed.openWindow(editor, "Editor");
    ASSERT_TRUE(followed.runUntil([&] { return followed.testClient.waitingRequests() > 0; }));
    followed.closeWindow(closed);
    followed.testClient.destroy(destroyed);
    std::erase(followed.managed, hidden);
    followed.list();
    followed.drain();
    followed.testClient.answerRequests();
    ASSERT_TRUE(isReported(watcher, 1));
    followed.testClient.resign();
    followed.settle();
    EXPECT_EQ(watcher.windows, Windows{remaining});

    // It was only hidden, and is new when it is shown again.
    followed.managed.push_back(hidden);
    followed.settle();
    EXPECT_EQ(watcher.windows, (Windows{remaining, hidden}));
}

TEST_F(AccessibilityObserversTest, ARestartOfTheWindowManagerReportsNothing) {
    followed.start();
    launchEditor();
    const Watcher watcher(*followed.desktop, editor.process());
    followed.openWindow(editor, "Editor");
    ASSERT_TRUE(isReported(watcher, 1));
    followed.testClient.unlist();
    followed.drain();
    followed.testClient.list({followed.managed.back()});
    followed.drain();
    followed.list();
    followed.settle();
    EXPECT_EQ(watcher.windows.size(), 1U);
}

TEST_F(AccessibilityObserversTest, AnObserverMayBeDroppedFromWithinItsCallbackAndByAnother) {
    followed.start();
    launchEditor();
    Watcher first(*followed.desktop, editor.process());
    Watcher second(*followed.desktop, editor.process());
    Watcher third(*followed.desktop, editor.process());
    first.whenNotified = [&] {
        first.observer.reset();
        second.observer.reset();
    };
    followed.managed.push_back(followed.makeWindow(editor, "Editor"));
    followed.managed.push_back(followed.makeWindow(editor, "Editor"));
    followed.list();
    ASSERT_TRUE(isReported(third, 2));
    followed.settle();
    EXPECT_EQ(first.windows.size(), 1U);
    EXPECT_EQ(second.windows.size(), 0U);
    EXPECT_EQ(third.windows.size(), 2U);
}

TEST_F(AccessibilityObserversTest, EverySubscriptionIsNotifiedWithItsContext) {
    followed.start();
    const ProcessIdentifier process = editor.process();
    Watcher watcher(*followed.desktop, process);
    Watcher other(*followed.desktop, process);
    EXPECT_EQ(watcher.observer->addNotification(followed.desktop->parts().accessibility.applicationElement(process),
                                                AXNotification::windowCreated, &watcher),
              AXError::success);
    followed.openWindow(editor, "Editor");
    followed.settle();
    EXPECT_EQ(watcher.windows.size(), 2U);
    EXPECT_EQ(other.windows.size(), 1U);
}

TEST_F(AccessibilityObserversTest, OnlyNewWindowsOfTheOwnProcessCanBeSubscribedTo) {
    followed.start();
    const Watcher watcher(*followed.desktop, editor.process());
    platform::Accessibility& accessibility = followed.desktop->parts().accessibility;
    const AXUIElement own = accessibility.applicationElement(editor.process());
    const AXUIElement other = accessibility.applicationElement(browser.process());
    const AXUIElement window(std::make_shared<const WindowElement>(1));
    EXPECT_EQ(watcher.observer->addNotification(other, AXNotification::windowCreated, nullptr),
              AXError::illegalArgument);
    EXPECT_EQ(watcher.observer->addNotification(window, AXNotification::windowCreated, nullptr),
              AXError::illegalArgument);
    EXPECT_EQ(watcher.observer->addNotification(own, "AXMoved", nullptr), AXError::illegalArgument);
    EXPECT_EQ(followed.desktop->parts().accessibilityObservers.createObserver(1, nullptr).error(),
              AXError::illegalArgument);
}

TEST_F(AccessibilityObserversTest, AnObserverThatOutlivesTheDesktopIsHarmless) {
    followed.start();
    const Watcher watcher(*followed.desktop, editor.process());
    followed.openWindow(editor, "Editor");
    const AXUIElement application = followed.desktop->parts().accessibility.applicationElement(editor.process());
    followed.desktop.reset();
    followed.drain();
    EXPECT_EQ(watcher.windows, Windows{});
    EXPECT_EQ(watcher.observer->addNotification(application, AXNotification::windowCreated, nullptr),
              AXError::cannotComplete);
}

} // namespace
} // namespace platform::x11
