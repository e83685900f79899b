#include "Platform/Linux/Processes/LargeBlocks.h"

#include <malloc.h>

namespace platform::linux {

void keepLargeBlocksApart() {
    // The usual value; setting it explicitly stops the allocator from adapting it.
    constexpr int threshold = 128 * 1024;
    ::mallopt(M_MMAP_THRESHOLD, threshold);
}

} // namespace platform::linux
