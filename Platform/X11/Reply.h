#pragma once

#include <cstdlib>
#include <memory>

namespace platform::x11 {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an error or an event: allocated by xcb, freed by this program.
template <typename Message>
using Owned = std::unique_ptr<Message, FreeDeleter>;

} // namespace platform::x11
