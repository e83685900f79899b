#include "Platform/Linux/Processes/MemoryUse.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

TEST(MemoryUse, IsTheKernelsReport) {
    const TemporaryFolder folder;
    const std::string path = folder / "status";
    struct Case {
        std::string contents;
        std::optional<MemoryUse> expected;
    };
    const std::vector<Case> cases{
        {"Name:\tx\nVmHWM:\t    3000 kB\nVmRSS:\t    2000 kB\nRssAnon:\t 1 kB\n", {{2'048'000, 3'072'000}}},
        {"Name:\tVmRSS: 7 kB\nVmHWM:\t1 kB\nVmRSS:\t2 kB\n", {{2048, 2048}}},
        {"Name:\tx\nVmHWM:\t3000 kB\n", std::nullopt},
        {"Name:\tx\nVmRSS:\t3000 kB\n", std::nullopt},
        {"Name:\tx\nVmHWM:\t1 kB\nVmRSS:\t2\n", std::nullopt},
        {"Name:\tx\nVmHWM:\t1 kB\nVmRSS:\t-2 kB\n", std::nullopt},
        {"Name:\tx\nVmHWM:\t1 kB\nVmRSS:\t\n", std::nullopt},
        {"Name:\tx\nVmHWM:\t1 kB\nVmRSS:", std::nullopt},
        {"Name:\tx\nVmHWM:\t1 kB\nVmRSS:\t18446744073709551615 kB\n", std::nullopt},
        {"Name:\tx\nVmHWM:\t1 kB\nVmRSS:\t99999999999999999999 kB\n", std::nullopt},
        {"", std::nullopt},
    };
    for (const Case& each : cases) {
        write(path, each.contents);
        EXPECT_EQ(readMemoryUse(path), each.expected) << each.contents;
    }
    EXPECT_EQ(readMemoryUse(folder / "missing"), std::nullopt);
    EXPECT_EQ(readMemoryUse(folder.path), std::nullopt);
}

TEST(MemoryUse, OfThisProcessGrowsWithWhatItUses) {
    const std::optional<MemoryUse> before = readMemoryUse();
    ASSERT_TRUE(before);
    EXPECT_GT(before->current, 0U);
    EXPECT_GE(before->peak, before->current);
    constexpr std::size_t size = std::size_t{64} << 20U;
    std::vector<char> block(size, 'x');
    const std::optional<MemoryUse> after = readMemoryUse();
    ASSERT_TRUE(after);
    EXPECT_GE(after->current, before->current + size / 2);
    EXPECT_GE(after->peak, after->current);
    EXPECT_EQ(block.back(), 'x');
}

} // namespace
} // namespace platform::linux
