#include "Platform/Linux/Processes/LargeBlocks.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>

namespace platform::linux {
namespace {

constexpr std::size_t windowSized = 800 * 1024;

/// The number of blocks with pages of their own that one allocation of that size adds.
std::size_t pagesOfItsOwn() {
    const std::size_t before = ::mallinfo2().hblks;
    // Volatile, because a compiler removes both otherwise.
    void* volatile block = std::malloc(windowSized);
    const std::size_t during = ::mallinfo2().hblks;
    std::free(block);
    return during - before;
}

/// Runs in a process of its own, because it changes the allocation of the whole process. Returns how a block is placed
/// after a similar one was freed.
int afterTheFirst(bool isKeptApart) {
    if (isKeptApart) {
        keepLargeBlocksApart();
    }
    pagesOfItsOwn();
    return static_cast<int>(pagesOfItsOwn());
}

TEST(LargeBlocksDeathTest, HavePagesOfTheirOwnHoweverOftenTheyComeAndGo) {
    if (::mallinfo2().arena == 0) {
        GTEST_SKIP() << "another allocator, such as a sanitizer's";
    }
    EXPECT_EXIT(_exit(afterTheFirst(false)), testing::ExitedWithCode(0), "") << "the C library needs no help any more";
    EXPECT_EXIT(_exit(afterTheFirst(true)), testing::ExitedWithCode(1), "");
}

} // namespace
} // namespace platform::linux
