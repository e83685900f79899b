#include "Platform/Linux/Services/PortalSettings.h"
#include "SettingsPortal.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;
using Settings = SettingsPortal::Settings;

constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* gnome = "org.gnome.desktop.interface";

class PortalSettingsTest : public testing::Test {
protected:
    MessageBus daemon;
    MainLoop loop;
    int changes = 0;
    // Created once the daemon runs.
    std::unique_ptr<SessionBus> portalBus;
    std::unique_ptr<SettingsPortal> portal;
    std::unique_ptr<SessionBus> bus;
    std::unique_ptr<PortalSettings> settings;

    void startPortal(Settings values) {
        portal.reset();
        portalBus = std::make_unique<SessionBus>(loop, daemon.address(), milliseconds(20));
        portal = std::make_unique<SettingsPortal>(*portalBus, std::move(values));
        ASSERT_TRUE(runUntil([this] { return portal->isThere; }));
    }

    void connect() {
        settings.reset();
        bus = std::make_unique<SessionBus>(loop, daemon.address(), milliseconds(20));
        settings = std::make_unique<PortalSettings>(*bus);
    }

    void follow() {
        settings->follow([this] { ++changes; });
    }

    [[nodiscard]] bool becomes(const AppearanceWishes& wishes) {
        return runUntil([&] { return settings->wishes() == wishes; });
    }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }
};

TEST_F(PortalSettingsTest, WishesAreReadAndFollowed) {
    daemon.start();
    startPortal({{{appearance, "color-scheme"}, 1U}, {{gnome, "enable-animations"}, true}, {{gnome, "x"}, 5U}});
    connect();
    follow();
    EXPECT_TRUE(becomes({ColorScheme::dark, false}));
    EXPECT_EQ(changes, 1);
    portal->set({appearance, "color-scheme"}, 2U);
    EXPECT_TRUE(becomes({ColorScheme::light, false}));
    portal->set({gnome, "enable-animations"}, false);
    EXPECT_TRUE(becomes({ColorScheme::light, true}));
    EXPECT_EQ(changes, 3);
    portal->set({gnome, "enable-animations"}, true);
    portal->set({appearance, "reduced-motion"}, 1U);
    EXPECT_TRUE(becomes({ColorScheme::light, false}));
    EXPECT_TRUE(becomes({ColorScheme::light, true}));
}

TEST_F(PortalSettingsTest, NothingIsAskedBeforeItIsFollowed) {
    daemon.start();
    startPortal({{{appearance, "color-scheme"}, 1U}});
    connect();
    // Observers are notified in the order of their registration, the bus's own first.
    SettingsPortal later(*bus, {});
    ASSERT_TRUE(runUntil([&] { return later.knowsBus; }));
    portal->set({appearance, "color-scheme"}, 2U);
    portal->set({appearance, "color-scheme"}, 1U);
    ASSERT_TRUE(runUntil([&] { return portal->hasFlushed(); }));
    EXPECT_EQ(portal->questions, 0);
    EXPECT_EQ(settings->wishes(), AppearanceWishes());
    follow();
    EXPECT_TRUE(becomes({ColorScheme::dark, std::nullopt}));
}

TEST_F(PortalSettingsTest, OtherNumbersAndKindsAreNoWishes) {
    const std::vector<std::pair<Settings, AppearanceWishes>> cases{
        {{{{appearance, "color-scheme"}, 0U}}, {}},
        {{{{appearance, "color-scheme"}, 3U}, {{gnome, "enable-animations"}, 0U}}, {}},
        {{{{appearance, "color-scheme"}, true}, {{gnome, "enable-animations"}, false}}, {std::nullopt, true}},
        {{{{appearance, "color-scheme"}, std::string("dark")}, {{appearance, "reduced-motion"}, 1U}},
         {std::nullopt, true}},
        {{{{appearance, "reduced-motion"}, 0U}, {{gnome, "enable-animations"}, true}}, {std::nullopt, false}},
        {{{{appearance, "reduced-motion"}, 0U}}, {}},
        {{{{gnome, "color-scheme"}, 1U}, {{appearance, "enable-animations"}, false}}, {}},
    };
    daemon.start();
    for (std::size_t index = 0; index < cases.size(); ++index) {
        // A value to wait for that none of the cases sends.
        startPortal({{{appearance, "color-scheme"}, 1U}, {{gnome, "enable-animations"}, true}});
        connect();
        follow();
        ASSERT_TRUE(becomes({ColorScheme::dark, false}));
        portal->remove({gnome, "enable-animations"});
        portal->set({appearance, "color-scheme"}, 0U);
        for (const auto& [key, value] : cases[index].first) {
            portal->set(key, value);
        }
        if (!cases[index].first.contains({gnome, "enable-animations"})) {
            portal->set({gnome, "enable-animations"}, std::string("neither"));
        }
        EXPECT_TRUE(becomes(cases[index].second)) << index;
        // The same for settings that are read at once.
        connect();
        follow();
        const int before = portal->questions;
        ASSERT_TRUE(runUntil([&] { return portal->questions > before && portal->hasFlushed(); }));
        EXPECT_TRUE(becomes(cases[index].second)) << index;
    }
}

TEST_F(PortalSettingsTest, APortalThatComesLateOrAgainIsRead) {
    daemon.start();
    connect();
    follow();
    startPortal({{{appearance, "color-scheme"}, 1U}});
    EXPECT_TRUE(becomes({ColorScheme::dark, std::nullopt}));
    startPortal({{{appearance, "color-scheme"}, 2U}});
    EXPECT_TRUE(becomes({ColorScheme::light, std::nullopt}));
}

TEST_F(PortalSettingsTest, APortalThatDoesNotKnowThemOrCannotStartSaysNothing) {
    daemon.offerToStart(SettingsPortal::name);
    daemon.start();
    connect();
    follow();
    startPortal({{{appearance, "color-scheme"}, 1U}});
    EXPECT_TRUE(becomes({ColorScheme::dark, std::nullopt})) << "one came after all";
    portal->isUnwilling = true;
    const int before = portal->questions;
    connect();
    follow();
    ASSERT_TRUE(runUntil([&] { return portal->questions > before && portal->hasFlushed(); }));
    EXPECT_EQ(settings->wishes(), AppearanceWishes());
    portal->set({appearance, "color-scheme"}, 2U);
    EXPECT_TRUE(becomes({ColorScheme::light, std::nullopt}));
}

TEST_F(PortalSettingsTest, ABusThatGoesTakesItsWishesAlong) {
    daemon.start();
    startPortal({{{appearance, "color-scheme"}, 1U}});
    connect();
    follow();
    ASSERT_TRUE(becomes({ColorScheme::dark, std::nullopt}));
    daemon.stop();
    EXPECT_TRUE(becomes({}));
    EXPECT_EQ(changes, 2);
    daemon.start();
    EXPECT_TRUE(becomes({ColorScheme::dark, std::nullopt}));
}

} // namespace
} // namespace platform::linux
