#include "ClientProcess.h"
#include "FollowedDesktop.h"
#include "Platform/X11/SettingsManager.h"
#include "XSettingsWriter.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

using linux::AppearanceWishes;

constexpr AppearanceWishes nothing;

/// A desktop with a simulated settings manager.
class SettingsManagerTest : public testing::Test {
protected:
    FollowedDesktop followed;
    int changes = 0;

    void SetUp() override { followed.start(); }

    SettingsManager& settings() { return *followed.desktop->appearanceSource(); }

    void follow() {
        settings().follow([this] { ++changes; });
    }

    [[nodiscard]] bool becomes(const AppearanceWishes& wishes) {
        return followed.runUntil([&] { return settings().wishes() == wishes; });
    }

    void write(xcb_window_t manager, const std::string& contents) {
        xcb_connection_t* raw = followed.testClient.connection().raw();
        const xcb_atom_t property = followed.testClient.atom("_XSETTINGS_SETTINGS");
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, manager, property, property, 8,
                            static_cast<std::uint32_t>(contents.size()), contents.data());
        followed.testClient.connection().flush();
    }

    /// Takes the selection and announces it, as a manager does (ICCCM 2.8).
    void takeOver(xcb_window_t manager) {
        Connection& testClient = followed.testClient.connection();
        const xcb_atom_t selection = followed.testClient.atom("_XSETTINGS_S0");
        xcb_set_selection_owner(testClient.raw(), manager, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t message{.response_type = XCB_CLIENT_MESSAGE,
                                           .format = 32,
                                           .sequence = 0,
                                           .window = testClient.root(),
                                           .type = followed.testClient.atom("MANAGER"),
                                           .data = {}};
        message.data.data32[1] = selection;
        message.data.data32[2] = manager;
        xcb_send_event(testClient.raw(), 0, testClient.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        testClient.flush();
    }
};

std::string theme(const std::string& name, std::int32_t isAnimated = 1) {
    return writeXSettings({{"Net/ThemeName", name}, {"Gtk/EnableAnimations", isAnimated}});
}

TEST_F(SettingsManagerTest, WithoutAManagerNothingIsSaid) {
    follow();
    followed.drain();
    EXPECT_EQ(settings().wishes(), nothing);
    EXPECT_EQ(changes, 0);
}

TEST_F(SettingsManagerTest, NothingIsReadBeforeItIsFollowed) {
    const ClientProcess desktop(followed.server.display());
    const xcb_window_t manager = desktop.makeWindow();
    write(manager, theme("Dark", 0));
    takeOver(manager);
    followed.drain();
    EXPECT_EQ(settings().wishes(), nothing);
    follow();
    EXPECT_EQ(settings().wishes(), (AppearanceWishes{ColorScheme::dark, true}));
    EXPECT_EQ(changes, 0) << "it was there already";
}

TEST_F(SettingsManagerTest, ChangesAreFollowedAndReportedOnce) {
    const ClientProcess desktop(followed.server.display());
    const xcb_window_t manager = desktop.makeWindow();
    write(manager, theme("Adwaita"));
    takeOver(manager);
    follow();
    ASSERT_EQ(settings().wishes(), (AppearanceWishes{ColorScheme::light, false}));
    write(manager, theme("Adwaita-dark"));
    EXPECT_TRUE(becomes({ColorScheme::dark, false}));
    write(manager, theme("Arc-Dark"));
    write(manager, theme("Arc-Dark", 0));
    EXPECT_TRUE(becomes({ColorScheme::dark, true}));
    write(manager, writeXSettings({{"Net/ThemeName", 1}, {"Gtk/EnableAnimations", "0"}}));
    EXPECT_TRUE(becomes(nothing)) << "settings of other kinds than they are";
    EXPECT_EQ(changes, 3);
}

TEST_F(SettingsManagerTest, ManagersComeAndGo) {
    follow();
    ClientProcess first(followed.server.display());
    const xcb_window_t dark = first.makeWindow();
    write(dark, theme("Dark"));
    takeOver(dark);
    EXPECT_TRUE(becomes({ColorScheme::dark, false}));
    const ClientProcess second(followed.server.display());
    const xcb_window_t light = second.makeWindow();
    write(light, theme("Light"));
    takeOver(light);
    EXPECT_TRUE(becomes({ColorScheme::light, false}));
    write(dark, theme("Dark", 0));
    first.end();
    followed.drain();
    EXPECT_EQ(settings().wishes(), (AppearanceWishes{ColorScheme::light, false})) << "who was replaced counts no more";
    followed.testClient.destroy(light);
    EXPECT_TRUE(becomes(nothing));
    EXPECT_EQ(changes, 3);
}

TEST_F(SettingsManagerTest, NonsenseIsNoWish) {
    const ClientProcess desktop(followed.server.display());
    const xcb_window_t manager = desktop.makeWindow();
    write(manager, theme("Dark"));
    takeOver(manager);
    follow();
    followed.testClient.setWords(manager, "_XSETTINGS_SETTINGS", "CARDINAL", {0, 1, 0xffffffff, 0xffffffff});
    EXPECT_TRUE(becomes(nothing));
    write(manager, theme("Dark").substr(0, 20));
    write(manager, theme("Dark"));
    EXPECT_TRUE(becomes({ColorScheme::dark, false}));
}

} // namespace
} // namespace platform::x11
