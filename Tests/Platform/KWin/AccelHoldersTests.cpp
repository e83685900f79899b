#include "FakeKWin.h"
#include "Platform/KWin/AccelHolders.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>

namespace platform::kwin {
namespace {

using corvid::Shortcut;
using testing::ElementsAre;

constexpr int ctrlAltArrowLeft = 0x0d000012;
constexpr int ctrlAltLetterC = 0x0c000043;
constexpr Shortcut leftArrow{.keyCode = 123, .modifiers = 0x1800};
constexpr Shortcut letter{.keyCode = 8, .modifiers = 0x1800};
constexpr Shortcut nowhere{.keyCode = 200, .modifiers = 0x1800};

class AccelHoldersTest : public testing::Test {
protected:
    MessageBus daemon;
    linux::MainLoop loop;
    std::unique_ptr<FakeKWin> kwin;
    std::unique_ptr<linux::SessionBus> bus;
    std::unique_ptr<AccelHolders> holders;
    std::optional<ShortcutHolders::Answers> report;
    int times = 0;

    void SetUp() override {
        daemon.start();
        kwin = std::make_unique<FakeKWin>(daemon.address());
        bus = std::make_unique<linux::SessionBus>(loop, daemon.address(), std::chrono::milliseconds(20));
        holders = std::make_unique<AccelHolders>(loop, *bus);
        ASSERT_TRUE(bus->awaitArrival(loop.now() + std::chrono::seconds(10)));
    }

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<Shortcut>& shortcuts) {
        return holders->find(shortcuts, [this](const ShortcutHolders::Answers& answers) {
            report = answers;
            ++times;
        });
    }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }
};

TEST_F(AccelHoldersTest, AreNamedAsPeopleReadThem) {
    kwin->accel.hold({"kwin", "Switch Left", "KWin-Fensterverwaltung", "Zur linken Arbeitsfläche"}, {ctrlAltArrowLeft});
    kwin->accel.hold({"org.example.Other", "untitled", "", ""}, {ctrlAltLetterC});
    kwin->start();
    const auto search = find({letter, nowhere, leftArrow, {.keyCode = 2, .modifiers = 0x1800}});
    ASSERT_NE(search, nullptr);
    EXPECT_FALSE(report) << "in a later turn";
    ASSERT_TRUE(runUntil([&] { return report.has_value(); }));
    const ShortcutHolder other{.heldBy = "org.example.Other", .purpose = "untitled"};
    const ShortcutHolder window{.heldBy = "KWin-Fensterverwaltung", .purpose = "Zur linken Arbeitsfläche"};
    EXPECT_THAT(*report, ElementsAre(other, std::nullopt, window, std::nullopt));
    EXPECT_EQ(times, 1);
}

TEST_F(AccelHoldersTest, OfAKeyThatWasGrantedTwiceTheHolderIsWhoGetsThePresses) {
    kwin->accel.sharesKeys = true;
    kwin->accel.hold({"org.example.Other", "theirs", "Other", "Theirs"}, {ctrlAltLetterC});
    kwin->accel.hold({"org.corvid.Tessel", "hot-key-8-6144", "Tessel", "Center"}, {ctrlAltLetterC});
    kwin->accel.hold({"org.corvid.Tessel", "hot-key-123-6144", "Tessel", "Left half"}, {ctrlAltArrowLeft});
    kwin->start();
    const auto search = find({letter, leftArrow});
    ASSERT_TRUE(runUntil([&] { return report.has_value(); }));
    EXPECT_THAT(*report, ElementsAre(ShortcutHolder{.heldBy = "Other", .purpose = "Theirs"}, std::nullopt));
}

TEST_F(AccelHoldersTest, ABorrowedKeyIsItsLenders) {
    const AccelAction lender{"org.example.Other", "theirs", "Other", "Theirs"};
    holders = std::make_unique<AccelHolders>(
        loop, *bus, [&](std::int32_t key) { return key == ctrlAltLetterC ? &lender : nullptr; });
    kwin->accel.hold({"org.corvid.Tessel", "hot-key-8-6144", "Tessel", "Center"}, {ctrlAltLetterC});
    kwin->start();
    const ShortcutHolder other{.heldBy = "Other", .purpose = "Theirs"};
    std::unique_ptr<HolderSearch> search;
    ASSERT_TRUE(runUntil([&] {
        search = search ? std::move(search) : find({letter, leftArrow});
        return report.has_value();
    }));
    EXPECT_THAT(*report, ElementsAre(other, std::nullopt));
    report.reset();
    search = find({letter});
    EXPECT_FALSE(report) << "in a later turn";
    ASSERT_TRUE(runUntil([&] { return report.has_value(); }));
    EXPECT_THAT(*report, ElementsAre(other));
}

TEST_F(AccelHoldersTest, ADestroyedSearchCallsNothing) {
    kwin->accel.hold({"org.example.Other", "theirs", "Other", "Theirs"}, {ctrlAltLetterC});
    kwin->start();
    auto dropped = find({letter});
    ASSERT_NE(dropped, nullptr);
    dropped.reset();
    const auto next = find({letter});
    ASSERT_TRUE(runUntil([&] { return report.has_value(); }));
    EXPECT_EQ(times, 1);
}

TEST_F(AccelHoldersTest, WithoutAServerNoneIsStartedAndNothingIsKnown) {
    const auto search = find({letter});
    ASSERT_TRUE(runUntil([&] { return report.has_value(); }));
    EXPECT_THAT(*report, ElementsAre(std::nullopt));
    EXPECT_EQ(find({nowhere}), nullptr);
    daemon.stop();
    ASSERT_TRUE(runUntil([&] { return find({letter}) == nullptr; }));
}

} // namespace
} // namespace platform::kwin
