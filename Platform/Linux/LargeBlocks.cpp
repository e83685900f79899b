#include "Platform/Linux/LargeBlocks.h"

#include <malloc.h>

namespace platform::linux {

void keepLargeBlocksApart() {
    // The value is the usual one; that it is set is what ends its moving.
    constexpr int threshold = 128 * 1024;
    ::mallopt(M_MMAP_THRESHOLD, threshold);
}

} // namespace platform::linux
