#include "Platform/Compositor/ProtocolHotKeys.h"
#include "Tests/Platform/Compositor/HotKeyCompositor.h"
#include "Tests/Platform/Hyprland/OpenHyprland.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform::compositor {
namespace {

using Kind = ProtocolHotKeys::Answer::Kind;
using Offer = HotKeyCompositor::Offer;

constexpr std::uint32_t left = 0xff51;
constexpr std::uint32_t letterC = 0x63;
constexpr std::uint32_t controlAlt = 6;

class ProtocolKeys : public testing::TestWithParam<Offer> {
protected:
    void open() {
        keys = ProtocolHotKeys::open(
            loop, peer.path(), "org.corvid.Tessel",
            {.pressed = [this](auto number) { reported.push_back("press " + std::to_string(number)); },
             .revoked = [this](auto number) { reported.push_back("loss " + std::to_string(number)); },
             .gone = [this] { reported.emplace_back("gone"); }},
            soon());
        ASSERT_NE(keys, nullptr);
    }

    [[nodiscard]] Instant soon() const { return loop.now() + std::chrono::seconds(5); }

    [[nodiscard]] ProtocolHotKeys::Answer bind(std::uint64_t number, std::uint32_t keysym) {
        return keys->bind(number, keysym, controlAlt, "Left Half", soon());
    }

    [[nodiscard]] bool hears(const std::vector<std::string>& expected) {
        return runUntil(loop, [&] { return reported == expected; });
    }

    HotKeyCompositor peer{GetParam()};
    linux::MainLoop loop;
    std::vector<std::string> reported;
    std::unique_ptr<ProtocolHotKeys> keys;
};

TEST_P(ProtocolKeys, RequestWhatTheyAreAskedTo) {
    open();
    EXPECT_EQ(bind(1, left).kind, Kind::bound);
    EXPECT_EQ(peer.keys(), (std::vector<HotKeyCompositor::Key>{{.keysym = left,
                                                                .modifiers = controlAlt,
                                                                .application = "org.corvid.Tessel",
                                                                .description = "Left Half",
                                                                .isBound = true}}));
}

TEST_P(ProtocolKeys, ReportAPressOnce) {
    open();
    EXPECT_EQ(bind(1, left).kind, Kind::bound);
    EXPECT_EQ(bind(2, letterC).kind, Kind::bound);
    peer.press(letterC);
    peer.press(left);
    EXPECT_TRUE(hears({"press 2", "press 1"}));
}

TEST_P(ProtocolKeys, PassOnTheWordsOfADenial) {
    open();
    peer.deny(left, "reserved by a compositor keybind (Next workspace)");
    const auto answer = bind(1, left);
    EXPECT_EQ(answer.kind, Kind::denied);
    EXPECT_EQ(answer.message, "reserved by a compositor keybind (Next workspace)");
    EXPECT_EQ(bind(2, letterC).kind, Kind::bound);
    EXPECT_TRUE(runUntil(loop, [&] { return peer.keys().size() == 1; }));
}

TEST_P(ProtocolKeys, ReportAKeyThatIsTakenBackAndMayBeRequestedAgain) {
    open();
    EXPECT_EQ(bind(1, left).kind, Kind::bound);
    peer.revoke(left);
    EXPECT_TRUE(hears({"loss 1"}));
    EXPECT_TRUE(runUntil(loop, [&] { return peer.keys().empty(); }));
    EXPECT_EQ(bind(1, left).kind, Kind::bound);
}

TEST_P(ProtocolKeys, AReleasedKeyIsHeardNoMore) {
    open();
    EXPECT_EQ(bind(1, left).kind, Kind::bound);
    EXPECT_EQ(bind(2, letterC).kind, Kind::bound);
    peer.press(left);
    keys->release(1);
    keys->release(7);
    EXPECT_TRUE(runUntil(loop, [&] { return peer.keys().size() == 1; }));
    peer.press(letterC);
    EXPECT_TRUE(hears({"press 2"}));
}

TEST_P(ProtocolKeys, AreGivenBackAtTheEnd) {
    open();
    EXPECT_EQ(bind(1, left).kind, Kind::bound);
    keys = nullptr;
    EXPECT_TRUE(runUntil(loop, [&] { return peer.clients() == 0; }));
    EXPECT_TRUE(peer.keys().empty());
}

TEST_P(ProtocolKeys, ReportTheEndOfTheConnectionOnce) {
    open();
    EXPECT_EQ(bind(1, left).kind, Kind::bound);
    peer.disconnect();
    EXPECT_TRUE(hears({"gone"}));
    EXPECT_EQ(bind(2, letterC).kind, Kind::none);
    EXPECT_EQ(reported, std::vector<std::string>{"gone"});
}

TEST_P(ProtocolKeys, DoNotWaitLongerForAnAnswerThanAsked) {
    open();
    peer.beSilent();
    const auto answer = keys->bind(1, left, controlAlt, "Left Half", loop.now() + std::chrono::milliseconds(30));
    EXPECT_EQ(answer.kind, Kind::none);
    EXPECT_TRUE(runUntil(loop, [&] { return peer.keys().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(ByEachProtocol, ProtocolKeys, testing::Values(Offer::vicinae, Offer::xx, Offer::both),
                         [](const auto& each) {
                             return each.param == Offer::vicinae ? "vicinae" : each.param == Offer::xx ? "xx" : "both";
                         });

TEST(ProtocolKeysWithout, ACompositorWithoutTheProtocolsThereAreNone) {
    linux::MainLoop loop;
    const HotKeyCompositor peer(Offer::neither);
    EXPECT_EQ(ProtocolHotKeys::open(loop, peer.path(), "x", {}, loop.now() + std::chrono::seconds(5)), nullptr);
}

TEST(ProtocolKeysWithout, ACompositorThereAreNone) {
    linux::MainLoop loop;
    EXPECT_EQ(ProtocolHotKeys::open(loop, "/nowhere", "x", {}, loop.now() + std::chrono::seconds(5)), nullptr);
    EXPECT_EQ(ProtocolHotKeys::open(loop, "", "x", {}, loop.now() + std::chrono::seconds(5)), nullptr);
}

} // namespace
} // namespace platform::compositor
