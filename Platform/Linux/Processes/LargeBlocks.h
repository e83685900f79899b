#pragma once

namespace platform::linux {

/// From here on, every block of memory from 128 KiB on has pages of its own, which go back to the system when it is
/// freed. A program begins so, but the C library (mallopt(3), M_MMAP_THRESHOLD) puts blocks of a size among the small
/// ones once one of that size has been freed. What a window draws into comes and goes with the window: among small
/// blocks it leaves holes, and the heap grows for days. Main thread, before others allocate.
void keepLargeBlocksApart();

} // namespace platform::linux
