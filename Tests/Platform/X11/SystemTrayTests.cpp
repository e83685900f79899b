#include "FollowedDesktop.h"
#include "Platform/X11/TrayPicture.h"
#include "TrayOwner.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace platform::x11 {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using Pixels = std::vector<std::uint32_t>;

constexpr std::uint16_t size = 24;

Image symbol(bool isBadged = false) {
    return Image({.source = SystemSymbol{"uiwindow.split.2x1"},
                  .size = {18, 18},
                  .isTemplate = true,
                  .isBadged = isBadged,
                  .accessibilityDescription = "Tessel"});
}

/// The picture in a box of the tray's colour.
Pixels expectedPixels(bool isBadged, TrayColour colour) {
    const auto picture = linux::pictureFor(symbol(isBadged).description(), size);
    return blendedPixels(*picture, colour, Pixels(picture->alpha.size(), TrayOwner::boxColour));
}

class TrayOfOlderPanels : public testing::Test {
protected:
    TrayOfOlderPanels() {
        contents.title = "Tessel";
        contents.image = symbol();
        contents.action = [this](std::optional<CGPoint> position) { clicks.push_back(position); };
        followed.start();
        place().onOfferChange([this] { offers.push_back(place().isOffered()); });
    }

    linux::TrayPlace& place() { return *followed.desktop->trayPlace(); }

    TrayOwner& newOwner(std::uint8_t depth = 0, std::vector<std::uint32_t> colours = {}) {
        return owner.emplace(followed.server.display(), depth, std::move(colours));
    }

    /// Waits for one more window that requests docking, and docks it.
    xcb_window_t takeNext() {
        const std::size_t before = owner->asked().size();
        if (!followed.runUntil([&] { return owner->asked().size() > before; })) {
            ADD_FAILURE() << "no window asks to be taken";
            return XCB_WINDOW_NONE;
        }
        const xcb_window_t window = owner->asked().back();
        owner->embed(window, size);
        EXPECT_TRUE(followed.runUntil([this] { return place().isShown(); }));
        return window;
    }

    [[nodiscard]] bool untilPixels(xcb_window_t window, const Pixels& expected) {
        return followed.runUntil([&] { return owner->pixels(window, size) == expected; });
    }

    FollowedDesktop followed;
    linux::TrayContents contents;
    std::vector<std::optional<CGPoint>> clicks;
    std::vector<bool> offers;
    std::optional<TrayOwner> owner;
};

constexpr TrayColour grey{0x75, 0x75, 0x75};

TEST_F(TrayOfOlderPanels, TakesTheItemWhenItComes) {
    place().show(contents);
    followed.drain();
    EXPECT_FALSE(place().isOffered());
    EXPECT_EQ(place().frame(), std::nullopt);
    newOwner();
    const xcb_window_t window = takeNext();
    EXPECT_TRUE(place().isOffered());
    EXPECT_EQ(offers, std::vector<bool>{true});
    EXPECT_TRUE(untilPixels(window, expectedPixels(false, grey)));
    // The screen is 800 pixels high, and the item 205 from its top.
    EXPECT_EQ(place().frame(), (CGRect{{310, 800 - 205 - size}, {size, size}}));
}

TEST_F(TrayOfOlderPanels, TakesAnItemThatIsMadeLater) {
    newOwner();
    ASSERT_TRUE(followed.runUntil([this] { return place().isOffered(); }));
    EXPECT_TRUE(owner->asked().empty());
    place().show(contents);
    takeNext();
}

TEST_F(TrayOfOlderPanels, IsFoundWhereItWasBefore) {
    newOwner();
    followed.desktop.reset();
    followed.start();
    EXPECT_TRUE(place().isOffered());
}

TEST_F(TrayOfOlderPanels, TakesTheItemAgainAfterItWasStartedAgain) {
    place().show(contents);
    for (int round = 0; round < 3; ++round) {
        newOwner();
        const xcb_window_t window = takeNext();
        EXPECT_TRUE(untilPixels(window, expectedPixels(false, grey)));
        owner->leave();
        ASSERT_TRUE(followed.runUntil([this] { return !place().isOffered(); }));
        EXPECT_FALSE(place().isShown());
        EXPECT_FALSE(owner->exists(window));
    }
    EXPECT_EQ(offers, (std::vector<bool>{true, false, true, false, true, false}));
}

TEST_F(TrayOfOlderPanels, GivesTheItemToAnotherThatTakesItsPlace) {
    place().show(contents);
    newOwner();
    const xcb_window_t first = takeNext();
    TrayOwner other(followed.server.display());
    ASSERT_TRUE(followed.runUntil([&] { return !other.asked().empty(); }));
    EXPECT_NE(other.asked().back(), first);
    EXPECT_TRUE(followed.runUntil([&] { return !owner->exists(first); })) << "never two at once";
}

TEST_F(TrayOfOlderPanels, ShowsAnotherPictureAtOnce) {
    place().show(contents);
    newOwner();
    const xcb_window_t window = takeNext();
    ASSERT_TRUE(untilPixels(window, expectedPixels(false, grey)));
    contents.image = symbol(true);
    place().update(linux::TrayPlace::Change::image);
    EXPECT_TRUE(untilPixels(window, expectedPixels(true, grey)));
}

TEST_F(TrayOfOlderPanels, ColoursThePictureAsThePanelWants) {
    place().show(contents);
    newOwner(0, {0xFFFF, 0x8000, 0x00FF, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_TRUE(untilPixels(takeNext(), expectedPixels(false, {0xFF, 0x80, 0x00})));
}

TEST_F(TrayOfOlderPanels, LetsThePanelShineThroughWhereItCan) {
    place().show(contents);
    newOwner(32);
    const xcb_window_t window = takeNext();
    EXPECT_EQ(owner->depthOf(window), 32);
    const auto picture = linux::pictureFor(symbol().description(), size);
    EXPECT_TRUE(untilPixels(window, premultipliedPixels(*picture, grey)));
}

TEST_F(TrayOfOlderPanels, ReportsClicksWithTheirPosition) {
    place().show(contents);
    newOwner();
    const xcb_window_t window = takeNext();
    owner->click(window, 4, 1, 1);
    owner->click(window, 1, 320, 211);
    owner->click(window, 2, 320, 212);
    owner->click(window, 3, 320, 213);
    ASSERT_TRUE(followed.runUntil([this] { return clicks.size() >= 3; }));
    EXPECT_EQ(clicks, (std::vector<std::optional<CGPoint>>{CGPoint{320, 589}, CGPoint{320, 588}, CGPoint{320, 587}}));
}

TEST_F(TrayOfOlderPanels, AnItemThatThePanelLetsGoDoesNotStandOnTheScreen) {
    place().show(contents);
    newOwner();
    const xcb_window_t window = takeNext();
    owner->letGo(window);
    EXPECT_TRUE(followed.runUntil([&] { return !owner->exists(window); }));
    EXPECT_FALSE(place().isShown());
}

TEST_F(TrayOfOlderPanels, AHiddenItemIsTakenAway) {
    place().show(contents);
    newOwner();
    const xcb_window_t window = takeNext();
    place().hide();
    EXPECT_TRUE(followed.runUntil([&] { return !owner->exists(window); }));
    EXPECT_FALSE(place().isShown());
    EXPECT_TRUE(place().isOffered());
    place().show(contents);
    EXPECT_NE(takeNext(), window);
}

TEST_F(TrayOfOlderPanels, AreNotTakenFromOtherAnnouncements) {
    place().show(contents);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = followed.testClient.connection().root();
    message.type = followed.testClient.atom("MANAGER");
    message.data.data32[1] = followed.testClient.atom("WM_S0");
    xcb_send_event(followed.testClient.connection().raw(), 0, message.window, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    followed.testClient.connection().flush();
    followed.drain();
    EXPECT_FALSE(place().isOffered());
    EXPECT_TRUE(offers.empty());
}

TEST(TrayPicture, TakesTheColourOfSymbols) {
    EXPECT_EQ(symbolColour({}), grey);
    EXPECT_EQ(symbolColour({0xFFFF, 0xFFFF}), grey);
    EXPECT_EQ(symbolColour({0xFFFF, 0x8080, 0}), (TrayColour{0xFF, 0x80, 0}));
}

TEST(TrayPicture, IsMixedByItsCoverage) {
    const linux::SymbolPicture picture{.size = 2, .alpha = {0, 255, 128, 51}};
    constexpr TrayColour orange{0xFF, 0x80, 0x00};
    EXPECT_EQ(premultipliedPixels(picture, orange), (Pixels{0, 0xFFFF8000, 0x80804000, 0x33331A00}));
    EXPECT_EQ(blendedPixels(picture, orange, Pixels{0x000010, 0x000010, 0xFFFFFFFF, 0x0000FF}),
              (Pixels{0x000010, 0xFF8000, 0xFFBF7F, 0x331ACC}));
}

} // namespace
} // namespace platform::x11
