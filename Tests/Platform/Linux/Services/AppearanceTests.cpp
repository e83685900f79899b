#include "Platform/Linux/Services/Appearance.h"
#include "SettingsPortal.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;

/// A desktop with the given answers.
class SaidByHand final : public AppearanceSource {
public:
    [[nodiscard]] AppearanceWishes wishes() const override { return changed ? said : AppearanceWishes(); }

    void follow(std::function<void()> newChanged) override { changed = std::move(newChanged); }

    void say(const AppearanceWishes& wishes) {
        said = wishes;
        if (changed) {
            changed();
        }
    }

private:
    AppearanceWishes said;
    std::function<void()> changed;
};

/// A desktop without a message bus, in a process whose environment may be changed.
void withoutBus(const char* theme, const std::function<void(Appearance&, SaidByHand&)>& body) {
    inChildProcess([&] {
        ::unsetenv("GTK_THEME");
        if (theme != nullptr) {
            ::setenv("GTK_THEME", theme, 1);
        }
        MainLoop loop;
        SessionBus bus(loop, std::nullopt);
        SaidByHand desktop;
        Appearance appearance(bus, &desktop);
        body(appearance, desktop);
    });
}

TEST(Appearance, WithoutAnybodyToSayItIsLightAndMoves) {
    withoutBus(nullptr, [](Appearance& appearance, SaidByHand& /*desktop*/) {
        appearance.follow([] { ADD_FAILURE() << "nothing has changed"; });
        EXPECT_EQ(appearance.colorScheme(), ColorScheme::light);
        EXPECT_FALSE(appearance.reducesMotion());
    });
}

TEST(Appearance, NothingCountsBeforeItIsFollowed) {
    withoutBus("Adwaita:dark", [](Appearance& appearance, SaidByHand& desktop) {
        desktop.say({ColorScheme::dark, true});
        EXPECT_EQ(appearance.colorScheme(), ColorScheme::light);
        EXPECT_FALSE(appearance.reducesMotion());
        appearance.follow({});
        EXPECT_EQ(appearance.colorScheme(), ColorScheme::dark);
        EXPECT_TRUE(appearance.reducesMotion());
    });
}

TEST(Appearance, EachChangeIsReportedOnceToTheLastFollower) {
    withoutBus(nullptr, [](Appearance& appearance, SaidByHand& desktop) {
        int first = 0;
        int second = 0;
        appearance.follow([&] { ++first; });
        desktop.say({ColorScheme::light, false});
        EXPECT_EQ(first, 0);
        desktop.say({ColorScheme::dark, false});
        desktop.say({ColorScheme::dark, false});
        EXPECT_EQ(first, 1);
        appearance.follow([&] { ++second; });
        desktop.say({});
        EXPECT_EQ(first, 1);
        EXPECT_EQ(second, 1);
    });
}

TEST(Appearance, TheEnvironmentsThemeCountsBeforeTheDesktops) {
    struct Row {
        const char* theme;
        std::optional<ColorScheme> desktop;
        ColorScheme expected;
    };
    for (const Row& row :
         {Row{"Adwaita:dark", ColorScheme::light, ColorScheme::dark},
          Row{"Adwaita", ColorScheme::dark, ColorScheme::light}, Row{"", ColorScheme::dark, ColorScheme::dark},
          Row{nullptr, ColorScheme::dark, ColorScheme::dark}}) {
        withoutBus(row.theme, [&](Appearance& appearance, SaidByHand& desktop) {
            appearance.follow({});
            desktop.say({row.desktop, std::nullopt});
            EXPECT_EQ(appearance.colorScheme(), row.expected) << (row.theme == nullptr ? "none" : row.theme);
        });
    }
}

TEST(Appearance, ThePortalIsAskedFirstForEachWish) {
    MessageBus daemon;
    daemon.start();
    inChildProcess([&] {
        ::setenv("GTK_THEME", "Adwaita:dark", 1);
        MainLoop loop;
        const auto runUntil = [&](const std::function<bool()>& holds) {
            const Instant deadline = loop.now() + std::chrono::seconds(10);
            while (!holds() && loop.now() < deadline) {
                sd_event_run(loop.handle(), std::uint64_t{2000});
            }
            return holds();
        };
        SessionBus portalBus(loop, daemon.address());
        SettingsPortal portal(portalBus, {{{"org.freedesktop.appearance", "color-scheme"}, 2U}});
        EXPECT_TRUE(runUntil([&] { return portal.isThere; }));
        SessionBus bus(loop, daemon.address());
        SaidByHand desktop;
        Appearance appearance(bus, &desktop);
        int changes = 0;
        appearance.follow([&] { ++changes; });
        desktop.say({ColorScheme::dark, true});
        EXPECT_TRUE(appearance.reducesMotion());
        EXPECT_EQ(changes, 1);
        EXPECT_TRUE(runUntil([&] { return appearance.colorScheme() == ColorScheme::light; }));
        EXPECT_EQ(changes, 2);
        EXPECT_TRUE(appearance.reducesMotion()) << "the portal does not say";
        portal.set({"org.gnome.desktop.interface", "enable-animations"}, true);
        EXPECT_TRUE(runUntil([&] { return !appearance.reducesMotion(); }));
        portal.set({"org.freedesktop.appearance", "color-scheme"}, 0U);
        EXPECT_TRUE(runUntil([&] { return appearance.colorScheme() == ColorScheme::dark; }));
        EXPECT_EQ(changes, 4);
    });
}

} // namespace
} // namespace platform::linux
