#include "Platform/Compositor/SettledFrame.h"
#include "Platform/Simulated/MainActor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

namespace platform::compositor {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds readingTime{10};
constexpr corvid::CGRect small{{0, 0}, {100, 100}};
constexpr corvid::CGRect large{{0, 0}, {200, 100}};

/// The frame that counts as settled if the readings, ten milliseconds apart, give these and then the last one again.
std::optional<corvid::CGRect> settled(const std::vector<std::optional<corvid::CGRect>>& frames, milliseconds calm,
                                      milliseconds patience) {
    simulated::MainActor clock;
    std::size_t next = 0;
    return settledFrame(clock, calm, clock.now() + patience, [&] {
        clock.pass(readingTime);
        return frames[std::min(next++, frames.size() - 1)];
    });
}

TEST(SettledFrame, IsTheOneThatStaysForTheWholeCalm) {
    EXPECT_EQ(settled({small}, milliseconds(30), milliseconds(200)), small);
    EXPECT_EQ(settled({small, large}, milliseconds(30), milliseconds(200)), large);
    EXPECT_EQ(settled({small, small, small, large}, milliseconds(30), milliseconds(200)), large);
}

TEST(SettledFrame, IsTheFirstOneWithoutCalm) {
    EXPECT_EQ(settled({small, large}, milliseconds(0), milliseconds(200)), small);
}

TEST(SettledFrame, IsNoneIfTheDeadlineComesFirst) {
    EXPECT_EQ(settled({small, large, small, large, small}, milliseconds(30), milliseconds(60)), std::nullopt);
    EXPECT_EQ(settled({small}, milliseconds(30), milliseconds(20)), std::nullopt);
}

TEST(SettledFrame, IsNoneForAWindowThatGoes) {
    EXPECT_EQ(settled({small, std::nullopt}, milliseconds(30), milliseconds(200)), std::nullopt);
}

} // namespace
} // namespace platform::compositor
