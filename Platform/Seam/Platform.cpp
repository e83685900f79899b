#include "Platform/Seam/Platform.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace platform {

namespace {
const Platform* installed = nullptr;
} // namespace

const Platform& current() {
    if (installed == nullptr) {
        std::fputs("Fatal error: no platform is installed\n", stderr);
        std::abort();
    }
    return *installed;
}

Installation::Installation(const Platform& table)
    : previous(std::exchange(installed, &table)) {
}

Installation::~Installation() {
    installed = previous;
}

} // namespace platform
