#include "Platform/Linux/ProcessInfo.h"

#include <unistd.h>

namespace platform::linux {

ProcessIdentifier ProcessInfo::processIdentifier() const {
    return getpid();
}

} // namespace platform::linux
