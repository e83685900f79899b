#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/X11/RootChildren.h"
#include "XServer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

namespace platform::x11 {
namespace {

/// Events as the server reports them, of a child of the root unless `parent` is another window.
class X11RootChildren : public testing::Test {
protected:
    template <typename Event>
    [[nodiscard]] Event event(std::uint8_t kind, std::optional<xcb_window_t> parent = {}) {
        Event made{};
        made.response_type = kind;
        made.event = parent.value_or(connection.root());
        made.window = connection.root() + 1;
        return made;
    }

    template <typename Event>
    [[nodiscard]] bool isChange(const Event& made) {
        return children.isChange(*reinterpret_cast<const xcb_generic_event_t*>(&made));
    }

    /// Whether the answer to the fence, which the server gives itself here, counts as a change.
    [[nodiscard]] bool isChangeAfterTheFence() {
        connection.deadline().begin();
        bool isReported = false;
        static_cast<void>(
            connection.waitForEvent(connection.deadline().end(), [&](const xcb_generic_event_t& reported) {
                isReported = isReported || children.isChange(reported);
                return isReported;
            }));
        return isReported;
    }

    XServer server;
    linux::MainLoop loop;
    Connection connection{*Connection::open(server.display(), loop.turnDeadline())};
    EventSelection selection{connection};
    RootChildren children{connection, selection};
};

TEST_F(X11RootChildren, AChildThatIsShownHiddenReparentedOrDestroyedIsAChangeNowAndAfterTheFence) {
    children.follow(true);
    EXPECT_TRUE(isChange(event<xcb_map_notify_event_t>(XCB_MAP_NOTIFY)));
    EXPECT_TRUE(isChangeAfterTheFence());
    EXPECT_TRUE(isChange(event<xcb_unmap_notify_event_t>(XCB_UNMAP_NOTIFY)));
    EXPECT_TRUE(isChangeAfterTheFence());
    EXPECT_TRUE(isChange(event<xcb_reparent_notify_event_t>(XCB_REPARENT_NOTIFY)));
    EXPECT_TRUE(isChangeAfterTheFence());
    EXPECT_TRUE(isChange(event<xcb_destroy_notify_event_t>(XCB_DESTROY_NOTIFY)));
    EXPECT_TRUE(isChangeAfterTheFence());
}

TEST_F(X11RootChildren, OtherEventsAndThoseOfOtherWindowsAreNone) {
    children.follow(true);
    const xcb_window_t other = connection.root() + 2;
    EXPECT_FALSE(isChange(event<xcb_configure_notify_event_t>(XCB_CONFIGURE_NOTIFY)));
    EXPECT_FALSE(isChange(event<xcb_map_notify_event_t>(XCB_MAP_NOTIFY, other)));
    EXPECT_FALSE(isChange(event<xcb_unmap_notify_event_t>(XCB_UNMAP_NOTIFY, other)));
    EXPECT_FALSE(isChange(event<xcb_reparent_notify_event_t>(XCB_REPARENT_NOTIFY, other)));
    EXPECT_FALSE(isChange(event<xcb_destroy_notify_event_t>(XCB_DESTROY_NOTIFY, other)));
}

TEST_F(X11RootChildren, NothingIsAChangeUnlessFollowed) {
    EXPECT_FALSE(isChange(event<xcb_map_notify_event_t>(XCB_MAP_NOTIFY)));
    children.follow(true);
    EXPECT_TRUE(isChange(event<xcb_map_notify_event_t>(XCB_MAP_NOTIFY)));
    children.follow(false);
    EXPECT_FALSE(isChange(event<xcb_map_notify_event_t>(XCB_MAP_NOTIFY)));
    EXPECT_FALSE(isChangeAfterTheFence()) << "the question from before";
}

} // namespace
} // namespace platform::x11
