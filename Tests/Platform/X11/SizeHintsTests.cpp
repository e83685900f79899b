#include "Platform/X11/SizeHints.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

constexpr std::uint32_t hasMinimum = 1U << 4U;
constexpr std::uint32_t hasMaximum = 1U << 5U;
constexpr std::uint32_t hasIncrement = 1U << 6U;
constexpr std::uint32_t hasBase = 1U << 8U;

/// The property's eighteen values: flags, four unused, minimum, maximum, increments, two aspects, base, gravity.
std::vector<std::uint32_t> hintValues(std::uint32_t flags) {
    return {flags, 0, 0, 0, 0, 100, 80, 800, 600, 7, 14, 0, 0, 0, 0, 20, 10, 0};
}

TEST(SizeHints, WithoutHintsEverySizeIsTaken) {
    EXPECT_EQ(sizeHintsFromValues({}), SizeHints{});
    EXPECT_EQ(constrainedSize(SizeHints{}, {1, 32767}), (ClientSize{1, 32767}));
}

TEST(SizeHints, ASizeIsKeptBetweenMinimumAndMaximum) {
    const SizeHints hints = sizeHintsFromValues(hintValues(hasMinimum | hasMaximum));
    EXPECT_EQ(constrainedSize(hints, {50, 50}), (ClientSize{100, 80}));
    EXPECT_EQ(constrainedSize(hints, {5000, 5000}), (ClientSize{800, 600}));
    EXPECT_EQ(constrainedSize(hints, {500, 500}), (ClientSize{500, 500}));
}

TEST(SizeHints, ASizeIsRoundedDownToIncrementsBeyondTheBase) {
    const SizeHints hints = sizeHintsFromValues(hintValues(hasBase | hasIncrement));
    EXPECT_EQ(constrainedSize(hints, {960, 1080}), (ClientSize{20 + 134 * 7, 10 + 76 * 14}));
}

TEST(SizeHints, TheBaseMayBeNothingInOneDimension) {
    std::vector<std::uint32_t> values = hintValues(hasBase | hasIncrement);
    values[15] = 0;
    const SizeHints hints = sizeHintsFromValues(values);
    EXPECT_EQ(constrainedSize(hints, {960, 1080}), (ClientSize{137 * 7, 10 + 76 * 14}));
    EXPECT_EQ(hints.minimumWidth, 1U);
}

TEST(SizeHints, TheMinimumStandsInForAMissingBaseAndTheBaseForAMissingMinimum) {
    const SizeHints onlyMinimum = sizeHintsFromValues(hintValues(hasMinimum | hasIncrement));
    EXPECT_EQ(constrainedSize(onlyMinimum, {108, 95}), (ClientSize{107, 94}));
    const SizeHints onlyBase = sizeHintsFromValues(hintValues(hasBase));
    EXPECT_EQ(constrainedSize(onlyBase, {1, 1}), (ClientSize{20, 10}));
}

TEST(SizeHints, ImplausibleValuesCountAsUnset) {
    std::vector<std::uint32_t> values = hintValues(hasMinimum | hasMaximum | hasIncrement);
    values[7] = 0xffffffff;
    values[9] = 0;
    const SizeHints hints = sizeHintsFromValues(values);
    EXPECT_EQ(constrainedSize(hints, {3000, 3000}), (ClientSize{3000, 3000}));
    EXPECT_EQ(sizeHintsFromValues({hasMinimum | hasMaximum, 0, 0}), SizeHints{});
}

TEST(SizeHints, AMaximumBelowTheMinimumGivesTheMinimum) {
    std::vector<std::uint32_t> values = hintValues(hasMinimum | hasMaximum);
    values[7] = 50;
    values[8] = 50;
    EXPECT_EQ(constrainedSize(sizeHintsFromValues(values), {300, 300}), (ClientSize{100, 80}));
}

} // namespace
} // namespace platform::x11
