#include "CorvidKit/Logger.h"

#include "Platform/Seam/Desktop/Log.h"
#include "Platform/Seam/Platform.h"

namespace corvid {

void Logger::error(std::string_view message) const {
    platform::current().log.error(subsystem, category, message);
}

} // namespace corvid
