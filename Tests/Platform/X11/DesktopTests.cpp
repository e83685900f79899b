#include "FollowedDesktop.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

TEST(X11Desktop, WithoutRandrTheScreenIsTheRootWindow) {
    FollowedDesktop followed({"RANDR"});
    followed.start();
    followed.settle();
    const auto screens = followed.desktop->screens().screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].frame, (corvid::CGRect{{0, 0}, {1280, 800}}));
}

TEST(X11Desktop, WithoutXResourceAWindowsOwnerIsTheOneThatItNames) {
    FollowedDesktop followed({"X-Resource"});
    followed.start();
    const ClientProcess editor{followed.server.display()};
    const xcb_window_t window = followed.makeWindow(editor, "Editor");
    followed.hand.setWords(window, "_NET_WM_PID", "CARDINAL", {static_cast<std::uint32_t>(editor.process())});
    followed.managed.push_back(window);
    followed.list();
    ASSERT_TRUE(followed.runUntil([&] { return !followed.told.empty(); }));
    EXPECT_EQ(followed.told, std::vector<std::string>{"launch editor"});
    EXPECT_EQ(followed.toldApplications.front()->processIdentifier(), editor.process());
}

} // namespace
} // namespace platform::x11
