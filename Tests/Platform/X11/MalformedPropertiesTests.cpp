#include "FollowedDesktop.h"
#include "Platform/X11/Element.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>

namespace platform::x11 {
namespace {

using Reports = std::vector<std::string>;

/// A property's value as a broken or hostile program may set it.
struct Value {
    const char* what;
    std::uint8_t format;
    std::string bytes;
};

std::string repeated(std::uint32_t word, std::size_t count) {
    std::string bytes;
    for (std::size_t index = 0; index < count; ++index) {
        bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
    }
    return bytes;
}

std::vector<Value> malformedValues() {
    constexpr std::size_t many = 50'000;
    return {
        {"no bytes", 8, ""},
        {"no short words", 16, ""},
        {"no words", 32, ""},
        {"a byte", 8, "x"},
        {"three bytes", 8, "xyz"},
        {"zeros in bytes", 8, std::string(256, '\0')},
        {"endless bytes", 8, std::string(many * 4, '\xff')},
        {"a short word", 16, "xy"},
        {"short words", 16, std::string(512, '\x7f')},
        {"endless short words", 16, std::string(many * 4, '\xff')},
        {"the largest word", 32, repeated(0xffffffff, 1)},
        {"the largest words", 32, repeated(0xffffffff, 40)},
        {"the largest signed words", 32, repeated(0x7fffffff, 40)},
        {"the smallest signed words", 32, repeated(0x80000000, 40)},
        {"endless words", 32, repeated(0xffffffff, many)},
    };
}

class MalformedProperties : public testing::Test {
protected:
    FollowedDesktop followed;
    TestClient& testClient = followed.testClient;
    std::unique_ptr<ClientProcess> editor;
    xcb_window_t window = XCB_WINDOW_NONE;

    void SetUp() override {
        followed.start();
        editor = std::make_unique<ClientProcess>(followed.server.display());
        window = followed.openWindow(*editor, "Editor");
        ASSERT_TRUE(followed.runUntil([&] { return !followed.reported.empty(); }));
        testClient.setWords(testClient.connection().root(), "_NET_ACTIVE_WINDOW", "WINDOW", {window});
    }

    void set(xcb_window_t target, std::string_view property, std::string_view type, const Value& value) {
        constexpr std::size_t bitsInByte = 8;
        const auto count = static_cast<std::uint32_t>(value.bytes.size() / (value.format / bitsInByte));
        xcb_change_property(testClient.connection().raw(), XCB_PROP_MODE_REPLACE, target, testClient.atom(property),
                            testClient.atom(type), value.format, count, value.bytes.data());
        static_cast<void>(testClient.atom("a round trip"));
    }

    /// Everything that a press and a rule read, and a write, in a turn of its own. Returns the window's frame.
    std::optional<corvid::CGRect> useEverything() {
        std::optional<corvid::CGRect> frame;
        bool isDone = false;
        followed.mainLoop.post([&] {
            platform::Accessibility& accessibility = followed.desktop->parts().accessibility;
            const AXUIElement element(std::make_shared<const WindowElement>(window));
            const AXUIElement application = accessibility.applicationElement(editor->process());
            static_cast<void>(accessibility.isProcessTrusted());
            static_cast<void>(followed.desktop->parts().screens.screens());
            static_cast<void>(followed.desktop->parts().workspace.frontmostApplication());
            static_cast<void>(followed.reportedApplications.front()->activationPolicy());
            static_cast<void>(accessibility.copyAttributeValue(application, AXAttribute::focusedWindow));
            static_cast<void>(accessibility.copyAttributeValue(application, AXAttribute::windows));
            static_cast<void>(accessibility.copyAttributeValue(element, AXAttribute::subrole));
            accessibility.setAttributeValue(element, AXAttribute::size, corvid::CGSize{300, 200});
            const auto position = accessibility.copyAttributeValue(element, AXAttribute::position);
            const auto size = accessibility.copyAttributeValue(element, AXAttribute::size);
            if (position && size) {
                frame = corvid::CGRect{std::get<corvid::CGPoint>(*position), std::get<corvid::CGSize>(*size)};
            }
            isDone = true;
        });
        EXPECT_TRUE(followed.runUntil([&] { return isDone; }));
        return frame;
    }

    /// No client decorates the window or moves it, so this is its frame despite its properties.
    static constexpr corvid::CGRect natural{{10, 10}, {200, 100}};
};

constexpr std::array types{"STRING", "CARDINAL", "ATOM", "WINDOW", "A_TYPE_OF_ITS_OWN"};

TEST_F(MalformedProperties, OfAWindowLeaveItWhereItIsAndItsApplicationWhatItIs) {
    constexpr std::array properties{
        "_NET_WM_PID",
        "WM_CLASS",
        "_NET_WM_STATE",
        "_NET_WM_WINDOW_TYPE",
        "WM_TRANSIENT_FOR",
        "WM_NORMAL_HINTS",
        "_NET_FRAME_EXTENTS",
        "_GTK_FRAME_EXTENTS",
        "_GTK_APPLICATION_ID",
        "_NET_WM_DESKTOP",
        "_NET_WM_STRUT",
        "_NET_WM_STRUT_PARTIAL",
        "_NET_WM_NAME",
        "WM_NAME",
        "_NET_WM_USER_TIME",
        "_KDE_NET_WM_DESKTOP_FILE",
        "WM_HINTS",
        "WM_PROTOCOLS",
        "WM_CLIENT_MACHINE",
    };
    testing::internal::CaptureStderr();
    ASSERT_EQ(useEverything(), natural);
    for (const char* property : properties) {
        std::size_t next = 0;
        for (const Value& value : malformedValues()) {
            set(window, property, types.at(next++ % types.size()), value);
            EXPECT_EQ(useEverything(), natural) << property << ": " << value.what;
        }
        testClient.removeProperty(window, property);
    }
    EXPECT_EQ(useEverything(), natural);
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
    EXPECT_EQ(followed.applications().runningApplications().size(), 1U);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_LT(followed.longestTurn(), FollowedDesktop::longestAllowedTurn);
}

TEST_F(MalformedProperties, OfANewWindowIdentifyNoOtherApplication) {
    testing::internal::CaptureStderr();
    for (const char* property : {"WM_CLASS", "_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE", "_NET_WM_PID"}) {
        std::size_t next = 0;
        for (const Value& value : malformedValues()) {
            // Text in bytes may be any name, and is none here.
            ClientProcess stranger(followed.server.display());
            const xcb_window_t strange = followed.makeWindow(stranger, "Browser");
            set(strange, property, types.at(next++ % types.size()), value);
            followed.reported.clear();
            followed.managed.push_back(strange);
            followed.list();
            ASSERT_TRUE(followed.runUntil([&] {
                return followed.applications().runningApplication(stranger.process()) != nullptr;
            })) << property
                << ": " << value.what;
            if (std::string_view(property) == "_NET_WM_PID") {
                ASSERT_TRUE(followed.runUntil([&] { return !followed.reported.empty(); })) << value.what;
                EXPECT_EQ(followed.reported, Reports{"launch browser"}) << value.what;
            }
            stranger.end();
            std::erase(followed.managed, strange);
            followed.list();
            ASSERT_TRUE(followed.runUntil([&] { return followed.applications().runningApplications().size() == 1; }));
            followed.drain();
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_LT(followed.longestTurn(), FollowedDesktop::longestAllowedTurn);
}

TEST_F(MalformedProperties, OfTheRootCountUntilTheyAreGoneAndNoLonger) {
    constexpr std::array properties{
        "_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST",         "_NET_CURRENT_DESKTOP", "_NET_WORKAREA",
        "_NET_SUPPORTED",     "_NET_SUPPORTING_WM_CHECK", "_GTK_WORKAREAS_D0",    "_NET_NUMBER_OF_DESKTOPS",
    };
    testing::internal::CaptureStderr();
    const xcb_window_t root = testClient.connection().root();
    for (const char* property : properties) {
        std::size_t next = 0;
        for (const Value& value : malformedValues()) {
            set(root, property, types.at(next++ % types.size()), value);
            // Requests for thousands of windows may exceed the deadline; then nothing is reported.
            EXPECT_EQ(useEverything().value_or(natural), natural) << property << ": " << value.what;
        }
        testClient.removeProperty(root, property);
        followed.drain();
    }
    testClient.setWords(root, "_NET_ACTIVE_WINDOW", "WINDOW", {window});
    followed.list();
    followed.drain();
    EXPECT_EQ(followed.desktop->parts().workspace.frontmostApplication(), editor->process());
    EXPECT_EQ(useEverything(), natural);
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_LT(followed.longestTurn(), FollowedDesktop::longestAllowedTurn);
}

TEST_F(MalformedProperties, AListOfThousandsThatDoNotExistIsGoneThroughOnce) {
    constexpr std::uint32_t many = 4000;
    // A program's own ids, of which it has used only the first.
    const ClientProcess stranger(followed.server.display());
    const xcb_window_t first = stranger.makeWindow() + 1;
    followed.managed.clear();
    for (std::uint32_t number = 0; number < many; ++number) {
        followed.managed.push_back(first + number);
    }
    const ClientProcess browser(followed.server.display());
    followed.managed.push_back(window);
    followed.openWindow(browser, "Browser");
    ASSERT_TRUE(followed.runUntil([&] { return followed.reported.size() == 2; }));
    EXPECT_EQ(followed.reported.back(), "launch browser");
    followed.drain();
    EXPECT_EQ(useEverything().value_or(natural), natural);

    // A desktop that opens with such a list must not wait for its change either.
    linux::MainLoop loop;
    const auto another = Desktop::open(loop);
    ASSERT_TRUE(another.has_value());
    (*another)->followApplications(followed.identification, followed.catalogue);
    // The request to a busy server is repeated.
    EXPECT_TRUE(followed.runUntil([&] {
        sd_event_run(loop.handle(), 0);
        return (*another)->parts().runningApplications.runningApplications().size() == 2;
    }));
    EXPECT_LT(followed.longestTurn(), FollowedDesktop::longestAllowedTurn);
    followed.managed = {window};
    followed.list();
    followed.drain();
    EXPECT_EQ(useEverything(), natural);
}

TEST_F(MalformedProperties, AServerThatIsHeldStallsNothingHoweverLongTheListIs) {
    constexpr std::size_t many = 1500;
    for (std::size_t index = 0; index < many; ++index) {
        followed.managed.push_back(editor->makeWindow());
    }
    followed.list();
    followed.drain();
    followed.forgetLongestTurn();
    xcb_grab_server(testClient.connection().raw());
    static_cast<void>(testClient.atom("a round trip"));
    for (int press = 0; press < 5; ++press) {
        EXPECT_EQ(useEverything(), std::nullopt);
    }
    xcb_ungrab_server(testClient.connection().raw());
    static_cast<void>(testClient.atom("a round trip"));
    EXPECT_LT(followed.longestTurn(), FollowedDesktop::longestAllowedTurn);
    followed.drain();
    // The request to a busy server is repeated.
    EXPECT_TRUE(followed.runUntil([&] { return useEverything() == natural; }));
}

} // namespace
} // namespace platform::x11
