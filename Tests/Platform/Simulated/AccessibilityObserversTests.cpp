#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace platform::simulated {
namespace {

using Lines = std::vector<std::string>;

/// The context of the callbacks below.
struct Witness {
    std::vector<AXUIElement> windows;
    Lines notifications;
    std::unique_ptr<AXObserver>* dropped = nullptr;
};

void note(AXObserver& /*observer*/, const AXUIElement& element, std::string_view notification, void* context) {
    auto& witness = *static_cast<Witness*>(context);
    witness.windows.push_back(element);
    witness.notifications.emplace_back(notification);
    if (witness.dropped != nullptr) {
        witness.dropped->reset();
    }
}

class SimulatedObservers : public testing::Test {
protected:
    std::unique_ptr<AXObserver> observe(ProcessIdentifier process) {
        auto observer = desktop.accessibilityObservers.createObserver(process, note);
        EXPECT_TRUE(observer);
        EXPECT_EQ((*observer)->addNotification(desktop.accessibility.applicationElement(process),
                                               AXNotification::windowCreated, &witness),
                  AXError::success);
        return *std::move(observer);
    }

    Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
    Witness witness;
};

TEST_F(SimulatedObservers, ReportNewWindowsOfTheirProcessInATurnOfTheirOwn) {
    editor.openWindow({});
    const auto observer = observe(10);
    Window& window = editor.openWindow({});
    desktop.applications.add({.process = 11}).openWindow({});
    EXPECT_TRUE(witness.windows.empty());
    desktop.mainActor.run();
    EXPECT_EQ(witness.windows, (std::vector{window.element()}));
    EXPECT_EQ(witness.notifications, (Lines{"AXWindowCreated"}));
}

TEST_F(SimulatedObservers, ReportNothingAfterTheyWereDestroyedNotEvenEarlierEvents) {
    auto observer = observe(10);
    EXPECT_EQ(desktop.accessibilityObservers.count(), 1U);
    editor.openWindow({});
    observer.reset();
    EXPECT_EQ(desktop.accessibilityObservers.count(), 0U);
    desktop.mainActor.run();
    EXPECT_TRUE(witness.windows.empty());
}

TEST_F(SimulatedObservers, MayBeDroppedByTheirOwnCallback) {
    auto observer = observe(10);
    witness.dropped = &observer;
    editor.openWindow({});
    editor.openWindow({});
    desktop.mainActor.run();
    EXPECT_EQ(witness.windows.size(), 1U);
}

TEST_F(SimulatedObservers, OfTheSameProcessDoNotKnowOfEachOther) {
    const auto first = observe(10);
    auto second = observe(10);
    second.reset();
    editor.openWindow({});
    desktop.mainActor.run();
    EXPECT_EQ(witness.windows.size(), 1U);
}

TEST_F(SimulatedObservers, CreatingThemCanFailOrGiveNone) {
    auto& observers = desktop.accessibilityObservers;
    observers.failCreation(10, AXError::cannotComplete);
    EXPECT_EQ(observers.createObserver(10, note).error(), AXError::cannotComplete);
    observers.failCreation(10, AXError::success);
    EXPECT_EQ(observers.createObserver(10, note).value(), nullptr);
    observers.succeed(10);
    EXPECT_NE(observers.createObserver(10, note).value(), nullptr);
}

TEST_F(SimulatedObservers, SubscribingCanFailAndLeavesNothing) {
    auto& observers = desktop.accessibilityObservers;
    const auto observer = observers.createObserver(10, note).value();
    observers.failSubscription(10, AXError::cannotComplete);
    EXPECT_EQ(observer->addNotification(editor.element(), AXNotification::windowCreated, &witness),
              AXError::cannotComplete);
    observers.succeed(10);
    EXPECT_EQ(observer->addNotification(desktop.accessibility.applicationElement(11), AXNotification::windowCreated,
                                        &witness),
              AXError::illegalArgument);
    editor.openWindow({});
    desktop.mainActor.run();
    EXPECT_TRUE(witness.windows.empty());
}

TEST_F(SimulatedObservers, AreRecorded) {
    observe(10).reset();
    EXPECT_EQ(desktop.trace.take(), (Lines{"observe process 10", "subscribe to application 10 AXWindowCreated",
                                           "stop observing process 10"}));
}

} // namespace
} // namespace platform::simulated
