#include "CorvidKit/DeferredOpenPanel.h"
#include "CorvidKit/DeferredPopover.h"
#include "Platform/Simulated/Desktop.h"
#include "Platform/Simulated/OpenPanel.h"
#include "Platform/Simulated/Popover.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvid {
namespace {

using Lines = std::vector<std::string>;
using Anchor = platform::Popover::Anchor;
using Edge = platform::Popover::Edge;

/// A toolkit whose parts outlive it, and whose loop turns as long as there is something to do.
class Toolkit final : public platform::Toolkit {
public:
    Toolkit(platform::Popover& hanging, platform::simulated::Desktop& desktop)
        : hanging(hanging)
        , desktop(desktop) {}

    [[nodiscard]] platform::Popover& popover() override { return hanging; }

    [[nodiscard]] platform::OpenPanel& openPanel() override { return desktop.openPanel; }

    [[nodiscard]] platform::ImageRenderer& imageRenderer() override { std::abort(); }

    void run() override {
        desktop.trace.record("run toolkit");
        desktop.mainActor.run();
    }

private:
    platform::Popover& hanging;
    platform::simulated::Desktop& desktop;
};

class Deferred : public testing::Test {
protected:
    /// The main loop's present turn ends.
    void endTurn() {
        if (const auto next = std::exchange(host, nullptr)) {
            next();
        }
    }

    platform::simulated::Desktop desktop;
    platform::simulated::Popover real{desktop.trace};
    bool canStart = true;
    std::function<void()> host;
    DeferredToolkit toolkit{desktop.mainActor,
                            [this]() -> std::unique_ptr<platform::Toolkit> {
                                desktop.trace.record("start toolkit");
                                if (!canStart) {
                                    return nullptr;
                                }
                                return std::make_unique<Toolkit>(real, desktop);
                            },
                            [this](std::function<void()> next) { host = std::move(next); }};
    DeferredPopover popover{toolkit};
    std::shared_ptr<const platform::View> view = std::make_shared<platform::View>();
    const Anchor anchor{.rect = CGRect{{100, 1060}, {0, 0}}, .isAtPointer = true};
};

TEST_F(Deferred, NothingIsStartedBeforeThePopoverIsShown) {
    popover.setContentView(view);
    popover.setBehavior(platform::Popover::Behavior::transient);
    popover.setAnimates(true);
    popover.performClose();
    endTurn();
    EXPECT_TRUE(popover.hasContentView());
    EXPECT_FALSE(popover.isShown());
    EXPECT_EQ(desktop.trace.take(), Lines{});
    EXPECT_EQ(toolkit.started(), nullptr);
}

TEST_F(Deferred, TheFirstShowingStartsTheToolkitAndTellsThePopoverWhatItWasTold) {
    popover.setContentView(view);
    popover.setBehavior(platform::Popover::Behavior::transient);
    popover.setAnimates(true);
    popover.show(anchor, Edge::minY);
    popover.makeKey();
    EXPECT_TRUE(popover.isShown());
    EXPECT_EQ(desktop.trace.take(), Lines{}) << "not in the middle of a turn, since starting takes long";
    endTurn();
    const Lines told = desktop.trace.take();
    for (const char* line : {"set popover behavior 1", "set popover animates 1", "show popover on edge 1"}) {
        EXPECT_EQ(std::ranges::count(told, line), 1) << line;
    }
    EXPECT_EQ(told.back(), "make popover key");
    EXPECT_EQ(real.content, view);
    EXPECT_EQ(real.anchor, anchor);
}

TEST_F(Deferred, LaterShowingsGoStraightThrough) {
    popover.setContentView(view);
    popover.show(anchor, Edge::minY);
    endTurn();
    popover.performClose();
    EXPECT_FALSE(popover.isShown());
    desktop.trace.clear();
    popover.show(anchor, Edge::minY);
    popover.makeKey();
    EXPECT_TRUE(popover.isShown());
    EXPECT_EQ(desktop.trace.lines().back(), "make popover key");
    EXPECT_EQ(desktop.trace.take("start"), Lines{});
    real.clickOutside();
    EXPECT_FALSE(popover.isShown());
}

TEST_F(Deferred, ASecondClickWhileTheToolkitStartsClosesIt) {
    popover.setContentView(view);
    popover.show(anchor, Edge::minY);
    popover.performClose();
    EXPECT_FALSE(popover.isShown());
    endTurn();
    EXPECT_FALSE(real.isShown());
    popover.show(anchor, Edge::minY);
    EXPECT_TRUE(real.isShown());
}

TEST_F(Deferred, AToolkitThatCannotBeHadLeavesItClosedAndIsTriedAgain) {
    canStart = false;
    popover.setContentView(view);
    popover.show(anchor, Edge::minY);
    endTurn();
    EXPECT_FALSE(popover.isShown());
    EXPECT_EQ(desktop.trace.take(), Lines{"start toolkit"});
    canStart = true;
    popover.show(anchor, Edge::minY);
    endTurn();
    EXPECT_TRUE(real.isShown());
}

TEST_F(Deferred, TheOpenPanelStartsTheToolkitToo) {
    DeferredOpenPanel panel(toolkit);
    std::optional<std::vector<std::filesystem::path>> chosen;
    panel.runModal({.allowedContentTypes = {}, .directory = {}, .allowsMultipleSelection = true, .prompt = "Add"},
                   [&](std::vector<std::filesystem::path> paths) { chosen = std::move(paths); });
    endTurn();
    ASSERT_TRUE(desktop.openPanel.shown.has_value());
    EXPECT_EQ(desktop.openPanel.shown->prompt, "Add");
    desktop.openPanel.choose({"/applications/Editor"});
    EXPECT_EQ(chosen, (std::vector<std::filesystem::path>{"/applications/Editor"}));
}

TEST_F(Deferred, AnOpenPanelThatCannotBeHadIsCancelled) {
    canStart = false;
    DeferredOpenPanel panel(toolkit);
    std::optional<std::vector<std::filesystem::path>> chosen;
    panel.runModal({}, [&](std::vector<std::filesystem::path> paths) { chosen = std::move(paths); });
    endTurn();
    EXPECT_EQ(chosen, std::vector<std::filesystem::path>{});
}

} // namespace
} // namespace corvid
