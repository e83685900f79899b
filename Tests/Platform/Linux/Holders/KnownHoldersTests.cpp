#include "Platform/Linux/Holders/KnownHolders.h"

#include <gtest/gtest.h>

#include <optional>

namespace platform::linux {
namespace {

constexpr corvid::Shortcut taken{.keyCode = 123, .modifiers = 0x1000};
constexpr corvid::Shortcut free{.keyCode = 124, .modifiers = 0x1000};

const ShortcutHolder desktop{.heldBy = "Desktop", .purpose = "workspace -1"};

class KnownHoldersTest : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<HolderSearch> search() {
        return holders.find({taken, free}, [this](const auto& found) { answers = found; });
    }

    MainLoop loop;
    KnownHolders holders{loop, [](const corvid::Shortcut& shortcut) {
                             return shortcut == taken ? std::optional(desktop) : std::nullopt;
                         }};
    ShortcutHolders::Answers answers;
};

TEST_F(KnownHoldersTest, AreToldInALaterTurnInTheOrderOfTheShortcuts) {
    const auto running = search();
    ASSERT_NE(running, nullptr);
    EXPECT_TRUE(answers.empty());
    const auto end = loop.schedule(loop.now() + std::chrono::milliseconds(1), {}, [this] { loop.end(0); });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(answers, (ShortcutHolders::Answers{desktop, std::nullopt}));
}

TEST_F(KnownHoldersTest, AreNotToldOnceTheSearchIsDropped) {
    search().reset();
    const auto end = loop.schedule(loop.now() + std::chrono::milliseconds(1), {}, [this] { loop.end(0); });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_TRUE(answers.empty());
}

} // namespace
} // namespace platform::linux
