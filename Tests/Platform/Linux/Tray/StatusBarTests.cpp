#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Tray/StatusBar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace platform::linux {
namespace {

using Lines = std::vector<std::string>;

/// A kind of panel that the test adds and removes; it records its calls.
class Place final : public TrayPlace {
public:
    Place(std::string name, Lines& record)
        : name(std::move(name))
        , record(record) {}

    [[nodiscard]] bool isOffered() const override { return offered; }

    void show(const TrayContents& newContents) override {
        contents = &newContents;
        record.push_back(name + " shows " + contents->identifier);
    }

    void hide() override {
        contents = nullptr;
        record.push_back(name + " hides");
    }

    void update(Change change) override {
        record.push_back(name + " updates " + std::to_string(static_cast<int>(change)));
    }

    [[nodiscard]] bool isShown() const override { return offered && contents != nullptr; }

    [[nodiscard]] std::optional<corvid::CGRect> frame() const override { return place; }

    void offer(bool now) {
        offered = now;
        offerChanged();
    }

    const TrayContents* contents = nullptr;
    std::optional<corvid::CGRect> place;

private:
    std::string name;
    Lines& record;
    bool offered = false;
};

class CombinedStatusBar : public testing::Test {
protected:
    Lines take() { return std::exchange(record, {}); }

    /// Offers the other place, and waits until the item is there.
    void moveToOther() {
        other.offer(true);
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (other.contents == nullptr && std::chrono::steady_clock::now() < end) {
            constexpr std::uint64_t shortWait = 10'000;
            sd_event_run(loop.handle(), shortWait);
        }
        EXPECT_NE(other.contents, nullptr);
    }

    MainLoop loop;
    Lines record;
    Place best{"best", record};
    Place other{"other", record};
    StatusBar bar{loop, "program", {&best, &other}};
};

TEST_F(CombinedStatusBar, KnowsTheSymbolsAndNoOthers) {
    const auto image = bar.symbolImage("uiwindow.split.2x1", "Tessel");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->description().source, ImageSource(SystemSymbol{"uiwindow.split.2x1"}));
    EXPECT_EQ(image->description().accessibilityDescription, "Tessel");
    EXPECT_EQ(image->description().size, (corvid::CGSize{18, 18}));
    EXPECT_EQ(bar.symbolImage("no.such.symbol", "Tessel"), std::nullopt);
}

TEST_F(CombinedStatusBar, TheFirstPlaceHasTheItemEvenBeforeItIsOffered) {
    const auto item = bar.createStatusItem("Item-0");
    EXPECT_EQ(take(), (Lines{"best shows program.Item-0"}));
    EXPECT_FALSE(item->isShown());
    best.offer(true);
    EXPECT_TRUE(item->isShown());
    EXPECT_EQ(take(), Lines());
}

TEST_F(CombinedStatusBar, NeverTwoPlacesShowTheItemAtOnce) {
    const auto item = bar.createStatusItem("Item-0");
    take();
    moveToOther();
    EXPECT_EQ(take(), (Lines{"other shows program.Item-0"}));
    EXPECT_TRUE(item->isShown());
    best.offer(true);
    EXPECT_EQ(take(), (Lines{"other hides"}));
    EXPECT_TRUE(item->isShown());
    best.offer(false);
    moveToOther();
    EXPECT_EQ(take(), (Lines{"other shows program.Item-0"}));
    other.offer(false);
    EXPECT_EQ(take(), (Lines{"other hides"}));
    EXPECT_FALSE(item->isShown());
}

TEST_F(CombinedStatusBar, APanelThatOffersSeveralPlacesIsWaitedFor) {
    const auto item = bar.createStatusItem("Item-0");
    take();
    // Twice: the first time the better place appears, the second time the panel disappears again.
    for (const bool comes : {true, false}) {
        other.offer(true);
        best.offer(comes);
        other.offer(comes);
        const auto end = std::chrono::steady_clock::now() + StatusBar::patience * 2;
        while (std::chrono::steady_clock::now() < end) {
            constexpr std::uint64_t shortWait = 10'000;
            sd_event_run(loop.handle(), shortWait);
        }
        EXPECT_EQ(take(), Lines());
        other.offer(false);
        best.offer(false);
    }
}

TEST_F(CombinedStatusBar, ChangesOfAnItemReachEachPlaceThatShowsIt) {
    const auto item = bar.createStatusItem("Item-0");
    moveToOther();
    take();
    item->setTitle("Tessel");
    item->setToolTip("Paused");
    item->setImage(*bar.symbolImage("uiwindow.split.2x1", ""));
    item->setMenu({{.title = "Quit", .isChecked = std::nullopt, .action = nullptr}});
    EXPECT_EQ(take(), (Lines{"best updates 1", "other updates 1", "best updates 2", "other updates 2", "best updates 0",
                             "other updates 0", "best updates 3", "other updates 3"}));
    ASSERT_EQ(best.contents, other.contents);
    EXPECT_EQ(best.contents->title, "Tessel");
    EXPECT_EQ(best.contents->toolTip, "Paused");
    EXPECT_TRUE(best.contents->image);
    EXPECT_EQ(best.contents->menu.size(), 1U);
}

TEST_F(CombinedStatusBar, TheItemIsWhereItIsShown) {
    const auto item = bar.createStatusItem("Item-0");
    other.place = corvid::CGRect{{10, 20}, {24, 24}};
    EXPECT_EQ(item->frame(), std::nullopt) << "it is not shown";
    moveToOther();
    EXPECT_EQ(item->frame(), other.place);
    best.offer(true);
    EXPECT_EQ(item->frame(), std::nullopt) << "that panel does not send";
}

TEST_F(CombinedStatusBar, OneItemIsShownAndTheNextWhenItGoes) {
    auto first = bar.createStatusItem("Item-0");
    const auto second = bar.createStatusItem("Item-1");
    best.offer(true);
    EXPECT_EQ(take(), (Lines{"best shows program.Item-0"}));
    EXPECT_TRUE(first->isShown());
    EXPECT_FALSE(second->isShown());
    second->setTitle("Second");
    EXPECT_EQ(take(), Lines());
    first.reset();
    EXPECT_EQ(take(), (Lines{"best hides", "best shows program.Item-1"}));
    EXPECT_TRUE(second->isShown());
}

TEST_F(CombinedStatusBar, ADroppedItemIsTakenAway) {
    auto item = bar.createStatusItem("Item-0");
    moveToOther();
    take();
    item.reset();
    EXPECT_EQ(take(), (Lines{"best hides", "other hides"}));
    other.offer(false);
    EXPECT_EQ(take(), Lines());
}

} // namespace
} // namespace platform::linux
