#include "Platform/Linux/Processes/ProcessInfo.h"

#include "Platform/Linux/Processes/MemoryUse.h"

#include <unistd.h>

namespace platform::linux {

ProcessIdentifier ProcessInfo::processIdentifier() const {
    return getpid();
}

std::optional<MemoryUse> ProcessInfo::memoryUse() const {
    return readMemoryUse();
}

} // namespace platform::linux
